// Painting the gradient area pixel by pixel.
#include "module/editors/gradient_picture.h"

#include "module/editors/gradient_handles.h"

namespace sorvanix {

namespace {

constexpr Pixel Grey(std::uint8_t value) { return {value, value, value}; }

constexpr Pixel kBlack = Grey(0);
constexpr Pixel kWhite = Grey(255);
constexpr Pixel kGround = Grey(150);
constexpr Pixel kHandleFace = Grey(205);
constexpr Pixel kHandleFaceSelected = Grey(240);

// A ring of the frame, from the strip outwards. Light falls from the upper left, so that a dark
// upper and left side and a light lower and right one look sunken.
struct FrameRing {
  Pixel upperLeft, lowerRight;
};
constexpr FrameRing kFrame[] = {
    {kBlack, kBlack}, {Grey(100), Grey(100)}, {Grey(122), Grey(182)}, {Grey(138), Grey(166)}};

std::uint8_t ByteOfChannel(double channel) {
  return static_cast<std::uint8_t>(Clamp01NanToZero(channel) * 255.99);
}

void PaintGround(GradientPicture& picture) {
  for (auto& row : picture.rows) row.fill(kGround);
}

void PaintStrip(const Ramp& ramp, GradientPicture& picture) {
  for (std::int32_t x = kStripLeft; x <= kStripRight; ++x) {
    const Pixel pixel =
        PixelOfColour(SampleRamp(PositionOfPixel(x), ramp.knots, ramp.count, ramp.interpolation));
    for (std::int32_t y = kStripTop; y <= kStripBottom; ++y) picture.Set(x, y, pixel);
  }
}

void PaintFrame(GradientPicture& picture) {
  std::int32_t distance = 0;
  for (const FrameRing& ring : kFrame) {
    ++distance;
    const std::int32_t left = kStripLeft - distance, right = kStripRight + distance;
    const std::int32_t top = kStripTop - distance, bottom = kStripBottom + distance;
    for (std::int32_t y = top; y <= bottom; ++y) {
      picture.Set(left, y, ring.upperLeft);
      picture.Set(right, y, ring.lowerRight);
    }
    for (std::int32_t x = left; x <= right; ++x) picture.Set(x, top, ring.upperLeft);
    for (std::int32_t x = left + 1; x <= right; ++x) picture.Set(x, bottom, ring.lowerRight);
  }
}

// One row of a handle: its outline at both ends, its face between.
void PaintHandleRow(GradientPicture& picture, std::int32_t x, std::int32_t y,
                    std::int32_t halfWidth, const Pixel& outline, const Pixel& face) {
  for (std::int32_t dx = 1 - halfWidth; dx < halfWidth; ++dx) picture.Set(x + dx, y, face);
  picture.Set(x - halfWidth, y, outline);
  picture.Set(x + halfWidth, y, outline);
}

// A house with its ridge at the strip. Its roof is the handle's face, its walls show the colour.
void PaintPointer(const RampKnot& knot, std::int32_t x, bool selected, GradientPicture& picture) {
  constexpr std::int32_t kWallTop = kPointerTop + 5;
  const Pixel outline = selected ? kWhite : kBlack;
  const Pixel colour = PixelOfColour(knot.colour);
  for (std::int32_t y = kPointerTop; y < kPointerBottom; ++y) {
    const Pixel face = y < kWallTop ? (selected ? kHandleFaceSelected : kHandleFace) : colour;
    PaintHandleRow(picture, x, y, PointerHalfWidth(y), outline, face);
  }
  const std::int32_t halfWidth = PointerHalfWidth(kPointerBottom);
  PaintHandleRow(picture, x, kPointerBottom, halfWidth, outline, outline);
}

void PaintDiamond(std::int32_t x, bool selected, GradientPicture& picture) {
  for (std::int32_t y = 0; y <= kDiamondBottom; ++y) {
    PaintHandleRow(picture, x, y, DiamondHalfWidth(y), selected ? kWhite : kBlack,
                   selected ? kHandleFaceSelected : kHandleFace);
  }
}

void PaintHandles(const Ramp& ramp, GradientPicture& picture) {
  const RampHandle selected = SelectedHandle(ramp);
  for (std::int32_t i = 0; i < ramp.count; ++i) {
    const std::int32_t knot = ramp.order[i];
    PaintPointer(ramp.knots[knot], PixelOfKnot(ramp, knot),
                 selected == RampHandle{HandleKind::Knot, knot}, picture);
    if (knot + 1 == ramp.count || !HasBiasHandles(ramp)) continue;
    PaintDiamond(PixelOfBias(ramp, knot), selected == RampHandle{HandleKind::Bias, knot}, picture);
  }
}

}  // namespace

Pixel PixelOfColour(const Vector& colour) {
  return {ByteOfChannel(colour.x), ByteOfChannel(colour.y), ByteOfChannel(colour.z)};
}

void PaintGradient(const Ramp& ramp, GradientPicture& picture) {
  PaintGround(picture);
  PaintStrip(ramp, picture);
  PaintFrame(picture);
  PaintHandles(ramp, picture);
}

}  // namespace sorvanix
