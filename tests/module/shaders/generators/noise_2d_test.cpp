// 2D Noise through the contract: its colour path without a render.
#include <cmath>
#include <cstdint>

#include "tests/module/shaders/generators/noise_2d_fixture.h"

namespace sorvanix::test {
namespace {

// --- the colour path without a render ---

TEST_F(Noise2DTest, TheDefaultBlockShowsTypeTwelveBetweenBlackAndWhite) {
  EXPECT_EQ(block.noiseType, 12);
  EXPECT_EQ(block.octaves, 5);
  EXPECT_FLOAT_EQ(GreyOf(0.32f), 0.32f);
}

// x = 0.25 * 12.8 * 2 * 0.5 = 3.2, y = 0.5 * 12.8 * 2 * 0.25 = 3.2;
// 0.1 x + 0.05 y = 0.48. The third coordinate of uvw is dropped.
TEST_F(Noise2DTest, ThePointIsUvwTimesTwelvePointEightTimesTheScales) {
  block.scale = 2;
  block.scaleU = 0.5f;
  block.scaleV = 0.25f;
  sample.uvw = {0.25f, 0.5f, 1000};
  noise = {.x = 0.1f, .y = 0.05f, .z = 1};
  EXPECT_NEAR(Grey(), 0.48f, 1e-6f);
}

TEST_F(Noise2DTest, MixesTheTwoColours) {
  block.colorLow = {0.1f, 0.2f, 2};
  block.colorHigh = {0.5f, 0, -2};
  noise.base = 0.25f;
  const Vector colour = shader.Output(sample);
  EXPECT_FLOAT_EQ(colour.x, 0.2f);   // 0.1 + 0.4 * 0.25
  EXPECT_FLOAT_EQ(colour.y, 0.15f);  // 0.2 - 0.2 * 0.25
  EXPECT_FLOAT_EQ(colour.z, 1.0f);   // 2 - 4 * 0.25
}

TEST_F(Noise2DTest, SpeedTimesSampleTimeIsTheNoiseTime) {
  block.speed = 2;
  sample.time = 3;
  noise.time = 0.1f;
  EXPECT_FLOAT_EQ(Grey(), 0.6f);
}

TEST_F(Noise2DTest, ATypeOffTheCatalogueIsMidGrey) {
  for (const std::int32_t type : {-1, 30, INT32_MIN, INT32_MAX}) {
    block.noiseType = type;
    EXPECT_EQ(Grey(), 0.5f);
  }
}

TEST_F(Noise2DTest, AScaleOfNothingReadsOnePointEverywhere) {
  block.scale = 0;
  noise = {.base = 0.3f, .x = 0.1f, .y = 0.1f};
  sample.uvw = {7, -3, 2};
  EXPECT_FLOAT_EQ(Grey(), 0.3f);
}

// --- what the catalogue is asked ---

float askedOctaves, askedBand;

TEST_F(Noise2DTest, TheOctavesReachTheCatalogue) {
  started.host.render.bandTurbulence = [](const Vector*, float, float octaves,
                                          float band) noexcept {
    askedOctaves = octaves;
    askedBand = band;
    return 0.25f;
  };
  block.noiseType = 22;
  EXPECT_FLOAT_EQ(Grey(), 0.25f);
  EXPECT_EQ(askedOctaves, 5) << "the default";
  EXPECT_EQ(askedBand, 0.5f);
  block.octaves = 2.5f;
  Grey();
  EXPECT_EQ(askedOctaves, 2.5f);
}

TEST_F(Noise2DTest, AbsoluteFoldsTheNoiseAtItsMiddle) {
  block.absolute = 1;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.5f);  // |2 * 0.25 - 1|
}

// w = 10 * 0.1 = 1, F = 0.5 / (1 * 2) = 0.25: 0.5 + 0.25 * (0.9 - 0.5) = 0.6.
TEST_F(Noise2DTest, DetailStrengthensTheFilter) {
  block.detail = 2;
  sample.delta = {0.1f, 0, 0};
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6f);
}

// --- the noise state that start leaves ---

// From the seed 665 the generator's state, ((state + 1) * 69069) mod 2^31, goes to 45999954 and
// 1042576503; a number is the state / 2^31. Building the tables draws nothing from it.
TEST_F(Noise2DTest, WhiteNoiseStartsWithTheSeedsFirstNumbers) {
  block.noiseType = 17;
  EXPECT_EQ(Grey(), static_cast<float>(45999954 * 0x1p-31));
  EXPECT_EQ(Grey(), static_cast<float>(1042576503 * 0x1p-31));
}

// Cell (0, 0, 0) at time 0: P[0] = 225, P[225] = 79, P[79] = 218, P[218] = 78. Entry 78 of the
// values is the 79th number from the seed 665, whose state is 1046613676: 2 * 1046613676 / 2^31 - 1
// = -0.02526505664, and the sign is dropped.
TEST_F(Noise2DTest, HashedBlocksReadTheSeededValues) {
  block.noiseType = 3;
  EXPECT_FLOAT_EQ(Grey(), 0.02526505664f);
}

// --- the filter width: the mean of type 12 is 0.5, reached with F = 0.5 / (width * detail) ---

// d = 2 * 10, w = |20 * 0.02| + |20 * -0.015| + |20 * 0.005| + 0.5 * 0.4 = 0.4 + 0.3 + 0.1 + 0.2 =
// 1; F = 0.5 / (1 * 1), 0.5 + 0.5 (0.9 - 0.5) = 0.7.
TEST_F(Noise2DTest, TheWidthComesFromTheDeltasMagnitudesAndTheBlur) {
  block.scale = 2;
  sample.delta = {0.02f, -0.015f, 0.005f};
  sample.blurScale = 0.5f;
  sample.blurOffset = 0.4f;
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
}

