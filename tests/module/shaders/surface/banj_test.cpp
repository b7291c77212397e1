// Banj: which side of a surface lights it, every question that it asks about lights, and the state
// that it leaves; its data and its messages.
#include "module/shaders/surface/banj.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <numbers>

#include "module/shaders/filters/hue.h"
#include "tests/support/recording_lights.h"
#include "tests/support/surface_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

constexpr Vector kBlack = {0, 0, 0};
constexpr Vector kWhite = {1, 1, 1};
constexpr Vector kAbove = {0, 0, 1};
constexpr Vector kBelow = {0, 0, -1};

// The surface faces +z and is seen from straight above.
struct BanjTest : SurfaceTest<BanjBlock, PluginIdBanj> {
  RecordingLights scene{host};

  BanjTest() {
    render.lightCount = 1;
    render.lightParamA = 42;
    render.lightParamB = 5;
    render.lightsEnabled = 1;
    render.side = -1;
    render.hitPoint = {1, 2, 3};
    block.diffuseLevel = 1;
    block.diffuseColour = kWhite;
  }
  ScriptedLight& AddLight(const Vector& direction, const Vector& colour = kWhite) {
    ScriptedLight light;
    light.direction = direction;
    light.colour = light.shadowedColour = colour;
    scene.lights.push_back(light);
    render.lightCount = static_cast<std::int32_t>(scene.lights.size());
    return scene.lights.back();
  }
  // Lets the host's own illumination show the cosine of the scripted lights.
  void IlluminateByCosine() {
    scene.illuminate = [this](const RenderContext& at, Vector& diffuse, Vector&, float) {
      for (const ScriptedLight& light : scene.lights) {
        const Vector& l = light.direction;
        const Vector& n = at.bumpNormal;
        const float cosine = l.x * n.x + l.y * n.y + l.z * n.z;
        if (cosine <= 0) continue;
        const Vector& colour = at.lightParamB != 0 ? light.shadowedColour : light.colour;
        diffuse.x += cosine * colour.x;
        diffuse.y += cosine * colour.y;
        diffuse.z += cosine * colour.z;
      }
    };
  }
};

