// The eleven shapes of Gradient, and the colour that each gives at a coordinate.
#pragma once

#include <sorvanix/records.h>

#include "module/shaders/generators/gradient.h"

namespace sorvanix {

/// Whether a type reads the point in space, and not the texture coordinate.
constexpr bool ReadsPoint(std::int32_t type) noexcept { return type >= GradientLinear3D; }

/// Where a gradient is read.
struct GradientPlace {
  Vector uvw;    ///< the texture coordinate; u and v count
  Vector point;  ///< in the block's space
};

/// The colour of the block's gradient at a place. Without a render, types with a point show what
/// they would look like on a flat sample: a strip, a mirrored strip, a disc.
Vector EvaluateGradient(const GradientBlock& block, const RenderContext* render,
                        const GradientPlace& place) noexcept;

}  // namespace sorvanix
