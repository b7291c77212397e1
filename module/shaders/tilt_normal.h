// How a height map bends the normal: J. F. Blinn, "Simulation of Wrinkled Surfaces", SIGGRAPH 1978.
#pragma once

#include <sorvanix/records.h>

#include "module/kit/vector.h"

namespace sorvanix {

/// Adds slopes along the two tangents to the render's `bumpNormal` and normalises it. A sum of zero
/// length gives the zero vector.
inline void TiltNormal(RenderContext& render, double alongU, double alongV) noexcept {
  render.bumpNormal =
      Normalized(Add(Add(render.bumpNormal, Scale(render.tangentU, static_cast<float>(alongU))),
                     Scale(render.tangentV, static_cast<float>(alongV))));
}

}  // namespace sorvanix
