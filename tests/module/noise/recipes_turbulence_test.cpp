// Noise types made of turbulence. Unless said otherwise the sample is (0.5, 1.25, 2.25) at time
// 0.75.
#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

using test::kRounding;
using test::LinearNoise;
using test::Planar;

class TurbulenceRecipes : public test::NoiseEngine {
 protected:
  std::vector<test::NoiseCall> turbulence() const { return noise.callsOf(Operation::Turbulence); }
};

// Coarse (x = 0.2): 0.24, (0.24 + 1.5) / 3 = 0.58. Fine (x = 0.5): 0.6, (0.6 + 1.5) / 3 = 0.7.
// band(0.7, 0.58) = (0.7 - (0.5 - 0.58)) / 1.16 = 0.78 / 1.16.
TEST_F(TurbulenceRecipes, DualScaleBandIsAFineLayerInABandOfACoarseOne) {
  noise.Set(Operation::Turbulence, LinearNoise{.x = 1.2});
  EXPECT_NEAR(Planar(DualScaleBandType, {.octaves = 3.5f}), 0.78 / 1.16, kRounding);
  ASSERT_EQ(turbulence().size(), 2u);
  EXPECT_POINT(turbulence()[0].point, 0.2, 0.5, 0.9);
  EXPECT_POINT(turbulence()[1].point, 0.5, 1.25, 2.25);
  for (const auto& call : turbulence()) {
    EXPECT_EQ(call.octaves, 3.5f);
    EXPECT_EQ(call.time, 0.75f);
    EXPECT_EQ(call.absolute, 0);
  }
}

// `absolute` acts twice: as it is in the fine layer, and in the fold, |2 v - 1| = 0.4 / 1.16.
TEST_F(TurbulenceRecipes, DualScaleBandFoldsOnTopOfAbsoluteTurbulence) {
  noise.Set(Operation::Turbulence, LinearNoise{.x = 1.2});
  EXPECT_NEAR(Planar(DualScaleBandType, {.absolute = 3}), 0.4 / 1.16, kRounding);
  EXPECT_EQ(turbulence()[0].absolute, 0);
  EXPECT_EQ(turbulence()[1].absolute, 3);
}

// cap = 0.5 / (0.25 * 0.5) = 4. Coarse: (4 * 2.5 - 12) * 0.5 + 12 = 11.
// Fine: (11 - 12) * 0.5 + 12 = 11.5, from the coarse count.
TEST_F(TurbulenceRecipes, DualScaleBandCutsItsLayersApart) {
  Planar(DualScaleBandType, {.octaves = 12, .footprint = 0.25f, .detail = 0.5f});
  EXPECT_EQ(turbulence()[0].octaves, 11);
  EXPECT_EQ(turbulence()[1].octaves, 11.5f);
}

// Coarse -1.5 gives a width of 0: a hard step at 0.5, of (0 + 1.5) / 3 = 0.50000001 and of less.
TEST_F(TurbulenceRecipes, DualScaleBandOfNoWidthIsAHardStep) {
  noise.Set(Operation::Turbulence, AlongX(0.2f, 0.3f, {-1.5, 0.3}));
  EXPECT_EQ(Planar(DualScaleBandType, {}), 1);
  noise.Set(Operation::Turbulence, AlongX(0.2f, 0.3f, {-1.5, -0.3}));
  EXPECT_EQ(Planar(DualScaleBandType, {}), 0);
}

// a = 0.4 * 0.5 = 0.2. n = 0.3 / 2 = 0.15, warped x = 0.65: 0.26, b = 2.26 / 4 = 0.565.
// band(0.565, 0.2) = (0.565 - 0.3) / 0.4 = 0.6625; (0.6625 - 0.5) / 0.3 = 0.5416667.
TEST_F(TurbulenceRecipes, HardBandSharpensWarpedTurbulence) {
  noise.Set(Operation::Turbulence, LinearNoise{.x = 0.4});
  noise.SetConstant(Operation::SignedNoise, 0.3);
  EXPECT_NEAR(Planar(HardBandType, {.octaves = 3}), 0.1625 / 0.3, kRounding);
  EXPECT_POINT(turbulence()[0].point, 0.5, 1.25, 2.25);
  EXPECT_POINT(turbulence()[1].point, 0.65, 1.1, 2.4);
  EXPECT_EQ(turbulence()[0].absolute, 1);
  EXPECT_EQ(turbulence()[1].absolute, 1);
}

// f = 0.4 / 2 = 0.2, added to every coordinate: n = 0.4 + 0.1 * 0.7 = 0.47.
// s: 0.2 / 4 + 0.5 = 0.55, (0.55 - 0.4) / 0.2 = 0.75, smooth 0.5625 * 1.5 = 0.84375.
// ((0.84375 + 0.47) / 2 - 0.4) / 0.6 = 0.256875 / 0.6.
TEST_F(TurbulenceRecipes, TurbulentThresholdAddsAStepOfTheTurbulence) {
  noise.SetConstant(Operation::Turbulence, 0.4);
  noise.Set(Operation::UnitNoiseAt, LinearNoise{.constant = 0.4, .x = 0.1});
  EXPECT_NEAR(Planar(TurbulentThresholdType, {}), 0.256875 / 0.6, kRounding);
  EXPECT_EQ(turbulence()[0].absolute, 1);
  EXPECT_POINT(noise.calls()[1].point, 0.7, 1.45, 2.45);
}

