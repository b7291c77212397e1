// Tiles through the contract: the grout's edge, colours and blur of a tile, and the paths of a
// render: nesting, bump, slots, threads.
//
// With the default pattern, a grid of cells of 1/10 with slopes of half a cell, the height at
// (u, 0.05) is 20 u for u up to 0.05.
#include <cmath>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

#include "tests/support/tiles_fixture.h"

namespace sorvanix::test {
namespace {

struct TilesFrameTest : TilesTest {
  TilesFrameTest() {
    block.smoothBevel = 0;
    block.groutColor = {0, 0, 0};
    block.color1 = {1, 1, 1};
    block.color2 = {1, 1, 1};
    block.color3 = {1, 1, 1};
  }
  // The colour where the height of the grid is this.
  double ValueOf(double height) { return ColourAt(height / 20, 0.05).x; }
};

// --- the edge: from groutWidth to (1 - groutWidth) bevel + groutWidth ---

// From 0.2 to 0.8 x 0.5 + 0.2 = 0.6.
TEST_F(TilesFrameTest, TheBevelTakesItsShareOfWhatTheGroutLeaves) {
  block.groutWidth = 0.2f;
  block.bevel = 0.5f;
  EXPECT_EQ(ValueOf(0), 0);
  EXPECT_EQ(ValueOf(0.19), 0);
  EXPECT_NEAR(ValueOf(0.3), 0.25, 1e-5);
  EXPECT_NEAR(ValueOf(0.4), 0.5, 1e-5);
  EXPECT_EQ(ValueOf(0.61), 1);
}

// t = 0.25: 3 t^2 - 2 t^3 = 0.1875 - 0.03125.
TEST_F(TilesFrameTest, ASmoothBevelEases) {
  block.smoothBevel = 1;
  block.groutWidth = 0.2f;
  block.bevel = 0.5f;
  EXPECT_EQ(ValueOf(0.19), 0);
  EXPECT_NEAR(ValueOf(0.3), 0.15625, 1e-5);
  EXPECT_NEAR(ValueOf(0.4), 0.5, 1e-5);
  EXPECT_EQ(ValueOf(0.61), 1);
}

TEST_F(TilesFrameTest, TheEdgeMixesFromGroutToTile) {
  block.groutWidth = 0;
  block.bevel = 1;
  block.groutColor = {0.2f, 0.4f, 0.6f};
  block.color1 = {1, 0, 2};
  ExpectColour(ColourAt(0.0125, 0.05), {0.4f, 0.3f, 0.95f}, 1e-6);  // height 0.25
}

TEST_F(TilesFrameTest, EveryPatternIsGroutOnItsLinesAndTileInside) {
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    int grout = 0, tile = 0;
    for (int i = 0; i < 64 * 64; ++i) {
      const double value = ColourAt(i % 64 / 64.0 + 0.003, i / 64 / 64.0 + 0.003).x;
      ASSERT_GE(value, 0);
      ASSERT_LE(value, 1);
      grout += value == 0 ? 1 : 0;
      tile += value == 1 ? 1 : 0;
    }
    EXPECT_GT(grout, 20) << pattern;
    EXPECT_GT(tile, 1000) << pattern;
  }
}

TEST_F(TilesFrameTest, WithoutABevelTheTileStandsAloneAlsoOnItsBorder) {
  block.bevel = 0;
  block.groutWidth = 0.5f;
  EXPECT_EQ(ValueOf(0), 1);
  EXPECT_EQ(ValueOf(0.1), 1);
}

TEST_F(TilesFrameTest, CracksAreNeverHard) {
  block.pattern = kCracks;
  block.bevel = 0;
  block.groutWidth = 0.2f;
  int grout = 0, tile = 0;
  for (int i = 0; i < 1000; ++i) {
    const double value = ColourAt(0.013 * i, 0.37).x;
    grout += value == 0 ? 1 : 0;
    tile += value == 1 ? 1 : 0;
  }
  EXPECT_GT(grout, 50);
  EXPECT_EQ(grout + tile, 1000) << "the edge itself is as good as hard";
}

// lo and hi are both 1: only the very top is tile.
TEST_F(TilesFrameTest, AGroutWidthOfOneLeavesTheTops) {
  block.groutWidth = 1;
  EXPECT_EQ(ValueOf(0.99), 0);
  EXPECT_EQ(ColourAt(0.25, 0.25).x, 1) << "(2.5, 2.5), exactly";
}

// --- the size of the sample ---

struct TilesBlurTest : TilesFrameTest {
  TilesBlurTest() {
    block.groutWidth = 0;
    block.bevel = 1;
  }
  // What a blur gives at height 0.1: the mask is the mean of the heights at both ends; from it the
  // colour drifts by 2 (1 - mask) blur to 0.5, the mean of white tiles with half a slope of black.
  static double Blurred(double blur) {
    const double mask = (std::fmax(0.1 - blur, 0) + std::fmin(0.1 + blur, 1)) / 2;
    return mask + (0.5 - mask) * std::fmin(2 * (1 - mask) * blur, 1);
  }
};

// blur = 0.02 x 10 = 0.2: mask (0 + 0.3) / 2 = 0.15, drift 2 x 0.85 x 0.2 = 0.34:
// 0.15 + 0.35 x 0.34 = 0.269.
TEST_F(TilesBlurTest, TheDeltaWidensTheEdgeAndDriftsToTheMean) {
  sample.delta = {0.02f, 0, 0};
  EXPECT_NEAR(Blurred(0.2), 0.269, 1e-12);
  EXPECT_NEAR(ValueOf(0.1), 0.269, 1e-5);
}

TEST_F(TilesBlurTest, TheDeltasAddWithTheirSigns) {
  sample.delta = {0.03f, -0.01f, 5};
  EXPECT_NEAR(ValueOf(0.1), 0.269, 1e-5) << "0.03 - 0.01; the third does not count";
  sample.delta = {-0.01f, 0.03f, 0};
  EXPECT_NEAR(ValueOf(0.1), 0.269, 1e-5);
}

TEST_F(TilesBlurTest, BlurScaleMultipliesAndBlurOffsetAdds) {
  sample.delta = {0.02f, 0, 0};
  sample.blurScale = 0.25f;
  sample.blurOffset = 0.015f;  // (0.02 x 0.25 + 0.015) x 10
  EXPECT_NEAR(ValueOf(0.1), 0.269, 1e-5);
}

// delta.x / (2 x 0.5) + delta.y / (2 x 1) = 0.01 + 0.01.
TEST_F(TilesBlurTest, TheScalesDivideTheDeltas) {
  block.globalScale = 2;
  block.scaleU = 0.5f;
  block.pattern = 15;
  sample.delta = {0.01f, 0.02f, 0};
  EXPECT_NEAR(ColourAt(0.1 / 20, 0).x, Blurred(0.2), 1e-5) << "x = u: 2 x 0.5 is 1";
}

TEST_F(TilesBlurTest, ARenderWithoutFilteringHasNoBlur) {
  BeginRender();
  sample.delta = {0.02f, 0, 0};
  sample.blurOffset = 1;
  EXPECT_NEAR(ValueOf(0.1), Blurred(10), 1e-5);
  render.filteringOn = 0;
  EXPECT_NEAR(ValueOf(0.1), 0.1, 1e-5);
}

TEST_F(TilesBlurTest, AScaleOfZeroLeavesNoDeltas) {
  sample.delta = {0.02f, 0.02f, 0};
  block.pattern = 15;
  block.scaleV = 0;
  EXPECT_NEAR(ColourAt(0.1 / 20, 0).x, 0.1, 1e-5);
}

// Each pattern's blur in its own units: told by how far it draws the top of a tile down, to the
// mean of height - blur and 1, and from there to 0.5.
TEST_F(TilesBlurTest, EachPatternMeasuresTheSampleInItsOwnUnits) {
  constexpr double kUnits[kTilePatternCount] = {
      10, 10, 10, 15, 8.6602545, 8.6602545, 8.6602545, 17.320509, 10, 10, 10, 10, 10, 10,
      10, 10, 10, 10, 10,        8,         8,         8,         8,  10, 10, 1,  1,  15};
  struct Top {
    std::int32_t pattern;
    double u, v;
  };
  const Top tops[] = {
      {0, .05, .05},      {1, .1, .05},       {2, .1, .05},       {3, .1, .1},
      {4, .1, .11547005}, {5, .1, .11547005}, {6, .1, .11547005}, {7, .05555556, .03207501},
      {9, .4, .05},       {10, .05, .025},    {11, .05, .025},    {12, .05, .05},
      {13, .05, .05},     {14, .05, .05},     {15, .05, 0},       {16, .05, 0},
      {17, .6, .5},       {18, .6, .5},       {19, .0625, 0},     {20, .0625, 0},
      {21, .0625, 0},     {22, .0625, 0},     {23, .6, .5},       {24, .65, .5},
      {25, .6, .5},       {26, .6, .3},       {27, .1, .1}};
  for (const Top& top : tops) {
    block.pattern = top.pattern;
    sample.delta = {0, 0, 0};
    const double height = ColourAt(top.u, top.v).x;
    sample.delta = {0.01f, 0, 0};
    const double blur = 0.01 * kUnits[top.pattern];
    const double mask = (height - blur + std::fmin(height + blur, 1)) / 2;
    const double drift = top.pattern == 25 || top.pattern == 26 ? 0 : 2 * (1 - mask) * blur;
    EXPECT_NEAR(ColourAt(top.u, top.v).x, mask + (0.5 - mask) * drift, 1e-4) << top.pattern;
  }
}

// --- the colour from afar ---

struct TilesFarTest : TilesTest {
  TilesFarTest() {
    sample.blurOffset = 1000;  // mask 0.5, drift 1
    block.groutWidth = 0.2f;
    block.bevel = 0.5f;
    block.groutColor = {1, 0, 0};
    block.color1 = {0, 0.3f, 0};
    block.color2 = {0, 0.5f, 0};
    block.color3 = {0, 0, 0.9f};
  }
};
constexpr bool kThreeColours[kTilePatternCount] = {
    false, false, true, true,  false, false, true, true,  true, false, false, true,  false, false,
    true,  false, true, false, true,  false, true, false, true, false, true,  false, true,  false};

// The grout's share: 0.8 x 0.5 x 0.5 + 0.2 = 0.4. Two colours: (0, 0.4, 0), three:
// (0, 0.26666667, 0.3); both 0.6 of that, and 0.4 of red.
TEST_F(TilesFarTest, AWideBlurIsTheMeanOfGroutAndTiles) {
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    if (pattern == 25 || pattern == 26) continue;
    block.pattern = pattern;
    for (const double u : {0.01, 0.33, 0.7}) {
      const Vector three = {0.4f, 0.16f, 0.18f}, two = {0.4f, 0.24f, 0};
      ExpectColour(ColourAt(u, 0.28), kThreeColours[pattern] ? three : two, 1e-6);
    }
  }
}

