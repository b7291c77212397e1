#include "module/noise/shaping.h"

#include <gtest/gtest.h>

#include <limits>

namespace sorvanix {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(SoftStep, IsExactOutsideItsEnds) {
  EXPECT_EQ(SoftStep(0.1875, 0.25f, 0.75f, 2), 0);
  EXPECT_EQ(SoftStep(0.25, 0.25f, 0.75f, 2), 0);
  EXPECT_EQ(SoftStep(0.375, 0.25f, 0.75f, 2), 0.15625);  // 1/16 * 2.5
  EXPECT_EQ(SoftStep(0.75, 0.25f, 0.75f, 1), 1);         // at hi, whatever the scale is
}

TEST(SoftStep, TakesItsScaleAsTold) {
  EXPECT_EQ(SoftStep(0.375, 0.25f, 0.75f, 4), 0.5);  // the curve at 0.125 * 4
}

TEST(Band, IsALinearStepAroundTheMiddle) {
  EXPECT_EQ(Band(0.5, 0.25), 0.5);
  EXPECT_EQ(Band(0.375, 0.25), 0.25);
  EXPECT_EQ(Band(0.1875, 0.25), 0);
  EXPECT_EQ(Band(0.9375, 0.25), 1);
}

TEST(Band, OfNoWidthIsAHardStepThatTheMiddleFails) {
  EXPECT_EQ(Band(0.5, 0), 0);
  EXPECT_EQ(Band(0.5000001, 0), 1);
}

// A negative width swaps the ends: the step falls. (0.375 - 0.75) / (0.25 - 0.75) = 0.75.
TEST(Band, FallsForANegativeWidth) { EXPECT_EQ(Band(0.375, -0.25), 0.75); }

TEST(Bias, SendsPowersOfTheHalfToPowersOfB) {
  EXPECT_NEAR(Bias(0.5, 0.8f), 0.8f, 1e-12);
  EXPECT_NEAR(Bias(0.25, 0.95f), 0.95f * 0.95f, 1e-7);
  EXPECT_NEAR(Bias(0.4, 0.25f), 0.16, 1e-12);  // b = 1/4 squares
  EXPECT_EQ(Bias(0, 0.6f), 0);
  EXPECT_EQ(Bias(1, 0.6f), 1);
}

TEST(Greater, KeepsTheFirstAgainstNan) {
  EXPECT_EQ(Greater(1, 2), 2);
  EXPECT_EQ(Greater(2, 1), 2);
  EXPECT_EQ(Greater(1, kNan), 1);
}

TEST(Fold, IsTwiceTheDistanceFromTheMiddle) {
  EXPECT_EQ(Fold(0.5), 0);
  EXPECT_EQ(Fold(0), 1);
  EXPECT_EQ(Fold(0.75), 0.5);
}

}  // namespace
}  // namespace sorvanix
