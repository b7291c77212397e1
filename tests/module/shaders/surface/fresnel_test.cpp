// Fresnel: where its ramp is read and what its sides show; its data, both saved forms, its
// messages.
#include "module/shaders/surface/fresnel.h"

#include <cmath>
#include <numbers>

#include "tests/support/surface_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Vec = StreamValue::Vec;

constexpr Vector kBlack = {0, 0, 0};
constexpr Vector kWhite = {1, 1, 1};

struct FresnelTest : SurfaceTest<FresnelBlock, PluginIdFresnel> {
  float Shown() {
    ShowTheNumber(block.ramp);
    return Output().x;
  }
};

TEST_F(FresnelTest, FillsAllCallbacksButGetInfo) {
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  ASSERT_NE(record.Edit, nullptr);
  EXPECT_EQ(record.Edit(&instance), 0);
  EXPECT_EQ(record.GetInfo, nullptr);
  EXPECT_NE(record.Message, nullptr);
  EXPECT_NE(record.InitRender, nullptr);
  EXPECT_NE(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
}

// --- where the ramp is read ---

TEST_F(FresnelTest, AtTheOutlineTheFirstKnotIsRead) {
  LookAlong(1, 0, 0);
  ExpectExactly(Output(), kWhite);
}

TEST_F(FresnelTest, WhereTheSurfaceFacesTheRayTheLastKnotIsRead) {
  LookAlong(0, 0, -1);
  ExpectExactly(Output(), kBlack);
}

TEST_F(FresnelTest, ReadsTheRampAtTheCosine) {
  for (const double degrees : {10.0, 30.0, 45.0, 60.0, 80.0}) {
    const double angle = degrees * std::numbers::pi / 180;
    LookAlong(std::sin(angle), 0, -std::cos(angle));
    EXPECT_NEAR(Shown(), std::cos(angle), 1e-6) << degrees;
  }
}

TEST_F(FresnelTest, TheSignOfTheCosineDoesNotCount) {
  LookAlong(0.8, 0, -0.6);
  const float ahead = Shown();
  LookAlong(0.8, 0, 0.6);
  EXPECT_EQ(Shown(), ahead);
}

// 1e-300 along the face normal is behind in 64-bit arithmetic; in 32-bit it would be 0, in front.
TEST_F(FresnelTest, ReadsTheRayInDoublePrecision) {
  block.sideMode = FresnelFrontOnBlack;
  LookAlong(1, 0, 1e-300);
  ExpectExactly(Output(), kBlack);
}

TEST_F(FresnelTest, TakesTheBumpNormalOrTheSamplesNormal) {
  render.bumpNormal = {0.6f, 0, 0.8f};
  sample.normal = {0.8f, 0, 0.6f};
  render.baseNormal = {1, 0, 0};
  EXPECT_NEAR(Shown(), 0.8f, 1e-6);
  block.useBumpNormal = 0;
  EXPECT_NEAR(Shown(), 0.6f, 1e-6);
  block.useBumpNormal = -7;
  EXPECT_NEAR(Shown(), 0.8f, 1e-6) << "anything but zero";
}

TEST_F(FresnelTest, WithoutARenderOrARayTheRampRunsDownTheTexture) {
  for (const bool withRender : {true, false}) {
    render.ray = nullptr;
    sample.render = withRender ? &render : nullptr;
    sample.uvw = {0.5f, 0, 0};
    EXPECT_EQ(Shown(), 1);
    sample.uvw = {0.5f, 1, 0};
    EXPECT_EQ(Shown(), 0);
    sample.uvw = {0.5f, 0.25f, 0};
    EXPECT_EQ(Shown(), 0.75f);
  }
}

TEST_F(FresnelTest, WithoutARayTheSidesDoNotCount) {
  block.sideMode = FresnelWhite;
  render.ray = nullptr;
  sample.uvw = {0, 0, 0};
  ExpectExactly(Output(), kBlack);
}

// --- the sides ---

// With a ray along the face normal, or against it, the ramp shows its last knot, green here.
TEST_F(FresnelTest, EachModeShowsItsColoursInFrontAndBehind) {
  constexpr Vector kRamp = {0, 1, 0};
  block.ramp.knots[2].colour = kRamp;
  struct Row {
    std::int32_t mode;
    Vector behind, front;
  };
  for (const Row& row :
       {Row{0, kBlack, kRamp}, Row{1, kWhite, kRamp}, Row{2, kWhite, kWhite}, Row{3, kRamp, kBlack},
        Row{4, kRamp, kWhite}, Row{5, kWhite, kWhite}, Row{6, kRamp, kRamp}, Row{7, kWhite, kWhite},
        Row{-1, kWhite, kWhite}, Row{INT32_MIN, kWhite, kWhite}, Row{INT32_MAX, kWhite, kWhite}}) {
    SCOPED_TRACE(row.mode);
    block.sideMode = row.mode;
    LookAlong(0, 0, 1);
    ExpectExactly(Output(), row.behind);
    LookAlong(0, 0, -1);
    ExpectExactly(Output(), row.front);
  }
}

TEST_F(FresnelTest, ARayAlongTheFaceMeetsItsFront) {
  block.sideMode = FresnelBackOnBlack;
  LookAlong(1, 0, 0);
  ExpectExactly(Output(), kBlack);
}

TEST_F(FresnelTest, TheFaceNormalTellsTheSideNotTheOneThatIsShown) {
  block.sideMode = FresnelFrontOnBlack;
  render.faceNormal = {0, 0, -1};
  ExpectExactly(Output(), kBlack);
}

// --- a render without slots ---

TEST_F(FresnelTest, InitRenderMakesNothingAndFreeRenderLeavesEverything) {
  const int blocks = host.liveBlocks();
  EXPECT_EQ(InitRender(4), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
  int notSlots = 0;
  instance.slots = &notSlots;
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, &notSlots);
  ShaderInstance bare = {};
  EXPECT_EQ(record.InitRender(&bare, nullptr), 0);
}

// --- data ---

TEST_F(FresnelTest, AllocStoresTheDefaults) {
  const Ramp& ramp = block.ramp;
  EXPECT_EQ(ramp.count, 3);
  EXPECT_EQ(ramp.interpolation, RampCubic);
  EXPECT_EQ(ramp.selected, 0);
  EXPECT_EQ(ramp.order[0], 2);
  EXPECT_EQ(ramp.order[1], 1);
  EXPECT_EQ(ramp.order[2], 0);
  const RampKnot expected[] = {
      {kWhite, 0, 0.5f}, {{0.5f, 0.5f, 0.5f}, 0.5f, 0.5f}, {kBlack, 1, 0.5f}};
  for (int i = 0; i < 3; ++i) {
    ExpectExactly(ramp.knots[i].colour, expected[i].colour);
    EXPECT_EQ(ramp.knots[i].position, expected[i].position);
    EXPECT_EQ(ramp.knots[i].bias, 0.5f);
  }
  EXPECT_EQ(block.useBumpNormal, 1);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewObject, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.sideMode, 6);
  EXPECT_EQ(block.previewChannel, -1);
}

