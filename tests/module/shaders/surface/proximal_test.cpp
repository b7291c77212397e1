// What Proximal makes of the points around a sample: the value, the preview, the bump.
#include <cmath>

#include "module/shaders/surface/proximal_weight.h"
#include "tests/module/shaders/surface/proximal_fixture.h"

namespace sorvanix::test {
namespace {

// --- the value ---

TEST_F(ProximalTest, APointReachesOutToAHundredUnits) {
  AddLampAt(0);
  BeginRender();
  EXPECT_EQ(ValueAt(0), 1);
  EXPECT_EQ(ValueAt(0, 30, 40), 0.5f);
  EXPECT_EQ(ValueAt(100), 0);
  EXPECT_EQ(ValueAt(1000), 0);
}

// From 50 to 200 units: (200 - 125) / 150.
TEST_F(ProximalTest, TheLimitsAreInHundredsOfUnits) {
  AddLampAt(0);
  block.minimum = 0.5f;
  block.maximum = 2;
  BeginRender();
  EXPECT_EQ(ValueAt(50), 1);
  EXPECT_EQ(ValueAt(125), 0.5f);
  EXPECT_EQ(ValueAt(200), 0);
}

// From 100 down to 0: x = (25 - 100) / (0 - 100) = 0.75.
TEST_F(ProximalTest, AMinimumAboveTheMaximumInverts) {
  AddLampAt(0);
  block.minimum = 1;
  block.maximum = 0;
  BeginRender();
  EXPECT_EQ(ValueAt(0), 0);
  EXPECT_EQ(ValueAt(25), 0.25f);
  EXPECT_EQ(ValueAt(100), 1);
}

TEST_F(ProximalTest, StrengthMultipliesEachWeightBeforeTheyAreMerged) {
  AddLampAt(0);
  AddLampAt(100);
  block.strength = 3;
  block.combine = ProximalScreen;
  BeginRender();
  EXPECT_EQ(ValueAt(75), 1);  // weights 0.75 and 2.25, limited
  block.strength = 0.5f;
  EXPECT_EQ(ValueAt(50), 0.4375f);  // 1 - 0.75 x 0.75
}

TEST_F(ProximalTest, WeightsAreMergedByTheRule) {
  AddLampAt(0);
  AddLampAt(100);
  BeginRender();  // at 25 the weights are 0.75 and 0.25
  const float expected[] = {
      0.75f,    // the greater
      0.8125f,  // 1 - 0.25 x 0.75
      0.5f,     // |0.25 - 0.75|
      // 1 - 0.25 - 0.5625 = 0.1875, then 1 - 0.8125 x 0.75 - 0.0625
      0.328125f,
      1,  // the sum
      0,  // a rule that does not exist
  };
  for (std::int32_t combine = 0; combine < 6; ++combine) {
    block.combine = combine;
    EXPECT_EQ(ValueAt(25), expected[combine]) << combine;
  }
}

TEST_F(ProximalTest, TheValueIsLimitedTo01) {
  AddLampAt(0);
  AddLampAt(0);
  BeginRender();
  EXPECT_EQ(ValueAt(0), 1);  // 1 + 1
  block.strength = -1;
  EXPECT_EQ(ValueAt(0), 0);
}

// The bare distance, which the strength leaves alone.
TEST_F(ProximalTest, AFalloffThatDoesNotExistShowsTheDistance) {
  AddLampAt(0);
  block.falloff = 8;
  block.strength = 0.5f;
  BeginRender();
  EXPECT_EQ(ValueAt(0.25f), 0.25f);
}

TEST_F(ProximalTest, WithoutPointsTheValueIs0) {
  BeginRender();
  EXPECT_EQ(ValueAt(0), 0);
}

TEST_F(ProximalTest, WithoutASceneItIsBlackAndBendsNothing) {
  const RenderInit init = {&render, nullptr};
  ASSERT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  sample.render = &render;
  EXPECT_EQ(ValueAt(0), 0);
  shader.instance.channel = ChannelBump;
  EXPECT_EQ(ValueAt(0), 0);
  ExpectExactly(render.bumpNormal, {0, 0, 1});
  ExpectExactly(render.bumpTint, {0, 0, 0});
}

// --- the preview ---

// (0.5 + 0.15, 0.5 + 0.2): 0.25 from the middle, doubled 0.5.
TEST_F(ProximalTest, WithoutARenderThePreviewIsADot) {
  AddLampAt(0);
  sample.uvw = {0.5f, 0.5f, 7};
  EXPECT_EQ(shader.Output(sample).x, 1);
  sample.uvw = {0.65f, 0.7f, 0};
  EXPECT_NEAR(shader.Output(sample).x, 0.5, 1e-6);
  sample.uvw = {0, 0.5f, 0};
  EXPECT_EQ(shader.Output(sample).x, 0);
  block.strength = 4;
  sample.uvw = {0.65f, 0.7f, 0};
  EXPECT_NEAR(shader.Output(sample).x, 2, 1e-6) << "not limited";
}

// The limits as they stand, without the factor 100.
TEST_F(ProximalTest, ThePreviewTakesTheLimitsAsFractions) {
  block.minimum = 0.25f;
  block.maximum = 0.75f;
  sample.uvw = {0.75f, 0.5f, 0};  // 0.5: half the way
  EXPECT_EQ(shader.Output(sample).x, 0.5f);
}

// The distance is limited to 1 in the corners.
TEST_F(ProximalTest, ThePreviewScalesABareDistanceToo) {
  block.falloff = -1;
  block.strength = 3;
  sample.uvw = {0.75f, 0.5f, 0};
  EXPECT_EQ(shader.Output(sample).x, 1.5f);
  sample.uvw = {0, 0, 0};
  EXPECT_EQ(shader.Output(sample).x, 3);
}

TEST_F(ProximalTest, WithoutSlotsARenderShowsThePreview) {
  AddLampAt(0);
  sample.render = &render;
  sample.uvw = {0.75f, 0.5f, 0};
  EXPECT_EQ(ValueAt(1000), 0.5f);
}

// The lamp would show 0 there.
TEST_F(ProximalTest, SlotsWithoutARenderShowThePreview) {
  AddLampAt(0);
  BeginRender();
  ASSERT_NE(shader.instance.slots, nullptr);
  sample.render = nullptr;
  sample.uvw = {0.75f, 0.5f, 0};
  EXPECT_EQ(ValueAt(1000), 0.5f);
}

// --- bump ---

// At (50, 0, 0) the value falls by 0.01 a unit: a - b = (0.5025 - 0.4975) = 0.005, times 7.4 is
// 0.037 along U. Along V both neighbours are equally far.
TEST_F(ProximalTest, TheBumpLeansAwayFromThePoint) {
  AddLampAt(0);
  shader.instance.channel = ChannelBump;
  BeginRender();
  EXPECT_EQ(ValueAt(50), 0) << "black";
  const float length = std::sqrt(1 + 0.037f * 0.037f);
  ExpectVector(render.bumpNormal, {0.037f / length, 0, 1 / length}, 1e-5);
  ExpectExactly(render.bumpTint, {1, 1, 1});
}

// Four times as strong the values are 4 x 0.5025 and 4 x 0.4975: 7.4 x 0.02 = 0.148.
TEST_F(ProximalTest, TheBumpSeesValuesBeyondOne) {
  AddLampAt(0);
  block.strength = 4;
  shader.instance.channel = ChannelBump;
  BeginRender();
  ValueAt(50);
  const float length = std::sqrt(1 + 0.148f * 0.148f);
  ExpectVector(render.bumpNormal, {0.148f / length, 0, 1 / length}, 1e-5);
}

// Tangents twice as long step twice as far, 0.01 x 0.5 x 2, and bend twice as much: along V,
// 7.4 x 0.01 x 2 = 0.148. Behind minus ahead there too.
TEST_F(ProximalTest, TheBumpGrowsWithTheTangents) {
  AddLampAt(0);
  shader.instance.channel = ChannelBump;
  render.tangentU = {0, 0, 0};
  render.tangentV = {0, 2, 0};
  BeginRender();
  ValueAt(0, 50);
  const float length = std::sqrt(1 + 0.148f * 0.148f);
  ExpectVector(render.bumpNormal, {0, 0.148f / length, 1 / length}, 1e-5);
}

}  // namespace
}  // namespace sorvanix::test
