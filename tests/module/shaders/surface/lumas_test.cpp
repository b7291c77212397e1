// Lumas' colour: the flat preview, the lights as it asks for them, and how the terms are summed.
#include <cmath>
#include <cstring>
#include <thread>

#include "module/kit/matrix.h"
#include "module/shaders/filters/hue.h"
#include "tests/module/shaders/surface/lumas_fixture.h"

namespace sorvanix::test {
namespace {

// --- without a render ---

// 0.6 (1, 0.01, 0.01) + 1.25 x 0.005 (1, 1, 1) + 0.5 x 0.05 (1, 0.5, 0.5) + 0.5 x 0.85 (1, 0, 0)
// = (0.6 + 0.00625 + 0.025 + 0.425, 0.006 + 0.00625 + 0.0125, the same).
TEST_F(LumasTest, WithoutARenderTheTintsAreMixedByTheirSizes) {
  ExpectVector(Output(), {1.05625f, 0.02475f, 0.02475f});
  EXPECT_TRUE(lights.calls.empty());
}

TEST_F(LumasTest, WithoutARenderOnlyTheSizeIsLimited) {
  NoDiffuse();
  OnlyLayer(1);
  block.layers[0].intensity = 5;
  block.layers[0].size = 3;
  ExpectExactly(Output(), {5, 5, 5});
  block.layers[0].size = -1;
  ExpectExactly(Output(), {0, 0, 0});
}

// The switches decide, not what was derived from them.
TEST_F(LumasTest, WithoutARenderTermsThatAreOffAreLeftOut) {
  block.diffuseOn = 0;
  block.layerOn[0] = block.layerOn[1] = 0;
  ExpectExactly(Output(), {0.425f, 0, 0});
  block.layerOn[2] = 0;
  ExpectExactly(Output(), {0, 0, 0});
}

TEST_F(LumasTest, WithoutSlotsTheColourIsFlatToo) {
  const Vector flat = Output();
  sample.render = &render;
  ExpectExactly(Output(), flat);
}

// --- without a ray, without lights ---

TEST_F(LumasTest, IsWhiteWithoutARay) {
  BeginRender();
  render.ray = nullptr;
  ExpectExactly(Output(), {1, 1, 1});
  EXPECT_TRUE(lights.calls.empty());
}

TEST_F(LumasTest, IsWhiteWithoutLightsWithARayOrNot) {
  BeginRender();
  for (const std::int32_t count : {0, -1}) {
    render.lightCount = count;
    render.ray = &ray;
    ExpectExactly(Output(), {1, 1, 1});
    render.ray = nullptr;
    ExpectExactly(Output(), {1, 1, 1});
  }
}

// --- the slot ---

// (1, -2, 3) turned by axes (0, 2, 0), (3, 0, 0), (0, 0, 1), without the offset: (-6, 2, 3).
TEST_F(LumasTest, TheSlotKeepsTheSurfaceOfTheSample) {
  tag.matrix1 = {{9, 9, 9}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  tag.matrix2 = {{100, 100, 100}, {0, 2, 0}, {3, 0, 0}, {0, 0, 1}};
  render.textureTag = &tag;
  render.viewPoint = {1, -2, 3};
  render.bumpNormal = {0, 0.6f, 0.8f};
  render.faceNormal = {0, 1, 0};
  LookAlong({0.6f, 0, -0.8f});
  BeginRender();
  Output();
  EXPECT_NEAR(Slot().footprintSize, 11e-5, 1e-10);
  ExpectExactly(Slot().viewVector, {-0.6f, 0, 0.8f});
  ExpectExactly(Slot().surfaceNormal, {0, 0.6f, 0.8f});
  ExpectExactly(Slot().faceNormal, {0, 1, 0});
  EXPECT_EQ(std::memcmp(&Slot().head.texMatrix, &tag.matrix1, sizeof(Matrix)), 0);
  EXPECT_EQ(std::memcmp(&Slot().head.texInverse, &tag.matrix2, sizeof(Matrix)), 0);
}

TEST_F(LumasTest, WithoutATagTheSlotsMatricesAreTheIdentity) {
  render.viewPoint = {1, -2, 3};
  BeginRender();
  Output();
  EXPECT_NEAR(Slot().footprintSize, 6e-5, 1e-10);
  EXPECT_EQ(std::memcmp(&Slot().head.texMatrix, &kIdentityMatrix, sizeof(Matrix)), 0);
  EXPECT_EQ(std::memcmp(&Slot().head.texInverse, &kIdentityMatrix, sizeof(Matrix)), 0);
}

TEST_F(LumasTest, ANestedLumasKeepsTheMatricesOfItsSlot) {
  render.textureTag = &tag;
  block.nested = 1;
  BeginRender();
  Slot().head.texMatrix.off = {1, 2, 3};
  Slot().head.texInverse.off = {4, 5, 6};
  Slot().head.outerChannel = ChannelStandalone;  // has no meaning here
  Output();
  ExpectExactly(Slot().head.texMatrix.off, {1, 2, 3});
  ExpectExactly(Slot().head.texInverse.off, {4, 5, 6});
}

TEST_F(LumasTest, TheSlotIsThatOfTheCallingCpu) {
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  Output();
  ExpectExactly(Slot(1).surfaceNormal, {0, 0, 1});
  const LumasSlot untouched = {};
  EXPECT_EQ(std::memcmp(&Slot(0), &untouched, sizeof untouched), 0);
}

// --- highlights from the host ---

// Each call adds to the same diffuse sum, and to a highlight of its own.
TEST_F(LumasTest, AsksTheHostOnceForEachActiveLayer) {
  lights.illuminate = [](const RenderContext&, Vector& diffuse, Vector& specular, float) {
    diffuse.x += 0.25f;
    specular.x += 0.5f;
  };
  BeginRender();
  Output();
  ASSERT_EQ(Operations(lights.calls), (Names{"illuminate", "illuminate", "illuminate"}));
  const float exponents[] = {400, 40, 2.352941f};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(lights.calls[i].exponent, exponents[i], 1e-4);
    ExpectExactly(lights.calls[i].diffuse, {0.25f * static_cast<float>(i), 0, 0});
    ExpectExactly(lights.calls[i].specular, {0, 0, 0});
  }
}

TEST_F(LumasTest, LayersThatAreNotActiveAskForNothing) {
  NoDiffuse();
  OnlyLayer(2);
  BeginRender();
  Output();
  ASSERT_EQ(Operations(lights.calls), Names{"illuminate"});
  EXPECT_EQ(lights.calls[0].exponent, 40);
}

// Layers 1 and 2 give 2 x (0.5, 0.25, 0) and 1 x (0.5, 0.25, 0) x (1, 0.5, 0.5). No limit at 1.
TEST_F(LumasTest, TheHighlightsAreSummedWithoutALimit) {
  lights.illuminate = [](const RenderContext&, Vector&, Vector& specular, float) {
    specular = {0.5f, 0.25f, 0};
  };
  NoDiffuse();
  block.layers[2].active = 0;
  block.layers[0].intensity = 2;
  block.layers[1].intensity = 1;
  block.layers[0].useEdge = block.layers[1].useEdge = 0;
  BeginRender();
  ExpectExactly(Output(), {1.5f, 0.625f, 0});
}

// The view turned by 60 degrees: a cosine of 0.5, a rim of 0.5. Layer 1 reaches in by 1, from 1.25
// to 2: 1.625.
TEST_F(LumasTest, TheRimFollowsTheView) {
  lights.illuminate = [](const RenderContext&, Vector&, Vector& specular, float) {
    specular = {1, 1, 1};
  };
  NoDiffuse();
  OnlyLayer(1);
  block.layers[0].useEdge = 1;
  BeginRender();
  LookAlong({0.8660254f, 0, -0.5f});
  ExpectVector(Output(), {1.625f, 1.625f, 1.625f});
  LookAlong({0, 0, 1});
  ExpectVector(Output(), {2, 2, 2});  // the back of the surface
}

// --- the host's diffuse light ---

// 0.5 x (1, 0.5, 0) x (1, 2, 3) from one layer's call.
TEST_F(LumasTest, TheDiffuseLightIsThatOfTheLayersCalls) {
  lights.illuminate = [](const RenderContext&, Vector& diffuse, Vector&, float) {
    diffuse = {1, 2, 3};
  };
  OnlyLayer(1);
  block.diffuseLevel = 0.5f;
  block.diffuseTint = {1, 0.5f, 0};
  BeginRender();
  ExpectExactly(Output(), {0.5f, 0.5f, 0});
  EXPECT_EQ(Operations(lights.calls), Names{"illuminate"});
}

TEST_F(LumasTest, WithoutDiffuseLightTheHostIsAskedOnceMore) {
  lights.illuminate = [](const RenderContext&, Vector& diffuse, Vector&, float exponent) {
    if (exponent == 1) diffuse = {1, 2, 3};
  };
  OnlyLayer(0);
  block.diffuseLevel = 1;
  block.diffuseTint = {1, 1, 1};
  BeginRender();
  ExpectExactly(Output(), {1, 2, 3});
  ASSERT_EQ(lights.calls.size(), 1u);
  EXPECT_EQ(lights.calls[0].exponent, 1);
}

TEST_F(LumasTest, ADiffuseTermThatIsNotActiveAsksForNothing) {
  OnlyLayer(0);
  block.diffuseActive = 0;
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  EXPECT_TRUE(lights.calls.empty());
}

// The window 0.25 to 0.75 of (0.5, 0.875, 0.125) is (0.5, 1, 0).
TEST_F(LumasTest, TheDiffuseContrastSteepensEachChannel) {
  lights.illuminate = [](const RenderContext&, Vector& diffuse, Vector&, float) {
    diffuse = {0.5f, 0.875f, 0.125f};
  };
  OnlyLayer(0);
  block.diffuseLevel = 1;
  block.diffuseTint = {1, 1, 1};
  block.diffuseContrast = 0.5f;
  block.diffuseLow = 0.25f;
  block.diffuseHigh = 0.75f;
  BeginRender();
  ExpectExactly(Output(), {0.5f, 1, 0});
}

// --- inside a filter ---

struct NestedLumasTest : LumasTest {
  ShaderUnderTest filter{started, PluginIdHue, 1};