struct FresnelDataTest : FresnelTest {
  void FillBlock() {
    block.ramp.knots[0] = {{0.1f, 0.2f, 0.3f}, 0.25f, 0.4f};
    block.ramp.knots[1] = {{0.5f, 0.6f, 0.7f}, 0.75f, 0.8f};
    block.ramp.order[0] = 0;
    block.ramp.order[1] = 1;
    block.ramp.count = 2;
    block.ramp.selected = 51;
    block.ramp.interpolation = RampStep;
    block.useBumpNormal = 0;
    block.previewBusy = 1;
    block.previewAuto = 0;
    block.changed = 0;
    block.previewObject = 4;
    block.nested = 1;
    block.sideMode = 3;
    block.previewChannel = 7;
  }
  static Values Head(std::int32_t count) {
    return {Int(4), Int(0), Int(4), Int(0), Int(3), Int(count), Int(51)};
  }
  const Values knots = {Vec(0.1f, 0.2f, 0.3f), Float(0.25f), Float(0.4f),
                        Vec(0.5f, 0.6f, 0.7f), Float(0.75f), Float(0.8f)};
  const Values order = {Int(0), Int(1)};
};

TEST_F(FresnelDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(72500220)};
  for (const Values& part : {Head(2), knots, order}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(FresnelDataTest, ReadTakesItBack) {
  ReadFile({{Int(72500220)}, Head(2), knots, order});
  EXPECT_EQ(block.previewObject, 4);
  EXPECT_EQ(block.previewAuto, 0);
  EXPECT_EQ(block.ramp.interpolation, RampStep);
  EXPECT_EQ(block.useBumpNormal, 0);
  EXPECT_EQ(block.sideMode, 3);
  EXPECT_EQ(block.ramp.count, 2);
  EXPECT_EQ(block.ramp.selected, 51);
  ExpectExactly(block.ramp.knots[1].colour, {0.5f, 0.6f, 0.7f});
  EXPECT_EQ(block.ramp.knots[1].position, 0.75f);
  EXPECT_EQ(block.ramp.knots[1].bias, 0.8f);
  EXPECT_EQ(block.ramp.order[0], 0);
  EXPECT_EQ(block.ramp.order[1], 1);
}

TEST_F(FresnelDataTest, EveryFirstNumberFromAThousandOnIsAMarker) {
  for (const std::int32_t marker : {1000, 20000728, INT32_MAX}) {
    ReadFile({{Int(marker)}, Head(2), knots, order});
    EXPECT_EQ(block.ramp.count, 2) << marker;
    EXPECT_EQ(block.sideMode, 3);
  }
}

TEST_F(FresnelDataTest, SurplusKnotsAreReadAndDropped) {
  Values many, indices;
  for (int i = 0; i < 60; ++i) {
    many.insert(many.end(), {Vec(float(i), 0, 0), Float(float(i)), Float(0.5f)});
    indices.push_back(Int(i));
  }
  ReadFile({{Int(72500220)}, Head(60), many, indices});
  EXPECT_EQ(block.ramp.count, 50);
  EXPECT_EQ(block.ramp.knots[49].position, 49);
  EXPECT_EQ(block.useBumpNormal, 0) << "the word behind the ramp";
}

// --- the older form ---

// Red at 0, green at 0.25, blue at 1, from the face to the edge. Mirrored: blue at 1 - 1 = 0,
// green at 0.75, red at 1. The order 0, 1, 2 becomes 2, 1, 0, so its last entry is 0.
TEST_F(FresnelDataTest, TheOlderFormIsMirrored) {
  block.previewObject = 3;
  block.previewAuto = 0;
  block.useBumpNormal = 0;
  block.sideMode = 2;
  for (RampKnot& knot : block.ramp.knots) knot.bias = 0.125f;
  ReadFile({{Int(3), Int(1)},
            {Vec(1, 0, 0), Float(0), Vec(0, 1, 0), Float(0.25f), Vec(0, 0, 1), Float(1)}});
  EXPECT_EQ(block.previewObject, 0);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.useBumpNormal, 1);
  EXPECT_EQ(block.sideMode, 6);
  const Ramp& ramp = block.ramp;
  EXPECT_EQ(ramp.interpolation, 1);
  EXPECT_EQ(ramp.count, 3);
  ExpectExactly(ramp.knots[0].colour, {0, 0, 1});
  ExpectExactly(ramp.knots[1].colour, {0, 1, 0});
  ExpectExactly(ramp.knots[2].colour, {1, 0, 0});
  EXPECT_EQ(ramp.knots[0].position, 0);
  EXPECT_EQ(ramp.knots[1].position, 0.75f);
  EXPECT_EQ(ramp.knots[2].position, 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(ramp.knots[i].bias, 0.5f) << i;
    EXPECT_EQ(ramp.order[i], 2 - i);
  }
  EXPECT_EQ(ramp.selected, 0);
}

