// Proximal in a render: nested in a filter, its slots and list, and on several threads.
#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "module/shaders/filters/hue.h"
#include "module/shaders/surface/proximal_weight.h"
#include "tests/module/shaders/surface/proximal_fixture.h"

namespace sorvanix::test {
namespace {

// --- inside a filter ---

struct NestedProximalTest : ProximalTest {
  NestedProximalTest() {
    AddLampAt(0);
    BeginRender();
    block.nested = 1;
  }
};

TEST_F(NestedProximalTest, TheSlotMovesThePoint) {
  Slot().pointOffset = {20, 0, 0};
  EXPECT_EQ(ValueAt(30), 0.5f);
  block.nested = 0;
  EXPECT_EQ(ValueAt(30), 0.7f);
}

TEST_F(NestedProximalTest, AStandaloneChannelCountsAsNotNested) {
  Slot().pointOffset = {20, 0, 0};
  Slot().tap = TapPlusU;
  Slot().outerChannel = ChannelStandalone;
  EXPECT_EQ(ValueAt(30), 0.7f);
}

TEST_F(NestedProximalTest, EachCpuHasASlotOfItsOwn) {
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  Slot(1).pointOffset = {20, 0, 0};
  Slot(0).outerChannel = ChannelStandalone;
  EXPECT_EQ(ValueAt(30), 0.5f);
  Slot(0).outerChannel = 0;
  Slot(1).outerChannel = ChannelStandalone;
  EXPECT_EQ(ValueAt(30), 0.7f);
}

// A quarter of the tangent, 10 units, against it first: 2.5 nearer at the first tap.
TEST_F(NestedProximalTest, TapsStepAgainstTheTangentFirst) {
  render.tangentU = {10, 0, 0};
  render.tangentV = {-10, 0, 0};
  const float expected[] = {0.5f, 0.525f, 0.475f, 0.475f, 0.525f, 0.5f};
  for (std::int32_t tap = 0; tap <= 5; ++tap) {
    Slot().tap = tap;
    EXPECT_NEAR(ValueAt(50), expected[tap], 1e-6) << tap;
  }
}

TEST_F(NestedProximalTest, TheBumpMovesByTheOffsetButNotByTheTap) {
  Slot().pointOffset = {20, 0, 0};
  Slot().tap = TapPlusU;
  block.minimum = 0.5f;  // level up to 50; from there on it falls by 0.02 a unit, so at (70, 0, 0)
  shader.instance.channel = ChannelBump;
  ValueAt(50);
  const float slope = 7.4f * 0.5f * 0.02f;
  const float length = std::sqrt(1 + slope * slope);
  ExpectVector(render.bumpNormal, {slope / length, 0, 1 / length}, 1e-5);
}

TEST_F(ProximalTest, AFilterReadsItOnATagAndWithout) {
  AddLampAt(0);
  ShaderUnderTest filter(started, PluginIdHue, 1);
  ScriptedLink::Of(filter.block<HueBlock>().input).HoldShader(shader, PluginIdProximal);
  TextureTag tag = {};
  for (const TextureTag* on :
       {static_cast<const TextureTag*>(&tag), static_cast<const TextureTag*>(nullptr)}) {
    render.textureTag = on;
    const RenderInit init = {&render, scene.handle()};
    ASSERT_EQ(filter.record.InitRender(&filter.instance, &init), 0);
    EXPECT_EQ(block.nested, 1);
    sample.render = &render;
    render.hitPoint = {25, 0, 0};
    ExpectVector(filter.Output(sample), {0.75f, 0.75f, 0.75f});
    EXPECT_EQ(Slot().outerChannel, 1);
    filter.record.FreeRender(&filter.instance);
    EXPECT_EQ(shader.instance.slots, nullptr);
  }
}

// --- the render's beginning and end ---

TEST_F(ProximalTest, ReportSlotsTellsTheArrayAndItsStride) {
  BeginRender(2);
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageReportSlots, container), 1);
  EXPECT_NE(shader.instance.slots, nullptr);
  EXPECT_EQ(std::get<Word>(*container.Find(12000)), reinterpret_cast<Word>(shader.instance.slots));
  EXPECT_EQ(std::get<Word>(*container.Find(12001)), 256);
}

