// Proximal as data: its registration, defaults, saved forms, messages, Copy and Compare.
#include <cmath>
#include <functional>

#include "module/shaders/surface/proximal.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto String = StreamValue::String;

struct ProximalDataTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest shader{started, PluginIdProximal};
  ProximalBlock& block = shader.block<ProximalBlock>();

  // A value of its own in every field, the name by message.
  void FillBlock() {
    FakeContainer name;
    name.Set(1002, std::string("Lamp"));
    shader.Message(MessageSetParameters, name);
    HostString* const text = block.objectName;
    block = {.minimum = 2,
             .maximum = 3,
             .objectName = text,
             .matchFlag = 1,
             .useChildren = 1,
             .strength = 4,
             .falloff = 5,
             .useGeometry = 1,
             .useFaces = 1,
             .combine = 3,
             .dialogWord = 6,
             .nested = 1,
             .previewChannel = 7};
  }
  std::string Name(ProximalBlock& of) { return FakeTextOf(of.objectName); }

  // A file, followed by a sentinel that is not to be touched.
  void ReadFile(const Values& values) {
    FakeStream stream;
    stream.values = values;
    stream.values.push_back(Int(4711));
    EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
    EXPECT_EQ(stream.mismatches, 0);
    EXPECT_EQ(stream.position, values.size()) << "the next object starts here";
  }
};

TEST_F(ProximalDataTest, FillsAllCallbacks) {
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
  EXPECT_EQ(record.GetInfo(), 0x00200002u);
}

TEST_F(ProximalDataTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.minimum, 0);
  EXPECT_EQ(block.maximum, 1);
  EXPECT_EQ(Name(block), "");
  EXPECT_EQ(block.matchFlag, 0);
  EXPECT_EQ(block.useChildren, 0);
  EXPECT_EQ(block.strength, 1);
  EXPECT_EQ(block.falloff, 0);
  EXPECT_EQ(block.useGeometry, 0);
  EXPECT_EQ(block.useFaces, 0);
  EXPECT_EQ(block.combine, 4);
  EXPECT_EQ(block.dialogWord, 0);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
}

TEST_F(ProximalDataTest, AllocWithoutMemoryAnswers0AndLeavesNothing) {
  const int blocks = started.host.liveBlocks();
  ShaderInstance other = {};
  started.host.failAllocation = 1;
  EXPECT_EQ(shader.record.Alloc(&other), 0);
  EXPECT_EQ(other.data, nullptr);
  EXPECT_EQ(started.host.liveBlocks(), blocks);
}

TEST_F(ProximalDataTest, FreeReleasesTheNameToo) {
  const int texts = started.host.liveTexts();
  FillBlock();
  EXPECT_EQ(started.host.liveTexts(), texts + 1);
  shader.record.Free(&shader.instance);
  EXPECT_EQ(started.host.liveTexts(), texts);
  EXPECT_EQ(shader.instance.data, nullptr);
}

// --- the saved forms ---

TEST_F(ProximalDataTest, WriteStoresTheFieldsInFileOrder) {
  FillBlock();
  FakeStream stream;
  EXPECT_EQ(shader.record.Write(&shader.instance, stream.handle()), 1);
  EXPECT_EQ(stream.values, (Values{Int(20000818), Float(2), Float(3), String("Lamp"), Bool(true),
                                   Bool(true), Float(4), Int(5), Bool(true), Bool(true), Int(3)}));
}

TEST_F(ProximalDataTest, WriteThenReadGivesAnEqualBlock) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdProximal);
  FakeStream stream;
  shader.record.Write(&shader.instance, stream.handle());
  EXPECT_EQ(other.record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
}

// Distances in scene units, 200 and 50, become hundreds; the falloff of that time was the square.
TEST_F(ProximalDataTest, ReadsTheFirstForm) {
  ReadFile({Int(20000728), Float(200), Float(50), String("Lamp"), Bool(true), Bool(true)});
  EXPECT_EQ(block.minimum, 2);
  EXPECT_EQ(block.maximum, 0.5f);
  EXPECT_EQ(Name(block), "Lamp");
  EXPECT_EQ(block.matchFlag, 1);
  EXPECT_EQ(block.useChildren, 1);
  EXPECT_EQ(block.falloff, 1);
  EXPECT_EQ(block.strength, 1) << "as Alloc left it";
  EXPECT_EQ(block.combine, 4) << "as Alloc left it";
}

TEST_F(ProximalDataTest, TheLastMarkerBeforeStrengthIsStillTheFirstForm) {
  ReadFile({Int(20000814), Float(200), Float(50), String("Lamp"), Bool(true), Bool(true)});
  EXPECT_EQ(block.minimum, 2);
  EXPECT_EQ(block.falloff, 1);
}

TEST_F(ProximalDataTest, Marker20000815AddsStrengthAndFalloff) {
  for (const std::int32_t marker : {20000815, 20000817}) {
    ReadFile({Int(marker), Float(200), Float(50), String("Lamp"), Bool(true), Bool(true),
              Float(0.5f), Int(3)});
    EXPECT_EQ(block.minimum, 2);
    EXPECT_EQ(block.strength, 0.5f);
    EXPECT_EQ(block.falloff, 3);
    EXPECT_EQ(block.useGeometry, 0);
  }
}

// The file ends where the falloff should stand: the one of that time is taken.
TEST_F(ProximalDataTest, AnEndedFileOfThatTimeHasTheFalloffOfItsTime) {
  FakeStream stream;
  stream.values = {Int(20000815), Float(200), Float(50), String("Lamp"), Bool(true), Bool(true)};
  EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
  EXPECT_EQ(block.falloff, 1);
}

