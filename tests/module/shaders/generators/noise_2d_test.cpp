// 2D Noise through the contract: its colour path, taps, bump path and the paths without a render.
//
// The host's noise is scripted: type 12 of the catalogue is the host's unit noise at the point, so
// a linear host noise makes every value computable by hand.
#include "module/shaders/generators/noise_2d.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

// What the scripted noise answers: base + slope . (x, y, z, time).
struct LinearNoise {
  float base = 0, x = 0, y = 0, z = 0, time = 0;
};
LinearNoise noise;

// A step of 0.45 is the table's for type 12.
constexpr float kStep = 0.45f;

struct Noise2DTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest shader{started, PluginIdNoise2D};
  Noise2DBlock& block = shader.block<Noise2DBlock>();
  RenderContext render = {};
  ChannelSample sample = {};

  Noise2DTest() {
    noise = {};
    started.host.render.unitNoiseAt = [](const Vector* p, float t) noexcept {
      return noise.base + noise.x * p->x + noise.y * p->y + noise.z * p->z + noise.time * t;
    };
    render.filteringOn = 1;
    render.filterScale = 1;
    sample.blurScale = 1;
  }

  void BeginRender(std::int32_t cpus = 1) {
    started.host.cpuCount = cpus;
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
    sample.render = &render;
  }
  FootprintBlock& Slot(int cpu) {
    return *reinterpret_cast<FootprintBlock*>(static_cast<char*>(shader.instance.slots) +
                                              cpu * SlotStrideNoise);
  }
  // Grey value; the default colours are black and white.
  float Grey() {
    const Vector colour = shader.Output(sample);
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
  float GreyOf(float n) {
    noise = {.base = n};
    return Grey();
  }
};

// --- the colour path without a render ---

TEST_F(Noise2DTest, TheDefaultBlockShowsTypeTwelveBetweenBlackAndWhite) {
  EXPECT_EQ(block.noiseType, 12);
  EXPECT_EQ(block.octaves, 5);
  EXPECT_FLOAT_EQ(GreyOf(0.32f), 0.32f);
}

// x = 0.25 * 12.8 * 2 * 0.5 = 3.2, y = 0.5 * 12.8 * 2 * 0.25 = 3.2;
// 0.1 x + 0.05 y = 0.48. The third coordinate of uvw is dropped.
TEST_F(Noise2DTest, ThePointIsUvwTimesTwelvePointEightTimesTheScales) {
  block.scale = 2;
  block.scaleU = 0.5f;
  block.scaleV = 0.25f;
  sample.uvw = {0.25f, 0.5f, 1000};
  noise = {.x = 0.1f, .y = 0.05f, .z = 1};
  EXPECT_NEAR(Grey(), 0.48f, 1e-6f);
}

TEST_F(Noise2DTest, MixesTheTwoColours) {
  block.colorLow = {0.1f, 0.2f, 2};
  block.colorHigh = {0.5f, 0, -2};
  noise.base = 0.25f;
  const Vector colour = shader.Output(sample);
  EXPECT_FLOAT_EQ(colour.x, 0.2f);   // 0.1 + 0.4 * 0.25
  EXPECT_FLOAT_EQ(colour.y, 0.15f);  // 0.2 - 0.2 * 0.25
  EXPECT_FLOAT_EQ(colour.z, 1.0f);   // 2 - 4 * 0.25
}

TEST_F(Noise2DTest, SpeedTimesSampleTimeIsTheNoiseTime) {
  block.speed = 2;
  sample.time = 3;
  noise.time = 0.1f;
  EXPECT_FLOAT_EQ(Grey(), 0.6f);
}

TEST_F(Noise2DTest, ATypeOffTheCatalogueIsMidGrey) {
  for (const std::int32_t type : {-1, 30, INT32_MIN, INT32_MAX}) {
    block.noiseType = type;
    EXPECT_EQ(Grey(), 0.5f);
  }
}

TEST_F(Noise2DTest, AScaleOfNothingReadsOnePointEverywhere) {
  block.scale = 0;
  noise = {.base = 0.3f, .x = 0.1f, .y = 0.1f};
  sample.uvw = {7, -3, 2};
  EXPECT_FLOAT_EQ(Grey(), 0.3f);
}

// --- what the catalogue is asked ---

float askedOctaves, askedBand;

TEST_F(Noise2DTest, TheOctavesReachTheCatalogue) {
  started.host.render.bandTurbulence = [](const Vector*, float, float octaves,
                                          float band) noexcept {
    askedOctaves = octaves;
    askedBand = band;
    return 0.25f;
  };
  block.noiseType = 22;
  EXPECT_FLOAT_EQ(Grey(), 0.25f);
  EXPECT_EQ(askedOctaves, 5) << "the default";
  EXPECT_EQ(askedBand, 0.5f);
  block.octaves = 2.5f;
  Grey();
  EXPECT_EQ(askedOctaves, 2.5f);
}

