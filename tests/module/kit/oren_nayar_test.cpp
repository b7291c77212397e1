// The Oren-Nayar model: its limits, its symmetry, and values worked out from the paper's formulas.
#include "module/kit/oren_nayar.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <numbers>

#include "module/kit/vector.h"

namespace sorvanix::test {
namespace {

constexpr Vector kUp = {0, 0, 1};
constexpr double kPi = std::numbers::pi;

// A unit vector that leans from the normal by `angle`, towards `azimuth`.
Vector Leaning(double angle, double azimuth) {
  return {static_cast<float>(std::sin(angle) * std::cos(azimuth)),
          static_cast<float>(std::sin(angle) * std::sin(azimuth)),
          static_cast<float>(std::cos(angle))};
}

// What a surface of this roughness and a grey reflectance shows of white light.
double Share(float sigma, float reflectance, const Vector& view, const Vector& light) {
  return OrenNayarShare(OrenNayarFactorsOf(sigma), {reflectance, reflectance, reflectance},
                        ViewSurface(kUp, view), light, Dot(light, kUp))
      .x;
}

// 1 - 0.5 / 1.33 = 0.6240602 and 0.45 / 1.09 = 0.4128440, rounded to the nearest floats.
TEST(OrenNayar, FactorsOfRoughnessOne) {
  const OrenNayarFactors factors = OrenNayarFactorsOf(1);
  EXPECT_EQ(factors.sigma2, 1);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(factors.a), 0x3F1FC268u);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(factors.b), 0x3ED3604Bu);
}

TEST(OrenNayar, FactorsOfASmoothSurface) {
  const OrenNayarFactors factors = OrenNayarFactorsOf(0);
  EXPECT_EQ(factors.sigma2, 0);
  EXPECT_EQ(factors.a, 1);
  EXPECT_EQ(factors.b, 0);
}

// Lambert's law, whatever the view.
TEST(OrenNayar, ASmoothSurfaceShowsTheCosine) {
  for (const double viewAngle : {0.0, 0.4, 1.2}) {
    for (const double lightAngle : {0.0, 0.7, 1.5}) {
      EXPECT_NEAR(Share(0, 0.5f, Leaning(viewAngle, 1), Leaning(lightAngle, 2)),
                  0.5 * std::cos(lightAngle), 1e-6);
    }
  }
}

TEST(OrenNayar, RoughnessTendsToTheCosineAsItVanishes) {
  double before = 1;
  for (const float sigma : {0.5f, 0.1f, 0.02f, 0.004f}) {
    const double difference =
        std::fabs(Share(sigma, 0.8f, Leaning(0.9, 0), Leaning(1.1, 2.5)) - 0.8 * std::cos(1.1));
    EXPECT_LT(difference, before) << sigma;
    before = difference;
  }
  EXPECT_LT(before, 1e-4);
}

// alpha = beta = 0: a R + R R 0.17 / 1.13 = 0.6240602 * 0.5 + 0.25 * 0.1504425 = 0.3496407.
TEST(OrenNayar, HeadOn) { EXPECT_NEAR(Share(1, 0.5f, kUp, kUp), 0.3496407, 1e-6); }

// Light and view at 60 degrees, alpha = beta = pi/3, sin 0.8660254, tan 1.7320508, cosine 0.5.
// 0.17 * 0.5 / 1.13 = 0.0752212.
constexpr double kLow = kPi / 3;

// Side by side, cos phi = 1: 0.5 (a + b * 1.5) + 0.0752212 (1 - 4/9) = 0.6216631 + 0.0417896.
TEST(OrenNayar, TowardsTheLight) {
  EXPECT_NEAR(Share(1, 1, Leaning(kLow, 0), Leaning(kLow, 0)), 0.6634527, 1e-6);
}

// Opposite, cos phi = -1: c2 = b (0.8660254 - (2/3)^3) = 0.2352087;
// 0.5 (a - c2 * 1.7320508) + 0.0752212 (1 + 4/9) = 0.1083334 + 0.1086528.
TEST(OrenNayar, AgainstTheLight) {
  EXPECT_NEAR(Share(1, 1, Leaning(kLow, 0), Leaning(kLow, kPi)), 0.2169862, 1e-6);
}

