// Noise types that loop over shifted copies. Unless said otherwise the sample is (0.5, 1.25, 2.25)
// at time 0.75; "filtered" is a footprint of 1, which fades by half.
#include <cmath>

#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

using test::kRounding;
using test::Planar;
using test::Sample;

class OctaveRecipes : public test::NoiseEngine {
 protected:
  std::vector<float> XOf(Operation operation) const {
    std::vector<float> xs;
    for (const auto& call : noise.callsOf(operation)) xs.push_back(call.point.x);
    return xs;
  }
};

// The bias sends 1/2, 1/4, 1/8 to 0.8, 0.64, 0.512.
class BiasedSums : public OctaveRecipes {
 protected:
  BiasedSums() { noise.Set(Operation::SignedNoise, AlongX(0.5f, 3, {-0.5, 0.25, -0.125})); }
};

TEST_F(BiasedSums, OneOctaveIsTheNoise) {
  EXPECT_NEAR(Planar(BiasedSumType, {.octaves = 1}), 0.8, kRounding);
}

// i = 1: 0.8; i = 2: 0.64; 3 is not below 2.5. Then half of 0.512: (1.44 + 0.256) / 2.5.
TEST_F(BiasedSums, AFractionCountsTheLastCopyInPart) {
  EXPECT_NEAR(Planar(BiasedSumType, {.octaves = 2.5f}), 1.696 / 2.5, kRounding);
  EXPECT_EQ(XOf(Operation::SignedNoise), (std::vector<float>{0.5f, 3.5f, 6.5f}));
  EXPECT_EQ(noise.calls()[2].point.y, 1.25f);
  EXPECT_EQ(noise.calls()[2].point.z, 2.25f);
}

// i = 1: 0.8; 2 is not below 2, and the last copy counts by frac(2) = 0: 0.8 / 2.
TEST_F(BiasedSums, AWholeCountLosesItsLastCopy) {
  EXPECT_NEAR(Planar(BiasedSumType, {.octaves = 2}), 0.4, kRounding);
}

// 0.8 * 0.5 - 0.5 * 0.5 + 0.5 = 0.65, halfway from 0.5 to 0.8.
TEST_F(BiasedSums, BelowOneOctaveTheNoiseIsMixedWithGrey) {
  EXPECT_NEAR(Planar(BiasedSumType, {.octaves = 0.5f}), 0.65, kRounding);
}

TEST_F(BiasedSums, WithoutOctavesAllIsGreyAndFoldsToBlack) {
  for (const float octaves : {0.0f, -5.0f}) {
    EXPECT_EQ(Planar(BiasedSumType, {.octaves = octaves}), 0.5f);
    EXPECT_EQ(Planar(BiasedSumType, {.octaves = octaves, .absolute = 1}), 0);
  }
  EXPECT_TRUE(noise.calls().empty());
}

// Octaves 6 with room for 2.5, 0.5 / 0.2: as 2.5 octaves, but for the rounding of the footprint.
TEST_F(BiasedSums, AFootprintCutsTheOctaves) {
  EXPECT_NEAR(Planar(BiasedSumType, {.octaves = 6, .footprint = 0.2f}), 1.696 / 2.5, kRounding);
}

// The copies lie at p + 2, p + 3, p + 4; magnitudes over 0.65: 0.26 is 0.4, 0.39 is 0.6, 0.52 is
// 0.8.
class PeakMagnitudes : public OctaveRecipes {
 protected:
  PeakMagnitudes() { noise.Set(Operation::SignedNoise, AlongX(2.5f, 1, {-0.26, 0.39, -0.52})); }
};

// Peak of 0.4, 0.6, 0.8 * 0.5: 0.6. (0.6 - 0.25) / 0.75 * 0.6 = 0.28.
TEST_F(PeakMagnitudes, TheGreatestCopyWeighsItself) {
  EXPECT_NEAR(Planar(PeakMagnitudeType, {.octaves = 2.5f}), 0.28, kRounding);
  ASSERT_EQ(noise.calls().size(), 3u);
  EXPECT_POINT(noise.calls()[0].point, 2.5, 3.25, 4.25);
  EXPECT_POINT(noise.calls()[2].point, 4.5, 5.25, 6.25);
}

// A whole count takes its last copy in full, and one more at no weight: 0.35 / 0.75 * 0.6.
TEST_F(PeakMagnitudes, AWholeCountTakesAllItsCopies) {
  EXPECT_NEAR(Planar(PeakMagnitudeType, {.octaves = 2}), 0.28, kRounding);
  EXPECT_EQ(noise.calls().size(), 3u);
}