TEST_F(Noise2DTest, AbsoluteFoldsTheNoiseAtItsMiddle) {
  block.absolute = 1;
  EXPECT_FLOAT_EQ(GreyOf(0.25f), 0.5f);  // |2 * 0.25 - 1|
}

// w = 10 * 0.1 = 1, F = 0.5 / (1 * 2) = 0.25: 0.5 + 0.25 * (0.9 - 0.5) = 0.6.
TEST_F(Noise2DTest, DetailStrengthensTheFilter) {
  block.detail = 2;
  sample.delta = {0.1f, 0, 0};
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6f);
}

// --- the noise state that start leaves ---

// From the seed 665 the generator's state, ((state + 1) * 69069) mod 2^31, goes to 45999954 and
// 1042576503; a number is the state / 2^31. Building the tables draws nothing from it.
TEST_F(Noise2DTest, WhiteNoiseStartsWithTheSeedsFirstNumbers) {
  block.noiseType = 17;
  EXPECT_EQ(Grey(), static_cast<float>(45999954 * 0x1p-31));
  EXPECT_EQ(Grey(), static_cast<float>(1042576503 * 0x1p-31));
}

// Cell (0, 0, 0) at time 0: P[0] = 225, P[225] = 79, P[79] = 218, P[218] = 78. Entry 78 of the
// values is the 79th number from the seed 665, whose state is 1046613676: 2 * 1046613676 / 2^31 - 1
// = -0.02526505664, and the sign is dropped.
TEST_F(Noise2DTest, HashedBlocksReadTheSeededValues) {
  block.noiseType = 3;
  EXPECT_FLOAT_EQ(Grey(), 0.02526505664f);
}

// --- the filter width: the mean of type 12 is 0.5, reached with F = 0.5 / (width * detail) ---

// d = 2 * 10, w = |20 * 0.02| + |20 * -0.015| + |20 * 0.005| + 0.5 * 0.4 = 0.4 + 0.3 + 0.1 + 0.2 =
// 1; F = 0.5 / (1 * 1), 0.5 + 0.5 (0.9 - 0.5) = 0.7.
TEST_F(Noise2DTest, TheWidthComesFromTheDeltasMagnitudesAndTheBlur) {
  block.scale = 2;
  sample.delta = {0.02f, -0.015f, 0.005f};
  sample.blurScale = 0.5f;
  sample.blurOffset = 0.4f;
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
}

// w = |10 * -0.1| = 1; a signed sum would be no width at all and leave 0.9.
TEST_F(Noise2DTest, ADeltaBelowZeroWidensInEachDirection) {
  for (const Vector& delta : {Vector{-0.1f, 0, 0}, Vector{0, -0.1f, 0}, Vector{0, 0, -0.1f}}) {
    sample.delta = delta;
    EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
  }
}

TEST_F(Noise2DTest, TheAxisScalesDoNotEnterTheWidth) {
  block.scaleU = block.scaleV = 100;
  sample.delta = {0.1f, 0, 0};  // w = 1
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
}

// With a scale of 0 only the blur is left: w = 1 * 1.
TEST_F(Noise2DTest, AScaleOfNothingKeepsTheBlurInTheWidth) {
  block.scale = 0;
  sample.delta = {5, 5, 5};
  sample.blurOffset = 1;
  EXPECT_NEAR(GreyOf(0.9f), 0.7f, 1e-6f);
}

TEST_F(Noise2DTest, TheRenderScalesTheWidth) {
  BeginRender();
  sample.delta = {0.05f, 0, 0};  // w = 0.5
  render.filterScale = 4;        // 2: F = 0.25, 0.5 + 0.25 * 0.4 = 0.6
  EXPECT_NEAR(GreyOf(0.9f), 0.6f, 1e-6f);
}

TEST_F(Noise2DTest, ARenderWithoutFilteringHasNoWidth) {
  BeginRender();
  sample.delta = {100, 100, 100};
  render.filteringOn = 0;
  EXPECT_FLOAT_EQ(GreyOf(0.9f), 0.9f);
}

// --- cycles, clip, brightness, contrast ---

TEST_F(Noise2DTest, CyclesOfZeroOrLessLeaveTheValue) {
  block.cycles = 0;
  EXPECT_FLOAT_EQ(GreyOf(0.3f), 0.3f);
  block.cycles = -2;
  EXPECT_FLOAT_EQ(GreyOf(0.3f), 0.3f);
}

// c = 0.5 - cos(0.25 * 6.29185358) / 2 = 0.5 + sin(0.002167068) / 2 = 0.50108353.
TEST_F(Noise2DTest, CyclesOfOneAreTheFullCosineWithTheLongerTurn) {
  block.cycles = 1;
  EXPECT_NEAR(GreyOf(0.25f), 0.50108353f, 2e-7f);
}

