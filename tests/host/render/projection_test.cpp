#include "host/render/projection.h"

#include <gtest/gtest.h>

#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

using testing::Eq;
using testing::Optional;

constexpr Matrix kIdentity = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

TEST(Projection, SphereRunsFromTheUpperPoleDown) {
  EXPECT_THAT(ProjectShape(Projection::Sphere, {0, 0, 2}), Vec(0.5, 0.5, 2));
  EXPECT_THAT(ProjectShape(Projection::Sphere, {1, 0, 0}), Vec(0.75, 0.5, 1));
  EXPECT_THAT(ProjectShape(Projection::Sphere, {-1, 0, 0}), Vec(0.25, 0.5, 1));
  EXPECT_THAT(ProjectShape(Projection::Sphere, {0, 1, 0}), Vec(0.5, 0, 1));
  EXPECT_THAT(ProjectShape(Projection::Sphere, {0, -1, 0}), Vec(0.5, 1, 1));
  // 30 degrees up: asin(1/2) / pi = 1/6.
  EXPECT_THAT(ProjectShape(Projection::Sphere, {0, 0.5, std::sqrt(3) / 2}), Vec(0.5, 1.0 / 3, 1));
}

TEST(Projection, CentreOfTheSphereIsInTheMiddle) {
  EXPECT_THAT(ProjectShape(Projection::Sphere, {0, 0, 0}), Vec(0.5, 0.5, 0));
}

TEST(Projection, CylinderKeepsTheHeight) {
  EXPECT_THAT(ProjectShape(Projection::Cylinder, {1, 1, 0}), Vec(0.75, 0, 1));
  EXPECT_THAT(ProjectShape(Projection::Cylinder, {3, -0.5, 4}),
              Vec(std::atan2(3, 4) / (2 * M_PI) + 0.5, 0.75, 5));
}

TEST(Projection, FlatFillsTheTag) {
  EXPECT_THAT(ProjectShape(Projection::Flat, {-1, 1, 5}), Vec(0, 0, 5));
  EXPECT_THAT(ProjectShape(Projection::Flat, {1, -1, 5}), Vec(1, 1, 5));
  EXPECT_THAT(ProjectShape(static_cast<Projection>(99), {0.5, 0.5, 0}),
              Vec(0.75, 0.25, 0));  // unknown numbers too
}

TEST(Projection, CubeIsFlatOnTheSideOfTheFarthestAxis) {
  EXPECT_THAT(ProjectShape(Projection::Cube, {0.5, 0.25, -1}), Vec(0.75, 0.375, -1));
  EXPECT_THAT(ProjectShape(Projection::Cube, {1, 0.25, 0.5}), Vec(0.75, 0.375, 1));
  EXPECT_THAT(ProjectShape(Projection::Cube, {0.5, 1, 0.25}), Vec(0.75, 0.375, 1));
}

TEST(Projection, SpatialSlantsAlongZ) {
  EXPECT_THAT(ProjectShape(Projection::Spatial, {0.25, 0, 0.5}), Vec(0.875, 0.5, 0.5));
}

TEST(Projection, ShrinkWrapHasTheUpperPoleInTheMiddle) {
  EXPECT_THAT(ProjectShape(Projection::ShrinkWrap, {0, 1, 0}), Vec(0.5, 0.5, 1));
  // The equator is a quarter turn away: radius 1/4; towards +x to the right, towards +z up.
  EXPECT_THAT(ProjectShape(Projection::ShrinkWrap, {1, 0, 0}), Vec(0.75, 0.5, 1));
  EXPECT_THAT(ProjectShape(Projection::ShrinkWrap, {0, 0, 1}), Vec(0.5, 0.25, 1));
}

TEST(Projection, TileMovesAndScales) {
  TextureTag tag = {};
  tag.offsetU = 0.5f;
  tag.offsetV = 0.25f;
  tag.lengthU = 0.5f;
  tag.lengthV = 0;
  EXPECT_THAT(PlaceInTile(tag, {0.75, 0.9, 3}), Vec(0.5, 0, 3));
}

