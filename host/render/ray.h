// Rays that know how far apart their neighbours are: H. Igehy, "Tracing ray differentials", 1999.
//
// The differences are those to the ray of the next sample to the right, and of the next one below.
// On a surface they span the piece that one sample stands for.
#pragma once

#include <algorithm>

#include "host/render/screen_view.h"
#include "host/render/vec3.h"

namespace sorvanix::host {

struct Ray {
  Vec3 origin;
  Vec3 direction;              ///< unit vector
  Vec3 originStep[2] = {};     ///< change of the origin from sample to sample
  Vec3 directionStep[2] = {};  ///< change of the direction
};

/// The piece of a surface that one sample stands for: a parallelogram around the point.
struct Footprint {
  Vec3 side[2];  ///< from its left edge to its right one, from its upper edge to its lower one
};

/// The ray of the camera through a place on the picture; `size` is that of a sample, in pixels.
inline Ray CameraRay(const ScreenView& view, double x, double y, double size) noexcept {
  const Vec3 way = view.WayThrough(x, y);
  const double length = Length(way);
  Ray ray = {.origin = Vec3(view.CameraToWorld().off), .direction = way / length};
  const Vec3 steps[2] = {Vec3(view.CameraToWorld().v1) * size,
                         Vec3(view.CameraToWorld().v2) * -size};
  for (int i = 0; i < 2; ++i) {
    ray.directionStep[i] = Perpendicular(steps[i], ray.direction) / length;
  }
  return ray;
}

/// The footprint on a plane that the ray meets at a distance. Where the ray only grazes the plane,
/// it is limited to a thousand times its size across the ray.
inline Footprint FootprintAt(const Ray& ray, double distance, const Vec3& normal) noexcept {
  double facing = Dot(ray.direction, normal);
  constexpr double kGrazing = 1e-3;
  if (std::abs(facing) < kGrazing) facing = facing < 0 ? -kGrazing : kGrazing;
  Footprint footprint;
  for (int i = 0; i < 2; ++i) {
    const Vec3 across = ray.originStep[i] + ray.directionStep[i] * distance;
    footprint.side[i] = across - ray.direction * (Dot(across, normal) / facing);
  }
  return footprint;
}

/// The ray that goes on behind a surface in the same direction.
inline Ray PassOn(const Ray& ray, const Vec3& point, const Footprint& footprint) noexcept {
  Ray next = ray;
  next.origin = point;
  std::copy_n(footprint.side, 2, next.originStep);
  return next;
}

/// The ray that a surface mirrors, taken as flat within the footprint. `normal` may be a bent one;
/// where it would send the ray into the face, the face mirrors it once more.
inline Ray Mirror(const Ray& ray, const Vec3& point, const Footprint& footprint, const Vec3& normal,
                  const Vec3& faceNormal) noexcept {
  Ray next = PassOn(ray, point, footprint);
  next.direction = Normalised(Mirrored(ray.direction, normal), ray.direction);
  for (Vec3& step : next.directionStep) step = Mirrored(step, normal);
  if (Dot(next.direction, faceNormal) * Dot(ray.direction, faceNormal) > 0) {
    next.direction = Mirrored(next.direction, faceNormal);
    for (Vec3& step : next.directionStep) step = Mirrored(step, faceNormal);
  }
  return next;
}

}  // namespace sorvanix::host
