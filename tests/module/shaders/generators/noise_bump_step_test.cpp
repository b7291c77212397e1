// The bump step of 2D Noise by noise type and octave count, as InitRender leaves it in slot 0.
#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>

#include "module/shaders/generators/noise_2d.h"
#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

// One row of the table: the step at three octave counts and beyond the last of them.
struct StepRow {
  double atNone, atFive, atTwelve, beyond;
};
constexpr StepRow Constant(double step) { return {step, step, step, step}; }

constexpr StepRow kRows[] = {
    /* 0 */ Constant(0.15),
    /* 1 */ {0.25, 0.05, 0.01, 0.01},
    /* 2 */ {0.2, 0.04, 0.015, 0.015},
    /* 3 */ Constant(0.02),
    /* 4 */ {0.1, 0.05, 0.01, 0.01},
    /* 5 */ {0.1, 0.05, 0.05, 0.05},
    /* 6 */ {0.11, 0.03, 0.01, 0.01},
    /* 7 */ {0.25, 0.05, 0.01, 0.01},
    /* 8 */ {0.18, 0.07, 0.04, 0.03},
    /* 9 */ {0.2, 0.025, 0.005, 0.005},
    /* 10 */ Constant(0.02),
    /* 11 */ {0.18, 0.04, 0.01, 0.01},
    /* 12 */ Constant(0.45),
    /* 13 */ {0.12, 0.025, 0.01, 0.01},
    /* 14 */ {0.08, 0.04, 0.01, 0.01},
    /* 15 */ Constant(0.03),
    /* 16 */ {0.07, 0.03, 0.0005, 0.0005},
    /* 17 */ Constant(0.02),
    /* 18 */ {0.05, 0.025, 0.0125, 0.012},
    /* 19 */ {0.08, 0.012, 0.004, 0.004},
    /* 20 */ {0.25, 0.02, 0.005, 0.005},
    /* 21 */ Constant(0.15),
    /* 22 */ {0.08, 0.03, 0.015, 0.015},
    /* 23 */ Constant(0.02),
    /* 24 */ {0.1, 0.05, 0.01, 0.01},
    /* 25 */ Constant(0.3),
    /* 26 */ Constant(0.1),
    /* 27 */ Constant(0.1),
    /* 28 */ Constant(0.1),
    /* 29 */ {0.08, 0.02, 0.005, 0.005},
};
static_assert(std::size(kRows) == 30);

// A few units in the last place of the largest floats of a row, whose differences the steps are.
double Tolerance(double expected) { return 1e-8 + 1e-7 * expected; }

struct NoiseBumpStepTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest shader{started, PluginIdNoise2D};
  Noise2DBlock& block = shader.block<Noise2DBlock>();

  float StepOf(std::int32_t noiseType, float octaves) {
    block.noiseType = noiseType;
    block.octaves = octaves;
    RenderContext render = {};
    const RenderInit init = {&render, nullptr};
    EXPECT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
    const auto* head = static_cast<const FootprintBlock*>(shader.instance.slots);
    const float step = *reinterpret_cast<const float*>(head + 1);
    shader.record.FreeRender(&shader.instance);
    return step;
  }
  void ExpectStep(std::int32_t noiseType, float octaves, double expected) {
    EXPECT_NEAR(StepOf(noiseType, octaves), expected, Tolerance(expected))
        << "type " << noiseType << ", " << octaves << " octaves";
  }
};

TEST_F(NoiseBumpStepTest, EachTypeGoesThroughItsPoints) {
  for (std::int32_t type = 0; type < 30; ++type) {
    ExpectStep(type, 0, kRows[type].atNone);
    ExpectStep(type, 5, kRows[type].atFive);
    ExpectStep(type, 12, kRows[type].atTwelve);
    ExpectStep(type, 12.5f, kRows[type].beyond);
  }
}

// 2.5 lies half way from 0 to 5, and 8.5 half way from 5 to 12.
TEST_F(NoiseBumpStepTest, BetweenItsPointsEachTypeIsStraight) {
  for (std::int32_t type = 0; type < 30; ++type) {
    const StepRow& row = kRows[type];
    ExpectStep(type, 2.5f, (row.atNone + row.atFive) / 2);
    ExpectStep(type, 8.5f, (row.atFive + row.atTwelve) / 2);
  }
}

TEST_F(NoiseBumpStepTest, ANegativeCountIsNone) { ExpectStep(1, -3, 0.25); }

// The two types whose curves do not join up at 12.
TEST_F(NoiseBumpStepTest, TypesEightAndEighteenJumpAtTwelve) {
  constexpr float kJustAboveTwelve = 12.000001f;
  ExpectStep(8, 12, 0.04);
  ExpectStep(8, kJustAboveTwelve, 0.03);
  ExpectStep(18, 12, 0.0125);
  ExpectStep(18, kJustAboveTwelve, 0.012);
}

TEST_F(NoiseBumpStepTest, ATypeOffTheTableKeepsThreeTenths) {
  for (const std::int32_t type : {-1, 30, INT32_MIN, INT32_MAX}) {
    for (const float octaves : {0.0f, 5.0f, 12.5f}) ExpectStep(type, octaves, 0.3);
  }
}

TEST_F(NoiseBumpStepTest, BumpDetailMultiplies) {
  block.bumpDetail = 2;
  ExpectStep(12, 5, 0.9);   // 0.45 * 2
  ExpectStep(1, 12, 0.02);  // 0.01 * 2
  ExpectStep(30, 5, 0.6);   // 0.3 * 2
  block.bumpDetail = -1;
  EXPECT_FLOAT_EQ(StepOf(12, 5), -0.45f);
  block.bumpDetail = 0;
  EXPECT_EQ(StepOf(12, 5), 0);
}

}  // namespace
}  // namespace sorvanix::test
