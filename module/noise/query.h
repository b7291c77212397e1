// What a noise type is asked: a point and its parameters, and the steps that depend on the sample's
// footprint.
#pragma once

#include <cstdint>

#include "module/noise/point.h"
#include "module/noise/shaping.h"

namespace sorvanix {

/// No loop over octaves turns more often, whatever the count says.
inline constexpr int kOctaveTurns = 256;

/// Whether octave i follows in a loop that numbers its octaves below the count, or up to it.
/// Never for NaN.
constexpr bool IsBelow(int i, double octaves) noexcept { return i < octaves && i < kOctaveTurns; }
constexpr bool IsUpTo(int i, double octaves) noexcept { return i <= octaves && i <= kOctaveTurns; }

/// The arguments of the catalogue, see NoiseCatalogue2D.
struct NoiseQuery {
  float x, y, z;
  float octaves;
  float time;
  std::int32_t absolute;
  float footprint;
  float detail;

  Vector point() const noexcept { return {x, y, z}; }
  Vector scaled(double factor) const noexcept { return Point(x * factor, y * factor, z * factor); }
  Vector shifted(double step) const noexcept { return Point(x + step, y + step, z + step); }
  /// The point moved along (1, -1, 1), as the warped types do.
  Vector warped(double w) const noexcept { return Point(x + w, y - w, z + w); }

  /// Whether the sample has a footprint to filter for.
  bool filtered() const noexcept { return footprint > 0 && detail > 0; }
  /// The frequency limit of the footprint: how many octaves fit, half a noise cell to a footprint.
  /// Infinite, negative or NaN when the sample is not filtered.
  double limit() const noexcept { return 0.5 / (static_cast<double>(footprint) * detail); }
  double cap() const noexcept { return filtered() ? limit() : 20; }
};

/// Moves an octave count towards a lower one; a `detail` of 1 or more lands on it.
inline float MixOctaves(const NoiseQuery& query, double target) noexcept {
  const double mixed = (target - query.octaves) * Clamp01(query.detail) + query.octaves;
  return static_cast<float>(Limit(0, 20, mixed));
}

/// The octave count for a sample that has room for `cap` octaves.
inline float CutOctaves(const NoiseQuery& query, double cap) noexcept {
  return query.octaves <= cap ? query.octaves : MixOctaves(query, cap);
}

/// The octave count after filtering.
inline float EffectiveOctaves(const NoiseQuery& query) noexcept {
  return CutOctaves(query, query.cap());
}

/// Pulls a value towards the type's mean as the footprint grows. Only for filtered samples.
inline double FadeTo(const NoiseQuery& query, double value, double mean) noexcept {
  return Clamp01(query.limit()) * (value - mean) + mean;
}

/// The mean of a sum of octaves that starts with `start` and shrinks by `ratio`; the last octave
/// counts by its fraction.
inline double PeakLevel(const NoiseQuery& query, float start, float ratio) noexcept {
  double sum = 0, weight = start;
  for (int i = 1; IsUpTo(i, query.octaves); ++i) {
    sum += weight;
    weight *= ratio;
  }
  return sum + weight * Fraction(query.octaves);
}

}  // namespace sorvanix
