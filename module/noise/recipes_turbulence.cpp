// Recipes of turbulence: remapped, or displacing the point or the threshold of another noise.
//
// Turbulence and thresholds on it: K. Perlin, An Image Synthesizer, SIGGRAPH 1985.
#include "module/noise/recipes.h"
#include "module/shell/host_render.h"

namespace sorvanix {

double DualScaleBand(const NoiseQuery& q) noexcept {
  const auto layer = [&q](const Vector& point, float octaves, std::int32_t absolute) noexcept {
    return Clamp01((hostTurbulence(point, q.time, octaves, absolute) + 1.5) * 0.33333334f);
  };
  const double cap = q.cap();
  float coarse = q.octaves, fine = q.octaves;
  if (!(q.octaves <= cap)) {
    coarse = MixOctaves(q, cap * 2.5);
    fine = MixOctaves(q, coarse);  // starts from the cut count: the fine layer is cut twice
  }
  const double a = layer(q.scaled(0.4f), coarse, 0);
  const double b = layer(q.point(), fine, q.absolute);
  return Band(b, a);
}

double HardBand(const NoiseQuery& q) noexcept {
  const double a = hostTurbulence(q.point(), q.time, q.octaves, 1);
  const double n = hostSignedNoise(q.point(), q.time) * 0.5;
  const double b =
      Clamp01((hostTurbulence(q.warped(n), q.time, EffectiveOctaves(q), 1) + 2.0) * 0.25);
  return Clamp01((Band(b, a) - 0.5) * 3.3333333f);
}

double TurbulentThreshold(const NoiseQuery& q) noexcept {
  const double f = hostTurbulence(q.point(), q.time, EffectiveOctaves(q), 1) * 0.5;
  const double n = hostUnitNoiseAt(q.shifted(f), q.time);
  const double s = SoftStep(f * 0.25 + 0.5, 0.4f, 0.6f, 4.9999995f);
  return Clamp01(((s + n) * 0.5 - 0.4f) * 1.6666666f);
}

double WarpedMagnitude(const NoiseQuery& q) noexcept {
  const double w = hostTurbulence(q.point(), q.time, q.octaves, 0) * 0.5;
  return Clamp01(Magnitude(hostTurbulence(q.warped(w), q.time, EffectiveOctaves(q), q.absolute)));
}

double SoftBand(const NoiseQuery& q) noexcept {
  const double a = hostTurbulence(q.point(), q.time, q.octaves, 1);
  const double n = hostSignedNoise(q.point(), q.time);
  const double b =
      Clamp01((hostTurbulence(q.warped(n), q.time, EffectiveOctaves(q), 0) + 2.0) * 0.25);
  return SmoothCurve(Band(b, a));
}

double RemappedTurbulence(const NoiseQuery& q) noexcept {
  const double turbulence = hostTurbulence(q.point(), q.time, EffectiveOctaves(q), q.absolute);
  return Clamp01((turbulence + 1.75) * 0.2857143f);
}

double BandTurbulence(const NoiseQuery& q) noexcept {
  return hostBandTurbulence(q.point(), q.time, EffectiveOctaves(q), 0.5f);
}

}  // namespace sorvanix
