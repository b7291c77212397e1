// The pixel geometry of the gradient area: where positions, biases, handles and the strip lie.
#pragma once

#include <cmath>
#include <cstdint>

#include "module/kit/ramp.h"
#include "module/kit/remap.h"

namespace sorvanix {

inline constexpr std::int32_t kGradientWidth = 470;
inline constexpr std::int32_t kGradientHeight = 50;

/// The colour strip, all four borders included.
inline constexpr std::int32_t kStripLeft = 4;
inline constexpr std::int32_t kStripRight = 465;
inline constexpr std::int32_t kStripTop = 12;
inline constexpr std::int32_t kStripBottom = 24;

/// The rows of the bias diamonds above the strip and of the knot pointers below it. A pointer is
/// caught in two rows below its last one, too.
inline constexpr std::int32_t kDiamondCentre = 6;
inline constexpr std::int32_t kDiamondBottom = 12;
inline constexpr std::int32_t kPointerTop = 26;
inline constexpr std::int32_t kPointerCentre = 32;
inline constexpr std::int32_t kPointerBottom = 38;
inline constexpr std::int32_t kPointerCatchBottom = 40;

/// From one end of the ramp to the other, in pixels, and one pixel in terms of the ramp.
inline constexpr double kPixelsPerRamp = 461;
inline constexpr double kRampPerPixel = 0.0021691974;

/// x as a pixel, rounded towards zero. What lies far outside the area stays outside it; NaN too.
inline std::int32_t PixelAt(double x) {
  constexpr double kFarOutside = 1e6;
  if (std::isnan(x)) return static_cast<std::int32_t>(-kFarOutside);
  return static_cast<std::int32_t>(Limit(-kFarOutside, kFarOutside, x));
}

/// The pixel of a position on the ramp.
inline std::int32_t PixelOfPosition(float position) {
  return PixelAt(kPixelsPerRamp * position + kStripLeft);
}

/// The position of a pixel; outside 0..1 for pixels beside the strip.
inline float PositionOfPixel(std::int32_t x) {
  return static_cast<float>(double(x - kStripLeft) * kRampPerPixel);
}

/// The same, kept on the ramp.
inline float RampPositionOfPixel(std::int32_t x) {
  return static_cast<float>(Clamp01(PositionOfPixel(x)));
}

inline std::int32_t PixelOfKnot(const Ramp& ramp, std::int32_t knot) {
  return PixelOfPosition(ramp.knots[knot].position);
}

/// The pixel of a bias handle. The knot must not be the last one.
inline std::int32_t PixelOfBias(const Ramp& ramp, std::int32_t knot) {
  const std::int32_t x = PixelOfKnot(ramp, knot);
  const std::int32_t next = PixelOfKnot(ramp, knot + 1);
  return PixelAt(x + double(next - x) * ramp.knots[knot].bias);
}

/// Half the width of a diamond and of a pointer in a row, the middle column not counted; -1 in rows
/// that they do not reach.
constexpr std::int32_t DiamondHalfWidth(std::int32_t y) {
  if (y < 0 || y > kDiamondBottom) return -1;
  return y <= kDiamondCentre ? y : kDiamondBottom - y;
}
constexpr std::int32_t PointerHalfWidth(std::int32_t y) {
  constexpr std::int32_t kWidest = 5;
  if (y < kPointerTop || y > kPointerCatchBottom) return -1;
  return y - kPointerTop < kWidest ? y - kPointerTop : kWidest;
}

/// A step shows no middle of its spans, so there is no bias to move.
constexpr bool HasBiasHandles(const Ramp& ramp) { return ramp.interpolation < RampStep; }

}  // namespace sorvanix
