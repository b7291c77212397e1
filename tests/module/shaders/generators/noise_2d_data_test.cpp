// 2D Noise as data: its registration, defaults, saved forms, messages, Copy and Compare.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "module/shaders/generators/noise_2d.h"
#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

using Values = std::vector<StreamValue>;
constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

struct Noise2DDataTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest shader{started, PluginIdNoise2D};
  Noise2DBlock& block = shader.block<Noise2DBlock>();

  // A value of its own in every field.
  void FillBlock() {
    block = {.previewObject = 3,
             .noiseType = 28,
             .octaves = 2.5f,
             .scale = 3,
             .scaleU = 4,
             .scaleV = 5,
             .detail = 6,
             .speed = 7,
             .contrast = 0.25f,
             .brightness = -0.5f,
             .lowClip = 0.125f,
             .highClip = 0.875f,
             .cycles = 1.5f,
             .colorLow = {0.1f, 0.2f, 0.3f},
             .colorHigh = {0.4f, 0.5f, 0.6f},
             .absolute = 1,
             .previewTile = 1,
             .reserved21 = 21,
             .previewDirty = 22,
             .previewAuto = 0,
             .nested = 1,
             .reserved25 = {25, 26},
             .previewState = 27,
             .bumpDetail = 0.75f};
  }
  // The values that every version stores after its marker.
  static Values CommonValues() {
    return {Int(3),
            Int(28),
            Float(2.5f),
            Float(3),
            Float(4),
            Float(5),
            Float(7),
            Float(6),  // speed before detail
            Float(0.25),
            Float(-0.5),
            Float(0.125f),
            Float(0.875f),
            Float(1.5),
            Vec(.1f, .2f, .3f),
            Vec(.4f, .5f, .6f),
            Bool(true),
            Bool(true),
            Bool(false)};
  }
  // Reads a file with this marker and these values behind the common ones; a sentinel follows them.
  void ReadFile(std::int32_t marker, const Values& behind) {
    FakeStream stream;
    stream.values = {Int(marker)};
    const Values common = CommonValues();
    stream.values.insert(stream.values.end(), common.begin(), common.end());
    stream.values.insert(stream.values.end(), behind.begin(), behind.end());
    stream.values.push_back(Int(4711));
    EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
    EXPECT_EQ(stream.mismatches, 0);
    EXPECT_EQ(stream.position, stream.values.size() - 1) << "the next object starts here";
    EXPECT_EQ(block.noiseType, 28);
    EXPECT_EQ(block.speed, 7);
    EXPECT_EQ(block.detail, 6);
    EXPECT_EQ(block.previewAuto, 0);
  }
};

TEST_F(Noise2DDataTest, FillsElevenCallbacksAndGetInfo) {
  const ShaderRecord& record = shader.record;
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
  EXPECT_EQ(record.GetInfo(), 0x02200002u);
}

TEST_F(Noise2DDataTest, AllocMakes116BytesWithTheDefaults) {
  EXPECT_EQ(started.host.calls.back(), "alloc(116)");
  EXPECT_EQ(block.previewObject, 0);
  EXPECT_EQ(block.noiseType, 12);
  EXPECT_EQ(block.octaves, 5);
  EXPECT_EQ(block.scale, 1);
  EXPECT_EQ(block.scaleU, 1);
  EXPECT_EQ(block.scaleV, 1);
  EXPECT_EQ(block.detail, 1);
  EXPECT_EQ(block.speed, 0);
  EXPECT_EQ(block.contrast, 0);
  EXPECT_EQ(block.brightness, 0);
  EXPECT_EQ(block.lowClip, 0);
  EXPECT_EQ(block.highClip, 1);
  EXPECT_EQ(block.cycles, 0);
  EXPECT_EQ(block.colorLow.x, 0);
  EXPECT_EQ(block.colorLow.y, 0);
  EXPECT_EQ(block.colorLow.z, 0);
  EXPECT_EQ(block.colorHigh.x, 1);
  EXPECT_EQ(block.colorHigh.y, 1);
  EXPECT_EQ(block.colorHigh.z, 1);
  EXPECT_EQ(block.absolute, 0);
  EXPECT_EQ(block.previewTile, 0);
  EXPECT_EQ(block.previewDirty, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewState, -1);
  EXPECT_EQ(block.bumpDetail, 1);
}

