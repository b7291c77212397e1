// 3D Noise and Gradient inside a real filter that changes nothing: what they show and how they bend
// there, against what they do by themselves.
#include <cmath>

#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/generators/gradient.h"
#include "module/shaders/generators/noise_3d.h"
#include "tests/module/kit/vector_matchers.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

// What the filter's arithmetic leaves of a colour, three differences of which make a bend.
constexpr double kRounding = 1e-5;

struct SolidInFilterTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest filter{started, PluginIdBrightContrast};
  RenderContext render = {};
  TextureTag tag = {};
  ChannelSample sample = {};
  Random random{5};

  SolidInFilterTest() {
    FakeHost::cpuIndex = 0;
    started.host.render.unitNoiseAt = [](const Vector* p, float) noexcept {
      return static_cast<float>(0.5 + 0.2 * std::sin(1.3 * p->x + 0.7 * p->y) +
                                0.2 * std::cos(0.9 * p->z));
    };
    tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
    render.textureTag = &tag;
    sample.render = &render;
  }
  void Begin(ShaderUnderTest& shader) {
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  }
  void PutInFilter(ShaderUnderTest& shader, std::int32_t pluginId) {
    ScriptedLink::Of(filter.block<BrightContrastBlock>().input).HoldShader(shader, pluginId);
    Begin(filter);
  }
  // A place of its own for every sample.
  void MoveOn() {
    render.hitPoint = render.localHitPoint = random.Point(10);
    render.tangentU = random.Point(1);
    render.tangentV = random.Point(1);
    sample.uvw = {random.Between(0.1f, 0.9f), random.Between(0.1f, 0.9f), 0};
  }
  Vector NormalBentBy(ShaderUnderTest& shader) {
    render.bumpNormal = {0, 1, 0};
    shader.instance.channel = ChannelBump;
    ExpectExactly(shader.Output(sample), {0, 0, 0});
    return render.bumpNormal;
  }
};

struct NoiseInFilterTest : SolidInFilterTest {
  ShaderUnderTest alone{started, PluginIdNoise3D};
  ShaderUnderTest inside{started, PluginIdNoise3D};

  NoiseInFilterTest() {
    PutInFilter(inside, PluginIdNoise3D);
    Begin(alone);
  }
};

TEST_F(NoiseInFilterTest, ShowsWhatItShowsByItself) {
  for (int i = 0; i < 50; ++i) {
    MoveOn();
    ExpectVector(filter.Output(sample), alone.Output(sample), kRounding);
  }
}

// The noise's third tap goes against v so that the filter's unlike signs come out even.
TEST_F(NoiseInFilterTest, BendsAsItDoesByItself) {
  for (int i = 0; i < 50; ++i) {
    MoveOn();
    ExpectVector(NormalBentBy(filter), NormalBentBy(alone), kRounding);
  }
}

struct GradientInFilterTest : SolidInFilterTest {
  ShaderUnderTest inside{started, PluginIdGradient};
  GradientBlock& block = inside.block<GradientBlock>();

  GradientInFilterTest() {
    block.ramp.knots[0] = {{0, 0, 0}, 0, 0.5f};
    block.ramp.knots[1] = {{1, 1, 1}, 1, 0.5f};
    block.ramp.count = 2;
    block.ramp.interpolation = RampLinear;
    block.space = GradientTexture;
    PutInFilter(inside, PluginIdGradient);
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 0, 1};
    sample.uvw = {0.5f, 0.5f, 0};
  }
};

// The filter's factor is 3.5: 0.002 of the ramp between its taps in u, minus less plus.
TEST_F(GradientInFilterTest, ATextureShapeBendsByTheFiltersFactorAlongU) {
  block.type = GradientU;
  const double length = std::sqrt(1 + 0.007 * 0.007);
  ExpectVector(NormalBentBy(filter), {float(-0.007 / length), float(1 / length), 0}, kRounding);
}

// Plus less minus along v, where the ramp falls: -0.002 * 3.5. By itself it bends along v.
TEST_F(GradientInFilterTest, ATextureShapeBendsTheOtherWayAlongV) {
  block.type = GradientV;
  const double length = std::sqrt(1 + 0.007 * 0.007);
  ExpectVector(NormalBentBy(filter), {0, float(1 / length), float(-0.007 / length)}, kRounding);
}

// Over two units along z, 0.001 between the taps. The point moves against the coordinate: the first
// tap is behind, so along u it bends uphill, and along v downhill.
TEST_F(GradientInFilterTest, AShapeInSpaceBendsUphillAlongUAndDownhillAlongV) {
  block.type = GradientLinear3D;
  const double length = std::sqrt(1 + 0.0035 * 0.0035);
  block.start = {-1, 0, 0};
  block.end = {1, 0, 0};
  ExpectVector(NormalBentBy(filter), {float(0.0035 / length), float(1 / length), 0}, kRounding);
  block.start = {0, 0, -1};
  block.end = {0, 0, 1};
  ExpectVector(NormalBentBy(filter), {0, float(1 / length), float(-0.0035 / length)}, kRounding);
}

TEST_F(GradientInFilterTest, InOtherSpacesTheFilterSeesNoSlope) {
  block.type = GradientU;
  block.space = GradientWorld;
  ExpectVector(NormalBentBy(filter), {0, 1, 0}, kRounding);
}

}  // namespace
}  // namespace sorvanix::test
