// The small remapping steps that the noise types share: scalar, in double, branching in an order
// that decides where NaN goes.
//
// Bias: K. Perlin and E. Hoffert, Hypertexture, SIGGRAPH 1989. Smooth step: D. S. Ebert et al.,
// Texturing and Modeling: A Procedural Approach.
#pragma once

#include <cmath>

#include "module/kit/remap.h"

namespace sorvanix {

/// A smooth step from lo to hi. `scale` stands for 1 / (hi - lo): each use has its own stored
/// constant, which differs from the quotient in the last digits.
constexpr double SoftStep(double value, float lo, float hi, float scale) noexcept {
  if (value < lo) return 0;
  if (value >= hi) return 1;
  return SmoothCurve((value - lo) * scale);
}

/// A linear step of half width `halfWidth` around 0.5; a hard step for width 0.
constexpr double Band(double value, double halfWidth) noexcept {
  const double lo = 0.5 - halfWidth;
  const double hi = 0.5 + halfWidth;
  if (hi == lo) return value > lo ? 1 : 0;
  return Clamp01((value - lo) / (hi - lo));
}

/// Raises a value to the power -log2(b): the gamma curve on which 0.5 goes to b.
inline double Bias(double value, float b) noexcept {
  constexpr double kInverseLn2 = 1.442695040888964;
  return std::pow(value, -std::log(static_cast<double>(b)) * kInverseLn2);
}

constexpr double Magnitude(double value) noexcept { return value < 0 ? -value : value; }

/// The greater of two, the first when either is NaN.
constexpr double Greater(double first, double second) noexcept {
  return second > first ? second : first;
}

/// The absolute form of a value around 0.5: its distance from there, doubled.
constexpr double Fold(double value) noexcept { return Magnitude(2 * value - 1); }

}  // namespace sorvanix
