// Where Gradient's shapes in space are read: the hit, in the space that the block names.
#pragma once

#include <sorvanix/footprint.h>
#include <sorvanix/records.h>

#include "module/shaders/generators/gradient.h"

namespace sorvanix {

/// A point, and the neighbour of it that an enclosing filter asks for.
struct GradientHit {
  Vector point = {};
  std::int32_t tap = TapNone;
};

/// The hit of the render in the block's space. `own` is the calling CPU's slot, null without slots;
/// `fromSlot` tells that an enclosing filter wrote the point there.
GradientHit HitInSpace(const GradientBlock& block, const RenderContext& render,
                       const FootprintBlock* own, bool fromSlot) noexcept;

}  // namespace sorvanix
