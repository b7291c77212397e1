#include "host/render/lights.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <vector>

#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

constexpr Vec3 kUp = {0, 1, 0};
constexpr LitPoint kOrigin = {.point = {}, .normal = kUp};

LightRecord Omni(const Vector& position) {
  LightRecord light = {};
  light.type = LightOmni;
  light.colour = {1, 0.5f, 0.25f};
  light.position = position;
  return light;
}

LightRecord Distant(const Vector& direction) {
  LightRecord light = Omni({});
  light.type = LightDistant;
  light.direction = direction;
  return light;
}

LightSum Lit(const LightRecord& light, const LitPoint& at, const Vec3& view = {},
             double exponent = 1) {
  LightSum sum;
  Illuminate({&light, 1}, at, view, exponent, sum);
  return sum;
}

// Answers as told, and keeps what it was asked.
struct Screen : Occluder {
  bool blocks = true;
  mutable int asked = 0;
  mutable Vec3 origin, direction;
  mutable double distance = 0;
  mutable std::int32_t identity = 0;

  bool Blocks(const Vec3& o, const Vec3& d, double far, std::int32_t id) const noexcept override {
    ++asked;
    origin = o;
    direction = d;
    distance = far;
    identity = id;
    return blocks;
  }
};

TEST(Lights, DistantLightGivesTheCosine) {
  EXPECT_THAT(Lit(Distant({0, -1, 0}), kOrigin).diffuse, Vec(1, 0.5, 0.25));
  // 60 degrees away from the normal: cosine 1/2. Two digits fewer: the direction is a float.
  const auto slanted = Distant({static_cast<float>(std::sqrt(3) / 2), -0.5f, 0});
  EXPECT_THAT(Lit(slanted, kOrigin).diffuse, NearVec(0.5, 0.25, 0.125, 1e-7));
}

TEST(Lights, ASurfaceTurnedAwayGetsNothing) {
  EXPECT_THAT(Lit(Distant({0, 1, 0}), kOrigin).diffuse, Vec(0, 0, 0));
  EXPECT_THAT(Lit(Distant({1, 0, 0}), kOrigin).diffuse, Vec(0, 0, 0));
}

TEST(Lights, ASampleDoesNotLookAtTheNormal) {
  const ArrivingLight behind = SampleLight(Omni({0, -10, 0}), kOrigin);
  EXPECT_TRUE(behind.arrives);
  EXPECT_THAT(behind.direction, Vec(0, -1, 0));
  EXPECT_THAT(behind.colour, Vec(1, 0.5, 0.25));
}

TEST(Lights, FalloffInverseSquare) {
  LightRecord light = Omni({0, 200, 0});
  light.falloff = FalloffInverseSquare;
  light.range = 100;
  // (100 / 200)^2
  EXPECT_THAT(SampleLight(light, kOrigin).colour, Vec(0.25, 0.125, 0.0625));
  light.position = {0, 50, 0};
  EXPECT_THAT(SampleLight(light, kOrigin).colour, Vec(4, 2, 1));
}

TEST(Lights, FalloffInverseSquareHasABoundAtTheLightItself) {
  LightRecord light = Omni({});
  light.falloff = FalloffInverseSquare;
  light.range = 1;
  const ArrivingLight arriving = SampleLight(light, kOrigin);
  // (1 / 0.001)^2, and the normal for want of a direction.
  EXPECT_NEAR(arriving.colour.x, 1e6, 1e-3);
  EXPECT_EQ(arriving.direction, kUp);
}

TEST(Lights, FalloffLinear) {
  LightRecord light = Omni({0, 100, 0});
  light.falloff = FalloffLinear;
  light.range = 400;
  EXPECT_THAT(SampleLight(light, kOrigin).colour, Vec(0.75, 0.375, 0.1875));
  light.range = 100;
  EXPECT_FALSE(SampleLight(light, kOrigin).arrives);
  light.range = 0;
  EXPECT_FALSE(SampleLight(light, kOrigin).arrives);
}

TEST(Lights, DistantLightKnowsNoFalloff) {
  LightRecord light = Distant({0, -1, 0});
  light.falloff = FalloffInverseSquare;
  light.range = 1;
  EXPECT_THAT(SampleLight(light, kOrigin).colour, Vec(1, 0.5, 0.25));
}

