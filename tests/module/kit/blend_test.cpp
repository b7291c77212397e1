#include "module/kit/blend.h"

#include <limits>

#include "module/kit/vector.h"
#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsNear;
using test::IsVector;
using test::Random;

constexpr std::int32_t kModes = 19;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Components are rounded by 2^-25, and the modes that turn hues use a 1/60 that is 5.2e-8 too
// large.
constexpr double kBound = 4e-7;

Vector Blend(const Vector& base, const Vector& blend, float opacity, std::int32_t mode) {
  return BlendColors(base, blend, {kNan, kNan, kNan}, opacity, mode, 0);  // the mask is not read
}

bool Clamps(std::int32_t mode) {
  switch (mode) {
    case BlendHue:
    case BlendSaturation:
    case BlendColor:
    case BlendLuminance:
    case BlendScreen:
    case BlendOverlay:
    case BlendHardLight:
    case BlendSoftLight:
    case BlendDodge:
    case BlendBurn:
    case BlendExclusion:
      return true;
    default:
      return false;
  }
}

Vector Clamped(const Vector& c) {
  return ByComponent([](float v) { return v < 0 ? 0 : v > 1 ? 1 : v; }, c);
}

// The target colour of each mode for
//   base  A = (1/4, 1/2, 3/4): mean 1/2, HSV (210, 2/3, 3/4), HLS (210, 1/2, 1/2)
//   blend B = (3/4, 1/4, 1): mean 2/3, HSV (280, 3/4, 1), HLS (-, 5/8, 1)
// A: delta 1/2, hue (1/4 - 1/2) / (1/2) + 4 = 3.5 sixths, HLS saturation (1/2) / (1/4 + 3/4).
// B: delta 3/4, hue (3/4 - 1/4) / (3/4) + 4 = 4 2/3 sixths, lightness (1/4 + 1) / 2 above a half,
// saturation (3/4) / (2 - 1 - 1/4).
constexpr Vector kBase{0.25f, 0.5f, 0.75f};
constexpr Vector kBlend{0.75f, 0.25f, 1};

struct KnownTarget {
  const char* name;
  std::int32_t mode;
  Vector target;
};

constexpr KnownTarget kTargets[] = {
    {"Normal", BlendNormal, kBlend},
    // 1/2 is not above 2/3.
    {"Darken", BlendDarken, kBase},
    {"Lighten", BlendLighten, kBlend},
    // HSV (280, 2/3, 3/4): sector 4, f = 2/3, p = 1/3 * 3/4, t = (1 - 1/3 * 2/3) * 3/4 = 7/12.
    {"Hue", BlendHue, {7.0f / 12, 0.25f, 0.75f}},
    // HLS (210, 1/2, 1): m2 = 1, m1 = 0; red at 330 is m1, green at 210 half way, blue at 90 is m2.
    {"Saturation", BlendSaturation, {0, 0.5f, 1}},
    // HSV (280, 3/4, 3/4): p = 1/4 * 3/4, t = (1 - 1/3 * 3/4) * 3/4 = 9/16.
    {"Color", BlendColor, {0.5625f, 0.1875f, 0.75f}},
    // HLS (210, 5/8, 1/2): m2 = 9/8 - 5/16 = 13/16, m1 = 5/4 - 13/16 = 7/16.
    {"Luminance", BlendLuminance, {0.4375f, 0.625f, 0.8125f}},
    {"Multiply", BlendMultiply, {0.1875f, 0.125f, 0.75f}},
    // 1 - 3/4 * 1/4, 1 - 1/2 * 3/4, 1 - 1/4 * 0.
    {"Screen", BlendScreen, {0.8125f, 0.625f, 1}},
    // By the base: 2 * 3/4 * 1/4; a half is light: 1 - 2 * 3/4 * 1/2; 1 - 2 * 0 * 1/4.
    {"Overlay", BlendOverlay, {0.375f, 0.25f, 1}},
    // By the blend colour: 1 - 2 * 1/4 * 3/4; 2 * 1/4 * 1/2; 1 - 2 * 0 * 1/4.
    {"HardLight", BlendHardLight, {0.625f, 0.25f, 1}},
    // 2 * 3/4 * (1/8 + 1/4); 1 - 2 * 3/4 * (1/4 + 1/4); 1 - 2 * 0 * (1/8 + 1/4).
    {"SoftLight", BlendSoftLight, {0.5625f, 0.25f, 1}},
    {"Difference", BlendDifference, {0.5f, 0.25f, 0.25f}},
    // Lightness 1 - 1/2 * 3/8 = 13/16: m2 = 21/16 - 13/32 = 29/32, m1 = 26/16 - 29/32 = 23/32.
    {"Dodge", BlendDodge, {0.71875f, 0.8125f, 0.90625f}},
    // Lightness 1/2 * 3/8 = 3/16: m2 = 3/2 * 3/16 = 9/32, m1 = 6/16 - 9/32 = 3/32.
    {"Burn", BlendBurn, {0.09375f, 0.1875f, 0.28125f}},
    // Screen less multiply.
    {"Exclusion", BlendExclusion, {0.625f, 0.5f, 0.25f}},
    // (1, 3/4, 7/4) and (-1/2, 1/4, -1/4), limited.
    {"Add", BlendAdd, {1, 0.75f, 1}},
    {"Subtract", BlendSubtract, {0, 0.25f, 0}},
};

