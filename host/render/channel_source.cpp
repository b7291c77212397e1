#include "host/render/channel_source.h"

#include "host/render/vec3.h"

namespace sorvanix::host {

namespace {

/// How far a difference of 1 over two pixels bends a normal. The same in all shaders of bump.
constexpr double kBumpScale = 3.5;

}  // namespace

double LinkSource::Rise(const ChannelSample& sample, const Vector& offset) {
  ChannelSample ahead = sample, behind = sample;
  ahead.uvw = (Vec3(sample.uvw) + Vec3(offset)).Narrow();
  behind.uvw = (Vec3(sample.uvw) - Vec3(offset)).Narrow();
  return Mean(Vec3(link_->Sample(ahead))) - Mean(Vec3(link_->Sample(behind)));
}

void LinkSource::Bend(ChannelSample& sample) {
  const Bitmap* bitmap = link_->Picture();
  if (bitmap == nullptr) {
    link_->Sample(sample);
    return;
  }
  RenderContext& render = *sample.render;
  const Vec3 normal(render.bumpNormal);
  const double riseU = Rise(sample, {1 / static_cast<float>(bitmap->Width()), 0, 0});
  const double riseV = Rise(sample, {0, 1 / static_cast<float>(bitmap->Height()), 0});
  const Vec3 bent = normal - Vec3(render.tangentU) * (kBumpScale * riseU) -
                    Vec3(render.tangentV) * (kBumpScale * riseV);
  render.bumpNormal = Normalised(bent, normal).Narrow();
}

}  // namespace sorvanix::host
