// Gradient as data: its registration, defaults, saved forms, messages, Copy and Compare.
#include <cstring>
#include <utility>

#include "tests/module/shaders/generators/gradient_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

struct GradientDataTest : FilterTest<GradientBlock, PluginIdGradient> {
  // A value of its own in every field.
  void FillBlock() {
    block.ramp.knots[0] = {{0.1f, 0.2f, 0.3f}, 0.25f, 0.4f};
    block.ramp.knots[1] = {{0.5f, 0.6f, 0.7f}, 0.75f, 0.8f};
    block.ramp.order[0] = 0;
    block.ramp.order[1] = 1;
    block.ramp.count = 2;
    block.ramp.selected = 51;
    block.ramp.interpolation = RampStep;
    block.type = 9;
    block.space = 4;
    block.start = {1, 2, 3};
    block.end = {4, 5, 6};
    block.radius = 7;
    block.cycle = 1;
    block.previewBusy = 1;
    block.previewAuto = 0;
    block.changed = 0;
    block.previewObject = 3;
    block.nested = 1;
    block.dialogChannel = 5;
    block.dialogChannelMark = 6;
  }
  // What every version stores between the marker and the knots; the first value is not read.
  static Values Head(std::int32_t count) {
    return {Bool(true), Int(count), Int(51),  Int(4),      Int(9),     Int(4),
            Float(1),   Float(2),   Float(3), Float(4),    Float(5),   Float(6),
            Float(7),   Bool(true), Int(3),   Bool(false), Bool(true), Bool(false)};
  }
  const Values knots = {Vec(0.1f, 0.2f, 0.3f), Float(0.25f), Float(0.4f),
                        Vec(0.5f, 0.6f, 0.7f), Float(0.75f), Float(0.8f)};
  const Values order = {Int(0), Int(1)};
};

TEST_F(GradientDataTest, FillsEveryCallbackAndTellsItsWord) {
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
  EXPECT_EQ(record.GetInfo(), 0x0220000Eu);
}

TEST_F(GradientDataTest, AllocMakes320WordsWithTheDefaults) {
  EXPECT_EQ(host.calls.back(), "alloc(1280)");
  const Ramp& ramp = block.ramp;
  EXPECT_EQ(ramp.count, 3);
  EXPECT_EQ(ramp.interpolation, RampCubic);
  EXPECT_EQ(ramp.selected, 0);
  EXPECT_EQ(ramp.order[0], 2);
  EXPECT_EQ(ramp.order[1], 1);
  EXPECT_EQ(ramp.order[2], 0);
  ExpectExactly(ramp.knots[0].colour, {0, 0, 0});
  EXPECT_EQ(ramp.knots[0].position, 0);
  ExpectExactly(ramp.knots[1].colour, {1, 0, 0});
  EXPECT_EQ(ramp.knots[1].position, 0.5f);
  ExpectExactly(ramp.knots[2].colour, {1, 1, 0});
  EXPECT_EQ(ramp.knots[2].position, 1);
  for (const RampKnot& knot : ramp.knots) EXPECT_EQ(knot.bias, 0.5f);
  EXPECT_EQ(block.type, 0);
  EXPECT_EQ(block.space, 1);
  ExpectExactly(block.start, {-100, 0, 0});
  ExpectExactly(block.end, {100, 0, 0});
  EXPECT_EQ(block.radius, 100);
  EXPECT_EQ(block.cycle, 0);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewObject, 0);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.dialogChannel, 0);
  EXPECT_EQ(block.dialogChannelMark, -1);
}

