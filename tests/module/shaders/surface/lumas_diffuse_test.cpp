// Lumas' own diffuse light: the Oren-Nayar term of every light, with the contrasts of light and
// surface.
#include <cmath>

#include "tests/module/shaders/surface/lumas_fixture.h"

namespace sorvanix::test {
namespace {

struct LumasRoughTest : LumasTest {
  // A white, smooth surface at level 1: every light gives its cosine.
  LumasRoughTest() {
    OnlyLayer(0);
    block.orenNayar = 1;
    block.diffuseLevel = block.diffuseStrength = 1;
    block.diffuseColour = block.diffuseTint = {1, 1, 1};
    block.sigma2 = block.orenB = 0;
    block.orenA = 1;
    BeginRender();
  }
};

TEST_F(LumasRoughTest, ASmoothSurfaceShowsTheCosine) {
  AddLight({1, 0.5f, 2}, {0.6f, 0, 0.8f});
  ExpectVector(Output(), {0.8f, 0.4f, 1.6f});
}

// R = 0.5 x 2 x (1, 0.5, 0.25), and the level 0.5 and the tint come once more:
// 0.5 x (2, 1, 0.5) x (1, 0.5, 0.25) x 0.8.
TEST_F(LumasRoughTest, LevelAndColourCountTwice) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  block.diffuseLevel = 0.5f;
  block.diffuseStrength = 2;
  block.diffuseColour = {1, 0.5f, 0.25f};
  block.diffuseTint = {2, 1, 0.5f};
  ExpectVector(Output(), {0.8f, 0.2f, 0.05f});
}

// The eye on the normal: beta and the angle between are 0. A light at a cosine of 0.5 and sigma 1:
// G = 0.5 x 0.6240602 = 0.3120301, T = 0.17 x 0.5 / 1.13 = 0.0752212.
TEST_F(LumasRoughTest, ARoughSurfaceIsFlatter) {
  AddLight({1, 1, 1}, {0.8660254f, 0, 0.5f});
  block.sigma2 = 1;
  block.orenA = 0.6240602f;
  block.orenB = 0.4128440f;
  ExpectVector(Output(), {0.3872513f, 0.3872513f, 0.3872513f});
}

TEST_F(LumasRoughTest, TendsToTheCosineAsRoughnessVanishes) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  LookAlong({0, 0.6f, -0.8f});
  double before = 1;
  for (const float sigma : {0.5f, 0.1f, 0.02f, 0.004f}) {
    const float s2 = sigma * sigma;
    block.sigma2 = s2;
    block.orenA = 1 - 0.5f * s2 / (s2 + 0.33f);
    block.orenB = 0.45f * s2 / (s2 + 0.09f);
    const double difference = std::fabs(Output().x - 0.8f);
    EXPECT_LT(difference, before);
    before = difference;
  }
  EXPECT_LT(before, 1e-4);
}

TEST_F(LumasRoughTest, ThrowsAwayTheLightOfTheLayersCalls) {
  lights.illuminate = [](const RenderContext&, Vector& diffuse, Vector&, float) {
    diffuse = {5, 5, 5};
  };
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  block.layers[0].active = 1;
  ExpectVector(Output(), {0.8f, 0.8f, 0.8f});
}

TEST_F(LumasRoughTest, AValueOtherThanOneTakesTheHostsLight) {
  lights.illuminate = [](const RenderContext&, Vector& diffuse, Vector&, float) {
    diffuse = {0.25f, 0.5f, 0.75f};
  };
  block.orenNayar = 2;
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  EXPECT_EQ(Operations(lights.calls), Names{"illuminate"});
}

TEST_F(LumasRoughTest, AsksForTheLightsFromTheHighestDown) {
  AddLight({1, 1, 1}, {0, 0, 1});
  AddLight({1, 1, 1}, {0, 0, 1});
  AddLight({1, 1, 1}, {0, 0, 1});
  render.hitPoint = {1, 2, 3};
  Output();
  EXPECT_EQ(Operations(lights.calls),
            (Names{"lightCount", "lightAt 2", "lightSample 2", "lightAt 1", "lightSample 1",
                   "lightAt 0", "lightSample 0"}));
  for (const LightCall& call : lights.CallsOf("lightSample")) {
    ExpectExactly(call.point, {1, 2, 3});
    ExpectExactly(call.normal, {0, 0, 1});
    EXPECT_EQ(call.shadows, 1);    // lightParamB
    EXPECT_EQ(call.identity, 77);  // lightParamA
  }
}