// Across, cos phi = 0: c3 = (4/9)^2 * 0.125 / 1.09 = 0.0226526;
// 0.5 (a + c3 * 1.7320508) + 0.0752212 = 0.3316479 + 0.0752212.
TEST(OrenNayar, AcrossTheLight) {
  EXPECT_NEAR(Share(1, 1, Leaning(kLow, 0), Leaning(kLow, kPi / 2)), 0.4068691, 1e-6);
}

// The cosine is told apart from the direction, as contrast bends it: all of the term follows it,
// the light's part along the surface as well. Both at 60 degrees on one side, with a cosine of 0.8:
// alpha = pi/3, beta = acos 0.8, tan 0.75; the light's part is (0.8660254, 0, 0.5 - 0.8), cos phi =
// 0.8660254 / 0.9165151 = 0.9449112; c2 = b * 0.8660254 = 0.3575334, c3 = 0.0085538;
// 0.8 (a + 0.9449112 * 0.3575334 * 0.75 + 0.0550888 * 0.0085538 * 1.1277118) = 0.7023756, and
// 0.17 * 0.8 / 1.13 * (1 - 4 beta^2 * 0.9449112 / pi^2) = 0.1203540 * 0.8414195 = 0.1012682.
TEST(OrenNayar, ABentCosineCountsInTheWholeTerm) {
  const double share = OrenNayarShare(OrenNayarFactorsOf(1), {1, 1, 1},
                                      ViewSurface(kUp, Leaning(kLow, 0)), Leaning(kLow, 0), 0.8)
                           .x;
  EXPECT_NEAR(share, 0.8036438, 1e-6);
}

// Helmholtz reciprocity: the share over the light's cosine stays when light and view are swapped.
TEST(OrenNayar, LightAndViewMayBeSwapped) {
  for (const float sigma : {0.1f, 0.5f, 1.0f, 2.0f}) {
    for (const double azimuth : {0.0, 1.0, 2.0, 3.0}) {
      const Vector first = Leaning(0.3, 0), second = Leaning(1.2, azimuth);
      EXPECT_NEAR(Share(sigma, 0.7f, first, second) / std::cos(1.2),
                  Share(sigma, 0.7f, second, first) / std::cos(0.3), 1e-6)
          << sigma << " " << azimuth;
    }
  }
}

TEST(OrenNayar, TheNormalTurnsToTheSideOfTheView) {
  const ViewedSurface ahead = ViewSurface(kUp, Leaning(0.5, 0));
  EXPECT_EQ(ahead.normal.z, 1);
  const ViewedSurface behind = ViewSurface(kUp, Leaning(kPi - 0.5, 0));
  EXPECT_EQ(behind.normal.z, -1);
  EXPECT_NEAR(behind.viewAngle, 0.5, 1e-6);
  EXPECT_NEAR(behind.viewAlong.x, 1, 1e-6);
}

TEST(OrenNayar, AHeadOnViewHasNoDirectionWithinTheSurface) {
  const ViewedSurface surface = ViewSurface(kUp, kUp);
  EXPECT_EQ(surface.viewAngle, 0);
  EXPECT_EQ(Length(surface.viewAlong), 0);
}

// Cosines beyond 1, which rounding leaves, are angles of 0; the arc cosine would be undefined.
TEST(OrenNayar, ACosineBeyondOneIsHeadOn) {
  EXPECT_EQ(ViewSurface({0, 0, 1.5f}, kUp).viewAngle, 0);
  const double share =
      OrenNayarShare(OrenNayarFactorsOf(0), {1, 1, 1}, ViewSurface(kUp, kUp), kUp, 1.25).x;
  EXPECT_EQ(share, 1.25);
}

// e^-ln 2 is a half: the square root. e^ln 2 is 2: the square.
TEST(ContrastedCosine, RaisesTheCosine) {
  constexpr auto kLog2 = static_cast<float>(std::numbers::ln2);
  EXPECT_NEAR(ContrastedCosine(0.25, kLog2), 0.5, 1e-7);
  EXPECT_NEAR(ContrastedCosine(0.25, -kLog2), 0.0625, 1e-7);
  EXPECT_NEAR(ContrastedCosine(-0.25, kLog2), 0.5, 1e-7) << "the sign is lost";
}

TEST(ContrastedCosine, AContrastOfZeroLeavesIt) {
  EXPECT_EQ(ContrastedCosine(0.25, 0), 0.25);
  EXPECT_EQ(ContrastedCosine(-0.25, 0), -0.25);
}

}  // namespace
}  // namespace sorvanix::test
