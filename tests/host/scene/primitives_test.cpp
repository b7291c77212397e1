// Primitives by closed forms: places, normals, texture coordinates, areas, and how they hold
// together.
#include "host/scene/primitives.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <set>

#include "host/scene/transform.h"
#include "tests/host/scene/vector_checks.h"

namespace sorvanix::host {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr std::array kShapes = {PrimitiveShape::Sphere, PrimitiveShape::Cube, PrimitiveShape::Plane,
                                PrimitiveShape::Cylinder, PrimitiveShape::Torus};

std::array<std::int32_t, 4> Indices(const PolygonRecord& p) { return {p.a, p.b, p.c, p.d}; }
std::size_t CornerCount(const PolygonRecord& p) { return IsTriangle(p) ? 3 : 4; }

/// Calls `check` with every corner's point, normal, and texture coordinate.
template <class Check>
void ForEachCorner(const PolygonMesh& mesh, Check check) {
  for (std::size_t i = 0; i < mesh.polygons.size(); ++i) {
    for (std::size_t j = 0; j < CornerCount(mesh.polygons[i]); ++j) {
      check(PointOf(mesh, Indices(mesh.polygons[i])[j]), mesh.normals[i][j],
            mesh.uvwSets[0].corners[i][j]);
    }
  }
}

class EveryPrimitive : public ::testing::TestWithParam<PrimitiveShape> {
 protected:
  Primitive primitive_ = DefaultPrimitive(GetParam());
  PolygonMesh mesh_ = BuildPrimitive(primitive_);
};
INSTANTIATE_TEST_SUITE_P(Shapes, EveryPrimitive, ::testing::ValuesIn(kShapes));

TEST_P(EveryPrimitive, HasCompleteListsAndValidIndices) {
  ASSERT_FALSE(mesh_.polygons.empty());
  EXPECT_EQ(mesh_.normals.size(), mesh_.polygons.size());
  for (const UvwSet& set : mesh_.uvwSets) EXPECT_EQ(set.corners.size(), mesh_.polygons.size());
  for (const PolygonRecord& polygon : mesh_.polygons) {
    for (const std::int32_t index : Indices(polygon)) {
      EXPECT_GE(index, 0);
      EXPECT_LT(index, static_cast<std::int32_t>(mesh_.points.size()));
    }
  }
  EXPECT_LE(mesh_.polygons.size(), MostPolygonsOf(primitive_));
}

TEST_P(EveryPrimitive, TurnsItsPolygonsOutwards) {
  for (std::size_t i = 0; i < mesh_.polygons.size(); ++i) {
    const Vector outwards = AreaVector(mesh_, mesh_.polygons[i]);
    for (std::size_t j = 0; j < 4; ++j) EXPECT_GT(Dot(outwards, mesh_.normals[i][j]), 0);
  }
}

TEST_P(EveryPrimitive, HasUnitNormals) {
  ForEachCorner(mesh_, [](const Vector&, const Vector& normal, const Vector&) {
    EXPECT_NEAR(Length(normal), 1, 1e-6);
  });
}

TEST_P(EveryPrimitive, KeepsTextureCoordinatesInTheUnitSquare) {
  for (const UvwSet& set : mesh_.uvwSets) {
    for (const Corners& corners : set.corners) {
      for (const Vector& uvw : corners) {
        EXPECT_GE(std::min(uvw.x, uvw.y), 0);
        EXPECT_LE(std::max(uvw.x, uvw.y), 1);
        EXPECT_EQ(uvw.z, 0);
      }
    }
  }
}

// u to the right and v downwards seen from outside: in the plane of texture coordinates, with v
// downwards, a polygon that runs clockwise has a positive area.
TEST_P(EveryPrimitive, LaysTexturesTheRightWayRound) {
  for (const UvwSet& set : mesh_.uvwSets) {
    for (std::size_t i = 0; i < set.corners.size(); ++i) {
      const Corners& c = set.corners[i];
      const Vector first = Minus(c[1], c[0]), second = Minus(c[2], c[0]);
      EXPECT_GT(first.x * second.y - first.y * second.x, 0)
          << "polygon " << i << " of " << set.name;
    }
  }
}

TEST_P(EveryPrimitive, IsClosedUnlessItIsAPlane) {
  // Each edge belongs to two polygons that run along it in opposite directions.
  std::map<std::pair<std::int32_t, std::int32_t>, int> edges;
  for (const PolygonRecord& polygon : mesh_.polygons) {
    const std::size_t count = CornerCount(polygon);
    for (std::size_t j = 0; j < count; ++j) {
      ++edges[{Indices(polygon)[j], Indices(polygon)[(j + 1) % count]}];
    }
  }
  std::size_t open = 0;
  for (const auto& [edge, uses] : edges) {
    EXPECT_EQ(uses, 1);
    open += edges.contains({edge.second, edge.first}) ? 0 : 1;
  }
  EXPECT_EQ(open, GetParam() == PrimitiveShape::Plane ? 4u : 0u);
}

TEST_P(EveryPrimitive, SurvivesSizesOfZero) {
  for (float Primitive::*size : {&Primitive::radius, &Primitive::pipeRadius, &Primitive::width,
                                 &Primitive::height, &Primitive::depth}) {
    Primitive flat = primitive_;
    flat.*size = 0;
    const PolygonMesh mesh = BuildPrimitive(flat);
    EXPECT_EQ(mesh.normals.size(), mesh.polygons.size());
    for (const PolygonRecord& polygon : mesh.polygons) EXPECT_GT(AreaOf(mesh, polygon), 0);
  }
}

TEST_P(EveryPrimitive, TakesAnyNumberOfSegments) {
  for (const std::int32_t segments : {-5, 0, 1, 2, 5}) {
    Primitive odd = primitive_;
    odd.segmentsU = odd.segmentsV = segments;
    EXPECT_FALSE(BuildPrimitive(odd).polygons.empty());
  }
  Primitive many = primitive_;
  many.segmentsU = std::numeric_limits<std::int32_t>::max();
  many.segmentsV = 1;
  EXPECT_LE(BuildPrimitive(many).polygons.size(), MostPolygonsOf(many));
}

TEST_P(EveryPrimitive, HasFewerPolygonsAtLessDetail) {
  Primitive fine = primitive_;
  fine.segmentsU = fine.segmentsV = 20;
  const std::size_t full = BuildPrimitive(fine).polygons.size();
  EXPECT_LT(BuildPrimitive(fine, 0.5f).polygons.size(), full);
  for (const float detail : {0.0f, -1.0f, std::nanf("")}) {
    EXPECT_LT(BuildPrimitive(fine, detail).polygons.size(), full);
    EXPECT_FALSE(BuildPrimitive(fine, detail).polygons.empty());
  }
}

TEST(Sphere, LiesOnItsRadiusWithRadialNormals) {
  const PolygonMesh mesh = BuildPrimitive({.shape = PrimitiveShape::Sphere, .radius = 50});
  ForEachCorner(mesh, [](const Vector& point, const Vector& normal, const Vector&) {
    EXPECT_NEAR(Length(point), 50, 1e-4);
    EXPECT_TRUE(Near(normal, UnitVector(point, {})));
  });
}

// With n columns and m rows the points are those of n (m - 1) crossings and two poles.
TEST(Sphere, HasOnePointForEachPlace) {
  const PolygonMesh mesh =
      BuildPrimitive({.shape = PrimitiveShape::Sphere, .segmentsU = 8, .segmentsV = 4});
  EXPECT_EQ(mesh.points.size(), 8u * 3 + 2);
  EXPECT_EQ(mesh.polygons.size(), 8u * 4);
  EXPECT_EQ(std::count_if(mesh.polygons.begin(), mesh.polygons.end(), IsTriangle), 2 * 8);
}

TEST(Sphere, HasTextureCoordinatesByLongitudeAndLatitude) {
  const PolygonMesh mesh = BuildPrimitive(
      {.shape = PrimitiveShape::Sphere, .radius = 1, .segmentsU = 8, .segmentsV = 4});
  // u grows to the right, from the back (+z) over the left (-x) to the front (-z) and the right.
  std::map<float, Vector> equator;
  ForEachCorner(mesh, [&](const Vector& point, const Vector&, const Vector& uvw) {
    if (uvw.y == 0.5f) equator[uvw.x] = point;
    if (point.y == 1) {
      EXPECT_EQ(uvw.y, 0) << "the north pole is row 0";
    }
    if (point.y == -1) {
      EXPECT_EQ(uvw.y, 1);
    }
  });
  EXPECT_TRUE(Near(equator[0], {0, 0, 1}));
  EXPECT_TRUE(Near(equator[0.25f], {-1, 0, 0}));
  EXPECT_TRUE(Near(equator[0.5f], {0, 0, -1}));
  EXPECT_TRUE(Near(equator[0.75f], {1, 0, 0}));
  EXPECT_TRUE(Near(equator[1], {0, 0, 1}));
}

TEST(Sphere, HasTheMiddleOfItsColumnAtThePole) {
  const PolygonMesh mesh = BuildPrimitive(
      {.shape = PrimitiveShape::Sphere, .radius = 1, .segmentsU = 4, .segmentsV = 2});
  std::set<float> poles;
  ForEachCorner(mesh, [&](const Vector& point, const Vector&, const Vector& uvw) {
    if (point.y == 1) poles.insert(uvw.x);
  });
  EXPECT_EQ(poles, (std::set<float>{0.125f, 0.375f, 0.625f, 0.875f}));
}

// Inscribed polygons have less area than the sphere's 4 pi r^2; with 256 x 128 of them the loss is
// of the order of the square of their angle, (2 pi / 256)^2 = 0.0006.
TEST(Sphere, HasTheAreaOfASphere) {
  const PolygonMesh mesh = BuildPrimitive(
      {.shape = PrimitiveShape::Sphere, .radius = 10, .segmentsU = 256, .segmentsV = 128});
  EXPECT_LT(AreaOf(mesh), 4 * kPi * 100);
  EXPECT_GT(AreaOf(mesh), 4 * kPi * 100 * (1 - 0.0006));
}

TEST(Cube, HasSixFacesAndEightPoints) {
  const PolygonMesh mesh = BuildPrimitive(DefaultPrimitive(PrimitiveShape::Cube));
  EXPECT_EQ(mesh.polygons.size(), 6u);
  EXPECT_EQ(mesh.points.size(), 8u);
  std::set<std::array<float, 3>> normals;
  for (const Corners& corners : mesh.normals)
    normals.insert({corners[0].x, corners[0].y, corners[0].z});
  EXPECT_EQ(normals.size(), 6u);
}

TEST(Cube, HasTheAreaOfItsSides) {
  Primitive cube = DefaultPrimitive(PrimitiveShape::Cube);
  cube.width = 2, cube.height = 3, cube.depth = 5;
  cube.segmentsU = 3, cube.segmentsV = 2;
  EXPECT_NEAR(AreaOf(BuildPrimitive(cube)), 2 * (2 * 3 + 2 * 5 + 3 * 5), 1e-4);
}

TEST(Cube, ShowsTheWholePictureOnEachFace) {
  const PolygonMesh mesh = BuildPrimitive(DefaultPrimitive(PrimitiveShape::Cube));
  for (std::size_t i = 0; i < mesh.polygons.size(); ++i) {
    const Corners& uvw = mesh.uvwSets[0].corners[i];
    EXPECT_TRUE(Near(uvw[0], {0, 0, 0}));
    EXPECT_TRUE(Near(uvw[1], {1, 0, 0}));
    EXPECT_TRUE(Near(uvw[2], {1, 1, 0}));
    EXPECT_TRUE(Near(uvw[3], {0, 1, 0}));
    // Row 0 is at the top of the four upright faces.
    if (mesh.normals[i][0].y == 0) {
      EXPECT_EQ(PointOf(mesh, mesh.polygons[i].a).y, 100);
    }
  }
}

TEST(Cube, HasSixChartsApartFromOneAnotherInItsAtlas) {
  const PolygonMesh mesh = BuildPrimitive(DefaultPrimitive(PrimitiveShape::Cube));
  ASSERT_EQ(mesh.uvwSets.size(), 2u);
  const auto& charts = mesh.uvwSets[1].corners;
  for (std::size_t i = 0; i < charts.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const bool apartInU = charts[i][0].x > charts[j][2].x || charts[j][0].x > charts[i][2].x;
      const bool apartInV = charts[i][0].y > charts[j][2].y || charts[j][0].y > charts[i][2].y;
      EXPECT_TRUE(apartInU || apartInV) << i << " and " << j;
    }
  }
}

