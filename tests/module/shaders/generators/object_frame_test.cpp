// The frame of the undeformed object, as 3D Noise reads its point in it.
#include <cmath>

#include "tests/module/shaders/generators/noise_3d_fixture.h"

namespace sorvanix::test {
namespace {

struct ObjectFrameTest : Noise3DTest {
  ObjectRecord object = {};
  UvwRecord polygon = {};

  ObjectFrameTest() {
    BeginRender();
    object.matrix = {{10, 20, 30}, {0, 2, 0}, {-2, 0, 0}, {0, 0, 2}};
    render.object = &object;
    render.uvwRecord = &polygon;
    block.useObjectFrame = 1;
    block.space = SpaceWorld;
  }
  void SetTriangle(const Vector& a, const Vector& b, const Vector& c, const Vector& restA,
                   const Vector& restB, const Vector& restC) {
    polygon.cornerCount = 3;
    polygon.corner[0] = a;
    polygon.corner[1] = b;
    polygon.corner[2] = c;
    polygon.restCorner[0] = restA;
    polygon.restCorner[1] = restB;
    polygon.restCorner[2] = restC;
  }
  // Fifty units of the frame are one of the noise.
  void ExpectInFrame(const Vector& hit, const Vector& expected) {
    render.hitPoint = hit;
    const Vector point = PointAsked();
    ExpectVector({point.x * 50, point.y * 50, point.z * 50}, expected, 1e-4);
  }
};

// The rendered triangle is the resting one twice as large, moved by (10, 10, 10). A point on it,
// and one above it by as much as its edges are long.
TEST_F(ObjectFrameTest, APointGoesBackWithThePolygonsCorners) {
  SetTriangle({10, 10, 10}, {12, 10, 10}, {10, 12, 10}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  ExpectInFrame({11, 10.5f, 10}, {0.5f, 0.25f, 0});
  ExpectInFrame({11, 10.5f, 12}, {0.5f, 0.25f, 1});
}

// The resting triangle stands in the plane of y and z; it was bent and stretched.
TEST_F(ObjectFrameTest, ABentPolygonIsStraightened) {
  SetTriangle({0, 0, 0}, {4, 0, 0}, {0, 0, 2}, {5, 5, 5}, {5, 6, 5}, {5, 5, 9});
  ExpectInFrame({1, 0, 1}, {5, 5.25f, 7});  // a quarter of one edge, half of the other
}

// The diagonal runs from (0, 0) to (1, 1); of the resting corners only the fourth differs.
TEST_F(ObjectFrameTest, OfAQuadrangleTheHalfThatHoldsTheHitCounts) {
  polygon.cornerCount = 4;
  const Vector corners[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  for (int i = 0; i < 4; ++i) polygon.corner[i] = polygon.restCorner[i] = corners[i];
  polygon.restCorner[3] = {0, 2, 0};
  ExpectInFrame({0.75f, 0.25f, 0}, {0.75f, 0.25f, 0});
  // A quarter of the diagonal (1, 1) and half of (0, 1), which was (0, 2).
  ExpectInFrame({0.25f, 0.75f, 0}, {0.25f, 1.25f, 0});
}

// (6, 22, 36) is (1, 2, 3) in the object.
TEST_F(ObjectFrameTest, WithoutAPolygonOrAnAreaItIsTheObjectsSpace) {
  ExpectInFrame({6, 22, 36}, {1, 2, 3});
  SetTriangle({0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  ExpectInFrame({6, 22, 36}, {1, 2, 3});
  SetTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, 0});
  ExpectInFrame({6, 22, 36}, {1, 2, 3});
  SetTriangle({0, 0, 0}, {NAN, 0, 0}, {0, 1, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  ExpectInFrame({6, 22, 36}, {1, 2, 3});
  render.uvwRecord = nullptr;
  ExpectInFrame({6, 22, 36}, {1, 2, 3});
}

// A thousandth of a unit a million from the origin, in floats of 1/16.
TEST_F(ObjectFrameTest, PolygonsFarOutKeepTheirDigits) {
  SetTriangle({1e6f, 0, 0}, {1e6f + 1, 0, 0}, {1e6f, 1, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  ExpectInFrame({1e6f + 0.25f, 0.125f, 0}, {0.25f, 0.125f, 0});
}

// (1, 2, 3) * 0.02 + 2 * (1, 0, 0) = (2.02, 0.04, 0.06), times 10 * (1, 2, 3).
TEST_F(ObjectFrameTest, TheVelocityAndTheScalesCountAndTheOffsetDoesNot) {
  OwnSlot().pointOffset = {100, 100, 100};
  block.velocity = {1, 0, 0};
  sample.time = 2;
  block.globalScale = 10;
  block.scaleY = 2;
  block.scaleZ = 3;
  render.hitPoint = {6, 22, 36};
  ExpectVector(PointAsked(), {20.2f, 0.8f, 1.8f}, 1e-5);
}

TEST_F(ObjectFrameTest, TheSwitchAnObjectAndItsTypeDecide) {
  render.hitPoint = {6, 22, 36};
  block.useObjectFrame = 0;
  block.useSphereFrame = 1;
  ExpectVector(PointAsked(), {6, 22, 36});
  block.useObjectFrame = 1;
  block.useSphereFrame = 0;
  object.type = 5102;
  ExpectVector(PointAsked(), {6, 22, 36});
  object.type = 5101;
  ExpectVector(PointAsked(), {0.02f, 0.04f, 0.06f});
  render.object = nullptr;
  ExpectVector(PointAsked(), {6, 22, 36});
}

// v = 0 is the top, v = 1/2 the equator, v = 1 the bottom; a turn of u goes from x over z.
TEST_F(ObjectFrameTest, TheSphereIsReadAtTheSamplesCoordinate) {
  block.useSphereFrame = 1;
  struct Row {
    float u, v;
    Vector point;
  };
  const float diagonal = 100 * std::sqrt(0.5f);
  const Row rows[] = {{0, 0, {0, 100, 0}},
                      {0.7f, 0, {0, 100, 0}},
                      {0, 0.5f, {100, 0, 0}},
                      {0.25f, 0.5f, {0, 0, 100}},
                      {0.5f, 0.5f, {-100, 0, 0}},
                      {0, 1, {0, -100, 0}},
                      {0, 0.25f, {diagonal, diagonal, 0}}};
  for (const Row& row : rows) {
    sample.uvw = {row.u, row.v, 0};
    ExpectInFrame({1, 2, 3}, row.point);
  }
}

// 0.02 * 0.5 * w on each of three axes is 1 for w = 100 / 3: 0.5 + 0.4 * 0.5. The corners do not
// count.
TEST_F(ObjectFrameTest, OnlyTheBlurWidensTheFilter) {
  render.footprintA = {1e6f, 1e6f, 1e6f};
  EXPECT_FLOAT_EQ(GreyOf(0.9f), 0.9f);
  sample.blurScale = 0.5f;
  sample.blurOffset = 100.0f / 3;
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6);
  render.filterScale = 2;
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6);
  render.filteringOn = 0;
  EXPECT_FLOAT_EQ(GreyOf(0.9f), 0.9f);
}

}  // namespace
}  // namespace sorvanix::test