TEST_F(TilesFarTest, RandomTilesHaveTheMeanOfAllThree) {
  block.randomColor = 1;
  for (const std::int32_t pattern : {0, 1, 8, 27}) {
    block.pattern = pattern;
    ExpectColour(ColourAt(0.33, 0.28), {0.4f, 0.16f, 0.18f}, 1e-6);
  }
}

// Spirals take no random colours; their mean does.
TEST_F(TilesFarTest, ASpiralIsNeverRandomButFromAfarItIsTheMeanOfAllThree) {
  block.randomColor = 1;
  block.pattern = 23;
  ExpectColour(ColourAt(0.33, 0.28), {0.4f, 0.16f, 0.18f}, 1e-6);
  sample.blurOffset = 0;
  ExpectColour(ColourAt(0.6, 0.5), block.color2, 1e-6);  // a top of tile 1
  block.pattern = 24;
  ExpectColour(ColourAt(0.65, 0.5), block.color3, 1e-6);  // a top of tile 2
}

TEST_F(TilesFarTest, WithoutABevelThereIsNoGroutInTheMean) {
  block.bevel = 0;
  ExpectColour(ColourAt(0.33, 0.28), {0, 0.4f, 0}, 1e-6);
  block.pattern = 2;
  ExpectColour(ColourAt(0.33, 0.28), {0, 0.26666667f, 0.3f}, 1e-6);
}

