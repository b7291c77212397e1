// The walk over the scene, and what each object gives to the list.
#include "module/shaders/surface/proximal_targets.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "module/shell/host_core.h"
#include "module/shell/host_scene.h"
#include "module/shell/host_text.h"

namespace sorvanix {

namespace {

// Of every point but the centres of faces, in scene units.
constexpr float kReach = 100;

// Deeper trees than any scene has are cut, so that no document can exhaust the stack.
constexpr int kDeepestLevel = 10000;

// An array of the same values with room for more; null when memory is short.
template <class Item>
Item* Enlarged(const Item* items, std::int32_t count, std::int32_t capacity) noexcept {
  auto* larger = static_cast<Item*>(hostAlloc(sizeof(Item) * static_cast<std::size_t>(capacity)));
  if (larger != nullptr && count > 0) {
    std::memcpy(larger, items, sizeof(Item) * static_cast<std::size_t>(count));
  }
  return larger;
}

// Every function that adds to the list answers whether memory lasted. The first failure ends the
// collection.
bool MakeRoom(ProximalTargets& targets, std::int32_t more) noexcept {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  const std::int64_t needed = std::int64_t{targets.count} + more;
  if (needed <= targets.capacity) return true;
  if (needed > kMost) return false;
  // At least twice the room, so that the copies stay in proportion to the points.
  const auto capacity = static_cast<std::int32_t>(
      std::min(kMost, std::max(needed, 2 * std::int64_t{targets.capacity})));
  Vector* points = Enlarged(targets.points, targets.count, capacity);
  float* weights = Enlarged(targets.weights, targets.count, capacity);
  const bool complete = points != nullptr && weights != nullptr;
  if (complete) {
    std::swap(points, targets.points);
    std::swap(weights, targets.weights);
    targets.capacity = capacity;
  }
  hostFree(points);
  hostFree(weights);
  return complete;
}

bool Append(ProximalTargets& targets, const Vector& point, float weight) noexcept {
  if (!MakeRoom(targets, 1)) return false;
  targets.points[targets.count] = point;
  targets.weights[targets.count] = weight;
  ++targets.count;
  return true;
}

// --- what hangs on an object ---

template <class Item>
std::span<const Item> ItemsOf(const HostObject* object, std::int32_t tagType) noexcept {
  const HostTag* tag = hostObjectTag(object, tagType);
  const Item* items = hostTagItems<Item>(tag);
  const std::int32_t count = hostTagItemCount(tag);
  if (items == nullptr || count <= 0) return {};
  return {items, static_cast<std::size_t>(count)};
}

std::span<const Vector> VerticesOf(const HostObject* object) noexcept {
  return ItemsOf<Vector>(object, TagTypePoints);
}

bool AppendVertices(ProximalTargets& targets, std::span<const Vector> vertices,
                    const Matrix& toWorld) noexcept {
  return std::all_of(vertices.begin(), vertices.end(), [&](const Vector& vertex) {
    return Append(targets, Transform(vertex, toWorld), kReach);
  });
}

// The centre of a face reaches as far as its farthest corner. A triangle names its last corner
// twice, and so leans towards it: deliberate.
bool AppendFace(ProximalTargets& targets, const Vector (&corners)[4]) noexcept {
  const Vector sum = Add(Add(Add(corners[0], corners[1]), corners[2]), corners[3]);
  const Vector centre = Scale(0.25f, sum);
  float reach = 0;
  for (const Vector& corner : corners) reach = std::max(reach, Length(Sub(corner, centre)));
  return Append(targets, centre, reach);
}

bool AppendFaces(ProximalTargets& targets, const HostObject* object,
                 std::span<const Vector> vertices, const Matrix& toWorld) noexcept {
  for (const PolygonRecord& face : ItemsOf<PolygonRecord>(object, TagTypePolygons)) {
    const std::int32_t indices[] = {face.a, face.b, face.c, face.d};
    const auto exists = [&](std::int32_t index) {
      return index >= 0 && static_cast<std::size_t>(index) < vertices.size();
    };
    if (!std::all_of(std::begin(indices), std::end(indices), exists)) continue;
    Vector corners[4];
    for (int i = 0; i < 4; ++i) {
      corners[i] = Transform(vertices[static_cast<std::size_t>(indices[i])], toWorld);
    }
    if (!AppendFace(targets, corners)) return false;
  }
  return true;
}

// --- the collection ---

struct Collection {
  const ProximalBlock& block;
  ProximalTargets& targets;