TEST_F(BanjTest, FillsAllCallbacksButThoseOfARender) {
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  ASSERT_NE(record.Edit, nullptr);
  EXPECT_EQ(record.Edit(&instance), 0);
  ASSERT_NE(record.GetInfo, nullptr);
  EXPECT_EQ(record.GetInfo(), 0x02200003u);
  EXPECT_NE(record.Message, nullptr);
  EXPECT_EQ(record.InitRender, nullptr);
  EXPECT_EQ(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
}

// --- without lights ---

TEST_F(BanjTest, WithoutARenderItShowsItsColourWhateverTheMode) {
  sample.render = nullptr;
  block.diffuseLevel = 0.5f;
  block.diffuseColour = {0, 1, 3};
  block.diffuseContrast = 1;  // would make 0 or 1 of everything
  for (const std::int32_t mode : {0, 1, 2}) {
    block.orenNayar = mode;
    ExpectExactly(Output(), {0, 0.5f, 1.5f});
  }
  EXPECT_TRUE(scene.calls.empty());
}

TEST_F(BanjTest, InARenderWithoutLightsItIsWhite) {
  for (const std::int32_t mode : {0, 1, 2}) {
    block.orenNayar = mode;
    for (const std::int32_t count : {0, -1, INT32_MIN}) {
      render.lightCount = count;
      ExpectExactly(Output(), kWhite);
    }
  }
}

TEST_F(BanjTest, WithoutARayItIsWhite) {
  AddLight(kBelow);
  render.ray = nullptr;
  ExpectExactly(Output(), kWhite);
  EXPECT_TRUE(scene.calls.empty());
}

TEST_F(BanjTest, AnyOtherIlluminationIsBlack) {
  AddLight(kBelow);
  IlluminateByCosine();
  for (const std::int32_t mode : {2, -1, INT32_MAX, INT32_MIN}) {
    block.orenNayar = mode;
    ExpectExactly(Output(), kBlack);
  }
  EXPECT_TRUE(scene.calls.empty());
}

// --- the side that is lit ---

TEST_F(BanjTest, OnlyLightFromBehindArrives) {
  IlluminateByCosine();
  AddLight(kAbove);
  for (const std::int32_t mode : {0, 1}) {
    block.orenNayar = mode;
    scene.lights[0].direction = kAbove;
    ExpectExactly(Output(), kBlack);
    scene.lights[0].direction = {0.6f, 0, -0.8f};
    EXPECT_GT(Output().x, 0.1f) << mode;
  }
}

// In a closed box with the lamp inside, every light on the inner walls comes from ahead.
TEST_F(BanjTest, TheInsideOfAClosedBoxStaysDark) {
  IlluminateByCosine();
  for (const Vector& towardsLamp :
       {Vector{0, 0, 1}, Vector{0.6f, 0, 0.8f}, Vector{0, -0.8f, 0.6f}}) {
    AddLight(towardsLamp);
  }
  for (const std::int32_t mode : {0, 1}) {
    block.orenNayar = mode;
    ExpectExactly(Output(), kBlack);
  }
}

TEST_F(BanjTest, SeenFromBehindTheHostFormStillTakesTheLightFromBehind) {
  IlluminateByCosine();
  AddLight(kBelow);
  LookAlong(0, 0, 1);
  ExpectExactly(Output(), kWhite);
}

// The Oren-Nayar form takes the side to which the ray points.
TEST_F(BanjTest, SeenFromBehindTheOrenNayarFormTakesTheLightOfTheOtherSide) {
  block.orenNayar = 1;
  AddLight(kBelow);
  LookAlong(0, 0, 1);
  ExpectExactly(Output(), kBlack);
  scene.lights[0].direction = kAbove;
  EXPECT_GT(Output().x, 0.1f);
}

// --- shadows ---

TEST_F(BanjTest, ShadowMixLeadsFromNoShadowsToFullOnes) {
  IlluminateByCosine();
  AddLight(kBelow, {0.5f, 0.5f, 0.5f}).shadowedColour = kBlack;
  for (const std::int32_t mode : {0, 1}) {
    block.orenNayar = mode;
    block.shadowMix = 0;
    const float open = Output().x;
    EXPECT_GT(open, 0.1f);
    block.shadowMix = 0.25f;
    EXPECT_NEAR(Output().x, 0.75f * open, 1e-6) << mode;
    block.shadowMix = 1;
    EXPECT_EQ(Output().x, 0) << mode;
  }
}

TEST_F(BanjTest, WhereNothingBlocksTheLightShadowMixChangesNothing) {
  IlluminateByCosine();
  AddLight(kBelow, {0.25f, 0.5f, 0.75f});
  for (const std::int32_t mode : {0, 1}) {
    block.orenNayar = mode;
    block.shadowMix = 0;
    const Vector open = Output();
    block.shadowMix = 1;
    ExpectExactly(Output(), open);
  }
}

// --- the host form ---

// A = (0.8, 0.4, -2) with shadows, B = (1, 0.5, -1) without; B + 0.5 (A - B) = (0.9, 0.45, -1.5),
// times (0.5, 2, 1), times 0.5: (0.225, 0.45, -0.75), and what is negative 0.
TEST_F(BanjTest, TheHostFormMixesTintsAndLifts) {
  scene.illuminate = [](const RenderContext& at, Vector& diffuse, Vector&, float) {
    diffuse = at.lightParamB != 0 ? Vector{0.8f, 0.4f, -2} : Vector{1, 0.5f, -1};
  };
  block.shadowMix = 0.5f;
  block.diffuseColour = {0.5f, 2, 1};
  block.diffuseLevel = 0.5f;
  ExpectVector(Output(), {0.225f, 0.45f, 0});
  // low = 0.1, high = 0.9: (0.225 - 0.1) / 0.8, (0.45 - 0.1) / 0.8, 0.
  block.diffuseContrast = 0.2f;
  ExpectVector(Output(), {0.15625f, 0.4375f, 0});
}

// low and high meet at a half: 0.5 itself is on the bright side.
TEST_F(BanjTest, AContrastOfOneIsAHardThreshold) {
  scene.illuminate = [](const RenderContext&, Vector& diffuse, Vector&, float) {
    diffuse = {0.499f, 0.5f, 0.501f};
  };
  block.diffuseContrast = 1;
  ExpectExactly(Output(), {0, 1, 1});
}

TEST_F(BanjTest, TheHostFormAsksTwiceAboutTheSurfaceTurnedRound) {
  render.bumpNormal = {0.6f, 0, 0.8f};
  Output();
  ASSERT_EQ(scene.calls.size(), 2u);
  for (const LightCall& call : scene.calls) {
    EXPECT_EQ(call.operation, "illuminate");
    EXPECT_EQ(call.exponent, 0);
    ExpectExactly(call.bumpNormal, {-0.6f, 0, -0.8f});
    ExpectExactly(call.diffuse, kBlack);
    ExpectExactly(call.specular, kBlack);
  }
  EXPECT_EQ(scene.calls[0].lightParamB, 5);
  EXPECT_EQ(scene.calls[1].lightParamB, 0);
  ExpectExactly(render.bumpNormal, {0.6f, 0, 0.8f});
  EXPECT_EQ(render.lightParamB, 5);
}

TEST_F(BanjTest, TheHostFormLeavesTheRenderAsItWas) {
  AddLight(kBelow);
  IlluminateByCosine();
  const RenderContext before = render;
  Output();
  EXPECT_EQ(std::memcmp(&before, &render, sizeof before), 0);
}

// The host itself decides what switched-off lights mean to it.
TEST_F(BanjTest, TheHostFormAsksAlsoWhereLightsAreOff) {
  render.lightsEnabled = 0;
  Output();
  EXPECT_EQ(scene.calls.size(), 2u);
}

// --- the Oren-Nayar form ---

struct BanjOrenNayarTest : BanjTest {
  BanjOrenNayarTest() { block.orenNayar = 1; }
};

// Head-on from both sides: all angles 0. a R + R R 0.17 / 1.13 with R = (0, 0.8, 0.4):
// 0.62406 * 0.8 + 0.64 * 0.1504425 = 0.5955313, 0.62406 * 0.4 + 0.16 * 0.1504425 = 0.2736949.
// The light is 1 + 0.6 (0.5 - 1) = 0.7.
TEST_F(BanjOrenNayarTest, HeadOn) {
  block.diffuseLevel = 0.8f;
  block.diffuseColour = {0, 1, 0.5f};
  block.shadowMix = 0.6f;
  AddLight(kBelow).shadowedColour = {0.5f, 0.5f, 0.5f};
  ExpectVector(Output(), {0, 0.7f * 0.5955313f, 0.7f * 0.2736949f});
}

// The ray and the light both lean by 60 degrees, to the same side: 0.6634527, see the model's test.
TEST_F(BanjOrenNayarTest, SeenAndLitFromTheSameSlant) {
  const auto s = static_cast<float>(std::sqrt(0.75));
  LookAlong(s, 0, -0.5);
  AddLight({s, 0, -0.5f});
  EXPECT_NEAR(Output().x, 0.6634527f, 1e-6);
}

// A contrast of ln 2 shows the root of the cosine: for a smooth surface 0.8 becomes
// sqrt(0.64) = 0.8 from 0.64.
TEST_F(BanjOrenNayarTest, TheLightsContrastShapesTheCosine) {
  block.sigma2 = 0;
  block.orenA = 1;
  block.orenB = 0;
  ScriptedLight& light = AddLight({std::sqrt(1 - 0.64f * 0.64f), 0, -0.64f});
  EXPECT_NEAR(Output().x, 0.64f, 1e-6);
  light.record.contrast = static_cast<float>(std::numbers::ln2);
  EXPECT_NEAR(Output().x, 0.8f, 1e-6);
}

TEST_F(BanjOrenNayarTest, TakesTheDerivedFactorsAndNotSigma) {
  AddLight(kBelow);
  block.sigma = 0;
  block.orenA = 0.5f;
  block.sigma2 = 0;
  EXPECT_NEAR(Output().x, 0.5f, 1e-6);
}

TEST_F(BanjOrenNayarTest, SwitchedOffLightsAreBlackWhateverTheContrast) {
  AddLight(kBelow);
  render.lightsEnabled = 0;
  block.diffuseContrast = -1;  // would lift black to a quarter: (0 + 0.5) / 2
  ExpectExactly(Output(), kBlack);
  EXPECT_TRUE(scene.calls.empty());
}

// low = -0.5, high = 1.5: black is (0 + 0.5) / 2.
TEST_F(BanjOrenNayarTest, ANegativeContrastLiftsTheDark) {
  AddLight(kAbove);
  block.diffuseContrast = -1;
  ExpectExactly(Output(), {0.25f, 0.25f, 0.25f});
}

TEST_F(BanjOrenNayarTest, AnAmbientLightIsAddedAsItIs) {
  ScriptedLight& light = AddLight(kAbove, {0.25f, 0.5f, 0.75f});
  light.record.ambient = 1;
  light.record.noDiffuse = 1;
  light.record.type = LightRectangle;
  block.diffuseColour = kBlack;
  ExpectVector(Output(), {0.25f, 0.5f, 0.75f});
  EXPECT_TRUE(scene.CallsOf("areaLight").empty());
}

TEST_F(BanjOrenNayarTest, ALightWithoutADiffuseShareAddsNothing) {
  AddLight(kBelow).record.noDiffuse = 1;
  ExpectExactly(Output(), kBlack);
}

TEST_F(BanjOrenNayarTest, ALightThatDoesNotArriveEitherWayIsSkipped) {
  ScriptedLight& light = AddLight(kBelow);
  light.record.ambient = 1;
  light.arrives = false;
  ExpectExactly(Output(), kBlack);
  light.arrives = true;
  light.arrivesShadowed = false;
  ExpectExactly(Output(), kBlack);
  EXPECT_EQ(scene.CallsOf("lightSample").size(), 4u) << "both are asked all the same";
}

// One lies ahead and one has no diffuse share, which only other kinds of light mind. The last does
// not arrive.
TEST_F(BanjOrenNayarTest, AreaLightsAddTheirOwnShareToTheSum) {
  AddLight(kAbove).record.type = LightDisc;
  AddLight(kBelow).record.type = LightRectangle;
  AddLight(kBelow, {0.125f, 0.125f, 0.125f}).record.ambient = 1;
  scene.lights[0].areaShare = {0.25f, 0, 0};
  scene.lights[1].areaShare = {0, 0.5f, 0};
  scene.lights[1].record.noDiffuse = 1;
  ScriptedLight& blocked = AddLight(kBelow);
  blocked.record.type = LightRectangle;
  blocked.areaShare = kWhite;
  blocked.arrives = false;
  LookAlong(0.6, 0, -0.8);
  ExpectVector(Output(), {0.375f, 0.625f, 0.125f});
  const std::vector<LightCall> calls = scene.CallsOf("areaLight");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].light, 1);
  ExpectVector(calls[0].diffuse, {0.125f, 0.125f, 0.125f});
  EXPECT_EQ(calls[1].light, 0);
  ExpectVector(calls[1].diffuse, {0.125f, 0.625f, 0.125f});
  for (const LightCall& call : calls) {
    EXPECT_EQ(call.value, 1);
    EXPECT_EQ(call.side, -1);
    ExpectExactly(call.ray, {0.6f, 0, -0.8f});
    ExpectExactly(call.point, {1, 2, 3});
    ExpectExactly(call.bumpNormal, kAbove);  // only the host form turns the render round
  }
}

