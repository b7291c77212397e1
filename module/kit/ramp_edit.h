// What the editor does to a ramp's knots: insert, delete, raise, reverse, repeat.
//
// Each operation keeps the knots ascending and `order` a permutation of them. A block from a
// damaged file may break that; an order that names the live knots wrongly is made anew first.
#pragma once

#include "module/kit/ramp.h"

namespace sorvanix {

/// Makes `order` count-1 .. 0 unless it names each live knot once.
void RepairOrder(Ramp& ramp);

/// Moves the knot to the top of the order. Does nothing for a knot that is not live.
void RaiseKnot(Ramp& ramp, std::int32_t index);

/// Adds a knot on top, in front of those at the same position, and returns its index, which the
/// caller makes the selected one; -1, with nothing changed, when the ramp is full.
std::int32_t InsertKnot(Ramp& ramp, Vector colour, float position, float bias);

/// Removes the knot and selects the one that is on top then. Does nothing for a knot that is not
/// live.
void DeleteKnot(Ramp& ramp, std::int32_t index);

/// Mirrors the ramp, spans with their biases included, and selects the knot on top. The last knot's
/// bias shapes no span and ends up mirrored from the first knot's.
void ReverseKnots(Ramp& ramp);

/// Squeezes the ramp into its first half and repeats it in the second; the selection stays. Does
/// nothing when that would be more than RampMaxKnots knots.
void RepeatKnots(Ramp& ramp);

}  // namespace sorvanix
