// Noise types made of the host's fractals. Unless said otherwise the sample is (0.5, 1.25, 2.25) at
// time 0.75; "filtered" is a footprint of 1, which fades by half.
#include <cmath>

#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

using test::kRounding;
using test::LinearNoise;
using test::Planar;
using test::Solid;

class FractalRecipes : public test::NoiseEngine {
 protected:
  FractalRecipes() { fractalWeights = weights_; }
  ~FractalRecipes() override { fractalWeights = nullptr; }

  float weights_[22] = {};
};

TEST_F(FractalRecipes, AllHandOverTheWeights) {
  for (const NoiseType type :
       {SquaredFractalType, SmoothFractalType, RidgedBandType, FractalCellType, RidgedPeakType}) {
    Planar(type, {});
    Solid(type, {});
  }
  int fractals = 0;
  for (const auto& call : noise.calls()) {
    if (call.operation < Operation::FractalSum) continue;
    ++fractals;
    EXPECT_EQ(call.weights, weights_);
  }
  EXPECT_EQ(fractals, 2 + 2 + 2 + (2 + 3) + 4);  // the last type reads one copy more at no weight
}

// (0.8 / 2)^2 * 2.857143 = 0.16 / 0.35
TEST_F(FractalRecipes, SquaredFractalSquaresHalfTheFractal) {
  for (const double fractal : {0.8, -0.8}) {
    noise.SetConstant(Operation::FractalSum, fractal);
    EXPECT_NEAR(Planar(SquaredFractalType, {}), 0.16 / 0.35, kRounding);
  }
  EXPECT_NEAR(Planar(SquaredFractalType, {.absolute = 1}), 1 - 2 * 0.16 / 0.35, kRounding);
  noise.SetConstant(Operation::FractalSum, 1.25);  // 0.390625 / 0.35
  EXPECT_EQ(Planar(SquaredFractalType, {}), 1);
  EXPECT_POINT(noise.calls()[0].point, 0.5, 1.25, 2.25);
  EXPECT_EQ(noise.calls()[0].time, 0.75f);
}

/// smooth((w + 1.75) / 3.5) for w = 0.175: u = 0.55, 0.3025 * 1.9.
constexpr double kSmooth055 = 0.57475;

TEST_F(FractalRecipes, SmoothFractalOfThePlaneTakesTimeForZ) {
  noise.Set(Operation::FractalSumPoint, LinearNoise{.constant = -0.275, .z = 0.6});  // 0.45 - 0.275
  EXPECT_NEAR(Planar(SmoothFractalType, {.octaves = 2.5f}), kSmooth055, kRounding);
  ASSERT_EQ(noise.calls().size(), 1u);
  EXPECT_POINT(noise.calls()[0].point, 0.5, 1.25, 0.75);
  EXPECT_EQ(noise.calls()[0].octaves, 2.5f);
}

TEST_F(FractalRecipes, SmoothFractalOfSpaceTakesTimeAsTime) {
  noise.Set(Operation::FractalSum,
            LinearNoise{.constant = -0.65, .z = 0.1, .time = 0.8});  // 0.225 + 0.6 - 0.65
  EXPECT_NEAR(Solid(SmoothFractalType, {}), kSmooth055, kRounding);
  ASSERT_EQ(noise.calls().size(), 1u);
  EXPECT_POINT(noise.calls()[0].point, 0.5, 1.25, 2.25);
  EXPECT_EQ(noise.calls()[0].time, 0.75f);
}

TEST_F(FractalRecipes, SmoothFractalIsFlatOutsideItsRange) {
  noise.SetConstant(Operation::FractalSumPoint, -1.8);
  EXPECT_EQ(Planar(SmoothFractalType, {}), 0);
  noise.SetConstant(Operation::FractalSumPoint, 1.75);
  EXPECT_EQ(Planar(SmoothFractalType, {}), 1);
  EXPECT_EQ(Planar(SmoothFractalType, {.absolute = 1}), 1);
}

// Just beyond the ends the value is exact; the curve there would fall back by 3 (0.01 / 3.5)^2.
TEST_F(FractalRecipes, SmoothFractalEndsAtSevenQuarters) {
  for (const Operation fractal : {Operation::FractalSumPoint, Operation::FractalSum}) {
    const auto catalogue = fractal == Operation::FractalSumPoint ? Planar : Solid;
    noise.SetConstant(fractal, 1.76);
    EXPECT_EQ(catalogue(SmoothFractalType, {}), 1);
    noise.SetConstant(fractal, 1.74);
    EXPECT_LT(catalogue(SmoothFractalType, {}), 1);
    noise.SetConstant(fractal, -1.75);
    EXPECT_EQ(catalogue(SmoothFractalType, {}), 0);
    noise.SetConstant(fractal, -1.74);
    EXPECT_GT(catalogue(SmoothFractalType, {}), 0);
  }
}