TEST_F(BanjOrenNayarTest, NegativeSumsAreBlack) {
  AddLight(kBelow, {-1, 1, -1}).record.ambient = 1;
  AddLight(kBelow, {0.25f, -2, 1}).record.ambient = 1;
  ExpectExactly(Output(), kBlack);
}

TEST_F(BanjOrenNayarTest, WalksTheLightsFromTheHighestIndexDown) {
  for (int i = 0; i < 3; ++i) AddLight(kBelow);
  Output();
  std::vector<std::string> walk;
  for (const LightCall& call : scene.calls) {
    walk.push_back(call.operation + (call.light < 0 ? "" : " " + std::to_string(call.light)));
  }
  const std::vector<std::string> expected = {
      "lightCount",    "lightAt 2",     "lightSample 2", "lightSample 2", "lightAt 1",
      "lightSample 1", "lightSample 1", "lightAt 0",     "lightSample 0", "lightSample 0"};
  EXPECT_EQ(walk, expected);
}

TEST_F(BanjOrenNayarTest, AsksEachLightOpenAndThenAsTheRenderWantsShadows) {
  AddLight(kBelow);
  Output();
  const std::vector<LightCall> calls = scene.CallsOf("lightSample");
  ASSERT_EQ(calls.size(), 2u);
  for (const LightCall& call : calls) {
    ExpectExactly(call.point, {1, 2, 3});
    ExpectExactly(call.normal, kBelow);
    EXPECT_EQ(call.identity, 42);
    EXPECT_EQ(call.lightParamB, 5);
  }
  EXPECT_EQ(calls[0].shadows, 0);
  EXPECT_EQ(calls[1].shadows, 5);
}

