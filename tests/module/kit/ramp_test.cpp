#include "module/kit/ramp.h"

#include <limits>
#include <vector>

#include "module/kit/vector.h"
#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsNear;
using test::IsVector;
using test::Random;

constexpr Vector kBlack{0, 0, 0};
constexpr Vector kWhite{1, 1, 1};
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

constexpr std::int32_t kInterpolations[] = {RampCubic, RampBezier, RampSmooth, RampLinear,
                                            RampStep};

constexpr Vector Grey(float v) { return {v, v, v}; }

Ramp RampOf(std::initializer_list<RampKnot> knots) {
  Ramp ramp;
  for (const RampKnot& knot : knots) ramp.knots[ramp.count++] = knot;
  return ramp;
}

Vector Sample(const Ramp& ramp, float t, std::int32_t interpolation) {
  return SampleRamp(t, ramp.knots, ramp.count, interpolation);
}

// The value at t of a ramp from black at 0 to white at 1 whose span has the bias.
float BlackToWhite(float t, float bias, std::int32_t interpolation) {
  const Vector c = Sample(RampOf({{kBlack, 0, bias}, {kWhite, 1}}), t, interpolation);
  EXPECT_THAT(c, IsVector(Grey(c.x)));
  return c.x;
}

Ramp RandomRamp(Random& random, std::int32_t count) {
  Ramp ramp;
  ramp.count = count;
  float position = 0.25f * random.Unit();
  for (std::int32_t i = 0; i < count; ++i) {
    ramp.knots[i] = {random.Colour(), position, random.Between(0.05f, 0.95f)};
    position += 0.01f + random.Unit() / static_cast<float>(count);
  }
  return ramp;
}

TEST(Ramp, OfANewBlockHasThreeKnotsTheFirstOnTop) {
  const Ramp ramp = DefaultRamp({kBlack, 0}, {Grey(0.5f), 0.5f}, {kWhite, 1});
  EXPECT_EQ(ramp.count, 3);
  EXPECT_EQ(ramp.interpolation, RampCubic);
  EXPECT_EQ(ramp.selected, 0);
  EXPECT_EQ(ramp.order[0], 2);
  EXPECT_EQ(ramp.order[1], 1);
  EXPECT_EQ(ramp.order[2], 0);
  EXPECT_THAT(ramp.knots[1].colour, IsVector(Grey(0.5f)));
  for (std::int32_t i = 3; i < RampMaxKnots; ++i) {
    EXPECT_THAT(ramp.knots[i].colour, IsVector(kBlack));
    EXPECT_EQ(ramp.knots[i].position, 0);
    EXPECT_EQ(ramp.knots[i].bias, 0.5f);
  }
}

TEST(LiveKnots, LimitsAStoredCount) {
  EXPECT_EQ(LiveKnots(std::numeric_limits<std::int32_t>::min()), 0);
  EXPECT_EQ(LiveKnots(-1), 0);
  EXPECT_EQ(LiveKnots(0), 0);
  EXPECT_EQ(LiveKnots(50), 50);
  EXPECT_EQ(LiveKnots(51), 50);
}

TEST(SampleRamp, HoldsTheEndColoursWhateverTheInterpolation) {
  const Ramp ramp = RampOf({{{2, -1, 0.5f}, 0.25f}, {kBlack, 0.5f}, {{3, 0, -1}, 0.75f}});
  for (const std::int32_t interpolation : {0, 1, 2, 3, 4, 5, -1}) {
    for (const float t : {-kInfinity, -5.0f, 0.0f, 0.2f}) {
      EXPECT_THAT(Sample(ramp, t, interpolation), IsVector(2, -1, 0.5));
    }
    for (const float t : {0.75f, 1.0f, 5.0f, kInfinity}) {
      EXPECT_THAT(Sample(ramp, t, interpolation), IsVector(3, 0, -1));
    }
  }
}

TEST(SampleRamp, OfOneKnotIsItsColourEverywhere) {
  const Ramp ramp = RampOf({{Grey(0.25f), 0.5f}});
  for (const float t : {-1.0f, 0.5f, 2.0f, kNan}) {
    EXPECT_THAT(Sample(ramp, t, RampCubic), IsVector(Grey(0.25f)));
  }
}

TEST(SampleRamp, WithoutKnotsIsBlack) {
  const RampKnot knots[RampMaxKnots] = {{kWhite, 0}};
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_THAT(SampleRamp(0.5f, knots, count, RampLinear), IsVector(kBlack));
  }
}

