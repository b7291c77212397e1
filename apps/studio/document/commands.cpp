#include "apps/studio/document/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "apps/studio/document/shader_editing.h"
#include "host/channels/material_file.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

QString Quoted(const std::string& text) {
  return QString("\u201c%1\u201d").arg(QString::fromStdString(text));
}

bool IsMaterialFile(const fs::path& file) { return file.extension() == ".json"; }

}  // namespace

Commands::Commands(Document& document, Selection& selection)
    : document_(document), selection_(selection) {}

void Commands::Take(tl::expected<void, std::string> result) {
  if (!result) Q_EMIT Complained(QString::fromStdString(result.error()));
}

const Json* Commands::Material() {
  const Json* material = selection_.MaterialJson();
  if (material == nullptr) Q_EMIT Complained(tr("There is no material."));
  return material;
}

const host::ShaderDescription* Commands::Shader(const QString& name) {
  const auto* shader = document_.Catalogue().Find(name.toStdString());
  if (shader == nullptr) Q_EMIT Complained(tr("There is no shader \"%1\".").arg(name));
  return shader;
}

tl::expected<void, std::string> Commands::Insert(std::size_t index, Json material,
                                                 const QString& what) {
  Json scene = studio::InsertMaterial(document_.Scene(), index, std::move(material));
  auto changed = document_.ChangeScene(std::move(scene), what);
  if (changed) selection_.SetMaterial(static_cast<int>(index));
  return changed;
}

void Commands::AddMaterial() {
  const std::string name = FreeMaterialName(document_.Scene(), "Material");
  Take(Insert(document_.Materials().size(), NewMaterial(name), tr("Add Material")));
}

void Commands::DuplicateMaterial() {
  const Json* material = Material();
  if (material == nullptr) return;
  Json copy = *material;
  SetMember(copy, "name", Json(FreeMaterialName(document_.Scene(), TextMember(*material, "name"))));
  Take(Insert(static_cast<std::size_t>(selection_.Material()) + 1, std::move(copy),
              tr("Duplicate Material")));
}

void Commands::RenameMaterial(int index, const QString& name) {
  const auto place = static_cast<std::size_t>(index);
  const std::string wanted = name.trimmed().toStdString();
  const auto names = MaterialNames(document_.Scene());
  if (index < 0 || place >= names.size()) return Q_EMIT Complained(tr("There is no material."));
  if (wanted.empty()) return Q_EMIT Complained(tr("A material needs a name."));
  if (wanted == names.at(place)) return;
  if (std::find(names.begin(), names.end(), wanted) != names.end()) {
    return Q_EMIT Complained(tr("There is a material %1 already.").arg(Quoted(wanted)));
  }
  Take(document_.ChangeScene(studio::RenameMaterial(document_.Scene(), place, wanted),
                             tr("Rename Material")));
}

void Commands::RemoveMaterial() {
  if (Material() == nullptr) return;
  const auto index = static_cast<std::size_t>(selection_.Material());
  Take(document_.ChangeScene(studio::RemoveMaterial(document_.Scene(), index),
                             tr("Delete Material")));
}

void Commands::MoveMaterial(int by) {
  if (Material() == nullptr) return;
  const int to = selection_.Material() + by;
  if (to < 0 || to >= static_cast<int>(document_.Materials().size())) return;
  Take(document_.ChangeScene(
      MoveMaterialTo(document_.Scene(), static_cast<std::size_t>(selection_.Material()),
                     static_cast<std::size_t>(to)),
      tr("Move Material")));
  selection_.SetMaterial(to);
}

tl::expected<void, std::string> Commands::AddMaterialFile(const fs::path& file) {
  auto graph = ReadGraphFile(file);
  if (!graph) return tl::unexpected(graph.error());
  const std::string name = host::Utf8FromPath(file.stem());
  auto material = PlaceGraph(NewMaterial(FreeMaterialName(document_.Scene(), name)),
                             {.channel = "colour", .inputs = {}}, std::move(*graph));
  return Insert(document_.Materials().size(), std::move(*material), tr("Add %1").arg(Quoted(name)));
}

Json Commands::Ready(const Json& material, const GraphPlace& place) const {
  return WithStoredGraph(material, place.channel, document_.Scene(), document_.File(),
                         document_.Catalogue());
}

void Commands::ChangeGraph(ChangedMaterial changed, const QString& what, const QString& series) {
  if (!changed) return Q_EMIT Complained(QString::fromStdString(changed.error()));
  const auto index = static_cast<std::size_t>(selection_.Material());
  Take(document_.ChangeMaterial(index, std::move(*changed), what, series));
}

void Commands::PlaceShader(const GraphPlace& place, const QString& name) {
  const Json* material = Material();
  const auto* shader = Shader(name);
  if (material == nullptr || shader == nullptr) return;
  ChangeGraph(PlaceGraph(Ready(*material, place), place, NewShader(*shader)),
              tr("Place %1").arg(name));
}

void Commands::TakeShader(const GraphPlace& place, const QString& name) {
  const Json* material = Material();
  const auto* shader = Shader(name);
  if (material == nullptr || shader == nullptr) return;
  if (!shader->inputs.empty() && FindGraph(*material, place) != nullptr) {
    Wrap(place, name);
  } else {
    ReplaceShader(place, name);
  }
}