// Mask 0.5: half grout, half the tile at the point.
TEST_F(TilesFarTest, WedgesDoNotDrift) {
  for (const std::int32_t pattern : {25, 26}) {
    block.pattern = pattern;
    ExpectColour(ColourAt(0.4, 0.501), {0.5f, pattern == 25 ? 0.25f : 0, pattern == 25 ? 0 : 0.45f},
                 1e-6);
  }
}

TEST_F(TilesFarTest, ABlurBelowZeroDoesNotDrift) {
  sample.blurOffset = -1000;
  ExpectColour(ColourAt(0.05, 0.05), {0.5f, 0.15f, 0}, 1e-6);
}

// --- scales of zero, patterns off the table ---

TEST_F(TilesFrameTest, AGlobalScaleOfZeroShowsOnePointEverywhere) {
  block.globalScale = 0;
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    const Vector origin = ColourAt(0, 0);
    EXPECT_TRUE(std::isfinite(origin.x)) << pattern;
    ExpectColour(ColourAt(0.37, 12.3), origin, 0);
  }
}

TEST_F(TilesFrameTest, AnAxisScaleOfZeroShowsOneLineAlongTheOther) {
  block.scaleU = 0;
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    const Vector line = ColourAt(0, 0.33);
    EXPECT_TRUE(std::isfinite(line.x)) << pattern;
    ExpectColour(ColourAt(4.7, 0.33), line, 0);
  }
}