TEST(Plane, LiesLevelWithXToTheRightAndZUpTheTexture) {
  Primitive plane = DefaultPrimitive(PrimitiveShape::Plane);
  plane.width = 20, plane.depth = 10;
  const PolygonMesh mesh = BuildPrimitive(plane);
  ASSERT_EQ(mesh.polygons.size(), 1u);
  const PolygonRecord& p = mesh.polygons[0];
  EXPECT_TRUE(Near(PointOf(mesh, p.a), {-10, 0, 5})) << "uv (0, 0)";
  EXPECT_TRUE(Near(PointOf(mesh, p.b), {10, 0, 5})) << "uv (1, 0)";
  EXPECT_TRUE(Near(PointOf(mesh, p.c), {10, 0, -5})) << "uv (1, 1)";
  EXPECT_TRUE(Near(mesh.normals[0][0], {0, 1, 0}));
  EXPECT_DOUBLE_EQ(AreaOf(mesh), 200);
}

TEST(Cylinder, HasUprightSidesAndLevelCaps) {
  Primitive cylinder = DefaultPrimitive(PrimitiveShape::Cylinder);
  cylinder.radius = 3, cylinder.height = 8;
  const PolygonMesh mesh = BuildPrimitive(cylinder);
  ForEachCorner(mesh, [](const Vector& point, const Vector& normal, const Vector&) {
    const double radius = std::hypot(point.x, point.z);
    if (normal.y == 0) {
      EXPECT_NEAR(radius, 3, 1e-5);
      EXPECT_TRUE(Near(normal, {point.x / 3, 0, point.z / 3}));
    } else {
      EXPECT_EQ(point.y, normal.y > 0 ? 4 : -4);
      EXPECT_EQ(std::fabs(normal.y), 1);
    }
  });
}

