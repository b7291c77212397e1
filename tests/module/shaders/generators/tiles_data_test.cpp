// Tiles as data: its registration, defaults, saved forms, messages, Copy and Compare.
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "tests/support/tiles_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

// A value of its own in every field.
constexpr TilesBlock kFilled = {.pattern = 23,
                                .orientation = 1,
                                .globalMode = 2,
                                .globalScale = 3,
                                .scaleU = 4,
                                .scaleV = 5,
                                .arms = 6,
                                .groutWidth = 0.25f,
                                .bevel = 0.75f,
                                .groutColor = {0.1f, 0.2f, 0.3f},
                                .color1 = {0.4f, 0.5f, 0.6f},
                                .color2 = {0.7f, 0.8f, 0.9f},
                                .color3 = {1.1f, 1.2f, 1.3f},
                                .smoothBevel = 0,
                                .randomColor = 1,
                                .reserved23 = 23,
                                .reserved24 = 24,
                                .alternate = 0,
                                .reserved26 = 26,
                                .nested = 1,
                                .reserved28 = {28, 29},
                                .reserved30 = 30,
                                .bumpStepScale = 0.5f};

// From globalScale to alternate, as every version stores them.
const Values kCommon = {Float(3),
                        Float(4),
                        Float(5),
                        Float(0.25f),
                        Float(0.75f),
                        Vec(0.1f, 0.2f, 0.3f),
                        Vec(0.4f, 0.5f, 0.6f),
                        Vec(0.7f, 0.8f, 0.9f),
                        Vec(1.1f, 1.2f, 1.3f),
                        Bool(false),
                        Bool(true),
                        Bool(false)};

struct TilesDataTest : TilesTest {
  void ExpectCommonValues() {
    EXPECT_EQ(block.globalMode, 2);
    EXPECT_EQ(block.pattern, 23);
    EXPECT_EQ(block.globalScale, 3);
    EXPECT_EQ(block.scaleU, 4);
    EXPECT_EQ(block.scaleV, 5);
    EXPECT_EQ(block.groutWidth, 0.25f);
    EXPECT_EQ(block.bevel, 0.75f);
    ExpectVector(block.groutColor, kFilled.groutColor);
    ExpectVector(block.color1, kFilled.color1);
    ExpectVector(block.color2, kFilled.color2);
    ExpectVector(block.color3, kFilled.color3);
    EXPECT_EQ(block.smoothBevel, 0);
    EXPECT_EQ(block.randomColor, 1);
    EXPECT_EQ(block.alternate, 0);
  }
};

TEST_F(TilesDataTest, FillsElevenCallbacksAndGetInfo) {
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  EXPECT_NE(record.Edit, nullptr);
  EXPECT_NE(record.Message, nullptr);
  EXPECT_NE(record.InitRender, nullptr);
  EXPECT_NE(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
  ASSERT_NE(record.GetInfo, nullptr);
  EXPECT_EQ(record.GetInfo(), 0x0020000Eu);
  EXPECT_EQ(record.Edit(&instance), 0) << "nothing was confirmed";
}

TEST_F(TilesDataTest, AllocMakes128BytesWithTheDefaults) {
  EXPECT_EQ(host.calls.back(), "alloc(128)");
  EXPECT_EQ(block.pattern, 0);
  EXPECT_EQ(block.orientation, 0);
  EXPECT_EQ(block.globalMode, 0);
  EXPECT_EQ(block.globalScale, 1);
  EXPECT_EQ(block.scaleU, 1);
  EXPECT_EQ(block.scaleV, 1);
  EXPECT_EQ(block.arms, 1);
  EXPECT_EQ(block.groutWidth, 0.05f);
  EXPECT_EQ(block.bevel, 0.3f);
  ExpectExactly(block.groutColor, {0, 0, 0});
  ExpectExactly(block.color1, {0.5f, 0, 0});
  ExpectExactly(block.color2, {0.5f, 0.5f, 0.5f});
  ExpectExactly(block.color3, {0, 0, 0.5f});
  EXPECT_EQ(block.smoothBevel, 1);
  EXPECT_EQ(block.randomColor, 0);
  EXPECT_EQ(block.reserved23, 0);
  EXPECT_EQ(block.reserved24, 1);
  EXPECT_EQ(block.alternate, 1);
  EXPECT_EQ(block.reserved26, 0);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.reserved28[0], 0);
  EXPECT_EQ(block.reserved28[1], 0);
  EXPECT_EQ(block.reserved30, -1);
  EXPECT_EQ(block.bumpStepScale, 1);
}