  NestedLumasTest() {
    ScriptedLink::Of(filter.block<HueBlock>().input).HoldShader(shader, PluginIdLumas);
    lights.illuminate = [](const RenderContext&, Vector&, Vector& specular, float) {
      specular = {0.5f, 0.5f, 0.5f};
    };
    NoDiffuse();
    OnlyLayer(1);
    block.layers[0].intensity = 1;
    render.hitPoint = {1, 2, 3};
    tag.matrix1 = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    tag.matrix2 = {{0, 1, 0}, {0, -1, 0}, {1, 0, 0}, {0, 0, 1}};
  }
  Vector FilterOutput() {
    const RenderInit init = {&render, nullptr};
    EXPECT_EQ(filter.record.InitRender(&filter.instance, &init), 0);
    sample.render = &render;
    return filter.Output(sample);
  }
};

TEST_F(NestedLumasTest, OnATagTheFiltersMatricesReachTheSlot) {
  render.textureTag = &tag;
  ExpectVector(FilterOutput(), {0.5f, 0.5f, 0.5f});
  EXPECT_EQ(block.nested, 1);
  EXPECT_EQ(Slot().head.outerChannel, 1);
  EXPECT_EQ(std::memcmp(&Slot().head.texMatrix, &tag.matrix1, sizeof(Matrix)), 0);
  EXPECT_EQ(std::memcmp(&Slot().head.texInverse, &tag.matrix2, sizeof(Matrix)), 0);
  filter.record.FreeRender(&filter.instance);
  EXPECT_EQ(shader.instance.slots, nullptr);
}

TEST_F(NestedLumasTest, WithoutATagTheFilterLeavesTheIdentity) {
  ExpectVector(FilterOutput(), {0.5f, 0.5f, 0.5f});
  EXPECT_EQ(std::memcmp(&Slot().head.texMatrix, &kIdentityMatrix, sizeof(Matrix)), 0);
  EXPECT_EQ(std::memcmp(&Slot().head.texInverse, &kIdentityMatrix, sizeof(Matrix)), 0);
  filter.record.FreeRender(&filter.instance);
}

TEST_F(NestedLumasTest, InsideAFilterTheLitColourIsTheSame) {
  render.textureTag = &tag;
  BeginRender();
  const Vector alone = Output();
  ExpectVector(FilterOutput(), alone);
  filter.record.FreeRender(&filter.instance);
}

// --- threads, and blocks that no dialog makes ---

// Every sample has a normal and a size of its own, so that two CPUs that shared a slot would show.
TEST_F(LumasTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr std::size_t kSamples = 4096;
  AddLight({1, 0.5f, 0.25f}, {0.6f, 0, 0.8f});
  AddLight({0.5f, 1, 0.5f}, {0, 0.6f, 0.8f});
  noise.SetConstant(NoiseOperation::Turbulence, 0.5);
  noise.Record(false);
  lights.record = false;
  block.anisotropyActive = block.scratchActive = block.orenNayar = 1;
  block.anisotropyMode = AnisoDiscsSurface;
  BeginRender(8);
  const auto shade = [&](std::size_t begin, std::size_t end, std::vector<Vector>& picture) {
    RenderContext own = render;
    ChannelSample mine = sample;
    mine.render = &own;
    for (std::size_t i = begin; i < end; ++i) {
      const auto n = static_cast<float>(i);
      const float lean = 0.0002f * n;
      own.hitPoint = {static_cast<float>(i % 64) * 0.1f, static_cast<float>(i / 64) * 0.1f, 1};
      own.bumpNormal = {std::sin(lean), 0, std::cos(lean)};
      own.viewPoint = {0, n, 0};
      shader.record.Output(&picture[i], &shader.instance, &mine);
    }
  };
  std::vector<Vector> one(kSamples), eight(kSamples);
  shade(0, kSamples, one);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      FakeHost::cpuIndex = static_cast<std::int32_t>(t);
      shade(t * kSamples / 8, (t + 1) * kSamples / 8, eight);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::memcmp(one.data(), eight.data(), kSamples * sizeof(Vector)), 0);
}

struct WildLumasTest : LumasTest {
  // With the layers brushed, whatever the numbers: each mode runs, and so does the Oren-Nayar term.
  void BrushInEveryWay() {
    block.orenNayar = 1;
    for (SpecularLayer& layer : block.layers) layer.useAnisotropy = 1;
    for (const Vector& hit : {Vector{}, Vector{1e30f, -1e30f, NAN}}) {
      render.hitPoint = hit;
      for (std::int32_t mode = 0; mode <= 6; ++mode) {
        block.anisotropyMode = mode;
        Output();
        const bool brushed = block.anisotropyX != 0 && block.anisotropyY != 0;
        EXPECT_EQ(lights.CallsOf("lightSample").size(), brushed ? 2u : 1u);
      }
    }
    render.hitPoint = {};
  }
};

// Every exchanged number at its wildest, with everything switched on: whatever comes out, nothing
// breaks, and nothing that sanitizers find.
TEST_F(WildLumasTest, WildBlocksDoNoHarm) {
  AddLight({1, 1, 1}, {0.6f, 0, 0.8f});
  BeginRender();
  FakeContainer keys;
  shader.Message(MessageGetParameters, keys);
  for (const float wild : {NAN, INFINITY, -INFINITY, 0.0f, -1.0f, 1e38f, 1e-38f}) {
    for (const std::int32_t word : {INT32_MIN, -1, 0, 1, 4, 6, INT32_MAX}) {
      FakeContainer values;
      for (const FakeContainer::Entry& entry : keys.entries) {
        if (std::holds_alternative<Word>(entry.value)) values.Set(entry.key, Word{word});
        if (std::holds_alternative<float>(entry.value)) values.Set(entry.key, wild);
        if (std::holds_alternative<Vector>(entry.value)) {
          values.Set(entry.key, Vector{wild, 1, wild});
        }
      }
      shader.Message(MessageSetParameters, values);
      block.anisotropyActive = block.scratchActive = block.diffuseActive = 1;
      block.sigma2 = block.orenA = block.orenB = block.diffuseLow = wild;
      for (SpecularLayer& layer : block.layers) {
        layer.active = layer.useEdge = 1;
        layer.exponent = layer.roughness = layer.contrastLow = wild;
      }
      Output();
      EXPECT_FALSE(lights.calls.empty());
      BrushInEveryWay();
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