TEST(Lights, SpotFadesSmoothlyFromInnerToOuterAngle) {
  LightRecord spot = Omni({0, 1, 0});
  spot.type = LightSpot;
  spot.direction = {0, -1, 0};
  spot.innerAngle = 0.25f;
  spot.outerAngle = 0.75f;
  const auto redAt = [&](double angle) {
    return SampleLight(spot, {.point = {std::tan(angle), 0, 0}, .normal = kUp}).colour.x;
  };
  EXPECT_DOUBLE_EQ(redAt(0), 1);
  EXPECT_DOUBLE_EQ(redAt(0.24), 1);
  EXPECT_NEAR(redAt(0.5), 0.5, 1e-12);  // half way
  // A quarter of the way from outside: t = 1/4, t^2 (3 - 2 t) = 2.5 / 16.
  EXPECT_NEAR(redAt(0.625), 0.15625, 1e-12);
  EXPECT_EQ(redAt(0.76), 0);
  EXPECT_FALSE(SampleLight(spot, {.point = {9, 0, 0}, .normal = kUp}).arrives);
}

TEST(Lights, SpotWithoutASoftEdgeIsHard) {
  LightRecord spot = Omni({0, 1, 0});
  spot.type = LightSpot;
  spot.direction = {0, -1, 0};
  spot.innerAngle = spot.outerAngle = 0.5f;
  const auto arrives = [&](double angle) {
    return SampleLight(spot, {.point = {std::tan(angle), 0, 0}, .normal = kUp}).arrives;
  };
  EXPECT_TRUE(arrives(0.49));
  EXPECT_FALSE(arrives(0.51));
}

TEST(Lights, AmbientLightComesFromEverywhere) {
  LightRecord light = Omni({0, -10, 0});
  light.ambient = 1;
  light.castShadows = 1;
  const Screen screen;
  const LitPoint at = {.point = {}, .normal = kUp, .shadows = &screen};
  const ArrivingLight arriving = SampleLight(light, at);
  EXPECT_TRUE(arriving.arrives);
  EXPECT_EQ(arriving.direction, kUp);
  EXPECT_THAT(Lit(light, at, kUp).diffuse, Vec(1, 0.5, 0.25));
  EXPECT_THAT(Lit(light, at, kUp).specular, Vec(0, 0, 0));
  EXPECT_EQ(screen.asked, 0);
}

TEST(Lights, AShadowIsBlackButArrives) {
  LightRecord light = Omni({0, 10, 0});
  light.castShadows = 1;
  const Screen screen;
  const ArrivingLight arriving =
      SampleLight(light, {.point = {}, .normal = kUp, .shadows = &screen, .identity = 7});
  EXPECT_TRUE(arriving.arrives);
  EXPECT_EQ(arriving.colour, Vec3(0, 0, 0));
  EXPECT_THAT(arriving.direction, Vec(0, 1, 0));
  EXPECT_EQ(screen.identity, 7);
  EXPECT_THAT(screen.origin, Vec(0, 1e-3, 0));
  EXPECT_DOUBLE_EQ(screen.distance, 10);
}

TEST(Lights, ShadowRaysStartOnTheSideOfTheLight) {
  LightRecord light = Distant({0, 1, 0});  // from below
  light.castShadows = 1;
  const Screen screen;
  SampleLight(light, {.point = {}, .normal = kUp, .shadows = &screen});
  EXPECT_THAT(screen.origin, Vec(0, -1e-3, 0));
  EXPECT_EQ(screen.distance, std::numeric_limits<double>::infinity());
}

TEST(Lights, LightsWithoutShadowsDoNotAsk) {
  const Screen screen;
  const LitPoint at = {.point = {}, .normal = kUp, .shadows = &screen};
  EXPECT_THAT(SampleLight(Omni({0, 10, 0}), at).colour, Vec(1, 0.5, 0.25));
  EXPECT_EQ(screen.asked, 0);
}

TEST(Lights, ContrastBendsTheCosine) {
  LightRecord light = Distant({static_cast<float>(-std::sqrt(15) / 4), -0.25f, 0});
  light.contrast = static_cast<float>(std::numbers::ln2);
  // Cosine 1/4 to the power e^-ln 2 = 1/2.
  EXPECT_NEAR(Lit(light, kOrigin).diffuse.x, 0.5, 1e-6);
  light.contrast = static_cast<float>(-std::numbers::ln2);
  EXPECT_NEAR(Lit(light, kOrigin).diffuse.x, 0.0625, 1e-6);
}

TEST(Lights, HighlightIsTheMirrorCosineRaised) {
  const LightRecord light = Distant({0, -1, 0});
  const Vec3 slanted = {std::sqrt(3) / 2, 0.5, 0};  // R = up, R.V = 1/2
  EXPECT_THAT(Lit(light, kOrigin, kUp, 50).specular, Vec(1, 0.5, 0.25));
  EXPECT_THAT(Lit(light, kOrigin, slanted, 2).specular, Vec(0.25, 0.125, 0.0625));
  EXPECT_THAT(Lit(light, kOrigin, slanted, 0).specular, Vec(1, 0.5, 0.25));
}

