// 3D Noise through the contract: its value and its shaping, the filter width, InitRender, threads.
#include "module/shaders/generators/noise_3d.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

#include "tests/module/shaders/generators/noise_3d_fixture.h"

namespace sorvanix::test {
namespace {

// --- without a render ---

TEST_F(Noise3DTest, TheDefaultBlockShowsTypeTwelveBetweenBlackAndWhite) {
  EXPECT_FLOAT_EQ(GreyOf(0.32f), 0.32f);
}

// 12.8 * 2 * (0.25 * 0.5, 0.5 * 0.25, 0.125 * 4) = (3.2, 3.2, 12.8).
TEST_F(Noise3DTest, ThePointIsUvwTimesTwelvePointEightTimesTheScales) {
  block.globalScale = 2;
  block.scaleX = 0.5f;
  block.scaleY = 0.25f;
  block.scaleZ = 4;
  sample.uvw = {0.25f, 0.5f, 0.125f};
  ExpectVector(PointAsked(), {3.2f, 3.2f, 12.8f});
}

// Rounded after each product: 12.8 u = 12.5548277, then 54.1669922 and 89.0709686. The product of
// the two scales, rounded by itself, would make it 89.0709763.
TEST_F(Noise3DTest, WithoutARenderThePointIsScaledOnceByOnce) {
  block.globalScale = 4.31443548f;
  block.scaleX = 1.64437723f;
  sample.uvw = {0.980845928f, 0, 0};
  EXPECT_EQ(PointAsked().x, 89.0709686f);
  block.globalScale = block.scaleX = 1e30f;  // their product is beyond all floats
  sample.uvw = {};
  EXPECT_EQ(PointAsked().x, 0);
}

TEST_F(Noise3DTest, WithoutARenderNothingElseMovesThePoint) {
  BeginRender();
  OwnSlot().pointOffset = {7, 7, 7};
  sample.render = nullptr;
  block.velocity = {5, 5, 5};
  block.nested = block.useObjectFrame = block.useSphereFrame = 1;
  block.space = SpaceScreen;
  instance.channel = ChannelBump;
  sample.time = 1;
  sample.uvw = {0.25f, 0.5f, 0};
  ExpectVector(PointAsked(), {3.2f, 6.4f, 0});
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.25f) << "and the bump channel shows its colour";
}

TEST_F(Noise3DTest, TimeScaleTimesSampleTimeIsTheNoiseTime) {
  block.timeScale = 2;
  sample.time = 3;
  Output();
  EXPECT_EQ(askedTime, 6);
  BeginRender();
  Output();
  EXPECT_EQ(askedTime, 6);
}

TEST_F(Noise3DTest, ATypeOffTheCatalogueIsMidGrey) {
  for (const std::int32_t type : {-1, 30, INT32_MIN, INT32_MAX}) {
    block.noiseType = type;
    EXPECT_EQ(Grey(), 0.5f);
  }
}

TEST_F(Noise3DTest, MixesTheTwoColours) {
  block.colorA = {0.1f, 0.2f, 2};
  block.colorB = {0.5f, 0, -2};
  noise.base = 0.25f;
  ExpectVector(Output(), {0.2f, 0.15f, 1});  // a quarter of the way
}

TEST_F(Noise3DTest, AbsoluteFoldsTheNoiseAtItsMiddle) {
  block.absolute = 1;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.5f);  // |2 * 0.25 - 1|
}

// --- cycles, clip, brightness, contrast ---

// c = 0.5 - cos(0.25 * 6.29185358) / 2 = 0.5 + sin(0.002167068) / 2 = 0.50108353.
TEST_F(Noise3DTest, CyclesOfOneAreTheFullCosineWithTheLongerTurn) {
  block.cycles = 1;
  EXPECT_NEAR(GreyOf(0.25f), 0.50108353f, 2e-7f);
}

