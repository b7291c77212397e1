// Fusion: the mix of its inputs, which of them are read and where, its data, its saved forms and
// its messages. The blend modes themselves are tested in blend_test.
#include "module/shaders/filters/fusion.h"

#include "module/kit/blend.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;

struct FusionTest : FilterTest<FusionBlock, PluginIdFusion> {
  ScriptedLink& base = Link(block.baseInput);
  ScriptedLink& blend = Link(block.blendInput);
  ScriptedLink& mask = Link(block.maskInput);

  FusionTest() {
    base.content.colour = {0.2f, 0.4f, 0.6f};
    blend.content.colour = {0.6f, 0.4f, 0.2f};
    mask.content.colour = {0.25f, 0.25f, 0.25f};
    sample.uvw = {0.5f, 0.5f, 0.25f};
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 0, 1};
  }
  FootprintBlock& Slot(std::int32_t cpu) { return FilterTest::Slot(cpu, SlotStrideFusion); }
  std::vector<int> ReadOrder() {
    std::vector<int> order;
    for (const LinkRead& read : host.reads) order.push_back(read.link);
    return order;
  }
};

// --- the mix ---

TEST_F(FusionTest, TheDefaultsShowTheBlendInput) { ExpectVector(Output(), {0.6f, 0.4f, 0.2f}); }

// 0.2 + 0.25 (0.6 - 0.2) = 0.3; 0.6 + 0.25 (0.2 - 0.6) = 0.5.
TEST_F(FusionTest, OpacityMixes) {
  block.opacity = 0.25f;
  ExpectVector(Output(), {0.3f, 0.4f, 0.5f});
}

TEST_F(FusionTest, TheModeIsThatOfTheBlendEngine) {
  block.mode = BlendMultiply;
  ExpectVector(Output(), {0.12f, 0.16f, 0.12f});
  block.mode = BlendAdd;
  ExpectVector(Output(), {0.8f, 0.8f, 0.8f});
}

// A mask of 0.25: as the opacity above. Inverted it is 0.75: 0.2 + 0.75 * 0.4 = 0.5.
TEST_F(FusionTest, TheMaskScalesTheOpacity) {
  block.useMask = 1;
  ExpectVector(Output(), {0.3f, 0.4f, 0.5f});
  block.invertMask = 1;
  ExpectVector(Output(), {0.5f, 0.4f, 0.3f});
}

TEST_F(FusionTest, InvertOutputTurnsTheMixRound) {
  block.invertOutput = 1;
  ExpectVector(Output(), {0.4f, 0.6f, 0.8f});
}

TEST_F(FusionTest, WithoutUseMaskTheMaskIsNeitherReadNorInverted) {
  block.invertMask = 1;
  ExpectVector(Output(), {0.6f, 0.4f, 0.2f});
  EXPECT_EQ(ReadOrder(), (std::vector<int>{1, 2}));
  BeginRender();
  host.reads.clear();
  Output();
  EXPECT_EQ(ReadOrder(), (std::vector<int>{1, 2}));
}

TEST_F(FusionTest, OutsideARenderAllAreReadAtThePlainSampleWithoutTagFlag) {
  block.useMask = 1;
  sample.texFlags = 9;
  Output();
  EXPECT_EQ(ReadOrder(), (std::vector<int>{1, 2, 3}));
  for (const LinkRead& read : host.reads) {
    ExpectExactly(read.uvw, sample.uvw);
    EXPECT_EQ(read.tagFlag, 0);
  }
}

// --- InitRender: it asks the inputs only after its own slots are made ---

TEST_F(FusionTest, InitRenderPreparesInOrderMakesSlotsAndThenAsks) {
  for (ScriptedLink* link : {&base, &blend, &mask}) {
    link->HoldShader(PluginIdNoise2D);
    link->MakeSlots(1);
  }
  host.calls.clear();
  EXPECT_EQ(InitRender(), 0);
  EXPECT_EQ(host.calls, (std::vector<std::string>{
                            "channelInitRender(1)", "channelInitRender(2)", "channelInitRender(3)",
                            "cpuCount", "alloc(308)", "channelMessage(1, 1001257)",
                            "channelMessage(2, 1001257)", "channelMessage(3, 1001257)"}));
}

