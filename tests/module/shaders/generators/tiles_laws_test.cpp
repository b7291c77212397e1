// Laws of the tile patterns: they repeat, take the colours that they are named for, have neither
// seams nor holes, and keep their grout's width however they are stretched.
#include <algorithm>
#include <cmath>
#include <random>
#include <set>

#include "tests/support/tiles_fixture.h"

namespace sorvanix::test {
namespace {

struct PatternLaw {
  double periodU, periodV;  // at scales of 1; of the colours too
  int colours;
};

// In the pattern's units: two or three tiles for the colours, over the scale of the row.
constexpr double kRow = 0.8660254 / 5;           // of triangles
constexpr double kHexagonRow = 1.5 / 15.588457;  // 17.320508 x 0.9
const PatternLaw kLaws[kTilePatternCount] = {
    {0.2, 0.2, 2},                  // 0 Grid
    {0.4, 0.2, 2},                  // 1 Brick: two bricks of 1/5
    {0.4, 0.6, 3},                  // 2 BrickThree: rows are two of offset, three of colour
    {0.4, 0.4, 3},                  // 3 Thirds
    {0.2, kRow, 2},                 // 4 triangles
    {0.2, 2 * kRow, 2},             // 5
    {0.2, 6 * kRow, 3},             // 6
    {1.0 / 3, 2 * kHexagonRow, 3},  // 7 hexagons: three of 1.7320508
    {25.6, 25.6, 0},                // 8 Cracks: the hash repeats after 256 cells
    {1, 25.6, 2},                   // 9 Planks: the hash of 256 rows
    {0.2, 0.2, 2},                  // 10 stairs: four rows climb two tiles
    {0.3, 0.1, 3},                  // 11: two rows climb one tile, three of colour together
    {0.2, 0.2, 2},                  // 12 Dots
    {0.2, 0.2, 2},                  // 13
    {0.2, 0.3, 3},                  // 14
    {0.2, 0.37, 2},                 // 15 Stripes: anything along v
    {0.3, 0.37, 3},                 // 16
    {1, 1, 2},                      // 17 Rings: one texture tile
    {1, 1, 3},                      // 18
    {0.25, 0.25, 2},                // 19 SineStripes
    {0.375, 0.25, 3},               // 20
    {0.25, 0.25, 2},                // 21 Zigzag
    {0.375, 0.25, 3},               // 22
    {1, 1, 2},                      // 23 Spiral
    {1, 1, 3},                      // 24
    {1, 1, 2},                      // 25 Wedges
    {1, 1, 3},                      // 26
    {0.4, 0.4, 2},                  // 27 Lattice
};

struct TilesLawsTest : TilesTest, ::testing::WithParamInterface<int> {
  const std::int32_t pattern = GetParam();
  const PatternLaw& law = kLaws[GetParam()];
  std::mt19937 random{1};

