// The four points of a sample: the spaces that shaders read them in, the maps from world space into
// them, and their extent.
#pragma once

#include <array>
#include <span>

#include "module/kit/bounds_box.h"
#include "module/kit/matrix.h"
#include "module/kit/vector.h"
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

/// The four points in the space of the texture tag, in hundredths.
inline SamplePoints PointsInTag(const RenderContext& render, const TextureTag& tag) noexcept {
  const Matrix map = HitToTag(tag);
  const auto toTag = [&](const Vector& corner) {
    return Transform(Add(render.localHitPoint, Sub(corner, render.hitPoint)), map);
  };
  return {Transform(render.localHitPoint, map), toTag(render.footprintA), toTag(render.footprintB),
          toTag(render.footprintC)};
}

/// By how much a sample's blur widens it, in units of its space.
inline double Blur(const ChannelSample& sample) noexcept {
  return double{sample.blurScale} * sample.blurOffset;
}

/// Half the extent of the four points on each axis, widened by the sample's blur.
inline Vector HalfExtent(std::span<const Vector, 4> points, const ChannelSample& sample) noexcept {
  BoundsBox box;
  BoundsStart(box, points[0]);
  for (const Vector& point : points) BoundsAdd(box, point);
  return OffsetAll(static_cast<float>(Blur(sample)), BoundsHalfSize(box));
}

}  // namespace sorvanix
