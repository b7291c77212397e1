// Projections: texture coordinates of places in space.
//
// A projection works in tag units, in which its inside reaches from -1 to 1 on each axis. The v
// coordinate runs downwards, so that row 0 of a picture lies on top.
#pragma once

#include <sorvanix/records.h>

#include <cstdint>
#include <optional>

#include "host/render/screen_view.h"
#include "host/render/vec3.h"

namespace sorvanix::host {

/// The numbers of TextureTag::projection.
enum ProjectionNumber : std::int32_t {
  ProjectSphere = 0,
  ProjectCylinder = 1,
  ProjectFlat = 2,
  ProjectCube = 3,
  ProjectFrontal = 4,
  ProjectSpatial = 5,
  ProjectUvw = 6,
  ProjectShrinkWrap = 7
};

/// The coordinate of a place in tag units, before the tag's offset and length. Numbers that need no
/// more than the place; all others act as flat.
Vec3 ProjectShape(std::int32_t projection, const Vec3& place) noexcept;

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
  const ScreenView* view = nullptr;    ///< for ProjectFrontal
  const UvwRecord* polygon = nullptr;  ///< for ProjectUvw
};

/// The coordinate that a tag gives to a place; nothing when the projection lacks what it needs.
std::optional<Vec3> ProjectPlace(const TextureTag& tag, const ProjectedPlace& place) noexcept;

}  // namespace sorvanix::host
