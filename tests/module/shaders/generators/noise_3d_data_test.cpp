// 3D Noise as data: its registration, defaults, saved forms, messages, Copy and Compare.
#include <cmath>
#include <cstring>

#include "tests/module/shaders/generators/noise_3d_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

struct Noise3DDataTest : FilterTest<Noise3DBlock, PluginIdNoise3D> {
  // A value of its own in every field.
  void FillBlock() {
    block = {.revision = 3,
             .noiseType = 28,
             .space = 4,
             .octaves = 2.5f,
             .globalScale = 3,
             .scaleX = 4,
             .scaleY = 5,
             .scaleZ = 6,
             .detail = 7,
             .timeScale = 8,
             .contrast = 0.25f,
             .brightness = -0.5f,
             .lowClip = 0.125f,
             .highClip = 0.875f,
             .cycles = 1.5f,
             .colorA = {0.1f, 0.2f, 0.3f},
             .colorB = {0.4f, 0.5f, 0.6f},
             .bumpOneSided = 1,
             .absolute = 1,
             .flagC = 1,
             .reserved24 = 24,
             .reserved25 = 25,
             .flagD = 0,
             .useObjectFrame = 1,
             .useSphereFrame = 1,
             .extraVector = {11, 12, 13},
             .velocity = {14, 15, 16},
             .extraValue = 17,
             .nested = 1,
             .reserved37 = 37,
             .reserved38 = 38,
             .bumpStepScale = 0.75f};
  }
  // The values that every version stores after its marker. timeScale, 8, stands before detail; the
  // fifth boolean is written as 5 and dropped on reading.
  const Values common = [] {
    Values values = {Int(3), Int(28)};
    for (const float real :
         {2.5f, 3.0f, 4.0f, 5.0f, 6.0f, 8.0f, 7.0f, 0.25f, -0.5f, 0.125f, 0.875f, 1.5f}) {
      values.push_back(Float(real));
    }
    values.insert(values.end(), {Vec(0.1f, 0.2f, 0.3f), Vec(0.4f, 0.5f, 0.6f)});
    for (const bool flag : {true, true, true, false, true, true, true}) {
      values.push_back(Bool(flag));
    }
    return values;
  }();
  const Values newest = {Vec(11, 12, 13), Vec(14, 15, 16), Float(17)};

  // The fields that the later versions added, and the defaults of those that a file lacks.
  void ExpectLater(std::int32_t nested, std::int32_t space, float bumpStepScale, bool hasNewest) {
    EXPECT_EQ(block.nested, nested);
    EXPECT_EQ(block.space, space);
    EXPECT_EQ(block.bumpStepScale, bumpStepScale);
    ExpectExactly(block.extraVector, hasNewest ? Vector{11, 12, 13} : Vector{0, 0, 1});
    ExpectExactly(block.velocity, hasNewest ? Vector{14, 15, 16} : Vector{0, 0, 0});
    EXPECT_EQ(block.extraValue, hasNewest ? 17 : 0);
  }
};

TEST_F(Noise3DDataTest, FillsEveryCallbackAndTellsItsWord) {
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

TEST_F(Noise3DDataTest, AllocMakes160BytesWithTheDefaults) {
  EXPECT_EQ(host.calls.back(), "alloc(160)");
  EXPECT_EQ(block.revision, 0);
  EXPECT_EQ(block.noiseType, 12);
  EXPECT_EQ(block.space, 0);
  EXPECT_EQ(block.octaves, 5);
  EXPECT_EQ(block.globalScale, 1);
  EXPECT_EQ(block.scaleX, 1);
  EXPECT_EQ(block.scaleY, 1);
  EXPECT_EQ(block.scaleZ, 1);
  EXPECT_EQ(block.detail, 1);
  EXPECT_EQ(block.timeScale, 0);
  EXPECT_EQ(block.contrast, 0);
  EXPECT_EQ(block.brightness, 0);
  EXPECT_EQ(block.lowClip, 0);
  EXPECT_EQ(block.highClip, 1);
  EXPECT_EQ(block.cycles, 0);
  ExpectExactly(block.colorA, {0, 0, 0});
  ExpectExactly(block.colorB, {1, 1, 1});
  EXPECT_EQ(block.bumpOneSided, 0);
  EXPECT_EQ(block.absolute, 0);
  EXPECT_EQ(block.flagC, 0);
  EXPECT_EQ(block.reserved24, 0);
  EXPECT_EQ(block.reserved25, 1);
  EXPECT_EQ(block.flagD, 1);
  EXPECT_EQ(block.useObjectFrame, 0);
  EXPECT_EQ(block.useSphereFrame, 0);
  ExpectExactly(block.extraVector, {0, 0, 1});
  ExpectExactly(block.velocity, {0, 0, 0});
  EXPECT_EQ(block.extraValue, 0);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.reserved37, 0);
  EXPECT_EQ(block.reserved38, -1);
  EXPECT_EQ(block.bumpStepScale, 1);
}

