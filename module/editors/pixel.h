// Colours as the host's pictures take them.
#pragma once

#include <limits>

#include "module/shell/host_dialog.h"

namespace sorvanix {

/// A component times 255.99, truncated. What is outside 0..255 is left to the host, which limits
/// it; NaN is 0.
inline std::int32_t PixelComponent(float component) noexcept {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
  const double scaled = component * 255.99;
  if (scaled >= kMost) return std::numeric_limits<std::int32_t>::max();
  if (scaled <= kLeast) return std::numeric_limits<std::int32_t>::min();
  return scaled != scaled ? 0 : static_cast<std::int32_t>(scaled);
}

inline Pixel PixelOf(const Vector& colour) noexcept {
  return {PixelComponent(colour.x), PixelComponent(colour.y), PixelComponent(colour.z)};
}

}  // namespace sorvanix
