// Buffy: white in front, black behind, and nothing else.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

struct BuffyTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest buffy{started, PluginIdBuffy};
  RayRecord ray = {};
  RenderContext render = {};
  ChannelSample sample = {};

  BuffyTest() {
    render.ray = &ray;
    render.faceNormal = {0, 0, 1};
    sample.render = &render;
  }
  float Look(double x, double y, double z) {
    ray.direction[0] = x;
    ray.direction[1] = y;
    ray.direction[2] = z;
    const Vector colour = buffy.Output(sample);
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
};

TEST_F(BuffyTest, FillsOnlyOutput) {
  const ShaderRecord& record = buffy.record;
  EXPECT_EQ(record.Alloc, nullptr);
  EXPECT_EQ(record.Free, nullptr);
  EXPECT_EQ(record.Copy, nullptr);
  EXPECT_EQ(record.Compare, nullptr);
  EXPECT_EQ(record.Read, nullptr);
  EXPECT_EQ(record.Write, nullptr);
  EXPECT_EQ(record.Edit, nullptr);
  EXPECT_EQ(record.GetInfo, nullptr);
  EXPECT_EQ(record.Message, nullptr);
  EXPECT_EQ(record.InitRender, nullptr);
  EXPECT_EQ(record.FreeRender, nullptr);
}

TEST_F(BuffyTest, IsWhiteWithoutARender) {
  sample.render = nullptr;
  EXPECT_EQ(Look(0, 0, 1), 1);
}

TEST_F(BuffyTest, IsWhiteWithoutARay) {
  render.ray = nullptr;
  EXPECT_EQ(Look(0, 0, 1), 1);
}

TEST_F(BuffyTest, IsWhiteWhereTheRayMeetsTheFront) { EXPECT_EQ(Look(0, 0, -1), 1); }

TEST_F(BuffyTest, IsBlackWhereTheRayMeetsTheBack) { EXPECT_EQ(Look(0, 0, 1), 0); }

TEST_F(BuffyTest, IsWhiteWhereTheRayRunsAlongTheFace) { EXPECT_EQ(Look(1, 0, 0), 1); }

// 1e-300 times 1 is above 0 in 64-bit arithmetic and would be 0 in 32-bit.
TEST_F(BuffyTest, ReadsTheRayInDoublePrecision) { EXPECT_EQ(Look(0, 0, 1e-300), 0); }

TEST_F(BuffyTest, AnUndefinedDirectionIsWhite) { EXPECT_EQ(Look(NAN, 0, 1), 1); }

}  // namespace
}  // namespace sorvanix::test
