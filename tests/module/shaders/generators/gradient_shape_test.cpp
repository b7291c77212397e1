// The eleven shapes of Gradient against their closed forms, and their tiling.
#include "module/shaders/generators/gradient_shape.h"

#include <cmath>

#include "tests/module/shaders/generators/gradient_fixture.h"

namespace sorvanix::test {
namespace {

using GradientShapeTest = GradientTest;

// --- in the texture ---

TEST_F(GradientShapeTest, StripsRunAlongUAgainstVAndAlongBoth) {
  block.type = GradientU;
  EXPECT_FLOAT_EQ(ShownAt(0.25f, 0.6f), 0.25f);
  block.type = GradientV;
  EXPECT_FLOAT_EQ(ShownAt(0.25f, 0.6f), 0.4f);  // 1 - 0.6
  block.type = GradientDiagonal;
  EXPECT_FLOAT_EQ(ShownAt(0.25f, 0.6f), 0.425f);  // (0.25 + 0.6) / 2
}

TEST_F(GradientShapeTest, ATypeOffTheTableIsU) {
  for (const std::int32_t type : {-1, 11, INT32_MIN, INT32_MAX}) {
    block.type = type;
    EXPECT_FLOAT_EQ(ShownAt(0.25f, 0.6f), 0.25f) << type;
  }
}

TEST_F(GradientShapeTest, AngleTurnsFromTheRightOverTheBottom) {
  block.type = GradientAngle;
  EXPECT_EQ(ShownAt(1, 0.5f), 0);
  EXPECT_FLOAT_EQ(ShownAt(1, 1), 0.125f);
  EXPECT_FLOAT_EQ(ShownAt(0, 1), 0.375f);
  EXPECT_FLOAT_EQ(ShownAt(0, 0.5f), 0.5f);
  EXPECT_FLOAT_EQ(ShownAt(0, 0), 0.625f);
  EXPECT_FLOAT_EQ(ShownAt(1, 0), 0.875f);
}

// With a = 1e-5: atan(0.5e5) = pi/2 - 2e-5, and 2e-5 / 2 pi = 3.183e-6 of a turn.
TEST_F(GradientShapeTest, AngleOnTheVerticalThroughTheMiddleLiesOnTheRight) {
  block.type = GradientAngle;
  EXPECT_NEAR(ShownAt(0.5f, 1), 0.25 - 3.183e-6, 1e-7);
  EXPECT_NEAR(ShownAt(0.5f, 0), 0.75 + 3.183e-6, 1e-7);
  EXPECT_EQ(ShownAt(0.5f, 0.5f), 0);
}

// sqrt(0.5) * 1.4142 = 0.9999904, and 0.5 * 1.4142 = 0.7071.
TEST_F(GradientShapeTest, CircleAlmostReachesTheEndInTheCorners) {
  block.type = GradientCircle;
  EXPECT_EQ(ShownAt(0.5f, 0.5f), 0);
  EXPECT_NEAR(ShownAt(1, 0.5f), 0.7071, 1e-7);
  for (const float u : {0.0f, 1.0f}) {
    for (const float v : {0.0f, 1.0f}) EXPECT_NEAR(ShownAt(u, v), 0.9999904, 1e-7);
  }
}

TEST_F(GradientShapeTest, BoxIsTwiceTheLargerDistance) {
  block.type = GradientBox;
  EXPECT_EQ(ShownAt(0.5f, 0.5f), 0);
  EXPECT_EQ(ShownAt(0.25f, 0.625f), 0.5f);
  EXPECT_EQ(ShownAt(0.625f, 0.25f), 0.5f);
  EXPECT_EQ(ShownAt(0.5f, 1), 1);
}

// sqrt(0.5) * 1.41 = 0.9970206, and 0.5 * 1.41 = 0.705.
TEST_F(GradientShapeTest, CornersGrowFromTheNearestCorner) {
  block.type = GradientCorners;
  EXPECT_NEAR(ShownAt(0.5f, 0.5f), 0.9970206, 1e-7);
  EXPECT_NEAR(ShownAt(0.5f, 0), 0.705, 1e-7);
  EXPECT_EQ(ShownAt(0, 0), 0);
  EXPECT_EQ(ShownAt(1, 0), 0);
  EXPECT_EQ(ShownAt(1, 1), 0);
}

struct FourColoursTest : GradientTest {
  FourColoursTest() {
    block.type = GradientFourColours;
    block.ramp.count = 4;
    const Vector colours[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}};
    for (int i = 0; i < 4; ++i) block.ramp.knots[i].colour = colours[i];
  }
  Vector ColourAt(float u, float v) {
    sample.uvw = {u, v, 0};
    return Output();
  }
};

// top = (0.75, 0.25, 0), bottom = (0.25, 0.25, 1); half way between: (0.5, 0.25, 0.5).
TEST_F(FourColoursTest, MixesTheFirstFourKnotsBetweenTheCorners) {
  ExpectExactly(ColourAt(0, 0), {1, 0, 0});
  ExpectExactly(ColourAt(1, 0), {0, 1, 0});
  ExpectExactly(ColourAt(0, 1), {0, 0, 1});
  ExpectExactly(ColourAt(1, 1), {1, 1, 1});
  ExpectVector(ColourAt(0.25f, 0.5f), {0.5f, 0.25f, 0.5f});
}

TEST_F(FourColoursTest, TakesNoNoticeOfTheRampsShape) {
  block.ramp.interpolation = RampStep;
  for (int i = 0; i < 4; ++i) block.ramp.knots[i].position = 7;
  ExpectVector(ColourAt(0.25f, 0.5f), {0.5f, 0.25f, 0.5f});
}

TEST_F(FourColoursTest, TakesBlackForKnotsThatAreNotThere) {
  block.ramp.count = 3;
  ExpectExactly(ColourAt(1, 1), {0, 0, 0});
  ExpectExactly(ColourAt(0, 1), {0, 0, 1});
  block.ramp.count = -5;
  ExpectExactly(ColourAt(0, 0), {0, 0, 0});
}

TEST_F(FourColoursTest, HoldsTheEdgesOutside) {
  ExpectExactly(ColourAt(-3, -3), {1, 0, 0});
  ExpectExactly(ColourAt(3, 3), {1, 1, 1});
  block.ramp.count = INT32_MAX;
  ExpectExactly(ColourAt(3, -3), {0, 1, 0});
}

// --- in space ---

TEST_F(GradientShapeTest, WithoutARenderTheSolidShapesShowStripMirroredStripAndDisc) {
  block.type = GradientLinear3D;
  EXPECT_FLOAT_EQ(ShownAt(0.3f, 0.9f), 0.3f);
  block.type = GradientCylinder3D;
  EXPECT_NEAR(ShownAt(0.3f, 0.9f), 0.4, 1e-7);  // |0.6 - 1|
  EXPECT_NEAR(ShownAt(0.9f, 0.9f), 0.8, 1e-7);
  block.type = GradientSphere3D;
  EXPECT_NEAR(ShownAt(1, 0.5f), 0.7071, 1e-7);
}

struct SolidShapeTest : GradientTest {
  SolidShapeTest() { BeginRender(); }
};

TEST_F(SolidShapeTest, LinearRunsFromStartToEndAndHoldsItsEnds) {
  block.type = GradientLinear3D;  // from x = -100 to x = 100
  EXPECT_FLOAT_EQ(ShownAt({0, 5, 7}), 0.5f);
  EXPECT_FLOAT_EQ(ShownAt({-50, 0, 0}), 0.25f);
  EXPECT_EQ(ShownAt({-150, 0, 0}), 0);
  EXPECT_EQ(ShownAt({150, 0, 0}), 1);
}

// The direction is (0.6, 0.8, 0) and the length 5: (3, 0, 0) lies 1.8 along, 0.36.
TEST_F(SolidShapeTest, LinearProjectsOntoASlantedLine) {
  block.type = GradientLinear3D;
  block.start = {};
  block.end = {3, 4, 0};
  EXPECT_NEAR(ShownAt({3, 0, 0}), 0.36, 1e-6);
}

// Along the line 250, -50 and 200 of 200.
TEST_F(SolidShapeTest, LinearRepeatsWithCycle) {
  block.type = GradientLinear3D;
  block.cycle = 1;
  EXPECT_NEAR(ShownAt({150, 0, 0}), 0.25, 1e-6);
  EXPECT_NEAR(ShownAt({-150, 0, 0}), 0.75, 1e-6);
  EXPECT_EQ(ShownAt({100, 0, 0}), 0);
}

// 0 / 0 compares with no knot, so the last one holds.
TEST_F(SolidShapeTest, LinearWithoutALengthShowsTheLastKnot) {
  block.type = GradientLinear3D;
  block.end = block.start;
  for (const std::int32_t cycle : {0, 1}) {
    block.cycle = cycle;
    EXPECT_EQ(ShownAt({3, 4, 5}), 1) << cycle;
  }
}

// The axis is the x axis: (37, 30, 40) lies 50 off it, (0, 150, 200) lies 250 off.
TEST_F(SolidShapeTest, CylinderIsTheDistanceFromItsAxisOverTheRadius) {
  block.type = GradientCylinder3D;
  EXPECT_FLOAT_EQ(ShownAt({37, 30, 40}), 0.5f);
  EXPECT_FLOAT_EQ(ShownAt({1e4f, 30, 40}), 0.5f) << "the axis goes on beyond its ends";
  EXPECT_EQ(ShownAt({0, 150, 200}), 1);
  block.cycle = 1;
  EXPECT_FLOAT_EQ(ShownAt({0, 150, 200}), 0.5f);
  block.radius = -100;
  EXPECT_FLOAT_EQ(ShownAt({37, 30, 40}), 0.5f) << "the sign of the radius is lost";
}

TEST_F(SolidShapeTest, CylinderWithoutARadiusIsItsAxisEverywhere) {
  block.type = GradientCylinder3D;
  block.radius = 0;
  EXPECT_EQ(ShownAt({37, 30, 40}), 0);
}

// The foot on a line without length is 0 / 0.
TEST_F(SolidShapeTest, CylinderWithoutAnAxisShowsTheLastKnot) {
  block.type = GradientCylinder3D;
  block.end = block.start;
  for (const std::int32_t cycle : {0, 1}) {
    block.cycle = cycle;
    EXPECT_EQ(ShownAt({3, 4, 5}), 1) << cycle;
  }
}

// Around (-100, 0, 0).
TEST_F(SolidShapeTest, SphereIsTheDistanceFromStartOverTheRadius) {
  block.type = GradientSphere3D;
  EXPECT_FLOAT_EQ(ShownAt({-100, 30, 40}), 0.5f);
  EXPECT_EQ(ShownAt({-100, 300, 0}), 1);
  block.cycle = 1;
  EXPECT_FLOAT_EQ(ShownAt({-100, 0, 225}), 0.25f);
}

TEST_F(SolidShapeTest, SphereWithANegativeRadiusRunsBackwards) {
  block.type = GradientSphere3D;
  block.radius = -100;
  EXPECT_EQ(ShownAt({-100, 30, 40}), 0) << "-0.5, held";
  block.cycle = 1;
  EXPECT_FLOAT_EQ(ShownAt({-100, 0, 25}), 0.75f) << "-0.25 + 1";
}

// 50 / 0 is infinite and 0 / 0 undefined; infinity less its whole part is undefined too.
TEST_F(SolidShapeTest, SphereWithoutARadiusShowsTheLastKnot) {
  block.type = GradientSphere3D;
  block.radius = 0;
  for (const std::int32_t cycle : {0, 1}) {
    block.cycle = cycle;
    EXPECT_EQ(ShownAt({-100, 30, 40}), 1) << cycle;
    EXPECT_EQ(ShownAt(block.start), 1) << cycle;
  }
}

// --- tiling ---

struct TilingTest : GradientTest {
  TilingTest() {
    BeginRender();
    render.textureTag = &tag;
    block.cycle = 1;
  }
};

TEST_F(TilingTest, ATiledTagRepeatsTheTexture) {
  tag.flags = 1;
  block.type = GradientU;
  EXPECT_FLOAT_EQ(ShownAt(1.25f, 0), 0.25f);
  EXPECT_FLOAT_EQ(ShownAt(-0.25f, 0), 0.75f);
  EXPECT_EQ(ShownAt(-1, 0), 0);
  EXPECT_EQ(ShownAt(1, 0), 0);
  block.type = GradientV;
  EXPECT_NEAR(ShownAt(0, 1.375f), 0.625f, 1e-6);
  EXPECT_NEAR(ShownAt(0, -0.25f), 0.25f, 1e-6);
}

// The numbers above the table count as shapes in space, which do not tile: 1.25 is held at the end.
TEST_F(TilingTest, OfTheTypesOffTheTableThoseBelowItTile) {
  tag.flags = 1;
  for (const std::int32_t type : {-1, INT32_MIN}) {
    block.type = type;
    EXPECT_FLOAT_EQ(ShownAt(1.25f, 0), 0.25f) << type;
  }
  for (const std::int32_t type : {11, INT32_MAX}) {
    block.type = type;
    EXPECT_EQ(ShownAt(1.25f, 0), 1) << type;
  }
}

TEST_F(TilingTest, AMirroredTagRunsThereAndBack) {
  tag.flags = 3;
  block.type = GradientU;
  EXPECT_FLOAT_EQ(ShownAt(1.25f, 0), 0.75f);
  EXPECT_FLOAT_EQ(ShownAt(-0.25f, 0), 0.25f);  // 1.75, mirrored
  EXPECT_FLOAT_EQ(ShownAt(2.5f, 0), 0.5f);
  EXPECT_EQ(ShownAt(1, 0), 1);
  block.type = GradientV;
  EXPECT_FLOAT_EQ(ShownAt(0, 0.25f), 0.75f);
  EXPECT_FLOAT_EQ(ShownAt(0, 2.25f), 0.75f);
}

// u = 1.25 is mirrored to 0.75, and v becomes 2 - 0.75 = 1.25 whatever it was:
// atan(0.75 / 0.25) / 2 pi = 0.1987918. A v of 1.4 mirrored by itself, 0.6, would give 0.0605.
TEST_F(TilingTest, AMirroredVIsTakenFromU) {
  tag.flags = 3;
  block.type = GradientAngle;
  EXPECT_NEAR(ShownAt(1.25f, 1.4f), 0.1987918, 1e-6);
  EXPECT_NEAR(ShownAt(1.25f, 1.9f), 0.1987918, 1e-6);
}

TEST_F(TilingTest, ATagThatDoesNotTileDisablesIt) {
  block.type = GradientU;
  for (const int flags : {0, 2, 4, -2}) {
    tag.flags = static_cast<std::int8_t>(flags);
    EXPECT_EQ(ShownAt(1.25f, 0), 1) << flags;
  }
}

TEST_F(TilingTest, ItNeedsCycleATagAndARender) {
  tag.flags = 1;
  block.type = GradientU;
  block.cycle = 0;
  EXPECT_EQ(ShownAt(1.25f, 0), 1);
  block.cycle = 1;
  render.textureTag = nullptr;
  EXPECT_EQ(ShownAt(1.25f, 0), 1);
  render.textureTag = &tag;
  sample.render = nullptr;
  EXPECT_EQ(ShownAt(1.25f, 0), 1);
}

}  // namespace
}  // namespace sorvanix::test
