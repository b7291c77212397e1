// The part of the scene reader that reads objects, what they hold, and the textures on them.
#include <fmt/format.h>

#include <algorithm>

#include "host/channels/material_value.h"
#include "host/scene/mesh_files.h"
#include "host/scene/scene_reader.h"
#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;

/// Of all objects of a scene together: a small file may ask for more than there is memory for.
constexpr std::size_t kMostScenePolygons = std::size_t{1} << 24;

std::size_t PolygonCount(const ObjectContent& content) {
  if (const auto* primitive = std::get_if<Primitive>(&content)) return MostPolygonsOf(*primitive);
  const auto* mesh = std::get_if<MeshContent>(&content);
  return mesh != nullptr && mesh->mesh != nullptr ? mesh->mesh->polygons.size() : 0;
}

}  // namespace

void SceneReader::ReadObject(const Place& place, Object& parent) {
  if (Members(place, "an object of the scene") == nullptr) return;
  const Json* given = Find(place, "kind");
  const auto* name = given != nullptr ? std::get_if<std::string>(&given->value) : nullptr;
  if (given == nullptr) return Fail(place, "an object needs a \"kind\"");
  if (name == nullptr) {
    return Fail(Below(place, "kind", *given), "expected the name of a kind of object");
  }
  const ObjectKind* kind = FindObjectKind(*name);
  Object& object = parent.Add(std::make_unique<Object>());
  if (kind == nullptr) {
    std::vector<std::string_view> known;
    for (const ObjectKind& each : ObjectKinds()) known.push_back(each.name);
    Refuse(Below(place, "kind", *given), UnknownName("kind of object", *name, known));
    if (!isLater_) return;
    kind = &KindOfContent(NullContent{});
    object.unknownKind = *name;
  }
  ReadFields(place, FieldsOfObjects(), object);
  ReadTarget(place, object.transform);
  ReadContent(place, *kind, object);
  if (problems_.HasErrors()) {  // only to find more problems: nothing is built any more
    object.content = NullContent{};
  }
  object.Update();
  if (!IsFinite(object.world)) Fail(place, "the object is placed beyond what numbers can tell");
  ForEach(place, "textures", [&](const Place& item) { ReadTexture(item, object); });
  ForEach(place, "children", [&](const Place& item) { ReadObject(item, object); });

  std::vector<std::string_view> names = {"kind", "target", "textures", "children"};
  AddNames(FieldsOfObjects(), names);
  AddNames(kind->fields, names);
  if (*name == "particles") names.push_back("particles");
  object.kept = CheckNames(place, fmt::format("field of a {}", Excerpt(*name)), names);
}

void SceneReader::ReadContent(const Place& place, const ObjectKind& kind, Object& object) {
  object.content = kind.initial;
  ReadFields(place, kind.fields, object.content);
  if (auto* mesh = std::get_if<MeshContent>(&object.content)) ReadMesh(place, *mesh);
  if (auto* particles = std::get_if<ParticleContent>(&object.content)) {
    ForEach(place, "particles", [&](const Place& item) { ReadParticle(item, *particles); });
  }
  if (const auto* light = std::get_if<LightContent>(&object.content)) {
    if (light->kind == LightKind::Spot && light->innerAngle > light->outerAngle) {
      Fail(place, "\"innerAngle\" is larger than \"outerAngle\"");
    }
  }
  const std::size_t before = polygons_;
  polygons_ += PolygonCount(object.content);
  if (before <= kMostScenePolygons && polygons_ > kMostScenePolygons) {
    Fail(place, fmt::format("the scene has more than {} polygons", kMostScenePolygons));
  }
}

void SceneReader::ReadMesh(const Place& place, MeshContent& content) {
  const Json* given = Find(place, "file");
  if (given == nullptr) return Fail(place, "a mesh needs a \"file\"");
  if (content.file.empty()) return;  // no text, and a problem already
  if (const std::string_view wrong = WrongInFilename(content.file); !wrong.empty()) {
    return Fail(Below(place, "file", *given), std::string(wrong));
  }
  const fs::path path = file_.parent_path() / PathFromUtf8(content.file);
  std::error_code error;
  const fs::path identity = fs::weakly_canonical(path, error);
  std::shared_ptr<const PolygonMesh>& known = meshes_[error ? path : identity];
  if (known == nullptr) {
    auto mesh = ReadMeshFile(path);
    if (!mesh) return Fail(Below(place, "file", *given), mesh.error());
    known = std::make_shared<PolygonMesh>(std::move(*mesh));
  }
  content.mesh = known;
}

void SceneReader::ReadParticle(const Place& place, ParticleContent& content) {
  ParticleItem item;
  if (std::holds_alternative<Json::Array>(place.json.value)) {
    const auto& position = FieldsOfParticles().front();
    if (const auto value = ReadValue(place, position.parameter, position.rule)) {
      position.set(item, *value);
    }
  } else if (Members(place, "a particle") != nullptr) {
    std::vector<std::string_view> names;
    AddNames(FieldsOfParticles(), names);
    ReadFields(place, FieldsOfParticles(), item);
    item.kept = CheckNames(place, "field of a particle", names);
  }
  content.particles.push_back(std::move(item));
}

void SceneReader::ReadTexture(const Place& place, Object& object) {
  if (Members(place, "a texture") == nullptr) return;
  auto& tag = *object.textureTags.emplace_back(std::make_unique<TextureTagNode>(object));
  ReadFields(place, FieldsOfTextures(), tag);
  if (const Json* given = Find(place, "material")) {
    ReadMaterialOf(Below(place, "material", *given), tag);
  }
  if (const Json* active = Find(place, "active")) ReadActive(Below(place, "active", *active), tag);
  std::vector<std::string_view> names = {"material", "active"};
  AddNames(FieldsOfTextures(), names);
  tag.kept = CheckNames(place, "field of a texture", names);
}

void SceneReader::ReadMaterialOf(const Place& place, TextureTagNode& tag) {
  const auto* name = std::get_if<std::string>(&place.json.value);
  if (name == nullptr) return Refuse(place, "expected the name of a material");
  tag.material = scene_->FindMaterial(*name);
  if (!tag.material.expired()) return;
  std::vector<std::string_view> known;
  for (const auto& material : scene_->materials) known.push_back(material->name.text);
  Refuse(place, UnknownName("material", *name, known));
}

void SceneReader::ReadActive(const Place& place, TextureTagNode& tag) {
  const auto* isActive = std::get_if<bool>(&place.json.value);
  if (isActive == nullptr) return Refuse(place, "expected true or false");
  if (!*isActive) return;
  if (scene_->activeTag != nullptr) return Fail(place, "there are two active textures");
  scene_->activeTag = &tag;
}

}  // namespace sorvanix::host
