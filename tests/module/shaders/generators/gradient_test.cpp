// Gradient through the contract: InitRender, what Output costs, threads, wild values.
#include <cmath>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

#include "tests/module/shaders/generators/gradient_space_fixture.h"

namespace sorvanix::test {
namespace {

TEST_F(GradientTest, InitRenderMakesOneClearHeadPerCpu) {
  ASSERT_EQ(InitRender(4), 0);
  EXPECT_EQ(host.calls.back(), "alloc(992)");  // 4 * 248
  const FootprintBlock clear = {};
  for (int cpu = 0; cpu < 4; ++cpu) {
    EXPECT_EQ(std::memcmp(&OwnSlot(cpu), &clear, sizeof clear), 0);
  }
}

TEST_F(GradientTest, InitRenderDoesNothingWithoutARenderOrABlock) {
  RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
  ShaderInstance bare = {};
  init.render = &render;
  EXPECT_EQ(record.InitRender(&bare, &init), 0);
  EXPECT_EQ(bare.slots, nullptr);
}

TEST_F(GradientTest, AFailedSlotAllocationShowsAMessageAndTheRenderGoesOn) {
  host.failAllocation = 1;
  EXPECT_EQ(InitRender(), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.calls.back(), "messageDialog(\"Couldn't Allocate Globals\", 48)");
  sample.render = &render;
  EXPECT_EQ(ShownAt(0.25f, 0), 0.25f);
}

TEST_F(GradientTest, RendersOneAfterTheOtherLeaveNoSlotsBehind) {
  const int blocks = host.liveBlocks();
  ASSERT_EQ(InitRender(2), 0);
  ASSERT_EQ(InitRender(2), 0);
  EXPECT_EQ(host.liveBlocks(), blocks + 1);
  record.FreeRender(&instance);
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(GradientTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr int kSide = 64, kSamples = kSide * kSide;
  BeginRender(8);
  block.type = GradientAngle;
  const auto shade = [&](int begin, int end, std::vector<Vector>& picture) {
    for (int i = begin; i < end; ++i) {
      RenderContext ownRender = render;
      ChannelSample own = sample;
      own.render = &ownRender;
      own.uvw = {float(i % kSide) / kSide, float(i / kSide) / kSide, 0};
      record.Output(&picture[std::size_t(i)], &instance, &own);
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
}

int cpuIndexCalls;

TEST_F(GradientTest, OutputAsksForTheCpuOnceAndAllocatesNothing) {
  BeginRender();
  cpuIndexCalls = 0;
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++cpuIndexCalls;
    return std::int32_t{0};
  };
  const std::size_t calls = host.calls.size();
  for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
    instance.channel = channel;
    Output();
  }
  EXPECT_EQ(cpuIndexCalls, 2);
  EXPECT_EQ(host.calls.size(), calls);
}

// Whatever a file or a message left in the block: every type and space comes to an end, and finite
// colours of the knots give finite colours.
TEST_F(GradientSpaceTest, WildBlocksDoNoHarm) {
  const float inf = std::numeric_limits<float>::infinity();
  const float wild[] = {NAN, inf, -inf, 1e38f, -1e38f, 0, 1e-42f};
  const std::int32_t numbers[] = {INT32_MIN, -1, 0, 1, 50, 51, INT32_MAX};
  camera = &kPlaced;
  pictureSize = {INT32_MAX, INT32_MAX};
  tag.flags = 3;
  render.textureTag = &tag;
  for (std::int32_t type = -1; type <= 11; ++type) {
    for (std::int32_t space = -1; space <= 6; ++space) {
      for (std::size_t i = 0; i < std::size(wild); ++i) {
        const float value = wild[i];
        block.type = type;
        block.space = space;
        block.start = {value, value, value};
        block.radius = value;
        block.cycle = block.nested = numbers[i];
        block.ramp.count = block.ramp.interpolation = numbers[i];
        render.hitPoint = {value, -value, 1};
        sample.uvw = {value, value, value};
        OwnSlot().uvwPoint = sample.uvw;
        OwnSlot().tap = numbers[i];
        instance.channel = ChannelColour;
        const Vector colour = Output();
        if (type != GradientFourColours) {
          EXPECT_TRUE(std::isfinite(colour.x)) << type << " " << space << " " << value;
        }
        instance.channel = ChannelBump;
        ExpectExactly(Output(), {0, 0, 0});
      }
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