TEST(Lights, ExtremeExponentsStayFinite) {
  const LightRecord light = Distant({0, -1, 0});
  const Vec3 slanted = {std::sqrt(3) / 2, 0.5, 0};
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Lit(light, kOrigin, slanted, infinity).specular.x, 0);
  EXPECT_EQ(Lit(light, kOrigin, kUp, infinity).specular.x, 1);
  // Negative and NaN act as 0.
  EXPECT_EQ(Lit(light, kOrigin, slanted, -5).specular.x, 1);
  EXPECT_EQ(Lit(light, kOrigin, slanted, std::nan("")).specular.x, 1);
  // The normal of a caller need not be a unit vector: the mirror cosine stays within 1.
  EXPECT_EQ(Lit(light, {.point = {}, .normal = {0, 2, 0}}, kUp, infinity).specular.x, 1);
}

TEST(Lights, WithoutAnEyeThereIsNoHighlight) {
  EXPECT_EQ(Lit(Distant({0, -1, 0}), kOrigin, {}, 0).specular, Vec3(0, 0, 0));
}

TEST(Lights, SwitchesLeaveOneShareOut) {
  LightRecord light = Distant({0, -1, 0});
  light.noDiffuse = 1;
  EXPECT_EQ(Lit(light, kOrigin, kUp).diffuse.x, 0);
  EXPECT_EQ(Lit(light, kOrigin, kUp).specular.x, 1);
  light.noDiffuse = 0;
  light.noSpecular = 1;
  EXPECT_EQ(Lit(light, kOrigin, kUp).diffuse.x, 1);
  EXPECT_EQ(Lit(light, kOrigin, kUp).specular.x, 0);
}

TEST(Lights, SumsAreAddedTo) {
  const std::vector<LightRecord> lights = {Distant({0, -1, 0}), Distant({0, -1, 0})};
  LightSum sum = {.diffuse = {1, 1, 1}, .specular = {2, 2, 2}};
  Illuminate(lights, kOrigin, kUp, 1, sum);
  EXPECT_THAT(sum.diffuse, Vec(3, 2, 1.5));
  EXPECT_THAT(sum.specular, Vec(4, 3, 2.5));
}

TEST(Lights, AnAreaLightWithoutAreaIsAPoint) {
  LightRecord light = Omni({0, 10, 0});
  for (const int type : {LightRectangle, LightDisc}) {
    light.type = type;
    EXPECT_THAT(Lit(light, kOrigin, kUp).diffuse, Vec(1, 0.5, 0.25));
    EXPECT_THAT(Lit(light, kOrigin, kUp).specular, Vec(1, 0.5, 0.25));
    EXPECT_THAT(AreaLightDiffuse(light, kOrigin), Vec(1, 0.5, 0.25));
  }
}

TEST(Lights, AnAreaLightIsTheMeanOfSixteenPoints) {
  LightRecord light = Omni({0, 3, 0});
  light.type = LightRectangle;
  light.areaU = {8, 0, 0};
  // Points at x = -6, -2, 2, 6, each four times, 3 above: cosines 3/sqrt(45) and 3/sqrt(13).
  const double mean = (3 / std::sqrt(45) + 3 / std::sqrt(13)) / 2;
  EXPECT_THAT(Lit(light, kOrigin).diffuse, Vec(mean, mean / 2, mean / 4));
  EXPECT_THAT(AreaLightDiffuse(light, kOrigin), Vec(mean, mean / 2, mean / 4));
}

TEST(Lights, AnAreaLightThrowsAShadowFromEachPoint) {
  LightRecord light = Omni({0, 3, 0});
  light.type = LightDisc;
  light.areaU = {1, 0, 0};
  light.areaW = {0, 0, 1};
  light.castShadows = 1;
  const Screen screen;
  const LitPoint at = {.point = {}, .normal = kUp, .shadows = &screen};
  EXPECT_EQ(AreaLightDiffuse(light, at), Vec3(0, 0, 0));
  EXPECT_EQ(screen.asked, 16);
}

TEST(Lights, AnAreaLightHasItsContrast) {
  LightRecord light = Omni({static_cast<float>(std::sqrt(15)), 1, 0});  // cosine 1/4
  light.type = LightRectangle;
  light.contrast = static_cast<float>(std::numbers::ln2);
  EXPECT_NEAR(AreaLightDiffuse(light, kOrigin).x, 0.5, 1e-6);
}

}  // namespace
}  // namespace sorvanix::host