class KnownTargets : public testing::TestWithParam<KnownTarget> {};

TEST_P(KnownTargets, AreReachedAtFullOpacity) {
  EXPECT_THAT(Blend(kBase, kBlend, 1, GetParam().mode), IsNear(GetParam().target, kBound));
}

TEST_P(KnownTargets, AreHalfReachedAtHalfOpacity) {
  const Vector half = Lerp(kBase, GetParam().target, 0.5f);
  EXPECT_THAT(Blend(kBase, kBlend, 0.5f, GetParam().mode), IsNear(half, kBound));
}

TEST_P(KnownTargets, AreOvershotBeyondFullOpacity) {
  const Vector beyond = Lerp(kBase, GetParam().target, 2);
  EXPECT_THAT(Blend(kBase, kBlend, 2, GetParam().mode), IsNear(beyond, 2 * kBound));
  const Vector before = Lerp(kBase, GetParam().target, -1);
  EXPECT_THAT(Blend(kBase, kBlend, -1, GetParam().mode), IsNear(before, kBound));
}

TEST_P(KnownTargets, AreApproachedByOpacityTimesTheMeanOfTheMask) {
  // 0.5 * (1 + 1/4 + 1/4) / 3 = 1/4.
  const Vector mask{0.25f, 1, 0.25f};
  const Vector quarter = Lerp(kBase, GetParam().target, 0.25f);
  for (const std::int32_t useMask : {1, -1, 256}) {
    EXPECT_THAT(BlendColors(kBase, kBlend, mask, 0.5f, GetParam().mode, useMask),
                IsNear(quarter, kBound));
  }
}

