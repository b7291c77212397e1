// Values, slopes and neighbours of 3D Noise.
#include "module/shaders/generators/noise_3d_sampling.h"

#include <sorvanix/footprint.h>

#include "module/kit/vector.h"
#include "module/noise/catalogue.h"
#include "module/shaders/tilt_normal.h"

namespace sorvanix {

namespace {

double ValueAt(const Noise3DSampling& s, const Vector& point) noexcept {
  const Noise3DBlock& block = s.block;
  const double noise = NoiseCatalogue3D(block.noiseType, point.x, point.y, point.z, block.octaves,
                                        s.time, block.absolute, s.width, block.detail);
  return ShapeNoise(noise,
                    {block.contrast, block.brightness, block.lowClip, block.highClip, block.cycles},
                    s.negativeCycles);
}

}  // namespace

Vector Noise3DSampling::Colour(const Vector& point) const noexcept {
  return Lerp(block.colorA, block.colorB, static_cast<float>(ValueAt(*this, point)));
}

double Noise3DSampling::Height(const Vector& point) const noexcept { return Mean(Colour(point)); }

// Behind minus ahead in both directions.
void BendAlongSurface(const Noise3DSampling& sampling, const Vector& point, float step,
                      RenderContext& render) noexcept {
  constexpr double kSlope = 3.5;
  const auto slope = [&](const Vector& tangent) {
    const Vector move = Scale(step, tangent);
    const double ahead = sampling.Height(Add(point, move));
    return (sampling.Height(Sub(point, move)) - ahead) * kSlope;
  };
  const double alongU = slope(render.tangentU), alongV = slope(render.tangentV);
  TiltNormal(render, alongU, alongV);
}

void BendAlongAxes(const Noise3DSampling& sampling, const Vector& point, float step,
                   RenderContext& render) noexcept {
  constexpr double kSteep = 0.00004, kPull = 0.4;
  const double here = sampling.Height(point);
  const auto fall = [&](const Vector& move) {
    return static_cast<float>(here - sampling.Height(Add(point, move)));
  };
  const Vector gradient = {fall({step, 0, 0}), fall({0, step, 0}), fall({0, 0, step})};
  const Vector downhill = Normalized(gradient);
  // A normal straight against the fall stays as it is, its length included: deliberate.
  if (Dot(downhill, render.bumpNormal) == -1) return;
  const double pull = kPull * LinearStep(0, kSteep, Length(gradient));
  render.bumpNormal = Normalized(Lerp(render.bumpNormal, downhill, static_cast<float>(pull)));
}

// The third tap goes against v and the fourth along it, unlike the first two: deliberate.
Vector MovedByTap(const Vector& point, std::int32_t tap, float step,
                  const RenderContext& render) noexcept {
  switch (tap) {
    case TapPlusU:
      return Add(point, Scale(step, render.tangentU));
    case TapMinusU:
      return Sub(point, Scale(step, render.tangentU));
    case TapPlusV:
      return Sub(point, Scale(step, render.tangentV));
    case TapMinusV:
      return Add(point, Scale(step, render.tangentV));
    default:
      return point;
  }
}

}  // namespace sorvanix
