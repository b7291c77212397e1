// The picture of the gradient area: the ramp as a strip, with its handles.
#pragma once

#include <array>
#include <cstdint>

#include "module/editors/gradient_scale.h"

namespace sorvanix {

/// A colour with eight bits a channel.
struct Pixel {
  std::uint8_t red = 0, green = 0, blue = 0;
  friend constexpr bool operator==(const Pixel&, const Pixel&) = default;
};

/// A colour as its pixel shows it: each channel times 255.99, truncated and limited to 0..255. NaN
/// gives 0.
Pixel PixelOfColour(const Vector& colour);

/// The area pixel by pixel, row 0 at the top.
struct GradientPicture {
  std::array<std::array<Pixel, kGradientWidth>, kGradientHeight> rows;

  /// Pixels outside the picture are skipped.
  void Set(std::int32_t x, std::int32_t y, const Pixel& pixel) {
    if (x < 0 || x >= kGradientWidth || y < 0 || y >= kGradientHeight) return;
    rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = pixel;
  }
  const Pixel& At(std::int32_t x, std::int32_t y) const {
    return rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
  }
};

/// Draws the strip, its frame, and the handles in the ramp's order, so that its last entry lies on
/// top. The selected handle is highlighted.
void PaintGradient(const Ramp& ramp, GradientPicture& picture);

}  // namespace sorvanix
