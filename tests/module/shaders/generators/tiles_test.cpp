// Tiles in a render: nested in a filter, in the bump channel, its slots, and on several threads.
//
// With the default pattern, a grid of cells of 1/10 with slopes of half a cell, the height at
// (u, 0.05) is 20 u for u up to 0.05.
#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "tests/support/tiles_fixture.h"

namespace sorvanix::test {
namespace {

// --- slots: nested shaders and their taps ---

struct TilesRenderTest : TilesTest {
  TilesRenderTest() { ShowHeights(0); }
  static constexpr float kStep = 0.005f;  // 0.1 of height
};

TEST_F(TilesRenderTest, ANestedShaderReadsItsPointFromItsOwnSlot) {
  block.nested = 1;
  BeginRender(3);
  FakeHost::cpuIndex = 2;
  Slot(2).uvwPoint = {0.125f, 0.05f, 9};
  Slot(2).uvwOffset = {-0.1f, 0, 9};
  EXPECT_NEAR(HeightAt(50, 50), 0.5, 1e-5);  // 20 x 0.025
}

TEST_F(TilesRenderTest, ItIsScaledLikeAnyOther) {
  block.nested = 1;
  block.globalScale = 2;
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.1f, 0};
  EXPECT_NEAR(HeightAt(50, 50), 0.5, 1e-5);
}

TEST_F(TilesRenderTest, AStandAloneShaderReadsTheSample) {
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.05f, 0};
  Slot(0).tap = TapPlusU;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5);
}

// Unlike other shaders, it has no outer channel in which it acts as if it stood alone.
TEST_F(TilesRenderTest, TheOuterChannelDoesNotCount) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {0.025f, 0.05f, 0};
  Slot(0).outerChannel = ChannelStandalone;
  EXPECT_NEAR(HeightAt(50, 50), 0.5, 1e-5);
}

// Height 0.5 at (0.025, 0.05); stripes along v show the taps in y.
TEST_F(TilesRenderTest, TapsMoveThePointByTheStep) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {0.025f, 0.05f, 0};
  const double alongX[] = {0.5, 0.6, 0.4, 0.5, 0.5, 0.5, 0.5};
  const std::int32_t taps[] = {0, TapPlusU, TapMinusU, TapPlusV, TapMinusV, 5, -1};
  for (int i = 0; i < 7; ++i) {
    Slot(0).tap = taps[i];
    EXPECT_NEAR(HeightAt(0, 0), alongX[i], 1e-5) << taps[i];
  }
  Slot(0).uvwPoint = {0.05f, 0.025f, 0};
  const double alongY[] = {0.5, 0.5, 0.5, 0.6, 0.4, 0.5, 0.5};
  for (int i = 0; i < 7; ++i) {
    Slot(0).tap = taps[i];
    EXPECT_NEAR(HeightAt(0, 0), alongY[i], 1e-5) << taps[i];
  }
}

// The step is in the plane of the tiles: behind the scales.
TEST_F(TilesRenderTest, TheStepIsNotScaledButByItsFactor) {
  block.nested = 1;
  block.globalScale = 2;
  block.bumpStepScale = 2;
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.1f, 0};
  Slot(0).tap = TapPlusU;
  EXPECT_NEAR(HeightAt(0, 0), 0.7, 1e-5);
}

TEST_F(TilesRenderTest, WithoutSlotsOrARenderTheSampleIsRead) {
  block.nested = 1;
  sample.render = &render;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no slots";
  BeginRender();
  Slot(0).uvwPoint = {0.05f, 0.05f, 0};
  Slot(0).tap = TapPlusU;
  sample.render = nullptr;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no render";
}

// --- the bump path ---

struct TilesBumpTest : TilesRenderTest {
  TilesBumpTest() {
    instance.channel = ChannelBump;
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {2, 0, 0};
    render.tangentV = {0, 0, 1};
  }
};

// At (0.025, 0.06) the slope along x is 20, that of the side, 1 - |...|, does not reach: x = 0.25,
// y = 0.6, heights 0.5 and 0.8. Behind minus ahead: (0.4 - 0.6) x 7.4 = -1.48, times tangentU 2.
// m = (-2.96, 1, 0), |m| = sqrt(8.7616 + 1) = 3.12435593.
TEST_F(TilesBumpTest, BendsTheNormalBehindMinusAheadInX) {
  BeginRender();
  ExpectExactly(ColourAt(0.025, 0.06), {0, 0, 0});
  ExpectVector(render.bumpNormal, {-0.94739526f, 0.32006597f, 0}, 1e-4);
}

// At (0.06, 0.025): ahead minus behind in y: (0.6 - 0.4) x 7.4 = 1.48 along tangentV.
// m = (0, 1, 1.48), |m| = sqrt(3.1904) = 1.78616908.
TEST_F(TilesBumpTest, BendsTheNormalAheadMinusBehindInY) {
  BeginRender();
  ColourAt(0.06, 0.025);
  ExpectVector(render.bumpNormal, {0, 0.55985741f, 0.82858897f}, 1e-4);
}

// The colour's mean counts: of (1, 0.5, 0) it is 0.5, which halves the slope.
// m = (-1.48, 1, 0), as above.
TEST_F(TilesBumpTest, TheMeanOfTheColourIsTheHeight) {
  block.color1 = {1, 0.5f, 0};
  BeginRender();
  ColourAt(0.025, 0.06);
  ExpectVector(render.bumpNormal, {-0.82858897f, 0.55985741f, 0}, 1e-4);
}

