// Host operations on documents, the objects of a scene and what hangs on them. Main thread, between
// renders; what previews use also on the preview's own thread.
//
// A null object, tag or document answers null, 0 or nothing.
#pragma once

#include <utility>

#include "module/shell/host_call.h"
#include "module/shell/host_text.h"

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
inline HostTag* hostObjectTag(const HostObject* object, std::int32_t type) noexcept {
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

/// A document that was loaded, freed at the end; empty when there is none.
class OwnedDocument {
 public:
  OwnedDocument() noexcept = default;
  /// From a file.
  explicit OwnedDocument(const OwnedFilename& filename) noexcept
      : handle_(hostCall(hostApi.documentList, &DocumentListTable::load, nullptr, filename.get())) {
  }
  OwnedDocument(OwnedDocument&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  OwnedDocument& operator=(OwnedDocument&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  OwnedDocument(const OwnedDocument&) = delete;
  OwnedDocument& operator=(const OwnedDocument&) = delete;
  ~OwnedDocument() { hostCallOn(hostApi.documentList, &DocumentListTable::free, handle_); }
  HostDocument* get() const noexcept { return handle_; }

 private:
  HostDocument* handle_ = nullptr;
};

/// The document that the user works on, or null.
inline const HostDocument* hostActiveDocument() noexcept {
  return hostCall(hostApi.documentList, &DocumentListTable::active, nullptr);
}

/// The tag that the user selected, or null.
inline const HostTag* hostActiveTag(const HostDocument* document) noexcept {
  return hostCallOn(hostApi.document, &DocumentTable::activeTag, nullptr, document);
}

/// The object of this name, or null.
inline HostObject* hostFindObject(const HostDocument* document, const HostString* name) noexcept {
  return hostCallOn(hostApi.document, &DocumentTable::findObject, nullptr, document, name);
}

/// A new tag on the object, or null.
inline HostTag* hostMakeTag(HostObject* object, std::int32_t type) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::makeTag, nullptr, object, type);
}
inline void hostSetTagMaterial(HostTag* tag, HostMaterial* material) noexcept {
  hostCallOn(hostApi.object, &ObjectTable::setTagMaterial, tag, material);
}

/// The settings of a texture tag, which stay the tag's own; null when there are none.
inline const HostContainer* hostTagContainer(const HostTag* tag) noexcept {
  return hostCallOn(hostApi.object, &ObjectTable::tagContainer, nullptr, tag);
}
/// Where a texture tag lies, how large it is and how it is turned, in radians.
inline Vector hostTagPosition(const HostTag* tag) noexcept {
  Vector position = {};
  hostCallOn(hostApi.object, &ObjectTable::tagPosition, tag, &position);
  return position;
}
inline Vector hostTagScale(const HostTag* tag) noexcept {
  Vector scale = {};
  hostCallOn(hostApi.object, &ObjectTable::tagScale, tag, &scale);
  return scale;
}
inline Vector hostTagRotation(const HostTag* tag) noexcept {
  Vector angles = {};
  hostCallOn(hostApi.object, &ObjectTable::tagRotation, tag, &angles);
  return angles;
}

/// A material of a scene for as long as this object lives; empty when the host cannot make one.
class SceneMaterial {
 public:
  explicit SceneMaterial(std::int32_t type) noexcept
      : handle_(hostCall(hostApi.material, &MaterialTable::create, nullptr, type)) {}
  SceneMaterial(const SceneMaterial&) = delete;
  SceneMaterial& operator=(const SceneMaterial&) = delete;
  ~SceneMaterial() {
    hostCallOn(hostApi.document, &DocumentTable::removeMaterial, document_, handle_);
    hostCallOn(hostApi.material, &MaterialTable::free, handle_);
  }
  HostMaterial* get() const noexcept { return handle_; }

  void EnableChannel(std::int32_t channel, bool on) noexcept {
    hostCallOn(hostApi.material, &MaterialTable::enableChannel, handle_, channel, on ? 1 : 0);
  }
  /// The link that fills a channel: stays the material's own.
  ChannelLink* Channel(std::int32_t channel) const noexcept {
    return hostCallOn(hostApi.material, &MaterialTable::channel, nullptr, handle_, channel);
  }
  void InsertInto(HostDocument* document) noexcept {
    document_ = document;
    hostCallOn(hostApi.document, &DocumentTable::insertMaterial, document, handle_);
  }

 private:
  HostMaterial* handle_;
  HostDocument* document_ = nullptr;
};

/// Renders into a bitmap by settings (KeyRenderWidth, ...) until done or `thread` is told to stop.
/// 0 for success.
inline std::int32_t hostRenderDocument(HostDocument* document, HostBitmap* bitmap,
                                       const HostContainer* settings, HostThread* thread) noexcept {
  constexpr std::int32_t kNotRendered = 1;
  if (bitmap == nullptr || settings == nullptr) return kNotRendered;
  return hostCallOn(hostApi.document, &DocumentTable::render, kNotRendered, document, bitmap,
                    settings, thread);
}

}  // namespace sorvanix