// No loop; 0.4 * 0.875 = 0.35. (0.35 - 0.25) / 0.75 * 0.35.
TEST_F(PeakMagnitudes, BelowOneOctaveTheFirstCopyCountsInPart) {
  EXPECT_NEAR(Planar(PeakMagnitudeType, {.octaves = 0.875f}), 0.1 / 0.75 * 0.35, kRounding);
  EXPECT_EQ(Planar(PeakMagnitudeType, {.octaves = 0.5f}), 0);  // 0.2 is below 0.25
}

// level = 0.35 + 0.175 + 0.0875 * 0.5 = 0.56875; (0.6 - 0.56875) / 2 + 0.56875 = 0.584375.
TEST_F(PeakMagnitudes, TheFadeComesBeforeTheRemap) {
  EXPECT_NEAR(Planar(PeakMagnitudeType, {.octaves = 2.5f, .footprint = 1}),
              (0.584375 - 0.25) / 0.75 * 0.584375, kRounding);
}

// w = 0.2 moves the point to (x - 0.2, y + 0.2, z + 0.2), where the unit noise is 0.02 x + 0.1 z:
// 0.006 + 0.245 = 0.251 for x = 0.5, then 0.351 and 0.451 for x = 5.5 and 10.5.
class TurbulentUnitSums : public OctaveRecipes {
 protected:
  TurbulentUnitSums() {
    noise.SetConstant(Operation::Turbulence, 0.2);
    noise.Set(Operation::UnitNoiseAt, test::LinearNoise{.x = 0.02, .z = 0.1});
  }
};

TEST_F(TurbulentUnitSums, AreMeansOfDisplacedNoise) {
  // (0.251 + 0.351 + 0.451 * 0.5) / 2.5
  EXPECT_NEAR(Planar(TurbulentUnitSumType, {.octaves = 2.5f}), 0.8275 / 2.5, kRounding);
  ASSERT_EQ(noise.calls().size(), 6u);
  EXPECT_EQ(XOf(Operation::Turbulence), (std::vector<float>{0.5f, 5.5f, 10.5f}));
  EXPECT_EQ(noise.calls()[4].octaves, 2.0f);  // whatever the count is
  EXPECT_EQ(noise.calls()[4].absolute, 0);
  EXPECT_POINT(noise.calls()[5].point, 10.3, 1.45, 2.45);
}

// A whole count takes all its copies: (0.251 + 0.351) / 2.
TEST_F(TurbulentUnitSums, OfAWholeCountAreTheMean) {
  EXPECT_NEAR(Planar(TurbulentUnitSumType, {.octaves = 2}), 0.301, kRounding);
}

// 0.251 * 0.5 - 0.25 + 0.5
TEST_F(TurbulentUnitSums, BelowOneOctaveAreMixedWithGrey) {
  EXPECT_NEAR(Planar(TurbulentUnitSumType, {.octaves = 0.5f}), 0.3755, kRounding);
  EXPECT_EQ(Planar(TurbulentUnitSumType, {.octaves = 0}), 0.5f);
  EXPECT_EQ(Planar(TurbulentUnitSumType, {.octaves = -1, .absolute = 1}), 0);
}

// The copies lie at p, p + 10, p + 20; ridges 0.825, 0.93, 1 over 0.65..1 are 0.5, 0.8, 1, smoothed
// 0.5, 0.64 * 1.4 = 0.896, 1.
class InvertedPeaks : public OctaveRecipes {
 protected:
  InvertedPeaks() { noise.Set(Operation::SignedNoise, AlongX(0.5f, 10, {0.175, -0.07, 0})); }
};

// Peak of 0.5, 0.896 and 1 * 0.5.
TEST_F(InvertedPeaks, AreWhatIsLeftOfTheGreatestRidge) {
  EXPECT_NEAR(Planar(InvertedPeakType, {.octaves = 1.5f}), 1 - 0.896, kRounding);
  ASSERT_EQ(noise.calls().size(), 3u);
  EXPECT_POINT(noise.calls()[1].point, 10.5, 11.25, 12.25);
}

