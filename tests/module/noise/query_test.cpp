#include "module/noise/query.h"

#include <gtest/gtest.h>

#include <limits>

namespace sorvanix {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

NoiseQuery With(float octaves, float footprint, float detail) {
  return {.x = 0,
          .y = 0,
          .z = 0,
          .octaves = octaves,
          .time = 0,
          .absolute = 0,
          .footprint = footprint,
          .detail = detail};
}

TEST(EffectiveOctaves, WithoutAFootprintAreCappedAtTwenty) {
  EXPECT_EQ(EffectiveOctaves(With(5.5f, 0, 1)), 5.5f);
  EXPECT_EQ(EffectiveOctaves(With(20, 0, 1)), 20);
  EXPECT_EQ(EffectiveOctaves(With(25, 0, 1)), 20);     // (20 - 25) * 1 + 25
  EXPECT_EQ(EffectiveOctaves(With(25, 0, 0.5f)), 20);  // (20 - 25) * 0.5 + 25 = 22.5, clamped
  EXPECT_EQ(EffectiveOctaves(With(25, 0, 0)), 20);     // 25, clamped
  EXPECT_EQ(EffectiveOctaves(With(-5, 0, 1)), -5);     // at most the cap: taken as it is
}

// cap = 0.5 / (footprint * detail)
TEST(EffectiveOctaves, LandOnTheCapForADetailOfOneOrMore) {
  EXPECT_EQ(EffectiveOctaves(With(5, 0.25f, 1)), 2);  // 0.5 / 0.25
  EXPECT_EQ(EffectiveOctaves(With(5, 0.25f, 2)), 1);  // 0.5 / 0.5; detail clamped to 1 in the mix
  EXPECT_EQ(EffectiveOctaves(With(1.5f, 0.25f, 1)), 1.5f);
}

// cap = 0.5 / (0.5 * 0.25) = 4; (4 - 12) * 0.25 + 12 = 10
TEST(EffectiveOctaves, MoveTowardsTheCapByDetail) {
  EXPECT_EQ(EffectiveOctaves(With(12, 0.5f, 0.25f)), 10);
}

TEST(EffectiveOctaves, AreNotFilteredByNegativeFootprintOrDetail) {
  EXPECT_EQ(EffectiveOctaves(With(12, -0.5f, 1)), 12);
  EXPECT_EQ(EffectiveOctaves(With(12, 0.5f, -1)), 12);
  EXPECT_EQ(EffectiveOctaves(With(12, -0.5f, -1)), 12);
}

TEST(EffectiveOctaves, PassNanAndLimitInfinity) {
  EXPECT_TRUE(std::isnan(EffectiveOctaves(With(kNan, 0, 1))));
  EXPECT_EQ(EffectiveOctaves(With(-kInfinity, 0, 1)), -kInfinity);
  // (20 - inf) * 0.5 + inf has no value, which the clamp lets through.
  EXPECT_TRUE(std::isnan(EffectiveOctaves(With(kInfinity, 0, 0.5f))));
}

// F = 0.5 / (footprint * detail), clamped to 1.
TEST(FadeTo, PullsToTheMeanOnceTheFootprintPassesHalfACell) {
  EXPECT_EQ(FadeTo(With(1, 0.5f, 1), 0.9, 0.5), 0.9);
  EXPECT_EQ(FadeTo(With(1, 1, 1), 0.75, 0.5), 0.625);
  EXPECT_EQ(FadeTo(With(1, 1, 2), 1.0, 0.5), 0.625);  // F = 0.25
  EXPECT_NEAR(FadeTo(With(1, 1e9f, 1), 1.0, 0.75), 0.75, 1e-9);
}

TEST(PeakLevel, SumsShrinkingOctavesAndTheFraction) {
  EXPECT_EQ(PeakLevel(With(0, 0, 0), 0.5f, 0.5f), 0);
  EXPECT_EQ(PeakLevel(With(0.5f, 0, 0), 0.5f, 0.5f), 0.25);           // 0.5 * 0.5
  EXPECT_EQ(PeakLevel(With(2, 0, 0), 0.5f, 0.5f), 0.75);              // 0.5 + 0.25
  EXPECT_EQ(PeakLevel(With(2.5f, 0, 0), 0.5f, 0.5f), 0.75 + 0.0625);  // + 0.125 * 0.5
}

TEST(OctaveLoops, AreBounded) {
  EXPECT_TRUE(IsBelow(255, kInfinity));
  EXPECT_FALSE(IsBelow(256, kInfinity));
  EXPECT_TRUE(IsUpTo(256, kInfinity));
  EXPECT_FALSE(IsUpTo(257, kInfinity));
  EXPECT_FALSE(IsBelow(0, kNan));
  EXPECT_FALSE(IsUpTo(0, kNan));
}

}  // namespace
}  // namespace sorvanix
