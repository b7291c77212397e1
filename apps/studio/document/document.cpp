#include "apps/studio/document/document.h"

#include <fmt/format.h>

#include <utility>

#include "apps/studio/document/document_change.h"
#include "apps/studio/document/write_file.h"
#include "host/scene/scene_file.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

// More than these are not read by anyone.
constexpr std::size_t kMostTold = 12;

std::string ErrorsOf(const host::SceneReading& reading, const fs::path& file) {
  std::string text;
  std::size_t told = 0, untold = reading.untold.errors;
  for (const host::SceneProblem& problem : reading.problems) {
    if (!problem.isError) continue;
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

}  // namespace

Document::Document(const host::ShaderCatalogue& catalogue) : catalogue_(catalogue) {
  Start(NewScene(), {}, {});
}

QString Document::Title() const {
  if (file_.empty()) return tr("Untitled");
  return QString::fromStdString(host::Utf8FromPath(file_.filename()));
}

std::string Document::Text() const {
  if (!openedText_.empty() && host::WriteJson(scene_, -1) == openedJson_) return openedText_;
  return host::WriteJson(scene_) + '\n';
}

void Document::New() { Start(NewScene(), {}, {}); }

tl::expected<void, std::string> Document::Open(const fs::path& file) {
  std::error_code error;
  const fs::path whole = fs::absolute(file, error).lexically_normal();
  auto text = host::ReadMaterialText(whole);
  if (!text) {
    return tl::unexpected(fmt::format("{}: {}", host::Utf8FromPath(file), text.error()));
  }
  const auto reading = host::ReadScene(*text, whole, {.catalogue = &catalogue_});
  if (reading.scene == nullptr) return tl::unexpected(ErrorsOf(reading, whole));
  Json scene = host::ParseJson(*text).value();
  Start(std::move(scene), whole, std::move(*text));
  return {};
}

tl::expected<void, std::string> Document::Recover(const std::string& text, const fs::path& file) {
  const auto reading = host::ReadScene(text, file, {.catalogue = &catalogue_});
  if (reading.scene == nullptr) return tl::unexpected(ErrorsOf(reading, file));
  Start(host::ParseJson(text).value(), file, {});
  history_.resetClean();  // what is on the disk is older
  return {};
}

tl::expected<void, std::string> Document::SaveAs(const fs::path& file) {
  std::error_code error;
  const fs::path whole = fs::absolute(file, error).lexically_normal();
  const bool moves = whole.parent_path() != Folder();
  Json scene = moves ? MoveScene(scene_, {catalogue_, Folder(), whole.parent_path()}) : scene_;
  const std::string text = moves ? host::WriteJson(scene) + '\n' : Text();
  if (auto written = WriteFile(whole, text); !written) return written;
  if (moves) openedText_.clear();
  scene_ = std::move(scene);
  file_ = whole;
  history_.setClean();
  Q_EMIT FileChanged();
  return {};
}

tl::expected<void, std::string> Document::ChangeMaterial(std::size_t index, Json material,
                                                         const QString& what) {
  if (SameJson(material, Materials().at(index))) return {};
  // Only the material, without the scene's objects, whose meshes are slow to read.
  const Json alone = InsertMaterial(
      host::ParseJson(R"({"format":"sorvanix-scene","version":1})").value(), 0, material);
  if (auto checked = Check(alone); !checked) return checked;
  history_.push(new DocumentChange(*this, index, std::move(material), what));
  return {};
}

tl::expected<void, std::string> Document::ChangeScene(Json scene, const QString& what) {
  if (SameJson(scene, scene_)) return {};
  if (auto checked = Check(scene); !checked) return checked;
  history_.push(new DocumentChange(*this, std::nullopt, std::move(scene), what));
  return {};
}

void Document::Start(Json scene, const fs::path& file, std::string openedText) {
  scene_ = std::move(scene);
  file_ = file;
  openedText_ = std::move(openedText);
  openedJson_ = openedText_.empty() ? std::string() : host::WriteJson(scene_, -1);
  history_.clear();
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
  for (const host::SceneProblem& problem : reading.problems) {
    if (problem.isError) return tl::unexpected(problem.message);
  }
  return {};
}

}  // namespace sorvanix::studio
