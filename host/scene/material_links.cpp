#include "host/scene/material_links.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

#include "host/channels/channel_link.h"
#include "host/dialogs/import_confirmation.h"
#include "host/scene/scene_format.h"
#include "host/services/filenames.h"
#include "host/services/stream_json.h"

namespace sorvanix::host {
namespace {

/// What message MessageSetParameters tells a link; nothing for a channel without a graph.
std::optional<Container> DescriptionOf(const MaterialChannel::Graph& graph) {
  Container description;
  if (const auto* node = std::get_if<MaterialNode>(&graph)) {
    description.Set(KeyLinkPluginId, Word{node->shader->id});
    description.Set(KeyLinkParameters, NestedContainer(ContainerOf(*node)));
  } else if (const auto* bitmap = std::get_if<MaterialBitmap>(&graph)) {
    description.Set(KeyLinkPluginId, Word{0});
    description.Set(KeyLinkFilename, Filename(Utf8FromPath(bitmap->file)));
  } else {
    return std::nullopt;
  }
  return description;
}

bool HasState(const MaterialChannel& channel) {
  return !std::holds_alternative<std::nullptr_t>(channel.state.value);
}

/// Takes back the values that the shader itself wrote, which say more than its parameters do.
bool Restore(Shader& shader, const MaterialChannel& channel) {
  if (!HasState(channel)) return true;
  auto values = StreamFromJson(channel.state);
  if (!values) return false;
  Stream stream(std::move(*values));
  return shader.Read(stream);
}

bool SetUp(Link& link, Container& description, const MaterialChannel& channel) {
  std::optional<UnconfirmedImport> unconfirmed;
  if (HasState(channel)) unconfirmed.emplace();
  return link.Message(MessageSetParameters, description) != 0;
}

/// Why the channel has no link, or an empty text.
std::string MakeLink(MaterialChannel& channel) {
  auto description = DescriptionOf(channel.graph);
  if (!description) return {};
  auto link = std::shared_ptr<Link>(new Link);
  if (!SetUp(*link, *description, channel)) return "its shader cannot be had";
  if (Shader* shader = link->HeldShader()) {
    if (!Restore(*shader, channel)) return "its shader does not take its state back";
  }
  channel.link = std::move(link);
  return {};
}

}  // namespace

Link& LinkOf(MaterialChannel& channel) {
  if (channel.link == nullptr) channel.link = std::shared_ptr<Link>(new Link);
  return *channel.link;
}

std::vector<std::string> LinkMaterials(Scene& scene) {
  std::vector<std::string> problems;
  for (const auto& material : scene.materials) {
    for (std::size_t i = 0; i < kMaterialChannelCount; ++i) {
      MaterialChannel& channel = material->channels[i];
      if (channel.link == nullptr) {
        if (const std::string problem = MakeLink(channel); !problem.empty()) {
          problems.push_back(fmt::format("material \"{}\", channel {}: {}", material->name.text,
                                         kChannelNames[i], problem));
        }
      }
      if (channel.link == nullptr) continue;
      if (Shader* shader = channel.link->HeldShader()) {
        shader->Instance().channel = static_cast<std::int32_t>(i);
      }
    }
  }
  return problems;
}

void StoreStates(Scene& scene) {
  for (const auto& material : scene.materials) {
    for (MaterialChannel& channel : material->channels) {
      const Shader* shader = channel.link != nullptr ? channel.link->HeldShader() : nullptr;
      Stream stream;
      if (shader != nullptr && shader->Write(stream) && !stream.Values().empty()) {
        channel.state = StreamToJson(stream.Values());
      }
    }
  }
}

}  // namespace sorvanix::host
