// Finding, selecting and moving the handles of a ramp.
#include "module/editors/gradient_handles.h"

#include <cstdlib>

#include "module/editors/gradient_scale.h"
#include "module/kit/ramp_edit.h"

namespace sorvanix {

namespace {

// A shape catches pixels up to its outline.
bool Catches(std::int32_t halfWidth, std::int32_t x, std::int32_t centre) {
  return std::abs(x - centre) <= halfWidth;
}

// The first knot of the order, from the top down, that has the property.
template <class Property>
std::int32_t TopmostKnot(const Ramp& ramp, Property has) {
  for (std::int32_t i = LiveKnots(ramp.count) - 1; i >= 0; --i) {
    if (has(ramp.order[i])) return ramp.order[i];
  }
  return -1;
}

RampHandle HandleOrNone(HandleKind kind, std::int32_t knot) {
  return knot < 0 ? RampHandle{} : RampHandle{kind, knot};
}

bool PassesNeighbour(const Ramp& ramp, std::int32_t knot, std::int32_t x) {
  const float position = ramp.knots[knot].position;
  if (knot > 0) {
    if (x < PixelOfKnot(ramp, knot - 1)) return true;
    // A pixel is wider than nothing: within the neighbour's own, the knot may still be past it.
    if (!(position >= ramp.knots[knot - 1].position)) return true;
  }
  if (knot + 1 == ramp.count) return x > kStripRight;
  return x > PixelOfKnot(ramp, knot + 1) || !(position <= ramp.knots[knot + 1].position);
}

}  // namespace

RampHandle SelectedHandle(const Ramp& ramp) {
  const std::int32_t live = LiveKnots(ramp.count);
  const bool isBias = ramp.selected >= kFirstBiasHandle;
  const std::int32_t knot = isBias ? ramp.selected - kFirstBiasHandle : ramp.selected;
  if (knot < 0 || knot >= live) return {};
  return {isBias ? HandleKind::Bias : HandleKind::Knot, knot};
}

void SelectHandle(Ramp& ramp, const RampHandle& handle) {
  if (!handle) return;
  RaiseKnot(ramp, handle.knot);
  ramp.selected = handle.kind == HandleKind::Bias ? handle.knot + kFirstBiasHandle : handle.knot;
}

float HandleValue(const Ramp& ramp, const RampHandle& handle) {
  const RampKnot& knot = ramp.knots[handle.knot];
  switch (handle.kind) {
    case HandleKind::Knot:
      return knot.position;
    case HandleKind::Bias:
      return static_cast<float>(Clamp01(knot.bias));
    default:
      return 0;
  }
}

void SetHandleValue(Ramp& ramp, const RampHandle& handle, float value) {
  switch (handle.kind) {
    case HandleKind::Knot:
      MoveKnot(ramp, handle.knot, value, PixelOfPosition(value));
      break;
    case HandleKind::Bias:
      ramp.knots[handle.knot].bias = static_cast<float>(Clamp01(value));
      break;
    default:
      break;
  }
}

void PutIn(Ramp& ramp, const RampKnot& knot) {
  const std::int32_t index = InsertKnot(ramp, knot.colour, knot.position, knot.bias);
  if (index >= 0) ramp.selected = index;
}

RampHandle BiasHandleAt(const Ramp& ramp, std::int32_t x, std::int32_t y) {
  if (!HasBiasHandles(ramp)) return {};
  const std::int32_t last = LiveKnots(ramp.count) - 1;
  return HandleOrNone(HandleKind::Bias, TopmostKnot(ramp, [&](std::int32_t knot) {
                        return knot != last &&
                               Catches(DiamondHalfWidth(y), x, PixelOfBias(ramp, knot));
                      }));
}

RampHandle KnotHandleAt(const Ramp& ramp, std::int32_t x, std::int32_t y) {
  return HandleOrNone(HandleKind::Knot, TopmostKnot(ramp, [&](std::int32_t knot) {
                        return Catches(PointerHalfWidth(y), x, PixelOfKnot(ramp, knot));
                      }));
}

void MoveKnot(Ramp& ramp, std::int32_t knot, float position, std::int32_t x) {
  ramp.knots[knot].position = position;
  if (!PassesNeighbour(ramp, knot, x)) return;
  const RampKnot moved = ramp.knots[knot];
  DeleteKnot(ramp, knot);
  PutIn(ramp, moved);
}

}  // namespace sorvanix
