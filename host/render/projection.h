// Projections: texture coordinates of places in space.
//
// A projection works in tag units, in which its inside reaches from -1 to 1 on each axis. The v
// coordinate runs downwards, so that row 0 of a picture lies on top.
#pragma once

#include <sorvanix/records.h>

#include <optional>

#include "host/render/screen_view.h"
#include "host/render/vec3.h"
#include "host/scene/scene.h"

namespace sorvanix::host {

inline Projection ProjectionOf(const TextureTag& tag) noexcept {
  return static_cast<Projection>(tag.projection);
}

/// The coordinate of a place in tag units, before the tag's offset and length, by a projection that
/// needs no more than the place; all others, and numbers that are none, act as flat.
Vec3 ProjectShape(Projection projection, const Vec3& place) noexcept;

/// The coordinate of a polygon at a point of its plane, by the barycentric coordinates of the
/// triangle, or of the half of the quadrangle, that holds it. They go on outside the polygon, and a
/// point off the plane counts as its foot. Nothing for a polygon without corners or area.
std::optional<Vec3> UvwOnPolygon(const UvwRecord& polygon, const Vec3& point) noexcept;

/// The coordinate relative to the tag's tile: less the offset, by the length; 0 for length 0.
Vec3 PlaceInTile(const TextureTag& tag, const Vec3& uvw) noexcept;

/// A place with all that a projection may want of it.
struct ProjectedPlace {
  Vec3 inTag = {};  ///< in tag units
  Vec3 inWorld = {};
  const ScreenView* view = nullptr;    ///< for Projection::Frontal
  const UvwRecord* polygon = nullptr;  ///< for Projection::Uvw
};

/// The coordinate that a tag gives to a place; nothing when the projection lacks what it needs.
std::optional<Vec3> ProjectPlace(const TextureTag& tag, const ProjectedPlace& place) noexcept;

}  // namespace sorvanix::host
