// Every registered shader on an instance without a block, as it stays where memory is short.
#include <gtest/gtest.h>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

// Whether a shader has a block at all: one without answers from its surface alone.
bool HasBlock(const Registration& shader) { return shader.record.Alloc != nullptr; }

constexpr std::int32_t kMessages[] = {MessageSetParameters,
                                      MessageGetParameters,
                                      MessageDescribeParameters,
                                      MessageForward,
                                      0,
                                      INT32_MAX};

struct WithoutABlockTest : ::testing::Test {
  StartedModule started;
  FakeHost& host = started.host;

  // For each shader with a block: its record and an instance without one.
  template <class Check>
  void ForEachShader(const Check& check) {
    int shaders = 0;
    for (const Registration& shader : host.registrations) {
      if (!HasBlock(shader)) continue;
      SCOPED_TRACE(shader.id);
      ++shaders;
      ShaderInstance bare = {};
      check(shader.record, bare);
      EXPECT_EQ(bare.data, nullptr);
      EXPECT_EQ(bare.slots, nullptr);
    }
    EXPECT_EQ(shaders, 16);
  }
};

TEST_F(WithoutABlockTest, NothingIsCopiedAndNothingIsEqual) {
  ForEachShader([](const ShaderRecord& record, ShaderInstance& bare) {
    ShaderInstance whole = {};
    ASSERT_EQ(record.Alloc(&whole), 1);
    EXPECT_EQ(record.Copy(&bare, &whole), 0);
    EXPECT_EQ(record.Copy(&whole, &bare), 0);
    EXPECT_EQ(record.Compare(&bare, &whole), 0);
    EXPECT_EQ(record.Compare(&whole, &bare), 0);
    EXPECT_EQ(record.Compare(&bare, &bare), 0);
    record.Free(&whole);
  });
}

TEST_F(WithoutABlockTest, NothingIsReadAndNothingWritten) {
  ForEachShader([](const ShaderRecord& record, ShaderInstance& bare) {
    FakeStream empty, file;
    EXPECT_EQ(record.Write(&bare, empty.handle()), 0);
    EXPECT_TRUE(empty.values.empty());
    file.values = {StreamValue::Int(20000818), StreamValue::Int(1)};
    EXPECT_EQ(record.Read(&bare, file.handle()), 0);
    EXPECT_EQ(file.position, 0u);
  });
}

TEST_F(WithoutABlockTest, MessagesAreAnsweredAndChangeNothing) {
  ForEachShader([](const ShaderRecord& record, ShaderInstance& bare) {
    for (const std::int32_t id : kMessages) {
      FakeContainer payload;
      payload.Set(1000, Word{1});
      EXPECT_EQ(record.Message(&bare, id, payload.handle()), 1) << id;
      EXPECT_EQ(payload.entries.size(), 1u) << id;
    }
    EXPECT_EQ(record.Edit(&bare), 0);
  });
}

TEST_F(WithoutABlockTest, ARenderMakesNoSlotsAndShowsBlack) {
  ForEachShader([this](const ShaderRecord& record, ShaderInstance& bare) {
    RenderContext render = {};
    const RenderInit init = {&render, nullptr};
    const int blocks = host.liveBlocks();
    if (record.InitRender != nullptr) record.InitRender(&bare, &init);
    for (RenderContext* in : {&render, static_cast<RenderContext*>(nullptr)}) {
      for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
        bare.channel = channel;
        ChannelSample sample = {};
        sample.render = in;
        Vector result = {9, 9, 9};
        record.Output(&result, &bare, &sample);
        ExpectExactly(result, {0, 0, 0});
      }
    }
    if (record.FreeRender != nullptr) record.FreeRender(&bare);
    record.Free(&bare);
    EXPECT_EQ(host.liveBlocks(), blocks);
  });
}

}  // namespace
}  // namespace sorvanix::test
