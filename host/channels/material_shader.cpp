#include "host/channels/material_shader.h"

#include <fmt/format.h>

namespace sorvanix::host {

tl::expected<Shader, std::string> MakeShader(const Module& module, const MaterialNode& material,
                                             std::int32_t channel) {
  auto shader = module.Create(material.shader->id, channel);
  if (!shader) return shader;
  shader->SetParameters(ContainerOf(material));
  if (!shader->InitRender({.render = nullptr, .document = nullptr})) {
    return tl::unexpected(fmt::format("{} cannot be rendered", material.shader->name));
  }
  return shader;
}

}  // namespace sorvanix::host
