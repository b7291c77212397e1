// The direction of a ray, and which way a surface faces it.
#pragma once

#include <sorvanix/records.h>

namespace sorvanix {

/// The direction, narrowed to a vector.
inline Vector DirectionOf(const RayRecord& ray) noexcept {
  return {static_cast<float>(ray.direction[0]), static_cast<float>(ray.direction[1]),
          static_cast<float>(ray.direction[2])};
}

/// The dot product of the ray's direction and a normal, in double as the ray is: above 0 where the
/// ray leaves through the side of the normal, and so meets the back.
inline double AlongRay(const RayRecord& ray, const Vector& normal) noexcept {
  return ray.direction[0] * normal.x + ray.direction[1] * normal.y + ray.direction[2] * normal.z;
}

}  // namespace sorvanix