// What an old scene showed at the outline, its last knot, it shows there still.
TEST_F(FresnelDataTest, AnOlderFileLooksAsItDid) {
  ReadFile({{Int(2), Int(0)}, {Vec(1, 0, 0), Float(0), Vec(0, 0, 1), Float(1)}});
  LookAlong(0, 0, -1);
  ExpectExactly(Output(), {1, 0, 0});
  LookAlong(1, 0, 0);
  ExpectExactly(Output(), {0, 0, 1});
}

TEST_F(FresnelDataTest, AnOlderFileMayDeclare999Knots) {
  Values many;
  for (int i = 0; i < 999; ++i) {
    many.insert(many.end(), {Vec(float(i), 0, 0), Float(float(i) / 100)});
  }
  ReadFile({{Int(999), Int(0)}, many});
  EXPECT_EQ(block.ramp.count, 50);
  EXPECT_EQ(block.ramp.knots[49].colour.x, 0) << "the first knot of the file, mirrored";
  EXPECT_EQ(block.ramp.knots[0].colour.x, 49);
  EXPECT_EQ(block.sideMode, 6) << "the word behind the ramp";
}

TEST_F(FresnelDataTest, AnOlderFileWithoutKnotsIsBlack) {
  for (const std::int32_t count : {0, -1, INT32_MIN}) {
    ReadFile({{Int(count), Int(7)}});
    EXPECT_EQ(block.ramp.count, 0);
    ExpectExactly(Output(), kBlack);
  }
}

TEST_F(FresnelDataTest, AnOlderFileThatEndsKeepsWhatItHad) {
  FakeStream stream;
  stream.values = {Int(900), Int(0), Vec(1, 0, 0), Float(0.25f)};
  EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
  EXPECT_EQ(block.ramp.count, 50);
  ExpectExactly(block.ramp.knots[49].colour, {1, 0, 0});
  EXPECT_LT(stream.mismatches, 10);
}

TEST_F(FresnelDataTest, AnEmptyStreamChangesNothing) {
  FakeStream stream;
  EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
  EXPECT_EQ(record.Read(&instance, nullptr), 1);
  EXPECT_EQ(block.ramp.count, 3);
  EXPECT_EQ(block.previewObject, 1);
}