TEST_F(TilesFrameTest, APatternOffTheTableIsAllGrout) {
  block.groutColor = {0.25f, 0.5f, 0.75f};
  for (const std::int32_t pattern : {-1, 28, INT32_MIN, INT32_MAX}) {
    block.pattern = pattern;
    ExpectColour(ColourAt(0.05, 0.05), block.groutColor, 0);
  }
}

TEST_F(TilesFrameTest, AnOrientationOtherThanOneActsAsZero) {
  block.pattern = 15;
  block.scaleU = 2;
  const Vector plain = ColourAt(0.013, 0.05);
  for (const std::int32_t orientation : {2, -1, INT32_MAX}) {
    block.orientation = orientation;
    ExpectColour(ColourAt(0.013, 0.05), plain, 0);
  }
  block.orientation = 1;
  EXPECT_NE(ColourAt(0.013, 0.05).x, plain.x);
}

// Whatever a file or a message puts into the block, Output comes back.
TEST_F(TilesFrameTest, HostileBlocksAreSurvived) {
  const float values[] = {0, -1, 1e-38f, 1e38f, -1e38f, NAN, INFINITY, -INFINITY};
  const TilesBlock defaults = block;
  float TilesBlock::*const fields[] = {
      &TilesBlock::globalScale, &TilesBlock::scaleU, &TilesBlock::scaleV,       &TilesBlock::arms,
      &TilesBlock::groutWidth,  &TilesBlock::bevel,  &TilesBlock::bumpStepScale};
  for (std::int32_t pattern = -1; pattern <= kTilePatternCount; ++pattern) {
    for (const auto field : fields) {
      for (const float value : values) {
        block = defaults;
        block.pattern = pattern;
        block.*field = value;
        for (const std::int32_t option : {0, 1, INT32_MIN, INT32_MAX}) {
          block.orientation = block.randomColor = block.smoothBevel = option;
          BeginRender();
          for (const float u : values) ColourAt(u, 0.3), ColourAt(0.3, u);
          instance.channel = ChannelBump;
          ColourAt(value, value);
          instance.channel = ChannelColour;
          record.FreeRender(&instance);
        }
      }
    }
  }
}

// --- slots: nested shaders and their taps ---

struct TilesRenderTest : TilesTest {
  TilesRenderTest() { ShowHeights(0); }
  static constexpr float kStep = 0.005f;  // 0.1 of height
};

TEST_F(TilesRenderTest, ANestedShaderReadsItsPointFromItsOwnSlot) {
  block.nested = 1;
  BeginRender(3);
  FakeHost::cpuIndex = 2;
  Slot(2).uvwPoint = {0.125f, 0.05f, 9};
  Slot(2).uvwOffset = {-0.1f, 0, 9};
  EXPECT_NEAR(HeightAt(50, 50), 0.5, 1e-5);  // 20 x 0.025
}

TEST_F(TilesRenderTest, ItIsScaledLikeAnyOther) {
  block.nested = 1;
  block.globalScale = 2;
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.1f, 0};
  EXPECT_NEAR(HeightAt(50, 50), 0.5, 1e-5);
}

TEST_F(TilesRenderTest, AStandAloneShaderReadsTheSample) {
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.05f, 0};
  Slot(0).tap = TapPlusU;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5);
}

// Unlike other shaders, it has no outer channel in which it acts as if it stood alone.
TEST_F(TilesRenderTest, TheOuterChannelDoesNotCount) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {0.025f, 0.05f, 0};
  Slot(0).outerChannel = ChannelStandalone;
  EXPECT_NEAR(HeightAt(50, 50), 0.5, 1e-5);
}

