// How a height map bends the normal: J. F. Blinn, "Simulation of Wrinkled Surfaces", SIGGRAPH 1978.
#pragma once

#include <sorvanix/records.h>

#include "module/kit/vector.h"

namespace sorvanix {

/// The height that a colour stands for: its mean by a 32-bit third, which is not the number of
/// Mean.
inline double HeightOf(const Vector& colour) noexcept {
  constexpr double kThird = 0.33333334f;
  return (double{colour.x} + colour.y + colour.z) * kThird;
}

/// Adds slopes along the two tangents to the render's `bumpNormal` and normalises it. A sum of zero
/// length gives the zero vector.
inline void TiltNormal(RenderContext& render, double alongU, double alongV) noexcept {
  render.bumpNormal =
      Normalized(Add(Add(render.bumpNormal, Scale(render.tangentU, static_cast<float>(alongU))),
                     Scale(render.tangentV, static_cast<float>(alongV))));
}

}  // namespace sorvanix