TEST_F(ProximalTest, FreeRenderReleasesSlotsAndPointsAlsoTwice) {
  AddLampAt(0);
  const int blocks = host.liveBlocks();
  BeginRender(4);
  EXPECT_EQ(host.liveBlocks(), blocks + 4) << "slots, list, points, weights";
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(shader.instance.slots, nullptr);
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(ProximalTest, ASecondInitRenderReleasesTheFirst) {
  AddLampAt(0);
  BeginRender();
  const int blocks = host.liveBlocks();
  AddLampAt(300);
  BeginRender();
  EXPECT_EQ(host.liveBlocks(), blocks);
  EXPECT_EQ(ValueAt(300), 1);
}

TEST_F(ProximalTest, WithoutARenderInitRenderMakesNothing) {
  const RenderInit init = {nullptr, scene.handle()};
  EXPECT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  EXPECT_EQ(shader.instance.slots, nullptr);
}

// The slots and the list are needed, and it says so without a message; a list that cannot grow
// holds what it has. Three lamps: slots, list, then room for 1, 2 and 4 points, two arrays each.
TEST_F(ProximalTest, EveryFailedAllocationLeaksNothingAndAnswersAsTold) {
  AddLampAt(0);
  AddLampAt(200);
  AddLampAt(400);
  const int blocks = host.liveBlocks();
  for (int k = 1; k <= 8; ++k) {
    host.failAllocation = k;
    EXPECT_EQ(InitRender(2), k <= 2 ? -100 : 0) << k;
    EXPECT_EQ(shader.instance.slots == nullptr, k <= 2) << k;
    shader.record.FreeRender(&shader.instance);
    EXPECT_EQ(host.liveBlocks(), blocks) << k;
  }
  host.failAllocation = 9;
  EXPECT_EQ(InitRender(2), 0);
  EXPECT_EQ(host.failAllocation, 1) << "eight allocations, and no more";
  host.failAllocation = 0;
  EXPECT_TRUE(host.messages.empty());
}

// --- what Output costs, and threads ---

TEST_F(NestedProximalTest, OutputAsksTheHostForNothingButTheCpuOnce) {
  static int asked;
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++asked;
    return std::int32_t{0};
  };
  const std::size_t calls = host.calls.size();
  for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
    shader.instance.channel = channel;
    asked = 0;
    ValueAt(30);
    EXPECT_EQ(asked, 1);
  }
  EXPECT_EQ(host.calls.size(), calls);
}

TEST_F(ProximalTest, EveryCpuSeesTheSamePoints) {
  constexpr std::size_t kSamples = 4096;
  AddLampAt(0);
  AddLampAt(40);
  block.combine = ProximalOverlap;
  BeginRender(8);
  const auto shade = [&](std::size_t begin, std::size_t end, std::vector<Vector>& picture) {
    RenderContext own = render;
    ChannelSample mine = sample;
    mine.render = &own;
    for (std::size_t i = begin; i < end; ++i) {
      own.hitPoint = {static_cast<float>(i % 64), static_cast<float>(i / 64), 1};
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

TEST_F(ProximalTest, WildBlocksDoNoHarm) {
  AddLampAt(0);
  AddLampAt(NAN);
  for (const float wild : {NAN, INFINITY, -INFINITY, 0.0f, -1.0f, 1e38f}) {
    for (const std::int32_t word : {INT32_MIN, -1, 0, 3, 7, INT32_MAX}) {
      FakeContainer values;
      for (const std::int32_t key : {1000, 1001, 1005}) values.Set(key, wild);
      for (const std::int32_t key : {1006, 1009}) values.Set(key, Word{word});
      shader.Message(MessageSetParameters, values);
      BeginRender();
      for (const float x : {0.0f, 50.0f, wild}) {
        render.hitPoint = {x, 0, 0};
        for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
          shader.instance.channel = channel;
          shader.Output(sample);
        }
      }
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
