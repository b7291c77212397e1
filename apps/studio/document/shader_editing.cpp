#include "apps/studio/document/shader_editing.h"

#include <fmt/format.h>
#include <sorvanix/ids.h>

#include <algorithm>

#include "host/channels/material_file.h"
#include "host/channels/material_shader.h"
#include "host/scene/scene_format.h"
#include "host/services/filenames.h"
#include "host/services/stream_json.h"

namespace sorvanix::studio {

namespace {

using host::Container;
using host::ParameterType;
using host::ParameterValue;
using host::ShaderParameter;

host::Ramp RampFrom(const Container& container, const host::RampKeys& keys) {
  host::Ramp ramp;
  const auto count = std::clamp<Word>(container.GetInt(keys.count), 0, keys.knots);
  for (std::int32_t i = 0, offset = 0; i < count; ++i, offset += keys.stride) {
    ramp.push_back({.position = container.GetFloat(keys.position + offset),
                    .colour = container.GetVector(keys.colour + offset),
                    .bias = container.GetFloat(keys.bias + offset)});
  }
  return ramp;
}

ParameterValue ValueFrom(const Container& container, const ShaderParameter& parameter) {
  switch (parameter.type) {
    case ParameterType::Integer:
      return static_cast<std::int32_t>(container.GetInt(parameter.key));
    case ParameterType::Real:
      return container.GetFloat(parameter.key);
    case ParameterType::Bool:
      return container.GetBool(parameter.key);
    case ParameterType::Vector:
      return container.GetVector(parameter.key);
    case ParameterType::Ramp:
      return RampFrom(container, parameter.ramp);
    case ParameterType::Text:
      break;
  }
  const host::Text* text = container.GetText(parameter.key);
  return text != nullptr ? text->text : std::string();
}

std::int32_t ChannelNumber(const std::string& channel) {
  const auto found = std::find(host::kChannelNames.begin(), host::kChannelNames.end(), channel);
  return static_cast<std::int32_t>(found - host::kChannelNames.begin());
}

// Takes back what the shader once stored, which says more than its parameters do.
void Restore(host::Shader& shader, const Json& material, const GraphPlace& place) {
  const Json* channel = material.Find("channels")->Find(place.channel);
  const Json* state = place.inputs.empty() ? channel->Find("state") : nullptr;
  auto values = state != nullptr ? host::StreamFromJson(*state) : tl::unexpected(host::JsonError{});
  if (!values) return;
  host::Stream stream(std::move(*values));
  shader.Read(stream);
}

Json StateOf(const host::Shader& shader) {
  host::Stream stream;
  if (!shader.Write(stream) || stream.Values().empty()) return {};
  return host::StreamToJson(stream.Values());
}

}  // namespace

host::MaterialNode NodeFrom(const Container& parameters, const host::ShaderDescription& shader,
                            const host::ShaderCatalogue& catalogue,
                            const std::filesystem::path& folder) {
  host::MaterialNode node = {.shader = &shader, .values = {}, .inputs = {}};
  for (const ShaderParameter& parameter : shader.parameters) {
    ParameterValue value = ValueFrom(parameters, parameter);
    if (SameJson(JsonOf(parameter, value), JsonOf(parameter, parameter.initial))) continue;
    node.values.push_back({&parameter, std::move(value)});
  }
  for (const host::ShaderInput& input : shader.inputs) {
    const Container* link = parameters.GetContainer(input.key);
    if (link == nullptr) continue;
    const auto id = static_cast<std::int32_t>(link->GetInt(KeyLinkPluginId));
    const Container* below = link->GetContainer(KeyLinkParameters);
    const host::Filename* file = link->GetFilename(KeyLinkFilename);
    const auto* inner = id != 0 ? catalogue.Find(id) : nullptr;
    if (inner != nullptr && below != nullptr) {
      node.inputs.push_back({&input, NodeFrom(*below, *inner, catalogue, folder)});
    } else if (file != nullptr) {
      const auto path = host::PathFromUtf8(file->path);
      const auto name = folder.empty() ? path : path.lexically_proximate(folder);
      node.inputs.push_back({&input, host::MaterialBitmap{host::Utf8FromPath(name), path}});
    }
  }
  return node;
}

tl::expected<std::optional<EditedGraph>, std::string> EditShader(const Json& material,
                                                                 const GraphPlace& place,
                                                                 const EditingPlace& with) {
  const Json* graph = FindGraph(material, place);
  const host::ShaderDescription* description = FindShader(material, place, with.catalogue);
  if (graph == nullptr || description == nullptr) {
    return tl::unexpected(fmt::format("there is no shader at {}", Describe(place)));
  }
  const auto reading =
      host::ReadMaterial(host::WriteJson(*graph, -1), with.catalogue, {with.file, {}});
  if (!reading.material) return tl::unexpected(reading.Errors().front().message);
  auto shader = host::MakeShader(with.module, *reading.material, ChannelNumber(place.channel));
  if (!shader) return tl::unexpected(shader.error());
  shader->FreeRender();
  Restore(*shader, material, place);
  if (!with.editor.Edit(*shader)) return std::nullopt;

  const host::MaterialNode edited =
      NodeFrom(shader->Parameters(), *description, with.catalogue, with.file.parent_path());
  return EditedGraph{.graph = JsonOf(edited),
                     .state = place.inputs.empty() ? StateOf(*shader) : Json()};
}

}  // namespace sorvanix::studio