TEST_F(BanjOrenNayarTest, LeavesTheRenderAsItWas) {
  AddLight(kBelow);
  const RenderContext before = render;
  Output();
  EXPECT_EQ(std::memcmp(&before, &render, sizeof before), 0);
}

TEST_F(BanjOrenNayarTest, ACountBeyondTheLightsIsHarmless) {
  AddLight(kBelow);
  host.render.lightCount = [](const RenderContext*) noexcept { return 5; };
  EXPECT_GT(Output().x, 0.1f);
}

// --- inside a filter ---

// It takes no part in the handshake of filters: it is not even marked.
TEST_F(BanjTest, AFilterReadsItAsItIs) {
  ShaderUnderTest hue(started, PluginIdHue);
  Link(hue.block<HueBlock>().input).HoldShader(shader, PluginIdBanj);
  IlluminateByCosine();
  AddLight(kBelow, {0.25f, 0.5f, 0.75f});
  const RenderInit init = {&render, nullptr};
  ASSERT_EQ(hue.record.InitRender(&hue.instance, &init), 0);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(instance.slots, nullptr);
  ExpectVector(hue.Output(sample), {0.25f, 0.5f, 0.75f});
  hue.record.FreeRender(&hue.instance);
}

// --- data ---

TEST(BanjDefaults, AreThese) {
  StartedModule started;
  ShaderUnderTest shader(started, PluginIdBanj);
  EXPECT_EQ(started.host.calls.back(), "alloc(72)");
  const auto& block = shader.block<BanjBlock>();
  EXPECT_EQ(block.previewObject, 3);
  EXPECT_EQ(block.orenNayar, 0);
  EXPECT_EQ(block.diffuseLevel, 0.8f);
  EXPECT_EQ(block.shadowMix, 0.6f);
  EXPECT_EQ(block.sigma, 1);
  EXPECT_EQ(block.diffuseContrast, 0);
  EXPECT_EQ(block.sigma2, 1);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(block.orenA), 0x3F1FC268u);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(block.orenB), 0x3ED3604Bu);
  ExpectExactly(block.diffuseColour, {0, 1, 0.5f});
  EXPECT_EQ(block.changed, 0);
  EXPECT_EQ(block.previewBusy, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewState, -1);
}

