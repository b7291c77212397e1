// From a catalogue value to the value that a noise shader shows: cycles, clip, brightness,
// contrast.
#pragma once

#include <cmath>

#include "module/kit/remap.h"

namespace sorvanix {

/// The parameters that shape a noise value.
struct NoiseShape {
  float contrast;    ///< -1 flattens to 0.5, 1 is a hard threshold at 0.5
  float brightness;  ///< added before the contrast
  float lowClip;     ///< the value that becomes 0
  float highClip;    ///< the value that becomes 1
  float cycles;      ///< below 1 a blend with one cosine, from 1 on so many cosines; 0 is off
};

/// What cycles below 0 do: nothing, or the blend of those up to 1.
enum class NegativeCycles { Off, Blend };

/// A full cycle. Slightly more than 2 pi, and deliberately kept so: pictures depend on it.
inline constexpr double kNoiseCycle = 6.29185358;

/// The cosine map of a value by `cycles`, which is above 0 (or, where a shader lets it, below).
inline double CycleNoise(double value, double cycles) noexcept {
  if (cycles >= 1) return 0.5 - std::cos(value * cycles * kNoiseCycle) * 0.5;
  const double cycled = 0.5 - std::cos(value * kNoiseCycle) * 0.5;
  return (cycled - value) * cycles + value;
}

/// Cycles, clip, brightness and contrast, in this order: the value that is shown. A negative
/// contrast is not clamped.
inline double ShapeNoise(double value, const NoiseShape& shape, NegativeCycles negative) noexcept {
  const bool cycled = negative == NegativeCycles::Off ? shape.cycles > 0 : shape.cycles != 0;
  if (cycled) value = CycleNoise(value, shape.cycles);
  value = LinearStep(shape.lowClip, shape.highClip, value);
  value = Clamp01(value + shape.brightness);
  if (shape.contrast < 0) return value - (0.5 - value) * shape.contrast;
  const double low = shape.contrast * 0.5;
  return LinearStep(low, 1 - low, value);
}

}  // namespace sorvanix