TEST(SampleRamp, ReadsNoMoreThanFiftyKnots) {
  std::vector<RampKnot> knots(RampMaxKnots, RampKnot{kBlack, 0.5f});
  knots[49] = {kWhite, 1};
  EXPECT_THAT(SampleRamp(2, knots.data(), 1000000, RampCubic), IsVector(kWhite));
  EXPECT_THAT(SampleRamp(0.75f, knots.data(), 51, RampLinear), IsVector(Grey(0.5f)));
}

TEST(SampleRamp, GivesEveryKnotItsColour) {
  Random random(41);
  for (int i = 0; i < 200; ++i) {
    const Ramp ramp = RandomRamp(random, 1 + random.Below(RampMaxKnots));
    for (const std::int32_t interpolation : kInterpolations) {
      for (std::int32_t k = 0; k < ramp.count; ++k) {
        ASSERT_THAT(Sample(ramp, ramp.knots[k].position, interpolation),
                    IsVector(ramp.knots[k].colour));
      }
    }
  }
}

TEST(SampleRamp, StandsOnAnInnerKnotAtTheStartOfTheSpanToItsRight) {
  // A bias of 0 shows which span it is: the right one starts half way up.
  const Ramp ramp = RampOf({{kBlack, 0}, {kBlack, 0.5f, 0}, {kWhite, 1}});
  EXPECT_THAT(Sample(ramp, 0.5f, RampLinear), IsVector(Grey(0.5f)));
}

TEST(SampleRamp, TakesTheRightmostOfKnotsThatShareAPosition) {
  const Ramp inner = RampOf({{kBlack, 0}, {Grey(0.25f), 0.5f}, {Grey(0.75f), 0.5f}, {kWhite, 1}});
  EXPECT_THAT(Sample(inner, 0.5f, RampStep), IsVector(Grey(0.75f)));
  // From the left the ramp still runs to the first of them: 0.499 / 0.5 * 0.25.
  EXPECT_THAT(Sample(inner, 0.499f, RampLinear), IsNear(Grey(0.2495f), 1e-6));

  const Ramp last = RampOf({{kBlack, 0}, {Grey(0.25f), 0.5f}, {Grey(0.75f), 0.5f}});
  EXPECT_THAT(Sample(last, 0.5f, RampLinear), IsVector(Grey(0.75f)));
}

TEST(SampleRamp, OfAnUnknownInterpolationIsBlackBetweenKnotsOnly) {
  const Ramp ramp = RampOf({{kWhite, 0.25f}, {kWhite, 0.75f}});
  for (const std::int32_t interpolation : {5, -1, 1000}) {
    EXPECT_THAT(Sample(ramp, 0.2f, interpolation), IsVector(kWhite));
    EXPECT_THAT(Sample(ramp, 0.25f, interpolation), IsVector(kBlack));
    EXPECT_THAT(Sample(ramp, 0.5f, interpolation), IsVector(kBlack));
    EXPECT_THAT(Sample(ramp, 0.75f, interpolation), IsVector(kWhite));
  }
}

TEST(SampleRamp, OfNanIsTheLastKnot) {
  EXPECT_THAT(Sample(RampOf({{kBlack, 0}, {kWhite, 1}}), kNan, RampCubic), IsVector(kWhite));
}

TEST(SampleRamp, SurvivesKnotsThatAreNoNumbers) {
  for (const std::int32_t interpolation : {RampCubic, RampSmooth, RampLinear}) {
    for (const float odd : {kNan, kInfinity, -kInfinity}) {
      const Ramp position = RampOf({{kBlack, odd}, {kWhite, 0.5f}, {kWhite, odd}});
      const Ramp bias = RampOf({{kBlack, 0, odd}, {kWhite, 1}});
      for (const Ramp& ramp : {position, bias}) {
        const Vector c = Sample(ramp, 0.25f, interpolation);
        EXPECT_TRUE(c.x >= 0 && c.x <= 1) << interpolation << ' ' << odd;
      }
    }
  }
}

TEST(LinearSpan, IsLinearWithTheDefaultBias) {
  for (float t = 0; t < 1; t += 1.0f / 64) EXPECT_EQ(BlackToWhite(t, 0.5f, RampLinear), t);
}

TEST(LinearSpan, ReachesItsMiddleAtTheBias) {
  // u / b / 2 below the bias, ((u - b) / (1 - b) + 1) / 2 above it.
  EXPECT_EQ(BlackToWhite(0.125f, 0.25f, RampLinear), 0.25f);
  EXPECT_EQ(BlackToWhite(0.25f, 0.25f, RampLinear), 0.5f);
  EXPECT_EQ(BlackToWhite(0.625f, 0.25f, RampLinear), 0.75f);
}

