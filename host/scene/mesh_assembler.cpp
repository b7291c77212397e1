#include "host/scene/mesh_assembler.h"

#include <fmt/format.h>

#include <limits>

#include "host/scene/transform.h"

namespace sorvanix::host {
namespace {

/// A small file may ask for the same triangles again and again; memory has an end.
constexpr std::size_t kMostPolygons = std::size_t{1} << 24;

Vector Mirrored(const Vector& v) noexcept { return {v.x, v.y, -v.z}; }

/// Outwards, since corners run clockwise; zero without an area.
Vector NormalOfTriangle(const Vector& a, const Vector& b, const Vector& c) noexcept {
  const double ux = double{b.x} - a.x, uy = double{b.y} - a.y, uz = double{b.z} - a.z;
  const double vx = double{c.x} - a.x, vy = double{c.y} - a.y, vz = double{c.z} - a.z;
  return UnitVector({static_cast<float>(uy * vz - uz * vy), static_cast<float>(uz * vx - ux * vz),
                     static_cast<float>(ux * vy - uy * vx)},
                    {0, 0, 0});
}

}  // namespace

MeshAssembler::MeshAssembler(const MeshLayout& layout) : layout_(layout) {
  for (std::size_t set = 0; set < layout_.uvwSetCount; ++set) {
    mesh_.uvwSets.push_back({.name = fmt::format("UVW {}", set + 1), .corners = {}});
  }
}

MeshAssembler::Result MeshAssembler::AddPoint(const Vector& point) {
  if (!IsFinite(point)) {
    return tl::unexpected(fmt::format("point {} is not finite", mesh_.points.size()));
  }
  if (mesh_.points.size() >= std::numeric_limits<std::int32_t>::max()) {
    return tl::unexpected(std::string("there are too many points"));
  }
  mesh_.points.push_back(Mirrored(point));
  return {};
}

MeshAssembler::Result MeshAssembler::AddPolygon(std::span<const MeshCorner> corners) {
  for (const MeshCorner& corner : corners) {
    if (corner.point < 0 || static_cast<std::size_t>(corner.point) >= mesh_.points.size()) {
      return tl::unexpected(fmt::format("polygon {} has a corner at point {}, there are {} points",
                                        mesh_.polygons.size(), corner.point, mesh_.points.size()));
    }
    for (std::size_t set = 0; set < layout_.uvwSetCount; ++set) {
      if (!IsFinite(corner.uvw[set])) {
        return tl::unexpected(fmt::format("polygon {} has a texture coordinate that is not finite",
                                          mesh_.polygons.size()));
      }
    }
  }
  if (mesh_.polygons.size() + corners.size() > kMostPolygons) {
    return tl::unexpected(fmt::format("there are more than {} polygons", kMostPolygons));
  }
  // Mirroring turns the polygon over: the corners are taken from behind.
  const std::size_t count = corners.size();
  if (count == 4) {
    AddPart({&corners[0], &corners[3], &corners[2], &corners[1]});
  } else {
    for (std::size_t i = 2; i < count; ++i) {
      AddPart({&corners[0], &corners[i], &corners[i - 1], &corners[i - 1]});
    }
  }
  return {};
}

void MeshAssembler::AddPart(const std::array<const MeshCorner*, 4>& corners) {
  std::array<std::int32_t, 4> index = {};
  for (std::size_t i = 0; i < 4; ++i) index[i] = static_cast<std::int32_t>(corners[i]->point);
  mesh_.polygons.push_back({index[0], index[1], index[2], index[3]});
  if (layout_.hasNormals) {
    const auto point = [&](std::size_t i) {
      return mesh_.points[static_cast<std::size_t>(index[i])];
    };
    const Vector flat = NormalOfTriangle(point(0), point(1), point(2));
    Corners& normals = mesh_.normals.emplace_back();
    for (std::size_t i = 0; i < 4; ++i) normals[i] = NormalOf(*corners[i], flat);
  }
  for (std::size_t set = 0; set < layout_.uvwSetCount; ++set) {
    Corners& uvws = mesh_.uvwSets[set].corners.emplace_back();
    for (std::size_t i = 0; i < 4; ++i) {
      uvws[i] = corners[i]->uvw[set];
      if (layout_.uvwUpwards) uvws[i].y = 1 - uvws[i].y;
    }
  }
}

Vector MeshAssembler::NormalOf(const MeshCorner& corner, const Vector& polygonNormal) const {
  return UnitVector(Mirrored(corner.normal), polygonNormal);
}

}  // namespace sorvanix::host
