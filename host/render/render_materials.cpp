#include "host/render/render_materials.h"

#include <fmt/format.h>

#include "host/scene/scene_format.h"

namespace sorvanix::host {

RenderMaterials::RenderMaterials(const RenderScene& scene, const RenderInit& init) {
  for (const auto& material : scene.materials) {
    RenderMaterial& prepared = materials_.emplace_back();
    prepared.highlightExponent = material->highlightExponent;
    for (std::size_t channel = 0; channel < kMaterialChannelCount; ++channel) {
      if (material->channels[channel].on) {
        prepared.channels[channel] = Prepare(*material, channel, init);
      }
    }
  }
}

RenderChannel RenderMaterials::Prepare(const Material& material, std::size_t channel,
                                       const RenderInit& init) {
  const MaterialChannel& filled = material.channels[channel];
  RenderChannel prepared = {
      .on = true, .strength = filled.strength, .factor = Vec3(filled.colour) * filled.strength};
  if (filled.link == nullptr || filled.link->IsEmpty()) return prepared;
  // A shader of bump bends normals only where it knows that it stands in that channel.
  if (Shader* shader = filled.link->HeldShader()) {
    shader->Instance().channel = static_cast<std::int32_t>(channel);
  }
  LinkSource& source = sources_.emplace_back(*filled.link);
  if (!prepared_.emplace_back(source, init).Ready()) {
    problems_.push_back(
        fmt::format("material \"{}\": what fills the {} channel cannot take part; "
                    "the channel is left out",
                    material.name.text, kChannelNames[channel]));
    return {};
  }
  prepared.source = &source;
  return prepared;
}

const RenderMaterial& RenderMaterials::Plain() noexcept {
  static const RenderMaterial plain = [] {
    RenderMaterial material;
    material.channels[ChannelColour] = {.on = true, .factor = {0.8, 0.8, 0.8}};
    return material;
  }();
  return plain;
}

}  // namespace sorvanix::host
