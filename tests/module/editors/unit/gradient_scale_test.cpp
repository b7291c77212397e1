#include "module/editors/gradient_scale.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/module/editors/unit/ramp_readings.h"

namespace sorvanix {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(GradientScale, PositionsReachFromTheStripsLeftEndToItsRight) {
  EXPECT_EQ(PixelOfPosition(0), kStripLeft);
  EXPECT_EQ(PixelOfPosition(0.5f), 234);  // 461 * 0.5 + 4 = 234.5
  EXPECT_EQ(PixelOfPosition(1), kStripRight);
}

TEST(GradientScale, RoundsPixelsTowardsZero) {
  EXPECT_EQ(PixelOfPosition(0.0078125f), 7);   // 461 / 128 + 4 = 7.6
  EXPECT_EQ(PixelOfPosition(-0.015625f), -3);  // -461 / 64 + 4 = -3.2
}

TEST(GradientScale, KeepsWildPositionsOffTheArea) {
  for (const float wild : {kNan, -kInfinity, -1e30f}) EXPECT_LT(PixelOfPosition(wild), -1000);
  for (const float wild : {kInfinity, 1e30f}) EXPECT_GT(PixelOfPosition(wild), 1000);
}

TEST(GradientScale, PixelsStandForPositions) {
  EXPECT_EQ(PositionOfPixel(4), 0);
  EXPECT_FLOAT_EQ(PositionOfPixel(234), 0.4989154f);  // 230 * 0.0021691974
  EXPECT_EQ(PositionOfPixel(465), 1);                 // 461 * 0.0021691974 = 1.0000000014
  EXPECT_FLOAT_EQ(PositionOfPixel(3), -0.0021691974f);
}

TEST(GradientScale, KeepsPositionsOnTheRampWhenAsked) {
  EXPECT_EQ(RampPositionOfPixel(-100), 0);
  EXPECT_EQ(RampPositionOfPixel(1000), 1);
}

TEST(GradientScale, BiasesLieBetweenTheirKnots) {
  const Ramp ramp = test::ThreeKnots();
  EXPECT_EQ(PixelOfBias(ramp, 0), 32);   // 4 + (234 - 4) * 0.125 = 32.75
  EXPECT_EQ(PixelOfBias(ramp, 1), 291);  // 234 + (465 - 234) * 0.25 = 291.75
}

TEST(GradientScale, StepsHaveNoBiasHandles) {
  Ramp ramp = test::ThreeKnots();
  for (std::int32_t mode = RampCubic; mode <= RampLinear; ++mode) {
    ramp.interpolation = mode;
    EXPECT_TRUE(HasBiasHandles(ramp)) << mode;
  }
  for (const std::int32_t mode : {4, 5, 1000}) {
    ramp.interpolation = mode;
    EXPECT_FALSE(HasBiasHandles(ramp)) << mode;
  }
}

}  // namespace
}  // namespace sorvanix
