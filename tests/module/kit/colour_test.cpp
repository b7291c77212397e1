#include "module/kit/colour.h"

#include <limits>

#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsNear;
using test::IsVector;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Known values of degrees and sectors: the float 1/60 is 5.2e-8 too large, times up to 6 sectors,
// and components are rounded by 3e-8.
constexpr double kDegreeBound = 4e-7;

void ExpectHsv(const Hsv& colour, float h, float s, float v) {
  EXPECT_EQ(colour.h, h);
  EXPECT_EQ(colour.s, s);
  EXPECT_EQ(colour.v, v);
}

void ExpectHls(const Hls& colour, float h, float l, float s) {
  EXPECT_EQ(colour.h, h);
  EXPECT_EQ(colour.l, l);
  EXPECT_EQ(colour.s, s);
}

// The six full colours and the hues in degrees that belong to them.
struct Primary {
  Vector colour;
  float degrees;
};
constexpr Primary kPrimaries[] = {{{1, 0, 0}, 0},   {{1, 1, 0}, 60},  {{0, 1, 0}, 120},
                                  {{0, 1, 1}, 180}, {{0, 0, 1}, 240}, {{1, 0, 1}, 300}};

// Calls `check` with every colour whose components are multiples of 1/15.
template <typename Check>
void ForColoursOfAGrid(Check check) {
  for (int r = 0; r <= 15; ++r) {
    for (int g = 0; g <= 15; ++g) {
      for (int b = 0; b <= 15; ++b) {
        check(Vector{static_cast<float>(r) / 15, static_cast<float>(g) / 15,
                     static_cast<float>(b) / 15});
      }
    }
  }
}

TEST(RgbToHsv, OfBlackHasNoHue) { ExpectHsv(RgbToHsv({0, 0, 0}), -1, 0, 0); }

TEST(RgbToHsv, OfAnotherGreyHasAHueThatIsNoNumber) {
  const Hsv grey = RgbToHsv({0.5f, 0.5f, 0.5f});
  EXPECT_EQ(grey.s, 0);
  EXPECT_EQ(grey.v, 0.5f);
  EXPECT_TRUE(std::isnan(grey.h));
  EXPECT_THAT(HsvToRgb(grey), IsVector(0.5, 0.5, 0.5));
}

TEST(RgbToHsv, PlacesTheFullColoursEvery60Degrees) {
  for (const Primary& primary : kPrimaries) {
    ExpectHsv(RgbToHsv(primary.colour), primary.degrees, 1, 1);
  }
}

TEST(RgbToHsv, MeasuresHueBetweenTheOtherTwoComponents) {
  // delta = 0.5, s = 0.5 / 0.75, h = (0.5 - 0.25) / 0.5 = 0.5 sixths; then + 2 and + 4.
  const float s = 0.5f / 0.75f;
  ExpectHsv(RgbToHsv({0.75f, 0.5f, 0.25f}), 30, s, 0.75f);
  ExpectHsv(RgbToHsv({0.25f, 0.75f, 0.5f}), 150, s, 0.75f);
  ExpectHsv(RgbToHsv({0.5f, 0.25f, 0.75f}), 270, s, 0.75f);
}

TEST(RgbToHsv, AddsATurnToANegativeHue) {
  // (0.25 - 0.5) / 0.5 * 60 = -30.
  ExpectHsv(RgbToHsv({0.75f, 0.25f, 0.5f}), 330, 0.5f / 0.75f, 0.75f);
}

TEST(RgbToHsv, TakesColoursBeyond1) { ExpectHsv(RgbToHsv({4, 0, 0}), 0, 1, 4); }

TEST(HsvToRgb, IsGreyWithoutSaturationWhateverTheHue) {
  for (const float hue : {-1.0f, 0.0f, 123.0f, 1e9f, kNan}) {
    EXPECT_THAT(HsvToRgb({hue, 0, 0.5f}), IsVector(0.5, 0.5, 0.5));
  }
}

TEST(HsvToRgb, IsGreyWithoutAHueWhateverTheSaturation) {
  EXPECT_THAT(HsvToRgb({kNoHue, 1, 0.5f}), IsVector(0.5, 0.5, 0.5));
  EXPECT_THAT(HsvToRgb({kNan, 1, 0.5f}), IsVector(0.5, 0.5, 0.5));
}