struct BanjDataTest : BanjTest {
  void FillBlock() {
    block = {.previewObject = 2,
             .orenNayar = 1,
             .diffuseLevel = 1.5f,
             .shadowMix = 0.25f,
             .sigma = 0.5f,
             .diffuseContrast = -0.75f,
             .sigma2 = 0.125f,
             .orenA = 0.375f,
             .orenB = 0.625f,
             .diffuseColour = {0.1f, 0.2f, 0.3f},
             .changed = 1,
             .previewBusy = 0,
             .previewAuto = 0,
             .nested = 1,
             .reserved16 = 16,
             .previewState = 17};
  }
  const Values fields = {
      Int(2),        Int(1),        Float(1.5f),   Float(0.25f),  Float(0.5f),
      Float(0.125f), Float(0.375f), Float(0.625f), Float(-0.75f), Vec(0.1f, 0.2f, 0.3f),
      Bool(false),   Bool(true),    Bool(false)};
};

TEST_F(BanjDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000728)};
  expected.insert(expected.end(), fields.begin(), fields.end());
  EXPECT_EQ(Written(), expected);
}

// The derived values are those of the file, also where they do not follow from its sigma.
TEST_F(BanjDataTest, ReadTakesItBack) {
  ReadFile({{Int(20000728)}, fields});
  EXPECT_EQ(block.previewObject, 2);
  EXPECT_EQ(block.orenNayar, 1);
  EXPECT_EQ(block.diffuseLevel, 1.5f);
  EXPECT_EQ(block.shadowMix, 0.25f);
  EXPECT_EQ(block.sigma, 0.5f);
  EXPECT_EQ(block.sigma2, 0.125f);
  EXPECT_EQ(block.orenA, 0.375f);
  EXPECT_EQ(block.orenB, 0.625f);
  EXPECT_EQ(block.diffuseContrast, -0.75f);
  ExpectExactly(block.diffuseColour, {0.1f, 0.2f, 0.3f});
  EXPECT_EQ(block.previewAuto, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.nested, 0) << "is in no file";
  EXPECT_EQ(block.previewState, -1);
}

