// Falloff: the angle that reads its ramp, in every frame; its slots; its data and its messages.
#include "module/shaders/surface/falloff.h"

#include <cmath>
#include <cstring>

#include "module/kit/matrix.h"
#include "tests/support/surface_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

// What query 2 answers.
const Matrix* camera;

struct FalloffTest : SurfaceTest<FalloffBlock, PluginIdFalloff> {
  FalloffTest() {
    camera = nullptr;
    host.render.query = [](const RenderContext*, std::int32_t code) noexcept {
      return static_cast<const void*>(code == QueryCameraMatrix ? camera : nullptr);
    };
    block.space = FalloffWorld;
  }
  float Shown() {
    ShowTheNumber(block.ramp);
    return Output().x;
  }
  float Shown(const Vector& normal) {
    render.bumpNormal = normal;
    return Shown();
  }
};

TEST_F(FalloffTest, FillsAllCallbacks) {
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  ASSERT_NE(record.Edit, nullptr);
  EXPECT_EQ(record.Edit(&instance), 0);
  ASSERT_NE(record.GetInfo, nullptr);
  EXPECT_EQ(record.GetInfo(), 0x0000000Cu);
  EXPECT_NE(record.Message, nullptr);
  EXPECT_NE(record.InitRender, nullptr);
  EXPECT_NE(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
}

// --- the angle ---

TEST_F(FalloffTest, AlongTheDirectionIsOneAgainstItZeroAcrossItAHalf) {
  EXPECT_EQ(Shown({0, 1, 0}), 1);
  EXPECT_EQ(Shown({0, -1, 0}), 0);
  EXPECT_EQ(Shown({1, 0, 0}), 0.5f);
  EXPECT_EQ(Shown({0, 0, 1}), 0.5f);
}

// The cosine of 0.6 gives (0.6 + 1) / 2.
TEST_F(FalloffTest, IsTheCosineMappedToTheRamp) { EXPECT_NEAR(Shown({0.8f, 0.6f, 0}), 0.8f, 1e-6); }

TEST_F(FalloffTest, TheLengthOfTheDirectionDoesNotCount) {
  const float one = Shown({0.8f, 0.6f, 0});
  for (const float length : {1e-30f, 0.5f, 1e6f}) {
    block.direction = {0, length, 0};
    EXPECT_EQ(Shown(), one) << length;
  }
}

TEST_F(FalloffTest, ADirectionWithoutLengthGivesTheMiddle) {
  block.direction = {0, 0, 0};
  EXPECT_EQ(Shown({0, 1, 0}), 0.5f);
  EXPECT_EQ(Shown({1, 0, 0}), 0.5f);
}

// (3 + 1) / 2 = 2 and (-3 + 1) / 2 = -1 lie beyond the ramp, which holds its ends; knots moved
// there show that the number itself is not clamped.
TEST_F(FalloffTest, TheNumberIsNotClamped) {
  ShowTheNumber(block.ramp);
  block.ramp.knots[1].position = 4;
  render.bumpNormal = {0, 3, 0};
  EXPECT_EQ(Output().x, 0.5f);
  block.ramp.knots[0].position = -2;
  block.ramp.knots[1].position = 2;
  render.bumpNormal = {0, -3, 0};
  EXPECT_EQ(Output().x, 0.25f);
}

TEST_F(FalloffTest, TakesTheBumpNormalOrTheBaseNormal) {
  render.bumpNormal = {0, 1, 0};
  render.baseNormal = {0, -1, 0};
  sample.normal = {1, 0, 0};
  EXPECT_EQ(Shown(), 1);
  block.useBumpNormal = 0;
  EXPECT_EQ(Shown(), 0);
}

TEST_F(FalloffTest, WithoutARenderTheRampRunsDownTheTexture) {
  sample.render = nullptr;
  sample.uvw = {0.5f, 0, 0};
  EXPECT_EQ(Shown(), 1);
  sample.uvw = {0.5f, 1, 0};
  EXPECT_EQ(Shown(), 0);
  sample.uvw = {0.5f, 0.25f, 0};
  EXPECT_EQ(Shown(), 0.75f);
}

// --- the frames ---

// A frame that lies on its side: its matrix takes x to y, y to -x, moves by 5 and doubles.
constexpr Matrix kTurned = {{5, 5, 5}, {0, 2, 0}, {-2, 0, 0}, {0, 0, 2}};

TEST_F(FalloffTest, TheWorldFrameTurnsWithNothing) {
  tag.matrix2 = kTurned;
  render.textureTag = &tag;
  camera = &kTurned;
  for (const std::int32_t space : {0, 2, 4, -1, INT32_MAX, INT32_MIN}) {
    block.space = space;
    EXPECT_EQ(Shown({0, 1, 0}), 1) << space;
  }
}

// (1, 0, 0) goes to the matrix's first axis, (0, 2, 0), and that to unit length.
TEST_F(FalloffTest, TheTextureFrameTurnsByTheTagsSecondMatrix) {
  tag.matrix1 = kIdentityMatrix;
  tag.matrix2 = kTurned;
  render.textureTag = &tag;
  block.space = FalloffTexture;
  EXPECT_EQ(Shown({1, 0, 0}), 1);
  EXPECT_EQ(Shown({-1, 0, 0}), 0);
  EXPECT_EQ(Shown({0, 1, 0}), 0.5f);
}

TEST_F(FalloffTest, WithoutATagTheTextureFrameIsTheWorld) {
  block.space = FalloffTexture;
  EXPECT_EQ(Shown({0, 1, 0}), 1);
}

// The inverse takes y to x: (0, -1, 0) would come out as (-1, 0, 0), and (-1, 0, 0) as (0, 1, 0).
TEST_F(FalloffTest, TheCameraFrameTurnsByTheInverseOfItsMatrix) {
  camera = &kTurned;
  block.space = FalloffCamera;
  EXPECT_EQ(Shown({-1, 0, 0}), 1);
  EXPECT_EQ(Shown({1, 0, 0}), 0);
  EXPECT_EQ(Shown({0, -1, 0}), 0.5f);
}

TEST_F(FalloffTest, WithoutACameraItsFrameIsTheWorld) {
  block.space = FalloffCamera;
  EXPECT_EQ(Shown({0, 1, 0}), 1);
  host.render.query = nullptr;
  EXPECT_EQ(Shown({0, 1, 0}), 1);
}

TEST_F(FalloffTest, AFrameThatFlattensTheNormalGivesTheMiddle) {
  tag.matrix2 = {{5, 5, 5}, {}, {}, {}};
  render.textureTag = &tag;
  block.space = FalloffTexture;
  EXPECT_EQ(Shown({0, 1, 0}), 0.5f);
}

// --- slots ---

TEST_F(FalloffTest, InitRenderMakesClearedSlotsAndReportsThem) {
  ASSERT_EQ(InitRender(3), 0);
  EXPECT_EQ(host.calls.back(), "alloc(744)");  // 3 * 248
  const FootprintBlock clear = {};
  for (int cpu = 0; cpu < 3; ++cpu) {
    EXPECT_EQ(std::memcmp(&Slot(cpu, 248), &clear, sizeof clear), 0);
  }
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageReportSlots, payload), 1);
  EXPECT_EQ(std::get<Word>(*payload.Find(12000)), reinterpret_cast<Word>(instance.slots));
  EXPECT_EQ(std::get<Word>(*payload.Find(12001)), 248);
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  record.FreeRender(&instance);
}

