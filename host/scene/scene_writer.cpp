// The part of scene files that writes them.
#include "host/scene/document_file.h"
#include "host/scene/scene_fields.h"
#include "host/scene/scene_file.h"
#include "host/scene/scene_format.h"
#include "host/services/json_numbers.h"

namespace sorvanix::host {
namespace {

/// Adds those fields whose value is not that of the initial record.
template <class Record>
void WriteFields(const Record& record, const Record& initial, const SceneFields<Record>& fields,
                 Json::Object& members) {
  for (const SceneField<Record>& field : fields) {
    Json value = JsonOf(field.parameter, field.get(record));
    if (WriteJson(value) == WriteJson(JsonOf(field.parameter, field.get(initial)))) continue;
    members.push_back({field.parameter.name, std::move(value)});
  }
}

Json WriteChannel(const MaterialChannel& channel) {
  MaterialChannel initial;
  initial.on = true;  // as reading has it for a channel that is named
  Json::Object members;
  WriteFields(channel, initial, FieldsOfChannels(), members);
  const auto isThere = [](const Json& json) {
    return !std::holds_alternative<std::nullptr_t>(json.value);
  };
  if (isThere(channel.graphJson)) members.push_back({"graph", channel.graphJson});
  if (isThere(channel.state)) members.push_back({"state", channel.state});
  PutBack(channel.kept, members);
  return Json(std::move(members));
}

Json WriteMaterial(const Material& material) {
  Json::Object members, channels;
  WriteFields(material, Material(), FieldsOfMaterials(), members);
  const std::string untouched = WriteJson(WriteChannel(MaterialChannel()));
  for (std::size_t i = 0; i < kMaterialChannelCount; ++i) {
    Json channel = WriteChannel(material.channels[i]);
    if (WriteJson(channel) == untouched) continue;
    channels.push_back({std::string(kChannelNames[i]), std::move(channel)});
  }
  PutBack(material.keptChannels, channels);
  if (!channels.empty()) members.push_back({"channels", Json(std::move(channels))});
  PutBack(material.kept, members);
  return Json(std::move(members));
}

Json WriteTexture(const TextureTagNode& tag, const Scene& scene) {
  Object nobody;
  Json::Object members;
  if (const auto material = tag.material.lock()) {
    members.push_back({"material", Json(material->name.text)});
  }
  WriteFields(tag, TextureTagNode(nobody), FieldsOfTextures(), members);
  if (scene.activeTag == &tag) members.push_back({"active", Json(true)});
  PutBack(tag.kept, members);
  return Json(std::move(members));
}

Json WriteParticles(const ParticleContent& content) {
  Json::Array items;
  for (const ParticleItem& item : content.particles) {
    if (item.visible && item.alive && item.kept.empty()) {
      items.push_back(JsonOf(item.position));
      continue;
    }
    Json::Object members;
    WriteFields(item, ParticleItem(), FieldsOfParticles(), members);
    PutBack(item.kept, members);
    items.push_back(Json(std::move(members)));
  }
  return Json(std::move(items));
}

/// With its children, which no scene nests deeper than a file can.
Json WriteObject(const Object& object, const Scene& scene) {
  const ObjectKind& kind = KindOfContent(object.content);
  Json::Object members = {
      {"kind", Json(object.unknownKind.empty() ? std::string(kind.name) : object.unknownKind)}};
  WriteFields(object, Object(), FieldsOfObjects(), members);
  WriteFields(object.content, kind.initial, kind.fields, members);
  if (const auto* particles = std::get_if<ParticleContent>(&object.content)) {
    members.push_back({"particles", WriteParticles(*particles)});
  }
  Json::Array textures, children;
  for (const auto& tag : object.textureTags) textures.push_back(WriteTexture(*tag, scene));
  for (const auto& child : object.children) children.push_back(WriteObject(*child, scene));
  if (!textures.empty()) members.push_back({"textures", Json(std::move(textures))});
  if (!children.empty()) members.push_back({"children", Json(std::move(children))});
  PutBack(object.kept, members);
  return Json(std::move(members));
}

}  // namespace

Json SceneJson(const Scene& scene) {
  Json::Object members = {{"format", Json(std::string(kSceneFormat))},
                          {"version", Json(scene.version)}};
  WriteFields(scene, Scene(), FieldsOfScenes(), members);
  Json::Object camera;
  WriteFields(scene.camera, Camera(), FieldsOfCameras(), camera);
  PutBack(scene.camera.kept, camera);
  if (!camera.empty()) members.push_back({"camera", Json(std::move(camera))});
  Json::Array materials, objects;
  for (const auto& material : scene.materials) materials.push_back(WriteMaterial(*material));
  for (const auto& object : scene.root.children) objects.push_back(WriteObject(*object, scene));
  members.push_back({"materials", Json(std::move(materials))});
  members.push_back({"objects", Json(std::move(objects))});
  PutBack(scene.kept, members);
  return Json(std::move(members));
}

std::string SceneText(const Scene& scene) { return WriteJson(SceneJson(scene)) + '\n'; }

tl::expected<void, std::string> SaveScene(const Scene& scene, const std::filesystem::path& file) {
  return WriteDocument(SceneJson(scene), file);
}

}  // namespace sorvanix::host
