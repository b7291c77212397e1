// What a layer of Lumas makes of the highlight that the lights gave it.
#pragma once

#include <array>

#include "module/shaders/surface/lumas.h"

namespace sorvanix {

/// The highlight of each layer.
using Highlights = std::array<Vector, kLumasLayers>;

/// How near a point of the surface is to the outline: 0 where it faces the eye, 1 at the outline
/// and on all back faces. The cosine is that of the angle between normal and eye.
constexpr double RimOf(double cosEye) noexcept {
  if (cosEye < 0) return 1;
  return 1 - cosEye;
}

/// The highlight with the layer's level between middle and rim, its contrast and its tint.
Vector FinishHighlight(const SpecularLayer& layer, double rim, Vector highlight) noexcept;

}  // namespace sorvanix
