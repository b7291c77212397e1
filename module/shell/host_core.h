// Host operations for memory, messages, registration and resources, as thin typed functions.
#pragma once

#include "module/shell/host_call.h"

namespace sorvanix {

/// A block of `size` bytes cleared to zero, a size of 0 counting as 1; null when memory is short.
inline void* hostAlloc(std::size_t size) noexcept {
  return hostCall(hostApi.general, &GeneralTable::alloc, nullptr, size == 0 ? 1 : size);
}

inline void hostFree(void* block) noexcept {
  if (block != nullptr) hostCall(hostApi.general, &GeneralTable::free, block);
}

/// Shows a message and waits for the user.
inline void hostMessageDialog(const HostString* text, std::int32_t flags) noexcept {
  if (text != nullptr) hostCall(hostApi.general, &GeneralTable::messageDialog, text, flags);
}

/// Registers a plug-in; nonzero on success, 0 without a name.
/// Hosts below version 6114 know only the form without a record size.
inline std::int32_t hostRegisterPlugin(std::int32_t api, std::int32_t type, std::int32_t id,
                                       const HostString* name, const ShaderRecord* record,
                                       std::int32_t size) noexcept {
  constexpr Word kFirstSizedVersion = 6114;
  if (name == nullptr) return 0;
  if (hostApi.version < kFirstSizedVersion) {
    return hostCall(hostApi.general, &GeneralTable::registerPluginUnsized, 0, api, type, id, name,
                    record);
  }
  return hostCall(hostApi.general, &GeneralTable::registerPlugin, 0, api, type, id, name, record,
                  size);
}

inline HostResources* hostOpenResources(const HostFilename* directory) noexcept {
  return hostCall(hostApi.resources, &ResourceTable::open, nullptr, directory);
}

inline void hostCloseResources(HostResources* resources) noexcept {
  if (resources != nullptr) hostCall(hostApi.resources, &ResourceTable::close, resources);
}

}  // namespace sorvanix
