#include "host/render/material_layer.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <cmath>

#include "host/render/projection.h"

namespace sorvanix::host {

namespace {

double Limited(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

Vec3 Limited(const Vec3& colour) {
  return {Limited(colour.x), Limited(colour.y), Limited(colour.z)};
}

Vec3 RayDirection(const ShadingRecord& record) { return record.sample.direction; }

class LayerShading {
 public:
  LayerShading(const RenderMaterial& material, ShadingRecord& record)
      : material_(material), record_(record) {}

  MaterialLayer Shade() {
    Bend();
    MaterialLayer layer;
    layer.normal = Vec3(record_.context.bumpNormal) * record_.context.side;
    if (On(ChannelAlpha)) layer.cover = Limited(Mean(Value(ChannelAlpha)));
    if (layer.cover == 0) return layer;
    if (On(ChannelTransparency)) layer.through = Limited(Value(ChannelTransparency));
    if (On(ChannelReflection)) layer.mirror = Value(ChannelReflection);
    if (On(ChannelLuminance)) layer.own += Value(ChannelLuminance);
    if (On(ChannelEnvironment)) layer.own += Environment(layer.normal);
    AddLight(layer);
    return layer;
  }

 private:
  bool On(int channel) const { return material_[channel].on; }

  // Shaders may leave their mark on what they share; each channel begins with the surface as it is.
  ChannelSample Sample() {
    if (record_.isPrepared) {
      LayTexture(record_, record_.context.textureTag, record_.uv, record_.uvwSet);
    }
    return SampleAt(record_);
  }

  Vec3 Value(int channel) {
    const RenderChannel& filled = material_[channel];
    if (filled.source == nullptr) return filled.factor;
    ChannelSample sample = Sample();
    return filled.factor * Vec3(filled.source->Sample(sample));
  }

  void Bend() {
    RenderContext& context = record_.context;
    context.bumpNormal = context.baseNormal;
    const RenderChannel& bump = material_[ChannelBump];
    if (!bump.on || bump.source == nullptr) return;
    ChannelSample sample = Sample();
    bump.source->Bend(sample);
    const Vec3 base(context.baseNormal);
    const Vec3 bent = Lerp(base, Vec3(context.bumpNormal), bump.strength);
    context.bumpNormal = Normalised(bent, base).Narrow();
  }

  // The channel's picture is wrapped around the scene as a sphere; the mirrored ray reads it.
  Vec3 Environment(const Vec3& normal) {
    const RenderChannel& filled = material_[ChannelEnvironment];
    if (filled.source == nullptr) return filled.factor;
    ChannelSample sample = Sample();
    sample.uvw = ProjectShape(Projection::Sphere, Mirrored(RayDirection(record_), normal)).Narrow();
    return filled.factor * Vec3(filled.source->Sample(sample));
  }

  void AddLight(MaterialLayer& layer) {
    if (!On(ChannelColour) && !On(ChannelSpecularColour)) return;
    const RenderContext& context = record_.context;
    LightSum light;
    Illuminate(record_.frame->lights,
               {.point = record_.sample.at.point,
                .normal = layer.normal,
                .shadows = record_.frame->occluder,
                .identity = context.lightParamA,
                .lift = record_.sample.at.lift},
               -RayDirection(record_), material_.highlightExponent, light);
    if (On(ChannelColour)) {
      Vec3 colour = Value(ChannelColour) * (Vec3(1, 1, 1) - layer.through);
      if (On(ChannelDiffusion)) colour = colour * Value(ChannelDiffusion);
      layer.own += colour * light.diffuse;
    }
    if (On(ChannelSpecularColour)) layer.own += Value(ChannelSpecularColour) * light.specular;
  }

  const RenderMaterial& material_;
  ShadingRecord& record_;
};

}  // namespace

MaterialLayer ShadeLayer(const RenderMaterial& material, ShadingRecord& record) noexcept {
  return LayerShading(material, record).Shade();
}

}  // namespace sorvanix::host