TEST(HsvToRgb, TurnsThroughTheSixSectors) {
  // v = 1, s = 0.5, so p = 0.5; in mid-sector f = 0.5 and q = t = 0.75.
  EXPECT_THAT(HsvToRgb({30, 0.5f, 1}), IsNear(Vector{1, 0.75f, 0.5f}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({90, 0.5f, 1}), IsNear(Vector{0.75f, 1, 0.5f}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({150, 0.5f, 1}), IsNear(Vector{0.5f, 1, 0.75f}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({210, 0.5f, 1}), IsNear(Vector{0.5f, 0.75f, 1}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({270, 0.5f, 1}), IsNear(Vector{0.75f, 0.5f, 1}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({330, 0.5f, 1}), IsNear(Vector{1, 0.5f, 0.75f}, kDegreeBound));
}

TEST(HsvToRgb, MovesFromOneComponentToTheNextWithinASector) {
  // h = 15: f = 0.25, t = 1 - 0.75 * 1 = 0.25. h = 75: q = 1 - 0.25 * 1 = 0.75.
  EXPECT_THAT(HsvToRgb({15, 1, 1}), IsNear(Vector{1, 0.25f, 0}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({75, 1, 1}), IsNear(Vector{0.75f, 1, 0}, kDegreeBound));
}

TEST(HsvToRgb, CountsAHueOf360OrBeyondAsOneOfTheLastSector) {
  // The float with the bits 0x3C888889 is 1/60 times 1 + 5.215e-8. 360 times it is 6 + 3.129e-7, so
  // f = 3.129e-7 and the blue component q = 1 - f rounds to 1 - 5 * 2^-24: magenta, not red.
  EXPECT_THAT(HsvToRgb({360, 1, 1}), IsVector(1, 0, 1 - 5 * 0x1p-24));
  // 390 / 60 = 6.5, f = 0.5; -30 / 60 = -0.5, floor -1, f = 0.5.
  EXPECT_THAT(HsvToRgb({390, 1, 1}), IsNear(Vector{1, 0, 0.5f}, kDegreeBound));
  EXPECT_THAT(HsvToRgb({-30, 1, 1}), IsNear(Vector{1, 0, 0.5f}, kDegreeBound));
}

TEST(HsvToRgb, TakesHuesBeyondEveryInteger) {
  // Such a hue has no fraction: q = v.
  EXPECT_THAT(HsvToRgb({3e38f, 1, 1}), IsVector(1, 0, 1));
}

TEST(HsvToRgb, UndoesRgbToHsv) {
  ForColoursOfAGrid([](const Vector& c) {
    // Hues up to 360 are rounded by 2^-16 degrees, 2.6e-7 sectors; 1/60 adds 3.2e-7 at 6 sectors;
    // saturation and components are rounded by 3e-8.
    ASSERT_THAT(HsvToRgb(RgbToHsv(c)), IsNear(c, 6.4e-7));
  });
}

TEST(RgbToHls, OfEveryGreyHasNoHue) {
  ExpectHls(RgbToHls({0, 0, 0}), -1, 0, 0);
  ExpectHls(RgbToHls({0.5f, 0.5f, 0.5f}), -1, 0.5f, 0);
  ExpectHls(RgbToHls({1, 1, 1}), -1, 1, 0);
}

TEST(RgbToHls, PlacesTheFullColoursEvery60Degrees) {
  // A lightness of exactly 0.5 divides by min + max = 1.
  for (const Primary& primary : kPrimaries) {
    ExpectHls(RgbToHls(primary.colour), primary.degrees, 0.5f, 1);
  }
}

TEST(RgbToHls, MeasuresSaturationAgainstTheNearerOfBlackAndWhite) {
  // l = 0.625 above 0.5: 0.75 / (2 - 1 - 0.25) = 1. l = 0.375: 0.25 / (0.25 + 0.5) = 1/3.
  ExpectHls(RgbToHls({1, 0.25f, 0.25f}), 0, 0.625f, 1);
  ExpectHls(RgbToHls({0.5f, 0.25f, 0.25f}), 0, 0.375f, 1.0f / 3);
}

TEST(RgbToHls, LetsTheHueOfWeakGreensRunAway) {
  ExpectHls(RgbToHls({0, 1, 0}), 120, 0.5f, 1);                 // (0 + 2) / 1 * 60
  ExpectHls(RgbToHls({0.25f, 0.75f, 0.25f}), 240, 0.5f, 0.5f);  // (0 + 2) / 0.5 * 60
  // ((0.375 - 0.25) + 2) / 0.25 * 60 = 510; s = 0.25 / 0.75.
  ExpectHls(RgbToHls({0.25f, 0.5f, 0.375f}), 510, 0.375f, 0.25f / 0.75f);
}

TEST(RgbToHls, AddsATurnToANegativeHue) {
  // Red leads: (0.25 - 0.5) / 0.5 * 60 = -30; s = 0.5 / 1.
  ExpectHls(RgbToHls({0.75f, 0.25f, 0.5f}), 330, 0.5f, 0.5f);
}

TEST(HlsChannel, RisesStaysAndFallsOverTwoThirdsOfATurn) {
  // m1 = 0.25, m2 = 0.75.
  EXPECT_EQ(HlsChannel(0.25, 0.75, 0), 0.25f);
  EXPECT_NEAR(HlsChannel(0.25, 0.75, 30), 0.5, kDegreeBound);
  EXPECT_EQ(HlsChannel(0.25, 0.75, 60), 0.75f);
  EXPECT_EQ(HlsChannel(0.25, 0.75, 179), 0.75f);
  EXPECT_NEAR(HlsChannel(0.25, 0.75, 180), 0.75, kDegreeBound);
  EXPECT_NEAR(HlsChannel(0.25, 0.75, 210), 0.5, kDegreeBound);
  EXPECT_EQ(HlsChannel(0.25, 0.75, 240), 0.25f);
  EXPECT_EQ(HlsChannel(0.25, 0.75, 359), 0.25f);
}

TEST(HlsChannel, At360StaysThereAndIsM1) { EXPECT_EQ(HlsChannel(0.25, 0.75, 360), 0.25f); }

TEST(HlsChannel, TakesOffOneTurnOnly) {
  EXPECT_EQ(HlsChannel(0.25, 0.75, 450), 0.75f);               // 90
  EXPECT_EQ(HlsChannel(0.25, 0.75, 810), 0.25f);               // 450, past every rise
  EXPECT_EQ(HlsChannel(0.25, 0.75, -240), 0.75f);              // 120
  EXPECT_NEAR(HlsChannel(0.25, 0.75, -390), 0, kDegreeBound);  // -30: 0.5 * -30 / 60 + 0.25
}

TEST(HlsToRgb, IsGreyWithoutSaturationOrHue) {
  EXPECT_THAT(HlsToRgb({123, 0.25f, 0}), IsVector(0.25, 0.25, 0.25));
  EXPECT_THAT(HlsToRgb({kNoHue, 0.25f, 1}), IsVector(0.25, 0.25, 0.25));
}

TEST(HlsToRgb, GivesTheFullColours) {
  for (const Primary& primary : kPrimaries) {
    EXPECT_THAT(HlsToRgb({primary.degrees, 0.5f, 1}), IsNear(primary.colour, kDegreeBound));
  }
}

TEST(HlsToRgb, SpreadsTheComponentsAroundTheLightness) {
  // l = 0.75, s = 0.5: m2 = (0.75 + 0.5) - 0.375 = 0.875, m1 = 1.5 - 0.875 = 0.625.
  EXPECT_THAT(HlsToRgb({0, 0.75f, 0.5f}), IsVector(0.875, 0.625, 0.625));
  // l = 0.25, s = 0.5: m2 = 1.5 * 0.25 = 0.375, m1 = 0.125.
  EXPECT_THAT(HlsToRgb({120, 0.25f, 0.5f}), IsNear(Vector{0.125f, 0.375f, 0.125f}, kDegreeBound));
}

TEST(HlsToRgb, UndoesRgbToHlsUnlessAWeakGreenLeads) {
  ForColoursOfAGrid([](const Vector& c) {
    const bool greenLeads = c.y > c.x && c.y >= c.z;
    const float delta = c.y - std::fmin(c.x, c.z);
    if (greenLeads && delta < 1) return;
    // As for HsvToRgb, with at most one sector's worth of the 1/60.
    ASSERT_THAT(HlsToRgb(RgbToHls(c)), IsNear(c, 5e-7));
  });
}

TEST(RgbToHsvVector, OfBlackAndBelowIsZero) {
  EXPECT_THAT(RgbToHsvVector({0, 0, 0}), IsVector(0, 0, 0));
  EXPECT_THAT(RgbToHsvVector({-1, -2, 0}), IsVector(0, 0, 0));
  EXPECT_THAT(RgbToHsvVector({-1, -2, -3}), IsVector(0, 0, 0));
}

TEST(RgbToHsvVector, OfGreyKeepsItsValue) {
  EXPECT_THAT(RgbToHsvVector({0.5f, 0.5f, 0.5f}), IsVector(0, 0, 0.5));
}

TEST(RgbToHsvVector, TakesNearGreyForItsSmallestComponent) {
  EXPECT_THAT(RgbToHsvVector({0.5f, 0.4999f, 0.5f}), IsVector(0, 0, 0.4999f));
  // s = 1 - 0.998 = 0.002 is enough for a hue. Red leads: (g - b) / delta = -1, / 6 + 1.
  EXPECT_THAT(RgbToHsvVector({1, 0.998f, 1}), IsNear(Vector{5.0f / 6, 0.002f, 1}, 1e-7));
}

TEST(RgbToHsvVector, ComparesTheSaturationWithAThousandthInDouble) {
  // 1 - 0.999 is 0.00100000000000000089 in double: not below 0.001, though below the float 0.001,
  // which is 0.00100000005. So a hue: red leads, (g - b) / delta = -1, / 6 + 1.
  EXPECT_THAT(RgbToHsvVector({1000, 999, 1000}), IsVector(5.0f / 6, 0.001f, 1000));
}

TEST(RgbToHsvVector, MeasuresHueIn0To1) {
  for (const Primary& primary : kPrimaries) {
    EXPECT_THAT(RgbToHsvVector(primary.colour), IsVector(primary.degrees / 360, 1, 1));
  }
}

TEST(HsvVectorToRgb, TakesHue1For0) {
  EXPECT_THAT(HsvVectorToRgb({1, 0.5f, 0.75f}), IsVector(HsvVectorToRgb({0, 0.5f, 0.75f})));
  EXPECT_THAT(HsvVectorToRgb({1, 0.5f, 0.75f}), IsVector(0.75, 0.375, 0.375));  // p = t = v / 2
}

TEST(HsvVectorToRgb, IsGreyBelowAThousandthOfSaturation) {
  EXPECT_THAT(HsvVectorToRgb({0.3f, 0.0009f, 0.75f}), IsVector(0.75, 0.75, 0.75));
  EXPECT_THAT(HsvVectorToRgb({7, 0, 0.75f}), IsVector(0.75, 0.75, 0.75));
  // A saturation of just a thousandth is not below it: coloured, p = 0.999 * v.
  EXPECT_THAT(HsvVectorToRgb({0, 0.001f, 1}), IsVector(1, 0.999f, 0.999f));
}

TEST(HsvVectorToRgb, IsBlackForAHueOutOfRange) {
  for (const float hue : {-0.1f, 1.1f, 3e38f, -3e38f, kNan}) {
    EXPECT_THAT(HsvVectorToRgb({hue, 0.5f, 1}), IsVector(0, 0, 0)) << hue;
  }
}

TEST(HsvVectorToRgb, TurnsThroughTheSixSectors) {
  // v = 1, s = 0.5: p = 0.5, mid-sector q = t = 0.75. Twelfths are rounded to floats.
  constexpr double bound = 4e-7;  // 6 sectors times 3e-8, and the components' own rounding
  EXPECT_THAT(HsvVectorToRgb({1.0f / 12, 0.5f, 1}), IsNear(Vector{1, 0.75f, 0.5f}, bound));
  EXPECT_THAT(HsvVectorToRgb({3.0f / 12, 0.5f, 1}), IsNear(Vector{0.75f, 1, 0.5f}, bound));
  EXPECT_THAT(HsvVectorToRgb({5.0f / 12, 0.5f, 1}), IsNear(Vector{0.5f, 1, 0.75f}, bound));
  EXPECT_THAT(HsvVectorToRgb({7.0f / 12, 0.5f, 1}), IsNear(Vector{0.5f, 0.75f, 1}, bound));
  EXPECT_THAT(HsvVectorToRgb({9.0f / 12, 0.5f, 1}), IsNear(Vector{0.75f, 0.5f, 1}, bound));
  EXPECT_THAT(HsvVectorToRgb({11.0f / 12, 0.5f, 1}), IsNear(Vector{1, 0.5f, 0.75f}, bound));
}

TEST(HsvVectorToRgb, UndoesRgbToHsvVectorForEvery8BitColour) {
  // Hue, saturation and component are each rounded by at most 2^-25; a hue counts for six sectors.
  // So no component moves by more than (6 + 1 + 1) 2^-25 = 2^-22. Greys come back as they were, and
  // the weakest of the other colours has a saturation of 1/255, above the cut-off.
  for (int r = 0; r < 256; ++r) {
    for (int g = 0; g < 256; ++g) {
      for (int b = 0; b < 256; ++b) {
        const Vector colour{static_cast<float>(r) / 255, static_cast<float>(g) / 255,
                            static_cast<float>(b) / 255};
        const Vector back = HsvVectorToRgb(RgbToHsvVector(colour));
        if (!(test::Distance(back, colour) <= 0x1p-22)) FAIL() << r << ' ' << g << ' ' << b;
      }
    }
  }
}

}  // namespace
}  // namespace sorvanix
