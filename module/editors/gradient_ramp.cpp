// A ramp read from its block and written back word by word.
#include "module/editors/gradient_ramp.h"

#include <algorithm>
#include <atomic>
#include <bit>

#include "module/kit/ramp_edit.h"

namespace sorvanix {

namespace {

void StoreWord(std::int32_t& word, std::int32_t value) noexcept {
  if (word != value) std::atomic_ref(word).store(value, std::memory_order_relaxed);
}

// Bits are compared, not numbers: a zero may change its sign, and a NaN need not be stored again.
void StoreWord(float& word, float value) noexcept {
  if (std::bit_cast<std::uint32_t>(word) == std::bit_cast<std::uint32_t>(value)) return;
  std::atomic_ref(word).store(value, std::memory_order_relaxed);
}

void StoreKnot(RampKnot& knot, const RampKnot& value) noexcept {
  StoreWord(knot.colour.x, value.colour.x);
  StoreWord(knot.colour.y, value.colour.y);
  StoreWord(knot.colour.z, value.colour.z);
  StoreWord(knot.position, value.position);
  StoreWord(knot.bias, value.bias);
}

}  // namespace

Ramp RampInBlock::Load() const noexcept {
  Ramp ramp;
  if (knots == nullptr) return ramp;
  std::copy_n(knots, RampMaxKnots, ramp.knots);
  std::copy_n(order, RampMaxKnots, ramp.order);
  ramp.interpolation = *interpolation;
  ramp.count = LiveKnots(*count);
  ramp.selected = *selected;
  RepairOrder(ramp);
  return ramp;
}

void RampInBlock::Store(const Ramp& ramp) const noexcept {
  if (knots == nullptr) return;
  for (std::int32_t i = 0; i < RampMaxKnots; ++i) {
    StoreKnot(knots[i], ramp.knots[i]);
    StoreWord(order[i], ramp.order[i]);
  }
  StoreWord(*interpolation, ramp.interpolation);
  StoreWord(*count, ramp.count);
  StoreWord(*selected, ramp.selected);
}

}  // namespace sorvanix
