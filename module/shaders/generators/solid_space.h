// The spaces that solid shaders read their points in, and the maps from world space into them.
#pragma once

#include <array>

#include "module/kit/matrix.h"
#include "module/shell/host_render.h"

namespace sorvanix {

/// The hit, then the three corners of the sample.
using SamplePoints = std::array<Vector, 4>;

inline SamplePoints WorldPoints(const RenderContext& render) noexcept {
  return {render.hitPoint, render.footprintA, render.footprintB, render.footprintC};
}

/// The images of the four points under a map.
template <class Map>
inline SamplePoints EachPoint(const SamplePoints& points, const Map& map) {
  return {map(points[0]), map(points[1]), map(points[2]), map(points[3])};
}

/// World to the space of the object that was hit; changes nothing when the object is unknown or its
/// matrix cannot be inverted.
inline Matrix WorldToObject(const RenderContext& render) noexcept {
  return render.object == nullptr ? kIdentityMatrix : Invert(render.object->matrix);
}

/// World to camera space; changes nothing without a camera.
inline Matrix WorldToCamera(const RenderContext& render) noexcept {
  const Matrix* camera = hostCameraMatrix(&render);
  return camera == nullptr ? kIdentityMatrix : Invert(*camera);
}

/// `localHitPoint` to the space of the texture tag, in hundredths: a tag as large as a usual
/// object, 100 units, then has as many units as its object.
inline Matrix HitToTag(const TextureTag& tag) noexcept {
  return Multiply(ScaleMatrix({100, 100, 100}), tag.matrix2);
}

}  // namespace sorvanix