TEST_F(Noise3DTest, TwoCyclesRunTwiceOverTheRange) {
  block.cycles = 2;
  EXPECT_NEAR(GreyOf(0.125f), 0.50108353f, 2e-7f);
}

// (0.50108353 + 0.25) / 2.
TEST_F(Noise3DTest, HalfACycleIsHalfWayToTheCosine) {
  block.cycles = 0.5f;
  EXPECT_NEAR(GreyOf(0.25f), 0.37554177f, 2e-7f);
}

// Within a render (0.50108353 - 0.25) * -0.5 + 0.25 = 0.12445823; outside, nothing.
TEST_F(Noise3DTest, NegativeCyclesMixOnlyWithinARender) {
  block.cycles = -0.5f;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.25f);
  BeginRender();
  EXPECT_NEAR(GreyOf(0.25f), 0.12445823f, 2e-7f);
  block.cycles = 0;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.25f);
}

// Clip 0.2..0.6: 0.3 becomes 0.25; plus 0.25 is 0.5; contrast 0.5 maps 0.25..0.75 onto 0..1: 0.5.
// And 0.25 + 0.2 = 0.45 becomes 0.4.
TEST_F(Noise3DTest, ClipsBrightensAndSteepensInThisOrder) {
  block.lowClip = 0.2f;
  block.highClip = 0.6f;
  block.brightness = 0.25f;
  block.contrast = 0.5f;
  EXPECT_NEAR(GreyOf(0.3f), 0.5f, 1e-6);
  block.brightness = 0.2f;
  EXPECT_NEAR(GreyOf(0.3f), 0.4f, 1e-6);
  EXPECT_EQ(GreyOf(0.1f), 0);
  EXPECT_EQ(GreyOf(0.7f), 1);
}

TEST_F(Noise3DTest, AContrastOfMinusOneIsMidGrey) {
  block.contrast = -1;
  for (const float value : {0.0f, 0.3f, 1.0f}) EXPECT_FLOAT_EQ(GreyOf(value), 0.5f);
}

// 0 - (0.5 - 0) * -4.
TEST_F(Noise3DTest, ANegativeContrastIsNotClamped) {
  block.contrast = -4;
  EXPECT_FLOAT_EQ(GreyOf(0), 2);
}

// --- the filter width. Type 12 fades from 0.9 to 0.5 by 0.5 / width: 0.7 at 1, 0.6 at 2. ---

TEST_F(Noise3DTest, WithoutARenderTheBlurTimesTenIsTheWidth) {
  sample.blurScale = 0.5f;
  sample.blurOffset = 0.2f;
  sample.delta = {100, 100, 100};
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6);
  block.globalScale = 100;
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6) << "the scale plays no part";
}

// The corners reach from -0.25 to 0.25 in x, 0 to 0.5 in y and 0 to 1 in z: 0.25 + 0.25 + 0.5 = 1.
TEST_F(Noise3DTest, TheWidthIsTheSumOfTheHalfExtentsOfTheFourPoints) {
  BeginRender();
  block.space = SpaceWorld;
  render.footprintA = {-0.25f, 0, 0};
  render.footprintB = {0.25f, 0.5f, 0};
  render.footprintC = {0, 0, 1};
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6);
  render.filterScale = 2;
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6);
  render.filterScale = 1;
  block.scaleX = -2;
  block.scaleY = 2;
  block.scaleZ = 4;
  block.globalScale = 0.5f;  // 0.25 + 0.25 + 1
  EXPECT_NEAR(GreyOf(0.9f), 0.5f + 0.4f / 3, 1e-6);
  render.filteringOn = 0;
  EXPECT_NEAR(GreyOf(0.9f), 0.9f, 1e-6);
}

TEST_F(Noise3DTest, TheBlurWidensEachAxis) {
  BeginRender();
  block.space = SpaceWorld;
  sample.blurScale = 0.5f;
  sample.blurOffset = 2.0f / 3;  // a third on each of three axes
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6);
}