TEST_F(FusionTest, WithoutARenderOrMemoryNoInputIsAsked) {
  base.HoldShader(PluginIdNoise2D);
  const RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  host.failAllocation = 1;
  EXPECT_EQ(InitRender(), 0);
  EXPECT_TRUE(base.messages.empty());
}

TEST_F(FusionTest, AFailedInputDoesNotKeepTheOthersFromBeingAsked) {
  blend.initAnswer = -100;
  mask.HoldShader(PluginIdNoise2D);
  EXPECT_EQ(InitRender(), -100);
  EXPECT_NE(instance.slots, nullptr);
  EXPECT_EQ(mask.messages.size(), 1u);
}

// --- where the inputs are read ---

struct FusionReadTest : FusionTest {
  FusionReadTest() {
    base.HoldBitmap(4, 2);   // steps 0.25 and 0.5
    blend.HoldBitmap(8, 4);  // 0.125 and 0.25
    mask.HoldBitmap(16, 8);  // 0.0625 and 0.125
    block.useMask = 1;
  }
};

// Deliberate: the coordinate is not put back between the inputs.
TEST_F(FusionReadTest, UnderATapTheMovesAddUpFromInputToInput) {
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  const Vector expected[4][3] = {
      {{0.75f, 0.5f, 0.25f}, {0.875f, 0.5f, 0.25f}, {0.9375f, 0.5f, 0.25f}},
      {{0.25f, 0.5f, 0.25f}, {0.125f, 0.5f, 0.25f}, {0.0625f, 0.5f, 0.25f}},
      {{0.5f, 1.0f, 0.25f}, {0.5f, 1.25f, 0.25f}, {0.5f, 1.375f, 0.25f}},
      {{0.5f, 0.0f, 0.25f}, {0.5f, -0.25f, 0.25f}, {0.5f, -0.375f, 0.25f}}};
  for (std::int32_t tap = 1; tap <= 4; ++tap) {
    Slot(1).tap = tap;
    host.reads.clear();
    Output();
    ASSERT_EQ(ReadOrder(), (std::vector<int>{1, 2, 3}));
    for (std::size_t i = 0; i < 3; ++i) {
      ExpectExactly(host.reads[i].uvw, expected[tap - 1][i]);
    }
  }
}

// Three inputs of a hundredth each: one, two and three steps.
TEST_F(FusionReadTest, ThreeShadersAreReadAtOneTwoAndThreeSteps) {
  for (ScriptedLink* link : {&base, &blend, &mask}) {
    link->content = {};
    link->HoldShader(PluginIdBuffy);
  }
  BeginRender();
  Slot(0).tap = TapPlusU;
  Output();
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_FLOAT_EQ(host.reads[i].uvw.x, 0.5f + 0.01f * float(i + 1));
  }
}

TEST_F(FusionReadTest, AnAwareInputGetsTheFootprintAndDoesNotMoveTheCoordinate) {
  blend.content.bitmapWidth = 0;
  blend.HoldShader(PluginIdNoise2D);
  blend.MakeSlots(2);
  instance.channel = 3;
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  Slot(1).tap = TapPlusU;
  Output();
  EXPECT_EQ(host.reads[0].uvw.x, 0.75f);
  EXPECT_EQ(host.reads[1].uvw.x, 0.75f) << "where the base left it";
  EXPECT_EQ(host.reads[2].uvw.x, 0.8125f);
  ExpectExactly(host.reads[1].head.uvwPoint, sample.uvw);
  EXPECT_EQ(host.reads[1].head.outerChannel, 3);
}

TEST_F(FusionReadTest, InTheBumpChannelEachInputIsReadAroundTheSampleItself) {
  instance.channel = ChannelBump;
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  EXPECT_EQ(ReadOrder(), (std::vector<int>{1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3}));
  const float steps[3][2] = {{0.25f, 0.5f}, {0.125f, 0.25f}, {0.0625f, 0.125f}};
  for (std::size_t i = 0; i < 3; ++i) {
    const LinkRead* reads = &host.reads[4 * i];
    ExpectExactly(reads[0].uvw, {0.5f + steps[i][0], 0.5f, 0.25f});
    ExpectExactly(reads[1].uvw, {0.5f - steps[i][0], 0.5f, 0.25f});
    ExpectExactly(reads[2].uvw, {0.5f, 0.5f + steps[i][1], 0.25f});
    ExpectExactly(reads[3].uvw, {0.5f, 0.5f - steps[i][1], 0.25f});
  }
}

