// From a tile's height to a colour: the grout's edge, the size of the sample, the colour from afar,
// and what strange values do.
//
// With the default pattern, a grid of cells of 1/10 with slopes of half a cell, the height at
// (u, 0.05) is 20 u for u up to 0.05.
#include <cmath>

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
  ExpectVector(ColourAt(0.0125, 0.05), {0.4f, 0.3f, 0.95f}, 1e-6);  // height 0.25
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
      {8, .37, .11},      {9, .4, .05},       {10, .05, .025},    {11, .05, .025},
      {12, .05, .05},     {13, .05, .05},     {14, .05, .05},     {15, .05, 0},
      {16, .05, 0},       {17, .6, .5},       {18, .6, .5},       {19, .0625, 0},
      {20, .0625, 0},     {21, .0625, 0},     {22, .0625, 0},     {23, .6, .5},
      {24, .65, .5},      {25, .6, .5},       {26, .6, .3},       {27, .1, .1}};
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

// blur = 0.02 x 10 = 0.2. At the top the mask is 1 and nothing drifts. At height 0.1 one end of the
// sample, 0.3, is beyond the grout of 0.2: mask 0.5, drift 2 x 0.5 x 0.2, to the mean 0.5 of black
// and white: 0.2 x 0.5.
TEST_F(TilesBlurTest, WithoutABevelTheMaskTellsTheDriftAlone) {
  block.bevel = 0;
  block.groutWidth = 0.2f;
  block.color1 = {0, 0, 0};
  sample.blurOffset = 0.02f;
  EXPECT_EQ(ValueOf(1), 0);
  EXPECT_NEAR(ValueOf(0.1), 0.1, 1e-6);
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
      ExpectVector(ColourAt(u, 0.28), kThreeColours[pattern] ? three : two, 1e-6);
    }
  }
}

TEST_F(TilesFarTest, RandomTilesHaveTheMeanOfAllThree) {
  block.randomColor = 1;
  for (const std::int32_t pattern : {0, 1, 8, 27}) {
    block.pattern = pattern;
    ExpectVector(ColourAt(0.33, 0.28), {0.4f, 0.16f, 0.18f}, 1e-6);
  }
}

// Spirals take no random colours; their mean does.
TEST_F(TilesFarTest, ASpiralIsNeverRandomButFromAfarItIsTheMeanOfAllThree) {
  block.randomColor = 1;
  block.pattern = 23;
  ExpectVector(ColourAt(0.33, 0.28), {0.4f, 0.16f, 0.18f}, 1e-6);
  sample.blurOffset = 0;
  ExpectVector(ColourAt(0.6, 0.5), block.color2, 1e-6);  // a top of tile 1
  block.pattern = 24;
  ExpectVector(ColourAt(0.65, 0.5), block.color3, 1e-6);  // a top of tile 2
}

TEST_F(TilesFarTest, WithoutABevelThereIsNoGroutInTheMean) {
  block.bevel = 0;
  ExpectVector(ColourAt(0.33, 0.28), {0, 0.4f, 0}, 1e-6);
  block.pattern = 2;
  ExpectVector(ColourAt(0.33, 0.28), {0, 0.26666667f, 0.3f}, 1e-6);
}

// Mask 0.5: half grout, half the tile at the point.
TEST_F(TilesFarTest, WedgesDoNotDrift) {
  for (const std::int32_t pattern : {25, 26}) {
    block.pattern = pattern;
    ExpectVector(ColourAt(0.4, 0.501), {0.5f, pattern == 25 ? 0.25f : 0, pattern == 25 ? 0 : 0.45f},
                 1e-6);
  }
}

TEST_F(TilesFarTest, ABlurBelowZeroDoesNotDrift) {
  sample.blurOffset = -1000;
  ExpectVector(ColourAt(0.05, 0.05), {0.5f, 0.15f, 0}, 1e-6);
}

// --- scales of zero, patterns off the table ---

TEST_F(TilesFrameTest, AGlobalScaleOfZeroShowsOnePointEverywhere) {
  block.globalScale = 0;
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    const Vector origin = ColourAt(0, 0);
    EXPECT_TRUE(std::isfinite(origin.x)) << pattern;
    ExpectExactly(ColourAt(0.37, 12.3), origin);
  }
}

TEST_F(TilesFrameTest, AnAxisScaleOfZeroShowsOneLineAlongTheOther) {
  block.scaleU = 0;
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    const Vector line = ColourAt(0, 0.33);
    EXPECT_TRUE(std::isfinite(line.x)) << pattern;
    ExpectExactly(ColourAt(4.7, 0.33), line);
  }
}

TEST_F(TilesFrameTest, APatternOffTheTableIsAllGrout) {
  block.groutColor = {0.25f, 0.5f, 0.75f};
  for (const std::int32_t pattern : {-1, 28, INT32_MIN, INT32_MAX}) {
    block.pattern = pattern;
    ExpectExactly(ColourAt(0.05, 0.05), block.groutColor);
  }
}

TEST_F(TilesFrameTest, WithoutABevelAPatternOffTheTableIsAllOneTile) {
  block.bevel = 0;
  block.color1 = {0.25f, 0.5f, 0.75f};
  for (const std::int32_t pattern : {-1, 28}) {
    block.pattern = pattern;
    ExpectExactly(ColourAt(0, 0), block.color1);
    ExpectExactly(ColourAt(0.37, 12.3), block.color1);
  }
}

TEST_F(TilesFrameTest, AnOrientationOtherThanOneActsAsZero) {
  block.pattern = 15;
  block.scaleU = 2;
  const Vector plain = ColourAt(0.013, 0.05);
  for (const std::int32_t orientation : {2, -1, INT32_MAX}) {
    block.orientation = orientation;
    ExpectExactly(ColourAt(0.013, 0.05), plain);
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

}  // namespace
}  // namespace sorvanix::test