// a = 0.4 / 2 = 0.2. n = 0.3, warped x = 0.8: ridged -0.016, b = 0.484 / 1.1 = 0.44.
// band(0.44, 0.2) = 0.14 / 0.4 = 0.35, so 0.65, halfway over 0.4..0.9: 0.5.
class RidgedBands : public FractalRecipes {
 protected:
  RidgedBands() {
    noise.SetConstant(Operation::Turbulence, 0.4);
    noise.SetConstant(Operation::SignedNoise, 0.3);
    noise.Set(Operation::FractalRidged, LinearNoise{.x = -0.02});
  }
};

TEST_F(RidgedBands, InvertARidgedFractalInABand) {
  EXPECT_NEAR(Planar(RidgedBandType, {.octaves = 2.5f}), 0.5, kRounding);
  ASSERT_EQ(noise.calls().size(), 3u);
  EXPECT_EQ(noise.calls()[0].octaves, 2.5f);
  EXPECT_EQ(noise.calls()[0].absolute, 1);
  EXPECT_POINT(noise.calls()[2].point, 0.8, 0.95, 2.55);
  EXPECT_EQ(noise.calls()[2].octaves, 2.5f);
  EXPECT_EQ(noise.calls()[2].first, 0.25f);
  EXPECT_EQ(noise.calls()[2].second, 1.0f);
}

// a = 0.5, so that the band is b itself. The constants are stored as floats: 0.9090909 is
// 0.90909087658, 0.4 is 0.40000000596, 2.0000002 is 2.00000023842.
// b = 0.625 * 0.9090909 = 0.56818179786; (1 - b - 0.4) * 2.0000002 = 0.06363640 and a little, of
// which the curve is 0.01163337136. A scale of 2 would give 0.01163336864, 1 / 1.1 0.01163334472.
TEST_F(RidgedBands, KeepTheLastDigitsOfTheirConstants) {
  noise.SetConstant(Operation::Turbulence, 1);
  noise.SetConstant(Operation::FractalRidged, 0.125);
  EXPECT_EQ(Planar(RidgedBandType, {}), 0.01163337136f);
}

// Mean 0.8 - 2.5 / 4 * 0.5 = 0.4875; (0.5 - 0.4875) / 2 + 0.4875. From 4 octaves on it is 0.3.
TEST_F(RidgedBands, FadeToALowerMeanForMoreOctaves) {
  EXPECT_NEAR(Planar(RidgedBandType, {.octaves = 2.5f, .footprint = 1}), 0.49375, kRounding);
  EXPECT_NEAR(Planar(RidgedBandType, {.octaves = 6, .footprint = 1}), 0.4, kRounding);
}

// The fractal is 0.1 x + 0.01 y; all feature points lie at their cells' centres.
class FractalCells : public FractalRecipes {
 protected:
  FractalCells() {
    noise.SetConstant(Operation::UnitNoiseAt, 0.5);
    noise.Set(Operation::FractalSum, LinearNoise{.x = 0.1, .y = 0.01});
  }
};

// a at (7.5, 10.25) 2.2 = (16.5, 22.55): 1.8755, times 0.15 moves y to 1.531325.
// b at (0.5, 1.25) 2.2 = (1.1, 2.75): 0.1375 moves x to 0.520625. Centre (0.5, 1.5).
TEST_F(FractalCells, OfThePlaneAreDisplacedByTwoFractals) {
  EXPECT_NEAR(Planar(FractalCellType, {.octaves = 3.5f}), std::hypot(0.020625, 0.031325),
              kRounding);
  const auto fractals = noise.callsOf(Operation::FractalSum);
  ASSERT_EQ(fractals.size(), 2u);
  EXPECT_POINT(fractals[0].point, 16.5, 22.55, 13.75);
  EXPECT_POINT(fractals[1].point, 1.1, 2.75, 4.95);
  EXPECT_EQ(fractals[0].octaves, 3.5f);
}

// a at (8.5, 2.25) 2.2 = (18.7, 4.95): 1.9195 moves z to 2.537925; b and c as a and b above.
// Centre (0.5, 1.5, 2.5).
TEST_F(FractalCells, OfSpaceAreDisplacedByThreeFractals) {
  EXPECT_NEAR(Solid(FractalCellType, {}), std::hypot(0.020625, 0.031325, 0.037925), kRounding);
  const auto fractals = noise.callsOf(Operation::FractalSum);
  ASSERT_EQ(fractals.size(), 3u);
  EXPECT_POINT(fractals[0].point, 18.7, 4.95, 31.35);
  EXPECT_POINT(fractals[1].point, 16.5, 22.55, 13.75);
  EXPECT_POINT(fractals[2].point, 1.1, 2.75, 4.95);
}

