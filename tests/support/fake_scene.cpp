#include "tests/support/fake_scene.h"

#include "tests/support/fake_host.h"

namespace sorvanix::test {

namespace {

int livePolygonised = 0;

const FakeObject& Of(const HostObject* object) {
  return *reinterpret_cast<const FakeObject*>(object);
}
HostObject* HandleOf(FakeObject* object) { return reinterpret_cast<HostObject*>(object); }
const FakeTag& Of(const HostTag* tag) { return *reinterpret_cast<const FakeTag*>(tag); }

// An object has a tag where it holds something of its kind.
bool HasTag(const FakeObject& object, std::int32_t type) {
  switch (type) {
    case TagTypePoints:
      return !object.points.empty();
    case TagTypePolygons:
      return !object.polygons.empty();
    case TagTypeParticles:
      return !object.particles.empty();
    default:
      return false;
  }
}

HostTag* TagOf(const HostObject* handle, std::int32_t type) noexcept {
  const FakeObject& object = Of(handle);
  if (!HasTag(object, type)) return nullptr;
  for (const FakeTag& tag : object.tags) {
    if (tag.type == type) return reinterpret_cast<HostTag*>(const_cast<FakeTag*>(&tag));
  }
  return nullptr;
}

const void* TagData(const HostTag* handle) noexcept {
  const FakeTag& tag = Of(handle);
  if (tag.type == TagTypePoints) return tag.object->points.data();
  if (tag.type == TagTypePolygons) return tag.object->polygons.data();
  return nullptr;
}

std::int32_t TagItemCount(const HostTag* handle) noexcept {
  const FakeTag& tag = Of(handle);
  if (tag.type == TagTypePoints) return static_cast<std::int32_t>(tag.object->points.size());
  if (tag.type == TagTypePolygons) return static_cast<std::int32_t>(tag.object->polygons.size());
  return static_cast<std::int32_t>(tag.object->particles.size());
}

const ParticleRecord* ParticleAt(const HostTag* handle, std::int32_t index) noexcept {
  const auto& particles = Of(handle).object->particles;
  if (index < 0 || static_cast<std::size_t>(index) >= particles.size()) return nullptr;
  return &particles[static_cast<std::size_t>(index)];
}

HostObject* Polygonise(const HostObject* object, float detail) noexcept {
  if (IsDue(FakeHost::Current().failPolygonise)) return nullptr;
  if (detail != 1 || Of(object).polygonised.empty()) return nullptr;
  ++livePolygonised;
  auto* made = new FakeObject("made of polygons");
  made->points = Of(object).polygonised;
  return HandleOf(made);
}

void FreeObject(HostObject* object) noexcept {
  --livePolygonised;
  delete reinterpret_cast<FakeObject*>(object);
}

}  // namespace

FakeObject& FakeScene::Add(std::string name, FakeObject* parent) {
  FakeObject& object = objects_.emplace_back(std::move(name));
  FakeObject** place = parent == nullptr ? &first : &parent->down;
  while (*place != nullptr) place = &(*place)->next;
  *place = &object;
  return object;
}

const ObjectTable& FakeObjectTable() {
  static const ObjectTable table = [] {
    ObjectTable t = {};
    t.next = [](const HostObject* o) noexcept { return HandleOf(Of(o).next); };
    t.down = [](const HostObject* o) noexcept { return HandleOf(Of(o).down); };
    // The fake host takes any text for a string.
    t.name = [](const HostObject* o) noexcept {
      return reinterpret_cast<const HostString*>(&Of(o).name);
    };
    t.type = [](const HostObject* o) noexcept { return Of(o).type; };
    t.infoFlags = [](const HostObject* o) noexcept { return Of(o).infoFlags; };
    t.globalMatrix = [](const HostObject* o, Matrix* matrix) noexcept { *matrix = Of(o).matrix; };
    t.tag = TagOf;
    t.tagData = TagData;
    t.tagItemCount = TagItemCount;
    t.particleAt = ParticleAt;
    t.polygonise = Polygonise;
    t.free = FreeObject;
    return t;
  }();
  return table;
}

const DocumentTable& FakeDocumentTable() {
  static const DocumentTable table = [] {
    DocumentTable t = {};
    t.firstObject = [](const HostDocument* document) noexcept {
      return HandleOf(reinterpret_cast<const FakeScene*>(document)->first);
    };
    return t;
  }();
  return table;
}

int LivePolygonisedObjects() { return livePolygonised; }

}  // namespace sorvanix::test