TEST_F(FalloffTest, WithoutMemoryForSlotsAMessageIsShownAndTheRenderGoesOn) {
  host.failAllocation = 1;
  EXPECT_EQ(InitRender(), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.messages, std::vector<std::string>{"Couldn't Allocate Falloff Globals"});
  EXPECT_EQ(Shown({0, 1, 0}), 1);
}

TEST_F(FalloffTest, WithoutARenderOrABlockThereAreNoSlots) {
  const RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
  ShaderInstance bare = {};
  const RenderInit withRender = {&render, nullptr};
  EXPECT_EQ(record.InitRender(&bare, &withRender), 0);
  EXPECT_EQ(bare.slots, nullptr);
}

TEST_F(FalloffTest, WhatAnEnclosingFilterWritesChangesNothing) {
  BeginRender();
  const float alone = Shown({0.8f, 0.6f, 0});
  block.nested = 1;
  Slot(0, 248).tap = TapPlusU;
  Slot(0, 248).pointOffset = {7, 7, 7};
  EXPECT_EQ(Shown(), alone);
}

// --- data ---

TEST(FalloffDefaults, AreThese) {
  StartedModule started;
  ShaderUnderTest shader(started, PluginIdFalloff);
  const auto& block = shader.block<FalloffBlock>();
  EXPECT_EQ(block.ramp.count, 3);
  EXPECT_EQ(block.ramp.interpolation, RampCubic);
  EXPECT_EQ(block.ramp.selected, 0);
  EXPECT_EQ(block.ramp.order[0], 2);
  EXPECT_EQ(block.ramp.order[2], 0);
  ExpectExactly(block.ramp.knots[0].colour, {0, 0, 0});
  ExpectExactly(block.ramp.knots[1].colour, {1, 0, 0});
  ExpectExactly(block.ramp.knots[2].colour, {1, 1, 0});
  EXPECT_EQ(block.ramp.knots[0].position, 0);
  EXPECT_EQ(block.ramp.knots[1].position, 0.5f);
  EXPECT_EQ(block.ramp.knots[2].position, 1);
  EXPECT_EQ(block.space, 1);
  ExpectExactly(block.direction, {0, 1, 0});
  EXPECT_EQ(block.useBumpNormal, 1);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewObject, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
}