TEST_F(TilesDataTest, AllocWithoutMemoryAnswersZeroAndLeavesNoBlock) {
  host.failAllocation = 1;
  ShaderInstance bare = {};
  bare.data = &bare;
  EXPECT_EQ(record.Alloc(&bare), 0);
  EXPECT_EQ(bare.data, nullptr);
}

// Alloc asks for one block, Copy for none: the second allocation to fail is not theirs.
TEST_F(TilesDataTest, CopyNeedsNoMemory) {
  ShaderUnderTest other(started, PluginIdTiles);
  host.failAllocation = 1;
  EXPECT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(host.failAllocation, 1) << "still to come";
}

TEST_F(TilesDataTest, FreeReleasesAndClearsAlsoTwice) {
  const int blocks = host.liveBlocks();
  record.Free(&instance);
  EXPECT_EQ(instance.data, nullptr);
  record.Free(&instance);
  EXPECT_EQ(host.liveBlocks(), blocks - 1);
}

// --- the saved form ---

TEST_F(TilesDataTest, WriteStoresTheMarkerAndTheFieldsInFileOrder) {
  block = kFilled;
  Values expected = {Int(20000903), Int(2), Int(23), Int(1)};
  expected.insert(expected.end(), kCommon.begin(), kCommon.end());
  expected.insert(expected.end(), {Float(6), Float(0.5f)});
  EXPECT_EQ(Written(), expected);
}

TEST_F(TilesDataTest, TheOldestFormHasNoOrientationAndEndsWithAlternate) {
  ReadFile({{Int(20000728), Int(2), Int(23)}, kCommon});
  ExpectCommonValues();
  EXPECT_EQ(block.orientation, 0);
  EXPECT_EQ(block.arms, 1);
  EXPECT_EQ(block.bumpStepScale, 1);
}

TEST_F(TilesDataTest, Marker20000820AddsTheOrientationInTheMiddle) {
  for (const std::int32_t marker : {20000820, 20000821, 20000901}) {
    ReadFile({{Int(marker), Int(2), Int(23), Int(1)}, kCommon});
    ExpectCommonValues();
    EXPECT_EQ(block.orientation, 1);
    EXPECT_EQ(block.arms, 1);
  }
}

TEST_F(TilesDataTest, Marker20000902AddsTheArms) {
  ReadFile({{Int(20000902), Int(2), Int(23), Int(1)}, kCommon, {Float(6)}});
  ExpectCommonValues();
  EXPECT_EQ(block.arms, 6);
  EXPECT_EQ(block.bumpStepScale, 1);
}

TEST_F(TilesDataTest, Marker20000903AddsTheBumpStepAndNewerOnesAreReadAlike) {
  for (const std::int32_t marker : {20000903, 20000904, INT32_MAX}) {
    block.bumpStepScale = 1;
    ReadFile({{Int(marker), Int(2), Int(23), Int(1)}, kCommon, {Float(6), Float(0.5f)}});
    ExpectCommonValues();
    EXPECT_EQ(block.bumpStepScale, 0.5f) << marker;
  }
}

TEST_F(TilesDataTest, OfAFileWithAMarkerThatNoVersionHadNothingIsRead) {
  const TilesBlock before = block;
  for (const std::int32_t marker : {INT32_MIN, 0, 20000727, 20000729, 20000819}) {
    ReadFile({{Int(marker)}});
    EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0) << marker;
  }
}

