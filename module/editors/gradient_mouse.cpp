// Pressing and dragging the handles of a ramp.
#include "module/editors/gradient_mouse.h"

#include <sorvanix/ids.h>

#include "module/editors/gradient_scale.h"
#include "module/kit/ramp_edit.h"

namespace sorvanix {

namespace {

// Where the centre of a handle may go before it counts as off the area.
struct Rows {
  std::int32_t top, bottom;
  constexpr bool Hold(std::int32_t y) const { return y >= top && y <= bottom; }
};
constexpr Rows kPointerRows = {1, 55};
constexpr Rows kDiamondRows = {-9, 22};

constexpr std::int32_t kFewestKnots = 2;
constexpr float kNewBias = 0.5f;

// The ramp keeps its colour at the place where the knot comes.
void AddKnot(Ramp& ramp, std::int32_t x) {
  const float t = RampPositionOfPixel(x);
  PutIn(ramp, {SampleRamp(t, ramp.knots, ramp.count, ramp.interpolation), t, kNewBias});
}

RampHandle TakeHandle(Ramp& ramp, const GradientPress& press) {
  if (const RampHandle bias = BiasHandleAt(ramp, press.x, press.y)) {
    SelectHandle(ramp, bias);
    return bias;
  }
  if (const RampHandle hit = KnotHandleAt(ramp, press.x, press.y)) {
    SelectHandle(ramp, hit);
    const RampKnot& original = ramp.knots[hit.knot];
    const RampKnot copy = {original.colour, original.position, kNewBias};
    if (press.qualifier == QualifierAlt) PutIn(ramp, copy);
    return SelectedHandle(ramp);
  }
  const bool onStrip = press.x >= kStripLeft && press.x <= kStripRight;
  if (!onStrip || press.twice || ramp.count >= RampMaxKnots) return {};
  AddKnot(ramp, press.x);
  return SelectedHandle(ramp);
}

}  // namespace

RampHandle GradientMouse::Press(Ramp& ramp, const GradientPress& press) {
  tornOff_ = false;
  const RampHandle held = TakeHandle(ramp, press);
  if (held.kind == HandleKind::Bias) {
    grabX_ = PixelOfBias(ramp, held.knot) - press.x;
    grabY_ = kDiamondCentre - press.y;
    grabBias_ = ramp.knots[held.knot].bias;
  } else if (held) {
    grabX_ = PixelOfKnot(ramp, held.knot) - press.x;
    grabY_ = kPointerCentre - press.y;
  }
  return held;
}

void GradientMouse::Move(Ramp& ramp, std::int32_t x, std::int32_t y) {
  const std::int32_t centreX = PixelAt(double(grabX_) + x);
  const std::int32_t centreY = PixelAt(double(grabY_) + y);
  const RampHandle held = SelectedHandle(ramp);
  if (held.kind == HandleKind::Knot) MoveHeldKnot(ramp, held.knot, centreX, centreY);
  if (held.kind == HandleKind::Bias) MoveHeldBias(ramp, held.knot, centreX, centreY);
}

void GradientMouse::MoveHeldKnot(Ramp& ramp, std::int32_t knot, std::int32_t x, std::int32_t y) {
  if (!kPointerRows.Hold(y)) {
    if (tornOff_ || ramp.count <= kFewestKnots) return;
    tornKnot_ = ramp.knots[knot];
    DeleteKnot(ramp, knot);
    tornOff_ = true;
    return;
  }
  if (tornOff_) {
    tornOff_ = false;
    PutIn(ramp, tornKnot_);
    return;
  }
  MoveKnot(ramp, knot, RampPositionOfPixel(x), x);
}

void GradientMouse::MoveHeldBias(Ramp& ramp, std::int32_t knot, std::int32_t x, std::int32_t y) {
  if (knot + 1 >= ramp.count) return;
  float& bias = ramp.knots[knot].bias;
  if (!kDiamondRows.Hold(y)) {
    bias = grabBias_;
    return;
  }
  // Of a span without width the bias is at either end.
  bias = LinearStep(PixelOfKnot(ramp, knot), PixelOfKnot(ramp, knot + 1), x);
}

}  // namespace sorvanix
