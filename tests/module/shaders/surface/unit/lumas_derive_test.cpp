// What follows from the parameters of Lumas.
#include "module/shaders/surface/lumas_derive.h"

#include <cmath>
#include <functional>
#include <vector>

#include "module/shell/module_state.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

struct SplineCall {
  float value;
  float second, last;  // of the table
  std::int32_t count;
};
std::vector<SplineCall> splineCalls;

struct LumasDeriveTest : ::testing::Test {
  RenderTable table = {};
  LumasBlock block = {};

  LumasDeriveTest() {
    splineCalls.clear();
    table.splineLookup = [](float value, const float* values, std::int32_t count) noexcept {
      splineCalls.push_back({value, values[1], values[count - 1], count});
      return 0.75f;
    };
    hostApi.render = &table;
    block.diffuseOn = 1;
    block.diffuseColour = {0.5f, 0.25f, 0};
    block.diffuseStrength = 2;
    block.diffuseLevel = 1;
    for (int i = 0; i < 3; ++i) {
      block.layerOn[i] = block.scratchOnLayer[i] = 1;
      block.layers[i].colour = {1, 0.5f, 0.25f};
      block.layers[i].colourStrength = 0.5f;
      block.layers[i].intensity = 1;
      block.layers[i].edgeIntensity = 1;
      block.layers[i].size = 0.5f;
    }
    block.scratchAmplitude = block.scratchScaleU = block.scratchScaleV = 1;
  }
  ~LumasDeriveTest() override { hostApi.render = nullptr; }

  SpecularLayer& Derived() {
    DeriveLumas(block);
    return block.layers[1];
  }
};

// --- a layer ---

TEST_F(LumasDeriveTest, ALayersTintExponentAndWindow) {
  block.layers[1].contrast = 0.5f;
  const SpecularLayer& layer = Derived();
  ExpectExactly(layer.tint, {0.5f, 0.25f, 0.125f});
  EXPECT_EQ(layer.exponent, 4);  // 2 / 0.5
  EXPECT_EQ(layer.contrastLow, 0.25f);
  EXPECT_EQ(layer.contrastHigh, 0.75f);
  EXPECT_EQ(layer.roughness, 0.75f);
}

TEST_F(LumasDeriveTest, ALayerThatIsOffIsDerivedButNeitherActiveNorEdged) {
  block.layerOn[1] = 0;
  block.layers[1].edgeIntensity = 3;
  const SpecularLayer& layer = Derived();
  EXPECT_EQ(layer.active, 0);
  EXPECT_EQ(layer.useEdge, 0);
  EXPECT_EQ(layer.exponent, 4);
  ExpectExactly(layer.tint, {0.5f, 0.25f, 0.125f});
}

TEST_F(LumasDeriveTest, ALayerIsActiveUnlessItIsBlack) {
  EXPECT_EQ(Derived().active, 1);
  block.layers[1].colour = {0, 0, 0};
  EXPECT_EQ(Derived().active, 0);
  block.layers[1].colour = {0, 0, 1e-30f};
  EXPECT_EQ(Derived().active, 1);
  block.layers[1].colourStrength = 0;
  EXPECT_EQ(Derived().active, 0);
}

TEST_F(LumasDeriveTest, ALayerIsActiveWhereOneOfItsLevelsIsNotZero) {
  SpecularLayer& layer = block.layers[1];
  layer.intensity = 0;
  EXPECT_EQ(Derived().active, 1);
  EXPECT_EQ(layer.useEdge, 1);
  layer.edgeIntensity = 0;
  EXPECT_EQ(Derived().active, 0);
  EXPECT_EQ(layer.useEdge, 0);
  layer.intensity = -1;
  EXPECT_EQ(Derived().active, 1);
}

TEST_F(LumasDeriveTest, ASizeOfZeroHasAnExponentWithoutEnd) {
  block.layers[1].size = 0;
  EXPECT_EQ(Derived().exponent, INFINITY);
}

// --- the diffuse term ---

TEST_F(LumasDeriveTest, TheDiffuseTintIsTheColourTimesItsStrength) {
  DeriveLumas(block);
  ExpectExactly(block.diffuseTint, {1, 0.5f, 0});
  EXPECT_EQ(block.diffuseActive, 1);
}

TEST_F(LumasDeriveTest, ADiffuseTermThatIsOffKeepsItsTint) {
  block.diffuseOn = 0;
  block.diffuseTint = {7, 7, 7};
  DeriveLumas(block);
  EXPECT_EQ(block.diffuseActive, 0);
  ExpectExactly(block.diffuseTint, {7, 7, 7});
}

TEST_F(LumasDeriveTest, TheDiffuseTermIsActiveUnlessItIsBlack) {
  const LumasBlock lit = block;
  const std::function<void(LumasBlock&)> dark[] = {[](LumasBlock& b) {
                                                     b.diffuseColour = {0, 0, 0};
                                                   },
                                                   [](LumasBlock& b) { b.diffuseStrength = 0; },
                                                   [](LumasBlock& b) { b.diffuseLevel = 0; }};
  for (const auto& darken : dark) {
    block = lit;
    darken(block);
    DeriveLumas(block);
    EXPECT_EQ(block.diffuseActive, 0);
  }
}

