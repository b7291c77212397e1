// What 3D Noise does with a place: its value and colour there, and the slope around it.
#pragma once

#include <sorvanix/records.h>

#include "module/shaders/generators/noise_3d.h"
#include "module/shaders/generators/noise_shape.h"

namespace sorvanix {

/// All but the point that one call of Output works on.
struct Noise3DSampling {
  const Noise3DBlock& block;
  float time;
  float width;  ///< of the filter, in noise units
  NegativeCycles negativeCycles;

  Vector Colour(const Vector& point) const noexcept;
  /// Of a bump: the mean of the colour.
  double Height(const Vector& point) const noexcept;
};

/// Bends the render's normal by the slope between neighbours along its tangents: J. F. Blinn,
/// "Simulation of Wrinkled Surfaces", SIGGRAPH 1978.
void BendAlongSurface(const Noise3DSampling& sampling, const Vector& point, float step,
                      RenderContext& render) noexcept;

/// Turns the render's normal towards the fall of the noise along the axes of its space, the further
/// the steeper it is, up to a limit: bumps from solid noise, after K. Perlin, "An Image
/// Synthesizer", SIGGRAPH 1985.
void BendAlongAxes(const Noise3DSampling& sampling, const Vector& point, float step,
                   RenderContext& render) noexcept;

/// The neighbour that an enclosing filter asks for by its tap.
Vector MovedByTap(const Vector& point, std::int32_t tap, float step,
                  const RenderContext& render) noexcept;

}  // namespace sorvanix
