// Host operations on channel links, the inputs of shaders. A link holds nothing, a shader or a
// bitmap; a null link acts as one that holds nothing.
//
// Sampling, and asking for the plug-in id, are safe on several threads at once.
#pragma once

#include "module/shell/host_call.h"

namespace sorvanix {

/// A new empty link, or null.
inline ChannelLink* hostChannelCreate() noexcept {
  return hostCall(hostApi.channel, &ChannelTable::create, nullptr);
}

inline void hostChannelRelease(ChannelLink* link) noexcept {
  hostCallOn(hostApi.channel, &ChannelTable::release, link);
}

/// Makes `destination` hold a copy of what `source` holds; nonzero on success.
inline std::int32_t hostChannelCopy(const ChannelLink* source, ChannelLink* destination) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::copy, 0, source, destination);
}

/// Nonzero when both links hold equal things.
inline std::int32_t hostChannelCompare(const ChannelLink* first,
                                       const ChannelLink* second) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::compare, 0, first, second);
}

/// 0 for success.
inline std::int32_t hostChannelInitRender(ChannelLink* link, const RenderInit* init) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::initRender, 0, link, init);
}

inline void hostChannelFreeRender(ChannelLink* link) noexcept {
  hostCallOn(hostApi.channel, &ChannelTable::freeRender, link);
}

/// The colour that the link shows at `uvw`; `render` may be null.
inline Vector hostChannelSample(ChannelLink* link, RenderContext* render, const Vector& uvw,
                                const Vector& delta, const Vector& normal, float time,
                                std::int32_t tagFlag, float blurOffset, float blurScale) noexcept {
  Vector result = {};
  if (link == nullptr) return result;
  hostCall(hostApi.channel, &ChannelTable::sample, &result, &result, link, render, &uvw, &delta,
           &normal, time, tagFlag, blurOffset, blurScale);
  return result;
}

/// The link's bitmap, or null.
inline HostBitmap* hostChannelBitmap(ChannelLink* link) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::bitmap, nullptr, link);
}

/// Sends a message to the linked shader and answers what it answers.
inline std::int32_t hostChannelMessage(ChannelLink* link, std::int32_t id,
                                       HostContainer* container) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::message, 0, link, id, container);
}

/// The id of the linked shader; 0 for a bitmap and for an empty link.
inline std::int32_t hostChannelPluginId(const ChannelLink* link) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::pluginId, 0, link);
}

/// The instance of the linked shader, or null.
inline ShaderInstance* hostChannelInstance(ChannelLink* link) noexcept {
  return hostCallOn(hostApi.channel, &ChannelTable::instance, nullptr, link);
}

/// The size of a bitmap in pixels.
inline std::int32_t hostBitmapWidth(const HostBitmap* bitmap) noexcept {
  return hostCallOn(hostApi.bitmap, &BitmapTable::width, 0, bitmap);
}
inline std::int32_t hostBitmapHeight(const HostBitmap* bitmap) noexcept {
  return hostCallOn(hostApi.bitmap, &BitmapTable::height, 0, bitmap);
}

}  // namespace sorvanix
