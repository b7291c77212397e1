// The channel table of the contract, and the stream table's two operations on links, over Link.
#include <sorvanix/host_services.h>

#include "host/channels/channel_link.h"

namespace sorvanix::host {

namespace {

ChannelLink* Create() noexcept {
  return Guarded<ChannelLink*>(nullptr, [] { return (new Link)->Handle(); });
}

void Release(ChannelLink* link) noexcept { delete Link::From(link); }

std::int32_t Copy(const ChannelLink* source, ChannelLink* destination) noexcept {
  if (source == nullptr || destination == nullptr) return 0;
  return Guarded(0, [&] { return Link::From(destination)->CopyFrom(*Link::From(source)) ? 1 : 0; });
}

// A null handle equals a null handle alone.
std::int32_t Compare(const ChannelLink* first, const ChannelLink* second) noexcept {
  if (first == nullptr || second == nullptr) return first == second ? 1 : 0;
  return Guarded(0, [&] { return Link::From(first)->Equals(*Link::From(second)) ? 1 : 0; });
}

std::int32_t InitRender(ChannelLink* link, const RenderInit* init) noexcept {
  if (link == nullptr || init == nullptr) return RenderInitFailed;
  return Guarded<std::int32_t>(
      RenderInitFailed, [&] { return Link::From(link)->InitRender(*init) ? 0 : RenderInitFailed; });
}

void FreeRender(ChannelLink* link) noexcept {
  if (link != nullptr) Link::From(link)->FreeRender();
}

Vector* Sample(Vector* result, ChannelLink* link, RenderContext* render, const Vector* uvw,
               const Vector* delta, const Vector* normal, float time, std::int32_t tagFlag,
               float blurOffset, float blurScale) noexcept {
  ChannelSample sample = {};
  if (uvw != nullptr) sample.uvw = *uvw;
  if (normal != nullptr) sample.normal = *normal;
  if (delta != nullptr) sample.delta = *delta;
  sample.time = time;
  sample.texFlags = tagFlag;
  sample.render = render;
  sample.blurOffset = blurOffset;
  sample.blurScale = blurScale;
  const Vector colour = link == nullptr ? Vector{} : Link::From(link)->Sample(sample);
  if (result != nullptr) *result = colour;
  return result;
}

HostBitmap* Picture(ChannelLink* link) noexcept {
  Bitmap* bitmap = link == nullptr ? nullptr : Link::From(link)->Picture();
  return bitmap == nullptr ? nullptr : bitmap->Handle();
}

std::int32_t Message(ChannelLink* link, std::int32_t id, HostContainer* container) noexcept {
  if (link == nullptr || container == nullptr) return 0;
  return Guarded(0, [&] { return Link::From(link)->Message(id, *Container::From(container)); });
}

std::int32_t PluginId(const ChannelLink* link) noexcept {
  return link == nullptr ? 0 : Link::From(link)->PluginId();
}

ShaderInstance* Instance(ChannelLink* link) noexcept {
  Shader* shader = link == nullptr ? nullptr : Link::From(link)->HeldShader();
  return shader == nullptr ? nullptr : &shader->Instance();
}

std::int32_t WriteLink(HostStream* stream, const ChannelLink* link) noexcept {
  if (stream == nullptr || link == nullptr) return 0;
  return Guarded(0, [&] { return Link::From(link)->Write(*Stream::From(stream)) ? 1 : 0; });
}

std::int32_t ReadLink(HostStream* stream, ChannelLink* link) noexcept {
  if (stream == nullptr || link == nullptr) return 0;
  return Guarded(0, [&] { return Link::From(link)->Read(*Stream::From(stream)) ? 1 : 0; });
}

}  // namespace

void InstallChannelLinks(ChannelTable& channel, StreamTable& stream) noexcept {
  channel.create = Create;
  channel.release = Release;
  channel.copy = Copy;
  channel.compare = Compare;
  channel.initRender = InitRender;
  channel.freeRender = FreeRender;
  channel.sample = Sample;
  channel.bitmap = Picture;
  channel.message = Message;
  channel.pluginId = PluginId;
  channel.instance = Instance;
  stream.writeChannelLink = WriteLink;
  stream.readChannelLink = ReadLink;
}

}  // namespace sorvanix::host