TEST_F(LumasRoughTest, OnTheBackTheNormalIsTurnedToTheEye) {
  AddLight({1, 1, 1}, {0.6f, 0, -0.8f});
  LookAlong({0, 0, 1});
  ExpectVector(Output(), {0.8f, 0.8f, 0.8f});
  ExpectExactly(lights.CallsOf("lightSample")[0].normal, {-0.0f, -0.0f, -1});
}

// The window 0.25 to 0.75 makes a cosine of 0.5625 first 0.625, in the term, and then 0.75, in the
// sum.
TEST_F(LumasRoughTest, TheContrastSteepensTheCosineAndThenTheSum) {
  AddLight({1, 1, 1}, {0.8267974f, 0, 0.5625f});
  block.diffuseContrast = 0.5f;
  block.diffuseLow = 0.25f;
  block.diffuseHigh = 0.75f;
  ExpectVector(Output(), {0.75f, 0.75f, 0.75f});
}

TEST_F(LumasRoughTest, ACountBeyondTheLightsIsHarmless) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  host.render.lightCount = [](const RenderContext*) noexcept { return 5; };
  ExpectVector(Output(), {0.8f, 0.8f, 0.8f});
}

TEST_F(LumasRoughTest, LightsThatDoNotArriveAddNothing) {
  AddLight({1, 1, 1}, {0, 0, 1});
  lights.lights[0].arrivesShadowed = false;
  ExpectExactly(Output(), {0, 0, 0});
}

TEST_F(LumasRoughTest, AnAmbientLightAddsItsColourAsItIs) {
  AddLight({0.25f, 0.5f, 1}, {0, 0, -1}).ambient = 1;
  ExpectExactly(Output(), {0.25f, 0.5f, 1});
}

TEST_F(LumasRoughTest, ALightWithoutDiffuseShareAddsNothing) {
  AddLight({1, 1, 1}, {0, 0, 1}).noDiffuse = 1;
  ExpectExactly(Output(), {0, 0, 0});
}

TEST_F(LumasRoughTest, ALightFromBehindAddsNothing) {
  AddLight({1, 1, 1}, {0.6f, 0, -0.8f});
  ExpectExactly(Output(), {0, 0, 0});
}

// A window from -1 to 1 maps the cosine -0.5 to 0.25, and the light shines around the edge.
TEST_F(LumasRoughTest, AWindowThatBeginsElsewhereLetsLightAround) {
  AddLight({1, 1, 1}, {0.8660254f, 0, -0.5f});
  block.diffuseLow = -1;
  ExpectVector(Output(), {0.25f, 0.25f, 0.25f});
}

// e^-ln 2 = 0.5: the root of 0.64 is 0.8. The contrast takes the cosine's magnitude, so light from
// behind is kept out by the test before it.
TEST_F(LumasRoughTest, ALightsContrastBendsItsCosine) {
  AddLight({1, 1, 1}, {0.7683749f, 0, 0.64f}).contrast = 0.6931472f;
  ExpectVector(Output(), {0.8f, 0.8f, 0.8f});
  lights.lights[0].direction = {0.7683749f, 0, -0.64f};
  ExpectExactly(Output(), {0, 0, 0});
}

TEST_F(LumasRoughTest, TheSumIsNotBelowZero) {
  AddLight({-1, 1, -3}, {0, 0, 1});
  ExpectExactly(Output(), {0, 1, 0});
}

TEST_F(LumasRoughTest, WithTheLightsSwitchedOffItIsBlackAndAsksForNone) {
  AddLight({1, 1, 1}, {0, 0, 1}).ambient = 1;
  render.lightsEnabled = 0;
  ExpectExactly(Output(), {0, 0, 0});
  EXPECT_TRUE(lights.calls.empty());
}

}  // namespace
}  // namespace sorvanix::test