TEST_F(ProximalDataTest, TheOwnFormIsNotScaled) {
  for (const std::int32_t marker : {20000818, INT32_MAX}) {
    ReadFile({Int(marker), Float(200), Float(50), String("Lamp"), Bool(true), Bool(false),
              Float(0.5f), Int(3), Bool(true), Bool(true), Int(2)});
    EXPECT_EQ(block.minimum, 200);
    EXPECT_EQ(block.maximum, 50);
    EXPECT_EQ(block.falloff, 3);
    EXPECT_EQ(block.useGeometry, 1);
    EXPECT_EQ(block.useFaces, 1);
    EXPECT_EQ(block.combine, 2);
  }
}

TEST_F(ProximalDataTest, OlderMarkersAreAcceptedWithNothingRead) {
  for (const std::int32_t marker : {20000727, 0, INT32_MIN}) {
    FillBlock();
    FakeStream stream;
    stream.values = {Int(marker), Float(200), Float(50)};
    EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
    EXPECT_EQ(stream.position, 1u);
    EXPECT_EQ(block.minimum, 2);
    EXPECT_EQ(block.falloff, 5);
  }
}

// --- messages ---

TEST_F(ProximalDataTest, EveryKeyAnswersItsValueAndItsTypeWord) {
  FillBlock();
  const Word integer = DescribeInteger, real = DescribeReal;
  ExpectParameters(shader,
                   {{1000, real, 2.0f},
                    {1001, real, 3.0f},
                    {1002, integer, std::string("Lamp")},
                    {1003, integer, true},
                    {1004, integer, true},
                    {1005, real, 4.0f},
                    {1006, integer, Word{5}},
                    {1007, integer, true},
                    {1008, integer, true},
                    {1009, integer, Word{3}}},
                   {});
}

TEST_F(ProximalDataTest, GetThenSetGivesAnEqualBlock) {
  FillBlock();
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  ShaderUnderTest other(started, PluginIdProximal);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
}

TEST_F(ProximalDataTest, UnknownKeysAndMessagesChangeNothing) {
  FillBlock();
  FakeContainer container;
  for (const std::int32_t key : {0, 999, 1010, INT32_MIN}) container.Set(key, 9.0f);
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  container.Set(1000, 9.0f);
  for (const std::int32_t id : {0, 112002, 112004}) EXPECT_EQ(shader.Message(id, container), 1);
  EXPECT_EQ(block.minimum, 2);
  EXPECT_EQ(Name(block), "Lamp");
}

// --- Copy and Compare ---

TEST_F(ProximalDataTest, CopyTakesAllFieldsAndClearsNested) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdProximal);
  ProximalBlock& copy = other.block<ProximalBlock>();
  copy.nested = 1;
  EXPECT_EQ(shader.record.Copy(&shader.instance, &other.instance), 1);
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  EXPECT_EQ(copy.dialogWord, 6);
  EXPECT_EQ(copy.previewChannel, 7);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_NE(copy.objectName, block.objectName) << "a name of its own";
  EXPECT_EQ(block.nested, 1) << "the source keeps its own";
}

TEST_F(ProximalDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  using B = ProximalBlock;
  const std::function<void(B&)> compared[] = {
      [](B& b) { b.minimum = 9; },     [](B& b) { b.maximum = 9; },  [](B& b) { b.matchFlag = 1; },
      [](B& b) { b.useChildren = 1; }, [](B& b) { b.strength = 9; }, [](B& b) { b.falloff = 9; },
      [](B& b) { b.useGeometry = 1; }, [](B& b) { b.useFaces = 1; }, [](B& b) { b.combine = 9; },
      [](B& b) { b.strength = NAN; }};
  const std::function<void(B&)> ignored[] = {[](B& b) { b.dialogWord = 9; },
                                             [](B& b) { b.nested = 1; },
                                             [](B& b) { b.previewChannel = 9; }};
  ShaderUnderTest other(started, PluginIdProximal);
  B& changed = other.block<B>();
  const B defaults = changed;
  for (const auto& change : compared) {
    changed = defaults;
    change(changed);
    EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 0);
  }
  for (const auto& change : ignored) {
    changed = defaults;
    change(changed);
    EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  }
  changed = defaults;
  FakeContainer name;
  name.Set(1002, std::string("Lamp"));
  other.Message(MessageSetParameters, name);
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 0);
}

TEST_F(ProximalDataTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  ShaderInstance none = {};
  FakeStream stream;
  stream.values = {Int(20000818)};
  FakeContainer payload;
  EXPECT_EQ(shader.record.Read(&none, stream.handle()), 0);
  EXPECT_EQ(shader.record.Write(&none, stream.handle()), 0);
  EXPECT_EQ(shader.record.Edit(&none), 0);
  EXPECT_EQ(shader.record.Copy(&none, &shader.instance), 0);
  EXPECT_EQ(shader.record.Copy(&shader.instance, &none), 0);
  EXPECT_EQ(shader.record.Compare(&none, &shader.instance), 0);
  EXPECT_EQ(shader.record.Message(&none, MessageGetParameters, payload.handle()), 1);
  EXPECT_TRUE(payload.entries.empty());
  RenderContext render = {};
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(shader.record.InitRender(&none, &init), 0);
  EXPECT_EQ(none.slots, nullptr);
  shader.record.FreeRender(&none);
  ChannelSample sample = {};
  Vector colour = {9, 9, 9};
  shader.record.Output(&colour, &none, &sample);
  ExpectExactly(colour, {0, 0, 0});
}

}  // namespace
}  // namespace sorvanix::test
