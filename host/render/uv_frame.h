// How texture coordinates lie on a surface: where they are at a point, how they change around it,
// and the directions in which they grow.
#pragma once

#include <functional>
#include <optional>

#include "host/render/vec3.h"

namespace sorvanix::host {

struct UvFrame {
  Vec3 uvw = {};                        ///< at the point
  Vec3 gradientU = {}, gradientV = {};  ///< change of u and v by unit of length in the surface
  Vec3 tangentU = {}, tangentV = {};    ///< unit vectors in the surface along growing u and v

  /// The coordinate at an offset from the point, as if the surface were flat; w does not change.
  Vec3 UvwAt(const Vec3& offset) const noexcept {
    return uvw + Vec3(Dot(gradientU, offset), Dot(gradientV, offset), 0);
  }
};

/// Unit vectors that span the plane of `normal`, with Cross(first, second) along it.
struct SurfaceAxes {
  Vec3 first, second;
};
SurfaceAxes AnyAxes(const Vec3& normal) noexcept;

/// The frame of coordinates with these gradients. Where u and v do not span the surface (a single
/// value all over it, or the one a copy of the other) the missing directions are made orthonormal
/// to the normal.
UvFrame FrameFromGradients(const Vec3& uvw, const Vec3& gradientU, const Vec3& gradientV,
                           const Vec3& normal) noexcept;

/// The frame of a triangle's own coordinates at a point with barycentric coordinates b and c.
UvFrame FrameOfTriangle(const Vec3 (&corner)[3], const Vec3 (&uvw)[3], double b, double c,
                        const Vec3& normal) noexcept;

/// The frame of coordinates that are a function of the place, from differences over `step`. On each
/// axis the smaller of the forward and the backward difference counts: a seam, where coordinates
/// jump, lies on one side only. Nothing where the function gives nothing.
using UvwFunction = std::function<std::optional<Vec3>(const Vec3& point)>;
std::optional<UvFrame> FrameByDifferences(const UvwFunction& uvwAt, const Vec3& point,
                                          const Vec3& normal, double step);

}  // namespace sorvanix::host
