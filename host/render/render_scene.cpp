#include "host/render/render_scene.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "host/render/matrix.h"

namespace sorvanix::host {

namespace {

/// ObjectRecord::kind of surfaces made of polygons, which their UvwRecord describes.
constexpr std::uint8_t kPolygons = 0;

std::size_t IndexOf(std::vector<std::shared_ptr<Material>>& materials,
                    std::shared_ptr<Material> material) {
  const auto found = std::find(materials.begin(), materials.end(), material);
  if (found != materials.end()) return static_cast<std::size_t>(found - materials.begin());
  materials.push_back(std::move(material));
  return materials.size() - 1;
}

std::vector<RenderTag> VisibleTags(const Object& object,
                                   std::vector<std::shared_ptr<Material>>& materials) {
  std::vector<RenderTag> tags;
  for (auto tag = object.textureTags.rbegin(); tag != object.textureTags.rend(); ++tag) {
    std::shared_ptr<Material> material = (*tag)->material.lock();
    if (material == nullptr) continue;
    // A negative set is one that no mesh has.
    const auto set = static_cast<std::size_t>(std::int64_t{(*tag)->uvwSet});
    tags.push_back({ToRecord(**tag), IndexOf(materials, std::move(material)), set});
  }
  return tags;
}

}  // namespace

TextureTag ToRecord(const TextureTagNode& tag) noexcept {
  TextureTag record = {};
  record.matrix1 = TagToWorld(tag);
  record.matrix2 = Inverse(record.matrix1);
  record.flags = static_cast<std::int8_t>((tag.tile ? 1 : 0) | (tag.mirrored ? 2 : 0));
  record.projection = static_cast<std::int8_t>(tag.projection);
  record.offsetU = tag.offsetU;
  record.offsetV = tag.offsetV;
  record.lengthU = tag.lengthU;
  record.lengthV = tag.lengthV;
  return record;
}

RenderScene RenderScene::Prepare(Scene& scene, std::int32_t width, std::int32_t height) {
  RenderScene prepared = {
      .view = ScreenView(scene.camera.ToWorld(), scene.camera.fieldOfView, width, height),
      .background = Vec3(scene.background),
      .lights = Lights(scene),
      .objects = {},
      .materials = {}};
  std::int64_t nextIdentity = 1;
  for (Object* object = Following(scene.root, scene.root); object != nullptr;
       object = Following(*object, scene.root)) {
    if (!object->visible || object->mesh == nullptr) continue;
    const auto polygons = static_cast<std::int64_t>(object->mesh->polygons.size());
    // Only scenes with more polygons than memory holds would come back to the first number.
    if (nextIdentity + polygons > std::numeric_limits<std::int32_t>::max()) nextIdentity = 1;
    prepared.objects.push_back({.surface = MeshSurface(object->mesh, object->world),
                                .record = {.kind = kPolygons,
                                           .reserved = {},
                                           .type = TypeOf(*object),
                                           .matrix = object->world,
                                           .object = object->Handle()},
                                .tags = VisibleTags(*object, prepared.materials),
                                .firstIdentity = static_cast<std::int32_t>(nextIdentity)});
    nextIdentity += polygons;
  }
  return prepared;
}

}  // namespace sorvanix::host