TEST(LinearSpan, WithABiasOf0StartsHalfWay) {
  EXPECT_EQ(BlackToWhite(0, 0, RampLinear), 0.5f);
  EXPECT_EQ(BlackToWhite(0.5f, 0, RampLinear), 0.75f);
}

TEST(LinearSpan, WithABiasOf1ClimbsHalfWayAndJumps) {
  EXPECT_EQ(BlackToWhite(0.5f, 1, RampLinear), 0.25f);
  EXPECT_NEAR(BlackToWhite(std::nextafter(1.0f, 0.0f), 1, RampLinear), 0.5, 1e-7);
  EXPECT_EQ(BlackToWhite(1, 1, RampLinear), 1);
}

TEST(LinearSpan, DoesNotLimitColours) {
  const Ramp ramp = RampOf({{{-1, 2, 0}, 0}, {{-3, 4, 8}, 1}});
  EXPECT_THAT(Sample(ramp, 0.25f, RampLinear), IsVector(-1.5, 2.5, 2));
}

TEST(LinearSpan, MeasuresItsParameterFromKnotToKnot) {
  const Ramp ramp = RampOf({{kBlack, 0}, {kBlack, 0.5f}, {kWhite, 0.75f}, {kBlack, 1}});
  EXPECT_THAT(Sample(ramp, 0.5625f, RampLinear), IsVector(Grey(0.25f)));  // 0.0625 / 0.25
}

TEST(SmoothSpan, IsTheSmoothCurveOfTheLinearOne) {
  EXPECT_EQ(BlackToWhite(0.25f, 0.5f, RampSmooth), 0.15625f);  // 1/16 * (3 - 1/2)
  EXPECT_EQ(BlackToWhite(0.5f, 0.5f, RampSmooth), 0.5f);
  EXPECT_EQ(BlackToWhite(0.125f, 0.25f, RampSmooth), 0.15625f);  // bent to 1/4 by the bias
  EXPECT_EQ(BlackToWhite(0.5f, 0, RampSmooth), 0.84375f);        // bent to 3/4: 9/16 * 1.5
}

TEST(SmoothSpan, DoesNotLimitColours) {
  const Ramp ramp = RampOf({{{-1, 2, 0}, 0}, {{-3, 4, 8}, 1}});
  EXPECT_THAT(Sample(ramp, 0.5f, RampSmooth), IsVector(-2, 3, 4));
}

TEST(CubicSpan, OfTwoKnotsDoublesItsEnds) {
  // P0 = P1 = 0, P2 = P3 = 1: w (1/2 + w (3/2 - w)).
  EXPECT_EQ(BlackToWhite(0.25f, 0.5f, RampCubic), 0.203125f);  // 1/4 (1/2 + 1/4 * 5/4)
  EXPECT_EQ(BlackToWhite(0.5f, 0.5f, RampCubic), 0.5f);
  EXPECT_EQ(BlackToWhite(0.125f, 0.25f, RampCubic), 0.203125f);  // bent to 1/4 by the bias
}

TEST(CubicSpan, LeansOnTheNeighbouringKnots) {
  // P = 0, 1/4, 3/4, 1/2 at w = 1/2: slope 3/8, square 0 - 5/8 + 3/2 - 1/4 = 5/8, cube 0 + 3/8 -
  // 9/8 + 1/4 = -1/2; 1/4 + 1/2 (3/8 + 1/2 (5/8 - 1/4)) = 17/32.
  const Ramp ramp =
      RampOf({{Grey(0), 0}, {Grey(0.25f), 0.25f}, {Grey(0.75f), 0.5f}, {Grey(0.5f), 0.75f}});
  EXPECT_THAT(Sample(ramp, 0.375f, RampCubic), IsVector(Grey(17.0f / 32)));
}

TEST(CubicSpan, IgnoresKnotsThatAreNotLive) {
  Ramp ramp = RampOf({{Grey(0), 0}, {Grey(1), 1}, {Grey(-9), 1}});
  ramp.count = 2;
  EXPECT_THAT(Sample(ramp, 0.25f, RampCubic), IsVector(Grey(0.203125f)));
}

TEST(CubicSpan, LimitsItsOvershoot) {
  // P = 1, 0, 0, 1 would dip to -1/8 in the middle, P = 0, 1, 1, 0 rise to 9/8.
  const Ramp ramp = RampOf({{{1, 0, 0}, 0}, {{0, 1, 0}, 0.25f}, {{0, 1, 0}, 0.5f}, {{1, 0, 0}, 1}});
  EXPECT_THAT(Sample(ramp, 0.375f, RampCubic), IsVector(0, 1, 0));
}

