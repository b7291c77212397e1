// Clamps, ramps and wraps of one number: the shapes that noise, tiles, filters and ramps share.
//
// The comparisons stand in an order that decides where NaN goes, and every function says where.
// None of them converts to an integer, so that no input is out of range.
#pragma once

#include <cmath>

namespace sorvanix {

/// v limited to low..high, the lower limit tested first. NaN passes through.
constexpr double Limit(double low, double high, double v) {
  if (v < low) return low;
  if (v > high) return high;
  return v;
}

/// v limited to 0..1. NaN passes through.
constexpr double Clamp01(double v) { return Limit(0, 1, v); }

/// v limited to 0..1. NaN gives 0.
constexpr double Clamp01NanToZero(double v) { return v >= 0 ? Clamp01(v) : 0; }

/// Where x lies between low and high, limited to 0..1: 0 at low, 1 at high, falling when high is
/// below low. Equal limits make a hard step, 1 from `high` on. NaN, in any argument, gives 0.
constexpr float LinearStep(double low, double high, double x) {
  if (high == low) return x >= high ? 1.0f : 0.0f;
  return static_cast<float>(Clamp01NanToZero((x - low) / (high - low)));
}

/// The cubic through (0, 0) and (1, 1) that is level at both: 3t^2 - 2t^3. t is not limited.
constexpr double SmoothCurve(double t) { return t * t * (3 - 2 * t); }

/// 0 below low, 1 unless x is below high, the smooth curve between. Equal limits make a hard step
/// without a division. NaN, in any argument, gives 1.
constexpr double SmoothStep(double low, double high, double x) {
  if (x < low) return 0;
  if (!(x < high)) return 1;
  return SmoothCurve((x - low) / (high - low));
}

/// As SmoothStep, but NaN passes through.
constexpr double Ease(double low, double high, double x) {
  if (x < low) return 0;
  if (x >= high) return 1;
  return SmoothCurve((x - low) / (high - low));
}

/// v modulo `period`, not negative for a positive period. NaN, infinity and a period of 0 give NaN.
inline double Wrap(double v, double period) {
  const double rest = v - std::trunc(v / period) * period;
  return rest < 0 ? rest + period : rest;
}

/// The part of v beyond the integer below it, 0..1. NaN and infinity give NaN.
inline double Fraction(double v) { return Wrap(v, 1); }

}  // namespace sorvanix