TEST_F(TilesDataTest, AnEndedStreamLeavesTheOtherFieldsAlone) {
  block = kFilled;
  FakeStream stream;
  stream.values = {Int(20000903), Int(0), Int(7)};
  EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
  EXPECT_EQ(block.pattern, 7);
  EXPECT_EQ(block.orientation, 1);
  EXPECT_EQ(block.bumpStepScale, 0.5f);
}

TEST_F(TilesDataTest, WriteThenReadGivesAnEqualBlock) {
  block = kFilled;
  FakeStream stream;
  record.Write(&instance, stream.handle());
  ShaderUnderTest other(started, PluginIdTiles);
  EXPECT_EQ(record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  EXPECT_EQ(other.block<TilesBlock>().nested, 0) << "not in the file";
}

// --- messages ---

// Vectors are described as reals: kept so.
const std::vector<ParameterRow> kParameters = {
    {1000, Word{1}, Word{23}},       {1001, Word{2}, 3.0f},
    {1002, Word{2}, 4.0f},           {1003, Word{2}, 5.0f},
    {1004, Word{2}, 6.0f},           {1005, Word{2}, 0.25f},
    {1006, Word{2}, 0.75f},          {1007, Word{2}, kFilled.groutColor},
    {1008, Word{2}, kFilled.color1}, {1009, Word{2}, kFilled.color2},
    {1010, Word{2}, kFilled.color3}, {1011, Word{1}, false},
    {1012, Word{1}, true},           {1013, Word{1}, Word{1}},
    {1014, Word{2}, 0.5f},
};

TEST_F(TilesDataTest, ParametersAreGivenAndDescribedUnderTheirKeys) {
  block = kFilled;
  ExpectParameters(shader, kParameters, {});
}

TEST_F(TilesDataTest, GetThenSetGivesAnEqualBlockInAllExchangedFields) {
  block = kFilled;
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  ShaderUnderTest other(started, PluginIdTiles);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  // The fields without a key are not exchanged.
  TilesBlock& taken = other.block<TilesBlock>();
  EXPECT_EQ(taken.globalMode, 0);
  EXPECT_EQ(taken.alternate, 1);
  taken.globalMode = block.globalMode;
  taken.alternate = block.alternate;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(TilesDataTest, AnEmptyContainerChangesNothing) {
  block = kFilled;
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(std::memcmp(&kFilled, &block, sizeof block), 0);
}

TEST_F(TilesDataTest, UnknownKeysAreSkippedAndTheNextIsTaken) {
  FakeContainer container;
  container.Set(999, Word{1});
  container.Set(1015, 5.0f);
  container.Set(INT32_MIN, 5.0f);
  container.Set(1000, Word{3});
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(block.pattern, 3);
}

TEST_F(TilesDataTest, UnknownMessagesAnswerOneAndChangeNothing) {
  const TilesBlock before = block;
  FakeContainer container;
  container.Set(1000, Word{3});
  for (const std::int32_t id : {0, 112002, 112004, 112005, -1, INT32_MAX}) {
    EXPECT_EQ(shader.Message(id, container), 1) << id;
  }
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(TilesDataTest, ReportSlotsTellsTheArrayAndItsStride) {
  BeginRender();
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageReportSlots, container), 1);
  EXPECT_EQ(std::get<Word>(*container.Find(12000)), reinterpret_cast<Word>(instance.slots));
  EXPECT_NE(instance.slots, nullptr);
  EXPECT_EQ(std::get<Word>(*container.Find(12001)), 264);
}

TEST_F(TilesDataTest, MessagesWithoutAPayloadAnswerOneAndDoNothing) {
  block = kFilled;
  for (const std::int32_t id : {MessageSetParameters, MessageGetParameters,
                                MessageDescribeParameters, MessageReportSlots}) {
    EXPECT_EQ(record.Message(&instance, id, nullptr), 1) << id;
  }
  EXPECT_EQ(std::memcmp(&kFilled, &block, sizeof block), 0);
}

// --- Copy and Compare ---

TEST_F(TilesDataTest, ACopyOfANestedShaderIsNotNested) {
  block = kFilled;
  ShaderUnderTest other(started, PluginIdTiles);
  other.block<TilesBlock>().nested = 1;
  EXPECT_EQ(record.Copy(&instance, &other.instance), 1);
  TilesBlock expected = kFilled;
  expected.nested = 0;
  EXPECT_EQ(std::memcmp(&other.block<TilesBlock>(), &expected, sizeof expected), 0)
      << "all other words are copied";
  EXPECT_EQ(block.nested, 1) << "the source keeps its own";
}

TEST_F(TilesDataTest, CompareLooksAtTheSavedFieldsAndNoOthers) {
  const std::function<void(TilesBlock&)> compared[] = {
      [](TilesBlock& b) { b.pattern = 1; },       [](TilesBlock& b) { b.orientation = 1; },
      [](TilesBlock& b) { b.globalMode = 1; },    [](TilesBlock& b) { b.globalScale = 2; },
      [](TilesBlock& b) { b.scaleU = 2; },        [](TilesBlock& b) { b.scaleV = 2; },
      [](TilesBlock& b) { b.arms = 2; },          [](TilesBlock& b) { b.groutWidth = 2; },
      [](TilesBlock& b) { b.bevel = 2; },         [](TilesBlock& b) { b.groutColor.x = 2; },
      [](TilesBlock& b) { b.color1.y = 2; },      [](TilesBlock& b) { b.color2.z = 2; },
      [](TilesBlock& b) { b.color3.x = 2; },      [](TilesBlock& b) { b.smoothBevel = 0; },
      [](TilesBlock& b) { b.randomColor = 1; },   [](TilesBlock& b) { b.alternate = 0; },
      [](TilesBlock& b) { b.bumpStepScale = 2; }, [](TilesBlock& b) { b.bevel = NAN; }};
  const std::function<void(TilesBlock&)> ignored[] = {
      [](TilesBlock& b) { b.nested = 1; },        [](TilesBlock& b) { b.reserved23 = 5; },
      [](TilesBlock& b) { b.reserved24 = 5; },    [](TilesBlock& b) { b.reserved26 = 5; },
      [](TilesBlock& b) { b.reserved28[1] = 5; }, [](TilesBlock& b) { b.reserved30 = 5; }};
  ShaderUnderTest other(started, PluginIdTiles);
  TilesBlock& changed = other.block<TilesBlock>();
  const TilesBlock defaults = changed;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  for (std::size_t i = 0; i < std::size(compared); ++i) {
    changed = defaults;
    compared[i](changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0) << i;
  }
  for (std::size_t i = 0; i < std::size(ignored); ++i) {
    changed = defaults;
    ignored[i](changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1) << i;
  }
}

// --- without a block ---

TEST_F(TilesDataTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  ShaderInstance bare = {};
  FakeStream stream;
  FakeContainer container;
  EXPECT_EQ(record.Copy(&bare, &instance), 0);
  EXPECT_EQ(record.Copy(&instance, &bare), 0);
  EXPECT_EQ(record.Compare(&bare, &instance), 0);
  EXPECT_EQ(record.Compare(&instance, &bare), 0);
  EXPECT_EQ(record.Read(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Write(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Edit(&bare), 0);
  EXPECT_EQ(record.Message(&bare, MessageGetParameters, container.handle()), 1);
  EXPECT_TRUE(stream.values.empty());
  EXPECT_TRUE(container.entries.empty());
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(record.InitRender(&bare, &init), 0);
  EXPECT_EQ(bare.slots, nullptr);
  record.FreeRender(&bare);
  record.Free(&bare);
  Vector result = {1, 1, 1};
  record.Output(&result, &bare, &sample);
  ExpectExactly(result, {0, 0, 0});
}

}  // namespace
}  // namespace sorvanix::test
