#include "host/scene/scene.h"

#include <algorithm>
#include <utility>

#include "host/scene/primitives.h"

namespace sorvanix::host {
namespace {

/// The tags that stand for what a file or a particle system holds, made once for each object.
void AddDataTag(Object& object, std::int32_t type) {
  for (const auto& tag : object.dataTags) {
    if (tag->type == type) return;
  }
  object.dataTags.push_back(std::make_unique<Tag>(type, object));
}

struct ContentUpdate {
  Object& object;

  void operator()(const NullContent&) const {}
  void operator()(const LightContent&) const {}
  void operator()(const Primitive& primitive) const {
    if (object.mesh == nullptr || object.builtFrom != primitive) {
      object.mesh = std::make_shared<PolygonMesh>(BuildPrimitive(primitive));
      object.builtFrom = primitive;
    }
  }
  void operator()(const MeshContent& content) const {
    object.mesh = content.mesh;
    AddDataTag(object, TagTypePoints);
    AddDataTag(object, TagTypePolygons);
  }
  void operator()(const ParticleContent& content) const {
    for (const ParticleItem& item : content.particles) {
      const std::int32_t flags =
          (item.visible ? ParticleVisible : 0) | (item.alive ? ParticleAlive : 0);
      object.particles.push_back({TransformPoint(object.world, item.position), flags});
    }
    AddDataTag(object, TagTypeParticles);
  }
};

Vector Times(const Vector& v, float factor) noexcept {
  return {v.x * factor, v.y * factor, v.z * factor};
}

std::int32_t RecordType(LightKind kind) noexcept {
  switch (kind) {
    case LightKind::Spot:
      return LightSpot;
    case LightKind::Distant:
      return LightDistant;
    case LightKind::Rectangle:
      return LightRectangle;
    case LightKind::Disc:
      return LightDisc;
    case LightKind::Omni:
    case LightKind::Ambient:
      break;
  }
  return LightOmni;
}

}  // namespace

Object& Object::Add(std::unique_ptr<Object> child) {
  children.push_back(std::move(child));
  Object& added = *children.back();
  added.parent = this;
  added.next = nullptr;
  if (children.size() > 1) children[children.size() - 2]->next = &added;
  return added;
}

Matrix Camera::ToWorld() const noexcept {
  Matrix matrix = RotationMatrix(Radians(transform.rotation));
  matrix.off = transform.position;
  return matrix;
}

void Object::Update() {
  world = parent != nullptr ? Multiply(parent->world, ToMatrix(transform)) : ToMatrix(transform);
  if (!std::holds_alternative<Primitive>(content)) mesh = nullptr;
  particles.clear();
  std::visit(ContentUpdate{*this}, content);
}

void Scene::Update() {
  for (Object* object = Following(root, root); object != nullptr;
       object = Following(*object, root)) {
    object->Update();
  }
}

void Scene::Add(std::shared_ptr<Material> material) {
  material->scene = this;
  materials.push_back(std::move(material));
}

std::shared_ptr<Material> Scene::Remove(const Material& material) {
  const auto found = std::find_if(materials.begin(), materials.end(),
                                  [&](const auto& each) { return each.get() == &material; });
  if (found == materials.end()) return nullptr;
  std::shared_ptr<Material> removed = std::move(*found);
  materials.erase(found);
  removed->scene = nullptr;
  for (Object* object = Following(root, root); object != nullptr;
       object = Following(*object, root)) {
    for (const auto& tag : object->textureTags) {
      if (tag->material.lock() == removed) tag->material.reset();
    }
  }
  return removed;
}

void Scene::TakeOver(Scene& other) {
  for (auto& material : other.materials) Add(std::move(material));
  for (auto& object : other.root.children) root.Add(std::move(object));
  other.materials.clear();
  other.root.children.clear();
  other.activeTag = nullptr;
  Update();
}

Object* Scene::FindObject(std::string_view name) noexcept {
  for (Object* object = Following(root, root); object != nullptr;
       object = Following(*object, root)) {
    if (object->name.text == name) return object;
  }
  return nullptr;
}

std::shared_ptr<Material> Scene::FindMaterial(std::string_view name) const noexcept {
  for (const auto& material : materials) {
    if (material->name.text == name) return material;
  }
  return nullptr;
}

Object* Following(const Object& object, const Object& root) noexcept {
  if (!object.children.empty()) return object.children.front().get();
  const Object* level = &object;
  while (level != &root && level->next == nullptr) level = level->parent;
  return level == &root ? nullptr : level->next;
}

std::int32_t TypeOf(const Object& object) noexcept {
  struct Visitor {
    std::int32_t operator()(const NullContent&) const { return 1; }
    std::int32_t operator()(const Primitive&) const { return 2; }
    std::int32_t operator()(const MeshContent&) const { return 3; }
    std::int32_t operator()(const ParticleContent&) const { return ObjectTypeParticles; }
    // A light has no surface that a frame could be fitted to.
    std::int32_t operator()(const LightContent&) const { return ObjectTypeExcludedFromFrame; }
  };
  return std::visit(Visitor(), object.content);
}

LightRecord ToLightRecord(const Object& object) noexcept {
  const auto* light = std::get_if<LightContent>(&object.content);
  if (light == nullptr) return {};
  const Vector angles = Radians({light->innerAngle, light->outerAngle, 0});
  return {.ambient = light->kind == LightKind::Ambient,
          .noDiffuse = !light->diffuse,
          .noSpecular = !light->specular,
          .type = RecordType(light->kind),
          .contrast = light->contrast,
          .colour = Times(light->colour, light->intensity),
          .position = object.world.off,
          .direction = UnitVector(object.world.v3, {0, 0, 1}),
          .innerAngle = angles.x,
          .outerAngle = angles.y,
          .falloff = light->falloff,
          .range = light->range,
          .castShadows = light->shadows,
          .areaU = Times(object.world.v1, light->width * 0.5f),
          .areaW = Times(object.world.v2, light->height * 0.5f)};
}

std::vector<LightRecord> Lights(const Scene& scene) {
  std::vector<LightRecord> lights;
  for (const Object* object = Following(scene.root, scene.root); object != nullptr;
       object = Following(*object, scene.root)) {
    if (std::holds_alternative<LightContent>(object->content)) {
      lights.push_back(ToLightRecord(*object));
    }
  }
  return lights;
}

Matrix TagToWorld(const TextureTagNode& tag) noexcept {
  return Multiply(tag.object->world, ToMatrix(tag.placement));
}

}  // namespace sorvanix::host