TEST_F(Noise3DTest, DetailStrengthensTheFilter) {
  sample.blurOffset = 0.1f;
  block.detail = 2;
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6);
}

// --- InitRender, FreeRender ---

TEST_F(Noise3DTest, InitRenderMakesOneClearSlotPerCpu) {
  BeginRender();
  record.FreeRender(&instance);
  ASSERT_EQ(InitRender(4), 0);
  EXPECT_EQ(host.calls.back(), "alloc(1024)");
  const FootprintBlock clear = {};
  for (int cpu = 0; cpu < 4; ++cpu) {
    EXPECT_EQ(std::memcmp(&OwnSlot(cpu), &clear, sizeof clear), 0);
    EXPECT_EQ(StepOfSlot(cpu), cpu == 0 ? kStep : 0.3f) << "only slot 0 carries the step";
  }
}

TEST_F(Noise3DTest, TheBumpStepShrinksInTheScreensSpaces) {
  block.bumpStepScale = 2;
  const float expected[] = {0.9f, 0.9f, 0.9f, 0.9f, 0.09f, 0.045f, 0.9f};
  for (std::int32_t space = 0; space <= 6; ++space) {
    block.space = space;
    ASSERT_EQ(InitRender(), 0);
    EXPECT_FLOAT_EQ(StepOfSlot(0), expected[space]) << space;
  }
}

TEST_F(Noise3DTest, TypeSixteenHasTheSmallestStepOfAll) {
  block.noiseType = 16;
  block.octaves = 12.5f;
  ASSERT_EQ(InitRender(), 0);
  EXPECT_FLOAT_EQ(StepOfSlot(0), 0.0005f);
}

TEST_F(Noise3DTest, InitRenderDoesNothingWithoutARender) {
  const RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
}

TEST_F(Noise3DTest, AFailedSlotAllocationShowsAMessageAndTheRenderGoesOn) {
  host.failAllocation = 1;
  EXPECT_EQ(InitRender(), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.calls.back(), "messageDialog(\"Couldn't Allocate 3D Noise Globals\", 48)");
  sample.render = &render;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.25f);
}

TEST_F(Noise3DTest, RendersOneAfterTheOtherLeaveNoSlotsBehind) {
  const int blocks = host.liveBlocks();
  ASSERT_EQ(InitRender(2), 0);
  ASSERT_EQ(InitRender(2), 0);
  EXPECT_EQ(host.liveBlocks(), blocks + 1);
  record.FreeRender(&instance);
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

// --- what Output costs, threads, wild values ---

int noiseCalls, cpuIndexCalls;

TEST_F(Noise3DTest, OutputAsksForTheCpuOnceAndAllocatesNothing) {
  BeginRender();
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++cpuIndexCalls;
    return std::int32_t{0};
  };
  host.render.unitNoiseAt = [](const Vector*, float) noexcept {
    ++noiseCalls;
    return 0.5f;
  };
  const auto expectCalls = [this](int noises) {
    const std::size_t calls = host.calls.size();
    noiseCalls = cpuIndexCalls = 0;
    Output();
    EXPECT_EQ(noiseCalls, noises);
    EXPECT_EQ(cpuIndexCalls, 1);
    EXPECT_EQ(host.calls.size(), calls);
  };
  expectCalls(1);
  instance.channel = ChannelBump;
  expectCalls(4);
  block.bumpOneSided = 1;
  expectCalls(4);
}