// Height 0.5 at (0.025, 0.05); stripes along v show the taps in y.
TEST_F(TilesRenderTest, TapsMoveThePointByTheStep) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {0.025f, 0.05f, 0};
  const double alongX[] = {0.5, 0.6, 0.4, 0.5, 0.5, 0.5, 0.5};
  const std::int32_t taps[] = {0, TapPlusU, TapMinusU, TapPlusV, TapMinusV, 5, -1};
  for (int i = 0; i < 7; ++i) {
    Slot(0).tap = taps[i];
    EXPECT_NEAR(HeightAt(0, 0), alongX[i], 1e-5) << taps[i];
  }
  Slot(0).uvwPoint = {0.05f, 0.025f, 0};
  const double alongY[] = {0.5, 0.5, 0.5, 0.6, 0.4, 0.5, 0.5};
  for (int i = 0; i < 7; ++i) {
    Slot(0).tap = taps[i];
    EXPECT_NEAR(HeightAt(0, 0), alongY[i], 1e-5) << taps[i];
  }
}

// The step is in the plane of the tiles: behind the scales.
TEST_F(TilesRenderTest, TheStepIsNotScaledButByItsFactor) {
  block.nested = 1;
  block.globalScale = 2;
  block.bumpStepScale = 2;
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.1f, 0};
  Slot(0).tap = TapPlusU;
  EXPECT_NEAR(HeightAt(0, 0), 0.7, 1e-5);
}

TEST_F(TilesRenderTest, WithoutSlotsOrARenderTheSampleIsRead) {
  block.nested = 1;
  sample.render = &render;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no slots";
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.05f, 0};
  Slot(0).tap = TapPlusU;
  sample.render = nullptr;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no render";
}

// --- the bump path ---

struct TilesBumpTest : TilesRenderTest {
  TilesBumpTest() {
    instance.channel = ChannelBump;
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {2, 0, 0};
    render.tangentV = {0, 0, 1};
  }
};

// At (0.025, 0.06) the slope along x is 20, that of the side, 1 - |...|, does not reach: x = 0.25,
// y = 0.6, heights 0.5 and 0.8. Behind minus ahead: (0.4 - 0.6) x 7.4 = -1.48, times tangentU 2.
// m = (-2.96, 1, 0), |m| = sqrt(8.7616 + 1) = 3.12435593.
TEST_F(TilesBumpTest, BendsTheNormalBehindMinusAheadInX) {
  BeginRender();
  ExpectColour(ColourAt(0.025, 0.06), {0, 0, 0}, 0);
  ExpectColour(render.bumpNormal, {-0.94739526f, 0.32006597f, 0}, 1e-4);
}

// At (0.06, 0.025): ahead minus behind in y: (0.6 - 0.4) x 7.4 = 1.48 along tangentV.
// m = (0, 1, 1.48), |m| = sqrt(3.1904) = 1.78616908.
TEST_F(TilesBumpTest, BendsTheNormalAheadMinusBehindInY) {
  BeginRender();
  ColourAt(0.06, 0.025);
  ExpectColour(render.bumpNormal, {0, 0.55985741f, 0.82858897f}, 1e-4);
}

// The colour's mean counts: of (1, 0.5, 0) it is 0.5, which halves the slope.
// m = (-1.48, 1, 0), as above.
TEST_F(TilesBumpTest, TheMeanOfTheColourIsTheHeight) {
  block.color1 = {1, 0.5f, 0};
  BeginRender();
  ColourAt(0.025, 0.06);
  ExpectColour(render.bumpNormal, {-0.82858897f, 0.55985741f, 0}, 1e-4);
}

// The four neighbours by the shader's own colour channel, at other points of every pattern: the
// same normal to the rounding of the coordinates.
TEST_F(TilesBumpTest, AgreesWithFiniteDifferencesOfTheShadersOwnColour) {
  constexpr double kSlope = 7.4;
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    for (const auto& [u, v] : {std::pair{0.213, 0.337}, {0.611, 0.872}, {0.155, 0.046}}) {
      ShowHeights(pattern);
      BeginRender();
      instance.channel = ChannelColour;
      const double du = (HeightAt(u - kStep, v) - HeightAt(u + kStep, v)) * kSlope;
      const double dv = (HeightAt(u, v + kStep) - HeightAt(u, v - kStep)) * kSlope;
      instance.channel = ChannelBump;
      render.bumpNormal = {0, 1, 0};
      ColourAt(u, v);
      const double length = std::sqrt(4 * du * du + 1 + dv * dv);
      ExpectColour(render.bumpNormal,
                   {static_cast<float>(2 * du / length), static_cast<float>(1 / length),
                    static_cast<float>(dv / length)},
                   2e-4);
      record.FreeRender(&instance);
    }
  }
}

