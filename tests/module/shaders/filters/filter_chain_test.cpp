// Chains of real filters: Bright/Contrast reads Hue reads Bright/Contrast reads a scripted input.
#include <cstring>
#include <thread>

#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/hue.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

struct FilterChainTest : ::testing::Test {
  StartedModule started;
  FakeHost& host = started.host;
  ShaderUnderTest inner{started, PluginIdBrightContrast, 11};
  ShaderUnderTest middle{started, PluginIdHue, 12};
  ShaderUnderTest outer{started, PluginIdBrightContrast, 13};
  ScriptedLink& source = ScriptedLink::Of(inner.block<BrightContrastBlock>().input);
  RenderContext render = {};
  TextureTag tag = {};
  ChannelSample sample = {};

  FilterChainTest() {
    FakeHost::cpuIndex = 0;
    ScriptedLink::Of(outer.block<BrightContrastBlock>().input).HoldShader(middle, PluginIdHue);
    ScriptedLink::Of(middle.block<HueBlock>().input).HoldShader(inner, PluginIdBrightContrast);
    sample.uvw = {0.5f, 0.5f, 0};
    source.content.colour = {0.25f, 0.5f, 0.75f};
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 0, 1};
    tag.matrix1 = tag.matrix2 = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    render.localHitPoint = {1, 2, 3};
  }
  ~FilterChainTest() override { FakeHost::cpuIndex = 0; }

  void HoldAwareShader(std::int32_t cpus = 1) {
    source.HoldShader(PluginIdNoise2D);
    source.MakeSlots(cpus);
  }
  void BeginRender(std::int32_t cpus = 1) {
    host.cpuCount = cpus;
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(outer.record.InitRender(&outer.instance, &init), 0);
    sample.render = &render;
  }
};

TEST_F(FilterChainTest, WithoutARenderTheColourComesThroughUnchanged) {
  ExpectVector(outer.Output(sample), {0.25f, 0.5f, 0.75f}, 3e-7);
}

TEST_F(FilterChainTest, TheOutermostInitRenderPreparesAndMarksAllOthers) {
  HoldAwareShader();
  BeginRender(2);
  EXPECT_NE(middle.instance.slots, nullptr);
  EXPECT_NE(inner.instance.slots, nullptr);
  EXPECT_EQ(outer.block<BrightContrastBlock>().nested, 0);
  EXPECT_EQ(middle.block<HueBlock>().nested, 1);
  EXPECT_EQ(inner.block<BrightContrastBlock>().nested, 1);
  outer.record.FreeRender(&outer.instance);
  EXPECT_EQ(inner.instance.slots, nullptr);
}

TEST_F(FilterChainTest, OnATagTheOutermostFootprintTravelsDownToTheLast) {
  HoldAwareShader();
  render.textureTag = &tag;
  tag.flags = 1;
  BeginRender();
  ExpectVector(outer.Output(sample), {0.25f, 0.5f, 0.75f}, 3e-7);
  ASSERT_EQ(host.reads.size(), 1u);
  EXPECT_EQ(host.reads[0].head.outerChannel, 13) << "the outermost filter's";
  ExpectExactly(host.reads[0].head.footprint[0], {100, 200, 300});
  EXPECT_EQ(host.reads[0].tagFlag, 1);
}

TEST_F(FilterChainTest, OnATagTheTapsOfTheOutermostBumpReachTheLast) {
  HoldAwareShader();
  render.textureTag = &tag;
  outer.instance.channel = ChannelBump;
  BeginRender();
  outer.Output(sample);
  ASSERT_EQ(host.reads.size(), 4u);
  for (std::int32_t tap = 1; tap <= 4; ++tap) {
    EXPECT_EQ(host.reads[std::size_t(tap) - 1].head.tap, tap);
    ExpectExactly(host.reads[std::size_t(tap) - 1].uvw, sample.uvw);
  }
}

// A nested filter ignores its slot where there is no tag, and builds a footprint of its own.
TEST_F(FilterChainTest, WithoutATagEachFilterHandsDownItsOwnFootprint) {
  HoldAwareShader();
  outer.instance.channel = ChannelBump;
  BeginRender();
  outer.Output(sample);
  ASSERT_EQ(host.reads.size(), 4u);
  for (const LinkRead& read : host.reads) {
    EXPECT_EQ(read.head.tap, TapNone);
    EXPECT_EQ(read.head.outerChannel, 11);
  }
}

TEST_F(FilterChainTest, TheInnermostFilterMovesAnUnawareInputByTheTapThatReachedItsSlot) {
  source.HoldBitmap(4, 8);
  render.textureTag = &tag;
  outer.instance.channel = ChannelBump;
  BeginRender();
  outer.Output(sample);
  ASSERT_EQ(host.reads.size(), 4u);
  ExpectExactly(host.reads[0].uvw, {0.75f, 0.5f, 0});
  ExpectExactly(host.reads[1].uvw, {0.25f, 0.5f, 0});
  ExpectExactly(host.reads[2].uvw, {0.5f, 0.625f, 0});
  ExpectExactly(host.reads[3].uvw, {0.5f, 0.375f, 0});
}

// The first sample shows the mark to the filter inside only, which then hands down its own.
TEST_F(FilterChainTest, Channel8427MakesTheNextFilterStandAlone) {
  HoldAwareShader();
  render.textureTag = &tag;
  outer.instance.channel = ChannelStandalone;
  BeginRender();
  outer.Output(sample);
  EXPECT_EQ(host.reads[0].head.outerChannel, 12) << "the middle filter built it anew";
}

// Under AddressSanitizer and ThreadSanitizer this also holds the rule of one writer for each slot.
TEST_F(FilterChainTest, EightThreadsBendTheSameNormalsAsOne) {
  constexpr int kSamples = 512;
  HoldAwareShader(8);
  host.recordReads = false;
  render.textureTag = &tag;
  outer.instance.channel = ChannelBump;
  source.content.show = [](const LinkRead& read) {
    const float height = 0.5f + 0.1f * read.head.uvwPoint.x * float(read.head.tap);
    return Vector{height, height, height};
  };
  BeginRender(8);
  const auto shade = [this](int begin, int end, std::vector<Vector>& normals) {
    for (int i = begin; i < end; ++i) {
      RenderContext ownRender = render;
      ChannelSample ownSample = sample;
      ownSample.render = &ownRender;
      ownSample.uvw.x = float(i) / kSamples;
      Vector result;
      outer.record.Output(&result, &outer.instance, &ownSample);
      normals[std::size_t(i)] = ownRender.bumpNormal;
    }
  };
  std::vector<Vector> one(kSamples), eight(kSamples);
  shade(0, kSamples, one);
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      FakeHost::cpuIndex = t;
      shade(t * kSamples / 8, (t + 1) * kSamples / 8, eight);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0);
  EXPECT_NE(one[1].x, one[400].x) << "the input was seen";
}

}  // namespace
}  // namespace sorvanix::test
