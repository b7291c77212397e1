// The handles of a ramp: what is selected, what lies under the mouse, and how a knot moves past
// others.
#pragma once

#include "module/kit/ramp.h"

namespace sorvanix {

/// What a handle moves.
enum class HandleKind : std::uint8_t { None, Knot, Bias };

/// The position handle of a knot, or the bias handle of the span on its right.
struct RampHandle {
  HandleKind kind = HandleKind::None;
  std::int32_t knot = 0;
  constexpr explicit operator bool() const { return kind != HandleKind::None; }
  friend constexpr bool operator==(const RampHandle&, const RampHandle&) = default;
};

/// `selected` of a ramp stands for the bias handle of knot 0 from here on.
inline constexpr std::int32_t kFirstBiasHandle = RampMaxKnots;

/// The position handle of the knot that a handle belongs to.
constexpr RampHandle KnotOf(const RampHandle& handle) {
  return handle ? RampHandle{HandleKind::Knot, handle.knot} : RampHandle{};
}

/// What `selected` names; none for a number that names no live knot.
RampHandle SelectedHandle(const Ramp& ramp);

/// Selects a handle and moves its knot to the top of the order.
void SelectHandle(Ramp& ramp, const RampHandle& handle);

/// A knot's position as it is, a bias limited to 0..1; 0 without a handle.
float HandleValue(const Ramp& ramp, const RampHandle& handle);

/// Moves a handle: a knot to a position, which is not limited, past its neighbours if need be; a
/// bias to 0..1. Does nothing without a handle.
void SetHandleValue(Ramp& ramp, const RampHandle& handle, float value);

/// Inserts a knot and selects it; in a full ramp it does nothing.
void PutIn(Ramp& ramp, const RampKnot& knot);

/// The topmost bias handle, or knot, whose shape holds the pixel. Diamonds are looked for in the
/// rows above the strip, pointers in those below it.
RampHandle BiasHandleAt(const Ramp& ramp, std::int32_t x, std::int32_t y);
RampHandle KnotHandleAt(const Ramp& ramp, std::int32_t x, std::int32_t y);

/// Gives a knot a new position. When it passes a neighbour, it is taken out and put in again, which
/// keeps the knots ascending, and is selected. x is the pixel that it was moved to: pulled beyond
/// the strip's end, the last knot goes in front of those that already stand there.
void MoveKnot(Ramp& ramp, std::int32_t knot, float position, std::int32_t x);

}  // namespace sorvanix
