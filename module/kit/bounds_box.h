// A box that grows around points, for the extent of a sample's footprint.
#pragma once

#include <sorvanix/types.h>

#include <cstdint>

#include "module/kit/vector.h"

namespace sorvanix {

/// The box from `min` to `max`; `used` is zero until a point was added.
struct BoundsBox {
  Vector min{};
  Vector max{};
  std::int32_t used = 0;
};

/// Shrinks the box to the point p. This alone adds no point: `used` stays as it was.
constexpr void BoundsStart(BoundsBox& box, const Vector& p) { box.min = box.max = p; }

/// Grows the box to hold p. A component that is NaN moves no side.
constexpr void BoundsAdd(BoundsBox& box, const Vector& p) {
  box.used = 1;
  box.min = ByComponent([](float side, float at) { return at < side ? at : side; }, box.min, p);
  box.max = ByComponent([](float side, float at) { return at > side ? at : side; }, box.max, p);
}

/// Half the box's extent on each axis; zero when no point was added.
constexpr Vector BoundsHalfSize(const BoundsBox& box) {
  if (box.used == 0) return {};
  return Scale(Sub(box.max, box.min), 0.5f);
}

}  // namespace sorvanix