// (0.50108353 - 0.25) * 0.5 + 0.25 = 0.37554177.
TEST_F(Noise2DTest, CyclesBelowOneBlendWithOneCosine) {
  block.cycles = 0.5f;
  EXPECT_EQ(GreyOf(0), 0) << "the cosine of 0 is 1, so nothing moves";
  EXPECT_NEAR(GreyOf(0.25f), 0.37554177f, 2e-7f);
}

// 0.5 - cos(0.125 * 2 * 6.29185358) / 2: two cycles at 0.125 are one at 0.25.
TEST_F(Noise2DTest, CyclesMultiplyInsideTheCosine) {
  block.cycles = 2;
  EXPECT_NEAR(GreyOf(0.125f), 0.50108353f, 2e-7f);
}

TEST_F(Noise2DTest, TheClipStretchesLowToHigh) {
  block.lowClip = 0.2f;
  block.highClip = 0.6f;
  EXPECT_FLOAT_EQ(GreyOf(0.3f), 0.25f);
  EXPECT_EQ(GreyOf(0.1f), 0);
  EXPECT_EQ(GreyOf(0.7f), 1);
}

TEST_F(Noise2DTest, EqualClipsAreAHardThreshold) {
  block.lowClip = block.highClip = 0.5f;
  EXPECT_EQ(GreyOf(0.5f), 1);
  EXPECT_EQ(GreyOf(0.49f), 0);
}

TEST_F(Noise2DTest, BrightnessIsAddedAndClamped) {
  block.brightness = 0.25f;
  EXPECT_FLOAT_EQ(GreyOf(0.5f), 0.75f);
  block.brightness = 1;
  EXPECT_EQ(GreyOf(0), 1);
  block.brightness = -1;
  EXPECT_EQ(GreyOf(1), 0);
}

TEST_F(Noise2DTest, BrightnessSaturatesBeforeTheContrast) {
  block.brightness = 1;
  block.contrast = -0.5f;
  EXPECT_FLOAT_EQ(GreyOf(0), 0.75f);  // 1 - (0.5 - 1) * -0.5
  // 0.5 + 1 is clamped to 1. Unclamped it would be 1.5 - (0.5 - 1.5) * -0.5 = 1.
  EXPECT_FLOAT_EQ(GreyOf(0.5f), 0.75f);
}

TEST_F(Noise2DTest, ContrastBelowZeroDrawsToTheMiddle) {
  block.contrast = -1;
  EXPECT_EQ(GreyOf(0), 0.5f);
  EXPECT_EQ(GreyOf(1), 0.5f);
  block.contrast = -0.5f;
  EXPECT_FLOAT_EQ(GreyOf(0.2f), 0.35f);  // 0.2 + 0.5 * 0.3
}

TEST_F(Noise2DTest, ContrastBelowMinusOneCrossesOverUnclamped) {
  block.contrast = -4;
  EXPECT_FLOAT_EQ(GreyOf(0), 2.0f);  // 0 + 4 * 0.5
}

TEST_F(Noise2DTest, ContrastAboveZeroSteepens) {
  block.contrast = 0.5f;  // 0.25..0.75 onto 0..1
  EXPECT_FLOAT_EQ(GreyOf(0.5f), 0.5f);
  EXPECT_FLOAT_EQ(GreyOf(0.35f), 0.2f);
  block.contrast = 1;
  EXPECT_EQ(GreyOf(0.5f), 1);
  EXPECT_EQ(GreyOf(0.49f), 0);
}

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

// --- without a block ---

TEST_F(Noise2DTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  const ShaderRecord& record = shader.record;
  ShaderInstance bare = {};
  FakeStream stream;
  FakeContainer container;
  EXPECT_EQ(record.Copy(&bare, &shader.instance), 0);
  EXPECT_EQ(record.Copy(&shader.instance, &bare), 0);
  EXPECT_EQ(record.Compare(&bare, &shader.instance), 0);
  EXPECT_EQ(record.Compare(&shader.instance, &bare), 0);
  EXPECT_EQ(record.Read(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Write(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Edit(&bare), 0);
  EXPECT_EQ(record.Message(&bare, MessageGetParameters, container.handle()), 1);
  EXPECT_TRUE(stream.values.empty());
  EXPECT_TRUE(container.entries.empty());
  record.FreeRender(&bare);
  record.Free(&bare);
  Vector result = {1, 1, 1};
  record.Output(&result, &bare, &sample);
  EXPECT_EQ(result.x, 0);
  EXPECT_EQ(result.y, 0);
  EXPECT_EQ(result.z, 0);
}

TEST_F(Noise2DTest, AllocWithoutMemoryAnswersZeroAndLeavesNoBlock) {
  started.host.failAllocation = 1;
  ShaderInstance bare = {};
  bare.data = &bare;
  EXPECT_EQ(shader.record.Alloc(&bare), 0);
  EXPECT_EQ(bare.data, nullptr);
}

}  // namespace
}  // namespace sorvanix::test
