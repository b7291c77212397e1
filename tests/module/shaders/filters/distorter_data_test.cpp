// Distorter as data: its defaults, saved forms, messages, Copy and Compare.
#include "module/shaders/filters/distorter.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;

struct DistorterDataTest : FilterTest<DistorterBlock, PluginIdDistorter> {
  void FillBlock() {
    Link(block.input).content.name = "a";
    Link(block.distortInput).content.name = "b";
    block.warpType = 2;
    block.strength = 0.5f;
    block.scaleX = 0.25f;
    block.scaleY = 0.75f;
    block.scaleZ = 1.25f;
    block.gradientStep = 1.5f;
    block.tile = 0;
    block.previewObject = 3;
    block.previewBusy = 1;
    block.changed = 0;
    block.previewAuto = 1;
    block.nested = 1;
    block.previewChannel = 7;
    block.sampleStep = 2.5f;
  }
  const Values common = {Int(2),
                         Float(0.5f),
                         Float(0.25f),
                         Float(0.75f),
                         Float(1.25f),
                         Float(1.5f),
                         Bool(false),
                         StreamValue::Link("a"),
                         StreamValue::Link("b"),
                         Int(3),
                         Bool(true),
                         Bool(true),
                         Bool(false)};
};

TEST_F(DistorterDataTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.warpType, 0);
  EXPECT_EQ(block.strength, 1);
  EXPECT_EQ(block.scaleX, 0.1f);
  EXPECT_EQ(block.scaleY, 0.1f);
  EXPECT_EQ(block.scaleZ, 0.1f);
  EXPECT_EQ(block.gradientStep, 1);
  EXPECT_EQ(block.tile, 1);
  EXPECT_EQ(block.previewObject, 0);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewAuto, 0) << "unlike in the other filters";
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
  EXPECT_EQ(block.sampleStep, 1);
}

TEST_F(DistorterDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000731)};
  expected.insert(expected.end(), common.begin(), common.end());
  for (const StreamValue& value :
       {Int(1), Bool(true), Int(5), Int(5), Int(5), Int(5), Int(5), Int(5), Float(2.5f)}) {
    expected.push_back(value);
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(DistorterDataTest, EachMarkerAddsItsValues) {
  ReadFile({{Int(20000727)}});
  EXPECT_EQ(block.strength, 1) << "older than the first version";
  ReadFile({{Int(20000728)}, common});
  EXPECT_EQ(block.warpType, 2);
  EXPECT_EQ(block.strength, 0.5f);
  EXPECT_EQ(block.scaleX, 0.25f);
  EXPECT_EQ(block.scaleY, 0.75f);
  EXPECT_EQ(block.scaleZ, 1.25f);
  EXPECT_EQ(block.gradientStep, 1.5f);
  EXPECT_EQ(block.tile, 0);
  EXPECT_EQ(Link(block.input).content.name, "a");
  EXPECT_EQ(Link(block.distortInput).content.name, "b");
  EXPECT_EQ(block.previewObject, 3);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.previewBusy, 1);
  EXPECT_EQ(block.changed, 0);
  EXPECT_EQ(block.nested, 0);
  ReadFile({{Int(20000729)}, common, {Int(1), Bool(true), Int(1), Int(2)}});
  EXPECT_EQ(block.nested, 1);
  const Values fillers = {Int(0), Bool(true), Int(1), Int(2), Int(3), Int(4), Int(5), Int(6)};
  ReadFile({{Int(20000730)}, common, fillers});
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.sampleStep, 1);
  ReadFile({{Int(20000731)}, common, fillers, {Float(2.5f)}});
  EXPECT_EQ(block.sampleStep, 2.5f);
}

// The type word of the sample step is a real: deliberate.
TEST_F(DistorterDataTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{2}},
                    {1001, Word{2}, 0.5f},
                    {1002, Word{2}, 0.25f},
                    {1003, Word{2}, 0.75f},
                    {1004, Word{2}, 1.25f},
                    {1005, Word{2}, 1.5f},
                    {1006, Word{1}, false},
                    {1009, 2.0f, 2.5f}},
                   {1007, 1008});
}

TEST_F(DistorterDataTest, SetTakesThem) {
  FillBlock();
  FakeContainer payload;
  shader.Message(MessageGetParameters, payload);
  ShaderUnderTest other(started, PluginIdDistorter);
  other.Message(MessageSetParameters, payload);
  const auto& taken = other.block<DistorterBlock>();
  EXPECT_EQ(taken.warpType, 2);
  EXPECT_EQ(taken.strength, 0.5f);
  EXPECT_EQ(taken.scaleX, 0.25f);
  EXPECT_EQ(taken.scaleY, 0.75f);
  EXPECT_EQ(taken.scaleZ, 1.25f);
  EXPECT_EQ(taken.gradientStep, 1.5f);
  EXPECT_EQ(taken.tile, 0);
  EXPECT_EQ(taken.sampleStep, 2.5f);
}

TEST_F(DistorterDataTest, CopyTakesTheListedFieldsAndTheDefaultsElsewhere) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdDistorter);
  auto& copy = other.block<DistorterBlock>();
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, -1);
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(DistorterDataTest, CompareLooksAtTheseFields) {
  ShaderUnderTest other(started, PluginIdDistorter);
  auto& changed = other.block<DistorterBlock>();
  const DistorterBlock defaults = changed;
  using Change = void (*)(DistorterBlock&);
  for (const Change change : {Change([](DistorterBlock& b) { b.warpType = 1; }),
                              Change([](DistorterBlock& b) { b.strength = 2; }),
                              Change([](DistorterBlock& b) { b.scaleX = 2; }),
                              Change([](DistorterBlock& b) { b.scaleY = 2; }),
                              Change([](DistorterBlock& b) { b.scaleZ = 2; }),
                              Change([](DistorterBlock& b) { b.gradientStep = 2; }),
                              Change([](DistorterBlock& b) { b.tile = 0; }),
                              Change([](DistorterBlock& b) { b.sampleStep = 2; }),
                              Change([](DistorterBlock& b) { b.previewAuto = 1; }),
                              Change([](DistorterBlock& b) { b.nested = 1; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
}

}  // namespace
}  // namespace sorvanix::test