void Commands::ReplaceShader(const GraphPlace& place, const QString& name) {
  const Json* material = Material();
  const auto* shader = Shader(name);
  if (material == nullptr || shader == nullptr) return;
  ChangeGraph(studio::ReplaceShader(Ready(*material, place), place, *shader, document_.Catalogue()),
              tr("Replace by %1").arg(name));
}

void Commands::Wrap(const GraphPlace& place, const QString& name) {
  const Json* material = Material();
  const auto* filter = Shader(name);
  if (material == nullptr || filter == nullptr) return;
  ChangeGraph(WrapInFilter(Ready(*material, place), place, *filter), tr("Wrap in %1").arg(name));
}

void Commands::Unwrap(const GraphPlace& place) {
  if (const Json* material = Material()) {
    ChangeGraph(UnwrapFilter(Ready(*material, place), place, document_.Catalogue()), tr("Unwrap"));
  }
}

void Commands::Remove(const GraphPlace& place) {
  if (const Json* material = Material()) {
    ChangeGraph(RemoveGraph(Ready(*material, place), place), tr("Remove Shader"));
  }
}

void Commands::Move(const GraphPlace& from, const GraphPlace& to) {
  if (from == to) return;
  if (const Json* material = Material()) {
    ChangeGraph(MoveShader(Ready(Ready(*material, from), to), from, to), tr("Move Shader"));
  }
}

void Commands::Copy(const GraphPlace& from, const GraphPlace& to) {
  const Json* material = Material();
  if (material == nullptr || from == to) return;
  const Json ready = Ready(Ready(*material, from), to);
  const Json* graph = FindGraph(ready, from);
  if (graph != nullptr) ChangeGraph(PlaceGraph(ready, to, *graph), tr("Copy Shader"));
}

void Commands::Paste(const GraphPlace& place, Json graph) {
  if (const Json* material = Material()) {
    ChangeGraph(PlaceGraph(Ready(*material, place), place, std::move(graph)), tr("Paste Shader"));
  }
}

void Commands::SwitchChannel(const QString& channel, bool on) {
  const Json* material = Material();
  const std::string name = channel.toStdString();
  if (material == nullptr || IsChannelOn(*material, name) == on) return;
  ChangeGraph(studio::SwitchChannel(*material, name, on),
              on ? tr("Turn Channel On") : tr("Turn Channel Off"));
}

void Commands::SetStrength(const std::string& channel, float strength) {
  if (const Json* material = Material()) {
    ChangeGraph(studio::SetStrength(*material, channel, strength), tr("Change Strength"),
                "strength of " + QString::fromStdString(channel));
  }
}

void Commands::SetColour(const std::string& channel, const Vector& colour) {
  if (const Json* material = Material()) {
    ChangeGraph(studio::SetColour(*material, channel, colour), tr("Change Colour"));
  }
}

void Commands::PlaceFile(const GraphPlace& place, const fs::path& file) {
  const Json* material = Material();
  if (material == nullptr) return;
  auto graph = IsMaterialFile(file)
                   ? ReadGraphFile(file)
                   : MoveGraph(Json(host::Utf8FromPath(file.filename())),
                               {document_.Catalogue(), file.parent_path(), document_.Folder()});
  if (!graph) return Q_EMIT Complained(QString::fromStdString(graph.error()));
  ChangeGraph(PlaceGraph(Ready(*material, place), place, std::move(*graph)),
              tr("Place %1").arg(Quoted(host::Utf8FromPath(file.filename()))));
}

void Commands::Embed(const GraphPlace& place) {
  const Json* material = Material();
  const Json* graph = material != nullptr ? FindGraph(*material, place) : nullptr;
  const auto* name = graph != nullptr ? std::get_if<std::string>(&graph->value) : nullptr;
  if (name == nullptr || !IsMaterialFile(host::PathFromUtf8(*name))) return;
  auto embedded = ReadGraphFile(document_.Folder() / host::PathFromUtf8(*name));
  if (!embedded) return Q_EMIT Complained(QString::fromStdString(embedded.error()));
  ChangeGraph(PlaceGraph(Ready(*material, place), place, std::move(*embedded)),
              tr("Embed %1").arg(Quoted(*name)));
}

void Commands::PlaceEdited(const GraphPlace& edited, const Json& graph, const Json& state) {
  const Json* material = Material();
  const auto* shader =
      material != nullptr ? FindShader(*material, edited, document_.Catalogue()) : nullptr;
  if (shader == nullptr) return;
  ChangeGraph(PutEdited(*material, edited.channel, graph, state),
              tr("Edit %1").arg(QString::fromStdString(shader->name)));
}

tl::expected<Json, std::string> Commands::ReadGraphFile(const fs::path& file) const {
  const auto text = host::ReadMaterialText(file);
  if (!text) {
    return tl::unexpected(fmt::format("{}: {}", host::Utf8FromPath(file), text.error()));
  }
  const auto reading = host::ReadMaterial(*text, document_.Catalogue(), {file, {}});
  const auto errors = reading.Errors();
  if (!errors.empty()) return tl::unexpected(Describe(file, errors.front()));
  return MoveGraph(JsonOf(*reading.material),
                   {document_.Catalogue(), file.parent_path(), document_.Folder()});
}

}  // namespace sorvanix::studio
