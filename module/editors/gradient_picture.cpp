// Painting the gradient area pixel by pixel.
#include "module/editors/gradient_picture.h"

#include "module/editors/gradient_handles.h"
#include "module/editors/gradient_scale.h"
#include "module/editors/pixel.h"

namespace sorvanix {

namespace {

constexpr Pixel Grey(std::int32_t value) { return {value, value, value}; }

constexpr Pixel kGround = Grey(150);

// A ring of the frame, from the strip outwards. Light falls from the upper left, so that a dark
// upper and left side and a light lower and right one look sunken.
struct FrameRing {
  Pixel upperLeft, lowerRight;
};
constexpr FrameRing kFrame[] = {
    {Grey(0), Grey(0)}, {Grey(100), Grey(100)}, {Grey(122), Grey(182)}, {Grey(138), Grey(166)}};

// How a handle is drawn.
struct HandleLook {
  Pixel outline, face;
};
constexpr HandleLook kPlainHandle = {Grey(0), Grey(205)};
constexpr HandleLook kSelectedHandle = {Grey(255), Grey(80)};

// All borders included.
void Fill(HostBitmap* bitmap, std::int32_t left, std::int32_t top, std::int32_t right,
          std::int32_t bottom, const Pixel& pixel) {
  for (std::int32_t y = top; y <= bottom; ++y) {
    for (std::int32_t x = left; x <= right; ++x) hostBitmapSetPixel(bitmap, x, y, pixel);
  }
}

void PaintStrip(const Ramp& ramp, HostBitmap* bitmap) {
  for (std::int32_t x = kStripLeft; x <= kStripRight; ++x) {
    const float t = PositionOfPixel(x);
    const Vector colour = SampleRamp(t, ramp.knots, ramp.count, ramp.interpolation);
    Fill(bitmap, x, kStripTop, x, kStripBottom, PixelOf(colour));
  }
}

void PaintFrame(HostBitmap* bitmap) {
  std::int32_t left = kStripLeft, top = kStripTop, right = kStripRight, bottom = kStripBottom;
  for (const FrameRing& ring : kFrame) {
    --left, --top, ++right, ++bottom;
    Fill(bitmap, left, top, right, top, ring.upperLeft);
    Fill(bitmap, left, top, left, bottom, ring.upperLeft);
    Fill(bitmap, right, top + 1, right, bottom, ring.lowerRight);
    Fill(bitmap, left + 1, bottom, right, bottom, ring.lowerRight);
  }
}

// One row of a handle: its outline at both ends, its face between.
void PaintHandleRow(HostBitmap* bitmap, std::int32_t x, std::int32_t y, std::int32_t halfWidth,
                    const HandleLook& look) {
  Fill(bitmap, x - halfWidth, y, x + halfWidth, y, look.face);
  hostBitmapSetPixel(bitmap, x - halfWidth, y, look.outline);
  hostBitmapSetPixel(bitmap, x + halfWidth, y, look.outline);
}

// A house with its ridge at the strip. Its roof is the handle's face, its walls show the colour.
void PaintPointer(HostBitmap* bitmap, std::int32_t x, const Vector& colour,
                  const HandleLook& roof) {
  constexpr std::int32_t kWallTop = kPointerTop + 5;
  const HandleLook wall = {roof.outline, PixelOf(colour)};
  for (std::int32_t y = kPointerTop; y < kPointerBottom; ++y) {
    PaintHandleRow(bitmap, x, y, PointerHalfWidth(y), y < kWallTop ? roof : wall);
  }
  const std::int32_t halfWidth = PointerHalfWidth(kPointerBottom);
  Fill(bitmap, x - halfWidth, kPointerBottom, x + halfWidth, kPointerBottom, roof.outline);
}

void PaintDiamond(HostBitmap* bitmap, std::int32_t x, const HandleLook& look) {
  for (std::int32_t y = 0; y <= kDiamondBottom; ++y) {
    PaintHandleRow(bitmap, x, y, DiamondHalfWidth(y), look);
  }
}

void PaintHandles(const Ramp& ramp, HostBitmap* bitmap) {
  const RampHandle selected = SelectedHandle(ramp);
  const auto lookOf = [&](HandleKind kind, std::int32_t knot) -> const HandleLook& {
    return selected == RampHandle{kind, knot} ? kSelectedHandle : kPlainHandle;
  };
  for (std::int32_t i = 0; i < ramp.count; ++i) {
    const std::int32_t knot = ramp.order[i];
    PaintPointer(bitmap, PixelOfKnot(ramp, knot), ramp.knots[knot].colour,
                 lookOf(HandleKind::Knot, knot));
    if (knot + 1 == ramp.count || !HasBiasHandles(ramp)) continue;
    PaintDiamond(bitmap, PixelOfBias(ramp, knot), lookOf(HandleKind::Bias, knot));
  }
}

}  // namespace

void PaintGradient(const Ramp& ramp, HostBitmap* bitmap) noexcept {
  Fill(bitmap, 0, 0, kGradientWidth - 1, kGradientHeight - 1, kGround);
  PaintStrip(ramp, bitmap);
  PaintFrame(bitmap);
  PaintHandles(ramp, bitmap);
}

}  // namespace sorvanix
