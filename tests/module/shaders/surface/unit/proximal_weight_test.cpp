// How a distance becomes a weight, and how weights are merged.
#include "module/shaders/surface/proximal_weight.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace sorvanix::test {
namespace {

// From 10 to 50: a distance of 20 is x = 0.25.
double WeightAt(std::int32_t falloff, double distance) {
  return ProximalWeight(falloff, distance, 10, 50);
}

TEST(ProximalWeight, PowersOfTheNearness) {
  EXPECT_EQ(WeightAt(ProximalLinear, 20), 0.75);
  EXPECT_EQ(WeightAt(ProximalSquare, 20), 0.5625);
  EXPECT_EQ(WeightAt(ProximalCube, 20), 0.421875);
  for (const std::int32_t falloff : {ProximalLinear, ProximalSquare, ProximalCube}) {
    EXPECT_EQ(WeightAt(falloff, 0), 1);
    EXPECT_EQ(WeightAt(falloff, 10), 1);
    EXPECT_EQ(WeightAt(falloff, 50), 0);
    EXPECT_EQ(WeightAt(falloff, 1e9), 0);
  }
}

// Low 50 and high 10: x = (20 - 50) / (10 - 50) = 0.75.
TEST(ProximalWeight, SwappedLimitsInvertThePowers) {
  EXPECT_EQ(ProximalWeight(ProximalLinear, 20, 50, 10), 0.25);
  EXPECT_EQ(ProximalWeight(ProximalLinear, 0, 50, 10), 0);
  EXPECT_EQ(ProximalWeight(ProximalLinear, 90, 50, 10), 1);
}

// No distance lies between them. Smooth looks at the low limit first, the inverses at the high one.
TEST(ProximalWeight, SwappedLimitsCutTheOthersOff) {
  EXPECT_EQ(ProximalWeight(ProximalBand, 20, 50, 10), 0);
  EXPECT_EQ(ProximalWeight(ProximalSmooth, 20, 50, 10), 1) << "below low";
  EXPECT_EQ(ProximalWeight(ProximalSmooth, 60, 50, 10), 0) << "not below low, but above high";
  for (const std::int32_t falloff : {ProximalInverse, ProximalInverseSquare, ProximalInverseCube}) {
    EXPECT_EQ(ProximalWeight(falloff, 20, 50, 10), 0) << "above high";
    EXPECT_EQ(ProximalWeight(falloff, 5, 50, 10), 1) << "k = 5 - 50, at most 1";
  }
}

TEST(ProximalWeight, EqualLimitsAreAHardStep) {
  for (const std::int32_t falloff :
       {ProximalLinear, ProximalSquare, ProximalCube, ProximalSmooth}) {
    EXPECT_EQ(ProximalWeight(falloff, 9.999, 10, 10), 1);
    EXPECT_EQ(ProximalWeight(falloff, 10, 10, 10), 0);
  }
  for (const std::int32_t falloff : {ProximalInverse, ProximalInverseSquare, ProximalInverseCube}) {
    EXPECT_EQ(ProximalWeight(falloff, 10, 10, 10), 1) << "the high limit belongs to it";
    EXPECT_EQ(ProximalWeight(falloff, 10.001, 10, 10), 0);
  }
}

TEST(ProximalWeight, ABandLiesBetweenItsLimits) {
  EXPECT_EQ(WeightAt(ProximalBand, 10), 0);
  EXPECT_EQ(WeightAt(ProximalBand, 10.001), 1);
  EXPECT_EQ(WeightAt(ProximalBand, 49.999), 1);
  EXPECT_EQ(WeightAt(ProximalBand, 50), 0);
}

// k = 14 - 10 = 4.
TEST(ProximalWeight, InversesCountFromTheLowLimit) {
  EXPECT_EQ(WeightAt(ProximalInverse, 14), 0.25);
  EXPECT_EQ(WeightAt(ProximalInverseSquare, 14), 0.0625);
  EXPECT_EQ(WeightAt(ProximalInverseCube, 14), 0.015625);
  for (const std::int32_t falloff : {ProximalInverse, ProximalInverseSquare, ProximalInverseCube}) {
    EXPECT_EQ(WeightAt(falloff, 0), 1);
    EXPECT_EQ(WeightAt(falloff, 11), 1);
    EXPECT_GT(WeightAt(falloff, 50), 0) << "the high limit belongs to it";
    EXPECT_EQ(WeightAt(falloff, 50.001), 0);
  }
}

// x = 0.25: x^2 (3 - 2 x) = 0.15625, and (1 - 0.15625)^2 = 0.7119140625.
TEST(ProximalWeight, Smooth) {
  EXPECT_EQ(WeightAt(ProximalSmooth, 9), 1);
  EXPECT_EQ(WeightAt(ProximalSmooth, 10), 1);
  EXPECT_EQ(WeightAt(ProximalSmooth, 20), 0.7119140625);
  EXPECT_EQ(WeightAt(ProximalSmooth, 30), 0.25);
  EXPECT_EQ(WeightAt(ProximalSmooth, 50), 0);
}

TEST(ProximalWeight, ANumberThatNamesNoFalloffLeavesTheDistance) {
  for (const std::int32_t falloff : {-1, 8, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(WeightAt(falloff, 20), 20);
    EXPECT_FALSE(IsProximalFalloff(falloff));
  }
  for (std::int32_t falloff = 0; falloff < 8; ++falloff) EXPECT_TRUE(IsProximalFalloff(falloff));
}

// Laws of all falloffs with limits in order: between 0 and 1, and never rising but for the band's
// beginning.
TEST(ProximalWeight, StaysWithinOneAndFalls) {
  for (std::int32_t falloff = 0; falloff < 8; ++falloff) {
    double before = 1;
    for (double distance = 10.5; distance < 60; distance += 0.5) {
      const double weight = WeightAt(falloff, distance);
      EXPECT_GE(weight, 0) << falloff << " " << distance;
      EXPECT_LE(weight, before) << falloff << " " << distance;
      before = weight;
    }
  }
}

// --- merging ---

double Merged(std::int32_t combine, const std::vector<double>& weights) {
  double value = 0;
  for (const double weight : weights) value = CombineWeights(combine, value, weight);
  return value;
}

TEST(ProximalCombine, MaximumTakesTheGreatest) {
  EXPECT_EQ(Merged(ProximalMax, {0.25, 3, 0.5}), 3);
  EXPECT_EQ(Merged(ProximalMax, {-1, -2}), 0) << "it starts at 0";
}

// 1 - 0.75 x 0.5; weights are limited first: 2 counts as 1, -1 as 0.
TEST(ProximalCombine, ScreenMultipliesWhatIsLeft) {
  EXPECT_EQ(Merged(ProximalScreen, {0.25, 0.5}), 0.625);
  EXPECT_EQ(Merged(ProximalScreen, {2, 0.5}), 1);
  EXPECT_EQ(Merged(ProximalScreen, {-1, 0.5}), 0.5);
}

// |0.25| = 0.25, |1 - 0.25| = 0.75, |0.5 - 0.75| = 0.25.
TEST(ProximalCombine, DifferenceIsThatToTheRunningValue) {
  EXPECT_EQ(Merged(ProximalDifference, {0.25, 1, 0.5}), 0.25);
}

// 1 - 0.75 - 0.0625 = 0.1875; then 1 - 0.8125 x 0.5 - 0.25 = 0.34375.
TEST(ProximalCombine, OverlapIsAScreenLessTheSquare) {
  EXPECT_EQ(Merged(ProximalOverlap, {0.25}), 0.1875);
  EXPECT_EQ(Merged(ProximalOverlap, {0.25, 0.5}), 0.34375);
  EXPECT_EQ(Merged(ProximalOverlap, {5}), 0) << "limited to 1: 1 - 0 - 1";
}

TEST(ProximalCombine, AddIsWithoutALimit) {
  EXPECT_EQ(Merged(ProximalAdd, {0.75, 0.5, -2}), -0.75);
}

TEST(ProximalCombine, ANumberThatNamesNoRuleLeavesTheValue) {
  for (const std::int32_t combine : {-1, 5, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(Merged(combine, {0.75, 0.5}), 0);
  }
}

// The order of the points makes no difference where the rule is one of sets.
TEST(ProximalCombine, MaximumScreenAndAddDoNotSeeTheOrder) {
  for (const std::int32_t combine : {ProximalMax, ProximalScreen, ProximalAdd}) {
    EXPECT_NEAR(Merged(combine, {0.1, 0.7, 0.4}), Merged(combine, {0.4, 0.1, 0.7}), 1e-12);
  }
}

}  // namespace
}  // namespace sorvanix::test
