#include "host/bake/surface_bake.h"

namespace sorvanix::host {

Vec3 EncodeNormal(const ShadingRecord& record, NormalConvention convention) noexcept {
  // From the same floats as the bent one, so that an unbent normal comes out without a trace of
  // rounding.
  const Vec3 normal = Normalised(Vec3(record.context.baseNormal));
  const Vec3 bent(record.context.bumpNormal);
  const SurfaceAxes any = AnyAxes(normal);
  const Vec3 right = Normalised(Perpendicular(record.uv.tangentU, normal), any.first);
  Vec3 down = Cross(normal, right);
  if (Dot(down, record.uv.tangentV) < 0) down = -down;  // mirrored coordinates
  const double along = convention == NormalConvention::OpenGl ? -Dot(bent, down) : Dot(bent, down);
  return Vec3(0.5, 0.5, 0.5) + Vec3(Dot(bent, right), along, Dot(bent, normal)) * 0.5;
}

Vec3 Renormalised(const Vec3& code) noexcept {
  constexpr Vec3 kMiddle = {0.5, 0.5, 0.5};
  return kMiddle + Normalised(code - kMiddle, {0, 0, 1}) * 0.5;
}

Vec3 SampleTexel(ShadingRecord& record, ChannelSource& source,
                 const std::optional<NormalConvention>& normalMap) noexcept {
  ChannelSample sample = SampleAt(record);
  if (!normalMap) return Vec3(source.Sample(sample));
  source.Bend(sample);
  return EncodeNormal(record, *normalMap);
}

}  // namespace sorvanix::host