// At x = 0.6 a point that moved the wrong way would not be as far from a centre as the right one.
// Along x (0.6, 1.25) 2.2 = (1.32, 2.75): 0.1595 * 0.15 = 0.023925 to 0.623925;
// along y (7.6, 10.25) 2.2 = (16.72, 22.55): 1.8975 * 0.15 = 0.284625 to 1.534625;
// along z (8.6, 2.25) 2.2 = (18.92, 4.95): 1.9415 * 0.15 = 0.291225 to 2.541225.
TEST_F(FractalCells, MoveThePointAlongTheFractal) {
  EXPECT_NEAR(Planar(FractalCellType, {.x = 0.6f}), std::hypot(0.123925, 0.034625), kRounding);
  EXPECT_NEAR(Solid(FractalCellType, {.x = 0.6f}), std::hypot(0.123925, 0.034625, 0.041225),
              kRounding);
}

// w = 0.25 moves the point to (0.75, 1, 2.5), then only x by 5 a copy. Ridged 0, -1/8, 1/4:
// smooth(4 r) = 0, 0.5, 1; the bias sends them to 0, 0.95, 1; over 0.6..1 they are 0, 0.875, 1.
class RidgedPeaks : public FractalRecipes {
 protected:
  RidgedPeaks() {
    noise.SetConstant(Operation::SignedNoise, 0.25);
    noise.Set(Operation::FractalRidged, AlongX(0.75f, 5, {0, -0.125, 0.25}));
  }
};

// Peak of 0, 0.875 and 1 * 0.5.
TEST_F(RidgedPeaks, AreTheGreatestOfShiftedFractals) {
  EXPECT_NEAR(Planar(RidgedPeakType, {.octaves = 1.5f}), 0.875, kRounding);
  ASSERT_EQ(noise.calls().size(), 4u);
  EXPECT_EQ(noise.calls()[0].operation, Operation::SignedNoise);  // once, for all copies
  EXPECT_POINT(noise.calls()[1].point, 0.75, 1, 2.5);
  EXPECT_POINT(noise.calls()[3].point, 10.75, 1, 2.5);
  EXPECT_EQ(noise.calls()[3].octaves, 1.5f);
  EXPECT_EQ(noise.calls()[3].first, 0.25f);
  EXPECT_EQ(noise.calls()[3].second, 1.0f);
}

TEST_F(RidgedPeaks, CountTheLastCopyByTheFraction) {
  EXPECT_NEAR(Planar(RidgedPeakType, {.octaves = 0.5f}), 0.4375, kRounding);  // 0.875 / 2
  EXPECT_EQ(Planar(RidgedPeakType, {.octaves = 1}), 0);
  EXPECT_NEAR(Planar(RidgedPeakType, {.octaves = 2.25f}), 1, kRounding);
}

TEST_F(RidgedPeaks, WithoutOctavesStillReadOneCopyAtNoWeight) {
  EXPECT_EQ(Planar(RidgedPeakType, {.octaves = 0}), 0);
  ASSERT_EQ(noise.calls().size(), 2u);
  EXPECT_EQ(noise.calls()[0].operation, Operation::SignedNoise);
  EXPECT_EQ(noise.calls()[1].operation, Operation::FractalRidged);
}

// From a magnitude of 1/4 on the peak is whole; the curve would fall back there. Just below, at
// u = 0.996, it is 1 - 3 * 0.004^2 = 1 - 4.79e-5; the bias, to the power of 0.0740006, leaves
// 1 - 3.54e-6, and the remap 2.5 times that: 1 - 8.86e-6.
TEST_F(RidgedPeaks, AreWholeFromAQuarterOn) {
  for (const double sign : {1.0, -1.0}) {
    noise.SetConstant(Operation::FractalRidged, 0.251 * sign);
    EXPECT_EQ(Planar(RidgedPeakType, {}), 1);
    noise.SetConstant(Operation::FractalRidged, 0.249 * sign);
    EXPECT_NEAR(Planar(RidgedPeakType, {}), 1 - 8.86e-6, kRounding);
  }
}

// level = 0.5 + 0.25 * 0.5 = 0.625; (0.875 - 0.625) / 2 + 0.625 = 0.75, folded 0.5.
TEST_F(RidgedPeaks, FadeToTheirLevelAndFold) {
  EXPECT_NEAR(Planar(RidgedPeakType, {.octaves = 1.5f, .footprint = 1}), 0.75, kRounding);
  EXPECT_NEAR(Planar(RidgedPeakType, {.octaves = 1.5f, .absolute = 1, .footprint = 1}), 0.5,
              kRounding);
}

}  // namespace
}  // namespace sorvanix
