// What Proximal makes of the points around a sample: the value, the preview, the bump.
#include <cmath>
#include <cstring>
#include <thread>

#include "module/shaders/filters/hue.h"
#include "module/shaders/surface/proximal.h"
#include "module/shaders/surface/proximal_weight.h"
#include "tests/support/fake_scene.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

// Lamps on the x axis. The default falloff is linear, from 0 to 100 units.
struct ProximalTest : ::testing::Test {
  StartedModule started;
  FakeHost& host = started.host;
  ShaderUnderTest shader{started, PluginIdProximal};
  ProximalBlock& block = shader.block<ProximalBlock>();
  FakeScene scene;
  RenderContext render = {};
  ChannelSample sample = {};

  ProximalTest() {
    FakeHost::cpuIndex = 0;
    render.bumpNormal = {0, 0, 1};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 1, 0};
    FakeContainer name;
    name.Set(1002, std::string("Lamp"));
    shader.Message(MessageSetParameters, name);
  }
  ~ProximalTest() override { FakeHost::cpuIndex = 0; }

  void AddLampAt(float x) { scene.Add("Lamp").matrix.off = {x, 0, 0}; }
  std::int32_t InitRender(std::int32_t cpus = 1) {
    host.cpuCount = cpus;
    const RenderInit init = {&render, scene.handle()};
    return shader.record.InitRender(&shader.instance, &init);
  }
  void BeginRender(std::int32_t cpus = 1) {
    ASSERT_EQ(InitRender(cpus), 0);
    sample.render = &render;
  }
  FootprintBlock& Slot(std::int32_t cpu = 0) {
    char* first = static_cast<char*>(shader.instance.slots);
    return *reinterpret_cast<FootprintBlock*>(first + cpu * SlotStrideNoise);
  }
  float ValueAt(float x, float y = 0, float z = 0) {
    render.hitPoint = {x, y, z};
    const Vector colour = shader.Output(sample);
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
};

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