TEST_F(GradientDataTest, AllocWithoutMemoryAnswersZeroAndLeavesNothing) {
  const int blocks = host.liveBlocks();
  host.failAllocation = 1;
  ShaderInstance bare = {};
  EXPECT_EQ(record.Alloc(&bare), 0);
  EXPECT_EQ(bare.data, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

// --- the saved form ---

TEST_F(GradientDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000729)};
  for (const Values& part : {Head(2), knots, order, Values{Int(1)}}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(GradientDataTest, ReadsTheOldestFormWithoutNested) {
  ReadFile({{Int(20000728)}, Head(2), knots, order});
  EXPECT_EQ(block.ramp.count, 2);
  EXPECT_EQ(block.ramp.selected, 51);
  EXPECT_EQ(block.ramp.interpolation, RampStep);
  ExpectExactly(block.ramp.knots[1].colour, {0.5f, 0.6f, 0.7f});
  EXPECT_EQ(block.ramp.knots[1].position, 0.75f);
  EXPECT_EQ(block.ramp.knots[1].bias, 0.8f);
  EXPECT_EQ(block.ramp.order[0], 0) << "2 in a new block";
  EXPECT_EQ(block.type, 9);
  EXPECT_EQ(block.space, 4);
  ExpectExactly(block.start, {1, 2, 3});
  ExpectExactly(block.end, {4, 5, 6});
  EXPECT_EQ(block.radius, 7);
  EXPECT_EQ(block.cycle, 1);
  EXPECT_EQ(block.previewObject, 3);
  EXPECT_EQ(block.previewAuto, 0);
  EXPECT_EQ(block.previewBusy, 1);
  EXPECT_EQ(block.changed, 0);
  EXPECT_EQ(block.nested, 0);
}

TEST_F(GradientDataTest, ReadsNestedFromTheNextMarkerOn) {
  for (const std::int32_t marker : {20000729, INT32_MAX}) {
    block.nested = 0;
    ReadFile({{Int(marker)}, Head(2), knots, order, {Int(1)}});
    EXPECT_EQ(block.nested, 1) << marker;
  }
}

TEST_F(GradientDataTest, OfAnOlderFileOnlyTheMarkerIsRead) {
  FillBlock();
  const GradientBlock before = block;
  for (const std::int32_t marker : {20000727, 0, INT32_MIN}) {
    ReadFile({{Int(marker)}});
    EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0) << marker;
  }
}

TEST_F(GradientDataTest, TheFirstFlagIsDropped) {
  Values head = Head(2);
  head[0] = Bool(false);
  ReadFile({{Int(20000728)}, head, knots, order});
  EXPECT_EQ(Written()[1], Bool(true));
}

TEST_F(GradientDataTest, SurplusKnotsAreReadAndDropped) {
  Values many, indices;
  for (int i = 0; i < 60; ++i) {
    many.insert(many.end(), {Vec(float(i), 0, 0), Float(float(i)), Float(0.5f)});
    indices.push_back(Int(i));
  }
  ReadFile({{Int(20000729)}, Head(60), many, indices, {Int(1)}});
  EXPECT_EQ(block.ramp.count, 50);
  EXPECT_EQ(block.ramp.knots[49].position, 49);
  EXPECT_EQ(block.type, 9) << "the word behind the ramp";
  EXPECT_EQ(block.nested, 1) << "still in step";
}

// However many knots it declares, what it holds of them is kept, and the count stays in bounds.
TEST_F(GradientDataTest, AFileMayEndAmidTheKnotsThatItDeclares) {
  for (const auto& [declared, live] : {std::pair{INT32_MAX, 50}, {51, 50}, {INT32_MIN, 0}}) {
    FakeStream stream;
    stream.values = {Int(20000729)};
    for (const Values& part : {Head(declared), knots}) {
      stream.values.insert(stream.values.end(), part.begin(), part.end());
    }
    block.ramp.knots[1] = {};
    EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
    EXPECT_EQ(block.ramp.count, live);
    EXPECT_EQ(block.ramp.knots[1].bias, live == 0 ? 0.5f : 0.8f);
    EXPECT_EQ(block.nested, 0);
  }
}

TEST_F(GradientDataTest, WriteThenReadGivesAnEqualBlock) {
  FillBlock();
  FakeStream stream;
  record.Write(&instance, stream.handle());
  ShaderUnderTest other(started, PluginIdGradient);
  EXPECT_EQ(other.record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

// --- messages ---

TEST_F(GradientDataTest, GetAndDescribeAnswerTheseKeysAndAllFiftyKnots) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{4}},
                    {1001, Word{1}, Word{2}},
                    {1002, Word{1}, Word{9}},
                    {1003, Word{1}, Word{4}},
                    {1004, Word{2}, 1.0f},
                    {1005, Word{2}, 2.0f},
                    {1006, Word{2}, 3.0f},
                    {1007, Word{2}, 4.0f},
                    {1008, Word{2}, 5.0f},
                    {1009, Word{2}, 6.0f},
                    {1010, Word{2}, 7.0f},
                    {1011, Word{1}, true}},
                   {}, 150);
  FakeContainer values, types;
  shader.Message(MessageGetParameters, values);
  shader.Message(MessageDescribeParameters, types);
  for (std::int32_t i = 0; i < 50; ++i) {
    const RampKnot& knot = block.ramp.knots[i];
    ASSERT_NE(values.Find(1100 + i), nullptr);
    EXPECT_TRUE(SameValue(*values.Find(1100 + i), knot.colour)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1200 + i), knot.position)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1300 + i), knot.bias)) << i;
    for (const std::int32_t first : {1100, 1200, 1300}) {
      ASSERT_NE(types.Find(first + i), nullptr);
      EXPECT_TRUE(SameValue(*types.Find(first + i), Word{2})) << i;
    }
  }
}

