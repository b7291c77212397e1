// The compiler rounds where the module does: a component narrowed to float keeps no wider bits.
#include <gtest/gtest.h>

#include "module/shaders/generators/gradient.h"
#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

// The four colours of a new Gradient are black and red, yellow and nothing, so its green mixes 1
// and 0 along u, is narrowed, and grows with v. g++ 12 left the narrowing out in one component of
// two.
TEST(Narrowing, StandsBetweenTwoMixesOfAColour) {
  const StartedModule started;
  ShaderUnderTest shader(started, PluginIdGradient);
  shader.block<GradientBlock>().type = GradientFourColours;
  for (int i = 1; i < 1000; ++i) {
    ChannelSample sample = {};
    sample.uvw = {static_cast<float>(i) / 1001, 1 - static_cast<float>(i) / 1999, 0};
    const volatile float alongU = static_cast<float>(1 - double{sample.uvw.x});
    const volatile float green = static_cast<float>(double{alongU} * sample.uvw.y);
    EXPECT_EQ(shader.Output(sample).y, green) << i;
  }
}

}  // namespace
}  // namespace sorvanix::test