TEST_F(FusionReadTest, InTheBumpChannelAnAwareInputSeesTheTaps) {
  mask.content.bitmapWidth = 0;
  mask.HoldShader(PluginIdNoise2D);
  mask.MakeSlots(1);
  instance.channel = ChannelBump;
  BeginRender();
  Output();
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(host.reads[8 + i].head.tap, std::int32_t(i) + 1);
    ExpectExactly(host.reads[8 + i].uvw, sample.uvw);
  }
}

TEST_F(FusionReadTest, InTheBumpChannelTheMaskIsReadOnlyWithUseMask) {
  instance.channel = ChannelBump;
  block.useMask = 0;
  block.invertMask = 1;
  BeginRender();
  Output();
  EXPECT_EQ(host.reads.size(), 8u);
}

// The base rises along u by 0.4 a unit, its step is 0.25: means 0.6 and 0.4; along v it is level.
// The blend is 0.5 everywhere, multiplied: 0.3 and 0.2. gu = (0.2 - 0.3) 3.5 = -0.35, turned round
// by invertOutput +0.35. n = (0.35, 1, 0) over sqrt(1.1225) = 1.0594810.
TEST_F(FusionReadTest, TheFourMixesBendTheNormal) {
  base.content.show = [](const LinkRead& read) {
    const float height = 0.5f + 0.4f * (read.uvw.x - 0.5f);
    return Vector{height, height, height};
  };
  blend.content.colour = {0.5f, 0.5f, 0.5f};
  block.mode = BlendMultiply;
  block.useMask = 0;
  block.invertOutput = 1;
  instance.channel = ChannelBump;
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  ExpectVector(render.bumpNormal, {0.3303504f, 0.9438581f, 0});
}

// The inverted mask counts in all four mixes. Mask along u: 0.75 and 0.25 become 0.25 and 0.75.
// Base black, blend white: the mix is the mask. gu = (0.75 - 0.25) 3.5 = 1.75.
TEST_F(FusionReadTest, InvertMaskAppliesToAllFourReads) {
  mask.content.show = [](const LinkRead& read) {
    const float height = 0.5f + 4 * (read.uvw.x - 0.5f);
    return Vector{height, height, height};
  };
  base.content.colour = {0, 0, 0};
  blend.content.colour = {1, 1, 1};
  block.invertMask = 1;
  instance.channel = ChannelBump;
  BeginRender();
  Output();
  const double length = 2.0155644;  // sqrt(1.75^2 + 1)
  ExpectVector(render.bumpNormal, {float(1.75 / length), float(1 / length), 0});
}

// --- data ---

TEST_F(FusionTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.mode, 0);
  EXPECT_EQ(block.opacity, 1);
  EXPECT_EQ(block.invertMask, 0);
  EXPECT_EQ(block.useMask, 0);
  EXPECT_EQ(block.invertOutput, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.previewChannel, -1);
}

struct FusionFileTest : FusionTest {
  void FillBlock() {
    base.content.name = "a";
    blend.content.name = "b";
    mask.content.name = "c";
    block.mode = BlendScreen;
    block.opacity = 0.5f;
    block.invertMask = 1;
    block.useMask = 1;
    block.invertOutput = 1;
    block.previewObject = 3;
    block.previewBusy = 1;
    block.changed = 0;
    block.previewAuto = 0;
    block.nested = 1;
    block.previewChannel = 7;
  }
  const Values common = {Int(8),
                         Float(0.5f),
                         Bool(true),
                         Bool(true),
                         StreamValue::Link("a"),
                         StreamValue::Link("b"),
                         StreamValue::Link("c"),
                         Int(3),
                         Bool(false),
                         Bool(true),
                         Bool(false)};
};

TEST_F(FusionFileTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000816)};
  expected.insert(expected.end(), common.begin(), common.end());
  expected.push_back(Bool(true));
  for (int i = 0; i < 6; ++i) expected.push_back(Int(5));
  expected.push_back(Int(1));
  expected.push_back(Bool(true));
  EXPECT_EQ(Written(), expected);
}

