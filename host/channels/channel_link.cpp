#include "host/channels/channel_link.h"

#include <sorvanix/ids.h>

#include <cassert>
#include <optional>
#include <utility>

#include "host/dialogs/import_confirmation.h"

namespace sorvanix::host {

namespace {

constinit const ShaderRegistry* linkedShaders = nullptr;

// How many links the calling thread is filling one inside the other: each of them stands in the
// shader of the one before.
class Nesting {
 public:
  Nesting() noexcept { ++depth; }
  ~Nesting() { --depth; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

  static bool TooDeep() noexcept { return depth > kDeepestGraph; }

 private:
  static constinit thread_local int depth;
};
constinit thread_local int Nesting::depth = 0;

const RegisteredShader* FindRegistered(std::int32_t pluginId) noexcept {
  return linkedShaders == nullptr ? nullptr : linkedShaders->Find(pluginId);
}

// A shader in a link sits in the colour channel whatever the channel of the graph is: it shall
// answer colours to the shader around it, which bends the normal itself in the bump channel.
std::optional<Shader> CreateShader(std::int32_t pluginId) {
  const RegisteredShader* registered = FindRegistered(pluginId);
  if (registered == nullptr || Nesting::TooDeep()) return std::nullopt;
  return Shader::Create(*registered, ChannelColour);
}

Link::LinkedBitmap Show(const Filename& filename, const TexturePointer& texture) {
  std::unique_ptr<Bitmap> picture(texture == nullptr ? nullptr : new Bitmap(texture));
  return {filename, texture, std::move(picture)};
}

}  // namespace

LinkedShaders::LinkedShaders(const ShaderRegistry& registry) noexcept {
  assert(linkedShaders == nullptr && "one registry at a time: links carry no context");
  linkedShaders = &registry;
}

LinkedShaders::~LinkedShaders() { linkedShaders = nullptr; }

std::int32_t Link::PluginId() const noexcept {
  const Shader* shader = HeldShader();
  return shader == nullptr ? 0 : shader->PluginId();
}

// As a description tells it: of an unread shader too.
Word Link::HeldId() const noexcept {
  const auto* unread = std::get_if<StreamLink>(&content_);
  return unread == nullptr ? PluginId() : unread->pluginId;
}

Bitmap* Link::Picture() noexcept {
  const LinkedBitmap* held = HeldBitmap();
  return held == nullptr ? nullptr : held->bitmap.get();
}

bool Link::HoldShader(std::int32_t pluginId) {
  std::optional<Shader> shader = CreateShader(pluginId);
  if (!shader) return false;
  content_ = *std::move(shader);
  return true;
}

void Link::HoldBitmap(std::string filename) {
  const auto texture = LoadTexture(PathFromUtf8(filename));
  content_ = Show(Filename(std::move(filename)), texture.value_or(nullptr));
}

bool Link::CopyFrom(const Link& source) {
  const Nesting nesting;
  if (&source == this) return true;
  if (const Shader* original = source.HeldShader()) {
    std::optional<Shader> copy = CreateShader(original->PluginId());
    if (!copy || !copy->CopyFrom(*original)) return false;
    content_ = *std::move(copy);
  } else if (const LinkedBitmap* bitmap = source.HeldBitmap()) {
    content_ = Show(bitmap->filename, bitmap->texture);
  } else if (const auto* unread = std::get_if<StreamLink>(&source.content_)) {
    content_ = *unread;
  } else {
    Clear();
  }
  return true;
}

bool Link::Equals(const Link& other) const {
  if (content_.index() != other.content_.index()) return false;
  if (const Shader* shader = HeldShader()) return shader->Equals(*other.HeldShader());
  if (const LinkedBitmap* bitmap = HeldBitmap()) {
    return bitmap->filename == other.HeldBitmap()->filename;
  }
  if (const auto* unread = std::get_if<StreamLink>(&content_)) {
    return *unread == std::get<StreamLink>(other.content_);
  }
  return true;
}

std::int32_t Link::Message(std::int32_t id, Container& payload) {
  const Nesting nesting;
  switch (id) {
    case MessageSetParameters:
      return SetParameters(payload) ? 1 : 0;
    case MessageGetParameters:
      GetParameters(payload);
      return 1;
    case MessageDescribeParameters:
      if (!IsEmpty()) payload.Set(KeyLinkPluginId, Word{DescribeInteger});
      if (Shader* shader = HeldShader()) {
        payload.Set(KeyLinkParameters, NestedContainer(shader->ParameterTypes()));
      }
      return 1;
    default: {
      Shader* shader = HeldShader();
      return shader == nullptr ? 0 : shader->Message(id, payload);
    }
  }
}

bool Link::SetParameters(const Container& description) {
  const Filename* filename = description.GetFilename(KeyLinkFilename);
  if (description.Find(KeyLinkPluginId) != nullptr) {
    const Word pluginId = description.GetInt(KeyLinkPluginId);
    if (pluginId == StreamLink::kEmpty) {
      Clear();
    } else if (pluginId == StreamLink::kBitmap) {
      if (filename != nullptr) HoldBitmap(filename->path);
    } else if (pluginId != HeldId()) {
      if (pluginId != static_cast<std::int32_t>(pluginId)) return false;
      if (!HoldShader(static_cast<std::int32_t>(pluginId))) return false;
    }
  } else if (HeldBitmap() != nullptr && filename != nullptr) {
    HoldBitmap(filename->path);
  }
  const Container* parameters = description.GetContainer(KeyLinkParameters);
  Shader* shader = HeldShader();
  if (shader != nullptr && parameters != nullptr) {
    shader->SetParameters(*parameters);
    ConfirmImport(*shader);
  }
  return true;
}

void Link::GetParameters(Container& description) {
  if (Shader* shader = HeldShader()) {
    description.Set(KeyLinkPluginId, Word{shader->PluginId()});
    description.Set(KeyLinkParameters, NestedContainer(shader->Parameters()));
  } else if (const LinkedBitmap* bitmap = HeldBitmap()) {
    description.Set(KeyLinkPluginId, Word{StreamLink::kBitmap});
    description.Set(KeyLinkFilename, bitmap->filename);
  } else if (const auto* unread = std::get_if<StreamLink>(&content_)) {
    description.Set(KeyLinkPluginId, Word{unread->pluginId});
  }
}

bool Link::InitRender(const RenderInit& init) {
  if (Shader* shader = HeldShader()) return shader->InitRender(init);
  if (const LinkedBitmap* bitmap = HeldBitmap()) return bitmap->texture != nullptr;
  return IsEmpty();
}

void Link::FreeRender() {
  if (Shader* shader = HeldShader()) shader->FreeRender();
}

Vector Link::Sample(ChannelSample& sample) {
  if (Shader* shader = HeldShader()) return shader->Output(sample);
  const LinkedBitmap* bitmap = HeldBitmap();
  if (bitmap == nullptr || bitmap->texture == nullptr) return {};
  return bitmap->texture->Sample({.uvw = sample.uvw,
                                  .delta = sample.delta,
                                  .blur = sample.blurOffset * sample.blurScale,
                                  .tagFlag = sample.texFlags});
}

bool Link::Read(Stream& stream) {
  const Nesting nesting;
  const StreamLink* persisted = stream.Read<StreamLink>();
  if (persisted == nullptr) return false;
  if (persisted->pluginId == StreamLink::kEmpty) {
    Clear();
  } else if (persisted->pluginId == StreamLink::kBitmap) {
    HoldBitmap(persisted->filename);
  } else if (FindRegistered(persisted->pluginId) == nullptr) {
    content_ = *persisted;
  } else {
    std::optional<Shader> shader = CreateShader(persisted->pluginId);
    if (!shader) return false;
    Stream values(persisted->values);
    if (shader->Read(values)) {
      content_ = *std::move(shader);
    } else {
      content_ = *persisted;
    }
  }
  return true;
}

bool Link::Write(Stream& stream) const {
  StreamLink persisted;
  if (const Shader* shader = HeldShader()) {
    Stream values;
    if (!shader->Write(values)) return false;
    persisted = {shader->PluginId(), {}, values.Values()};
  } else if (const LinkedBitmap* bitmap = HeldBitmap()) {
    persisted = {StreamLink::kBitmap, bitmap->filename.path, {}};
  } else if (const auto* unread = std::get_if<StreamLink>(&content_)) {
    persisted = *unread;
  }
  stream.Write(std::move(persisted));
  return true;
}

}  // namespace sorvanix::host