TEST_F(Noise3DDataTest, AllocWithoutMemoryAnswersZeroAndLeavesNothing) {
  const int blocks = host.liveBlocks();
  host.failAllocation = 1;
  ShaderInstance bare = {};
  EXPECT_EQ(record.Alloc(&bare), 0);
  EXPECT_EQ(bare.data, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

// --- the saved form ---

TEST_F(Noise3DDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000733)};
  for (const Values& part : {common, Values{Int(1), Int(4), Float(0.75f)}, newest}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Written(), expected);
}

std::vector<std::int32_t> writtenBools;

// Whatever a host makes of a boolean of 5.
TEST(Noise3DFile, TheFifthBooleanIsWrittenAsFive) {
  FakeHost host;
  StreamTable stream = *host.api.stream;
  stream.writeBool = [](HostStream*, std::int32_t value) noexcept {
    writtenBools.push_back(value);
    return std::int32_t{1};
  };
  host.api.stream = &stream;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);
  for (const Registration& shader : host.registrations) {
    if (shader.id != PluginIdNoise3D) continue;
    ShaderInstance instance = {};
    ASSERT_EQ(shader.record.Alloc(&instance), 1);
    FakeStream file;
    writtenBools.clear();
    shader.record.Write(&instance, file.handle());
    shader.record.Free(&instance);
  }
  EXPECT_EQ(writtenBools, (std::vector<std::int32_t>{0, 0, 0, 1, 5, 0, 0}));
}

TEST_F(Noise3DDataTest, ReadsTheOldestFormWithLaterFieldsAtTheirDefaults) {
  ReadFile({{Int(20000728)}, common});
  EXPECT_EQ(block.revision, 3);
  EXPECT_EQ(block.noiseType, 28);
  EXPECT_EQ(block.octaves, 2.5f);
  EXPECT_EQ(block.globalScale, 3);
  EXPECT_EQ(block.scaleX, 4);
  EXPECT_EQ(block.scaleY, 5);
  EXPECT_EQ(block.scaleZ, 6);
  EXPECT_EQ(block.timeScale, 8);
  EXPECT_EQ(block.detail, 7);
  EXPECT_EQ(block.cycles, 1.5f);
  ExpectExactly(block.colorB, {0.4f, 0.5f, 0.6f});
  EXPECT_EQ(block.bumpOneSided, 1);
  EXPECT_EQ(block.flagC, 1);
  EXPECT_EQ(block.flagD, 0);
  EXPECT_EQ(block.useObjectFrame, 1);
  EXPECT_EQ(block.useSphereFrame, 1);
  ExpectLater(0, 0, 1, false);
}

TEST_F(Noise3DDataTest, Marker20000729AddsNested) {
  ReadFile({{Int(20000729)}, common, {Int(1)}});
  ExpectLater(1, 0, 1, false);
}

TEST_F(Noise3DDataTest, Marker20000730AddsTheSpace) {
  ReadFile({{Int(20000730)}, common, {Int(1), Int(4)}});
  ExpectLater(1, 4, 1, false);
}

// That one version had two values more, which are dropped.
TEST_F(Noise3DDataTest, Marker20000731DropsTwoValuesAndStaysInStep) {
  ReadFile({{Int(20000731)}, common, {Int(1), Int(4), Float(9), Float(8)}});
  ExpectLater(1, 4, 1, false);
}

