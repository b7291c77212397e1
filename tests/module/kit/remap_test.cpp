#include "module/kit/remap.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

namespace sorvanix {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Calls `check` with floats of every sign, exponent and kind: one in 4099 of all bit patterns.
template <typename Check>
void ForFloatsOfEveryKind(Check check) {
  for (std::uint64_t bits = 0; bits < 0x1'0000'0000u; bits += 4099) {
    check(double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))});
  }
}

TEST(Limit, HoldsBothEnds) {
  EXPECT_EQ(Limit(-2, 5, -3), -2);
  EXPECT_EQ(Limit(-2, 5, 6), 5);
  EXPECT_EQ(Limit(-2, 5, 1.5), 1.5);
}

TEST(Limit, TestsTheLowerEndFirst) { EXPECT_EQ(Limit(5, -2, 1), 5); }

TEST(Clamp01, IsTheIdentityInsideAndTheNearestEndOutside) {
  ForFloatsOfEveryKind([](double v) {
    const double clamped = Clamp01(v);
    if (v >= 0 && v <= 1) {
      ASSERT_EQ(clamped, v);
    } else if (v == v) {
      ASSERT_EQ(clamped, v < 0 ? 0 : 1);
    } else {
      ASSERT_TRUE(std::isnan(clamped));
    }
  });
}

TEST(Clamp01NanToZero, DiffersFromClamp01InNanAlone) {
  ForFloatsOfEveryKind(
      [](double v) { ASSERT_EQ(Clamp01NanToZero(v), std::isnan(v) ? 0 : Clamp01(v)) << v; });
}

TEST(LinearStep, RisesFromLowToHigh) {
  EXPECT_EQ(LinearStep(2, 6, 1), 0);
  EXPECT_EQ(LinearStep(2, 6, 2), 0);
  EXPECT_EQ(LinearStep(2, 6, 3), 0.25f);
  EXPECT_EQ(LinearStep(2, 6, 6), 1);
  EXPECT_EQ(LinearStep(2, 6, 7), 1);
}

TEST(LinearStep, FallsWhenTheLimitsAreSwapped) {
  EXPECT_EQ(LinearStep(6, 2, 7), 0);
  EXPECT_EQ(LinearStep(6, 2, 3), 0.75f);
  EXPECT_EQ(LinearStep(6, 2, 1), 1);
}

TEST(LinearStep, WithEqualLimitsIsAHardStep) {
  EXPECT_EQ(LinearStep(0.3, 0.3, 0.3), 1);
  EXPECT_EQ(LinearStep(0.3, 0.3, 0.29), 0);
  EXPECT_EQ(LinearStep(0.3, 0.3, kNan), 0);
}

TEST(LinearStep, StaysIn0To1AndNeverFalls) {
  for (double low = -1; low <= 2; low += 0.125) {
    for (double high = low; high <= 2; high += 0.125) {
      float before = 0;
      for (double x = -2; x <= 3; x += 0.0625) {
        const float step = LinearStep(low, high, x);
        ASSERT_TRUE(step >= before && step <= 1) << low << ' ' << high << ' ' << x;
        ASSERT_EQ(step == 1, x >= high) << low << ' ' << high << ' ' << x;
        before = step;
      }
    }
  }
}

TEST(LinearStep, AndItsMirrorSumTo1) {
  for (double x = -1; x <= 2; x += 0.01) {
    // Each is rounded to a float below 1.
    EXPECT_NEAR(LinearStep(0.1, 0.7, x) + LinearStep(0.7, 0.1, x), 1, 0x1p-24);
  }
}

TEST(LinearStep, TurnsNanIntoZero) {
  EXPECT_EQ(LinearStep(0, 1, kNan), 0);
  EXPECT_EQ(LinearStep(kNan, 1, 0.5), 0);
  EXPECT_EQ(LinearStep(0, kNan, 0.5), 0);
  EXPECT_EQ(LinearStep(-kInfinity, kInfinity, kInfinity), 0);  // infinity by infinity
}

TEST(LinearStep, IsNumericallyTotal) {
  ForFloatsOfEveryKind([](double v) {
    for (const float step : {LinearStep(0, 1, v), LinearStep(v, 1, 0.5), LinearStep(0, v, 0.5)}) {
      ASSERT_TRUE(step >= 0 && step <= 1) << v;
    }
  });
}

