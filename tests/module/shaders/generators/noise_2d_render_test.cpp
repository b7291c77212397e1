// 2D Noise in a render: its slots and taps, its bump path, what Output costs, threads.
#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "tests/module/shaders/generators/noise_2d_fixture.h"

namespace sorvanix::test {
namespace {

// --- slots: nested shaders and their taps ---

TEST_F(Noise2DTest, ANestedShaderReadsItsPointFromItsOwnSlot) {
  block.nested = 1;
  BeginRender(3);
  FakeHost::cpuIndex = 2;
  Slot(2).uvwPoint = {0.125f, 0.25f, 9};
  Slot(2).uvwOffset = {0.125f, -0.25f, 9};
  sample.uvw = {50, 50, 50};
  noise = {.x = 0.1f, .y = 1};
  EXPECT_NEAR(Grey(), 0.32f, 1e-6f);  // x = 0.25 * 12.8 = 3.2, y = 0
  FakeHost::cpuIndex = 0;
}

TEST_F(Noise2DTest, AnyMarkButZeroCountsAsNested) {
  BeginRender();
  Slot(0).uvwPoint = {0.25f, 0, 0};
  sample.uvw = {50, 0, 0};
  noise = {.x = 0.1f};
  for (const std::int32_t mark : {2, -1}) {
    block.nested = mark;
    EXPECT_NEAR(Grey(), 0.32f, 1e-6f) << mark;
  }
}

TEST_F(Noise2DTest, AStandAloneShaderReadsTheSample) {
  BeginRender();
  Slot(0).uvwPoint = {50, 50, 50};
  sample.uvw = {0.25f, 0, 0};
  noise = {.x = 0.1f};
  EXPECT_NEAR(Grey(), 0.32f, 1e-6f);
}

TEST_F(Noise2DTest, OuterChannel8427MakesItStandAloneForTheSample) {
  block.nested = 1;
  BeginRender(2);
  Slot(0).uvwPoint = {50, 50, 50};
  Slot(0).tap = TapPlusU;
  Slot(0).outerChannel = 8427;
  Slot(1).outerChannel = 0;
  sample.uvw = {0.25f, 0, 0};
  noise = {.x = 0.1f};
  EXPECT_NEAR(Grey(), 0.32f, 1e-6f) << "neither point nor tap of the slot count";
}

TEST_F(Noise2DTest, OuterChannel8427OfAnotherCpuDoesNotCount) {
  block.nested = 1;
  BeginRender(2);
  Slot(0).outerChannel = 8427;
  Slot(1).uvwPoint = {0.25f, 0, 0};
  FakeHost::cpuIndex = 1;
  sample.uvw = {50, 0, 0};
  noise = {.x = 0.1f};
  EXPECT_NEAR(Grey(), 0.32f, 1e-6f);
  FakeHost::cpuIndex = 0;
}

// The step of slot 0 in plane units: +x, -x, +y, -y around (3.2, 3.2).
TEST_F(Noise2DTest, TapsMoveByTheStepOfSlotZero) {
  block.nested = 1;
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  Slot(1).uvwPoint = {0.25f, 0.25f, 0};
  noise = {.x = 0.1f, .y = 0.01f};
  const float centre = 0.32f + 0.032f;
  const float expected[] = {centre, centre + 0.1f * kStep, centre - 0.1f * kStep,
                            centre + 0.01f * kStep, centre - 0.01f * kStep};
  for (std::int32_t tap = 0; tap <= 4; ++tap) {
    Slot(1).tap = tap;
    EXPECT_NEAR(Grey(), expected[tap], 1e-6f) << tap;
  }
  for (const std::int32_t tap : {-1, 5, 1000}) {
    Slot(1).tap = tap;
    EXPECT_NEAR(Grey(), centre, 1e-6f) << tap;
  }
  FakeHost::cpuIndex = 0;
}

TEST_F(Noise2DTest, WithoutARenderTheSlotsAreNotRead) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {50, 50, 50};
  sample.render = nullptr;
  sample.uvw = {0.25f, 0, 0};
  noise = {.x = 0.1f};
  EXPECT_NEAR(Grey(), 0.32f, 1e-6f);
}

TEST_F(Noise2DTest, ARenderWithoutSlotsReadsTheSample) {
  block.nested = 1;
  sample.render = &render;
  sample.uvw = {0.25f, 0, 0};
  noise = {.x = 0.1f};
  EXPECT_NEAR(Grey(), 0.32f, 1e-6f);
}

// --- the bump path ---

struct Noise2DBumpTest : Noise2DTest {
  Noise2DBumpTest() {
    shader.instance.channel = ChannelBump;
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {2, 0, 0};
    render.tangentV = {0, 0, 1};
    noise = {.base = 0.5f, .x = 0.02f, .y = 0.03f};
  }
};

// s = 0.45: du = (b - a) 3.5 = -2 * 0.45 * 0.02 * 3.5 = -0.063, dv = (c - d) 3.5 = 0.0945.
// m = (0, 1, 0) + (2, 0, 0) du + (0, 0, 1) dv = (-0.126, 1, 0.0945).
// |m| = sqrt(0.015876 + 1 + 0.00893025) = 1.01232714.
TEST_F(Noise2DBumpTest, BendsTheNormalBehindMinusAheadInUAndAheadMinusBehindInV) {
  BeginRender();
  const Vector colour = shader.Output(sample);
  EXPECT_EQ(colour.x, 0);
  EXPECT_EQ(colour.y, 0);
  EXPECT_EQ(colour.z, 0);
  EXPECT_NEAR(render.bumpNormal.x, -0.126 / 1.01232714, 1e-5);
  EXPECT_NEAR(render.bumpNormal.y, 1.0 / 1.01232714, 1e-5);
  EXPECT_NEAR(render.bumpNormal.z, 0.0945 / 1.01232714, 1e-5);
}

// As above: the step is slot 0's 0.45, not the 0.3 of the thread's own slot.
TEST_F(Noise2DBumpTest, EveryCpuTakesTheStepOfSlotZero) {
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  shader.Output(sample);
  FakeHost::cpuIndex = 0;
  EXPECT_NEAR(render.bumpNormal.x, -0.126 / 1.01232714, 1e-5);
  EXPECT_NEAR(render.bumpNormal.y, 1.0 / 1.01232714, 1e-5);
  EXPECT_NEAR(render.bumpNormal.z, 0.0945 / 1.01232714, 1e-5);
}

// The step doubles, and so does the slope: m = (-0.252, 1, 0.189), |m| = sqrt(1.099225)
// = 1.04843931.
TEST_F(Noise2DBumpTest, BumpDetailWidensTheStep) {
  block.bumpDetail = 2;
  BeginRender();
  shader.Output(sample);
  EXPECT_NEAR(render.bumpNormal.x, -0.252 / 1.04843931, 1e-5);
  EXPECT_NEAR(render.bumpNormal.z, 0.189 / 1.04843931, 1e-5);
}

TEST_F(Noise2DBumpTest, ASlopeThatCancelsTheNormalLeavesTheZeroVector) {
  BeginRender();
  render.bumpNormal = {};
  noise = {.base = 0.5f};
  shader.Output(sample);
  EXPECT_EQ(render.bumpNormal.x, 0);
  EXPECT_EQ(render.bumpNormal.y, 0);
  EXPECT_EQ(render.bumpNormal.z, 0);
}

TEST_F(Noise2DBumpTest, WithoutARenderTheColourPathRuns) { EXPECT_FLOAT_EQ(Grey(), 0.5f); }

TEST_F(Noise2DBumpTest, WithoutSlotsItIsBlackAndTheNormalStays) {
  sample.render = &render;
  EXPECT_EQ(Grey(), 0);
  EXPECT_EQ(render.bumpNormal.x, 0);
  EXPECT_EQ(render.bumpNormal.y, 1);
  EXPECT_EQ(render.bumpNormal.z, 0);
}

TEST_F(Noise2DBumpTest, AnEnclosingTapDoesNotMoveTheFourSamples) {
  block.nested = 1;
  BeginRender();
  Slot(0).tap = TapPlusU;
  noise = {.base = 0.5f, .x = 0.02f, .y = 0.03f};
  shader.Output(sample);
  EXPECT_NEAR(render.bumpNormal.x, -0.126 / 1.01232714, 1e-5);
}

// --- what Output costs ---

int noiseCalls, cpuIndexCalls;

// Counts what Output asks of the host.
struct Noise2DCostTest : Noise2DTest {
  Noise2DCostTest() {
    noiseCalls = cpuIndexCalls = 0;
    started.host.render.unitNoiseAt = [](const Vector*, float) noexcept {
      ++noiseCalls;
      return 0.5f;
    };
    started.host.render.cpuIndex = [](const RenderContext*) noexcept {
      ++cpuIndexCalls;
      return std::int32_t{0};
    };
    block.nested = 1;  // reads the slot for most
    BeginRender();
  }
};

TEST_F(Noise2DCostTest, AColourAsksTheCatalogueOnceAndTheCpuAtMostOnce) {
  shader.Output(sample);
  EXPECT_EQ(noiseCalls, 1);
  EXPECT_LE(cpuIndexCalls, 1);
}

TEST_F(Noise2DCostTest, ABumpAsksTheCatalogueFourTimesAndTheCpuAtMostOnce) {
  shader.instance.channel = ChannelBump;
  shader.Output(sample);
  EXPECT_EQ(noiseCalls, 4);
  EXPECT_LE(cpuIndexCalls, 1);
}

TEST_F(Noise2DCostTest, OutputCallsNothingElseAndAllocatesNothing) {
  const std::size_t calls = started.host.calls.size();
  shader.Output(sample);
  shader.instance.channel = ChannelBump;
  shader.Output(sample);
  EXPECT_EQ(started.host.calls.size(), calls);
}

// --- InitRender, FreeRender ---

TEST_F(Noise2DTest, InitRenderMakesOneClearSlotPerCpu) {
  BeginRender(4);
  EXPECT_EQ(started.host.calls.back(), "alloc(1024)");  // 4 << 8
  for (int cpu = 0; cpu < 4; ++cpu) {
    FootprintBlock clear = {};
    EXPECT_EQ(std::memcmp(&Slot(cpu), &clear, sizeof clear), 0);
    const float* tail = reinterpret_cast<const float*>(&Slot(cpu) + 1);
    EXPECT_EQ(tail[0], cpu == 0 ? kStep : 0.3f) << "only slot 0 carries the step";
    EXPECT_EQ(tail[1], 1.0f);
  }
}

TEST_F(Noise2DTest, InitRenderDoesNothingWithoutARenderOrABlock) {
  RenderInit init = {};
  EXPECT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  EXPECT_EQ(shader.instance.slots, nullptr);
  ShaderInstance bare = {};
  init.render = &render;
  EXPECT_EQ(shader.record.InitRender(&bare, &init), 0);
  EXPECT_EQ(bare.slots, nullptr);
}

TEST_F(Noise2DTest, AFailedSlotAllocationShowsAMessageAndTheRenderGoesOn) {
  started.host.failAllocation = 1;
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  EXPECT_EQ(shader.instance.slots, nullptr);
  EXPECT_EQ(started.host.calls.back(), "messageDialog(\"Couldn't Allocate 2D Noise Globals\", 48)");
  sample.render = &render;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.25f);
}

