// Light: what one light sends to a point, and the sums over all lights that shaders ask for.
//
// A highlight is the mirror cosine raised to a power: B. T. Phong, "Illumination for computer
// generated pictures", 1975. A light's contrast k raises cosines to e^-k: above 0 it flattens the
// shading, below 0 it sharpens it.
#pragma once

#include <sorvanix/records.h>

#include <cstdint>
#include <span>

#include "host/render/vec3.h"

namespace sorvanix::host {

/// What stands between a point and a light.
class Occluder {
 public:
  virtual ~Occluder() = default;

  /// True when something lies on the ray between its origin and a distance, which may be infinite.
  /// `direction` is a unit vector; the element `identity` does not count.
  virtual bool Blocks(const Vec3& origin, const Vec3& direction, double distance,
                      std::int32_t identity) const noexcept = 0;
};

/// How far a shadow ray starts from the surface, along the normal and to the side of the light.
inline constexpr double kShadowOffset = 1e-3;

struct ArrivingLight {
  bool arrives = false;  ///< false when distance or cone leave no light; a shadow leaves it true
  Vec3 colour;           ///< black in a shadow
  Vec3 direction;        ///< unit vector towards the light; the normal for an ambient light
};

/// Where light is asked for.
struct LitPoint {
  Vec3 point;
  Vec3 normal;
  const Occluder* shadows = nullptr;  ///< null: nothing throws a shadow
  std::int32_t identity = 0;          ///< the element that shadow rays skip
  Vec3 lift = {};                     ///< by which shadow rays in front start farther out
};

/// What a light sends to a point, whichever side of the surface it stands on. An area light counts
/// as one point, its middle.
ArrivingLight SampleLight(const LightRecord& light, const LitPoint& at) noexcept;

/// Diffuse light and highlights, to be added to.
struct LightSum {
  Vec3 diffuse;
  Vec3 specular;
};

/// Adds what the lights do to a surface. `view` is the unit vector to the eye, or zero for no
/// highlights; `exponent` is that of the highlight, limited to 0 and above. An area light is the
/// mean of 16 points.
void Illuminate(std::span<const LightRecord> lights, const LitPoint& at, const Vec3& view,
                double exponent, LightSum& sum) noexcept;

/// The diffuse light of an area light: the mean over the same 16 points.
Vec3 AreaLightDiffuse(const LightRecord& light, const LitPoint& at) noexcept;

}  // namespace sorvanix::host