TEST_F(Noise3DDataTest, Marker20000732AddsTheBumpStep) {
  ReadFile({{Int(20000732)}, common, {Int(1), Int(4), Float(0.75f)}});
  ExpectLater(1, 4, 0.75f, false);
}

TEST_F(Noise3DDataTest, Marker20000733AndNewerOnesHoldEverything) {
  for (const std::int32_t marker : {20000733, INT32_MAX}) {
    block = {};
    ReadFile({{Int(marker)}, common, {Int(1), Int(4), Float(0.75f)}, newest});
    ExpectLater(1, 4, 0.75f, true);
  }
}

TEST_F(Noise3DDataTest, OfAnOlderFileOnlyTheMarkerIsRead) {
  FillBlock();
  const Noise3DBlock before = block;
  for (const std::int32_t marker : {20000727, 0, INT32_MIN}) {
    ReadFile({{Int(marker)}});
    EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0) << marker;
  }
}

TEST_F(Noise3DDataTest, AnEndedStreamLeavesTheOtherFieldsAlone) {
  FillBlock();
  FakeStream stream;
  stream.values = {Int(20000733), Int(0), Int(7)};
  EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
  EXPECT_EQ(block.noiseType, 7);
  EXPECT_EQ(block.octaves, 2.5f);
  EXPECT_EQ(block.extraValue, 17);
}

TEST_F(Noise3DDataTest, WriteThenReadGivesAnEqualBlock) {
  FillBlock();
  FakeStream stream;
  record.Write(&instance, stream.handle());
  ShaderUnderTest other(started, PluginIdNoise3D);
  EXPECT_EQ(other.record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  EXPECT_EQ(other.block<Noise3DBlock>().useObjectFrame, 1) << "stored, though not compared";
}

// --- messages ---

TEST_F(Noise3DDataTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{28}},
                    {1001, Word{1}, Word{4}},
                    {1002, Word{2}, 2.5f},
                    {1003, Word{2}, 3.0f},
                    {1004, Word{2}, 4.0f},
                    {1005, Word{2}, 5.0f},
                    {1006, Word{2}, 6.0f},
                    {1007, Word{2}, 8.0f},  // timeScale
                    {1008, Word{2}, 7.0f},  // detail
                    {1009, Word{2}, 0.25f},
                    {1010, Word{2}, -0.5f},
                    {1011, Word{2}, 0.125f},
                    {1012, Word{2}, 0.875f},
                    {1013, Word{2}, 1.5f},
                    {1014, Word{2}, Vector{0.1f, 0.2f, 0.3f}},  // vectors are described as reals
                    {1015, Word{2}, Vector{0.4f, 0.5f, 0.6f}},
                    {1016, Word{1}, true},
                    {1017, Word{1}, true},
                    {1018, Word{1}, true},
                    {1019, Word{1}, true},
                    {1020, Word{2}, 0.75f},
                    {1021, Word{2}, 17.0f},
                    {1022, Word{2}, 11.0f},
                    {1023, Word{2}, 12.0f},
                    {1024, Word{2}, 13.0f},
                    {1025, Word{2}, Vector{14, 15, 16}}},
                   {});
}

TEST_F(Noise3DDataTest, GetThenSetGivesAnEqualBlockInAllExchangedFields) {
  FillBlock();
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  ShaderUnderTest other(started, PluginIdNoise3D);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  auto& taken = other.block<Noise3DBlock>();
  EXPECT_EQ(taken.useObjectFrame, 1);
  EXPECT_EQ(taken.revision, 0) << "without a key";
  taken.revision = block.revision;
  taken.flagC = block.flagC;
  taken.flagD = block.flagD;
  taken.nested = block.nested;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(Noise3DDataTest, SetTakesValuesAsTheyComeAndIgnoresOtherKeys) {
  FakeContainer container;
  for (const std::int32_t key : {0, 999, 1026, INT32_MIN, INT32_MAX}) container.Set(key, 5.0f);
  container.Set(1000, Word{-99});
  container.Set(1002, -1e30f);
  container.Set(1023, 0.5f);
  Noise3DBlock expected = block;
  expected.noiseType = -99;
  expected.octaves = -1e30f;
  expected.extraVector.y = 0.5f;
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(std::memcmp(&block, &expected, sizeof expected), 0);
}

TEST_F(Noise3DDataTest, AnEmptyContainerAndUnknownMessagesChangeNothing) {
  const Noise3DBlock before = block;
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  container.Set(1000, Word{3});
  for (const std::int32_t id : {0, 112002, 112004, 112005, -1, INT32_MAX}) {
    EXPECT_EQ(shader.Message(id, container), 1) << id;
  }
  EXPECT_EQ(std::memcmp(&before, &block, sizeof block), 0);
}

TEST_F(Noise3DDataTest, ReportSlotsTellsTheArrayAndItsStride) {
  ASSERT_EQ(InitRender(), 0);
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageReportSlots, container), 1);
  EXPECT_NE(instance.slots, nullptr);
  EXPECT_EQ(std::get<Word>(*container.Find(12000)), reinterpret_cast<Word>(instance.slots));
  EXPECT_EQ(std::get<Word>(*container.Find(12001)), 256);
}

