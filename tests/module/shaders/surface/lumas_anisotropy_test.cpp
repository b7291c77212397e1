// Lumas' brushed highlights as the host sees them: which lights are asked for, and what they give.
#include <cmath>
#include <numbers>

#include "tests/module/shaders/surface/lumas_fixture.h"

namespace sorvanix::test {
namespace {

// One white layer of roughness 0.5 that is brushed along x, twice as wide along as across.
struct LumasAnisotropyTest : LumasTest {
  SpecularLayer& layer = block.layers[0];

  LumasAnisotropyTest() {
    NoDiffuse();
    OnlyLayer(1);
    layer.intensity = 1;
    layer.roughness = 0.5f;
    block.anisotropyActive = 1;
    block.anisotropyMode = AnisoTagAxis;
    block.anisotropyX = 2;
    block.anisotropyY = 1;
    block.scratchFade = 0;
    tag.matrix1 = tag.matrix2 = {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}};
    render.textureTag = &tag;
    BeginRender();
  }
  void BrushAlong(double azimuth) {
    tag.matrix1.v2 = {static_cast<float>(std::cos(azimuth)), static_cast<float>(std::sin(azimuth)),
                      0};
  }
  float Level() { return Output().x; }
};

// As the table of Ward's formula tells (see ward_test.cpp): widths of 2 x 0.5 and 1 x 0.5.
TEST_F(LumasAnisotropyTest, AHighlightIsWiderAlongTheBrushing) {
  AddLight({1, 0.5f, 0}, {0.6f, 0, 0.8f});
  ExpectVector(Output(), {1.0089785f, 0.5044893f, 0}, 2e-6);
  lights.lights[0].direction = {0, 0.6f, 0.8f};
  ExpectVector(Output(), {0.7415877f, 0.3707939f, 0}, 2e-6);
}

TEST_F(LumasAnisotropyTest, AnIsotropicLayerDoesNotDependOnTheBrushing) {
  AddLight({1, 1, 1}, {0.48f, 0.36f, 0.8f});
  block.anisotropyX = 1;
  const float still = Level();
  for (double azimuth = 0; azimuth < 2 * std::numbers::pi; azimuth += 0.2) {
    BrushAlong(azimuth);
    EXPECT_NEAR(Level(), still, 1e-5 * still);
  }
  block.anisotropyX = 2;
  BrushAlong(0);
  const float along = Level();
  BrushAlong(0.5 * std::numbers::pi);
  EXPECT_GT(std::fabs(Level() - along), 1e-3) << "a brushed one does";
}

// Both cosines above 0.1, so that no limit interferes.
TEST_F(LumasAnisotropyTest, LightAndEyeMayBeSwapped) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  LookAlong({0, 0.8f, -0.6f});
  const float there = Level();
  lights.lights[0].direction = {0, -0.8f, 0.6f};
  LookAlong({-0.6f, 0, -0.8f});
  EXPECT_NEAR(Level(), there, 1e-6);
}

TEST_F(LumasAnisotropyTest, LightsAreAskedFromTheHighestDownAndNoHighlightFromTheHost) {
  AddLight({1, 1, 1}, {0, 0, 1});
  AddLight({1, 1, 1}, {0, 0, 1});
  render.hitPoint = {1, 2, 3};
  Output();
  std::vector<std::string> operations;
  for (const LightCall& call : lights.calls) operations.push_back(call.operation);
  EXPECT_EQ(operations, (std::vector<std::string>{"lightCount", "lightAt", "lightSample", "lightAt",
                                                  "lightSample"}));
  const auto samples = lights.CallsOf("lightSample");
  EXPECT_EQ(samples[0].light, 1);
  EXPECT_EQ(samples[1].light, 0);
  for (const LightCall& call : samples) {
    ExpectExactly(call.point, {1, 2, 3});
    ExpectExactly(call.normal, {0, 0, 1});
    EXPECT_EQ(call.shadows, 1);    // lightParamB
    EXPECT_EQ(call.identity, 77);  // lightParamA
  }
}

