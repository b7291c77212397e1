// 2D Noise where something is missing: the payload of a message, the stream, the block, memory.
#include <gtest/gtest.h>

#include <cstring>

#include "module/shaders/generators/noise_2d.h"
#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

struct Noise2DMissingTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest shader{started, PluginIdNoise2D};
  Noise2DBlock& block = shader.block<Noise2DBlock>();
};

TEST_F(Noise2DMissingTest, MessagesWithoutAPayloadAnswerOneAndDoNothing) {
  const Noise2DBlock before = block;
  for (const std::int32_t id : {MessageSetParameters, MessageGetParameters,
                                MessageDescribeParameters, MessageReportSlots}) {
    EXPECT_EQ(shader.record.Message(&shader.instance, id, nullptr), 1) << id;
  }
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(Noise2DMissingTest, WithoutAStreamReadAndWriteChangeNothing) {
  const Noise2DBlock before = block;
  shader.record.Read(&shader.instance, nullptr);
  shader.record.Write(&shader.instance, nullptr);
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(Noise2DMissingTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  const ShaderRecord& record = shader.record;
  ShaderInstance bare = {};
  FakeStream stream;
  FakeContainer container;
  EXPECT_EQ(record.Copy(&bare, &shader.instance), 0);
  EXPECT_EQ(record.Copy(&shader.instance, &bare), 0);
  EXPECT_EQ(record.Compare(&bare, &shader.instance), 0);
  EXPECT_EQ(record.Compare(&shader.instance, &bare), 0);
  EXPECT_EQ(record.Read(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Write(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Edit(&bare), 0);
  EXPECT_EQ(record.Message(&bare, MessageGetParameters, container.handle()), 1);
  EXPECT_TRUE(stream.values.empty());
  EXPECT_TRUE(container.entries.empty());
  record.FreeRender(&bare);
  record.Free(&bare);
  Vector result = {1, 1, 1};
  ChannelSample sample = {};
  record.Output(&result, &bare, &sample);
  EXPECT_EQ(result.x, 0);
  EXPECT_EQ(result.y, 0);
  EXPECT_EQ(result.z, 0);
}

TEST_F(Noise2DMissingTest, AllocWithoutMemoryAnswersZeroAndLeavesNoBlock) {
  started.host.failAllocation = 1;
  ShaderInstance bare = {};
  bare.data = &bare;
  EXPECT_EQ(shader.record.Alloc(&bare), 0);
  EXPECT_EQ(bare.data, nullptr);
}

}  // namespace
}  // namespace sorvanix::test