// A contrast of -1 reaches beyond both ends: -0.5 and 1.5.
TEST_F(LumasDeriveTest, TheDiffuseWindow) {
  block.diffuseContrast = -1;
  DeriveLumas(block);
  EXPECT_EQ(block.diffuseLow, -0.5f);
  EXPECT_EQ(block.diffuseHigh, 1.5f);
}

TEST_F(LumasDeriveTest, ASigmaOfZeroIsSmooth) {
  block.sigma = 0;
  DeriveLumas(block);
  EXPECT_EQ(block.sigma2, 0);
  EXPECT_EQ(block.orenA, 1);
  EXPECT_EQ(block.orenB, 0);
}

// 0.5^2 = 0.25; 1 - 0.125 / 0.58 = 0.7844828; 0.1125 / 0.34 = 0.3308824.
TEST_F(LumasDeriveTest, TheOrenNayarConstants) {
  block.sigma = 0.5f;
  DeriveLumas(block);
  EXPECT_EQ(block.sigma2, 0.25f);
  EXPECT_NEAR(block.orenA, 0.7844828, 1e-6);
  EXPECT_NEAR(block.orenB, 0.3308824, 1e-6);
}

// --- anisotropy and scratches ---

TEST_F(LumasDeriveTest, AnisotropyIsActiveAsItIsOn) {
  for (const std::int32_t on : {0, 1, 5}) {
    block.anisotropyOn = on;
    DeriveLumas(block);
    EXPECT_EQ(block.anisotropyActive, on);
  }
}

TEST_F(LumasDeriveTest, ScratchesNeedAmplitudeScalesAndALayer) {
  const LumasBlock scratched = block;
  DeriveLumas(block);
  EXPECT_EQ(block.scratchActive, 1);
  const std::function<void(LumasBlock&)> smooth[] = {
      [](LumasBlock& b) { b.scratchAmplitude = 0; }, [](LumasBlock& b) { b.scratchScaleU = 0; },
      [](LumasBlock& b) { b.scratchScaleV = 0; },
      [](LumasBlock& b) { b.scratchOnLayer[0] = b.scratchOnLayer[1] = b.scratchOnLayer[2] = 0; }};
  for (const auto& change : smooth) {
    block = scratched;
    change(block);
    DeriveLumas(block);
    EXPECT_EQ(block.scratchActive, 0);
  }
  block = scratched;
  block.scratchOnLayer[0] = block.scratchOnLayer[1] = 0;
  DeriveLumas(block);
  EXPECT_EQ(block.scratchActive, 1) << "one layer is enough";
}

// --- roughness ---

// Below 0.05 a bias curve: at t = 1/2 (a size of 0.025) it is 2^log2(0.7) = 0.7, times 0.11.
TEST_F(LumasDeriveTest, SmallSizesFollowABiasCurve) {
  EXPECT_NEAR(RoughnessFromSize(0.025f), 0.077, 1e-7);
  EXPECT_NEAR(RoughnessFromSize(0.0125f), 0.11 * 0.7 * 0.7, 1e-7);  // t = 1/4
  EXPECT_EQ(RoughnessFromSize(0), 0);
  EXPECT_EQ(RoughnessFromSize(-1), 0);
  EXPECT_TRUE(splineCalls.empty());
}

TEST_F(LumasDeriveTest, MiddleSizesReadTheFirstCurve) {
  EXPECT_EQ(RoughnessFromSize(0.0625f), 0.75f);
  ASSERT_EQ(splineCalls.size(), 1u);
  EXPECT_EQ(splineCalls[0].value, 0.625f);
  EXPECT_EQ(splineCalls[0].second, 0.04f);
  EXPECT_EQ(splineCalls[0].last, 0.17f);
  EXPECT_EQ(splineCalls[0].count, 21);
}

TEST_F(LumasDeriveTest, LargeSizesReadTheSecondCurve) {
  for (const auto& [size, position] : {std::pair{0.5f, 0.25f}, {2.0f, 1.0f}, {50.0f, 1.0f}}) {
    splineCalls.clear();
    RoughnessFromSize(size);
    ASSERT_EQ(splineCalls.size(), 1u);
    EXPECT_EQ(splineCalls[0].value, position);
    EXPECT_EQ(splineCalls[0].second, 0.17f);
    EXPECT_EQ(splineCalls[0].last, 0.61f);
    EXPECT_EQ(splineCalls[0].count, 21);
  }
}

// The float 0.05 is a little above 0.05, and 0.1 a little above 0.1.
TEST_F(LumasDeriveTest, TheLimitsBelongToTheCurvesAboveThem) {
  RoughnessFromSize(0.05f);
  RoughnessFromSize(0.1f);
  ASSERT_EQ(splineCalls.size(), 2u);
  EXPECT_EQ(splineCalls[0].last, 0.17f);
  EXPECT_EQ(splineCalls[1].last, 0.61f);
}

TEST_F(LumasDeriveTest, AnUndefinedSizeReadsTheBeginningOfTheCurve) {
  RoughnessFromSize(NAN);
  ASSERT_EQ(splineCalls.size(), 1u);
  EXPECT_EQ(splineCalls[0].value, 0);
}

}  // namespace
}  // namespace sorvanix::test