// The four neighbours by the shader's own colour channel, at other points of every pattern: the
// same normal to the rounding of the coordinates.
TEST_F(TilesBumpTest, AgreesWithFiniteDifferencesOfTheShadersOwnColour) {
  constexpr double kSlope = 7.4;
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    for (const auto& [u, v] : {std::pair{0.213, 0.337}, {0.611, 0.872}, {0.155, 0.046}}) {
      ShowHeights(pattern);
      BeginRender();
      instance.channel = ChannelColour;
      const double du = (HeightAt(u - kStep, v) - HeightAt(u + kStep, v)) * kSlope;
      const double dv = (HeightAt(u, v + kStep) - HeightAt(u, v - kStep)) * kSlope;
      instance.channel = ChannelBump;
      render.bumpNormal = {0, 1, 0};
      ColourAt(u, v);
      const double length = std::sqrt(4 * du * du + 1 + dv * dv);
      ExpectVector(render.bumpNormal,
                   {static_cast<float>(2 * du / length), static_cast<float>(1 / length),
                    static_cast<float>(dv / length)},
                   2e-4);
      record.FreeRender(&instance);
    }
  }
}

// Exchanged axes are not exchanged back: x, which is v here, bends along tangentU.
TEST_F(TilesBumpTest, XBendsAlongUInBothOrientations) {
  block.orientation = 1;
  BeginRender();
  ColourAt(0.06, 0.025);
  ExpectVector(render.bumpNormal, {-0.94739526f, 0.32006597f, 0}, 1e-4);
}

TEST_F(TilesBumpTest, TheStepScaleWidensTheStep) {
  block.bumpStepScale = 2;  // (0.3 - 0.7) x 7.4 x 2 = -5.92; |m| = sqrt(36.0464) = 6.00386542
  BeginRender();
  ColourAt(0.025, 0.06);
  ExpectVector(render.bumpNormal, {-0.98603142f, 0.16655936f, 0}, 1e-4);
}

TEST_F(TilesBumpTest, ATapOfAnEnclosingFilterDoesNotMoveTheFourNeighbours) {
  block.nested = 1;
  BeginRender();
  Slot(0).uvwPoint = {0.025f, 0.06f, 0};
  Slot(0).tap = TapPlusV;
  ColourAt(7, 7);
  ExpectVector(render.bumpNormal, {-0.94739526f, 0.32006597f, 0}, 1e-4);
}

TEST_F(TilesBumpTest, ANormalOfNoLengthStaysZero) {
  BeginRender();
  render.bumpNormal = {};
  block.color1 = {0, 0, 0};  // as the grout: level everywhere
  ColourAt(0.025, 0.06);
  ExpectExactly(render.bumpNormal, {0, 0, 0});
}

TEST_F(TilesBumpTest, WithoutSlotsOrARenderTheColourIsShown) {
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no render";
  sample.render = &render;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5) << "no slots";
  ExpectExactly(render.bumpNormal, {0, 1, 0});
}

// --- InitRender, FreeRender ---

TEST_F(TilesRenderTest, InitRenderMakesOneSlotPerCpuWithTheStepInEach) {
  block.bumpStepScale = 3;
  ASSERT_EQ(InitRender(4), 0);
  EXPECT_EQ(host.calls.back(), "alloc(1056)");  // 4 x 264
  for (int cpu = 0; cpu < 4; ++cpu) {
    const FootprintBlock clear = {};
    EXPECT_EQ(std::memcmp(&Slot(cpu), &clear, sizeof clear), 0);
    const float* tail = reinterpret_cast<const float*>(&Slot(cpu) + 1);
    EXPECT_FLOAT_EQ(tail[0], 0.015f);
    EXPECT_EQ(tail[1], 1.0f);
  }
}

TEST_F(TilesRenderTest, InitRenderDoesNothingWithoutARender) {
  const RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
}

TEST_F(TilesRenderTest, AFailedSlotAllocationShowsAMessageAndTheRenderGoesOn) {
  host.failAllocation = 1;
  const int blocks = host.liveBlocks();
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
  EXPECT_EQ(host.calls.back(), "messageDialog(\"Couldn't Allocate Tiles Globals\", 48)");
  sample.render = &render;
  EXPECT_NEAR(HeightAt(0.025, 0.05), 0.5, 1e-5);
}

TEST_F(TilesRenderTest, FreeRenderTwiceIsHarmless) {
  const int blocks = host.liveBlocks();
  BeginRender();
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  record.FreeRender(&instance);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

// --- what Output costs, and threads ---

TEST_F(TilesRenderTest, OutputAsksTheHostForNothingButTheCpuOnce) {
  static int asked;
  asked = 0;
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++asked;
    return std::int32_t{0};
  };
  block.nested = 1;
  BeginRender();
  const std::size_t calls = host.calls.size();
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
    for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
      instance.channel = channel;
      asked = 0;
      ColourAt(0.3, 0.4);
      EXPECT_LE(asked, 1);
    }
  }
  EXPECT_EQ(host.calls.size(), calls);
}

TEST_F(TilesRenderTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr int kSide = 64;
  block.randomColor = 1;
  BeginRender(8);
  const auto shade = [&](int begin, int end, std::vector<Vector>& picture) {
    for (int i = begin; i < end; ++i) {
      ChannelSample own = sample;
      own.uvw = {float(i % kSide) / kSide, float(i / kSide % kSide) / kSide, 0};
      own.delta = {0.5f / kSide, 0.5f / kSide, 0};
      record.Output(&picture[std::size_t(i)], &instance, &own);
    }
  };
  for (std::int32_t pattern = 0; pattern < kTilePatternCount; ++pattern) {
    block.pattern = pattern;
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
    EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0) << pattern;
  }
}

}  // namespace
}  // namespace sorvanix::test
