#include "host/loader/shader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/loader/module.h"
#include "tests/host/loader/test_module/test_module.h"
#include "tests/host/services/collecting_sink.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ShaderTest : public ::testing::Test {
 protected:
  Shader Create(std::int32_t id, std::int32_t channel = ChannelColour) {
    return module.Create(id, channel).value();
  }
  static test::LifeBlock& BlockOf(Shader& shader) {
    return *static_cast<test::LifeBlock*>(shader.Instance().data);
  }
  static Shader AtLevel(Shader shader, float level) {
    Container parameters;
    parameters.Set(test::kLevelKey, level);
    shader.SetParameters(parameters);
    return shader;
  }

  LeakCheck leaks;
  CollectingSink sink;
  Host host{{.messages = &sink}};
  Module module =
      Module::Load(host, std::filesystem::path(TEST_MODULE_FOLDER) / "working.so").value();
};

TEST_F(ShaderTest, AShaderSitsInItsChannelWithItsDefaults) {
  Shader shader = Create(test::kLifeShaderId, ChannelBump);
  EXPECT_EQ(shader.PluginId(), test::kLifeShaderId);
  EXPECT_EQ(shader.Channel(), ChannelBump);
  EXPECT_EQ(shader.Instance().slots, nullptr);
  EXPECT_EQ(BlockOf(shader).level, test::kDefaultLevel);
}

TEST_F(ShaderTest, AShaderIsFreedOnce) {
  sink.texts.clear();
  {
    Shader shader = Create(test::kLifeShaderId);
    Shader moved = std::move(shader);
    Shader other = Create(test::kLifeShaderId);
    other = std::move(moved);  // frees what it held
    EXPECT_THAT(sink.texts, ElementsAre("shader freed"));
    EXPECT_EQ(BlockOf(other).level, test::kDefaultLevel);
  }
  EXPECT_THAT(sink.texts, ElementsAre("shader freed", "shader freed"));
}

TEST_F(ShaderTest, AnInstanceKeepsItsAddressWhenItsShaderIsMoved) {
  Shader shader = Create(test::kLifeShaderId);
  const ShaderInstance* instance = &shader.Instance();
  const Shader moved = std::move(shader);
  EXPECT_EQ(&moved.Instance(), instance);
}

TEST_F(ShaderTest, ParametersAreSetAskedForAndDescribed) {
  Shader shader = AtLevel(Create(test::kLifeShaderId), 0.75f);
  EXPECT_EQ(shader.Parameters().GetFloat(test::kLevelKey), 0.75f);
  EXPECT_EQ(shader.Parameters().Id(), test::kLifeShaderId);
  EXPECT_EQ(shader.ParameterTypes().GetInt(test::kLevelKey), DescribeReal);
}

TEST_F(ShaderTest, OnlyKeysThatAreThereAreSet) {
  Shader shader = AtLevel(Create(test::kLifeShaderId), 0.75f);
  shader.SetParameters(Container());
  EXPECT_EQ(shader.Parameters().GetFloat(test::kLevelKey), 0.75f);
}

TEST_F(ShaderTest, CopyAndCompare) {
  const Shader first = AtLevel(Create(test::kLifeShaderId), 0.75f);
  Shader second = Create(test::kLifeShaderId);
  EXPECT_FALSE(second.Equals(first));
  EXPECT_TRUE(second.CopyFrom(first));
  EXPECT_TRUE(second.Equals(first));
}

TEST_F(ShaderTest, ShadersOfDifferentKindsAreNeitherCopiedNorEqual) {
  Shader life = Create(test::kLifeShaderId);
  const Shader bare = Create(test::kBareShaderId);
  EXPECT_FALSE(life.CopyFrom(bare));
  EXPECT_FALSE(life.Equals(bare));
}

TEST_F(ShaderTest, WhatWriteStoresReadTakesBack) {
  Stream stream;
  EXPECT_TRUE(AtLevel(Create(test::kLifeShaderId), 0.75f).Write(stream));
  EXPECT_EQ(stream.Values(), (std::vector<StreamValue>{{0.75f}}));
  Shader shader = Create(test::kLifeShaderId);
  EXPECT_TRUE(shader.Read(stream));
  EXPECT_EQ(BlockOf(shader).level, 0.75f);
}

TEST_F(ShaderTest, EditAndInfo) {
  Shader shader = Create(test::kLifeShaderId);
  EXPECT_TRUE(shader.Edit());
  EXPECT_EQ(BlockOf(shader).level, 2 * test::kDefaultLevel);
  EXPECT_EQ(shader.Info(), test::kLifeInfo);
}

TEST_F(ShaderTest, ARenderIsPreparedAndUndoneOnce) {
  Shader shader = Create(test::kLifeShaderId);
  const RenderInit init = {};
  EXPECT_TRUE(shader.InitRender(init));
  shader.FreeRender();
  shader.FreeRender();
  EXPECT_EQ(BlockOf(shader).initRenders, 1);
  EXPECT_EQ(BlockOf(shader).freeRenders, 1);
}

TEST_F(ShaderTest, PreparingAgainUndoesTheFormerRenderFirst) {
  Shader shader = Create(test::kLifeShaderId);
  const RenderInit init = {};
  shader.InitRender(init);
  shader.InitRender(init);
  EXPECT_EQ(BlockOf(shader).initRenders, 2);
  EXPECT_EQ(BlockOf(shader).freeRenders, 1);
}

// What a shader built before it found that it cannot take part must go too.
TEST_F(ShaderTest, ARenderThatCannotBePreparedIsUndoneAllTheSame) {
  Shader shader = AtLevel(Create(test::kLifeShaderId), test::kLevelThatCannotRender);
  EXPECT_FALSE(shader.InitRender({}));
  shader.FreeRender();
  EXPECT_EQ(BlockOf(shader).freeRenders, 1);
}

TEST_F(ShaderTest, OutputIsTheShadersColour) {
  ChannelSample sample = {};
  sample.uvw = {0.25f, 0.5f, 0.75f};
  EXPECT_EQ(Create(test::kLifeShaderId).Output(sample).y, test::kDefaultLevel);
  EXPECT_EQ(Create(test::kBareShaderId).Output(sample).z, 0.75f);
}

TEST_F(ShaderTest, ForCallbacksThatAreNotThereTheHostAnswers) {
  sink.texts.clear();
  {
    Shader shader = Create(test::kEmptyShaderId);
    const Shader other = Create(test::kEmptyShaderId);
    EXPECT_EQ(shader.Instance().data, nullptr);
    EXPECT_TRUE(shader.CopyFrom(other));
    EXPECT_TRUE(shader.Equals(other));
    Stream stream;
    EXPECT_TRUE(shader.Write(stream));
    EXPECT_TRUE(shader.Read(stream));
    EXPECT_TRUE(stream.Values().empty());
    EXPECT_FALSE(shader.Edit());
    EXPECT_EQ(shader.Info(), 0u);
    Container payload;
    EXPECT_EQ(shader.Message(MessageGetParameters, payload), 1);
    EXPECT_EQ(shader.Parameters().Size(), 0u);
    EXPECT_TRUE(shader.InitRender({}));
    shader.FreeRender();
    ChannelSample sample = {};
    const Vector black = shader.Output(sample);
    EXPECT_EQ(black.x, 0.0f);
    EXPECT_EQ(black.y, 0.0f);
    EXPECT_EQ(black.z, 0.0f);
  }
  EXPECT_THAT(sink.texts, IsEmpty());
}

}  // namespace
}  // namespace sorvanix::host