TEST(SmoothCurve, IsLevelAndExactAtTheEnds) {
  EXPECT_EQ(SmoothCurve(0), 0);
  EXPECT_EQ(SmoothCurve(0.25), 0.15625);  // 1/16 * 2.5
  EXPECT_EQ(SmoothCurve(0.5), 0.5);
  EXPECT_EQ(SmoothCurve(1), 1);
  for (const double t : {0.0, 1.0}) {
    // Near its ends the curve moves by 3 h^2.
    EXPECT_NEAR((SmoothCurve(t + 1e-4) - SmoothCurve(t - 1e-4)) / 2e-4, 0, 1e-7);
  }
}

TEST(SmoothCurve, IsSymmetricAboutItsMiddle) {
  for (double t = 0; t <= 1; t += 1.0 / 64) {
    EXPECT_EQ(SmoothCurve(t) + SmoothCurve(1 - t), 1);  // exact for multiples of 1/64
  }
}

TEST(SmoothStepAndEase, FollowTheCurveBetweenTheLimits) {
  for (double (*step)(double, double, double) : {SmoothStep, Ease}) {
    EXPECT_EQ(step(2, 6, 1.9), 0);
    EXPECT_EQ(step(2, 6, 2), 0);
    EXPECT_EQ(step(2, 6, 3), 0.15625);
    EXPECT_EQ(step(2, 6, 6), 1);
    EXPECT_EQ(step(2, 6, kInfinity), 1);
  }
}

TEST(SmoothStepAndEase, WithEqualLimitsAreHardSteps) {
  for (double (*step)(double, double, double) : {SmoothStep, Ease}) {
    EXPECT_EQ(step(0.5, 0.5, 0.49), 0);
    EXPECT_EQ(step(0.5, 0.5, 0.5), 1);
  }
}

TEST(SmoothStepAndEase, DifferInNan) {
  EXPECT_EQ(SmoothStep(0, 1, kNan), 1);
  EXPECT_EQ(SmoothStep(0, kNan, 0.5), 1);
  EXPECT_TRUE(std::isnan(Ease(0, 1, kNan)));
  EXPECT_TRUE(std::isnan(Ease(0, kNan, 0.5)));
}

TEST(Wrap, IsAPositiveModulus) {
  EXPECT_EQ(Wrap(7, 3), 1);
  EXPECT_EQ(Wrap(-7, 3), 2);  // -7 + 2 * 3 = -1, then + 3
  EXPECT_EQ(Wrap(6, 3), 0);
  EXPECT_EQ(Wrap(-6, 3), 0);
  EXPECT_EQ(Wrap(-0.25, 1.5), 1.25);
}

TEST(Wrap, RepeatsWithItsPeriod) {
  for (double v = -8; v <= 8; v += 0.125) {
    const double wrapped = Wrap(v, 1.5);
    EXPECT_TRUE(wrapped >= 0 && wrapped < 1.5) << v;
    EXPECT_EQ(Wrap(v + 1.5, 1.5), wrapped) << v;
  }
}

TEST(Wrap, TakesNumbersBeyondEveryInteger) {
  EXPECT_EQ(Wrap(0x1p200, 1), 0);
  EXPECT_EQ(Wrap(-0x1p200, 1), 0);
  EXPECT_TRUE(std::isnan(Wrap(kInfinity, 1)));
  EXPECT_TRUE(std::isnan(Wrap(kNan, 1)));
  EXPECT_TRUE(std::isnan(Wrap(1, 0)));
}

TEST(Fraction, IsWhatStandsAboveTheIntegerBelow) {
  EXPECT_EQ(Fraction(2.25), 0.25);
  EXPECT_EQ(Fraction(-2.25), 0.75);
  EXPECT_EQ(Fraction(3), 0);
  EXPECT_EQ(Fraction(-3), 0);
}

TEST(Fraction, LiesIn0To1ForEveryNumber) {
  ForFloatsOfEveryKind([](double v) {
    const double fraction = Fraction(v);
    if (std::isfinite(v)) {
      ASSERT_TRUE(fraction >= 0 && fraction <= 1) << v;
    } else {
      ASSERT_TRUE(std::isnan(fraction)) << v;
    }
  });
}

}  // namespace
}  // namespace sorvanix