UvwRecord UnitTriangle() {
  UvwRecord polygon = {};
  polygon.cornerCount = 3;
  polygon.corner[1] = {2, 0, 0};
  polygon.corner[2] = {0, 4, 0};
  polygon.uvw[0] = {0.5f, 0.5f, 0};
  polygon.uvw[1] = {1, 0.5f, 0};
  polygon.uvw[2] = {0.5f, 0, 1};
  return polygon;
}

TEST(Projection, UvwIsBarycentricAndGoesOnOutside) {
  const UvwRecord polygon = UnitTriangle();
  EXPECT_THAT(UvwOnPolygon(polygon, {1, 0, 0}), Optional(Vec(0.75, 0.5, 0)));
  EXPECT_THAT(UvwOnPolygon(polygon, {0, 2, 0}), Optional(Vec(0.5, 0.25, 0.5)));
  EXPECT_THAT(UvwOnPolygon(polygon, {4, -4, 0}), Optional(Vec(1.5, 1, -1)));
  EXPECT_THAT(UvwOnPolygon(polygon, {1, 0, 7}), Optional(Vec(0.75, 0.5, 0)));  // the foot
}

TEST(Projection, UvwOfAQuadrangleTakesTheHalfOnThePointsSide) {
  UvwRecord quad = {};
  quad.cornerCount = 4;
  quad.corner[1] = {1, 0, 0};
  quad.corner[2] = {1, 1, 0};
  quad.corner[3] = {0, 1, 0};
  quad.uvw[1] = {1, 0, 0};
  quad.uvw[2] = {1, 1, 0};
  quad.uvw[3] = {0, 3, 0};  // bent, so that the halves differ
  // First half: u = x, v = y.
  EXPECT_THAT(UvwOnPolygon(quad, {0.75, 0.25, 0}), Optional(Vec(0.75, 0.25, 0)));
  // Second half: corners 0, 2, 3 at (0, 0), (1, 1), (0, 1): weight of 2 is x, of 3 is y - x;
  // v = x + 3 (y - x).
  EXPECT_THAT(UvwOnPolygon(quad, {0.25, 0.75, 0}), Optional(Vec(0.25, 1.75, 0)));
  EXPECT_THAT(UvwOnPolygon(quad, {-1, 1, 0}), Optional(Vec(-1, 5, 0)));
}

TEST(Projection, UvwNeedsAPolygonWithAnArea) {
  UvwRecord polygon = UnitTriangle();
  polygon.corner[2] = polygon.corner[1];
  EXPECT_THAT(UvwOnPolygon(polygon, {0, 0, 0}), Eq(std::nullopt));
  EXPECT_THAT(UvwOnPolygon({}, {0, 0, 0}), Eq(std::nullopt));
  TextureTag tag = {.matrix1 = kIdentity,
                    .matrix2 = kIdentity,
                    .flags = 0,
                    .flags2 = 0,
                    .projection = 6,
                    .opaqueByte = 0,
                    .offsetU = 0,
                    .offsetV = 0,
                    .lengthU = 1,
                    .lengthV = 1,
                    .opaque = {}};
  EXPECT_THAT(ProjectPlace(tag, {}), Eq(std::nullopt));
  tag.projection = 4;
  EXPECT_THAT(ProjectPlace(tag, {}), Eq(std::nullopt));
}

TEST(Projection, FrontalIsTheShareOfThePicture) {
  // 90 degrees across 200 pixels: a point 10 away and 5 to the right is half way to the edge; the
  // picture is 100 high, so 2.5 up is half way to the upper one.
  const ScreenView view(kIdentity, 90, 200, 100);
  TextureTag tag = {};
  tag.projection = 4;
  tag.lengthU = tag.lengthV = 1;
  const auto uvw = ProjectPlace(tag, {.inWorld = {5, 2.5, 10}, .view = &view});
  EXPECT_THAT(uvw, Optional(Vec(0.75, 0.25, 10)));
}

}  // namespace
}  // namespace sorvanix::host