TEST_F(GradientDataTest, GetThenSetGivesAnEqualBlockInAllExchangedFields) {
  FillBlock();
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  ShaderUnderTest other(started, PluginIdGradient);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  auto& taken = other.block<GradientBlock>();
  EXPECT_EQ(taken.previewObject, 0) << "without a key";
  taken.ramp.selected = block.ramp.selected;
  taken.previewBusy = block.previewBusy;
  taken.previewAuto = block.previewAuto;
  taken.changed = block.changed;
  taken.previewObject = block.previewObject;
  taken.nested = block.nested;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

// A bias key beyond the last knot is no knot's.
TEST_F(GradientDataTest, SetTakesValuesAsTheyComeAndIgnoresOtherKeys) {
  FakeContainer container;
  for (const std::int32_t key : {0, 999, 1012, 1150, 1199, 1250, 1350, 1399, 9000, INT32_MAX}) {
    container.Set(key, 9.0f);
  }
  container.Set(1349, 0.25f);
  container.Set(1001, Word{1000});
  container.Set(1002, Word{-99});
  const GradientBlock before = block;
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  GradientBlock expected = before;
  expected.ramp.knots[49].bias = 0.25f;
  expected.ramp.count = 1000;
  expected.type = -99;
  EXPECT_EQ(std::memcmp(&block, &expected, sizeof expected), 0);
}

TEST_F(GradientDataTest, AnEmptyContainerAndUnknownMessagesChangeNothing) {
  const GradientBlock before = block;
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  container.Set(1002, Word{3});
  for (const std::int32_t id : {0, 112002, 112004, 112005, -1, INT32_MAX}) {
    EXPECT_EQ(shader.Message(id, container), 1) << id;
  }
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(GradientDataTest, ReportSlotsTellsTheArrayAndItsStride) {
  ASSERT_EQ(InitRender(), 0);
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageReportSlots, container), 1);
  EXPECT_NE(instance.slots, nullptr);
  EXPECT_EQ(std::get<Word>(*container.Find(12000)), reinterpret_cast<Word>(instance.slots));
  EXPECT_EQ(std::get<Word>(*container.Find(12001)), 248);
}

// --- Copy and Compare ---

TEST_F(GradientDataTest, CopyTakesTheLiveKnotsAndTheFieldsUpToThePreviewObject) {
  FillBlock();
  block.ramp.knots[2].colour = {9, 9, 9};  // no longer live
  ShaderUnderTest other(started, PluginIdGradient);
  auto& copy = other.block<GradientBlock>();
  copy.nested = 1;
  copy.dialogChannel = 7;
  copy.dialogChannelMark = 8;
  copy.ramp.knots[2].colour = {7, 7, 7};
  copy.ramp.order[2] = 17;
  EXPECT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.dialogChannel, 7) << "belongs to the dialog's own copy";
  EXPECT_EQ(copy.dialogChannelMark, 8);
  ExpectExactly(copy.ramp.knots[2].colour, {7, 7, 7});
  EXPECT_EQ(copy.ramp.order[0], 0) << "2 in a new block";
  EXPECT_EQ(copy.ramp.order[2], 17);
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  EXPECT_EQ(copy.previewObject, 3);
}

TEST_F(GradientDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  ShaderUnderTest other(started, PluginIdGradient);
  auto& changed = other.block<GradientBlock>();
  const GradientBlock defaults = changed;
  using Change = void (*)(GradientBlock&);
  const Change compared[] = {
      [](GradientBlock& b) { b.ramp.count = 2; },
      [](GradientBlock& b) { b.ramp.knots[2].colour.y = 0.5f; },
      [](GradientBlock& b) { b.ramp.knots[1].position = 0.25f; },
      [](GradientBlock& b) { b.ramp.knots[0].bias = 0.25f; },
      [](GradientBlock& b) { b.ramp.interpolation = 1; },
      [](GradientBlock& b) { b.ramp.selected = 1; },
      [](GradientBlock& b) { b.nested = 1; },
      [](GradientBlock& b) { b.type = 1; },
      [](GradientBlock& b) { b.space = 2; },
      [](GradientBlock& b) { b.start.x = 1; },
      [](GradientBlock& b) { b.start.y = 1; },
      [](GradientBlock& b) { b.start.z = 1; },
      [](GradientBlock& b) { b.end.x = 1; },
      [](GradientBlock& b) { b.end.y = 1; },
      [](GradientBlock& b) { b.end.z = 1; },
      [](GradientBlock& b) { b.radius = 1; },
      [](GradientBlock& b) { b.cycle = 1; },
      [](GradientBlock& b) { b.previewObject = 1; },
      [](GradientBlock& b) { b.previewAuto = 0; },
      [](GradientBlock& b) { b.previewBusy = 1; },
      [](GradientBlock& b) { b.changed = 0; },
  };
  const Change ignored[] = {
      [](GradientBlock& b) { b.ramp.knots[3].position = 0.25f; },
      [](GradientBlock& b) { b.ramp.order[0] = 0; },
      [](GradientBlock& b) { b.dialogChannel = 1; },
      [](GradientBlock& b) { b.dialogChannelMark = 1; },
  };
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

}  // namespace
}  // namespace sorvanix::test
