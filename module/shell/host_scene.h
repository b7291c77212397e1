// Host operations on the objects of a scene and what hangs on them. Main thread, between renders.
//
// A null object, tag or document answers null, 0 or nothing.
#pragma once

#include "module/shell/host_call.h"

namespace sorvanix {

inline const HostObject* hostFirstObject(const HostDocument* document) noexcept {
  return hostCallOn(hostApi.document, &DocumentTable::firstObject, nullptr, document);
}

/// The following sibling, or null.
inline const HostObject* hostNextObject(const HostObject* object) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::next, nullptr, object);
}

/// The first child, or null.
inline const HostObject* hostDownObject(const HostObject* object) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::down, nullptr, object);
}

/// Stays the object's own.
inline const HostString* hostObjectName(const HostObject* object) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::name, nullptr, object);
}

inline std::int32_t hostObjectType(const HostObject* object) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::type, 0, object);
}

/// ObjectHasGeometry and the like.
inline std::int32_t hostObjectInfoFlags(const HostObject* object) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::infoFlags, 0, object);
}

/// Object to world; `otherwise` when the host cannot tell.
inline Matrix hostObjectGlobalMatrix(const HostObject* object, const Matrix& otherwise) noexcept {
  Matrix matrix = otherwise;
  hostCallOn(hostApi.object, &ObjectTable::globalMatrix, object, &matrix);
  return matrix;
}

/// The first tag of a type, or null.
inline const HostTag* hostObjectTag(const HostObject* object, std::int32_t type) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::tag, nullptr, object, type);
}

/// The items of a tag as an array; null when there are none.
template <class Item>
inline const Item* hostTagItems(const HostTag* tag) noexcept {
  return static_cast<const Item*>(hostCallOn(hostApi.object, &ObjectTable::tagData, nullptr, tag));
}

inline std::int32_t hostTagItemCount(const HostTag* tag) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::tagItemCount, 0, tag);
}

/// One particle of a particle tag, or null.
inline const ParticleRecord* hostParticleAt(const HostTag* tag, std::int32_t index) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::particleAt, nullptr, tag, index);
}

/// An object made of polygons for the time being; empty when the host cannot make it.
class PolygonisedObject {
 public:
  /// From a primitive; a detail of 1 is the full one.
  PolygonisedObject(const HostObject* primitive, float detail) noexcept
      : object_(hostCallOn(hostApi.object, &ObjectTable::polygonise, nullptr, primitive, detail)) {}
  PolygonisedObject(const PolygonisedObject&) = delete;
  PolygonisedObject& operator=(const PolygonisedObject&) = delete;
  ~PolygonisedObject() { hostCallOn(hostApi.object, &ObjectTable::free, object_); }
  const HostObject* get() const noexcept { return object_; }

 private:
  HostObject* object_;
};

}  // namespace sorvanix
