// What tests of filters share: a filter with scripted links, a render to read it in, and the checks
// of its saved form and its messages.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {

using Values = std::vector<StreamValue>;

/// A filter with blocks of its own type. Links hold nothing at first.
template <class Block, std::int32_t pluginId>
struct FilterTest : ::testing::Test {
  StartedModule started;
  FakeHost& host = started.host;
  ShaderUnderTest shader{started, pluginId};
  ShaderRecord record = shader.record;
  ShaderInstance& instance = shader.instance;
  Block& block = shader.block<Block>();
  RenderContext render = {};
  TextureTag tag = {};
  ChannelSample sample = {};

  FilterTest() { FakeHost::cpuIndex = 0; }
  ~FilterTest() override { FakeHost::cpuIndex = 0; }

  static ScriptedLink& Link(const ChannelLink* link) { return ScriptedLink::Of(link); }

  std::int32_t InitRender(std::int32_t cpus = 1) {
    host.cpuCount = cpus;
    const RenderInit init = {&render, nullptr};
    return record.InitRender(&instance, &init);
  }
  void BeginRender(std::int32_t cpus = 1) {
    ASSERT_EQ(InitRender(cpus), 0);
    sample.render = &render;
    host.calls.clear();
  }
  /// The head of the filter's own slot.
  FootprintBlock& Slot(std::int32_t cpu, std::int32_t stride) {
    return *reinterpret_cast<FootprintBlock*>(static_cast<char*>(instance.slots) + cpu * stride);
  }
  Vector Output() { return shader.Output(sample); }
  /// What the filter makes of a colour, outside a render.
  Vector Filtered(const Vector& colour) {
    Link(block.input).content.colour = colour;
    return Output();
  }
  /// The same of a grey.
  float FilteredGrey(float value) { return Filtered({value, value, value}).x; }

  // --- the saved form ---

  Values Written() {
    FakeStream stream;
    EXPECT_EQ(record.Write(&instance, stream.handle()), 1);
    return stream.values;
  }
  /// Reads a file, and checks that it was read up to its end and no further.
  void ReadFile(std::initializer_list<Values> parts) {
    FakeStream stream;
    for (const Values& part : parts) {
      stream.values.insert(stream.values.end(), part.begin(), part.end());
    }
    const std::size_t end = stream.values.size();
    stream.values.push_back(StreamValue::Int(4711));
    EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
    EXPECT_EQ(stream.mismatches, 0);
    EXPECT_EQ(stream.position, end) << "the next object starts here";
  }
};

inline void ExpectVector(const Vector& actual, const Vector& expected, double bound = 1e-6) {
  EXPECT_NEAR(actual.x, expected.x, bound);
  EXPECT_NEAR(actual.y, expected.y, bound);
  EXPECT_NEAR(actual.z, expected.z, bound);
}
inline void ExpectExactly(const Vector& actual, const Vector& expected) {
  EXPECT_EQ(actual.x, expected.x);
  EXPECT_EQ(actual.y, expected.y);
  EXPECT_EQ(actual.z, expected.z);
}

/// A parameter with its type word and its value in the block under test.
struct ParameterRow {
  std::int32_t key;
  FakeValue describe;
  FakeValue value;
};

/// Checks the answers to the get and describe messages: these parameters and inputs, no others.
inline void ExpectParameters(ShaderUnderTest& shader, const std::vector<ParameterRow>& rows,
                             const std::vector<std::int32_t>& inputs, std::size_t knotKeys = 0) {
  for (const std::int32_t message : {MessageGetParameters, MessageDescribeParameters}) {
    FakeContainer answer;
    EXPECT_EQ(shader.Message(message, answer), 1);
    EXPECT_EQ(answer.entries.size(), rows.size() + inputs.size() + knotKeys);
    for (const ParameterRow& row : rows) {
      const FakeValue* value = answer.Find(row.key);
      ASSERT_NE(value, nullptr) << row.key;
      EXPECT_TRUE(SameValue(*value, message == MessageGetParameters ? row.value : row.describe))
          << row.key;
    }
    for (const std::int32_t key : inputs) EXPECT_NO_THROW(answer.Inner(key)) << key;
  }
}

}  // namespace sorvanix::test
