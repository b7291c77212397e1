// Values, slopes and neighbours of 3D Noise.
#include "module/shaders/generators/noise_3d_sampling.h"

#include <sorvanix/footprint.h>

#include "module/kit/vector.h"
#include "module/noise/catalogue.h"
#include "module/shaders/generators/noise_shape.h"
#include "module/shaders/generators/tilt_normal.h"

namespace sorvanix {

namespace {

double ValueAt(const Noise3DSampling& s, const Vector& point) noexcept {
  double value = NoiseCatalogue3D(s.block.noiseType, point.x, point.y, point.z, s.block.octaves,
                                  s.time, s.block.absolute, s.width, s.block.detail);
  const bool cycled =
      s.negativeCycles == NegativeCycles::Off ? s.block.cycles > 0 : s.block.cycles != 0;
  if (cycled) value = CycleNoise(value, s.block.cycles);
  return ClipAndContrast(value, {s.block.contrast, s.block.brightness, s.block.lowClip,
                                 s.block.highClip, s.block.cycles});
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
  // Between opposite normals there is no way to turn.
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
