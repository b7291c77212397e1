// The lines, and their dots over a picture.
#include "module/editors/credits.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "module/editors/pixel_font.h"
#include "module/shell/host_channel.h"

namespace sorvanix {

namespace {

// No line is wider than the picture: 400 pixels hold 33 letters.
constexpr std::string_view kLines[] = {
    "Thanks to the following:",
    "",
    "Ken Perlin, for noise",
    "John Peter Lewis,",
    "for sparse convolution",
    "Steven Worley, for cells",
    "F. Kenton Musgrave,",
    "for fractals and ridges",
    "Bui Tuong Phong, for highlights",
    "Michael Oren and Shree Nayar,",
    "for rough surfaces",
    "Gregory Ward, for brushed metal",
    "Edwin Catmull and Raphael Rom,",
    "for smooth curves",
    "Alvy Ray Smith, for hue",
    "",
    "We would also like to thank...",
    "",
    "everyone who reports a bug,",
    "everyone who reads the code,",
    "and you, who looks at pictures.",
};

constexpr std::int32_t kDot = 2;  // pixels of a letter's dot
constexpr std::int32_t kAdvance = (kGlyphWidth + 1) * kDot;
constexpr std::int32_t kLineHeight = 20;
constexpr std::int32_t kFade = 14;  // rows over which text comes and goes
constexpr Pixel kInk = {232, 236, 244};
constexpr Pixel kGround = {8, 10, 14};  // what the picture darkens to below the text...
constexpr std::int32_t kGroundShare = kFade * 7 / 8;  // ...so far

constexpr std::int32_t Mix(std::int32_t from, std::int32_t to, std::int32_t share) {
  return from + (to - from) * share / kFade;
}

// How opaque a row of the band is, up to kFade.
std::int32_t OpacityOf(std::int32_t y) noexcept {
  const std::int32_t fromEdge = std::min(y - kCreditsTop + 1, kCreditsBottom - y);
  return std::clamp(fromEdge, 0, kFade);
}

// Brings a pixel nearer to a colour, by a share up to kFade.
void Blend(HostBitmap* bitmap, std::int32_t x, std::int32_t y, const Pixel& colour,
           std::int32_t share) noexcept {
  const Pixel below = hostBitmapGetPixel(bitmap, x, y);
  hostBitmapSetPixel(bitmap, x, y,
                     {Mix(below.red, colour.red, share), Mix(below.green, colour.green, share),
                      Mix(below.blue, colour.blue, share)});
}

void DarkenBand(HostBitmap* bitmap) noexcept {
  const std::int32_t width = hostBitmapWidth(bitmap);
  for (std::int32_t y = kCreditsTop; y < kCreditsBottom; ++y) {
    const std::int32_t share = std::min(OpacityOf(y), kGroundShare);
    for (std::int32_t x = 0; x < width; ++x) Blend(bitmap, x, y, kGround, share);
  }
}

void DrawDot(HostBitmap* bitmap, std::int32_t x, std::int32_t y, std::int32_t share) noexcept {
  for (std::int32_t column = x; column < x + kDot; ++column) {
    Blend(bitmap, column, y, kInk, share);
  }
}

// Text from its upper left corner on; each row of pixels is as opaque as `opacityOf` says.
template <class Opacity>
void DrawText(HostBitmap* bitmap, std::string_view text, std::int32_t x, std::int32_t top,
              Opacity opacityOf) noexcept {
  for (const char letter : text) {
    for (std::int32_t row = 0; row < kGlyphHeight * kDot; ++row) {
      const std::int32_t share = opacityOf(top + row);
      for (std::int32_t column = 0; share > 0 && column < kGlyphWidth; ++column) {
        if (HasDot(letter, column, row / kDot)) {
          DrawDot(bitmap, x + column * kDot, top + row, share);
        }
      }
    }
    x += kAdvance;
  }
}

std::int32_t CentredStart(const HostBitmap* bitmap, std::size_t letters) noexcept {
  return (hostBitmapWidth(bitmap) - static_cast<std::int32_t>(letters) * kAdvance) / 2;
}

}  // namespace

std::int32_t CreditsLength() noexcept {
  const auto lines = static_cast<std::int32_t>(std::size(kLines));
  return lines * kLineHeight + kCreditsBottom - kCreditsTop;
}

void DrawCredits(HostBitmap* bitmap, std::int32_t offset) noexcept {
  DarkenBand(bitmap);
  std::int32_t y = kCreditsBottom - offset;
  for (const std::string_view line : kLines) {
    const bool inBand = y + kLineHeight > kCreditsTop && y < kCreditsBottom;
    if (inBand) DrawText(bitmap, line, CentredStart(bitmap, line.size()), y, OpacityOf);
    y += kLineHeight;
  }
}

void DrawCaption(HostBitmap* bitmap, const char* shaderName) noexcept {
  constexpr std::string_view kPlugin = "sorvaNIX ";
  const std::string_view name(shaderName);
  const auto opaque = [](std::int32_t) { return kFade; };
  const std::int32_t x = CentredStart(bitmap, kPlugin.size() + name.size());
  DrawText(bitmap, kPlugin, x, kCaptionTop, opaque);
  const auto letters = static_cast<std::int32_t>(kPlugin.size());
  DrawText(bitmap, name, x + letters * kAdvance, kCaptionTop, opaque);
}

}  // namespace sorvanix