TEST_F(InvertedPeaks, AnyCountAboveZeroTakesTheFirstCopyInFull) {
  EXPECT_NEAR(Planar(InvertedPeakType, {.octaves = 1}), 0.5, kRounding);
  EXPECT_NEAR(Planar(InvertedPeakType, {.octaves = 0.25f}), 0.5, kRounding);  // 0.896 / 4 is less
  EXPECT_EQ(Planar(InvertedPeakType, {.octaves = 0}), 1);
}

// level = 0.5 + 0.25 * 0.5 = 0.625; (0.896 - 0.625) / 2 + 0.625 = 0.7605.
TEST_F(InvertedPeaks, TheFadeComesBeforeTheInversion) {
  EXPECT_NEAR(Planar(InvertedPeakType, {.octaves = 1.5f, .footprint = 1}), 1 - 0.7605, kRounding);
}

// The copies lie at p, p + 20, ...; ridges 0.92, 0.8 over 0.6..1 are 0.8, 0.5, smoothed 0.896, 0.5.
// Beyond the list the noise is 0 and the ridge 1. The fine layer: (0.6 + 1.5) / 3 = 0.7, smoothed
// 0.784.
class RidgeProducts : public OctaveRecipes {
 protected:
  RidgeProducts() {
    noise.Set(Operation::SignedNoise, AlongX(0.5f, 20, {0.08, -0.2}));
    noise.SetConstant(Operation::Turbulence, 0.6);
  }
  static double LastStep(double r) { return r / 0.8 * r / 0.8 * (3 - 2 * r / 0.8); }
};

// Product 0.896 * 0.5 = 0.448 (mean 0.25, not faded); (0.448 * 0.75 + 0.25) * 0.784 = 0.459424.
TEST_F(RidgeProducts, MultiplyRidgesAndAFineLayer) {
  EXPECT_NEAR(Planar(RidgeProductType, {.octaves = 2}), LastStep(0.459424), kRounding);
  const auto ridges = noise.callsOf(Operation::SignedNoise);
  ASSERT_EQ(ridges.size(), 3u);  // one more at no weight
  EXPECT_POINT(ridges[1].point, 20.5, 21.25, 22.25);
  const auto fine = noise.callsOf(Operation::Turbulence);
  ASSERT_EQ(fine.size(), 1u);
  EXPECT_POINT(fine[0].point, 5, 12.5, 22.5);
  EXPECT_EQ(fine[0].octaves, 2);
  EXPECT_EQ(fine[0].absolute, 1);
}

// One turn; then (0.448 - 0.896) * 0.4 + 0.896 = 0.7168; (0.7168 * 0.75 + 0.25) * 0.784 =
// 0.6174784.
TEST_F(RidgeProducts, AFractionMixesTheNextRidgeIn) {
  EXPECT_NEAR(Planar(RidgeProductType, {.octaves = 0.4f}), LastStep(0.6174784), kRounding);
}

// F = 0.5 / (2 * 0.5) = 0.5 leaves 0.4 octaves; the mean is (0.25 - 0.5) * 0.4 + 0.5 = 0.4, the
// product (0.7168 - 0.4) / 2 + 0.4 = 0.5584. Fine octaves: (0.05 - 0.4) * 0.5 + 0.4 = 0.225; fine
// layer (0.784 - 0.25) * 0.05 + 0.25 = 0.2767. (0.5584 * 0.75 + 0.25) * 0.2767 = 0.18505696.
TEST_F(RidgeProducts, FadeBothLayersToTheirMeans) {
  const Sample sample = {.octaves = 0.4f, .footprint = 2, .detail = 0.5f};
  EXPECT_NEAR(Planar(RidgeProductType, sample), LastStep(0.18505696), kRounding);
  EXPECT_FLOAT_EQ(noise.callsOf(Operation::Turbulence)[0].octaves, 0.225f);
}

// F = 0.5 / (0.5 * 0.5) = 2: octaves (2 - 6) * 0.5 + 6 = 4, fine octaves (0.2 - 6) * 0.5 + 6 = 3.1.
TEST_F(RidgeProducts, CutBothOctaveCounts) {
  Planar(RidgeProductType, {.octaves = 6, .footprint = 0.5f, .detail = 0.5f});
  EXPECT_EQ(noise.callsOf(Operation::SignedNoise).size(), 5u);
  EXPECT_FLOAT_EQ(noise.callsOf(Operation::Turbulence)[0].octaves, 3.1f);
}

