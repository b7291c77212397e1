// 3D Noise's spaces: what the noise stays fixed to when object, camera and tag move.
#include <iterator>

#include "tests/module/kit/vector_matchers.h"
#include "tests/module/shaders/generators/noise_3d_fixture.h"

namespace sorvanix::test {
namespace {

// At rest, moved, turned by a quarter about z, scaled, and all of it at once.
const Matrix kPlaces[] = {
    {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    {{10, 20, 30}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    {{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
    {{0, 0, 0}, {2, 0, 0}, {0, 4, 0}, {0, 0, 0.5f}},
    {{-7, 5, 3}, {0, 2, 0}, {-4, 0, 0}, {0, 0, 0.5f}},
};

// By hand, not by the kit: a point in a place, and the inverse of a place whose axes are
// perpendicular.
Vector In(const Matrix& m, const Vector& p) {
  return {m.off.x + m.v1.x * p.x + m.v2.x * p.y + m.v3.x * p.z,
          m.off.y + m.v1.y * p.x + m.v2.y * p.y + m.v3.y * p.z,
          m.off.z + m.v1.z * p.x + m.v2.z * p.y + m.v3.z * p.z};
}
float Along(const Vector& axis, const Vector& p) {
  return (axis.x * p.x + axis.y * p.y + axis.z * p.z) /
         (axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
}
Matrix Inverse(const Matrix& m) {
  const auto row = [&m](const Vector& unit) {
    return Vector{Along(m.v1, unit), Along(m.v2, unit), Along(m.v3, unit)};
  };
  Matrix inverse = {{0, 0, 0}, row({1, 0, 0}), row({0, 1, 0}), row({0, 0, 1})};
  const Vector back = In(inverse, m.off);
  inverse.off = {-back.x, -back.y, -back.z};
  return inverse;
}

constexpr Vector kInside = {1, 2, 4};
constexpr Vector kElsewhere = {3, -5, 7};

struct Noise3DSpaceTest : Noise3DTest {
  ObjectRecord object = {};
  Matrix cameraPlace = kPlaces[0];

  Noise3DSpaceTest() {
    BeginRender();
    render.object = &object;
    render.textureTag = &tag;
    camera = &cameraPlace;
    PlaceAll(kPlaces[0]);
  }
  void PlaceAll(const Matrix& place) {
    object.matrix = place;
    cameraPlace = place;
    PlaceTag(place);
  }
  void PlaceTag(const Matrix& place) {
    tag.matrix1 = place;
    tag.matrix2 = Inverse(place);
  }
  void Hit(const Vector& world) { render.hitPoint = render.localHitPoint = world; }
  void ExpectPoint(const Vector& expected) { ExpectVector(PointAsked(), expected, 2e-4); }
};

TEST_F(Noise3DSpaceTest, TextureSpaceStaysWithTheTagInHundredths) {
  block.space = SpaceTexture;
  for (const Matrix& place : kPlaces) {
    object.matrix = cameraPlace = kPlaces[4];
    PlaceTag(place);
    Hit(In(place, {0.01f, 0.02f, 0.04f}));
    ExpectPoint(kInside);
  }
}

TEST_F(Noise3DSpaceTest, ObjectSpaceStaysWithTheObject) {
  block.space = SpaceObject;
  for (const Matrix& place : kPlaces) {
    PlaceAll(kPlaces[4]);
    object.matrix = place;
    Hit(In(place, kInside));
    ExpectPoint(kInside);
  }
}

TEST_F(Noise3DSpaceTest, WorldSpaceStaysPutWhateverMoves) {
  for (const std::int32_t space : {2, -1, 6, INT32_MIN, INT32_MAX}) {
    block.space = space;
    for (const Matrix& place : kPlaces) {
      PlaceAll(place);
      Hit(kInside);
      ExpectPoint(kInside);
    }
  }
}

TEST_F(Noise3DSpaceTest, CameraSpaceStaysWithTheCamera) {
  block.space = SpaceCamera;
  for (const Matrix& place : kPlaces) {
    PlaceAll(kPlaces[4]);
    cameraPlace = place;
    Hit(In(place, kInside));
    ExpectPoint(kInside);
  }
}

TEST_F(Noise3DSpaceTest, ScreenSpaceStaysWithTheCameraATenthTheSize) {
  block.space = SpaceScreen;
  for (const Matrix& place : kPlaces) {
    cameraPlace = place;
    Hit(In(place, kInside));
    ExpectPoint({0.1f, 0.2f, 0.4f});
  }
}

// (1, 2, 4) and its multiples are one place of the picture: (1/4, 2/4) / 10.
TEST_F(Noise3DSpaceTest, RasterSpaceStaysOnThePictureAtAnyDepth) {
  block.space = SpaceRaster;
  for (const Matrix& place : kPlaces) {
    cameraPlace = place;
    for (const float depth : {0.5f, 1.0f, 20.0f, -1.0f}) {
      Hit(In(place, {depth, 2 * depth, 4 * depth}));
      ExpectPoint({0.025f, 0.05f, 0});
    }
  }
}

TEST_F(Noise3DSpaceTest, RasterSpaceInTheCamerasPlaneIsOnePoint) {
  block.space = SpaceRaster;
  Hit({1, 2, 0});
  ExpectPoint({0, 0, 0});
}

TEST_F(Noise3DSpaceTest, WithoutTagObjectOrCameraTheWorldIsTaken) {
  Hit(kInside);
  render.textureTag = nullptr;
  render.object = nullptr;
  camera = nullptr;
  for (const std::int32_t space : {SpaceTexture, SpaceObject, SpaceCamera}) {
    block.space = space;
    ExpectPoint(kInside);
  }
  block.space = SpaceScreen;
  ExpectPoint({0.1f, 0.2f, 0.4f});
  block.space = SpaceRaster;
  ExpectPoint({0.025f, 0.05f, 0});
}

TEST_F(Noise3DSpaceTest, AFlatObjectOrCameraLeavesTheWorld) {
  object.matrix = cameraPlace = {{1, 2, 3}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
  Hit(kInside);
  for (const std::int32_t space : {SpaceObject, SpaceCamera}) {
    block.space = space;
    ExpectPoint(kInside);
  }
}

// Half extents of (1, 1, 1) in each space, by corners that lie one unit of the space around the
// hit: a width of 3 in it, and 0.5 + 0.4 * 0.5 / 3 of a noise of 0.9. Texture units are hundredths,
// screen units tens.
TEST_F(Noise3DSpaceTest, TheCornersGoThroughTheSameMap) {
  const float units[] = {0.01f, 1, 1, 1, 10};
  for (std::int32_t space = SpaceTexture; space <= SpaceScreen; ++space) {
    block.space = space;
    for (const Matrix& place : kPlaces) {
      const Matrix& map = space == SpaceWorld ? kPlaces[0] : place;
      PlaceAll(place);
      const float unit = units[space];
      Hit(In(map, {-unit, -unit, -unit}));
      render.footprintA = In(map, {unit, -unit, -unit});
      render.footprintB = In(map, {-unit, unit, -unit});
      render.footprintC = In(map, {-unit, -unit, unit});
      EXPECT_NEAR(GreyOf(0.9f), 0.5f + 0.2f / 3, 1e-5) << space;
    }
  }
}

// (0, 0), (80, 0) / 4 / 10, (0, 20) / 1 / 10, and the camera's plane: half extents of (1, 1, 0), a
// width of 2, 0.5 + 0.4 * 0.5 / 2.
TEST_F(Noise3DSpaceTest, InRasterSpaceEveryCornerIsDividedByItsOwnDepth) {
  block.space = SpaceRaster;
  for (const Matrix& place : kPlaces) {
    PlaceAll(place);
    Hit(In(place, {0, 0, 4}));
    render.footprintA = In(place, {80, 0, 4});
    render.footprintB = In(place, {0, 20, 1});
    render.footprintC = In(place, {0, 0, -5});
    EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-5);
  }
}

// --- velocity, offset, scales ---

// (kInside + 2 * (1, 0, -1) + (10, 20, 30)) * 2 * (1, 0.5, 0.25) = (13 * 2, 22, 32 * 0.5).
TEST_F(Noise3DSpaceTest, VelocityAndOffsetAreAddedBeforeTheScales) {
  block.space = SpaceWorld;
  block.velocity = {1, 0, -1};
  block.globalScale = 2;
  block.scaleY = 0.5f;
  block.scaleZ = 0.25f;
  sample.time = 2;
  OwnSlot().pointOffset = {10, 20, 30};
  Hit(kInside);
  ExpectPoint({26, 22, 16});
}

// The hit is (1, 2, 4) in the turned place of all things, and (-7 - 8, 5 + 2, 3 + 2) in the world.
// Behind each map come 2 * (1, 0, -1) + (10, 20, 30) = (12, 20, 28), in units of the space.
TEST_F(Noise3DSpaceTest, VelocityAndOffsetCountOnceInEverySpaceBehindItsMap) {
  PlaceAll(kPlaces[4]);
  Hit(In(kPlaces[4], kInside));
  block.velocity = {1, 0, -1};
  sample.time = 2;
  OwnSlot().pointOffset = {10, 20, 30};
  const Vector expected[] = {{112, 220, 428}, {13, 22, 32},          {-3, 27, 33},
                             {13, 22, 32},    {12.1f, 20.2f, 28.4f}, {12.025f, 20.05f, 28}};
  for (std::int32_t space = 0; space <= 5; ++space) {
    block.space = space;
    ExpectPoint(expected[space]);
  }
}

TEST_F(Noise3DSpaceTest, TheOffsetIsThatOfTheCallingCpu) {
  BeginRender(2);
  block.space = SpaceWorld;
  OwnSlot(0).pointOffset = {500, 500, 500};
  OwnSlot(1).pointOffset = {1, 0, 0};
  FakeHost::cpuIndex = 1;
  Hit(kInside);
  ExpectPoint({2, 2, 4});
}

TEST_F(Noise3DSpaceTest, WithoutSlotsThereIsNoOffset) {
  record.FreeRender(&instance);
  block.space = SpaceWorld;
  block.nested = 1;
  Hit(kInside);
  ExpectPoint(kInside);
}

// --- inside a filter ---

struct NestedNoise3DTest : Noise3DSpaceTest {
  NestedNoise3DTest() {
    block.nested = 1;
    for (int i = 0; i < 4; ++i) OwnSlot().footprint[i] = kElsewhere;
    Hit(kInside);
  }
};

TEST_F(NestedNoise3DTest, ReadsTheSlotsPointsInTextureSpaceAlone) {
  block.space = SpaceTexture;
  ExpectPoint(kElsewhere);
  for (const std::int32_t space : {SpaceObject, SpaceWorld, SpaceCamera}) {
    block.space = space;
    ExpectPoint(kInside);
  }
  block.space = SpaceTexture;
  render.textureTag = nullptr;
  ExpectPoint(kInside);
}

// Corners at 1 around the first: half extents of 0.5 each, a width of 1.5.
TEST_F(NestedNoise3DTest, TheSlotsCornersMakeTheWidth) {
  block.space = SpaceTexture;
  OwnSlot().footprint[1].x += 1;
  OwnSlot().footprint[2].y += 1;
  OwnSlot().footprint[3].z -= 1;
  EXPECT_NEAR(GreyOf(0.9f), 0.5f + 0.2f / 1.5f, 1e-6);
}

// A third tap against v, unlike the first along u.
TEST_F(NestedNoise3DTest, TapsMoveThePointByTheStepOfSlotZero) {
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  block.space = SpaceWorld;
  block.scaleX = 2;
  render.tangentU = {1, 0, 0};
  render.tangentV = {0, 10, 0};
  struct Row {
    std::int32_t tap;
    Vector point;
  };
  const Row rows[] = {{0, {2, 2, 4}},
                      {1, {2 + kStep, 2, 4}},
                      {2, {2 - kStep, 2, 4}},
                      {3, {2, 2 - 10 * kStep, 4}},
                      {4, {2, 2 + 10 * kStep, 4}},
                      {5, {2, 2, 4}},
                      {-1, {2, 2, 4}}};
  for (const Row& row : rows) {
    OwnSlot(1).tap = row.tap;
    ExpectPoint(row.point);
  }
  block.nested = 0;
  OwnSlot(1).tap = TapPlusU;
  ExpectPoint({2, 2, 4});
}

}  // namespace
}  // namespace sorvanix::test
