// 3D Noise in the bump channel: both forms of its bump, and when it bumps at all.
#include <cmath>
#include <iterator>
#include <vector>

#include "tests/module/kit/vector_matchers.h"
#include "tests/module/shaders/generators/noise_3d_fixture.h"

namespace sorvanix::test {
namespace {

struct Noise3DBumpTest : Noise3DTest {
  Noise3DBumpTest() {
    BeginRender();
    instance.channel = ChannelBump;
    block.space = SpaceWorld;
    render.tangentU = {2, 0, 0};
    render.tangentV = {0, 0, 1};
    render.bumpNormal = {0, 1, 0};
    noise = {.base = 0.5f, .x = 0.02f, .z = 0.03f};
  }
  // The normal along this direction, and black.
  void ExpectBent(const Vector& direction, double bound = 1e-5) {
    ExpectExactly(Output(), {0, 0, 0});
    const double length = std::sqrt(direction.x * direction.x + direction.y * direction.y +
                                    direction.z * direction.z);
    EXPECT_NEAR(render.bumpNormal.x, direction.x / length, bound);
    EXPECT_NEAR(render.bumpNormal.y, direction.y / length, bound);
    EXPECT_NEAR(render.bumpNormal.z, direction.z / length, bound);
  }
  void ExpectUnbent() {
    render.bumpNormal = {0, 1, 0};
    Output();
    ExpectExactly(render.bumpNormal, {0, 1, 0});
  }
};

// Along u the points lie 0.45 * 2 to either side: b - a = -2 * 0.9 * 0.02 = -0.036, times 3.5 is
// -0.126, along (2, 0, 0). Along v d - c = -2 * 0.45 * 0.03 = -0.027, -0.0945.
TEST_F(Noise3DBumpTest, BendsBehindMinusAheadAlongBothTangents) {
  ExpectBent({-0.252f, 1, -0.0945f});
}

std::vector<Vector> allAsked;

// The order shows in noise that draws a new number at each call.
TEST_F(Noise3DBumpTest, AsksAheadBeforeBehindAndAlongUBeforeV) {
  allAsked.clear();
  host.render.unitNoiseAt = [](const Vector* p, float) noexcept {
    allAsked.push_back(*p);
    return 0.5f;
  };
  render.hitPoint = {1, 2, 3};
  Output();
  const Vector expected[] = {
      {1 + 2 * kStep, 2, 3}, {1 - 2 * kStep, 2, 3}, {1, 2, 3 + kStep}, {1, 2, 3 - kStep}};
  ASSERT_EQ(allAsked.size(), std::size(expected));
  for (std::size_t i = 0; i < allAsked.size(); ++i) ExpectVector(allAsked[i], expected[i], 1e-6);
}

TEST_F(Noise3DBumpTest, EveryCpuTakesTheStepOfSlotZero) {
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  ExpectBent({-0.252f, 1, -0.0945f});
}

// Black to (0.3, 0, 0): a tenth of the slope.
TEST_F(Noise3DBumpTest, TheHeightIsTheMeanOfTheColour) {
  block.colorB = {0.3f, 0, 0};
  ExpectBent({-0.0252f, 1, -0.00945f});
}

TEST_F(Noise3DBumpTest, SetsTheTintInBothForms) {
  for (const std::int32_t oneSided : {0, 1}) {
    block.bumpOneSided = oneSided;
    render.bumpTint = {};
    Output();
    ExpectExactly(render.bumpTint, {1, 1, 1});
  }
}

TEST_F(Noise3DBumpTest, ASlopeThatIsNoneAndNoNormalGiveTheZeroVector) {
  noise = {.base = 0.5f};
  render.bumpNormal = {};
  for (const std::int32_t oneSided : {0, 1}) {
    block.bumpOneSided = oneSided;
    Output();
    ExpectExactly(render.bumpNormal, {0, 0, 0});
  }
}

TEST_F(Noise3DBumpTest, AnEnclosingTapDoesNotMoveTheFourSamples) {
  block.nested = 1;
  OwnSlot().tap = TapPlusU;
  noise.x = 0.02f;
  ExpectBent({-0.252f, 1, -0.0945f});
}

// --- along the axes ---

// The fall over a step of 0.45 is (-0.009, 0, -0.0135), far above the limit: direction
// (-2, 0, -3) / sqrt(13) = (-0.5547, 0, -0.83205); 0.4 of it and 0.6 of the normal.
TEST_F(Noise3DBumpTest, AlongTheAxesASteepFallPullsTheNormalByFourTenths) {
  block.bumpOneSided = 1;
  ExpectBent({-0.22188f, 0.6f, -0.33282f});
}

// A fall of 0.00002 is half the limit: a pull of 0.2. The base of 0.001 keeps its digits.
TEST_F(Noise3DBumpTest, AlongTheAxesAGentleFallPullsLess) {
  block.bumpOneSided = 1;
  noise = {.base = 0.001f, .x = 0.00002f / kStep};
  ExpectBent({-0.2f, 0.8f, 0}, 1e-4);
}

// The fall is (0, -1, 0), its product with the normal -1. A normal of unit length would not show
// it: mixed with its opposite and normalised, it is itself again.
TEST_F(Noise3DBumpTest, AFallStraightAgainstTheNormalLeavesIt) {
  block.bumpOneSided = 1;
  noise = {.base = 0.5f, .y = 0.02f};
  render.bumpNormal = {0, 1, 0.5f};
  ExpectExactly(Output(), {0, 0, 0});
  ExpectExactly(render.bumpNormal, {0, 1, 0.5f});
}

// --- when it bumps ---

TEST_F(Noise3DBumpTest, WithoutSlotsItShowsItsColour) {
  record.FreeRender(&instance);
  EXPECT_FLOAT_EQ(Grey(), 0.5f);
  ExpectUnbent();
  ExpectExactly(render.bumpTint, {0, 0, 0});
}

TEST_F(Noise3DBumpTest, AnyOtherChannelShowsItsColour) {
  for (const std::int32_t channel : {-1, 0, 1, 5, 7, 8427}) {
    instance.channel = channel;
    EXPECT_FLOAT_EQ(Grey(), 0.5f) << channel;
    ExpectUnbent();
  }
}

// The mark also makes it stand alone: it reads its own point, not the slot's.
TEST_F(Noise3DBumpTest, OuterChannel8427OfTheCallingCpuBumpsInEveryChannel) {
  BeginRender(2);
  instance.channel = ChannelColour;
  block.nested = 1;
  block.space = SpaceTexture;
  render.textureTag = &tag;
  tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
  render.localHitPoint = {1, 2, 3};
  OwnSlot(0).outerChannel = ChannelStandalone;
  OwnSlot(1).footprint[0] = {50, 50, 50};
  ExpectBent({-0.252f, 1, -0.0945f});
  EXPECT_NEAR(asked.z, 3 - kStep, 1e-5) << "the last of the four";
  FakeHost::cpuIndex = 1;
  EXPECT_NE(Output().x, 0) << "not the mark of another CPU";
  EXPECT_EQ(asked.x, 50);
}

// --- the law: the bend is the difference of what the shader itself shows ---

float Waves(const Vector* p, float) noexcept {
  return static_cast<float>(0.5 + 0.2 * std::sin(1.3 * p->x + 0.7 * p->y) +
                            0.2 * std::cos(0.9 * p->z - 1.1 * p->x));
}

TEST_F(Noise3DBumpTest, TheBendIsTheSlopeOfTheColoursAStepToEitherSide) {
  host.render.unitNoiseAt = Waves;
  render.filteringOn = 0;  // the hit moves away from its corners
  Random random(11);
  for (int i = 0; i < 200; ++i) {
    const Vector hit = random.Point(10);
    render.tangentU = random.Point(1);
    render.tangentV = random.Point(1);
    const auto mean = [&](const Vector& tangent, float step) {
      render.hitPoint = {hit.x + step * tangent.x, hit.y + step * tangent.y,
                         hit.z + step * tangent.z};
      return double{Grey()};
    };
    instance.channel = ChannelColour;
    const double du = 3.5 * (mean(render.tangentU, -kStep) - mean(render.tangentU, kStep));
    const double dv = 3.5 * (mean(render.tangentV, -kStep) - mean(render.tangentV, kStep));
    instance.channel = ChannelBump;
    render.hitPoint = hit;
    render.bumpNormal = {0, 1, 0};
    const auto component = [&](float u, float v, double normal) {
      return static_cast<float>(normal + du * u + dv * v);
    };
    ExpectBent({component(render.tangentU.x, render.tangentV.x, 0),
                component(render.tangentU.y, render.tangentV.y, 1),
                component(render.tangentU.z, render.tangentV.z, 0)},
               2e-5);
  }
}

TEST_F(Noise3DBumpTest, AlongTheAxesTheBendIsTheFallOfTheColours) {
  host.render.unitNoiseAt = Waves;
  render.filteringOn = 0;  // the hit moves away from its corners
  block.bumpOneSided = 1;
  Random random(12);
  for (int i = 0; i < 200; ++i) {
    const Vector hit = random.Point(10);
    const auto mean = [&](const Vector& move) {
      render.hitPoint = {hit.x + move.x, hit.y + move.y, hit.z + move.z};
      return double{Grey()};
    };
    instance.channel = ChannelColour;
    const double here = mean({0, 0, 0});
    const double x = here - mean({kStep, 0, 0}), y = here - mean({0, kStep, 0}),
                 z = here - mean({0, 0, kStep});
    const double length = std::sqrt(x * x + y * y + z * z);
    ASSERT_GT(length, 0.00004) << "steep enough for the full pull";
    instance.channel = ChannelBump;
    render.hitPoint = hit;
    render.bumpNormal = {0, 1, 0};
    const double pull = 0.4 / length;
    ExpectBent({static_cast<float>(pull * x), static_cast<float>(0.6 + pull * y),
                static_cast<float>(pull * z)},
               1e-4);
  }
}

}  // namespace
}  // namespace sorvanix::test
