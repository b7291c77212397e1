#include "host/bake/uv_chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "host/scene/transform.h"

namespace sorvanix::host {
namespace {

/// Triangles in the plane whose points are their texture coordinates.
MeshSurface Flat(const std::vector<std::array<Vector, 3>>& triangles) {
  auto mesh = std::make_shared<PolygonMesh>();
  UvwSet set;
  for (const auto& [a, b, c] : triangles) {
    const auto first = static_cast<std::int32_t>(mesh->points.size());
    mesh->points.insert(mesh->points.end(), {a, b, c});
    mesh->polygons.push_back({first, first + 1, first + 2, first + 2});
    set.corners.push_back({a, b, c, c});
  }
  mesh->uvwSets = {set};
  // The surface itself is elsewhere: only coordinates count here.
  for (Vector& point : mesh->points) point = {0, 0, 0};
  return MeshSurface(mesh, kIdentityMatrix);
}

constexpr Vector kA = {0, 0, 0}, kB = {1, 0, 0}, kC = {1, 1, 0}, kD = {0, 1, 0};

TEST(UvChart, ASquareOfTwoTrianglesIsCoveredOnce) {
  const UvChart chart = ChartOf(Flat({{kA, kB, kC}, {kA, kC, kD}}), 0, {}, 8, 8);
  EXPECT_EQ(chart.covered, 64u);
  EXPECT_EQ(chart.overlapping, 0u);
  EXPECT_EQ(chart.triangle[7], 0);   // upper right
  EXPECT_EQ(chart.triangle[56], 1);  // lower left
}

TEST(UvChart, OrientationDoesNotMatter) {
  EXPECT_EQ(ChartOf(Flat({{kA, kC, kB}}), 0, {}, 8, 8).triangle,
            ChartOf(Flat({{kA, kB, kC}}), 0, {}, 8, 8).triangle);
}

TEST(UvChart, AFanLeavesNoGapsAndNoOverlaps) {
  // Around the middle, with edges at angles that texels' middles meet and miss.
  for (const int blades : {3, 4, 7, 8, 24, 100}) {
    std::vector<std::array<Vector, 3>> fan;
    const auto rim = [&](int i) {
      const double angle = 2 * std::numbers::pi * (i % blades) / blades;
      return Vector{static_cast<float>(0.5 + 2 * std::cos(angle)),
                    static_cast<float>(0.5 + 2 * std::sin(angle)), 0};
    };
    for (int i = 0; i < blades; ++i) fan.push_back({Vector{0.5f, 0.5f, 0}, rim(i), rim(i + 1)});
    for (const int side : {1, 5, 16, 33}) {
      const UvChart chart = ChartOf(Flat(fan), 0, {}, side, side);
      EXPECT_EQ(chart.covered, static_cast<std::size_t>(side * side)) << blades << ' ' << side;
      EXPECT_EQ(chart.overlapping, 0u) << blades << ' ' << side;
    }
  }
}

TEST(UvChart, OverlapsAreCountedOnceForEachTexel) {
  const std::array<Vector, 3> same = {kA, kB, kC};
  const UvChart once = ChartOf(Flat({same}), 0, {}, 16, 16);
  const UvChart thrice = ChartOf(Flat({same, same, same}), 0, {}, 16, 16);
  EXPECT_EQ(thrice.overlapping, once.covered);
  EXPECT_EQ(thrice.triangle, once.triangle);  // the first one counts
}

TEST(UvChart, SmallTrianglesBetweenTexelsAreNotThere) {
  const UvChart chart =
      ChartOf(Flat({{Vector{0.01f, 0.01f, 0}, {0.02f, 0, 0}, {0.02f, 0.02f, 0}}}), 0, {}, 4, 4);
  EXPECT_EQ(chart.covered, 0u);
}

TEST(UvChart, BrokenCoordinatesAreLeftOut) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  const std::vector<std::array<Vector, 3>> broken = {
      {kA, kB, Vector{kNan, 0, 0}}, {kA, kB, Vector{INFINITY, 0, 0}}, {kA, kB, kB}};
  EXPECT_EQ(ChartOf(Flat(broken), 0, {}, 4, 4).covered, 0u);
  EXPECT_TRUE(UdimTiles(Flat(broken), 0).empty());
}

TEST(UvChart, HugeTrianglesCoverAll) {
  const UvChart chart =
      ChartOf(Flat({{Vector{-1e18f, -1e18f, 0}, {1e18f, -1e18f, 0}, {0, 1e18f, 0}}}), 0, {}, 4, 4);
  EXPECT_EQ(chart.covered, 16u);
}

TEST(UvChart, PlacesOnATriangle) {
  const MeshSurface surface = Flat({{kA, kB, kD}});
  const ChartPlace place = PlaceOnTriangle(surface, 0, 0, 0.25, 0.5);
  EXPECT_DOUBLE_EQ(place.b, 0.25);
  EXPECT_DOUBLE_EQ(place.c, 0.5);
}

std::vector<std::int32_t> Numbers(const std::vector<std::array<Vector, 3>>& triangles) {
  std::vector<std::int32_t> numbers;
  for (const UvTile& tile : UdimTiles(Flat(triangles), 0)) numbers.push_back(tile.Udim());
  return numbers;
}

TEST(UvChart, UdimNumbersGoRightAndUp) {
  using List = std::vector<std::int32_t>;
  // Ending on an edge is not reaching over it.
  EXPECT_EQ(Numbers({{kA, kB, kC}}), List({1001}));
  EXPECT_EQ(Numbers({{kA, Vector{2, 0, 0}, Vector{2, 1, 0}}}), List({1001, 1002}));
  // v runs downwards: -1..0 is the row above.
  EXPECT_EQ(Numbers({{Vector{3.2f, -0.5f, 0}, {3.4f, -0.5f, 0}, {3.3f, -0.2f, 0}}}), List({1014}));
  // Left of 0, right of 10 and below the first row there are no numbers.
  EXPECT_EQ(Numbers({{Vector{-0.5f, 0.2f, 0}, {-0.2f, 0.2f, 0}, {-0.3f, 0.5f, 0}},
                     {Vector{10.5f, 0.2f, 0}, {10.6f, 0.2f, 0}, {10.6f, 0.5f, 0}},
                     {Vector{0.5f, 1.2f, 0}, {0.6f, 1.2f, 0}, {0.6f, 1.5f, 0}}}),
            List());
}

TEST(UvChart, HugeTrianglesReachIntoAllTiles) {
  EXPECT_EQ(Numbers({{Vector{-1e30f, -1e30f, 0}, {1e30f, -1e30f, 0}, {0, 1e30f, 0}}}).size(),
            1000u);
}

TEST(UvChart, TilesAreNumberedThereAndBack) {
  for (const UvTile& tile : UdimTiles(Flat({{Vector{0, -3, 0}, {4, -3, 0}, {4, 1, 0}}}), 0)) {
    EXPECT_GE(tile.u, 0);
    EXPECT_LE(tile.v, 0);
    EXPECT_EQ(tile.Udim(), 1001 + tile.u - 10 * tile.v);
  }
}

TEST(UvChart, AnotherTileShowsAnotherPart) {
  // The triangle's left half is in the first tile, its right half in the second.
  const MeshSurface surface = Flat({{Vector{0, 0, 0}, {2, 0, 0}, {2, 1, 0}}});
  const UvChart first = ChartOf(surface, 0, {0, 0}, 8, 8);
  const UvChart second = ChartOf(surface, 0, {1, 0}, 8, 8);
  // v = u / 2 is the lower edge: 16 texels of the first tile's 64, 48 of the second's.
  EXPECT_EQ(first.covered, 16u);
  EXPECT_EQ(second.covered, 48u);
}

}  // namespace
}  // namespace sorvanix::host
