// Polygon meshes: what files hold, what primitives become, and what the renderer intersects.
//
// Space is left-handed: x to the right, y up, z away from the viewer. The corners of a polygon run
// clockwise as seen from outside, so that Cross(b - a, c - a) points outwards. Texture coordinates
// have u to the right and v downwards as seen from outside, row 0 of a picture at the top; so the
// directions of growing u and v span the normal: Cross(dP/du, dP/dv) points outwards.
#pragma once

#include <sorvanix/host_scene.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace sorvanix::host {

/// One value for each corner of a polygon. Of a triangle the last repeats the third.
using Corners = std::array<Vector, 4>;

struct UvwSet {
  std::string name;
  std::vector<Corners> corners;  ///< one entry for each polygon
};

/// Every index of a polygon is valid, and every list by polygon is complete or empty: what makes a
/// mesh sees to it.
struct PolygonMesh {
  std::vector<Vector> points;           ///< in the object's space
  std::vector<PolygonRecord> polygons;  ///< a triangle has c equal to d
  std::vector<UvwSet> uvwSets;          ///< the first is the one that texture tags use
  std::vector<Corners> normals;         ///< unit vectors by polygon; empty: polygons are flat

  bool HasUvw(std::size_t set) const noexcept { return set < uvwSets.size(); }
};

inline bool IsTriangle(const PolygonRecord& polygon) noexcept { return polygon.c == polygon.d; }

}  // namespace sorvanix::host