// w = |10 * -0.1| = 1; a signed sum would be no width at all and leave 0.9.
TEST_F(Noise2DTest, ADeltaBelowZeroWidensInEachDirection) {
  for (const Vector& delta : {Vector{-0.1f, 0, 0}, Vector{0, -0.1f, 0}, Vector{0, 0, -0.1f}}) {
    sample.delta = delta;
    EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
  }
}

TEST_F(Noise2DTest, TheAxisScalesDoNotEnterTheWidth) {
  block.scaleU = block.scaleV = 100;
  sample.delta = {0.1f, 0, 0};  // w = 1
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
}

// With a scale of 0 only the blur is left: w = 1 * 1.
TEST_F(Noise2DTest, AScaleOfNothingKeepsTheBlurInTheWidth) {
  block.scale = 0;
  sample.delta = {5, 5, 5};
  sample.blurOffset = 1;
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
}

TEST_F(Noise2DTest, TheRenderScalesTheWidth) {
  BeginRender();
  sample.delta = {0.05f, 0, 0};  // w = 0.5
  render.filterScale = 4;        // 2: F = 0.25, 0.5 + 0.25 * 0.4 = 0.6
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6f);
}

TEST_F(Noise2DTest, ARenderWithoutFilteringHasNoWidth) {
  BeginRender();
  sample.delta = {100, 100, 100};
  render.filteringOn = 0;
  EXPECT_FLOAT_EQ(GreyOf(0.9f), 0.9f);
}

// --- cycles, clip, brightness, contrast ---

TEST_F(Noise2DTest, CyclesOfZeroOrLessLeaveTheValue) {
  block.cycles = 0;
  EXPECT_FLOAT_EQ(GreyOf(0.3f), 0.3f);
  block.cycles = -2;
  EXPECT_FLOAT_EQ(GreyOf(0.3f), 0.3f);
}

// c = 0.5 - cos(0.25 * 6.29185358) / 2 = 0.5 + sin(0.002167068) / 2 = 0.50108353.
TEST_F(Noise2DTest, CyclesOfOneAreTheFullCosineWithTheLongerTurn) {
  block.cycles = 1;
  EXPECT_NEAR(GreyOf(0.25f), 0.50108353f, 2e-7f);
}

// (0.50108353 - 0.25) * 0.5 + 0.25 = 0.37554177.
TEST_F(Noise2DTest, CyclesBelowOneBlendWithOneCosine) {
  block.cycles = 0.5f;
  EXPECT_EQ(GreyOf(0), 0) << "the cosine of 0 is 1, so nothing moves";
  EXPECT_NEAR(GreyOf(0.25f), 0.37554177f, 2e-7f);
}

// 0.5 - cos(0.125 * 2 * 6.29185358) / 2: two cycles at 0.125 are one at 0.25.
TEST_F(Noise2DTest, CyclesMultiplyInsideTheCosine) {
  block.cycles = 2;
  EXPECT_NEAR(GreyOf(0.125f), 0.50108353f, 2e-7f);
}

TEST_F(Noise2DTest, TheClipStretchesLowToHigh) {
  block.lowClip = 0.2f;
  block.highClip = 0.6f;
  EXPECT_FLOAT_EQ(GreyOf(0.3f), 0.25f);
  EXPECT_EQ(GreyOf(0.1f), 0);
  EXPECT_EQ(GreyOf(0.7f), 1);
}

TEST_F(Noise2DTest, EqualClipsAreAHardThreshold) {
  block.lowClip = block.highClip = 0.5f;
  EXPECT_EQ(GreyOf(0.5f), 1);
  EXPECT_EQ(GreyOf(0.49f), 0);
}

TEST_F(Noise2DTest, BrightnessIsAddedAndClamped) {
  block.brightness = 0.25f;
  EXPECT_FLOAT_EQ(GreyOf(0.5f), 0.75f);
  block.brightness = 1;
  EXPECT_EQ(GreyOf(0), 1);
  block.brightness = -1;
  EXPECT_EQ(GreyOf(1), 0);
}

TEST_F(Noise2DTest, BrightnessSaturatesBeforeTheContrast) {
  block.brightness = 1;
  block.contrast = -0.5f;
  EXPECT_FLOAT_EQ(GreyOf(0), 0.75f);  // 1 - (0.5 - 1) * -0.5
  // 0.5 + 1 is clamped to 1. Unclamped it would be 1.5 - (0.5 - 1.5) * -0.5 = 1.
  EXPECT_FLOAT_EQ(GreyOf(0.5f), 0.75f);
}

TEST_F(Noise2DTest, ContrastBelowZeroDrawsToTheMiddle) {
  block.contrast = -1;
  EXPECT_EQ(GreyOf(0), 0.5f);
  EXPECT_EQ(GreyOf(1), 0.5f);
  block.contrast = -0.5f;
  EXPECT_FLOAT_EQ(GreyOf(0.2f), 0.35f);  // 0.2 + 0.5 * 0.3
}

TEST_F(Noise2DTest, ContrastBelowMinusOneCrossesOverUnclamped) {
  block.contrast = -4;
  EXPECT_FLOAT_EQ(GreyOf(0), 2.0f);  // 0 + 4 * 0.5
}

TEST_F(Noise2DTest, ContrastAboveZeroSteepens) {
  block.contrast = 0.5f;  // 0.25..0.75 onto 0..1
  EXPECT_FLOAT_EQ(GreyOf(0.5f), 0.5f);
  EXPECT_FLOAT_EQ(GreyOf(0.35f), 0.2f);
  block.contrast = 1;
  EXPECT_EQ(GreyOf(0.5f), 1);
  EXPECT_EQ(GreyOf(0.49f), 0);
}

}  // namespace
}  // namespace sorvanix::test