TEST_F(Noise2DDataTest, FreeReleasesAndClearsAlsoTwice) {
  const int blocks = started.host.liveBlocks();
  shader.record.Free(&shader.instance);
  EXPECT_EQ(shader.instance.data, nullptr);
  shader.record.Free(&shader.instance);
  EXPECT_EQ(started.host.liveBlocks(), blocks - 1);
}

// --- the saved form ---

TEST_F(Noise2DDataTest, WriteStoresTheMarkerAndTheFieldsInFileOrder) {
  FillBlock();
  FakeStream stream;
  EXPECT_EQ(shader.record.Write(&shader.instance, stream.handle()), 1);
  Values expected = {Int(20000732)};
  const Values common = CommonValues();
  expected.insert(expected.end(), common.begin(), common.end());
  expected.insert(expected.end(), {Int(1), Float(0.75f), Int(27)});
  EXPECT_EQ(stream.values, expected);
}

TEST_F(Noise2DDataTest, ReadsTheOldestFormWithLaterFieldsAtTheirDefaults) {
  ReadFile(20000728, {});
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.bumpDetail, 1);
  EXPECT_EQ(block.previewState, -1);
}

TEST_F(Noise2DDataTest, Marker20000729AddsNested) {
  ReadFile(20000729, {Int(1)});
  EXPECT_EQ(block.nested, 1);
  EXPECT_EQ(block.bumpDetail, 1);
}

// That one version had two values more, which are dropped.
TEST_F(Noise2DDataTest, Marker20000730DropsTwoValuesAndStaysInStep) {
  ReadFile(20000730, {Int(1), Float(9), Float(8)});
  EXPECT_EQ(block.nested, 1);
  EXPECT_EQ(block.bumpDetail, 1);
  EXPECT_EQ(block.previewState, -1);
}

TEST_F(Noise2DDataTest, Marker20000731AddsBumpDetail) {
  ReadFile(20000731, {Int(1), Float(0.25f)});
  EXPECT_EQ(block.bumpDetail, 0.25f);
  EXPECT_EQ(block.previewState, -1);
}

TEST_F(Noise2DDataTest, Marker20000732AddsPreviewState) {
  ReadFile(20000732, {Int(0), Float(0.25f), Int(5)});
  EXPECT_EQ(block.previewState, 5);
}

TEST_F(Noise2DDataTest, NewerMarkersAreReadAsTheNewestKnown) {
  ReadFile(INT32_MAX, {Int(0), Float(0.25f), Int(5)});
  EXPECT_EQ(block.previewState, 5);
}

TEST_F(Noise2DDataTest, AnEndedStreamLeavesTheOtherFieldsAlone) {
  FillBlock();
  FakeStream stream;
  stream.values = {Int(20000732), Int(0), Int(7)};
  EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
  EXPECT_EQ(block.noiseType, 7);
  EXPECT_EQ(block.octaves, 2.5f);
  EXPECT_EQ(block.bumpDetail, 0.75f);
}

