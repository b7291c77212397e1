#include "host/render/mesh_surface.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/render/matrix.h"

namespace sorvanix::host {

namespace {

std::array<std::int32_t, 4> Indices(const PolygonRecord& polygon) {
  return {polygon.a, polygon.b, polygon.c, polygon.d};
}

}  // namespace

MeshSurface::MeshSurface(std::shared_ptr<const PolygonMesh> mesh, const Matrix& toWorld)
    : mesh_(std::move(mesh)), normalMatrix_(NormalMatrix(toWorld)) {
  const double determinant = Dot(Vec3(toWorld.v1), Cross(Vec3(toWorld.v2), Vec3(toWorld.v3)));
  outwards_ = determinant < 0 ? -1 : 1;
  points_.reserve(mesh_->points.size());
  for (const Vector& point : mesh_->points) {
    points_.push_back(MapPoint(toWorld, Vec3(point)).Narrow());
  }
  const auto add = [&](std::size_t polygon, std::uint8_t b, std::uint8_t c) {
    const auto index = Indices(mesh_->polygons[polygon]);
    SurfaceTriangle triangle = {
        .point = {}, .polygon = static_cast<std::int32_t>(polygon), .corner = {0, b, c}};
    for (int i = 0; i < 3; ++i) {
      triangle.point[i] = static_cast<std::uint32_t>(index[triangle.corner[i]]);
      if (!IsFinite(Vec3(points_[triangle.point[i]]))) return;
    }
    triangles_.push_back(triangle);
  };
  for (std::size_t polygon = 0; polygon < mesh_->polygons.size(); ++polygon) {
    add(polygon, 1, 2);
    if (!IsTriangle(mesh_->polygons[polygon])) add(polygon, 2, 3);
  }
}

std::array<Vec3, 3> MeshSurface::Corners(const SurfaceTriangle& triangle) const noexcept {
  return {Vec3(points_[triangle.point[0]]), Vec3(points_[triangle.point[1]]),
          Vec3(points_[triangle.point[2]])};
}

SurfacePoint MeshSurface::At(std::size_t triangle, double b, double c) const noexcept {
  const SurfaceTriangle& t = triangles_[triangle];
  const auto [p0, p1, p2] = Corners(t);
  SurfacePoint at;
  at.triangle = triangle;
  at.b = b;
  at.c = c;
  at.polygon = t.polygon;
  at.point = p0 + (p1 - p0) * b + (p2 - p0) * c;
  at.faceNormal = Normalised(Cross(p1 - p0, p2 - p0) * outwards_, {0, 0, -1});
  at.normal = at.faceNormal;
  if (!mesh_->normals.empty()) Round(at);
  return at;
}

void MeshSurface::Round(SurfacePoint& at) const noexcept {
  const SurfaceTriangle& t = triangles_[at.triangle];
  const std::array<Vec3, 3> corners = Corners(t);
  const host::Corners& normals = mesh_->normals[static_cast<std::size_t>(t.polygon)];
  const double weights[3] = {1 - at.b - at.c, at.b, at.c};
  Vec3 mean;
  for (std::size_t i = 0; i < 3; ++i) {
    const Vec3 local(normals[t.corner[i]]);
    mean += local * weights[i];
    const Vec3 normal = Normalised(MapDirection(normalMatrix_, local) * outwards_);
    const double above = Dot(corners[i] - at.point, normal);
    if (above > 0) at.lift += normal * (weights[i] * above);
  }
  at.normal = Normalised(MapDirection(normalMatrix_, mean) * outwards_, at.faceNormal);
}

double MeshSurface::LargestCoordinate(std::size_t triangle) const noexcept {
  double largest = 0;
  for (const Vec3& corner : Corners(triangles_[triangle])) {
    largest = std::max({largest, std::abs(corner.x), std::abs(corner.y), std::abs(corner.z)});
  }
  return largest;
}

UvFrame MeshSurface::UvFrameAt(const SurfacePoint& at, std::size_t uvwSet) const noexcept {
  const SurfaceTriangle& t = triangles_[at.triangle];
  const auto [p0, p1, p2] = Corners(t);
  const host::Corners& all = mesh_->uvwSets[uvwSet].corners[static_cast<std::size_t>(t.polygon)];
  const Vec3 corners[3] = {p0, p1, p2};
  const Vec3 uvw[3] = {Vec3(all[t.corner[0]]), Vec3(all[t.corner[1]]), Vec3(all[t.corner[2]])};
  return FrameOfTriangle(corners, uvw, at.b, at.c, at.faceNormal);
}

UvwRecord MeshSurface::Polygon(std::int32_t polygon, std::size_t uvwSet) const noexcept {
  const auto position = static_cast<std::size_t>(polygon);
  const PolygonRecord& corners = mesh_->polygons[position];
  const auto index = Indices(corners);
  UvwRecord record = {};
  record.cornerCount = IsTriangle(corners) ? 3 : 4;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto point = static_cast<std::size_t>(index[i]);
    record.corner[i] = points_[point];
    record.restCorner[i] = mesh_->points[point];
    if (mesh_->HasUvw(uvwSet)) record.uvw[i] = mesh_->uvwSets[uvwSet].corners[position][i];
  }
  return record;
}

}  // namespace sorvanix::host