// A regular prism with n sides: each side is 2 r sin(pi/n) wide, each cap n/2 r^2 sin(2 pi/n)
// large.
TEST(Cylinder, HasTheAreaOfAPrism) {
  Primitive cylinder = DefaultPrimitive(PrimitiveShape::Cylinder);
  cylinder.radius = 2, cylinder.height = 5, cylinder.segmentsU = 12, cylinder.segmentsV = 3;
  const double side = 12 * 2 * 2 * std::sin(kPi / 12) * 5;
  const double cap = 12.0 / 2 * 4 * std::sin(2 * kPi / 12);
  EXPECT_NEAR(AreaOf(BuildPrimitive(cylinder)), side + 2 * cap, 1e-4);
  cylinder.caps = false;
  EXPECT_NEAR(AreaOf(BuildPrimitive(cylinder)), side, 1e-4);
}

TEST(Cylinder, HasThePictureUprightOnItsCaps) {
  Primitive cylinder = DefaultPrimitive(PrimitiveShape::Cylinder);
  cylinder.radius = 1;
  ForEachCorner(BuildPrimitive(cylinder),
                [](const Vector& point, const Vector& normal, const Vector& uvw) {
                  if (normal.y == 0) return;
                  // Seen from above z is up in the picture, from below it is down; v runs down.
                  EXPECT_NEAR(uvw.x, 0.5 + 0.5 * point.x, 1e-6);
                  EXPECT_NEAR(uvw.y, 0.5 - 0.5 * normal.y * point.z, 1e-6);
                });
}