TEST_F(Noise2DTest, ThereIsOneSlotAtLeastWhateverTheHostCounts) {
  for (const std::int32_t cpus : {0, -1}) {
    BeginRender(cpus);
    EXPECT_EQ(started.host.calls.back(), "alloc(256)") << cpus;
    ASSERT_NE(shader.instance.slots, nullptr) << cpus;
    shader.record.FreeRender(&shader.instance);
  }
}

TEST_F(Noise2DTest, ASecondInitRenderReleasesTheSlotsOfTheFirst) {
  const int blocks = started.host.liveBlocks();
  BeginRender(2);
  BeginRender(2);
  EXPECT_EQ(started.host.liveBlocks(), blocks + 1);
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(started.host.liveBlocks(), blocks);
}

TEST_F(Noise2DTest, FreeRenderTwiceIsHarmless) {
  BeginRender();
  const int blocks = started.host.liveBlocks();
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(shader.instance.slots, nullptr);
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(started.host.liveBlocks(), blocks - 1);
}

TEST_F(Noise2DTest, ANestedMarkStaysAfterTheRender) {
  block.nested = 1;
  BeginRender();
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(block.nested, 1);
}

// --- threads ---

TEST_F(Noise2DTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr int kSide = 64;
  BeginRender(8);
  noise = {.base = 0.1f, .x = 0.03f, .y = 0.02f};
  const auto shade = [&](int begin, int end, std::vector<Vector>& picture) {
    for (int i = begin; i < end; ++i) {
      ChannelSample own = sample;
      own.uvw = {float(i % kSide) / kSide, float(i / kSide) / kSide, 0};
      shader.record.Output(&picture[std::size_t(i)], &shader.instance, &own);
    }
  };
  std::vector<Vector> one(kSide * kSide), eight(kSide * kSide);
  shade(0, kSide * kSide, one);
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      FakeHost::cpuIndex = t;
      shade(t * kSide * kSide / 8, (t + 1) * kSide * kSide / 8, eight);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0);
}

}  // namespace
}  // namespace sorvanix::test
