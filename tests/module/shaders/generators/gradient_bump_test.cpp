// Gradient in the bump channel: how it bends the normal, and what it leaves alone.
#include <cmath>

#include "tests/module/kit/vector_matchers.h"
#include "tests/module/shaders/generators/gradient_space_fixture.h"

namespace sorvanix::test {
namespace {

struct GradientBumpTest : GradientSpaceTest {
  GradientBumpTest() {
    instance.channel = ChannelBump;
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 1, 0};
    render.bumpNormal = {0, 0, 1};
    sample.uvw = {0.5f, 0.5f, 0};
  }
  void ExpectBent(double x, double y) {
    ExpectExactly(Output(), {0, 0, 0});
    const double length = std::sqrt(x * x + y * y + 1);
    EXPECT_NEAR(render.bumpNormal.x, x / length, 2e-5);
    EXPECT_NEAR(render.bumpNormal.y, y / length, 2e-5);
    EXPECT_NEAR(render.bumpNormal.z, 1 / length, 2e-5);
  }
};

// Behind less ahead: -0.002 * 100 along u.
TEST_F(GradientBumpTest, ARisingURampBendsAgainstU) {
  block.type = GradientU;
  ExpectBent(-0.2, 0);
}

// The ramp falls along v: 0.002 * 100.
TEST_F(GradientBumpTest, AFallingVRampBendsAlongV) {
  block.type = GradientV;
  ExpectBent(0, 0.2);
}

// Over 2 units of x, a step of 0.001 to either side is 0.001 of the ramp: -0.001 * 4.
TEST_F(GradientBumpTest, AShapeInSpaceBendsByItsOwnFactor) {
  block.type = GradientLinear3D;
  block.space = GradientWorld;
  block.start = {5, 0, 0};
  block.end = {7, 0, 0};
  ExpectBent(-0.004, 0);
}

// Below the table a number bends as U does; above it, as the shapes in space, but at a u of 0.
TEST_F(GradientBumpTest, TypesOffTheTableBendAsUOrNotAtAll) {
  for (const std::int32_t type : {-1, INT32_MIN, 11, INT32_MAX}) {
    block.type = type;
    render.bumpNormal = {0, 0, 1};
    ExpectBent(type < 0 ? -0.2 : 0, 0);
  }
}

TEST_F(GradientBumpTest, WithoutARenderItIsBlackAndNothingChanges) {
  sample.render = nullptr;
  ExpectExactly(Output(), {0, 0, 0});
  ExpectExactly(render.bumpNormal, {0, 0, 1});
  ExpectExactly(sample.uvw, {0.5f, 0.5f, 0});
}

TEST_F(GradientBumpTest, WithoutSlotsItBendsAsWell) {
  record.FreeRender(&instance);
  block.type = GradientU;
  ExpectBent(-0.2, 0);
}

TEST_F(GradientBumpTest, AnEvenRampAndNoNormalGiveTheZeroVector) {
  render.bumpNormal = {};
  block.ramp.count = 1;
  ExpectExactly(Output(), {0, 0, 0});
  ExpectExactly(render.bumpNormal, {0, 0, 0});
}

TEST_F(GradientBumpTest, TheSamplesCoordinateStays) {
  block.nested = 1;
  OwnSlot().uvwPoint = {0.25f, 0.75f, 0};
  Output();
  ExpectExactly(sample.uvw, {0.5f, 0.5f, 0});
}

// --- inside a filter: the slot's place, without the step of a tap ---

struct NestedGradientBumpTest : GradientBumpTest {
  NestedGradientBumpTest() {
    block.nested = 1;
    block.space = GradientTexture;
    render.textureTag = &tag;
  }
};

// The slot lies straight beside the middle of the circle, which rises by 1.4142 along u and not
// along v: -0.002 * 1.4142 * 100. The sample lies below it; at a tap's place, 0.001 further in v,
// it would rise along v as well.
TEST_F(NestedGradientBumpTest, ATextureShapeBendsAtTheSlotsCoordinate) {
  block.type = GradientCircle;
  OwnSlot().uvwPoint = {0.75f, 0.5f, 0};
  OwnSlot().tap = TapPlusV;
  sample.uvw = {0.5f, 0.75f, 0};
  ExpectBent(-0.28284, 0);
  ExpectExactly(sample.uvw, {0.5f, 0.75f, 0});
}

// The slot lies straight above the middle of the sphere, at half its radius: along v it rises by a
// half, -0.002 / 2 * 4, and along u to both sides evenly. A tap would move it along u.
TEST_F(NestedGradientBumpTest, AShapeInSpaceBendsAtTheSlotsPoint) {
  block.type = GradientSphere3D;
  block.start = {0, 0, 0};
  block.radius = 2;
  OwnSlot().footprint[0] = {0, 1, 0};
  OwnSlot().tap = TapPlusU;
  render.tangentU = {100, 0, 0};
  ExpectBent(0, -0.004);
}

// --- the law: the bend is the difference of the colours that Output itself shows ---

TEST_F(GradientBumpTest, EveryShapeInSpaceBendsByTheSlopeOfItsOwnColours) {
  constexpr float kStep = 0.001f, kTangent = 10;
  render.tangentU = {kTangent, 0, 0};
  render.tangentV = {0, kTangent, 0};
  block.space = GradientWorld;
  block.start = {0, 0, 0};
  block.end = {0.6f, 1.2f, 0.9f};
  block.radius = 2;
  Random random(8);
  for (const std::int32_t type : {GradientLinear3D, GradientCylinder3D, GradientSphere3D}) {
    block.type = type;
    for (int i = 0; i < 20; ++i) {
      const Vector hit = {random.Between(0.2f, 0.9f), random.Between(0.2f, 0.9f),
                          random.Between(-0.1f, 0.1f)};
      const auto shown = [&](float du, float dv) {
        return double{ShownAt({hit.x + du * kTangent, hit.y + dv * kTangent, hit.z})};
      };
      instance.channel = ChannelColour;
      const double du = (shown(-kStep, 0) - shown(kStep, 0)) * 4;
      const double dv = (shown(0, -kStep) - shown(0, kStep)) * 4;
      ASSERT_GT(std::fabs(du) + std::fabs(dv), 0.001) << "within the ramp";
      instance.channel = ChannelBump;
      render.hitPoint = hit;
      render.bumpNormal = {0, 0, 1};
      ExpectBent(du * kTangent, dv * kTangent);
    }
  }
}

TEST_F(GradientBumpTest, EveryTextureShapeBendsByTheSlopeOfItsOwnColours) {
  constexpr float kStep = 0.001f;
  Random random(7);
  for (std::int32_t type = 0; type < GradientLinear3D; ++type) {
    block.type = type;
    for (int i = 0; i < 20; ++i) {
      const Vector uvw = {random.Between(0.1f, 0.9f), random.Between(0.1f, 0.9f), 0};
      const auto mean = [&](float du, float dv) {
        sample.uvw = {uvw.x + du, uvw.y + dv, 0};
        const Vector colour = Output();
        return (double{colour.x} + colour.y + colour.z) / 3;
      };
      instance.channel = ChannelColour;
      const double du = (mean(-kStep, 0) - mean(kStep, 0)) * 100;
      const double dv = (mean(0, -kStep) - mean(0, kStep)) * 100;
      instance.channel = ChannelBump;
      sample.uvw = uvw;
      render.bumpNormal = {0, 0, 1};
      ExpectBent(du, dv);
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
