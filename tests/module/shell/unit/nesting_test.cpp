// Which shaders filters hand their footprint to, and how the mark gets into a linked shader.
#include "module/shell/nesting.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <cstring>

#include "module/shaders/filters/hue.h"
#include "module/shaders/generators/noise_2d.h"
#include "module/shell/module_state.h"
#include "tests/support/fake_host.h"

namespace sorvanix::test {
namespace {

TEST(FilterAwareness, AllButThreeShadersTakePart) {
  for (const std::int32_t id :
       {PluginIdNoise3D, PluginIdTiles, PluginIdFusion, PluginIdDistorter, PluginIdBrightContrast,
        PluginIdColorizer, PluginIdGradient, PluginIdNoise2D, PluginIdFalloff, PluginIdProjector,
        PluginIdProximal, PluginIdLumas, PluginIdHue, PluginIdPosterizer}) {
    EXPECT_TRUE(IsFilterAware(id)) << id;
  }
  for (const std::int32_t id : {PluginIdFresnel, PluginIdBuffy, PluginIdBanj}) {
    EXPECT_FALSE(IsFilterAware(id)) << id;
  }
}

TEST(FilterAwareness, ForeignShadersDoNot) {
  for (const std::int32_t id : {0, -1, 1, 4711}) {
    EXPECT_FALSE(IsFilterAware(id)) << id;
  }
}

struct MarkNestedTest : ::testing::Test {
  FakeHost host;
  ScriptedLink link{1};

  MarkNestedTest() { hostApi = host.api; }
  ~MarkNestedTest() override { hostApi = {}; }

  // What `nested` is in the linked shader's block, as a block of this type.
  template <class Block>
  std::int32_t& Nested() {
    return static_cast<Block*>(link.instance.data)->nested;
  }
};

TEST_F(MarkNestedTest, SetsTheMarkWhereTheShaderKeepsIt) {
  link.HoldShader(PluginIdNoise2D);
  MarkNested(link.handle());
  EXPECT_EQ(Nested<Noise2DBlock>(), 1);
  link.HoldShader(PluginIdHue);
  MarkNested(link.handle());
  EXPECT_EQ(Nested<HueBlock>(), 1);
}

TEST_F(MarkNestedTest, AndNothingElse) {
  link.HoldShader(PluginIdHue);
  MarkNested(link.handle());
  Nested<HueBlock>() = 0;
  const HueBlock clear = {};
  EXPECT_EQ(std::memcmp(link.instance.data, &clear, sizeof clear), 0);
}

TEST_F(MarkNestedTest, LeavesAloneWhatKeepsNoMark) {
  for (const std::int32_t id : {int{PluginIdBuffy}, int{PluginIdFresnel}, 4711}) {
    link.HoldShader(id);
    MarkNested(link.handle());
    const unsigned char clear[1024] = {};
    EXPECT_EQ(std::memcmp(link.instance.data, clear, sizeof clear), 0) << id;
  }
}

TEST_F(MarkNestedTest, ToleratesWhatHoldsNoShader) {
  MarkNested(nullptr);
  MarkNested(link.handle());
  link.HoldShader(PluginIdHue);
  link.instance.data = nullptr;
  MarkNested(link.handle());
  EXPECT_EQ(link.instance.data, nullptr);
}

}  // namespace
}  // namespace sorvanix::test