TEST_F(BanjDataTest, AnyOtherMarkerIsRefusedAndTheBlockStays) {
  for (const std::int32_t marker : {20000727, 20000729, 0, INT32_MAX}) {
    FakeStream stream;
    stream.values = {Int(marker)};
    stream.values.insert(stream.values.end(), fields.begin(), fields.end());
    const BanjBlock before = block;
    EXPECT_EQ(record.Read(&instance, stream.handle()), 0) << marker;
    EXPECT_EQ(std::memcmp(&before, &block, sizeof before), 0);
  }
}

TEST_F(BanjDataTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{1}},
                    {1001, Word{2}, 1.5f},
                    {1002, Word{2}, 0.25f},
                    {1003, Word{2}, 0.5f},
                    {1004, Word{2}, -0.75f},
                    {1005, Word{2}, Vector{0.1f, 0.2f, 0.3f}}},
                   {});
}

// sigma 2: 1 - 0.5 * 4 / 4.33 = 0.5381062, 0.45 * 4 / 4.09 = 0.4400978.
TEST_F(BanjDataTest, SettingSigmaRecomputesWhatFollowsFromIt) {
  FakeContainer payload;
  payload.Set(1003, 2.0f);
  EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
  EXPECT_EQ(block.sigma, 2);
  EXPECT_EQ(block.sigma2, 4);
  EXPECT_NEAR(block.orenA, 0.5381062f, 1e-7);
  EXPECT_NEAR(block.orenB, 0.4400978f, 1e-7);
  payload.Set(1003, 0.0f);
  shader.Message(MessageSetParameters, payload);
  EXPECT_EQ(block.sigma2, 0);
  EXPECT_EQ(block.orenA, 1);
  EXPECT_EQ(block.orenB, 0);
}

TEST_F(BanjDataTest, SettingAnythingElseLeavesWhatFollowsFromSigma) {
  FillBlock();
  FakeContainer payload;
  payload.Set(1001, 3.0f);
  payload.Set(1006, 9.0f);
  for (const std::int32_t id : {112000, 112001, 112003, 112004, 7}) shader.Message(id, payload);
  EXPECT_EQ(block.diffuseLevel, 3);
  EXPECT_EQ(block.sigma2, 0.125f);
  EXPECT_EQ(block.orenA, 0.375f);
  EXPECT_EQ(block.orenB, 0.625f);
}

TEST_F(BanjDataTest, ReportsAStrideWithoutSlots) {
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageReportSlots, payload), 1);
  EXPECT_EQ(std::get<Word>(*payload.Find(12000)), 0);
  EXPECT_EQ(std::get<Word>(*payload.Find(12001)), 248);
}

// Unlike with all other shaders the copy stays nested.
TEST_F(BanjDataTest, CopyTakesAllWordsNestedToo) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdBanj);
  EXPECT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(std::memcmp(&other.block<BanjBlock>(), &block, sizeof block), 0);
  EXPECT_EQ(record.Copy(&instance, &instance), 1);
  EXPECT_EQ(block.nested, 1);
}

TEST_F(BanjDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  ShaderUnderTest other(started, PluginIdBanj);
  auto& changed = other.block<BanjBlock>();
  const BanjBlock defaults = block = changed;
  using Change = void (*)(BanjBlock&);
  for (const Change change :
       {Change([](BanjBlock& b) { b.previewObject = 9; }),
        Change([](BanjBlock& b) { b.orenNayar = 9; }),
        Change([](BanjBlock& b) { b.diffuseLevel = 9; }),
        Change([](BanjBlock& b) { b.shadowMix = 9; }), Change([](BanjBlock& b) { b.sigma = NAN; }),
        Change([](BanjBlock& b) { b.diffuseContrast = 9; }),
        Change([](BanjBlock& b) { b.sigma2 = 9; }), Change([](BanjBlock& b) { b.orenA = 9; }),
        Change([](BanjBlock& b) { b.orenB = 9; }),
        Change([](BanjBlock& b) { b.diffuseColour.z = 9; }),
        Change([](BanjBlock& b) { b.previewAuto = 0; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
  changed = defaults;
  changed.changed = changed.previewBusy = changed.nested = 9;
  changed.reserved16 = changed.previewState = 9;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

}  // namespace
}  // namespace sorvanix::test