TEST_F(Noise2DDataTest, WriteThenReadGivesAnEqualBlock) {
  FillBlock();
  FakeStream stream;
  shader.record.Write(&shader.instance, stream.handle());
  ShaderUnderTest other(started, PluginIdNoise2D);
  EXPECT_EQ(other.record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  EXPECT_EQ(other.block<Noise2DBlock>().nested, 1);
  EXPECT_EQ(other.block<Noise2DBlock>().previewState, 27);
}

// --- messages ---

struct KeyRow {
  std::int32_t key;
  std::int32_t describe;
  FakeValue value;  // of the filled block
};
const KeyRow kKeys[] = {
    {1000, 1, Word{28}},
    {1001, 2, 2.5f},
    {1002, 2, 3.0f},
    {1003, 2, 4.0f},
    {1004, 2, 5.0f},
    {1005, 2, 7.0f},  // speed
    {1006, 2, 6.0f},  // detail
    {1007, 2, 0.25f},
    {1008, 2, -0.5f},
    {1009, 2, 0.125f},
    {1010, 2, 0.875f},
    {1011, 2, 1.5f},
    {1012, 2, Vector{0.1f, 0.2f, 0.3f}},  // a vector described as a real: kept so
    {1013, 2, Vector{0.4f, 0.5f, 0.6f}},
    {1014, 1, true},
    {1015, 2, 0.75f},
};

bool Same(const FakeValue& a, const FakeValue& b) {
  if (a.index() != b.index()) return false;
  if (const Vector* va = std::get_if<Vector>(&a)) {
    return std::memcmp(va, std::get_if<Vector>(&b), sizeof *va) == 0;
  }
  if (const float* fa = std::get_if<float>(&a)) return *fa == std::get<float>(b);
  if (const Word* wa = std::get_if<Word>(&a)) return *wa == std::get<Word>(b);
  return std::get<bool>(a) == std::get<bool>(b);
}

TEST_F(Noise2DDataTest, GetParametersStoresEachKeyInItsType) {
  FillBlock();
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageGetParameters, container), 1);
  EXPECT_EQ(container.entries.size(), std::size(kKeys));
  for (const KeyRow& row : kKeys) {
    const FakeValue* value = container.Find(row.key);
    ASSERT_NE(value, nullptr) << row.key;
    EXPECT_TRUE(Same(*value, row.value)) << row.key;
  }
}

TEST_F(Noise2DDataTest, DescribeParametersStoresTheTypeWords) {
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageDescribeParameters, container), 1);
  EXPECT_EQ(container.entries.size(), std::size(kKeys));
  for (const KeyRow& row : kKeys) {
    const FakeValue* value = container.Find(row.key);
    ASSERT_NE(value, nullptr) << row.key;
    EXPECT_TRUE(Same(*value, Word{row.describe})) << row.key;
  }
}

TEST_F(Noise2DDataTest, GetThenSetGivesAnEqualBlockInAllExchangedFields) {
  FillBlock();
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  ShaderUnderTest other(started, PluginIdNoise2D);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  // The fields without a key are not exchanged.
  Noise2DBlock& taken = other.block<Noise2DBlock>();
  EXPECT_EQ(taken.previewObject, 0);
  EXPECT_EQ(taken.previewAuto, 1);
  taken.previewObject = block.previewObject;
  taken.previewTile = block.previewTile;
  taken.previewAuto = block.previewAuto;
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
}

TEST_F(Noise2DDataTest, AnEmptyContainerChangesNothing) {
  FillBlock();
  const Noise2DBlock before = block;
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(Noise2DDataTest, UnknownKeysAreSkippedAndTheNextIsTaken) {
  FakeContainer container;
  container.Set(999, Word{1});
  container.Set(0, Word{1});
  container.Set(1016, 5.0f);
  container.Set(INT32_MIN, 5.0f);
  container.Set(1000, Word{3});
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(block.noiseType, 3);
}

TEST_F(Noise2DDataTest, ValuesAreTakenAsTheyCome) {
  FakeContainer container;
  container.Set(1000, Word{-99});
  container.Set(1001, -1e30f);
  shader.Message(MessageSetParameters, container);
  EXPECT_EQ(block.noiseType, -99);
  EXPECT_EQ(block.octaves, -1e30f);
}

TEST_F(Noise2DDataTest, UnknownMessagesAnswerOneAndChangeNothing) {
  const Noise2DBlock before = block;
  FakeContainer container;
  container.Set(1000, Word{3});
  for (const std::int32_t id : {0, 112002, 112004, 112005, -1, INT32_MAX}) {
    EXPECT_EQ(shader.Message(id, container), 1) << id;
  }
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(Noise2DDataTest, ReportSlotsTellsTheArrayAndItsStride) {
  RenderContext render = {};
  const RenderInit init = {&render, nullptr};
  shader.record.InitRender(&shader.instance, &init);
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageReportSlots, container), 1);
  EXPECT_EQ(std::get<Word>(*container.Find(12000)), reinterpret_cast<Word>(shader.instance.slots));
  EXPECT_NE(shader.instance.slots, nullptr);
  EXPECT_EQ(std::get<Word>(*container.Find(12001)), 256);
}