TEST(Torus, KeepsItsDistanceFromItsRing) {
  const PolygonMesh mesh =
      BuildPrimitive({.shape = PrimitiveShape::Torus, .radius = 7, .pipeRadius = 2});
  ForEachCorner(mesh, [](const Vector& point, const Vector& normal, const Vector& uvw) {
    const double across = std::hypot(point.x, point.z) - 7;
    EXPECT_NEAR(std::hypot(across, point.y), 2, 1e-5);
    EXPECT_NEAR(point.y, 2 * normal.y, 1e-5);
    if (uvw.y == 0.5f) {
      EXPECT_NEAR(across, 2, 1e-5) << "v = 0.5 is the outer side";
    }
    if (uvw.y == 0.25f) {
      EXPECT_NEAR(point.y, 2, 1e-5) << "v = 0.25 is the top";
    }
  });
}

// 4 pi^2 R r (Pappus); inscribed polygons lose a little, of the order of the squares of their
// angles.
TEST(Torus, HasTheAreaOfATorus) {
  const double whole = 4 * kPi * kPi * 7 * 2;
  const double area = AreaOf(BuildPrimitive({.shape = PrimitiveShape::Torus,
                                             .radius = 7,
                                             .pipeRadius = 2,
                                             .segmentsU = 256,
                                             .segmentsV = 256}));
  EXPECT_LT(area, whole);
  EXPECT_GT(area, whole * (1 - 0.0006));
}

}  // namespace
}  // namespace sorvanix::host