TEST_F(LumasAnisotropyTest, EveryModeAsksForTheSameLightsAndForNoiseOnlyWithScratches) {
  AddLight({1, 1, 1}, {0, 0, 1});
  for (std::int32_t mode = 0; mode <= 6; ++mode) {
    for (const std::int32_t scratches : {0, 1}) {
      block.anisotropyMode = mode;
      block.scratchActive = scratches;
      Output();
      EXPECT_EQ(lights.calls.size(), 3u) << mode;
      EXPECT_EQ(noise.callsOf(NoiseOperation::Turbulence).size(), std::size_t(scratches)) << mode;
      EXPECT_EQ(noise.calls().size(), std::size_t(scratches)) << mode;
    }
  }
}

TEST_F(LumasAnisotropyTest, LayersThatAreNotBrushedTakeTheHostsHighlight) {
  AddLight({1, 1, 1}, {0, 0, 1});
  block.layers[1].active = block.layers[2].active = 1;
  block.layers[1].useAnisotropy = 0;
  Output();
  const auto host = lights.CallsOf("illuminate");
  ASSERT_EQ(host.size(), 1u);
  EXPECT_EQ(host[0].exponent, 40);
}

// Widths across of 1 x 0.5 and 1 x 1, H.y^2 = 0.1: exp(-2 x 0.1 / 0.25 / 1.9486833) / sqrt 0.8 in
// red and exp(-2 x 0.1 / 1 / 1.9486833) / sqrt 0.8 in green. Layer 3 is off. Scratches of 2 on
// layer 2 alone make its width (1 + 2) x 1: exp(-2 x 0.1 / 9 / 1.9486833) / sqrt 0.8.
TEST_F(LumasAnisotropyTest, EachLayerHasItsOwnWidthTintAndScratches) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  SpecularLayer& second = block.layers[1];
  second.active = 1;
  second.intensity = second.roughness = 1;
  layer.tint = {1, 0, 0};
  second.tint = {0, 1, 0};
  ExpectVector(Output(), {0.7415877f, 1.0089785f, 0}, 2e-6);
  noise.SetConstant(NoiseOperation::Turbulence, 4);
  block.scratchActive = 1;
  block.scratchOnLayer[0] = block.scratchOnLayer[2] = 0;
  ExpectVector(Output(), {0.7415877f, 1.1053567f, 0}, 2e-6);
}

// --- when there is none ---

TEST_F(LumasAnisotropyTest, AStretchOfZeroSkipsThePass) {
  AddLight({1, 1, 1}, {0, 0, 1});
  for (float* stretch : {&block.anisotropyX, &block.anisotropyY}) {
    const float before = *stretch;
    *stretch = 0;
    EXPECT_EQ(Level(), 0);
    EXPECT_TRUE(lights.calls.empty()) << "and the host gives no highlight either";
    *stretch = before;
  }
}

TEST_F(LumasAnisotropyTest, AModeThatDoesNotExistGivesNoHighlight) {
  AddLight({1, 1, 1}, {0, 0, 1});
  for (const std::int32_t mode : {-1, 7, INT32_MIN, INT32_MAX}) {
    block.anisotropyMode = mode;
    EXPECT_EQ(Level(), 0) << mode;
  }
}

TEST_F(LumasAnisotropyTest, WithoutRoughnessThereIsNoHighlight) {
  AddLight({1, 1, 1}, {0, 0, 1});
  layer.roughness = 0;
  EXPECT_EQ(Level(), 0);
  EXPECT_TRUE(lights.CallsOf("illuminate").empty());
}

// 2 keeps the host's highlight away, and gives none here.
TEST_F(LumasAnisotropyTest, OnlyAnAnisotropyOfOneShines) {
  AddLight({1, 1, 1}, {0, 0, 1});
  layer.useAnisotropy = 2;
  EXPECT_EQ(Level(), 0);
  EXPECT_TRUE(lights.CallsOf("illuminate").empty());
}

TEST_F(LumasAnisotropyTest, WithTheLightsSwitchedOffNoneIsAsked) {
  AddLight({1, 1, 1}, {0, 0, 1});
  render.lightsEnabled = 0;
  EXPECT_EQ(Level(), 0);
  EXPECT_TRUE(lights.calls.empty());
}

