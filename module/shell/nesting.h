// How a filter tells a shader that it is read from inside: which shaders take part, their mark and
// their slots.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>

namespace sorvanix {

/// Whether a filter writes its footprint into the slots of this shader.
bool IsFilterAware(std::int32_t pluginId) noexcept;

/// Sets `nested` in the block of the linked shader, if it has one. The mark stays when the render
/// ends; Copy clears it.
void MarkNested(ChannelLink* link) noexcept;

/// The ThreadSlots of an aware input. A stride of 0 means that it does not take part.
struct InnerSlots {
  void* address = nullptr;
  std::int32_t stride = 0;
};

/// Asks the linked shader for its slots and marks it as nested, if it is aware. An answer that
/// cannot be an array of slots counts as none: nothing is ever written through it.
InnerSlots AskForSlots(ChannelLink* link) noexcept;

}  // namespace sorvanix