// --- Copy and Compare ---

TEST_F(Noise3DDataTest, CopyTakesAllWordsAndClearsNested) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdNoise3D);
  other.block<Noise3DBlock>().nested = 1;
  EXPECT_EQ(record.Copy(&instance, &other.instance), 1);
  Noise3DBlock expected = block;
  expected.nested = 0;
  EXPECT_EQ(std::memcmp(&other.block<Noise3DBlock>(), &expected, sizeof expected), 0);
  EXPECT_EQ(block.nested, 1) << "the source keeps its own";
}

TEST_F(Noise3DDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  using Change = void (*)(Noise3DBlock&);
  const Change compared[] = {
      [](Noise3DBlock& b) { b.revision = 1; },      [](Noise3DBlock& b) { b.noiseType = 1; },
      [](Noise3DBlock& b) { b.space = 1; },         [](Noise3DBlock& b) { b.octaves = 2; },
      [](Noise3DBlock& b) { b.globalScale = 2; },   [](Noise3DBlock& b) { b.scaleX = 2; },
      [](Noise3DBlock& b) { b.scaleY = 2; },        [](Noise3DBlock& b) { b.scaleZ = 2; },
      [](Noise3DBlock& b) { b.detail = 2; },        [](Noise3DBlock& b) { b.timeScale = 2; },
      [](Noise3DBlock& b) { b.contrast = 2; },      [](Noise3DBlock& b) { b.brightness = 2; },
      [](Noise3DBlock& b) { b.lowClip = 2; },       [](Noise3DBlock& b) { b.highClip = 2; },
      [](Noise3DBlock& b) { b.cycles = 2; },        [](Noise3DBlock& b) { b.colorA.y = 2; },
      [](Noise3DBlock& b) { b.colorB.z = 2; },      [](Noise3DBlock& b) { b.bumpOneSided = 1; },
      [](Noise3DBlock& b) { b.absolute = 1; },      [](Noise3DBlock& b) { b.flagC = 1; },
      [](Noise3DBlock& b) { b.flagD = 0; },         [](Noise3DBlock& b) { b.useSphereFrame = 1; },
      [](Noise3DBlock& b) { b.nested = 1; },        [](Noise3DBlock& b) { b.bumpStepScale = 2; },
      [](Noise3DBlock& b) { b.extraVector.x = 2; }, [](Noise3DBlock& b) { b.extraVector.y = 2; },
      [](Noise3DBlock& b) { b.extraVector.z = 2; }, [](Noise3DBlock& b) { b.velocity.z = 2; },
      [](Noise3DBlock& b) { b.extraValue = 2; },    [](Noise3DBlock& b) { b.octaves = NAN; },
  };
  const Change ignored[] = {
      [](Noise3DBlock& b) { b.useObjectFrame = 1; }, [](Noise3DBlock& b) { b.reserved24 = 5; },
      [](Noise3DBlock& b) { b.reserved25 = 5; },     [](Noise3DBlock& b) { b.reserved37 = 5; },
      [](Noise3DBlock& b) { b.reserved38 = 5; },
  };
  ShaderUnderTest other(started, PluginIdNoise3D);
  auto& changed = other.block<Noise3DBlock>();
  const Noise3DBlock defaults = changed;
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