// --- Copy and Compare ---

TEST_F(Noise2DDataTest, CopyTakesAllWordsAndClearsNested) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdNoise2D);
  other.block<Noise2DBlock>().nested = 1;
  EXPECT_EQ(shader.record.Copy(&shader.instance, &other.instance), 1);
  Noise2DBlock expected = block;
  expected.nested = 0;
  EXPECT_EQ(std::memcmp(&other.block<Noise2DBlock>(), &expected, sizeof expected), 0);
  EXPECT_EQ(block.nested, 1) << "the source keeps its own";
}

TEST_F(Noise2DDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  const std::function<void(Noise2DBlock&)> compared[] = {
      [](Noise2DBlock& b) { b.previewObject = 1; }, [](Noise2DBlock& b) { b.noiseType = 1; },
      [](Noise2DBlock& b) { b.octaves = 2; },       [](Noise2DBlock& b) { b.scale = 2; },
      [](Noise2DBlock& b) { b.scaleU = 2; },        [](Noise2DBlock& b) { b.scaleV = 2; },
      [](Noise2DBlock& b) { b.speed = 2; },         [](Noise2DBlock& b) { b.detail = 2; },
      [](Noise2DBlock& b) { b.contrast = 2; },      [](Noise2DBlock& b) { b.brightness = 2; },
      [](Noise2DBlock& b) { b.lowClip = 2; },       [](Noise2DBlock& b) { b.highClip = 2; },
      [](Noise2DBlock& b) { b.cycles = 2; },        [](Noise2DBlock& b) { b.colorLow.y = 2; },
      [](Noise2DBlock& b) { b.colorHigh.z = 2; },   [](Noise2DBlock& b) { b.previewTile = 1; },
      [](Noise2DBlock& b) { b.absolute = 1; },      [](Noise2DBlock& b) { b.previewAuto = 0; },
      [](Noise2DBlock& b) { b.bumpDetail = 2; },    [](Noise2DBlock& b) { b.octaves = NAN; }};
  const std::function<void(Noise2DBlock&)> ignored[] = {
      [](Noise2DBlock& b) { b.nested = 1; }, [](Noise2DBlock& b) { b.previewState = 5; },
      [](Noise2DBlock& b) { b.previewDirty = 5; }, [](Noise2DBlock& b) { b.reserved21 = 5; },
      [](Noise2DBlock& b) { b.reserved25[1] = 5; }};
  ShaderUnderTest other(started, PluginIdNoise2D);
  Noise2DBlock& changed = other.block<Noise2DBlock>();
  const Noise2DBlock defaults = changed;
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  for (std::size_t i = 0; i < std::size(compared); ++i) {
    changed = defaults;
    compared[i](changed);
    EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 0) << i;
  }
  for (std::size_t i = 0; i < std::size(ignored); ++i) {
    changed = defaults;
    ignored[i](changed);
    EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1) << i;
  }
}

TEST_F(Noise2DDataTest, ABlockWithAnUndefinedFloatEqualsNothingNotEvenItself) {
  block.octaves = NAN;
  EXPECT_EQ(shader.record.Compare(&shader.instance, &shader.instance), 0);
}

}  // namespace
}  // namespace sorvanix::test
