// Diffuse light on rough surfaces.
//
// M. Oren and S. K. Nayar, "Generalization of the Lambertian Model and Implications for Machine
// Vision", International Journal of Computer Vision 14, 1995: the functional approximation, with
// its term of light that facets throw on one another. Without the model's factor of 1/pi: a smooth
// surface that is lit head-on shows its reflectance itself.
#pragma once

#include <sorvanix/types.h>

namespace sorvanix {

/// What follows from the roughness alone.
struct OrenNayarFactors {
  float sigma2 = 0;
  float a = 1;
  float b = 0;
};

/// `sigma` is the standard deviation of the facets' slopes in radians; 0 is a smooth surface.
OrenNayarFactors OrenNayarFactorsOf(float sigma) noexcept;

/// A surface with the eye that looks at it.
struct ViewedSurface {
  Vector normal;     ///< a unit vector, on the side to which the view vector points
  Vector viewAlong;  ///< the view within the surface; zero where it is head-on
  double viewAngle;  ///< between view and normal, in radians
};

/// `view` is a unit vector; the normal is turned to its side.
ViewedSurface ViewSurface(const Vector& normal, const Vector& view) noexcept;

/// The cosine of a light's angle of incidence as the light's contrast shapes it: |cosine| to the
/// power e^-contrast, and the cosine itself, sign included, for a contrast of 0.
double ContrastedCosine(double cosine, float contrast) noexcept;

/// The share of white light from one direction, a unit vector, that the surface shows. `cosine` is
/// that of the angle of incidence.
Vector OrenNayarShare(const OrenNayarFactors& factors, const Vector& reflectance,
                      const ViewedSurface& surface, const Vector& direction,
                      double cosine) noexcept;

}  // namespace sorvanix
