// The ramp's list operations. They run in the editor, never during a render.
#include "module/kit/ramp_edit.h"

#include <algorithm>
#include <numeric>

namespace sorvanix {
namespace {

// The live part of an array of the ramp.
template <typename Item>
struct Live {
  Item* first;
  Item* last;
  Item* begin() const { return first; }
  Item* end() const { return last; }
};

Live<RampKnot> Knots(Ramp& ramp) { return {ramp.knots, ramp.knots + LiveKnots(ramp.count)}; }

Live<std::int32_t> Order(Ramp& ramp) { return {ramp.order, ramp.order + LiveKnots(ramp.count)}; }

bool IsPermutation(const Live<std::int32_t>& order) {
  const auto live = static_cast<std::int32_t>(order.last - order.first);
  bool named[RampMaxKnots]{};
  for (const std::int32_t entry : order) {
    if (entry < 0 || entry >= live || named[entry]) return false;
    named[entry] = true;
  }
  return true;
}

void SelectTop(Ramp& ramp) {
  const std::int32_t live = LiveKnots(ramp.count);
  ramp.selected = live > 0 ? ramp.order[live - 1] : 0;
}

}  // namespace

void RepairOrder(Ramp& ramp) {
  const Live<std::int32_t> order = Order(ramp);
  if (IsPermutation(order)) return;
  std::iota(order.begin(), order.end(), 0);
  std::reverse(order.begin(), order.end());
}

void RaiseKnot(Ramp& ramp, std::int32_t index) {
  RepairOrder(ramp);
  const Live<std::int32_t> order = Order(ramp);
  std::int32_t* const entry = std::find(order.begin(), order.end(), index);
  if (entry != order.end()) std::rotate(entry, entry + 1, order.end());
}

std::int32_t InsertKnot(Ramp& ramp, Vector colour, float position, float bias) {
  const std::int32_t live = LiveKnots(ramp.count);
  if (live >= RampMaxKnots) return -1;
  RepairOrder(ramp);

  const Live<RampKnot> knots = Knots(ramp);
  RampKnot* const place = std::find_if(knots.begin(), knots.end(), [position](const RampKnot& k) {
    return !(k.position < position);
  });
  std::move_backward(place, knots.end(), knots.end() + 1);
  *place = {colour, position, bias};

  const auto index = static_cast<std::int32_t>(place - knots.begin());
  for (std::int32_t& entry : Order(ramp)) entry += entry >= index;
  ramp.order[live] = index;
  ramp.count = live + 1;
  return index;
}

void DeleteKnot(Ramp& ramp, std::int32_t index) {
  const std::int32_t live = LiveKnots(ramp.count);
  if (index < 0 || index >= live) return;
  RaiseKnot(ramp, index);

  std::move(ramp.knots + index + 1, ramp.knots + live, ramp.knots + index);
  ramp.knots[live - 1] = {};
  ramp.count = live - 1;
  // The order's last entry, the knot itself, dropped out with the count.
  for (std::int32_t& entry : Order(ramp)) entry -= entry >= index;
  SelectTop(ramp);
}

void ReverseKnots(Ramp& ramp) {
  RepairOrder(ramp);
  const Live<RampKnot> knots = Knots(ramp);
  std::reverse(knots.begin(), knots.end());
  for (RampKnot& knot : knots) {
    knot.position = 1 - knot.position;
    knot.bias = 1 - knot.bias;
  }
  // A bias belongs to the span on its knot's right, and the spans have changed ends.
  for (RampKnot* knot = knots.begin(); knot + 1 < knots.end(); ++knot) knot->bias = knot[1].bias;

  const std::int32_t live = LiveKnots(ramp.count);
  for (std::int32_t& entry : Order(ramp)) entry = live - entry - 1;
  SelectTop(ramp);
}

void RepeatKnots(Ramp& ramp) {
  const std::int32_t live = LiveKnots(ramp.count);
  if (2 * live > RampMaxKnots) return;
  for (RampKnot& knot : Knots(ramp)) knot.position *= 0.5f;

  // Copies are taken from a snapshot: inserting moves the knots that are still to come.
  RampKnot former[RampMaxKnots];
  std::copy_n(ramp.knots, live, former);
  for (std::int32_t i = 0; i < live; ++i) {
    InsertKnot(ramp, former[i].colour, former[i].position + 0.5f, former[i].bias);
  }
}

}  // namespace sorvanix
