// The highlight of a brushed surface: its laws, and values from Ward's formula.
#include "module/shaders/surface/ward.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sorvanix::test {
namespace {

constexpr Vector kUp = {0, 0, 1};

// A unit vector that leans from the normal by `angle`, towards `azimuth`.
Vector Leaning(double angle, double azimuth) {
  return {static_cast<float>(std::sin(angle) * std::cos(azimuth)),
          static_cast<float>(std::sin(angle) * std::sin(azimuth)),
          static_cast<float>(std::cos(angle))};
}

WardAxes Brushed(double azimuth, double alongWidth, double acrossWidth) {
  const Vector along = Leaning(1.5707963267948966, azimuth);
  return {Scale(static_cast<float>(1 / alongWidth), along),
          Scale(static_cast<float>(1 / acrossWidth), Cross(kUp, along))};
}

double Highlight(const WardAxes& axes, const Vector& light, const Vector& eye) {
  return WardHighlight(axes, Normalized(Add(light, eye)), kUp, Dot(light, kUp), Dot(eye, kUp));
}

// H is the normal: exp(0) over the root of 0.8 x 0.8.
TEST(Ward, InTheMirrorDirectionOnlyTheCosinesCount) {
  const WardAxes axes = Brushed(0.7, 0.1, 0.3);
  EXPECT_NEAR(Highlight(axes, {0.6f, 0, 0.8f}, {-0.6f, 0, 0.8f}), 1 / 0.8, 1e-6);
}

// L = (0.6, 0, 0.8), V = N: H = (0.6, 0, 1.8) / sqrt 3.6, so (H.X)^2 = 0.36 / 3.6 = 0.1 and
// w = 1.8 / sqrt 3.6 + 1 = 1.9486833. With a width of 1 along: exp(-0.2 / 1.9486833) / sqrt 0.8
// = 0.9024578 / 0.8944272 = 1.0089785.
// A light from the side meets the width of 0.5 across: exp(-0.8 / 1.9486833) / sqrt 0.8
// = 0.6632962 / 0.8944272 = 0.7415877.
TEST(Ward, TheWidthsScaleTheirDirections) {
  const WardAxes axes = Brushed(0, 1, 0.5);
  EXPECT_NEAR(Highlight(axes, {0.6f, 0, 0.8f}, kUp), 1.0089785, 2e-6);
  EXPECT_NEAR(Highlight(axes, {0, 0.6f, 0.8f}, kUp), 0.7415877, 2e-6);
}

TEST(Ward, LightAndEyeMayBeSwapped) {
  const WardAxes axes = Brushed(0.4, 0.2, 0.05);
  for (double lean = 0.1; lean < 1.4; lean += 0.2) {
    for (double azimuth = 0; azimuth < 6; azimuth += 0.5) {
      const Vector light = Leaning(lean, azimuth);
      const Vector eye = Leaning(1.5 - lean, 2 + 0.3 * azimuth);
      EXPECT_EQ(Highlight(axes, light, eye), Highlight(axes, eye, light));
    }
  }
}

TEST(Ward, EqualWidthsDoNotSeeTheBrushing) {
  const Vector light = Leaning(0.6, 1), eye = Leaning(0.3, 4);
  const double still = Highlight(Brushed(0, 0.4, 0.4), light, eye);
  for (double azimuth = 0.1; azimuth < 6.2; azimuth += 0.3) {
    EXPECT_NEAR(Highlight(Brushed(azimuth, 0.4, 0.4), light, eye), still, 1e-5 * still);
  }
}

TEST(Ward, AGreaterWidthIsNowhereDarker) {
  for (double lean = 0; lean < 1.5; lean += 0.1) {
    const Vector light = Leaning(lean, 0.3);
    EXPECT_LE(Highlight(Brushed(0, 0.2, 0.2), light, kUp),
              Highlight(Brushed(0, 0.4, 0.2), light, kUp));
  }
}

// Zero axes are what a width without end leaves.
TEST(Ward, ZeroAxesShineEverywhere) {
  EXPECT_NEAR(Highlight({}, {0.6f, 0, 0.8f}, kUp), 1 / std::sqrt(0.8), 1e-6);
}

// The root of 0.02 x 0.02 is 0.02, below 0.1.
TEST(Ward, AGrazingViewRaisesTheLevelTenTimesAtMost) {
  const Vector light = {0.9998f, 0, 0.02f}, eye = {-0.9998f, 0, 0.02f};
  EXPECT_NEAR(Highlight({}, light, eye), 10, 1e-6);
}

}  // namespace
}  // namespace sorvanix::test
