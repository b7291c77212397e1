// Recipes of the host's fractals: remapped, ridged, or displacing cellular noise.
//
// Ridged fractals: F. K. Musgrave in D. S. Ebert et al., Texturing and Modeling: A Procedural
// Approach.
#include "module/noise/cellular.h"
#include "module/noise/recipes.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

float Ridged(const NoiseQuery& q, const Vector& point) noexcept {
  return hostFractalRidged(fractalWeights, point, q.octaves, 0.25f, 1.0f);
}

/// The range of the fractals, smoothly on 0..1.
double SmoothRange(double fractal) noexcept { return SoftStep(fractal, -1.75f, 1.75f, 0.2857143f); }

/// The fractal that displaces one axis of the cells. Each axis reads it at an offset of its own.
double Displacement(const NoiseQuery& q, double dx, double dy, double dz) noexcept {
  constexpr double kScale = 2.2f;
  const Vector point = Point((q.x + dx) * kScale, (q.y + dy) * kScale, (q.z + dz) * kScale);
  return hostFractalSum(fractalWeights, point, q.time, q.octaves) * 0.15;
}

}  // namespace

double SquaredFractal(const NoiseQuery& q) noexcept {
  const double w = hostFractalSum(fractalWeights, q.point(), q.time, EffectiveOctaves(q)) * 0.5;
  return Clamp01(Bias(Magnitude(w), 0.25f) * 2.857143f);
}

double SmoothFractalPlanar(const NoiseQuery& q) noexcept {
  const Vector point = {q.x, q.y, q.time};
  return SmoothRange(hostFractalSumPoint(fractalWeights, point, EffectiveOctaves(q)));
}

double SmoothFractalSolid(const NoiseQuery& q) noexcept {
  return SmoothRange(hostFractalSum(fractalWeights, q.point(), q.time, EffectiveOctaves(q)));
}

double RidgedBand(const NoiseQuery& q) noexcept {
  const double a = hostTurbulence(q.point(), q.time, q.octaves, 1) * 0.5;
  const double n = hostSignedNoise(q.point(), q.time);
  const double b = Clamp01((Ridged(q, q.warped(n)) + 0.5) * 0.9090909f);
  const double value = SoftStep(1 - Band(b, a), 0.4f, 0.9f, 2.0000002f);
  if (!q.filtered()) return value;
  // More octaves mean more dark lines, and a lower mean.
  return FadeTo(q, value, 0.8f - Clamp01(q.octaves * 0.25) * 0.5);
}

double FractalCellPlanar(const NoiseQuery& q) noexcept {
  const double a = Displacement(q, 7, 9, 4);
  const double b = Displacement(q, 0, 0, 0);
  const Vector moved = Point(b + q.x, a + q.y, 0);
  return CellularNearest2(moved.x, moved.y, q.time, 1);
}

double FractalCellSolid(const NoiseQuery& q) noexcept {
  const double a = Displacement(q, 8, 1, 12);
  const double b = Displacement(q, 7, 9, 4);
  const double c = Displacement(q, 0, 0, 0);
  const Vector moved = Point(c + q.x, b + q.y, a + q.z);
  return CellularNearest3(moved.x, moved.y, moved.z, q.time, 1);
}

double RidgedPeak(const NoiseQuery& q) noexcept {
  const double w = hostSignedNoise(q.point(), q.time);
  float x = q.x;  // the copies move along x alone
  const auto copy = [&] {
    const double r = Magnitude(Ridged(q, Point(x + w, q.y - w, q.z + w)));
    const double s = r >= 0.25 ? 1 : SmoothCurve(4 * r);
    return Clamp01((Bias(s, 0.95f) - 0.6f) * 2.5000002f);
  };
  double peak = 0;
  if (q.octaves > 0) {
    int i = 0;
    do {
      peak = Greater(peak, copy());
      x += 5;
      ++i;
    } while (IsBelow(i, q.octaves));
  }
  peak = Greater(peak, copy() * Fraction(q.octaves));
  return q.filtered() ? FadeTo(q, peak, PeakLevel(q, 0.5f, 0.5f)) : peak;
}

}  // namespace sorvanix