INSTANTIATE_TEST_SUITE_P(Blend, KnownTargets, testing::ValuesIn(kTargets),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(BlendColors, WithoutOpacityKeepsTheBaseInEveryMixingMode) {
  Random random(31);
  for (int i = 0; i < 2000; ++i) {
    const Vector base = random.Point(2), blend = random.Point(2);
    for (std::int32_t mode = 0; mode < kModes; ++mode) {
      if (mode == BlendThreshold) continue;
      const Vector kept = Blend(base, blend, 0, mode);
      // Modes that limit the colours start from the limited base.
      ASSERT_THAT(kept, IsVector(Clamps(mode) ? Clamped(base) : base)) << mode;
    }
  }
}

TEST(BlendColors, WithABlackMaskKeepsTheBaseAtAnyOpacity) {
  for (std::int32_t mode = 0; mode < kModes - 1; ++mode) {
    EXPECT_THAT(BlendColors(kBase, kBlend, {0, 0, 0}, 1, mode, 1), IsVector(kBase)) << mode;
  }
}

TEST(BlendColors, LimitsItsColoursInTheModesThatNeedIt) {
  Random random(32);
  for (int i = 0; i < 1000; ++i) {
    const Vector base = random.Point(2), blend = random.Point(2);
    const float opacity = random.Unit();
    for (std::int32_t mode = 0; mode < kModes; ++mode) {
      if (!Clamps(mode)) continue;
      const Vector limited = Blend(Clamped(base), Clamped(blend), opacity, mode);
      ASSERT_THAT(Blend(base, blend, opacity, mode), IsVector(limited)) << mode;
    }
  }
}

TEST(BlendColors, StaysIn0To1ForColoursIn0To1) {
  Random random(33);
  for (int i = 0; i < 2000; ++i) {
    const Vector base = random.Colour(), blend = random.Colour();
    const float opacity = random.Unit();
    for (std::int32_t mode = 0; mode < kModes; ++mode) {
      const Vector c = Blend(base, blend, opacity, mode);
      ASSERT_THAT(c, IsNear(Clamped(c), kBound)) << mode;
    }
  }
}

TEST(BlendColors, TakesUnlimitedColoursInTheOtherModes) {
  const Vector base{1.5f, -0.5f, 0.5f}, blend{2, 0.25f, -1};
  EXPECT_THAT(Blend(base, blend, 1, BlendNormal), IsVector(blend));
  EXPECT_THAT(Blend(base, blend, 1, BlendMultiply), IsVector(3, -0.125, -0.5));
  EXPECT_THAT(Blend(base, blend, 1, BlendDifference), IsVector(0.5, 0.75, 1.5));
  // The sum (3.5, -0.25, -0.5) is limited to (1, 0, 0), the base is not: 1.5 - 0.5 / 2, ...
  EXPECT_THAT(Blend(base, blend, 0.5f, BlendAdd), IsVector(1.25, -0.25, 0.25));
  // The difference (-0.5, -0.75, 1.5) is limited to (0, 0, 1).
  EXPECT_THAT(Blend(base, blend, 0.5f, BlendSubtract), IsVector(0.75, -0.25, 0.75));
}

TEST(BlendColors, TakesAnUnknownModeForNormal) {
  const Vector base{1.5f, -0.5f, 0.5f}, blend{2, 0.25f, -1};
  for (const std::int32_t mode : {19, 1000, -1, std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_THAT(Blend(base, blend, 0.5f, mode), IsVector(1.75, -0.125, -0.25)) << mode;
  }
}

TEST(BlendColors, LetsNanThroughItsLimits) {
  EXPECT_TRUE(std::isnan(Blend({kNan, 0, 0}, kBlend, 1, BlendScreen).x));
  EXPECT_TRUE(std::isnan(Blend({kNan, 0, 0}, kBlend, 1, BlendAdd).x));
}

TEST(BlendDarken, TakesTheWholeColourWithTheLowerMean) {
  // B is the lighter colour, though its green is below A's.
  EXPECT_THAT(Blend(kBlend, kBase, 1, BlendDarken), IsVector(kBase));
  EXPECT_THAT(Blend(kBlend, kBase, 0.5f, BlendDarken), IsVector(0.5, 0.375, 0.875));
}

TEST(BlendDarkenAndLighten, KeepTheBaseWhenMeansAreEqual) {
  const Vector base{0.25f, 0.5f, 0.75f}, blend{0.75f, 0.25f, 0.5f};
  for (const float opacity : {0.5f, 1.0f, 7.0f}) {
    EXPECT_THAT(Blend(base, blend, opacity, BlendDarken), IsVector(base));
    EXPECT_THAT(Blend(base, blend, opacity, BlendLighten), IsVector(base));
  }
}

TEST(BlendHue, OfAGreyIsAGreyOfTheBasesValue) {
  EXPECT_THAT(Blend(kBase, {0, 0, 0}, 1, BlendHue), IsVector(0.75, 0.75, 0.75));
  // The hue of this one is not a number.
  EXPECT_THAT(Blend(kBase, {0.5f, 0.5f, 0.5f}, 1, BlendHue), IsVector(0.75, 0.75, 0.75));
}

TEST(BlendSaturationDodgeAndBurn, KeepAGreyBaseGrey) {
  const Vector grey{0.5f, 0.5f, 0.5f};
  EXPECT_THAT(Blend(grey, kBlend, 1, BlendSaturation), IsVector(grey));
  // Lightness of B is 5/8: 1 - 1/2 * 3/8, and 1/2 * 3/8.
  EXPECT_THAT(Blend(grey, kBlend, 1, BlendDodge), IsVector(0.8125, 0.8125, 0.8125));
  EXPECT_THAT(Blend(grey, kBlend, 1, BlendBurn), IsVector(0.1875, 0.1875, 0.1875));
}

TEST(BlendDodgeAndBurn, ReadOnlyTheLightnessOfTheBlendColour) {
  // (3/4, 1/4, 1) and grey 5/8 have the same lightness.
  for (const std::int32_t mode : {BlendDodge, BlendBurn}) {
    EXPECT_THAT(Blend(kBase, {0.625f, 0.625f, 0.625f}, 1, mode),
                IsVector(Blend(kBase, kBlend, 1, mode)));
  }
}

TEST(BlendOverlay, AndHardLightAreOneAnotherWithTheColoursExchanged) {
  Random random(34);
  for (int i = 0; i < 1000; ++i) {
    const Vector a = random.Colour(), b = random.Colour();
    ASSERT_THAT(Blend(a, b, 1, BlendOverlay), IsNear(Blend(b, a, 1, BlendHardLight), kBound));
  }
}

TEST(BlendMultiplyScreenAndDifference, DoNotCareWhichColourIsTheBase) {
  Random random(35);
  for (int i = 0; i < 1000; ++i) {
    const Vector a = random.Colour(), b = random.Colour();
    for (const std::int32_t mode :
         {BlendMultiply, BlendScreen, BlendDifference, BlendExclusion, BlendAdd}) {
      ASSERT_THAT(Blend(a, b, 1, mode), IsNear(Blend(b, a, 1, mode), kBound)) << mode;
    }
  }
}

TEST(BlendDifference, OfAColourWithItselfIsBlack) {
  EXPECT_THAT(Blend(kBase, kBase, 1, BlendDifference), IsVector(0, 0, 0));
}

TEST(BlendExclusion, LimitsItsColoursBeforeBothProducts) {
  // Limited: (1, 0, 1/2) and (1, 1/4, 0). Multiply (1, 0, 0), screen (1, 1/4, 1/2), less: (0, 1/4,
  // 1/2). Half way from the limited base.
  EXPECT_THAT(Blend({1.5f, -0.5f, 0.5f}, {2, 0.25f, -1}, 1, BlendExclusion),
              IsVector(0, 0.25, 0.5));
  EXPECT_THAT(Blend({1.5f, -0.5f, 0.5f}, {2, 0.25f, -1}, 0.5f, BlendExclusion),
              IsVector(0.5, 0.125, 0.5));
}

TEST(BlendThreshold, WithoutOpacityIsASmoothStepOfRed) {
  // lo = 0 and hi = 1, whatever the blend colour.
  EXPECT_THAT(Blend({0.25f, 9, -9}, kBlend, 0, BlendThreshold),
              IsVector(0.15625, 0.15625, 0.15625));  // 1/16 * 2.5
  EXPECT_THAT(Blend({-0.25f, 1, 1}, kBlend, 0, BlendThreshold), IsVector(0, 0, 0));
  EXPECT_THAT(Blend({1, 0, 0}, kBlend, 0, BlendThreshold), IsVector(1, 1, 1));
}

TEST(BlendThreshold, NarrowsTowardsTheMeanOfTheBlendColour) {
  // m = 0.5, f = 0.5: lo = 0.25, q = 0.5, hi = 0.5 * 0.5 + 0.5 = 0.75; red 0.375 is t = 0.25.
  const Vector blend{0.25f, 0.5f, 0.75f};
  const Vector step{0.15625f, 0.15625f, 0.15625f};
  EXPECT_THAT(Blend({0.375f, 0, 0}, blend, 0.5f, BlendThreshold), IsNear(step, kBound));
  EXPECT_THAT(Blend({0.24f, 1, 1}, blend, 0.5f, BlendThreshold), IsVector(0, 0, 0));
  EXPECT_THAT(Blend({0.75f, 0, 0}, blend, 0.5f, BlendThreshold), IsVector(1, 1, 1));
}

TEST(BlendThreshold, AtFullOpacityIsAHardStepAtTheMean) {
  const Vector blend{0.5f, 0.5f, 0.5f};
  // Fourteen digits of a third put the mean just below a half, above the float before it.
  EXPECT_THAT(Blend({0.5f, 0, 0}, blend, 1, BlendThreshold), IsVector(1, 1, 1));
  EXPECT_THAT(Blend({std::nextafter(0.5f, 0.0f), 1, 1}, blend, 1, BlendThreshold),
              IsVector(0, 0, 0));
}

TEST(BlendThreshold, ScalesWithTheMaskToo) {
  // The mask's mean 1/2 makes f = 1/2, as above.
  const Vector blend{0.25f, 0.5f, 0.75f}, mask{0.5f, 1, 0};
  EXPECT_THAT(BlendColors({0.375f, 0, 0}, blend, mask, 1, BlendThreshold, 1),
              IsNear(Vector{0.15625f, 0.15625f, 0.15625f}, kBound));
}

}  // namespace
}  // namespace sorvanix