  // Depth first: an object, its children, its next sibling.
  bool Walk(const HostObject* object, int level) noexcept {
    for (; object != nullptr; object = hostNextObject(object)) {
      if (hostStringCompare(hostObjectName(object), block.objectName) == 0) {
        if (!CollectMatch(object)) return false;  // its children are not looked at
      } else if (level < kDeepestLevel && !Walk(hostDownObject(object), level + 1)) {
        return false;
      }
    }
    return true;
  }

  bool CollectMatch(const HostObject* object) noexcept {
    if (block.useChildren == 0 || hostObjectType(object) == ObjectTypeParticles) {
      return Collect(object);
    }
    for (const HostObject* child = hostDownObject(object); child != nullptr;
         child = hostNextObject(child)) {
      if (!Collect(child)) return false;
    }
    return true;
  }

  bool Collect(const HostObject* object) noexcept {
    return hostObjectType(object) == ObjectTypeParticles ? CollectParticles(object)
                                                         : CollectObject(object);
  }

  // Room is made for particles with either flag, and only those with both are taken: deliberate.
  bool CollectParticles(const HostObject* object) noexcept {
    constexpr std::int32_t kEither = ParticleVisible | ParticleAlive;
    const HostTag* tag = hostObjectTag(object, TagTypeParticles);
    const std::int32_t all = hostTagItemCount(tag);
    const auto flagsAt = [tag](std::int32_t i) {
      const ParticleRecord* particle = hostParticleAt(tag, i);
      return particle == nullptr ? 0 : particle->flags & kEither;
    };
    std::int32_t flagged = 0;
    for (std::int32_t i = 0; i < all; ++i) flagged += flagsAt(i) != 0;
    if (!MakeRoom(targets, flagged)) return false;
    for (std::int32_t i = 0; i < all; ++i) {
      if (flagsAt(i) != kEither) continue;
      if (!Append(targets, hostParticleAt(tag, i)->position, kReach)) return false;
    }
    return true;
  }

  bool CollectObject(const HostObject* object) noexcept {
    const std::int32_t flags = hostObjectInfoFlags(object);
    const Matrix toWorld = hostObjectGlobalMatrix(object, kIdentityMatrix);
    if (block.useGeometry == 0 || (flags & ObjectHasGeometry) == 0) {
      return Append(targets, toWorld.off, kReach);
    }
    if ((flags & ObjectNeedsPolygonise) != 0) {  // vertices whatever useFaces says: deliberate
      constexpr float kFullDetail = 1;
      const PolygonisedObject polygons(object, kFullDetail);
      return AppendVertices(targets, VerticesOf(polygons.get()), toWorld);
    }
    const std::span<const Vector> vertices = VerticesOf(object);
    if (block.useFaces != 0) return AppendFaces(targets, object, vertices, toWorld);
    if (vertices.empty()) return Append(targets, toWorld.off, kReach);
    return AppendVertices(targets, vertices, toWorld);
  }
};

}  // namespace

ProximalTargets* CollectTargets(const ProximalBlock& block, const HostDocument* document) noexcept {
  auto* targets = static_cast<ProximalTargets*>(hostAlloc(sizeof(ProximalTargets)));
  if (targets == nullptr) return nullptr;
  // An empty name seeks nothing, not even objects without a name.
  const bool seeks = hostStringCompare(block.objectName, OwnedString().get()) != 0;
  if (seeks) Collection{block, *targets}.Walk(hostFirstObject(document), 0);
  return targets;
}

void FreeTargets(ProximalTargets* targets) noexcept {
  if (targets == nullptr) return;
  hostFree(targets->points);
  hostFree(targets->weights);
  hostFree(targets);
}

}  // namespace sorvanix