TEST(CubicAndBezierSpans, LimitColoursAndTurnNanToBlack) {
  const Ramp ramp = RampOf({{{2, -1, kNan}, 0}, {{2, -1, kNan}, 1}});
  EXPECT_THAT(Sample(ramp, 0.5f, RampCubic), IsVector(1, 0, 0));
  EXPECT_THAT(Sample(ramp, 0.5f, RampBezier), IsVector(1, 0, 0));
}

TEST(BezierSpan, PutsItsHandlesByTheBias) {
  // s = u = 1/2: 3/8 C1 + 3/8 C2 + 1/8.
  EXPECT_EQ(BlackToWhite(0.5f, 0.5f, RampBezier), 0.5f);   // C1 = 3/8, C2 = 5/8
  EXPECT_EQ(BlackToWhite(0.5f, 1, RampBezier), 0.21875f);  // C1 = 0, C2 = 1/4
  EXPECT_EQ(BlackToWhite(0.5f, 0, RampBezier), 0.78125f);  // C1 = 3/4, C2 = 1
  // u = 1/4: 27/64 * 3/8 + 9/64 * 5/8 + 1/64 = (81 + 45 + 8) / 512.
  EXPECT_EQ(BlackToWhite(0.25f, 0.5f, RampBezier), 134.0f / 512);
}

TEST(StepSpan, KeepsTheLeftColour) {
  const Ramp ramp = RampOf({{{3, -1, 0.5f}, 0, 0}, {kWhite, 1}});
  EXPECT_THAT(Sample(ramp, 0, RampStep), IsVector(3, -1, 0.5));
  EXPECT_THAT(Sample(ramp, std::nextafter(1.0f, 0.0f), RampStep), IsVector(3, -1, 0.5));
}

TEST(Spans, RiseFromBlackToWhite) {
  for (const std::int32_t interpolation : kInterpolations) {
    for (const float bias : {0.0f, 0.1f, 0.5f, 0.9f, 1.0f}) {
      float before = 0;
      for (float t = 0; t <= 1; t += 1.0f / 256) {
        const float value = BlackToWhite(t, bias, interpolation);
        ASSERT_GE(value, before) << interpolation << ' ' << bias << ' ' << t;
        before = value;
      }
      ASSERT_EQ(before, 1);
    }
  }
}

TEST(Spans, ArriveAtTheNextKnotWithoutAJumpUnlessTheyStep) {
  Random random(42);
  for (int i = 0; i < 200; ++i) {
    const Ramp ramp = RandomRamp(random, 2 + random.Below(20));
    for (const std::int32_t interpolation : {RampCubic, RampBezier, RampSmooth, RampLinear}) {
      for (std::int32_t k = 1; k < ramp.count; ++k) {
        const Vector end = InterpolateSpan(1 - 1e-7, k - 1, ramp.knots, ramp.count, interpolation);
        // Slopes are below 4 by w, w's is at most 10 for a bias of 0.95: 4e-6.
        ASSERT_THAT(end, IsNear(ramp.knots[k].colour, 4e-6));
      }
    }
  }
}

TEST(Spans, DependOnTheirOwnKnotsAloneUnlessCubic) {
  Random random(43);
  Ramp ramp = RandomRamp(random, 4);
  const Ramp alone = RampOf({ramp.knots[1], ramp.knots[2]});
  for (const std::int32_t interpolation : {RampBezier, RampSmooth, RampLinear, RampStep}) {
    for (double u = 0; u <= 1; u += 0.125) {
      EXPECT_THAT(InterpolateSpan(u, 1, ramp.knots, ramp.count, interpolation),
                  IsVector(InterpolateSpan(u, 0, alone.knots, alone.count, interpolation)));
    }
  }
}

TEST(InterpolateSpan, IsBlackWhereThereIsNoSpan) {
  const Ramp ramp = RampOf({{kWhite, 0}, {kWhite, 1}});
  for (const std::int32_t index : {-1, 1, 2, 49, 1000, std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_THAT(InterpolateSpan(0.5, index, ramp.knots, ramp.count, RampLinear), IsVector(kBlack));
    EXPECT_THAT(InterpolateSpan(0.5, index, ramp.knots, 0, RampLinear), IsVector(kBlack));
  }
}

}  // namespace
}  // namespace sorvanix
