#include "host/channels/material_shader.h"

#include <fmt/format.h>
#include <sorvanix/ids.h>

#include "host/dialogs/import_confirmation.h"

namespace sorvanix::host {

namespace {

// Whether the parameters that a shader answers hold all of a node's inputs. A message has no way to
// tell that the memory for one of them was short.
bool HoldsInputs(const Container& parameters, const MaterialNode& node) {
  for (const MaterialInput& each : node.inputs) {
    const Container* link = parameters.GetContainer(each.input->key);
    const auto* inner = std::get_if<MaterialNode>(&each.content);
    const Word expected = inner == nullptr ? 0 : inner->shader->id;
    if (link == nullptr || link->GetInt(KeyLinkPluginId, expected - 1) != expected) return false;
    if (inner == nullptr) continue;
    const Container* below = link->GetContainer(KeyLinkParameters);
    if (below == nullptr || !HoldsInputs(*below, *inner)) return false;
  }
  return true;
}

}  // namespace

tl::expected<Shader, std::string> ImportShader(const Module& module, const MaterialNode& material,
                                               std::int32_t channel) {
  auto shader = module.Create(material.shader->id, channel);
  if (!shader) return shader;
  shader->SetParameters(ContainerOf(material));
  if (!HoldsInputs(shader->Parameters(), material)) {
    return tl::unexpected(fmt::format("{} could not take up its inputs", material.shader->name));
  }
  ConfirmImport(*shader);
  return shader;
}

tl::expected<Shader, std::string> MakeShader(const Module& module, const MaterialNode& material,
                                             std::int32_t channel) {
  auto shader = ImportShader(module, material, channel);
  if (shader && !shader->InitRender({.render = nullptr, .document = nullptr})) {
    return tl::unexpected(fmt::format("{} cannot be rendered", material.shader->name));
  }
  return shader;
}

}  // namespace sorvanix::host
