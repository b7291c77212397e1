// The surface of one object in world space: triangles, and what is at a point of one.
//
// Where normals make polygons look round, shadows of polygon on polygon would show their edges. A
// shadow ray therefore starts above the polygon, on planes through its corners: J. Hanika, "Hacking
// the shadow terminator", 2021.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/render/uv_frame.h"
#include "host/render/vec3.h"
#include "host/scene/mesh.h"

namespace sorvanix::host {

/// A polygon, or one half of a quadrangle.
struct SurfaceTriangle {
  std::uint32_t point[3];  ///< of MeshSurface::Points
  std::int32_t polygon;    ///< of the mesh
  std::uint8_t corner[3];  ///< the polygon's corners that it has
};

/// A point of a surface.
struct SurfacePoint {
  Vec3 point;
  Vec3 faceNormal;           ///< unit vector, outwards
  Vec3 normal;               ///< interpolated, unit vector
  Vec3 lift;                 ///< from the flat polygon to the round surface that its normals tell
  std::size_t triangle = 0;  ///< of the surface
  double b = 0, c = 0;       ///< barycentric coordinates of the triangle's second and third corner
  std::int32_t polygon = 0;  ///< of the mesh
};

class MeshSurface {
 public:
  /// Polygons with a corner that is not finite in world space have no triangles.
  MeshSurface(std::shared_ptr<const PolygonMesh> mesh, const Matrix& toWorld);

  const PolygonMesh& Mesh() const noexcept { return *mesh_; }
  const std::vector<Vector>& Points() const noexcept { return points_; }
  const std::vector<SurfaceTriangle>& Triangles() const noexcept { return triangles_; }

  /// The point of a triangle with the barycentric coordinates b and c of its second and third
  /// corner.
  SurfacePoint At(std::size_t triangle, double b, double c) const noexcept;

  /// The largest coordinate of a triangle's corners: rounding moves them by a share of it.
  double LargestCoordinate(std::size_t triangle) const noexcept;

  /// How a set of the mesh's coordinates, which it must have, lies at one of its points.
  UvFrame UvFrameAt(const SurfacePoint& at, std::size_t uvwSet) const noexcept;

  /// The polygon as the contract tells it: corners in world space and in the object's own, with
  /// the coordinates of a set; without coordinates, all 0, when the mesh has no such set.
  UvwRecord Polygon(std::int32_t polygon, std::size_t uvwSet) const noexcept;

 private:
  std::array<Vec3, 3> Corners(const SurfaceTriangle& triangle) const noexcept;
  void Round(SurfacePoint& at) const noexcept;

  std::shared_ptr<const PolygonMesh> mesh_;
  Matrix normalMatrix_;
  double outwards_;  // -1 where the matrix mirrors: the order of corners turned round
  std::vector<Vector> points_;
  std::vector<SurfaceTriangle> triangles_;
};

}  // namespace sorvanix::host
