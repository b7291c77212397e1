#include "apps/studio/document/document.h"

#include <fmt/format.h>

#include <utility>

#include "apps/studio/document/document_change.h"
#include "apps/studio/document/write_file.h"
#include "host/channels/nearest_name.h"
#include "host/scene/binary_document.h"
#include "host/scene/document_file.h"
#include "host/scene/scene_file.h"
#include "host/services/content_hash.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

// More than these are not read by anyone.
constexpr std::size_t kMostTold = 12;

// The errors, or else the warnings, one line for each.
std::string ProblemsOf(const host::SceneReading& reading, const fs::path& file, bool errors) {
  std::string text;
  std::size_t told = 0, untold = errors ? reading.untold.errors : reading.untold.warnings;
  for (const host::SceneProblem& problem : reading.problems) {
    if (problem.isError != errors) continue;
    if (told++ >= kMostTold) {
      ++untold;
      continue;
    }
    if (!text.empty()) text += '\n';
    text += Describe(file, problem);
  }
  if (untold > 0) text += fmt::format("\n(and {} more)", untold);
  return text;
}

// As the host names the forms when it writes documents.
bool IsBinary(const fs::path& file) {
  return host::SameIgnoringCase(host::Utf8FromPath(file.extension()), host::kBinaryExtension);
}

}  // namespace

Document::Document(const host::ShaderCatalogue& catalogue) : catalogue_(catalogue) {
  Start(NewScene(), {}, {});
}

QString Document::Title() const {
  if (file_.empty()) return tr("Untitled");
  return QString::fromStdString(host::Utf8FromPath(file_.filename()));
}

bool Document::IsAsOpened() const {
  return !openedBytes_.empty() && host::WriteJson(scene_, -1) == openedJson_;
}

std::string Document::Text() const {
  if (IsAsOpened() && !host::IsBinaryDocument(openedBytes_)) return openedBytes_;
  return host::WriteJson(scene_) + '\n';
}

std::string Document::BytesFor(const fs::path& file, const Json& scene) const {
  const bool isBinary = IsBinary(file);
  if (&scene == &scene_ && IsAsOpened() && host::IsBinaryDocument(openedBytes_) == isBinary) {
    return openedBytes_;
  }
  return isBinary ? host::WriteBinaryDocument(scene) : host::WriteJson(scene) + '\n';
}

bool Document::IsChangedOnDisk() const {
  std::error_code error;
  return !file_.empty() && fs::exists(file_, error) && host::HashOfFile(file_) != diskHash_;
}

void Document::New() {
  warnings_.clear();
  diskHash_.clear();
  Start(NewScene(), {}, {});
}

tl::expected<void, std::string> Document::Open(const fs::path& file) {
  std::error_code error;
  const fs::path whole = fs::absolute(file, error).lexically_normal();
  const auto fail = [&file](const std::string& why) {
    return tl::unexpected(fmt::format("{}: {}", host::Utf8FromPath(file), why));
  };
  auto bytes = host::ReadMaterialText(whole);
  if (!bytes) return fail(bytes.error());
  const auto text = host::TextOfDocument(*bytes);
  if (!text) return fail(text.error());
  const auto reading = host::ReadScene(*text, whole, {.catalogue = &catalogue_});
  if (reading.scene == nullptr) return tl::unexpected(ProblemsOf(reading, whole, true));
  warnings_ = ProblemsOf(reading, whole, false);
  diskHash_ = host::HashOf(*bytes);
  Start(host::ParseJson(*text).value(), whole, std::move(*bytes));
  return {};
}

tl::expected<void, std::string> Document::Recover(const std::string& text, const fs::path& file,
                                                  const std::string& diskHash) {
  const auto reading = host::ReadScene(text, file, {.catalogue = &catalogue_});
  if (reading.scene == nullptr) return tl::unexpected(ProblemsOf(reading, file, true));
  warnings_.clear();
  diskHash_ = diskHash;
  Start(host::ParseJson(text).value(), file, {});
  history_.resetClean();  // what is on the disk is older
  return {};
}

tl::expected<void, std::string> Document::SaveAs(const fs::path& file) {
  std::error_code error;
  const fs::path whole = fs::absolute(file, error).lexically_normal();
  const bool moves = whole.parent_path() != Folder();
  std::optional<Json> moved;
  if (moves) moved = MoveScene(scene_, {catalogue_, Folder(), whole.parent_path()});
  const std::string bytes = BytesFor(whole, moved ? *moved : scene_);
  if (auto written = WriteFile(whole, bytes); !written) return written;
  if (moved) {
    openedBytes_.clear();
    scene_ = std::move(*moved);
  }
  file_ = whole;
  diskHash_ = host::HashOf(bytes);
  history_.setClean();
  Q_EMIT FileChanged();
  return {};
}

tl::expected<void, std::string> Document::ChangeMaterial(std::size_t index, Json material,
                                                         const QString& what,
                                                         const QString& series) {
  if (SameJson(material, Materials().at(index))) return {};
  // Only the material, without the scene's objects, whose meshes are slow to read.
  if (auto checked = Check(SceneOf(material, scene_)); !checked) return checked;
  history_.push(new DocumentChange(*this, index, std::move(material), what, series));
  return {};
}

tl::expected<void, std::string> Document::ChangeScene(Json scene, const QString& what) {
  if (SameJson(scene, scene_)) return {};
  if (auto checked = Check(scene); !checked) return checked;
  history_.push(new DocumentChange(*this, std::nullopt, std::move(scene), what));
  return {};
}

void Document::Start(Json scene, const fs::path& file, std::string openedBytes) {
  scene_ = std::move(scene);
  file_ = file;
  openedBytes_ = std::move(openedBytes);
  openedJson_ = openedBytes_.empty() ? std::string() : host::WriteJson(scene_, -1);
  history_.clear();
  Q_EMIT Replaced();
  Q_EMIT FileChanged();
  Q_EMIT SceneChanged();
}

void Document::PutMaterial(std::size_t index, Json material) {
  MakeListMember(scene_, "materials").at(index) = std::move(material);
  Q_EMIT MaterialChanged(static_cast<int>(index));
}

void Document::PutScene(Json scene) {
  scene_ = std::move(scene);
  Q_EMIT SceneChanged();
}

tl::expected<void, std::string> Document::Check(const Json& scene) const {
  const auto reading =
      host::ReadScene(host::WriteJson(scene, -1), file_, {.catalogue = &catalogue_});
  if (reading.scene == nullptr) return tl::unexpected(FirstError(reading));
  return {};
}

}  // namespace sorvanix::studio
