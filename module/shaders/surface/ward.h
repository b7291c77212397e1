// The highlight of a brushed surface.
//
// Reference: G. J. Ward, "Measuring and Modeling Anisotropic Reflection", SIGGRAPH 1992: the form
// with the half vector (equation 5b), without the factor that keeps the energy of all widths alike.
#pragma once

#include <cmath>

#include "module/kit/vector.h"

namespace sorvanix {

/// The directions along and across the brushing, each divided by the highlight's width along it. A
/// zero vector makes the highlight endless in its direction.
struct WardAxes {
  Vector along = {};
  Vector across = {};
};

/// The level of the highlight. `half` is the unit vector between light and eye; the two cosines are
/// those of light and eye to `normal`. Grazing angles raise the level no further than ten times.
inline double WardHighlight(const WardAxes& axes, const Vector& half, const Vector& normal,
                            double cosLight, double cosEye) noexcept {
  constexpr double kGrazing = 0.1;
  const double along = WideDot(half, axes.along);
  const double across = WideDot(half, axes.across);
  const double w = WideDot(half, normal) + 1;
  const double d = std::sqrt(cosLight * cosEye);
  return std::exp(-2 * (along * along + across * across) / w) / (d < kGrazing ? kGrazing : d);
}

}  // namespace sorvanix
