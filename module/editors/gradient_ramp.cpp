// A ramp read from its block and written back word by word.
#include "module/editors/gradient_ramp.h"

#include <algorithm>

#include "module/editors/shared_words.h"
#include "module/kit/ramp_edit.h"

namespace sorvanix {

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
  StoreShared(knots, 0, ramp.knots);
  StoreShared(order, 0, ramp.order);
  StoreInt(interpolation, 0, ramp.interpolation);
  StoreInt(count, 0, ramp.count);
  StoreInt(selected, 0, ramp.selected);
}

}  // namespace sorvanix
