// Gradient's spaces: the point that the shapes in space are read at, alone and inside a filter.
#include <utility>

#include "tests/module/shaders/generators/gradient_space_fixture.h"

namespace sorvanix::test {
namespace {

// The tag is at (1, 0, 0), and maps the local point: ((3, 4, -5) - (1, 0, 0)) * 100.
TEST_F(GradientSpaceTest, TextureSpaceIsTheTagsTimesAHundred) {
  block.space = GradientTexture;
  tag.matrix2 = {{-1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  render.textureTag = &tag;
  render.localHitPoint = {3, 4, -5};
  ExpectPoint({200, 400, -500});
}

TEST_F(GradientSpaceTest, TextureSpaceWithoutATagIsTheHit) {
  block.space = GradientTexture;
  block.nested = 1;
  OwnSlot().footprint[0] = {500, 500, 500};
  ExpectPoint(kInWorld);
}

TEST_F(GradientSpaceTest, ObjectSpaceMovesTurnsAndScalesWithTheObject) {
  block.space = GradientObject;
  object.matrix = kPlaced;
  render.object = &object;
  ExpectPoint(kInside);
}

TEST_F(GradientSpaceTest, ObjectSpaceWithoutAnObjectOrWithAFlatOneIsTheWorld) {
  block.space = GradientObject;
  ExpectPoint(kInWorld);
  object.matrix = {{1, 2, 3}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
  render.object = &object;
  ExpectPoint(kInWorld);
}

TEST_F(GradientSpaceTest, WorldSpaceStaysPut) {
  object.matrix = kPlaced;
  render.object = &object;
  camera = &kPlaced;
  for (const std::int32_t space : {2, -1, 6, INT32_MIN, INT32_MAX}) {
    block.space = space;
    ExpectPoint(kInWorld);
  }
}

TEST_F(GradientSpaceTest, CameraSpaceMovesWithTheCamera) {
  block.space = GradientCamera;
  camera = &kPlaced;
  ExpectPoint(kInside);
  camera = nullptr;
  ExpectPoint(kInWorld);
}

// (1, 2, 3) in camera space is the pixel (110, 220) at depth 3.
TEST_F(GradientSpaceTest, ScreenSpaceIsThePixelAndItsDepth) {
  block.space = GradientScreen;
  camera = &kPlaced;
  ExpectPoint({110, 220, 3});
  camera = nullptr;
  ExpectPoint({0, 0, 0});
}

// The pixel (110, 220) over (441 - 1, 331 - 1) is (0.25, 0.66667), without its depth.
TEST_F(GradientSpaceTest, UnitScreenSpaceIsAFractionOfThePicture) {
  block.space = GradientUnitScreen;
  camera = &kPlaced;
  pictureSize = {441, 331};
  ExpectPoint({0.25f, 220.0f / 330, 0});
  camera = nullptr;
  ExpectPoint({0, 0, 0});
}

TEST_F(GradientSpaceTest, UnitScreenSpaceOfAPictureWithoutExtentIsItsMiddle) {
  block.space = GradientUnitScreen;
  camera = &kPlaced;
  OwnSlot().pointOffset = {7, 7, 7};
  ExpectPoint({0.5f, 0.5f, 0});
  for (const auto& [width, height] : {std::pair{1, 100}, {100, 1}, {0, 0}, {INT32_MIN, 100}}) {
    pictureSize = {width, height};
    ExpectPoint({0.5f, 0.5f, 0});
  }
}

TEST_F(GradientSpaceTest, ThePointOffsetCountsInWorldCameraAndScreenOnly) {
  camera = &kPlaced;
  object.matrix = kPlaced;
  render.object = &object;
  render.textureTag = &tag;
  tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
  render.localHitPoint = kInWorld;
  pictureSize = {101, 201};
  OwnSlot().pointOffset = {100, 200, 300};
  const Vector expected[] = {kInWorld,        kInside,         {106, 222, 336},
                             {101, 202, 303}, {210, 420, 303}, {101.1f, 201.1f, 300}};
  for (std::int32_t space = 0; space <= 5; ++space) {
    block.space = space;
    ExpectPoint(expected[space]);
  }
}

TEST_F(GradientSpaceTest, ThePointOffsetIsThatOfTheCallingCpu) {
  BeginRender(2);
  block.space = GradientWorld;
  FakeHost::cpuIndex = 1;
  OwnSlot(0).pointOffset = {500, 500, 500};
  OwnSlot(1).pointOffset = {1, 0, 0};
  ExpectPoint({7, 22, 36});
}

TEST_F(GradientSpaceTest, WithoutSlotsThereIsNoOffset) {
  record.FreeRender(&instance);
  block.space = GradientWorld;
  ExpectPoint(kInWorld);
}

TEST_F(GradientSpaceTest, AHostThatTellsNothingOfTheRenderLeavesTheWorld) {
  host.render.query = nullptr;
  host.render.projectToScreen = nullptr;
  block.space = GradientCamera;
  ExpectPoint(kInWorld);
  block.space = GradientScreen;
  ExpectPoint({0, 0, 0});
}

// --- inside a filter ---

struct NestedGradientTest : GradientSpaceTest {
  NestedGradientTest() {
    block.nested = 1;
    OwnSlot().uvwPoint = {0.25f, 0.75f, 0};
    OwnSlot().uvwOffset = {0.5f, 0.5f, 0};
    OwnSlot().footprint[0] = {11, 12, 13};
    sample.uvw = {0.875f, 0.125f, 0};
    render.tangentU = {1000, 0, 0};
    render.tangentV = {0, 2000, 0};
  }
};

TEST_F(NestedGradientTest, ReadsTheSlotsCoordinateWithoutItsOffset) {
  block.type = GradientU;
  EXPECT_EQ(Shown(), 0.25f);
  block.type = GradientV;
  EXPECT_EQ(Shown(), 0.25f);
}

TEST_F(NestedGradientTest, ReadsTheSlotsPointInTextureSpace) {
  block.space = GradientTexture;
  render.textureTag = &tag;
  ExpectPoint({11, 12, 13});
}

TEST_F(NestedGradientTest, OuterChannel8427MakesItStandAlone) {
  OwnSlot().outerChannel = ChannelStandalone;
  OwnSlot().tap = TapPlusU;
  block.type = GradientU;
  EXPECT_EQ(Shown(), 0.875f);
  block.space = GradientTexture;
  render.textureTag = &tag;
  tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
  render.localHitPoint = {1, 2, 3};
  ExpectPoint({1, 2, 3});
}

TEST_F(NestedGradientTest, WithoutSlotsOrARenderItStandsAlone) {
  block.type = GradientU;
  record.FreeRender(&instance);
  EXPECT_EQ(Shown(), 0.875f);
  BeginRender();
  sample.render = nullptr;
  sample.uvw = {0.875f, 0.125f, 0};
  EXPECT_EQ(Shown(), 0.875f);
}

// A thousandth of the tangents is one along u and two along v. The point moves against the
// coordinate.
TEST_F(NestedGradientTest, TapsMoveTheCoordinateOneWayAndThePointTheOther) {
  block.space = GradientTexture;
  render.textureTag = &tag;
  struct Row {
    std::int32_t tap;
    Vector point;
    float u, v;
  };
  const Row rows[] = {{0, {11, 12, 13}, 0.25f, 0.75f},  {1, {10, 12, 13}, 0.251f, 0.75f},
                      {2, {12, 12, 13}, 0.249f, 0.75f}, {3, {11, 10, 13}, 0.25f, 0.751f},
                      {4, {11, 14, 13}, 0.25f, 0.749f}, {5, {11, 12, 13}, 0.25f, 0.75f},
                      {-1, {11, 12, 13}, 0.25f, 0.75f}};
  for (const Row& row : rows) {
    OwnSlot().tap = row.tap;
    ExpectPoint(row.point);
    block.type = GradientU;
    EXPECT_FLOAT_EQ(Shown(), row.u) << row.tap;
    block.type = GradientV;
    EXPECT_NEAR(Shown(), 1 - row.v, 1e-7) << row.tap;
  }
}

TEST_F(NestedGradientTest, TheSampleKeepsTheCoordinateWithItsTap) {
  block.space = GradientTexture;
  render.textureTag = &tag;
  OwnSlot().tap = TapPlusV;
  Output();
  ExpectVector(sample.uvw, {0.25f, 0.751f, 0}, 1e-7);
}

TEST_F(NestedGradientTest, OnlyTextureSpaceWithATagIsToldOfTaps) {
  OwnSlot().tap = TapPlusU;
  block.type = GradientU;
  for (std::int32_t space = 0; space <= 6; ++space) {
    block.space = space;
    render.textureTag = space == GradientTexture ? nullptr : &tag;
    EXPECT_EQ(Shown(), 0.25f) << space;
  }
}

TEST_F(GradientTest, APreviewKeepsTheSamplesCoordinate) {
  sample.uvw = {0.25f, 0.5f, 0.75f};
  Output();
  ExpectExactly(sample.uvw, {0.25f, 0.5f, 0.75f});
}

}  // namespace
}  // namespace sorvanix::test
