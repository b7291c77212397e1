// Host operations on keyed containers, the payload of messages. A null container holds nothing.
#pragma once

#include "module/shell/host_call.h"

namespace sorvanix {

inline constexpr std::int32_t kNoKey = -1;

/// The index of a key, or -1 when the container does not hold it.
inline std::int32_t hostContainerFind(const HostContainer* container, std::int32_t key) noexcept {
  return hostCallOn(hostApi.container, &ContainerTable::find, -1, container, key);
}

/// The key at an index, or kNoKey past the end.
inline std::int32_t hostContainerKeyAt(const HostContainer* container,
                                       std::int32_t index) noexcept {
  return hostCallOn(hostApi.container, &ContainerTable::keyAt, kNoKey, container, index);
}

inline std::int32_t hostContainerGetBool(const HostContainer* container, std::int32_t key,
                                         std::int32_t def) noexcept {
  if (hostContainerFind(container, key) < 0) return def;
  return hostCallOn(hostApi.container, &ContainerTable::getBool, def, container, key, def);
}
inline Word hostContainerGetInt(const HostContainer* container, std::int32_t key,
                                Word def) noexcept {
  if (hostContainerFind(container, key) < 0) return def;
  return hostCallOn(hostApi.container, &ContainerTable::getInt, def, container, key, def);
}
inline float hostContainerGetFloat(const HostContainer* container, std::int32_t key,
                                   float def) noexcept {
  if (hostContainerFind(container, key) < 0) return def;
  return hostCallOn(hostApi.container, &ContainerTable::getFloat, def, container, key, def);
}
inline Vector hostContainerGetVector(const HostContainer* container, std::int32_t key,
                                     const Vector& def) noexcept {
  Vector value = def;
  if (hostContainerFind(container, key) >= 0) {
    hostCallOn(hostApi.container, &ContainerTable::getVector, container, key, &def, &value);
  }
  return value;
}

/// The container under a key, which stays the outer one's own; null when there is none.
inline HostContainer* hostContainerGetContainer(const HostContainer* container,
                                                std::int32_t key) noexcept {
  if (hostContainerFind(container, key) < 0) return nullptr;
  return hostCallOn(hostApi.container, &ContainerTable::getContainer, nullptr, container, key,
                    nullptr);
}
/// The text under a key, which stays the container's own; `def` when there is none.
inline const HostString* hostContainerGetString(const HostContainer* container, std::int32_t key,
                                                const HostString* def) noexcept {
  if (hostContainerFind(container, key) < 0) return def;
  return hostCallOn(hostApi.container, &ContainerTable::getString, def, container, key, def);
}

inline void hostContainerSetBool(HostContainer* container, std::int32_t key,
                                 std::int32_t value) noexcept {
  hostCallOn(hostApi.container, &ContainerTable::setBool, container, key, value);
}
inline void hostContainerSetInt(HostContainer* container, std::int32_t key, Word value) noexcept {
  hostCallOn(hostApi.container, &ContainerTable::setInt, container, key, value);
}
inline void hostContainerSetFloat(HostContainer* container, std::int32_t key,
                                  float value) noexcept {
  hostCallOn(hostApi.container, &ContainerTable::setFloat, container, key, value);
}
inline void hostContainerSetVector(HostContainer* container, std::int32_t key,
                                   const Vector& value) noexcept {
  hostCallOn(hostApi.container, &ContainerTable::setVector, container, key, &value);
}
inline void hostContainerSetString(HostContainer* container, std::int32_t key,
                                   const HostString* value) noexcept {
  hostCallOn(hostApi.container, &ContainerTable::setString, container, key, value);
}
/// Stores a copy of `value`.
inline void hostContainerSetContainer(HostContainer* container, std::int32_t key,
                                      const HostContainer* value) noexcept {
  hostCallOn(hostApi.container, &ContainerTable::setContainer, container, key, value);
}

/// An empty container of the module's own, freed at the end.
class OwnedContainer {
 public:
  OwnedContainer() noexcept
      : handle_(hostCall(hostApi.container, &ContainerTable::create, nullptr, kNoId)) {}
  OwnedContainer(const OwnedContainer&) = delete;
  OwnedContainer& operator=(const OwnedContainer&) = delete;
  ~OwnedContainer() { hostCallOn(hostApi.container, &ContainerTable::free, handle_); }

  /// Null when memory was short.
  HostContainer* get() const noexcept { return handle_; }

 private:
  static constexpr std::int32_t kNoId = 0;
  HostContainer* handle_;
};

}  // namespace sorvanix