struct FalloffDataTest : FalloffTest {
  void FillBlock() {
    block.ramp.knots[0] = {{0.1f, 0.2f, 0.3f}, 0.25f, 0.4f};
    block.ramp.knots[1] = {{0.5f, 0.6f, 0.7f}, 0.75f, 0.8f};
    block.ramp.order[0] = 0;
    block.ramp.order[1] = 1;
    block.ramp.count = 2;
    block.ramp.selected = 51;
    block.ramp.interpolation = RampStep;
    block.space = 3;
    block.direction = {1, 2, 3};
    block.useBumpNormal = 0;
    block.previewBusy = 1;
    block.previewAuto = 0;
    block.changed = 0;
    block.previewObject = 4;
    block.nested = 1;
    block.previewChannel = 7;
  }
  const Values fields = {Int(2),   Int(51),     Int(4), Int(3),      Float(1),   Float(2),
                         Float(3), Bool(false), Int(4), Bool(false), Bool(true), Bool(false)};
  const Values knots = {Vec(0.1f, 0.2f, 0.3f), Float(0.25f), Float(0.4f),
                        Vec(0.5f, 0.6f, 0.7f), Float(0.75f), Float(0.8f)};
  const Values order = {Int(0), Int(1)};
};

TEST_F(FalloffDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000728)};
  for (const Values& part : {fields, knots, order}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(FalloffDataTest, ReadTakesItBack) {
  ReadFile({{Int(20000728)}, fields, knots, order});
  FalloffBlock read = block;
  FillBlock();
  EXPECT_EQ(read.ramp.count, 2);
  EXPECT_EQ(read.ramp.selected, 51);
  EXPECT_EQ(read.ramp.interpolation, RampStep);
  EXPECT_EQ(read.ramp.knots[1].position, 0.75f);
  EXPECT_EQ(read.ramp.order[0], 0);
  EXPECT_EQ(read.space, 3);
  ExpectExactly(read.direction, {1, 2, 3});
  EXPECT_EQ(read.useBumpNormal, 0);
  EXPECT_EQ(read.previewBusy, 1);
  EXPECT_EQ(read.previewAuto, 0);
  EXPECT_EQ(read.changed, 0);
  EXPECT_EQ(read.previewObject, 4);
  EXPECT_EQ(read.nested, 0) << "is in no file";
}

TEST_F(FalloffDataTest, AnyOtherMarkerIsRefusedAndTheBlockStays) {
  for (const std::int32_t marker : {20000727, 20000729, 0, INT32_MAX, INT32_MIN}) {
    FakeStream stream;
    stream.values = {Int(marker)};
    stream.values.insert(stream.values.end(), fields.begin(), fields.end());
    const FalloffBlock before = block;
    EXPECT_EQ(record.Read(&instance, stream.handle()), 0) << marker;
    EXPECT_EQ(stream.position, 1u);
    EXPECT_EQ(std::memcmp(&before, &block, sizeof before), 0);
  }
}

TEST_F(FalloffDataTest, GetAndDescribeAnswerTheseKeysAndAllFiftyKnots) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{4}},
                    {1001, Word{1}, Word{2}},
                    {1002, Word{1}, Word{3}},
                    {1003, Word{2}, 1.0f},
                    {1004, Word{2}, 2.0f},
                    {1005, Word{2}, 3.0f},
                    {1006, Word{1}, false}},
                   {}, 150);
  FakeContainer values, types;
  shader.Message(MessageGetParameters, values);
  shader.Message(MessageDescribeParameters, types);
  for (std::int32_t i = 0; i < 50; ++i) {
    const RampKnot& knot = block.ramp.knots[i];
    EXPECT_TRUE(SameValue(*values.Find(1100 + i), knot.colour)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1200 + i), knot.position)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1300 + i), knot.bias)) << i;
    for (const std::int32_t first : {1100, 1200, 1300}) {
      EXPECT_TRUE(SameValue(*types.Find(first + i), Word{2})) << i;
    }
  }
}

