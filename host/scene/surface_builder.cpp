#include "host/scene/surface_builder.h"

#include <bit>
#include <cmath>
#include <numbers>

namespace sorvanix::host {
namespace {

/// Collects the corners of one polygon, leaving out those that repeat the one before.
struct Loop {
  std::array<std::int32_t, 4> index = {};
  std::array<PatchCorner, 4> corner = {};
  std::size_t count = 0;

  void Add(std::int32_t pointIndex, const PatchCorner& point) {
    if (count > 0 && index[count - 1] == pointIndex) return Merge(count - 1, point);
    if (count > 0 && index[0] == pointIndex) return Merge(0, point);
    index[count] = pointIndex;
    corner[count++] = point;
  }

  /// Where an edge has shrunk to a pole, the texture coordinate of its middle is the best one.
  void Merge(std::size_t kept, const PatchCorner& point) {
    for (std::size_t set = 0; set < point.uvw.size(); ++set) {
      Vector& uvw = corner[kept].uvw[set];
      uvw.x = (uvw.x + point.uvw[set].x) * 0.5f;
      uvw.y = (uvw.y + point.uvw[set].y) * 0.5f;
    }
  }
};

/// Quarters of a turn are told apart so that they have no rounding error.
double Turn(double (*function)(double), const std::array<double, 4>& quarters, std::int32_t part,
            std::int32_t whole) noexcept {
  part %= whole;
  if (4 * part % whole == 0) return quarters[static_cast<std::size_t>(4 * part / whole)];
  return function(2 * std::numbers::pi * part / whole);
}

}  // namespace

double SinTurn(std::int32_t part, std::int32_t whole) noexcept {
  return Turn(std::sin, {0, 1, 0, -1}, part, whole);
}

double CosTurn(std::int32_t part, std::int32_t whole) noexcept {
  return Turn(std::cos, {1, 0, -1, 0}, part, whole);
}

SurfaceBuilder::SurfaceBuilder(std::size_t uvwSetCount) {
  constexpr std::array names = {"UVW", "Atlas"};
  for (std::size_t set = 0; set < uvwSetCount; ++set) {
    mesh_.uvwSets.push_back({.name = names[set], .corners = {}});
  }
}

void SurfaceBuilder::AddPolygon(const std::array<PatchCorner, 4>& corners) {
  Loop loop;
  for (const PatchCorner& corner : corners) loop.Add(PointIndex(corner.point), corner);
  if (loop.count < 3) return;
  const std::size_t last = loop.count - 1;
  mesh_.polygons.push_back({loop.index[0], loop.index[1], loop.index[2], loop.index[last]});
  const auto gather = [&](auto value) {
    return Corners{value(loop.corner[0]), value(loop.corner[1]), value(loop.corner[2]),
                   value(loop.corner[last])};
  };
  mesh_.normals.push_back(gather([](const PatchCorner& corner) { return corner.normal; }));
  for (std::size_t set = 0; set < mesh_.uvwSets.size(); ++set) {
    mesh_.uvwSets[set].corners.push_back(
        gather([set](const PatchCorner& corner) { return corner.uvw[set]; }));
  }
}

std::int32_t SurfaceBuilder::PointIndex(const Vector& point) {
  // Adding 0 turns -0 into 0, which is the same place.
  const PointKey key = {std::bit_cast<std::uint32_t>(point.x + 0.0f),
                        std::bit_cast<std::uint32_t>(point.y + 0.0f),
                        std::bit_cast<std::uint32_t>(point.z + 0.0f)};
  const auto [found, isNew] = indices_.try_emplace(key, static_cast<std::int32_t>(indices_.size()));
  if (isNew) mesh_.points.push_back(point);
  return found->second;
}

std::size_t SurfaceBuilder::PointHash::operator()(const PointKey& key) const noexcept {
  std::uint64_t hash = 0;
  for (const std::uint32_t word : key) hash = (hash ^ word) * 0x9e3779b97f4a7c15u;
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

}  // namespace sorvanix::host
