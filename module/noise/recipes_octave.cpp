// Recipes that loop over shifted copies of one noise: sums, peaks, products and differences.
//
// A last copy counts by the fraction of the octave count. Each loop starts and stops in its own
// way, so that at whole counts some take one copy more than others; images depend on it.
#include "module/noise/recipes.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

/// 1 at the zero crossings of the host's signed noise, falling to both sides.
double Ridge(const Vector& point, float time) noexcept {
  return 1 - Magnitude(hostSignedNoise(point, time));
}

}  // namespace

double BiasedSum(const NoiseQuery& q) noexcept {
  const float octaves = EffectiveOctaves(q);
  if (octaves <= 0) return 0.5;
  Vector point = q.point();
  const auto copy = [&] { return Bias(Magnitude(hostSignedNoise(point, q.time)), 0.8f); };

  double sum = 0;
  int i = 1;
  if (octaves > 1) {
    do {
      sum += copy();
      ++i;
      point.x += 3;
    } while (IsBelow(i, octaves));
  }
  const double last = octaves == 1 ? copy() : copy() * Fraction(octaves);
  // Below one octave: a mix from 0.5 to the noise.
  if (octaves < 1) return (last + sum) - Fraction(octaves) * 0.5 + 0.5;
  return (last + sum) / octaves;
}

double PeakMagnitude(const NoiseQuery& q) noexcept {
  const auto copy = [&q](int i) {
    return Clamp01(Magnitude(hostSignedNoise(q.shifted(i + 1), q.time)) * 1.5384616f);
  };
  double peak = 0;
  int i = 1;
  if (q.octaves >= 1) {
    do {
      peak = Greater(peak, copy(i));
      ++i;
    } while (IsUpTo(i, q.octaves));
  }
  peak = Greater(peak, copy(i) * Fraction(q.octaves));
  if (q.filtered()) peak = FadeTo(q, peak, PeakLevel(q, 0.35f, 0.5f));
  return Clamp01((peak - 0.25) * 1.3333334f) * peak;
}

double TurbulentUnitSum(const NoiseQuery& q) noexcept {
  const float octaves = EffectiveOctaves(q);
  if (octaves <= 0) return 0.5;
  Vector point = q.point();
  const auto copy = [&]() -> double {
    const double w = hostTurbulence(point, q.time, 2.0f, 0);  // two octaves, whatever the count is
    return hostUnitNoiseAt(Point(point.x - w, point.y + w, point.z + w), q.time);
  };

  double sum = 0;
  int i = 1;
  if (octaves >= 1) {
    do {
      sum += copy();
      point.x += 5;
      ++i;
    } while (IsUpTo(i, octaves));
  }
  sum = copy() * Fraction(octaves) + sum;
  // Below one octave: a mix from 0.5 to the noise.
  if (octaves < 1) return sum - Fraction(octaves) * 0.5 + 0.5;
  return sum / octaves;
}

double InvertedPeak(const NoiseQuery& q) noexcept {
  const auto copy = [&q](int i) {
    return SoftStep(Ridge(q.shifted(10.0 * i), q.time), 0.65f, 1, 2.8571427f);
  };
  double peak = 0;
  int i = 0;
  if (q.octaves > 0) {
    do {
      peak = Greater(peak, copy(i));
      ++i;
    } while (IsBelow(i, q.octaves));
  }
  peak = Greater(peak, copy(i) * Fraction(q.octaves));
  if (q.filtered()) peak = FadeTo(q, peak, PeakLevel(q, 0.5f, 0.5f));
  return 1 - peak;
}

double RidgeProduct(const NoiseQuery& q) noexcept {
  // Without a footprint the limit is infinite, negative or NaN. Only the two clamps below read it
  // then, the division by zero included.
  const double limit = q.limit();
  const float octaves = CutOctaves(q, q.cap());
  const float fineOctaves = CutOctaves(q, q.filtered() ? limit * 0.1 : 20);

  const auto copy = [&q](int i) {
    return SoftStep(Ridge(q.shifted(20.0 * i), q.time), 0.6f, 1, 2.5000002f);
  };
  double product = 1, mean = 1;
  int i = 0;
  if (octaves > 0) {
    do {
      product = copy(i) * product;
      ++i;
      mean *= 0.5;
    } while (IsBelow(i, octaves));
  }
  product = (copy(i) * product - product) * Fraction(octaves) + product;
  mean = (mean * 0.5 - mean) * Fraction(octaves) + mean;
  product = Clamp01(limit) * (product - mean) + mean;

  // A fine layer, ten times smaller, that fades to its mean of 0.25 ten times sooner.
  const double fine =
      SoftStep(hostTurbulence(q.scaled(10), q.time, fineOctaves, 1), -1.5f, 1.5f, 0.33333334f);
  const double faded = (fine - 0.25) * Clamp01(limit * 0.1f) + 0.25;
  return SoftStep((product * 0.75 + 0.25) * faded, 0, 0.8f, 1.25f);
}

double DifferenceOctave(const NoiseQuery& q) noexcept {
  double sum = 0, frequency = 1;
  const auto difference = [&] {
    return Magnitude(hostTurbulence(q.scaled(frequency), q.time, 3.0f, 1) - sum);
  };
  if (q.octaves > 0) {
    int i = 0;
    do {
      sum = difference() * 0.5 + sum;
      ++i;
      frequency *= 2;
    } while (IsBelow(i, q.octaves));
  }
  sum = difference() * Fraction(q.octaves) * 0.5 + sum;
  // Nothing guards the division: without octaves the result is what the curve and the clamps make
  // of an infinity or a NaN.
  const double curved = Clamp01(Bias(sum / q.octaves, 0.6f));
  const double value = Clamp01(4 * curved * curved);
  if (!q.filtered()) return value;
  return FadeTo(q, value, Clamp01(1 - PeakLevel(q, 0.7f, 0.3f)));
}

double SparsePeak(const NoiseQuery& q) noexcept {
  const auto copy = [&q](int i) {
    return Ridge(Point(q.x + 21.0 * i, q.y + 11.0 * i, q.z + 13.0 * i), q.time);
  };
  const auto step = [](double e) { return SoftStep(e, 0.875f, 0.999f, 8.064515f); };
  // The stepped value is compared, but the raw one is kept, on purpose: a ridge must stand out by
  // far to replace one that was found before.
  double peak = 0;
  const auto keep = [&](double e) {
    if (step(e) > peak) peak = e;
  };
  int i = 1;
  if (q.octaves >= 1) {
    do {
      keep(copy(i));
      ++i;
    } while (IsUpTo(i, q.octaves));
  }
  keep(copy(i) * Fraction(q.octaves));

  const double ridge = Clamp01((peak - 0.95f) * 19.999996f);
  const double grain = hostTurbulence(q.scaled(75), q.time, 1.0f, q.absolute) * 0.25 + 0.5;
  const double value = ridge + grain * 0.05;
  return q.filtered() ? FadeTo(q, value, PeakLevel(q, 0.15f, 0.5f)) : value;
}

}  // namespace sorvanix