// The constants are stored as floats: 0.4 is 0.40000000596, 4.9999995 is 4.99999952316.
// s: (0.5 - 0.4) * 4.9999995 = 0.49999992251, smooth 0.49999988377.
// ((0.49999988377 + 0.375) / 2 - 0.4) * 1.6666666 = 0.06249989172. A scale of 5 would give
// 0.06249995132, and a 0.4 in double in the last step 0.06249990165.
TEST_F(TurbulenceRecipes, TurbulentThresholdKeepsTheLastDigitsOfItsConstants) {
  noise.SetConstant(Operation::Turbulence, 0);
  noise.SetConstant(Operation::UnitNoiseAt, 0.375);
  EXPECT_EQ(Planar(TurbulentThresholdType, {}), 0.06249989172f);
}

// w = -0.4 * 0.5 / 2 = -0.1, warped x = 0.4: -0.16, of which the magnitude.
TEST_F(TurbulenceRecipes, WarpedMagnitudeHandsAbsoluteToTheHost) {
  noise.Set(Operation::Turbulence, LinearNoise{.x = -0.4});
  EXPECT_NEAR(Planar(WarpedMagnitudeType, {}), 0.16, kRounding);
  EXPECT_POINT(turbulence()[1].point, 0.4, 1.35, 2.15);
  // No fold: |2 * 0.16 - 1| would be 0.68.
  EXPECT_NEAR(Planar(WarpedMagnitudeType, {.absolute = 7}), 0.16, kRounding);
  EXPECT_EQ(turbulence()[2].absolute, 0);
  EXPECT_EQ(turbulence()[3].absolute, 7);
  noise.SetConstant(Operation::Turbulence, -1.4);
  EXPECT_EQ(Planar(WarpedMagnitudeType, {}), 1);
}

// a = 0.2. n = 0.3, warped x = 0.8: 0.32, b = 2.32 / 4 = 0.58; band = 0.28 / 0.4 = 0.7;
// smooth 0.49 * 1.6 = 0.784.
TEST_F(TurbulenceRecipes, SoftBandSmoothsWarpedTurbulence) {
  noise.Set(Operation::Turbulence, LinearNoise{.x = 0.4});
  noise.SetConstant(Operation::SignedNoise, 0.3);
  EXPECT_NEAR(Planar(SoftBandType, {.absolute = 1}), 2 * 0.784 - 1, kRounding);
  EXPECT_POINT(turbulence()[1].point, 0.8, 0.95, 2.55);
  EXPECT_EQ(turbulence()[0].absolute, 1);
  EXPECT_EQ(turbulence()[1].absolute, 0);  // signed here, where HardBandType takes magnitudes
}

// (0.35 + 1.75) / 3.5 = 0.6
TEST_F(TurbulenceRecipes, RemappedTurbulenceIsLinear) {
  noise.SetConstant(Operation::Turbulence, 0.35);
  EXPECT_NEAR(Planar(RemappedTurbulenceType, {.absolute = 5}), 0.6, kRounding);  // no fold
  EXPECT_EQ(turbulence()[0].absolute, 5);
  noise.SetConstant(Operation::Turbulence, -2);
  EXPECT_EQ(Planar(RemappedTurbulenceType, {}), 0);
}

TEST_F(TurbulenceRecipes, BandTurbulenceIsTheHosts) {
  noise.Set(Operation::BandTurbulence, LinearNoise{.constant = 0.5, .x = 0.2});
  EXPECT_NEAR(Planar(BandTurbulenceType, {.octaves = 2.5f}), 0.6, kRounding);
  EXPECT_NEAR(Planar(BandTurbulenceType, {.absolute = 1}), 0.2, kRounding);
  EXPECT_EQ(noise.calls()[0].first, 0.5f);
  EXPECT_EQ(noise.calls()[0].octaves, 2.5f);
}

/// Which octave counts a type hands to the host, in the order of its calls, for 6 octaves and a
/// footprint that has room for 2.
struct OctaveUse {
  NoiseType type;
  std::vector<float> counts;
};

class OctaveCounts : public test::NoiseEngine, public ::testing::WithParamInterface<OctaveUse> {};

TEST_P(OctaveCounts, ReachTheHost) {
  // 0.5 / (0.25 * 1) = 2
  Planar(GetParam().type, {.octaves = 6, .footprint = 0.25f});
  std::vector<float> counts;
  for (const auto& call : noise.calls()) {
    if (call.octaves != 0) counts.push_back(call.octaves);
  }
  EXPECT_EQ(counts, GetParam().counts);
}

INSTANTIATE_TEST_SUITE_P(
    Types, OctaveCounts,
    ::testing::Values(OctaveUse{DualScaleBandType, {5, 5}},  // 2 * 2.5, both for a detail of 1
                      OctaveUse{SquaredFractalType, {2}},
                      OctaveUse{TurbulentUnitSumType, {2, 2, 2}},  // two copies, then the rest
                      OctaveUse{SmoothFractalType, {2}}, OctaveUse{HardBandType, {6, 2}},
                      OctaveUse{TurbulentThresholdType, {2}},
                      OctaveUse{WarpedMagnitudeType, {6, 2}}, OctaveUse{RidgedBandType, {6, 6}},
                      OctaveUse{RidgeProductType, {0.2f}},  // the fine layer: 2 * 0.1
                      OctaveUse{SparsePeakType, {1}}, OctaveUse{SoftBandType, {6, 2}},
                      OctaveUse{RemappedTurbulenceType, {2}}, OctaveUse{BandTurbulenceType, {2}},
                      OctaveUse{FractalCellType, {6, 6}}));

}  // namespace
}  // namespace sorvanix