// Exchanged axes are not exchanged back: x, which is v here, bends along tangentU.
TEST_F(TilesBumpTest, XBendsAlongUInBothOrientations) {
  block.orientation = 1;
  BeginRender();
  ColourAt(0.06, 0.025);
  ExpectColour(render.bumpNormal, {-0.94739526f, 0.32006597f, 0}, 1e-4);
}

TEST_F(TilesBumpTest, TheStepScaleWidensTheStep) {
  block.bumpStepScale = 2;  // (0.3 - 0.7) x 7.4 x 2 = -5.92; |m| = sqrt(36.0464) = 6.00386542
  BeginRender();
  ColourAt(0.025, 0.06);
  ExpectColour(render.bumpNormal, {-0.98603142f, 0.16655936f, 0}, 1e-4);
}

TEST_F(TilesBumpTest, ATapOfAnEnclosingFilterDoesNotMoveTheFourNeighbours) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {0.025f, 0.06f, 0};
  Slot(0).tap = TapPlusV;
  ColourAt(7, 7);
  ExpectColour(render.bumpNormal, {-0.94739526f, 0.32006597f, 0}, 1e-4);
}

TEST_F(TilesBumpTest, ANormalOfNoLengthStaysZero) {
  BeginRender();
  render.bumpNormal = {};
  block.color1 = {0, 0, 0};  // as the grout: level everywhere
  ColourAt(0.025, 0.06);
  ExpectColour(render.bumpNormal, {0, 0, 0}, 0);
}

TEST_F(TilesBumpTest, WithoutSlotsOrARenderTheColourIsShown) {
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no render";
  sample.render = &render;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no slots";
  ExpectColour(render.bumpNormal, {0, 1, 0}, 0);
}

// --- InitRender, FreeRender ---

TEST_F(TilesRenderTest, InitRenderMakesOneSlotPerCpuWithTheStepInEach) {
  block.bumpStepScale = 3;
  BeginRender(4);
  EXPECT_EQ(host.calls.back(), "alloc(1056)");  // 4 x 264
  for (int cpu = 0; cpu < 4; ++cpu) {
    const FootprintBlock clear = {};
    EXPECT_EQ(std::memcmp(&Slot(cpu), &clear, sizeof clear), 0);
    const float* tail = reinterpret_cast<const float*>(&Slot(cpu) + 1);
    EXPECT_FLOAT_EQ(tail[0], 0.015f);
    EXPECT_EQ(tail[1], 1.0f);
  }
}

TEST_F(TilesRenderTest, InitRenderDoesNothingWithoutARender) {
  const RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
}

TEST_F(TilesRenderTest, AFailedSlotAllocationShowsAMessageAndTheRenderGoesOn) {
  host.failAllocation = 1;
  const int blocks = host.liveBlocks();
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
  EXPECT_EQ(host.calls.back(), "messageDialog(\"Couldn't Allocate Tiles Globals\", 48)");
  sample.render = &render;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5);
}

TEST_F(TilesRenderTest, FreeRenderTwiceIsHarmless) {
  const int blocks = host.liveBlocks();
  BeginRender();
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  record.FreeRender(&instance);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

// --- what Output costs, and threads ---

TEST_F(TilesRenderTest, OutputAsksTheHostForNothingButTheCpuOnce) {
  static int asked;
  asked = 0;
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++asked;
    return std::int32_t{0};
  };
  block.nested = 1;
  BeginRender();
  const std::size_t calls = host.calls.size();
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
      instance.channel = channel;
      asked = 0;
      ColourAt(0.3, 0.4);
      EXPECT_LE(asked, 1);
    }
  }
  EXPECT_EQ(host.calls.size(), calls);
}

TEST_F(TilesRenderTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr int kSide = 64;
  block.randomColor = 1;
  BeginRender(8);
  const auto shade = [&](int begin, int end, std::vector<Vector>& picture) {
    for (int i = begin; i < end; ++i) {
      ChannelSample own = sample;
      own.uvw = {float(i % kSide) / kSide, float(i / kSide % kSide) / kSide, 0};
      own.delta = {0.5f / kSide, 0.5f / kSide, 0};
      record.Output(&picture[std::size_t(i)], &instance, &own);
    }
  };
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    std::vector<Vector> one(kSide * kSide), eight(kSide * kSide);
    shade(0, kSide * kSide, one);
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
      threads.emplace_back([&, t] {
        FakeHost::cpuIndex = t;
        shade(t * kSide * kSide / 8, (t + 1) * kSide * kSide / 8, eight);
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0) << pattern;
  }
}

}  // namespace
}  // namespace sorvanix::test