TEST_F(FusionFileTest, ReadsTheOldestFormWithoutInvertOutput) {
  for (const std::int32_t marker : {20000728, 20000815}) {
    ReadFile({{Int(marker)}, common});
    EXPECT_EQ(block.mode, BlendScreen);
    EXPECT_EQ(block.opacity, 0.5f);
    EXPECT_EQ(block.invertMask, 1);
    EXPECT_EQ(block.useMask, 1);
    EXPECT_EQ(base.content.name, "a");
    EXPECT_EQ(blend.content.name, "b");
    EXPECT_EQ(mask.content.name, "c");
    EXPECT_EQ(block.previewObject, 3);
    EXPECT_EQ(block.previewAuto, 0);
    EXPECT_EQ(block.previewBusy, 1);
    EXPECT_EQ(block.changed, 0);
    EXPECT_EQ(block.invertOutput, 0);
  }
}

// The file's own marker: what is written behind invertOutput is not read. Deliberate.
TEST_F(FusionFileTest, ReadsItsOwnFormUpToInvertOutput) {
  ReadFile({{Int(20000816)}, common, {Bool(true)}});
  EXPECT_EQ(block.invertOutput, 1);
  EXPECT_EQ(block.nested, 0);
  ReadFile({{Int(20000826)}, common, {Bool(false)}});
  EXPECT_EQ(block.invertOutput, 0);
}

TEST_F(FusionFileTest, WhatItWroteLeavesNestedAlone) {
  FillBlock();
  FakeStream stream;
  stream.values = Written();
  ShaderUnderTest other(started, PluginIdFusion);
  EXPECT_EQ(record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(other.block<FusionBlock>().invertOutput, 1);
  EXPECT_EQ(other.block<FusionBlock>().nested, 0);
  EXPECT_EQ(stream.values.size() - stream.position, 8u) << "left in the stream";
}

TEST_F(FusionFileTest, ReadsTheNestingFromALaterMarkerOn) {
  const Values behind = {Bool(true), Int(1), Int(2), Int(3),     Int(4),
                         Int(5),     Int(6), Int(1), Bool(false)};
  ReadFile({{Int(20000827)}, common, behind});
  EXPECT_EQ(block.invertOutput, 1);
  EXPECT_EQ(block.nested, 1);
}

TEST_F(FusionFileTest, AFileOlderThanTheFirstVersionIsNotRead) {
  ReadFile({{Int(20000727)}});
  EXPECT_EQ(block.opacity, 1);
}

TEST_F(FusionFileTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{8}},
                    {1001, Word{2}, 0.5f},
                    {1002, Word{1}, true},
                    {1003, Word{1}, true},
                    {1004, Word{1}, true}},
                   {1005, 1006, 1007});
}

TEST_F(FusionFileTest, SetTakesThem) {
  FillBlock();
  FakeContainer payload;
  shader.Message(MessageGetParameters, payload);
  ShaderUnderTest other(started, PluginIdFusion);
  other.Message(MessageSetParameters, payload);
  const auto& taken = other.block<FusionBlock>();
  EXPECT_EQ(taken.mode, BlendScreen);
  EXPECT_EQ(taken.opacity, 0.5f);
  EXPECT_EQ(taken.invertMask, 1);
  EXPECT_EQ(taken.useMask, 1);
  EXPECT_EQ(taken.invertOutput, 1);
}

TEST_F(FusionFileTest, CopyTakesTheListedFieldsAndTheDefaultsElsewhere) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdFusion);
  auto& copy = other.block<FusionBlock>();
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, -1);
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(FusionFileTest, CompareLooksAtTheseFields) {
  ShaderUnderTest other(started, PluginIdFusion);
  auto& changed = other.block<FusionBlock>();
  const FusionBlock defaults = changed;
  using Change = void (*)(FusionBlock&);
  for (const Change change : {Change([](FusionBlock& b) { b.mode = 1; }),
                              Change([](FusionBlock& b) { b.opacity = 0.5f; }),
                              Change([](FusionBlock& b) { b.invertMask = 1; }),
                              Change([](FusionBlock& b) { b.useMask = 1; }),
                              Change([](FusionBlock& b) { b.invertOutput = 1; }),
                              Change([](FusionBlock& b) { b.previewObject = 1; }),
                              Change([](FusionBlock& b) { b.previewAuto = 0; }),
                              Change([](FusionBlock& b) { b.previewBusy = 1; }),
                              Change([](FusionBlock& b) { b.changed = 0; }),
                              Change([](FusionBlock& b) { b.nested = 1; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
}

}  // namespace
}  // namespace sorvanix::test
