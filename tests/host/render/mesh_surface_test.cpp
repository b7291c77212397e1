#include "host/render/mesh_surface.h"

#include <gtest/gtest.h>

#include <limits>

#include "host/scene/primitives.h"
#include "host/scene/transform.h"
#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

// A wall of 2 x 4 towards the viewer at -z, one quadrangle: a upper left, then clockwise.
std::shared_ptr<PolygonMesh> Wall() {
  auto mesh = std::make_shared<PolygonMesh>();
  mesh->points = {{-1, 2, 0}, {1, 2, 0}, {1, -2, 0}, {-1, -2, 0}};
  mesh->polygons = {{0, 1, 2, 3}};
  mesh->uvwSets = {{"UVW", {{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}}}}};
  return mesh;
}

TEST(MeshSurface, AQuadrangleIsTwoTriangles) {
  const MeshSurface surface(Wall(), kIdentityMatrix);
  ASSERT_EQ(surface.Triangles().size(), 2u);
  const SurfacePoint first = surface.At(0, 0.5, 0.25);
  // a + 0.5 (b - a) + 0.25 (c - a)
  EXPECT_THAT(first.point, Vec(0.5, 1, 0));
  EXPECT_THAT(first.faceNormal, Vec(0, 0, -1));
  EXPECT_EQ(first.normal, first.faceNormal);
  const SurfacePoint second = surface.At(1, 0.25, 0.5);  // c, then d
  EXPECT_THAT(second.point, Vec(-0.5, -1, 0));
  EXPECT_THAT(second.faceNormal, Vec(0, 0, -1));
  EXPECT_EQ(second.polygon, 0);
}

TEST(MeshSurface, CoordinatesLieAsTheMeshSays) {
  const MeshSurface surface(Wall(), kIdentityMatrix);
  for (const std::size_t triangle : {0u, 1u}) {
    const SurfacePoint at = surface.At(triangle, 0.25, 0.25);
    const UvFrame frame = surface.UvFrameAt(at, 0);
    EXPECT_THAT(frame.uvw, Vec((at.point.x + 1) / 2, (2 - at.point.y) / 4, 0));
    EXPECT_THAT(frame.tangentU, Vec(1, 0, 0));
    EXPECT_THAT(frame.tangentV, Vec(0, -1, 0));
  }
}

TEST(MeshSurface, ThePolygonHasItsCornersInBothSpaces) {
  const Matrix moved = {{10, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  const UvwRecord polygon = MeshSurface(Wall(), moved).Polygon(0, 0);
  EXPECT_EQ(polygon.cornerCount, 4);
  EXPECT_THAT(polygon.corner[0], FloatVec(8, 4, 0));
  EXPECT_THAT(polygon.restCorner[0], FloatVec(-1, 2, 0));
  EXPECT_THAT(polygon.uvw[2], FloatVec(1, 1, 0));
}

TEST(MeshSurface, ASetThatIsMissingIsAllZero) {
  const UvwRecord polygon = MeshSurface(Wall(), kIdentityMatrix).Polygon(0, 5);
  EXPECT_THAT(polygon.uvw[2], FloatVec(0, 0, 0));
  EXPECT_EQ(polygon.cornerCount, 4);
}

TEST(MeshSurface, MirroringKeepsNormalsOutside) {
  const Matrix mirrored = {{0, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  EXPECT_THAT(MeshSurface(Wall(), mirrored).At(0, 0.3, 0.3).faceNormal, Vec(0, 0, -1));
  const auto sphere = std::make_shared<PolygonMesh>(BuildPrimitive({}));
  const MeshSurface surface(sphere, mirrored);
  for (std::size_t i = 0; i < surface.Triangles().size(); i += 97) {
    const SurfacePoint at = surface.At(i, 0.3, 0.3);
    EXPECT_GT(Dot(at.faceNormal, at.point), 0);
    EXPECT_GT(Dot(at.normal, at.point), 0);
  }
}

TEST(MeshSurface, NormalsOfAStretchedSphereAreThoseOfAnEllipsoid) {
  const auto sphere =
      std::make_shared<PolygonMesh>(BuildPrimitive({.segmentsU = 256, .segmentsV = 128}));
  const Matrix stretched = {{0, 0, 0}, {3, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const MeshSurface surface(sphere, stretched);
  for (std::size_t i = 0; i < surface.Triangles().size(); i += 997) {
    const SurfacePoint at = surface.At(i, 0.3, 0.3);
    // The gradient of x^2/9 + y^2 + z^2. Segments of 1.4 degrees: interpolation is off by 1e-3.
    const Vec3 normal = Normalised({at.point.x / 9, at.point.y, at.point.z});
    EXPECT_THAT(at.normal, NearVec(normal.x, normal.y, normal.z, 2e-3));
  }
}

TEST(MeshSurface, RoundPolygonsAreLiftedToThePlanesOfTheirCorners) {
  // A right triangle whose first normal stands upright and whose others lean outwards by 3-4-5.
  auto mesh = std::make_shared<PolygonMesh>();
  mesh->points = {{0, 0, 0}, {0, 0, 10}, {10, 0, 0}};
  mesh->polygons = {{0, 1, 2, 2}};
  mesh->normals = {{{{0, 1, 0}, {0, 0.8f, 0.6f}, {0.6f, 0.8f, 0}, {0.6f, 0.8f, 0}}}};
  const MeshSurface surface(mesh, kIdentityMatrix);
  // At the corners the planes go through the point, or lie below it.
  EXPECT_THAT(surface.At(0, 1, 0).lift, NearVec(0, 0, 0, 1e-6));
  // Half way from the first to the second corner, (0, 0, 5) is 5 x 0.6 = 3 below the second's
  // plane: half of that, along its normal.
  EXPECT_THAT(surface.At(0, 0.5, 0).lift, NearVec(0, 0.5 * 3 * 0.8, 0.5 * 3 * 0.6, 1e-6));
  // Where normals lean inwards nothing is lifted.
  mesh->normals = {{{{0, 1, 0}, {0, 0.8f, -0.6f}, {-0.6f, 0.8f, 0}, {-0.6f, 0.8f, 0}}}};
  EXPECT_THAT(MeshSurface(mesh, kIdentityMatrix).At(0, 0.5, 0).lift, NearVec(0, 0, 0, 0));
}

TEST(MeshSurface, BrokenPointsHaveNoTriangles) {
  auto mesh = Wall();
  mesh->points[3].y = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(MeshSurface(mesh, kIdentityMatrix).Triangles().size(), 1u);
  const Matrix broken = {{0, 0, 0}, {NAN, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  EXPECT_TRUE(MeshSurface(Wall(), broken).Triangles().empty());
}

TEST(MeshSurface, WithoutAreaThereAreStillUnitNormals) {
  auto mesh = Wall();
  mesh->points[1] = mesh->points[2] = mesh->points[0];
  const SurfacePoint at = MeshSurface(mesh, kIdentityMatrix).At(0, 0.3, 0.3);
  EXPECT_NEAR(Length(at.faceNormal), 1, 1e-12);
  EXPECT_NEAR(Length(at.normal), 1, 1e-12);
}

}  // namespace
}  // namespace sorvanix::host
