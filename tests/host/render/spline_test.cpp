#include "host/render/spline.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace sorvanix::host {
namespace {

constexpr std::array<float, 4> kTable = {0, 1, 4, 9};

float At(float value) { return SplineLookup(value, kTable.data(), 4); }

TEST(Spline, GoesThroughItsPoints) {
  EXPECT_EQ(At(0), 0);
  EXPECT_FLOAT_EQ(At(1.0f / 3), 1);
  EXPECT_FLOAT_EQ(At(2.0f / 3), 4);
  EXPECT_EQ(At(1), 9);
}

TEST(Spline, BetweenInnerPointsTakesFourPoints) {
  // Half way a Catmull-Rom segment is (-p0 + 9 p1 + 9 p2 - p3) / 16 = (0 + 9 + 36 - 9) / 16 = 2.25.
  EXPECT_FLOAT_EQ(At(0.5f), 2.25f);
}

TEST(Spline, AtTheEndsThePointsCountTwice) {
  // First segment: p0 = p1 = 0, p2 = 1, p3 = 4: (0 + 0 + 9 - 4) / 16.
  EXPECT_FLOAT_EQ(At(0.5f / 3), 5.0f / 16);
  // Last segment: 1, 4, 9, 9: (-1 + 36 + 81 - 9) / 16.
  EXPECT_FLOAT_EQ(At(2.5f / 3), 107.0f / 16);
}

TEST(Spline, AStraightLineStaysStraightInside) {
  constexpr std::array<float, 5> line = {0, 1, 2, 3, 4};
  for (const float u : {1.25f, 1.5f, 2.75f}) {
    EXPECT_FLOAT_EQ(SplineLookup(u / 4, line.data(), 5), u);
  }
}

TEST(Spline, LimitsItsArgumentAndTakesNanForTheStart) {
  EXPECT_EQ(At(-3), 0);
  EXPECT_EQ(At(2), 9);
  EXPECT_EQ(At(std::numeric_limits<float>::infinity()), 9);
  EXPECT_EQ(At(std::numeric_limits<float>::quiet_NaN()), 0);
}

TEST(Spline, FewPoints) {
  EXPECT_EQ(SplineLookup(0.5f, nullptr, 4), 0);
  EXPECT_EQ(SplineLookup(0.5f, kTable.data(), 0), 0);
  EXPECT_EQ(SplineLookup(0.5f, kTable.data(), -1), 0);
  EXPECT_EQ(SplineLookup(0.5f, kTable.data() + 2, 1), 4);
}

}  // namespace
}  // namespace sorvanix::host