// The limit is 0.5 / 1.953125 = 0.256, a tenth of it 0.0256 in double, which narrows to
// 0.02559999935. Times the float 0.1, which is 0.10000000149, it would narrow to 0.02560000122.
TEST_F(RidgeProducts, CutTheFineOctavesToATenthInDouble) {
  Planar(RidgeProductType, {.octaves = 20, .footprint = 1.953125f});
  EXPECT_EQ(noise.callsOf(Operation::Turbulence)[0].octaves, 0.02559999935f);
}

// The ridge is 1 and the fine layer 0: (0 - 0.25) * (8 * 0.1) + 0.25, with the float 0.1, is
// 0.04999999702; over 0.8 it is 0.06249999627, smoothed 0.01123046744. With a 0.1 in double the
// result would be 0.0625^2 * 2.875 = 0.01123046875.
TEST_F(RidgeProducts, FadeTheFineLayerByAFloatTenth) {
  noise.SetConstant(Operation::SignedNoise, 0);
  noise.SetConstant(Operation::Turbulence, -2);
  EXPECT_EQ(Planar(RidgeProductType, {.footprint = 0.0625f}), 0.01123046744f);
}

// Without a footprint the fades read 0.5 / 0 with its sign: infinity counts as 1, minus infinity as
// 0, which leaves the means 0.4 and 0.25: (0.4 * 0.75 + 0.25) * 0.25 = 0.1375.
TEST_F(RidgeProducts, ANegativeZeroProductLeavesTheMeans) {
  const Sample sample = {.octaves = 0.4f, .footprint = 0, .detail = -1};
  EXPECT_NEAR(Planar(RidgeProductType, sample), LastStep(0.1375), kRounding);
}

// The point doubles: turbulence at x = 0.5, 1, 2 is 0.25, 0.375, 0.75.
class DifferenceOctaves : public OctaveRecipes {
 protected:
  DifferenceOctaves() {
    noise.Set(Operation::Turbulence, [](const test::NoiseCall& call) {
      return call.point.x < 0.75f ? 0.25 : call.point.x < 1.5f ? 0.375 : 0.75;
    });
  }
};

// 0.25 / 2 = 0.125; |0.375 - 0.125| / 2 + 0.125 = 0.25; the fraction: |0.75 - 0.25| * 0.5 * 0.5
// + 0.25 = 0.375. 0.375 / 1.5 = 1/4, which the bias sends to 0.36; 4 * 0.36^2 = 0.5184.
TEST_F(DifferenceOctaves, ChainDifferencesAtDoubledFrequencies) {
  EXPECT_NEAR(Planar(DifferenceOctaveType, {.octaves = 1.5f}), 0.5184, kRounding);
  ASSERT_EQ(noise.calls().size(), 3u);
  EXPECT_POINT(noise.calls()[1].point, 1, 2.5, 4.5);
  EXPECT_POINT(noise.calls()[2].point, 2, 5, 9);
  for (const auto& call : noise.calls()) {
    EXPECT_EQ(call.octaves, 3.0f);
    EXPECT_EQ(call.absolute, 1);
  }
}

// A whole count: 0.125 / 1 = 1/8, biased 0.216; 4 * 0.216^2 = 0.186624.
TEST_F(DifferenceOctaves, OfOneOctaveReadTwice) {
  EXPECT_NEAR(Planar(DifferenceOctaveType, {.octaves = 1}), 0.186624, kRounding);
  EXPECT_EQ(noise.calls().size(), 2u);
}

// level(0.7, 0.3) = 0.7 + 0.21 * 0.5 = 0.805, mean 0.195; (0.5184 - 0.195) / 2 + 0.195.
TEST_F(DifferenceOctaves, FadeToOneLessTheirLevel) {
  EXPECT_NEAR(Planar(DifferenceOctaveType, {.octaves = 1.5f, .footprint = 1}), 0.3567, kRounding);
}

// 0 / 0: the division is not guarded, and the clamps let the result through.
TEST_F(DifferenceOctaves, OfNoOctavesHaveNoValue) {
  EXPECT_TRUE(std::isnan(Planar(DifferenceOctaveType, {.octaves = 0})));
}

// Copies at (x + 21 i, y + 11 i, z + 13 i) from i = 1; ridges 0.94, 0.97, 0.99, 1. Stepped over
// 0.875..0.999 they are 0.536, 0.861, 0.985, 1.
class SparsePeaks : public OctaveRecipes {
 protected:
  SparsePeaks() {
    noise.Set(Operation::SignedNoise, AlongX(21.5f, 21, {0.06, -0.03, 0.01, 0}));
    noise.SetConstant(Operation::Turbulence, 0.4);  // grain: (0.4 / 4 + 0.5) * 0.05 = 0.03
  }
};