TEST_F(FalloffDataTest, SetTakesTheLastKnotAndIgnoresThoseBeyondIt) {
  FakeContainer payload;
  payload.Set(1149, Vector{0.1f, 0.2f, 0.3f});
  payload.Set(1249, 0.4f);
  payload.Set(1349, 0.6f);
  for (const std::int32_t key : {999, 1007, 1099, 1150, 1199, 1250, 1299, 1350, 1399, INT32_MAX}) {
    payload.Set(key, 9.0f);
  }
  payload.Set(1004, -0.5f);
  EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
  ExpectExactly(block.ramp.knots[49].colour, {0.1f, 0.2f, 0.3f});
  EXPECT_EQ(block.ramp.knots[49].position, 0.4f);
  EXPECT_EQ(block.ramp.knots[49].bias, 0.6f);
  EXPECT_EQ(block.space, 0) << "the word behind the ramp";
  ExpectExactly(block.direction, {0, -0.5f, 0});
}

TEST_F(FalloffDataTest, CopyTakesTheFieldsAndTheLiveKnots) {
  FillBlock();
  block.ramp.knots[2].colour = {9, 9, 9};  // no longer live
  ShaderUnderTest other(started, PluginIdFalloff);
  auto& copy = other.block<FalloffBlock>();
  copy.nested = 1;
  copy.previewChannel = 3;
  copy.ramp.knots[2].colour = {7, 7, 7};
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  EXPECT_EQ(copy.ramp.order[0], 0);
  ExpectExactly(copy.ramp.knots[2].colour, {7, 7, 7});
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, 3) << "the dialog's own copy keeps it";
}

TEST_F(FalloffDataTest, CompareLooksAtTheseFieldsAndNoOthers) {
  ShaderUnderTest other(started, PluginIdFalloff);
  auto& changed = other.block<FalloffBlock>();
  block.space = changed.space;
  const FalloffBlock defaults = changed;
  using Change = void (*)(FalloffBlock&);
  for (const Change change : {Change([](FalloffBlock& b) { b.ramp.knots[2].colour.y = 0.5f; }),
                              Change([](FalloffBlock& b) { b.ramp.knots[1].position = 0.25f; }),
                              Change([](FalloffBlock& b) { b.ramp.knots[0].bias = 0.25f; }),
                              Change([](FalloffBlock& b) { b.ramp.count = 4; }),
                              Change([](FalloffBlock& b) { b.ramp.interpolation = 1; }),
                              Change([](FalloffBlock& b) { b.ramp.selected = 1; }),
                              Change([](FalloffBlock& b) { b.space = 0; }),
                              Change([](FalloffBlock& b) { b.direction.x = 1; }),
                              Change([](FalloffBlock& b) { b.direction.y = 0; }),
                              Change([](FalloffBlock& b) { b.direction.z = NAN; }),
                              Change([](FalloffBlock& b) { b.useBumpNormal = 0; }),
                              Change([](FalloffBlock& b) { b.previewObject = 0; }),
                              Change([](FalloffBlock& b) { b.previewAuto = 0; }),
                              Change([](FalloffBlock& b) { b.previewBusy = 1; }),
                              Change([](FalloffBlock& b) { b.changed = 0; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
  changed = defaults;
  changed.ramp.order[0] = 0;
  changed.ramp.knots[3].position = 0.25f;
  changed.nested = changed.previewChannel = 9;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

}  // namespace
}  // namespace sorvanix::test