  double Between(double low, double high) {
    return low + (high - low) * (static_cast<double>(random()) * 0x1p-32);
  }
  bool HasIndices() const { return pattern != kCracks; }
  // Spirals and wedges start anew in each texture tile, and in its middle their borders meet, so
  // that heights are as steep as can be.
  bool BreaksOffNear(double u, double v) const {
    u -= std::floor(u) + 0.5;
    v -= std::floor(v) + 0.5;
    return pattern >= 23 && pattern <= 26 &&
           (std::hypot(u, v) < 0.1 || std::fabs(u) > 0.498 || std::fabs(v) > 0.498);
  }
};

INSTANTIATE_TEST_SUITE_P(AllPatterns, TilesLawsTest, ::testing::Range(0, kTilePatternCount));

// With grout between the tiles colours are continuous, so that the rounding of u + period is all
// that differs: 1e-7 of the coordinate through slopes of at most 300. Only where the cracks' slopes
// break off a point may fall on another side.
TEST_P(TilesLawsTest, RepeatsUnderItsPeriods) {
  block.pattern = pattern;
  block.color3 = {0, 1, 0.5f};
  const double rounding = 1e-4 * std::max({1.0, law.periodU, law.periodV});
  int unlike = 0;
  for (int i = 0; i < 500; ++i) {
    const double u = Between(0, 1), v = Between(0, 1);
    const Vector here = ColourAt(u, v);
    for (const double sign : {-1.0, 1.0}) {
      for (const Vector& there :
           {ColourAt(u + sign * law.periodU, v), ColourAt(u, v + sign * law.periodV)}) {
        const Vector off = {there.x - here.x, there.y - here.y, there.z - here.z};
        unlike += std::fabs(off.x) + std::fabs(off.y) + std::fabs(off.z) > rounding ? 1 : 0;
      }
    }
  }
  EXPECT_LE(unlike, pattern == kCracks ? 4 : 0);
}

TEST_P(TilesLawsTest, TakesTheColoursThatItIsNamedFor) {
  if (!HasIndices()) return;
  ShowIndices(pattern);
  std::set<int> seen;
  for (int i = 0; i < 4000; ++i) seen.insert(IndexAt(Between(0, 2), Between(0, 2)));
  EXPECT_EQ(seen, law.colours == 2 ? (std::set{1, 2}) : (std::set{1, 2, 3}));
}

TEST_P(TilesLawsTest, HeightsReachFromTheGroutToTheTop) {
  ShowHeights(pattern);
  double low = 1, high = 0;
  for (int i = 0; i < 4000; ++i) {
    const double height = HeightAt(Between(-1, 1), Between(-1, 1));
    ASSERT_GE(height, 0);
    ASSERT_LE(height, 1);
    low = std::min(low, height);
    high = std::max(high, height);
  }
  EXPECT_LT(low, 0.02);
  EXPECT_GT(high, 0.95);
}

// The steepest slopes rise by 1 over 1/45 of the texture; cracks break off by nature.
TEST_P(TilesLawsTest, HeightsAreContinuousAlsoFromTileToTile) {
  if (pattern == kCracks) return;
  ShowHeights(pattern);
  constexpr double kStep = 0.001, kSteepest = 45;
  for (int i = 0; i < 4000; ++i) {
    const double u = Between(-1, 1), v = Between(-1, 1), angle = Between(0, 6.2831853);
    if (BreaksOffNear(u, v)) continue;
    const double here = HeightAt(u, v);
    const double there = HeightAt(u + kStep * std::cos(angle), v + kStep * std::sin(angle));
    ASSERT_LE(std::fabs(there - here), kSteepest * kStep + 1e-4) << u << " " << v;
  }
}

// What a seam would break: inside a tile there is one colour.
TEST_P(TilesLawsTest, ColoursChangeInTheGroutAlone) {
  if (!HasIndices()) return;
  constexpr double kStep = 0.001, kSteepest = 45;
  for (int i = 0; i < 2000; ++i) {
    const double u = Between(-1, 1), v = Between(-1, 1), angle = Between(0, 6.2831853);
    if (BreaksOffNear(u, v)) continue;
    const Seen here = SeenAt(pattern, u, v);
    const Seen there = SeenAt(pattern, u + kStep * std::cos(angle), v + kStep * std::sin(angle));
    if (here.index == there.index) continue;
    ASSERT_LE(std::max(here.height, there.height), kSteepest * kStep + 1e-4) << u << " " << v;
  }
}

// The second axis of a pattern lies where the first did, mirrored along the diagonal.
TEST_P(TilesLawsTest, TheOrientationExchangesTheAxes) {
  block.pattern = pattern;
  block.scaleU = 1.5f;
  block.scaleV = 0.75f;
  TilesBlock plain = block;
  std::swap(plain.scaleU, plain.scaleV);
  TilesBlock turned = block;
  turned.orientation = 1;
  for (int i = 0; i < 200; ++i) {
    const double u = Between(0, 1), v = Between(0, 1);
    sample.delta = {0.001f, 0.003f, 0};
    block = turned;
    const Vector exchanged = ColourAt(u, v);
    sample.delta = {0.003f, 0.001f, 0};
    block = plain;
    ExpectExactly(exchanged, ColourAt(v, u));
  }
}

// Twice the scale shows at twice the coordinate what was there: exactly, for a power of two.
TEST_P(TilesLawsTest, TheGlobalScaleEnlarges) {
  if (pattern == 17 || pattern == 18 || (pattern >= 23 && pattern <= 26)) return;  // see below
  block.pattern = pattern;
  for (int i = 0; i < 200; ++i) {
    const double u = Between(-1, 1), v = Between(-1, 1);
    block.globalScale = 1;
    const Vector small = ColourAt(static_cast<float>(u), static_cast<float>(v));
    block.globalScale = 2;
    ExpectExactly(ColourAt(2.0 * static_cast<float>(u), 2.0 * static_cast<float>(v)), small);
  }
}

// --- single laws ---

using TilesGeometryTest = TilesTest;

// Rings keep to the middle of each texture tile whatever the scales: (0.5, 0.5) is the middle, and
// the picture repeats from tile to tile.
TEST_F(TilesGeometryTest, RingsSpiralsAndWedgesStayCentredAtAnyScale) {
  for (const std::int32_t pattern : {17, 18, 23, 24, 25, 26}) {
    block.pattern = pattern;
    for (const float scale : {0.5f, 1.0f, 3.0f}) {
      block.globalScale = scale;
      for (const auto& [u, v] : {std::pair{0.61, 0.5}, {0.3, 0.8}, {0.2, 0.1}}) {
        ExpectVector(ColourAt(u + 1, v), ColourAt(u, v), 1e-4);
        ExpectVector(ColourAt(u, v - 2), ColourAt(u, v), 1e-4);
      }
      if (pattern <= 18) ExpectVector(ColourAt(0.7, 0.6), ColourAt(0.3, 0.4), 1e-5);
    }
  }
}

// A point 0.01 from the end of a tile is as high as one 0.01 from its side: 0.01 over the width of
// the slope on the texture. Along u the ends of tiles of row 0 are at u = 0 (planks: 0.21718319, by
// the slide of row 0), the sides at v = 0; at 0.05 along the other axis neither interferes.
TEST_F(TilesGeometryTest, GroutHasOneWidthAtEndsAndSides) {
  struct Row {
    std::int32_t pattern;
    double end, slope, alongSideU, alongEndV;
  };
  const Row rows[] = {{0, 0, 0.05, 0.05, 0.05},         {1, 0, 0.05, 0.1, 0.05},
                      {2, 0, 0.05, 0.1, 0.05},          {3, 0, 1.0 / 30, 0.1, 0.1},
                      {9, 0.21718319, 0.05, 0.4, 0.05}, {10, 0, 0.025, 0.05, 0.025},
                      {11, 0, 0.025, 0.05, 0.025}};
  for (const Row& row : rows) {
    ShowHeights(row.pattern);
    for (const double distance : {0.005, 0.01, 0.02}) {
      const double height = distance / row.slope;
      EXPECT_NEAR(HeightAt(row.end + distance, row.alongEndV), height, 1e-4) << row.pattern;
      EXPECT_NEAR(HeightAt(row.alongSideU, distance), height, 1e-4) << row.pattern;
    }
  }
}

// Tiles that are stretched three times along u have the same slope on the texture, and so do those
// stretched along v.
TEST_F(TilesGeometryTest, GroutKeepsItsWidthWhereTilesAreStretched) {
  for (const std::int32_t pattern : {0, 1, 2, 9, 10, 11}) {
    ShowHeights(pattern);
    const double slope = pattern >= 10 ? 0.025 : 0.05;
    const double end = pattern == 9 ? 3 * 0.21718319 : 0;
    block.scaleU = 3;
    EXPECT_NEAR(HeightAt(end + 0.01, slope), 0.01 / slope, 1e-4) << pattern;
    EXPECT_NEAR(HeightAt(0.15, 0.01), 0.01 / slope, 1e-4) << pattern;
    block.scaleU = 1;
    block.scaleV = 3;
    EXPECT_NEAR(HeightAt(pattern == 9 ? 0.4 : 0.05, 0.01), 0.01 / slope, 1e-4) << pattern;
    block.scaleV = 1;
  }
}

// Where a row of hexagons ends in the points of the next, columns border on each other in the
// middle of those points. Each border is tried on the floats next to it.
TEST_F(TilesGeometryTest, HexagonsHaveNoSeamWhereColumnsMeet) {
  ShowIndices(7);
  const double v = 1.4 / 15.588457;  // in the points of row 1
  for (int column = 1; column < 60; ++column) {
    const double border = column * 1.7320508075688772 / 15.588457268119894;
    const int expected = IndexAt(border - 1e-4, v);
    float u = static_cast<float>(border) - 20e-7f;
    for (int i = 0; i < 400; ++i, u = std::nextafter(u, 100.0f)) {
      ASSERT_EQ(IndexAt(u, v), expected) << column << " at " << u;
    }
  }
}

// Where two rows of triangles border on each other one colour ends and another begins, without a
// third between them. Each border is tried on the floats next to it.
TEST_F(TilesGeometryTest, TrianglesHaveNoSeamBetweenRows) {
  ShowIndices(6);
  for (int row = 1; row < 40; ++row) {
    const double border = row * 0.8660254037844386 / 5;
    int changes = 0, last = IndexAt(0.05, border - 1e-4);
    float v = static_cast<float>(border) - 20e-7f;
    for (int i = 0; i < 400; ++i, v = std::nextafter(v, 100.0f)) {
      const int index = IndexAt(0.05, v);
      changes += index != last ? 1 : 0;
      last = index;
    }
    EXPECT_EQ(changes, 1) << row;
  }
}

// 0.5 is x = 5 exactly, which few other numbers are: ten times a float is a whole number for
// multiples of a half alone.
TEST_F(TilesGeometryTest, APointOnABorderBelongsToTheCellThatBeginsThere) {
  ShowIndices(15);
  EXPECT_EQ(IndexAt(0, 0), 1);
  EXPECT_EQ(IndexAt(0.5, 0), 2) << "band 5";
  EXPECT_EQ(IndexAt(std::nextafter(0.5f, 0.0f), 0), 1) << "still band 4";
  EXPECT_EQ(IndexAt(1, 0), 1) << "band 10";
  EXPECT_EQ(IndexAt(-0.5, 0), 2) << "band -5";
  EXPECT_EQ(IndexAt(std::nextafter(-0.5f, -1.0f), 0), 1) << "band -6";
}

// A row of planks slides as a whole: the pattern along it repeats from plank to plank.
TEST_F(TilesGeometryTest, ARowOfPlanksHasOneSlide) {
  ShowHeights(9);
  for (const double v : {0.05, 0.15, 0.25, 12.35}) {
    for (double u = 0; u < 0.5; u += 0.01) {
      EXPECT_NEAR(HeightAt(u, v), HeightAt(u + 0.5, v), 1e-4);
      EXPECT_NEAR(HeightAt(u, v), HeightAt(u + 7.5, v), 1e-4);
    }
  }
}

// Heights of cracks rise by twice the distance from the border, in units of 1/10. Where the second
// nearest point changes they break off: few points are so near to that.
TEST_F(TilesGeometryTest, CracksRiseAtOneRateFromTheirBorders) {
  ShowHeights(kCracks);
  constexpr double kStep = 1e-4;
  int measured = 0, right = 0;
  for (int i = 0; i < 2000; ++i) {
    const double u = 0.37 * i - std::floor(0.37 * i), v = 0.11 * i - std::floor(0.11 * i);
    const double height = HeightAt(u, v);
    if (height < 0.1 || height > 0.9) continue;
    const double du = (HeightAt(u + kStep, v) - HeightAt(u - kStep, v)) / (2 * kStep);
    const double dv = (HeightAt(u, v + kStep) - HeightAt(u, v - kStep)) / (2 * kStep);
    ++measured;
    right += std::fabs(std::hypot(du, dv) - 20) < 0.2 ? 1 : 0;
  }
  EXPECT_GT(measured, 500);
  EXPECT_GT(right, 0.97 * measured);
}

}  // namespace
}  // namespace sorvanix::test