// --- messages ---

TEST_F(FresnelDataTest, GetAndDescribeAnswerTheseKeysAndAllFiftyKnotsInThrees) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{4}},
                    {1001, Word{1}, Word{0}},
                    {1002, Word{1}, Word{3}},
                    {1003, Word{1}, Word{2}}},
                   {}, 150);
  FakeContainer values, types;
  shader.Message(MessageGetParameters, values);
  shader.Message(MessageDescribeParameters, types);
  for (std::int32_t i = 0; i < 50; ++i) {
    const RampKnot& knot = block.ramp.knots[i];
    EXPECT_TRUE(SameValue(*values.Find(1008 + 3 * i), knot.colour)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1009 + 3 * i), knot.position)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1010 + 3 * i), knot.bias)) << i;
    for (std::int32_t key = 1008 + 3 * i; key <= 1010 + 3 * i; ++key) {
      EXPECT_TRUE(SameValue(*types.Find(key), Word{2})) << key;
    }
  }
}

TEST_F(FresnelDataTest, SetTakesTheLastKnotAndSkipsTheKeysAroundTheKnots) {
  FakeContainer payload;
  payload.Set(1155, Vector{0.1f, 0.2f, 0.3f});  // 1008 + 3 * 49
  payload.Set(1156, 0.4f);
  payload.Set(1157, 0.6f);
  for (const std::int32_t key : {1004, 1005, 1006, 1007, 1158, 1159, 1160, 1161, INT32_MAX}) {
    payload.Set(key, 9.0f);
  }
  payload.Set(1002, Word{4});
  EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
  ExpectExactly(block.ramp.knots[49].colour, {0.1f, 0.2f, 0.3f});
  EXPECT_EQ(block.ramp.knots[49].position, 0.4f);
  EXPECT_EQ(block.ramp.knots[49].bias, 0.6f);
  EXPECT_EQ(block.sideMode, 4);
  EXPECT_EQ(block.useBumpNormal, 1) << "the word behind the ramp";
}

TEST_F(FresnelDataTest, HasNoSlotsToReport) {
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageReportSlots, payload), 1);
  EXPECT_TRUE(payload.entries.empty());
}

// --- Copy and Compare ---

TEST_F(FresnelDataTest, CopyTakesTheFieldsAndTheLiveKnots) {
  FillBlock();
  block.ramp.knots[2].colour = {9, 9, 9};  // no longer live
  ShaderUnderTest other(started, PluginIdFresnel);
  auto& copy = other.block<FresnelBlock>();
  copy.nested = 1;
  copy.previewChannel = 3;
  copy.ramp.knots[2].colour = {7, 7, 7};
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.ramp.count, 2);
  EXPECT_EQ(copy.ramp.selected, 51);
  EXPECT_EQ(copy.ramp.interpolation, RampStep);
  EXPECT_EQ(copy.ramp.knots[1].bias, 0.8f);
  EXPECT_EQ(copy.ramp.order[0], 0);
  ExpectExactly(copy.ramp.knots[2].colour, {7, 7, 7});
  EXPECT_EQ(copy.useBumpNormal, 0);
  EXPECT_EQ(copy.previewBusy, 1);
  EXPECT_EQ(copy.previewAuto, 0);
  EXPECT_EQ(copy.changed, 0);
  EXPECT_EQ(copy.previewObject, 4);
  EXPECT_EQ(copy.sideMode, 3);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, 3) << "the dialog's own copy keeps it";
}

TEST_F(FresnelDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  ShaderUnderTest other(started, PluginIdFresnel);
  auto& changed = other.block<FresnelBlock>();
  const FresnelBlock defaults = changed;
  using Change = void (*)(FresnelBlock&);
  for (const Change change : {Change([](FresnelBlock& b) { b.ramp.knots[2].colour.y = 0.5f; }),
                              Change([](FresnelBlock& b) { b.ramp.knots[1].position = 0.25f; }),
                              Change([](FresnelBlock& b) { b.ramp.knots[0].bias = 0.25f; }),
                              Change([](FresnelBlock& b) { b.ramp.count = 4; }),
                              Change([](FresnelBlock& b) { b.ramp.interpolation = 1; }),
                              Change([](FresnelBlock& b) { b.useBumpNormal = 0; }),
                              Change([](FresnelBlock& b) { b.sideMode = 1; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
  changed = defaults;
  changed.ramp.selected = 1;
  changed.ramp.order[0] = 0;
  changed.ramp.knots[3].position = 0.25f;
  changed.previewBusy = changed.previewAuto = changed.changed = changed.previewObject = 9;
  changed.nested = changed.previewChannel = 9;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

}  // namespace
}  // namespace sorvanix::test
