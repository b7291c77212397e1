#include "host/scene/object_table.h"

#include <cstdint>
#include <memory>

#include "host/scene/scene.h"

namespace sorvanix::host {
namespace {

template <class Node>
auto HandleOf(Node* node) noexcept {
  return node != nullptr ? node->Handle() : nullptr;
}

HostObject* Next(const HostObject* handle) noexcept {
  const Object* object = Object::From(handle);
  return object != nullptr ? HandleOf(object->next) : nullptr;
}

HostObject* Down(const HostObject* handle) noexcept {
  const Object* object = Object::From(handle);
  if (object == nullptr || object->children.empty()) return nullptr;
  return object->children.front()->Handle();
}

const HostString* Name(const HostObject* handle) noexcept {
  const Object* object = Object::From(handle);
  return object != nullptr ? object->name.Handle() : nullptr;
}

std::int32_t Type(const HostObject* handle) noexcept {
  const Object* object = Object::From(handle);
  return object != nullptr ? TypeOf(*object) : 0;
}

std::int32_t InfoFlags(const HostObject* handle) noexcept {
  const Object* object = Object::From(handle);
  if (object == nullptr) return 0;
  if (std::holds_alternative<Primitive>(object->content)) {
    return ObjectHasGeometry | ObjectNeedsPolygonise;
  }
  return std::holds_alternative<MeshContent>(object->content) ? ObjectHasGeometry : 0;
}

void GlobalMatrix(const HostObject* handle, Matrix* matrix) noexcept {
  if (matrix == nullptr) return;
  const Object* object = Object::From(handle);
  *matrix = object != nullptr ? object->world : kIdentityMatrix;
}

HostTag* FindTag(const HostObject* handle, std::int32_t type) noexcept {
  const Object* object = Object::From(handle);
  if (object == nullptr) return nullptr;
  for (const auto& tag : object->dataTags) {
    if (tag->type == type) return tag->Handle();
  }
  if (type != TagTypeTexture || object->textureTags.empty()) return nullptr;
  return object->textureTags.front()->Handle();
}

const PolygonMesh* MeshOf(const Tag* tag) noexcept {
  return tag != nullptr ? tag->object->mesh.get() : nullptr;
}

const void* TagData(const HostTag* handle) noexcept {
  const Tag* tag = Tag::From(handle);
  const PolygonMesh* mesh = MeshOf(tag);
  if (mesh == nullptr) return nullptr;
  if (tag->type == TagTypePoints) return mesh->points.data();
  return tag->type == TagTypePolygons ? mesh->polygons.data() : nullptr;
}

std::int32_t TagItemCount(const HostTag* handle) noexcept {
  const Tag* tag = Tag::From(handle);
  if (tag == nullptr) return 0;
  std::size_t count = 0;
  if (tag->type == TagTypeParticles) count = tag->object->particles.size();
  if (const PolygonMesh* mesh = MeshOf(tag)) {
    if (tag->type == TagTypePoints) count = mesh->points.size();
    if (tag->type == TagTypePolygons) count = mesh->polygons.size();
  }
  return static_cast<std::int32_t>(count);
}

const ParticleRecord* ParticleAt(const HostTag* handle, std::int32_t index) noexcept {
  const Tag* tag = Tag::From(handle);
  if (tag == nullptr || tag->type != TagTypeParticles || index < 0) return nullptr;
  const auto& particles = tag->object->particles;
  const auto place = static_cast<std::size_t>(index);
  return place < particles.size() ? &particles[place] : nullptr;
}

std::shared_ptr<const PolygonMesh> PolygonsOf(const Object& object, float detail) {
  const auto* primitive = std::get_if<Primitive>(&object.content);
  if (primitive == nullptr) return object.mesh;
  return std::make_shared<PolygonMesh>(BuildPrimitive(*primitive, detail));
}

HostObject* Polygonise(const HostObject* handle, float detail) noexcept {
  const Object* source = Object::From(handle);
  if (source == nullptr || source->mesh == nullptr) return nullptr;
  return Guarded<HostObject*>(nullptr, [&] {
    auto polygons = std::make_unique<Object>();
    polygons->name = source->name;
    polygons->content = MeshContent{.file = {}, .mesh = PolygonsOf(*source, detail)};
    polygons->transform = source->transform;
    polygons->Update();
    polygons->world = source->world;  // it stands where its source does, without its parents
    return polygons.release()->Handle();
  });
}

void Free(HostObject* handle) noexcept {
  Object* object = Object::From(handle);
  if (object == nullptr || object->parent != nullptr) return;  // a scene's own stay
  delete object;
}

HostTag* MakeTag(HostObject* handle, std::int32_t type) noexcept {
  Object* object = Object::From(handle);
  if (object == nullptr || type != TagTypeTexture) return nullptr;
  return Guarded<HostTag*>(nullptr, [&] {
    auto tag = std::make_unique<TextureTagNode>(*object);
    return object->textureTags.emplace_back(std::move(tag))->Handle();
  });
}

/// The texture tag behind a handle; null for a tag of another type.
const TextureTagNode* TextureOf(const HostTag* handle) noexcept {
  const Tag* tag = Tag::From(handle);
  return tag != nullptr && tag->type == TagTypeTexture ? static_cast<const TextureTagNode*>(tag)
                                                       : nullptr;
}

void SetTagMaterial(HostTag* handle, HostMaterial* material) noexcept {
  auto* tag = const_cast<TextureTagNode*>(TextureOf(handle));
  if (tag == nullptr) return;
  tag->material.reset();
  if (Material* chosen = Material::From(material)) tag->material = chosen->weak_from_this();
}

const HostContainer* TagContainer(const HostTag* handle) noexcept {
  const TextureTagNode* tag = TextureOf(handle);
  if (tag == nullptr) return nullptr;
  return Guarded<const HostContainer*>(nullptr, [&] {
    if (tag->settings == nullptr) tag->settings = std::make_unique<Container>(TagTypeTexture);
    Container& settings = *tag->settings;
    settings.Set(KeyTagOffsetU, tag->offsetU);
    settings.Set(KeyTagOffsetV, tag->offsetV);
    settings.Set(KeyTagLengthU, tag->lengthU);
    settings.Set(KeyTagLengthV, tag->lengthV);
    settings.Set(KeyTagProjection, static_cast<Word>(tag->projection));
    settings.Set(KeyTagTile, tag->tile);
    settings.Set(KeyTagSeamless, tag->mirrored);
    return settings.Handle();
  });
}

void TagPosition(const HostTag* handle, Vector* position) noexcept {
  const TextureTagNode* tag = TextureOf(handle);
  if (position != nullptr) *position = tag != nullptr ? tag->placement.position : Vector{};
}

void TagScale(const HostTag* handle, Vector* scale) noexcept {
  const TextureTagNode* tag = TextureOf(handle);
  if (scale != nullptr) *scale = tag != nullptr ? tag->placement.scale : Vector{};
}

void TagRotation(const HostTag* handle, Vector* angles) noexcept {
  const TextureTagNode* tag = TextureOf(handle);
  if (angles != nullptr) *angles = tag != nullptr ? Radians(tag->placement.rotation) : Vector{};
}

}  // namespace

void InstallObjects(ObjectTable& table) noexcept {
  table = {.next = Next,
           .down = Down,
           .name = Name,
           .type = Type,
           .infoFlags = InfoFlags,
           .globalMatrix = GlobalMatrix,
           .tag = FindTag,
           .tagData = TagData,
           .tagItemCount = TagItemCount,
           .particleAt = ParticleAt,
           .polygonise = Polygonise,
           .free = Free,
           .makeTag = MakeTag,
           .setTagMaterial = SetTagMaterial,
           .tagContainer = TagContainer,
           .tagPosition = TagPosition,
           .tagScale = TagScale,
           .tagRotation = TagRotation};
}

}  // namespace sorvanix::host