TEST_F(LumasAnisotropyTest, LightsFromBehindOrWithoutHighlightOrThatDoNotArriveGiveNone) {
  AddLight({1, 1, 1}, {0.6f, 0, -0.8f});
  AddLight({1, 1, 1}, {1, 0, 0});  // along the surface
  AddLight({1, 1, 1}, {0, 0, 1}).noSpecular = 1;
  AddLight({1, 1, 1}, {0, 0, 1});
  lights.lights.back().arrivesShadowed = false;
  EXPECT_EQ(Level(), 0);
}

TEST_F(LumasAnisotropyTest, ACountBeyondTheLightsIsHarmless) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  host.render.lightCount = [](const RenderContext*) noexcept { return 5; };
  EXPECT_NEAR(Level(), 1.0089785, 2e-6);
}

// --- the view ---

// H is the normal; the root of 0.02 x 0.02 counts as 0.1.
TEST_F(LumasAnisotropyTest, AGrazingViewKeepsTheHighlightBounded) {
  AddLight({1, 1, 1}, {0.9998f, 0, 0.02f});
  LookAlong({0.9998f, 0, -0.02f});
  EXPECT_NEAR(Level(), 10, 1e-4);
}

TEST_F(LumasAnisotropyTest, OnTheBackTheNormalIsTurned) {
  AddLight({1, 1, 1}, {0, 0, -1});
  render.side = -1;
  LookAlong({0, 0, 1});
  EXPECT_NEAR(Level(), 1, 1e-6);
  ExpectExactly(lights.CallsOf("lightSample")[0].normal, {-0.0f, -0.0f, -1});
}

// The view lies behind the surface, and its cosine counts as 0.0001: the root of 0.8 x 0.0001 is
// below 0.1. H = (0, 0.28, 0) / 0.28 lies across: exp(-2 x 2^2 / 1) x 10.
TEST_F(LumasAnisotropyTest, AViewFromBehindCountsAsGrazing) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  LookAlong({0, 0.6f - 0.28f, 0.8f});
  EXPECT_NEAR(Level(), 10 * std::exp(-8.0), 1e-6);
}

// --- scratches ---

// u = 0.5 x 4 = 2: widths of (2 + 2) 0.5 = 2 and (1 + 2) 0.5 = 1.5. Across: H.Y = sqrt 0.1 / 1.5,
// exp(-2 x 0.1 / 2.25 / 1.9486833) / sqrt 0.8 = 0.9554099 / 0.8944272 = 1.0681807.
TEST_F(LumasAnisotropyTest, ScratchesWidenTheHighlight) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  noise.SetConstant(NoiseOperation::Turbulence, 4);
  block.scratchActive = 1;
  EXPECT_NEAR(Level(), 1.0681807, 2e-6);
  block.scratchOnLayer[0] = 0;
  EXPECT_NEAR(Level(), 0.7415877, 2e-6) << "a layer without scratches";
}

// u = -2: the stretch across, 1 - 2, counts as 1e-5: nothing is left but exactly along x.
TEST_F(LumasAnisotropyTest, AStretchBelowZeroDoesNotTurnRound) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  noise.SetConstant(NoiseOperation::Turbulence, -4);
  block.scratchActive = 1;
  EXPECT_EQ(Level(), 0);
  lights.lights[0].direction = {0, 0, 1};
  EXPECT_EQ(Level(), 1);
}

// u = -1 makes the stretch across 0, and the axis zero: the light from the side does not fade.
TEST_F(LumasAnisotropyTest, AStretchOfExactlyZeroIsEndless) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  noise.SetConstant(NoiseOperation::Turbulence, -2);
  block.scratchActive = 1;
  EXPECT_NEAR(Level(), 1 / std::sqrt(0.8), 1e-6);
}