// The stepped 0.861 of the second copy is compared with the raw 0.94 that was kept of the first,
// and loses, though its ridge is higher: the peak stays 0.94 and below 0.95. Had 0.97 been kept,
// the ridge would be 0.4.
TEST_F(SparsePeaks, CompareTheStepButKeepTheRidge) {
  EXPECT_NEAR(Planar(SparsePeakType, {.octaves = 2}), 0.03, kRounding);
  // The third, 0.985 stepped, wins: (0.99 - 0.95) * 20 = 0.8.
  EXPECT_NEAR(Planar(SparsePeakType, {.octaves = 3}), 0.83, kRounding);
}

// The second ridge is 1 - 1/64 = 0.984375: (0.984375 - 0.875) * 8.06451511 = 0.88205634, stepped
// 0.96154923893. A first ridge of 0.96154924110, which is the next that a float of noise can tell
// above that, stays, and one of 0.96154923737, the next below, goes. The last digit of 8.064515
// decides: with 1 / 0.124 = 8.06451613 the step would be 0.96154930 and both would go.
TEST_F(SparsePeaks, StepByTheLastDigitOfTheScale) {
  noise.SetConstant(Operation::Turbulence, -2);  // no grain
  noise.Set(Operation::SignedNoise, AlongX(21.5f, 21, {0x1.3afd16p-5, 1.0 / 64}));
  EXPECT_NEAR(Planar(SparsePeakType, {.octaves = 2}), 0.0115492 * 20, 1e-5);
  noise.Set(Operation::SignedNoise, AlongX(21.5f, 21, {0x1.3afd18p-5, 1.0 / 64}));
  EXPECT_NEAR(Planar(SparsePeakType, {.octaves = 2}), 0.034375 * 20, 1e-5);
}

// The floats are 0.94999998808 and 19.99999619: 0.03437501192 * 19.99999619 = 0.68750010729. With
// 20 it would be 0.68750023842, and with 0.95 in double 0.68749986887.
TEST_F(SparsePeaks, KeepTheLastDigitsOfTheirRemap) {
  noise.SetConstant(Operation::Turbulence, -2);  // no grain
  noise.SetConstant(Operation::SignedNoise, 1.0 / 64);
  EXPECT_EQ(Planar(SparsePeakType, {}), 0.68750010729f);
}

TEST_F(SparsePeaks, MoveEachAxisByItsOwnStep) {
  Planar(SparsePeakType, {.octaves = 2, .absolute = 4});
  ASSERT_EQ(noise.calls().size(), 4u);
  EXPECT_POINT(noise.calls()[0].point, 21.5, 12.25, 15.25);
  EXPECT_POINT(noise.calls()[2].point, 63.5, 34.25, 41.25);
  EXPECT_POINT(noise.calls()[3].point, 37.5, 93.75, 168.75);  // the grain, 75 times finer
  EXPECT_EQ(noise.calls()[3].octaves, 1.0f);
  EXPECT_EQ(noise.calls()[3].absolute, 4);
}

// The last copy counts by its fraction before it is stepped: 1 * 0.96875, stepped 0.85; the peak
// is 0.96875: (0.96875 - 0.95) * 20 = 0.375.
TEST_F(SparsePeaks, AFractionLowersTheLastRidge) {
  noise.SetConstant(Operation::SignedNoise, 0);
  EXPECT_NEAR(Planar(SparsePeakType, {.octaves = 0.96875f}), 0.405, 2e-6);
}

TEST_F(SparsePeaks, WithoutRidgesLeaveTheGrain) {
  noise.SetConstant(Operation::SignedNoise, 0.5);
  noise.SetConstant(Operation::Turbulence, 0);
  EXPECT_NEAR(Planar(SparsePeakType, {.octaves = 5}), 0.025, kRounding);  // 0.5 * 0.05
}

// level = 0.15 + 0.075 + 0.0375 = 0.2625; (0.83 - 0.2625) / 2 + 0.2625. `absolute` does not fold.
TEST_F(SparsePeaks, FadeToTheirLevel) {
  const Sample sample = {.octaves = 3, .absolute = 1, .footprint = 1};
  EXPECT_NEAR(Planar(SparsePeakType, sample), 0.54625, kRounding);
}

}  // namespace
}  // namespace sorvanix