TEST_F(Noise3DTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr int kSide = 64, kSamples = kSide * kSide;
  BeginRender(8);
  block.space = SpaceWorld;
  host.render.unitNoiseAt = [](const Vector* p, float) noexcept {
    return 0.1f + 0.03f * p->x + 0.02f * p->y;
  };
  const auto shade = [&](int begin, int end, std::vector<Vector>& picture) {
    for (int i = begin; i < end; ++i) {
      RenderContext ownRender = render;
      ownRender.hitPoint = {float(i % kSide) / 4, float(i / kSide) / 4, 0};
      ChannelSample own = sample;
      own.render = &ownRender;
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

// Whatever messages left in the block and whatever the render holds: all that can be asked is that
// every sample comes to an end, black where it bumps.
TEST_F(Noise3DTest, WildMessagesAndRendersComeToAnEnd) {
  const float inf = std::numeric_limits<float>::infinity();
  host.render.turbulence = [](const Vector*, float, float, std::int32_t) noexcept { return 0.5f; };
  FakeContainer initial;
  shader.Message(MessageGetParameters, initial);
  for (const float value : {NAN, inf, -inf, 1e38f, -1e38f, 1e-42f}) {
    FakeContainer wild = initial;
    for (FakeContainer::Entry& entry : wild.entries) {
      if (std::holds_alternative<float>(entry.value)) entry.value = value;
      if (std::holds_alternative<Vector>(entry.value)) entry.value = Vector{value, -value, value};
    }
    ASSERT_EQ(shader.Message(MessageSetParameters, wild), 1);
    const Matrix place = {{value, 1, -value}, {1, value, 0}, {0, 1, value}, {value, 0, 1}};
    ObjectRecord object = {};
    object.matrix = place;
    UvwRecord polygon = {};
    polygon.cornerCount = 4;
    for (int i = 0; i < 4; ++i) {
      polygon.corner[i] = {value, static_cast<float>(i), -value};
      polygon.restCorner[i] = {static_cast<float>(i), value, 1};
    }
    render = {};
    render.object = &object;
    render.uvwRecord = &polygon;
    render.textureTag = &tag;
    render.filteringOn = 1;
    render.filterScale = sample.time = sample.blurOffset = sample.blurScale = value;
    render.hitPoint = render.footprintA = sample.uvw = {value, -value, 1};
    render.tangentU = render.bumpNormal = {value, value, value};
    BeginRender();  // with a wild bump step
    for (std::int32_t type = -1; type <= 30; ++type) {
      for (std::int32_t space = -1; space <= 6; ++space) {
        block.noiseType = type;
        block.space = space;
        block.useObjectFrame = space & 1;
        block.useSphereFrame = type & 1;
        instance.channel = ChannelColour;
        Output();
        instance.channel = ChannelBump;
        block.bumpOneSided = space & 2;
        ExpectExactly(Output(), {0, 0, 0});
      }
    }
    camera = nullptr;
  }
}

// Whatever a file or a message left in the block, every type, space and frame comes to an end, and
// over noise of 0..1 the clip makes a colour of it.
TEST_F(Noise3DTest, WildBlocksDoNoHarm) {
  const float inf = std::numeric_limits<float>::infinity();
  BeginRender();
  host.render.unitNoiseAt = [](const Vector*, float) noexcept { return 0.5f; };
  host.render.turbulence = [](const Vector*, float, float, std::int32_t) noexcept { return 0.5f; };
  ObjectRecord object = {};
  render.object = &object;
  render.textureTag = &tag;
  block.nested = 1;
  for (std::int32_t type = -1; type <= 30; ++type) {
    for (const float value : {NAN, inf, -inf, 1e38f, -1e38f, 1e-42f}) {
      for (std::int32_t space = -1; space <= 6; ++space) {
        block.noiseType = type;
        block.space = space;
        block.octaves = block.globalScale = block.detail = block.timeScale = value;
        block.velocity = {value, value, value};
        block.useObjectFrame = space % 2;
        block.useSphereFrame = space % 4;
        render.hitPoint = render.localHitPoint = sample.uvw = {value, -value, 1};
        OwnSlot().pointOffset = OwnSlot().footprint[0] = {value, value, value};
        OwnSlot().tap = space;
        instance.channel = ChannelColour;
        EXPECT_TRUE(std::isfinite(Output().x)) << type << " " << value << " " << space;
        instance.channel = ChannelBump;
        block.bumpOneSided = space & 1;
        ExpectExactly(Output(), {0, 0, 0});
      }
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