// s = (1 + 2 + 1) / 1000 x 2 x 100 x 5 = 4: u = 2 / 4 = 0.5, the widths (2.5, 1.5) x 0.5. Across:
// exp(-2 x 0.1 / 0.5625 / 1.9486833) / sqrt 0.8 = 0.8332185 / 0.8944272 = 0.9315666. The size is
// that in the world: the tag, in whose frame it is twice as large, changes nothing.
TEST_F(LumasAnisotropyTest, ScratchesFadeWithTheSizeOfTheSample) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  noise.SetConstant(NoiseOperation::Turbulence, 4);
  block.scratchActive = 1;
  block.scratchFade = 5;
  tag.matrix2 = {{0, 0, 0}, {0, 2, 0}, {2, 0, 0}, {0, 0, 2}};
  render.viewPoint = {0.001f, -0.002f, 0.001f};
  EXPECT_NEAR(Level(), 0.9315666, 2e-6);
}

// 1/s is limited to 1: near samples show them in full, as in ScratchesWidenTheHighlight.
TEST_F(LumasAnisotropyTest, ScratchesDoNotGrowBeyondTheirAmplitude) {
  AddLight({1, 1, 1}, {0, 0.6f, 0.8f});
  noise.SetConstant(NoiseOperation::Turbulence, 4);
  block.scratchActive = 1;
  block.scratchFade = 5;
  for (const float size : {1e-9f, 0.0f}) {
    render.viewPoint = {size, 0, 0};
    EXPECT_NEAR(Level(), 1.0681807, 2e-6);
  }
}

// --- discs ---

// A footprint of 1e-5 x 4000 = 0.04 at a size of 1: g = 0.5 / (0.04 x 25) = 0.5, and the stretches
// become 1 + (2 - 1) / 2 and 1. At (0.25, 0.5) the disc is brushed along x. Along:
// exp(-2 x 0.1 / 0.5625 / 1.9486833) / sqrt 0.8 = 0.9315666; near by, with g = 1, 1.0089785.
TEST_F(LumasAnisotropyTest, DiscsThatAreTooSmallTurnRound) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  tag.matrix1 = tag.matrix2 = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  block.anisotropyMode = AnisoDiscsSurface;
  render.hitPoint = {0.25f, 0.5f, 0};
  EXPECT_NEAR(Level(), 1.0089785, 2e-6);
  render.viewPoint = {0, 4000, 0};
  EXPECT_NEAR(Level(), 0.9315666, 2e-6);
  render.viewPoint = {0, 4e9f, 0};
  const float round = Level();
  lights.lights[0].direction = {0, 0.6f, 0.8f};
  EXPECT_NEAR(Level(), round, 1e-6);
}

// In the frame of the tag the view is at (0, 4000, 0) and the hit at (0.5, 1, 0), and thus the disc
// is read at (0.25, 0.5) as above: g = 0.5 / (0.04 x 2 x 25) = 0.25, a stretch of 1.25, and
// exp(-2 x 0.1 / 0.390625 / 1.9486833) / sqrt 0.8 = 0.7689413 / 0.8944272 = 0.8597018.
TEST_F(LumasAnisotropyTest, DiscsAreTooSmallByTheirSizeInTheFrameOfTheTag) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  tag.matrix1 = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  tag.matrix2 = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  block.anisotropyMode = AnisoDiscsSurface;
  block.anisotropyScale = 2;
  render.hitPoint = {0.25f, 0.5f, 0};
  render.viewPoint = {0, 2000, 0};
  EXPECT_NEAR(Level(), 0.8597018, 2e-6);
}

// Neither stretch is 1, so that a change of either would show.
TEST_F(LumasAnisotropyTest, OnlyDiscsOnTheSurfaceTurnRound) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  tag.matrix1 = tag.matrix2 = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  block.anisotropyX = 2;
  block.anisotropyY = 3;
  render.hitPoint = {0.25f, 0.5f, 1};
  for (std::int32_t mode = 0; mode <= 6; ++mode) {
    block.anisotropyMode = mode;
    render.viewPoint = {};
    const float near = Level();
    render.viewPoint = {0, 4000, 0};
    EXPECT_EQ(Level() != near, mode == AnisoDiscsSurface) << mode;
  }
}

}  // namespace
}  // namespace sorvanix::test
