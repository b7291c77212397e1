// The stage that all filters share, seen through Bright/Contrast, which passes colours within 0..1
// unchanged: how it prepares its input, what it hands down, what it reads, how it bends the normal.
#include <algorithm>
#include <cstring>

#include "module/shaders/filters/bright_contrast.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr std::int32_t kStride = SlotStrideBrightContrast;

// What stands behind the head of the filter's slot.
struct Tail {
  std::uint32_t addressLow, addressHigh;
  std::int32_t innerStride;
  float stepU, stepV;
  std::int32_t unused;
};
static_assert(sizeof(FootprintBlock) + sizeof(Tail) == kStride);

struct InputStageTest : FilterTest<BrightContrastBlock, PluginIdBrightContrast> {
  ScriptedLink& input = Link(block.input);

  InputStageTest() {
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 0, 1};
    sample = {.uvw = {0.5f, 0.5f, 0.25f},
              .normal = {0.1f, 0.2f, 0.3f},
              .delta = {0.01f, 0.02f, 0.03f},
              .time = 4,
              .texFlags = 77,
              .render = nullptr,
              .blurOffset = 0.5f,
              .blurScale = 4};
    input.content.colour = {0.25f, 0.5f, 0.75f};
  }

  void HoldAwareShader(std::int32_t cpus = 1) {
    input.HoldShader(PluginIdNoise2D);
    input.MakeSlots(cpus);
  }
  Tail TailOf(std::int32_t cpu) {
    Tail tail;
    std::memcpy(&tail, &Slot(cpu) + 1, sizeof tail);
    return tail;
  }
  FootprintBlock& Slot(std::int32_t cpu) { return FilterTest::Slot(cpu, kStride); }

  // The four points and what follows from them: half extents 0.5, 1, 2 and a blur of 0.5 * 4 = 2.
  void PlacePoints() {
    render.hitPoint = {1, 2, 3};
    render.footprintA = {2, 2, 3};
    render.footprintB = {1, 4, 3};
    render.footprintC = {1, 2, -1};
  }
  // A tag whose inverse takes p to (1, 2, 3) + 2 p, and a hit in the tag's space.
  void PlaceTag() {
    tag.matrix1 = {{9, 8, 7}, {1, 0, 0}, {0, 2, 0}, {0, 0, 3}};
    tag.matrix2 = {{1, 2, 3}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
    render.textureTag = &tag;
    render.localHitPoint = {0.5f, 0, -1};
  }
};

void ExpectSameMatrix(const Matrix& a, const Matrix& b) {
  EXPECT_EQ(std::memcmp(&a, &b, sizeof a), 0);
}
const Matrix kIdentity = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

// --- InitRender ---

TEST_F(InputStageTest, AnAwareInputIsAskedForItsSlots) {
  HoldAwareShader();
  BeginRender(2);
  ASSERT_EQ(input.messages.size(), 1u);
  EXPECT_EQ(input.messages[0].id, MessageReportSlots);
  EXPECT_TRUE(input.messages[0].payload.entries.empty());
  for (const std::int32_t cpu : {0, 1}) {
    const Tail tail = TailOf(cpu);
    const std::uint64_t address = std::uint64_t{tail.addressHigh} << 32 | tail.addressLow;
    EXPECT_EQ(address, static_cast<std::uint64_t>(input.slotAddress));
    EXPECT_EQ(tail.innerStride, 256);
    EXPECT_EQ(tail.stepU, 0.01f);
    EXPECT_EQ(tail.stepV, 0.01f);
    EXPECT_EQ(tail.unused, 0);
  }
}

TEST_F(InputStageTest, FourteenShadersAreAware) {
  for (const std::int32_t id : {1000104, 1000123, 1000125, 1001203, 1001214, 1001216, 1001224,
                                1001231, 1001232, 1001235, 1001238, 1001266, 1001271, 1001277}) {
    input.HoldShader(id);
    input.messages.clear();
    InitRender();
    EXPECT_EQ(input.messages.size(), 1u) << id;
  }
}

TEST_F(InputStageTest, FresnelBanjBuffyBitmapsAndStrangersAreNot) {
  for (const std::int32_t id : {1000075, 1001258, 1004202, 0, -1, 1001278}) {
    input.HoldShader(id);
    input.messages.clear();
    InitRender();
    EXPECT_TRUE(input.messages.empty()) << id;
  }
}

// Every shader stores `nested` in its file, where the mark is one integer of 1 more.
TEST_F(InputStageTest, EachRegisteredAwareShaderIsMarkedInItsOwnPlace) {
  for (const std::int32_t id :
       {PluginIdNoise2D, PluginIdFusion, PluginIdDistorter, PluginIdBrightContrast,
        PluginIdColorizer, PluginIdHue, PluginIdPosterizer}) {
    ShaderUnderTest inner(started, id);
    const auto countOnes = [&] {
      FakeStream stream;
      inner.record.Write(&inner.instance, stream.handle());
      return std::count(stream.values.begin() + 1, stream.values.end(), StreamValue::Int(1));
    };
    const auto before = countOnes();
    input.HoldShader(inner, id);
    InitRender();
    EXPECT_EQ(countOnes(), before + 1) << id;
    record.FreeRender(&instance);
    EXPECT_EQ(countOnes(), before + 1) << "the mark stays when the render ends";
    input.content = {};
  }
}

TEST_F(InputStageTest, AShaderWithoutABlockIsNotMarked) {
  HoldAwareShader();
  input.instance.data = nullptr;
  EXPECT_EQ(InitRender(), 0);
}

TEST_F(InputStageTest, AnAnswerThatIsNoArrayOfSlotsIsNotTrusted) {
  HoldAwareShader();
  const Word address = input.slotAddress;
  struct Answer {
    Word address, stride;
  };
  for (const Answer& answer :
       {Answer{0, 256}, Answer{address, -1}, Answer{address, 247}, Answer{address, 250},
        Answer{address + 1, 256}, Answer{address, static_cast<Word>(std::int64_t{1} << 40)}}) {
    input.slotAddress = answer.address;
    input.slotStride = answer.stride;
    BeginRender();
    EXPECT_EQ(TailOf(0).innerStride, 0);
    input.slotAddress = address;
    input.slotStride = 256;
    Output();
    EXPECT_EQ(input.Slot(0).outerChannel, 0) << "nothing is written";
    ExpectExactly(input.Slot(0).uvwPoint, {0, 0, 0});
  }
}

TEST_F(InputStageTest, ABitmapHasStepsOfExactlyOnePixel) {
  input.HoldBitmap(640, 3);
  BeginRender(2);
  for (const std::int32_t cpu : {0, 1}) {
    EXPECT_EQ(TailOf(cpu).stepU, 1.0f / 640);
    EXPECT_EQ(TailOf(cpu).stepV, 1.0f / 3);
  }
}

TEST_F(InputStageTest, AnEmptyLinkAndAShaderHaveStepsOfAHundredth) {
  BeginRender();
  EXPECT_EQ(TailOf(0).stepU, 0.01f);
  EXPECT_EQ(TailOf(0).stepV, 0.01f);
  input.HoldShader(PluginIdBuffy);
  input.content.bitmapWidth = input.content.bitmapHeight = 4;  // not asked for
  BeginRender();
  EXPECT_EQ(TailOf(0).stepU, 0.01f);
}

TEST_F(InputStageTest, TheInputIsAskedBeforeTheOwnSlotsAreMade) {
  HoldAwareShader();
  host.calls.clear();
  InitRender();
  EXPECT_EQ(host.calls,
            (std::vector<std::string>{"channelInitRender(1)", "channelMessage(1, 1001257)",
                                      "cpuCount", "alloc(272)"}));
}

TEST_F(InputStageTest, WithoutARenderTheInputIsAskedAndMarkedAllTheSame) {
  HoldAwareShader();
  const RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(input.messages.size(), 1u);
}

// --- without a render or slots: the plain sample ---

TEST_F(InputStageTest, WithoutARenderTheInputIsReadAtThePlainSample) {
  instance.channel = ChannelBump;
  block.nested = 1;
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ASSERT_EQ(host.reads.size(), 1u);
  const LinkRead& read = host.reads[0];
  ExpectExactly(read.uvw, sample.uvw);
  ExpectExactly(read.delta, sample.delta);
  ExpectExactly(read.normal, sample.normal);
  EXPECT_EQ(read.time, 4);
  EXPECT_EQ(read.tagFlag, 0) << "not even the sample's own flags";
  EXPECT_EQ(read.blurOffset, 0.5f);
  EXPECT_EQ(read.blurScale, 4);
}

TEST_F(InputStageTest, WithoutASampleInARenderTheSlotsAreNotRead) {
  BeginRender();
  Slot(0).tap = TapPlusU;
  sample.render = nullptr;
  Output();
  ExpectExactly(host.reads[0].uvw, sample.uvw);
}

TEST_F(InputStageTest, WithoutSlotsARenderIsReadAtThePlainSampleToo) {
  PlaceTag();
  tag.flags = 3;
  instance.channel = ChannelBump;
  sample.render = &render;
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ASSERT_EQ(host.reads.size(), 1u);
  EXPECT_EQ(host.reads[0].tagFlag, 0);
  ExpectExactly(render.bumpNormal, {0, 1, 0});
}

// --- the footprint that is handed down ---

TEST_F(InputStageTest, WithoutATagTheFootprintIsThatOfTheRender) {
  HoldAwareShader();
  PlacePoints();
  instance.channel = ChannelDiffusion;
  BeginRender();
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ASSERT_EQ(host.reads.size(), 1u);
  const LinkRead& read = host.reads[0];
  ExpectExactly(read.uvw, sample.uvw);
  EXPECT_EQ(read.tagFlag, 0);
  const FootprintBlock& head = read.head;
  ExpectExactly(head.footprint[0], {1, 2, 3});
  ExpectExactly(head.footprint[1], {2, 2, 3});
  ExpectExactly(head.footprint[2], {1, 4, 3});
  ExpectExactly(head.footprint[3], {1, 2, -1});
  ExpectExactly(head.footprintRadius, {2.5f, 3, 4});
  ExpectExactly(head.pointOffset, {0, 0, 0});
  ExpectExactly(head.uvwPoint, sample.uvw);
  ExpectExactly(head.uvwDelta, sample.delta);
  ExpectExactly(head.uvwOffset, {0, 0, 0});
  ExpectExactly(head.basePoint, sample.uvw);
  ExpectExactly(head.baseDelta, sample.delta);
  ExpectExactly(head.baseOffset, {0, 0, 0});
  EXPECT_EQ(head.tap, TapNone);
  ExpectSameMatrix(head.texMatrix, kIdentity);
  ExpectSameMatrix(head.texInverse, kIdentity);
  EXPECT_EQ(head.outerChannel, ChannelDiffusion);
}

TEST_F(InputStageTest, WithoutATagNestedPlaysNoPart) {
  HoldAwareShader();
  block.nested = 1;
  instance.channel = 3;
  BeginRender();
  Slot(0).uvwPoint = {9, 9, 9};
  Slot(0).tap = TapPlusV;
  Slot(0).outerChannel = 4;
  Output();
  ExpectExactly(host.reads[0].head.uvwPoint, sample.uvw);
  EXPECT_EQ(host.reads[0].head.tap, TapNone);
  EXPECT_EQ(host.reads[0].head.outerChannel, 3);
}

// p = (0.5, 0, -1) goes to 100 ((1, 2, 3) + 2 p) = (200, 200, 100). The corners lie (1, 0, 0),
// (0, 2, 0) and (0, 0, -4) from the hit, 200 times as far here. Half extents 100, 200, 400, blur 2.
TEST_F(InputStageTest, WithATagTheFootprintIsInTheTagsSpaceTimesAHundred) {
  HoldAwareShader();
  PlacePoints();
  PlaceTag();
  instance.channel = 3;
  BeginRender();
  Output();
  const FootprintBlock& head = host.reads[0].head;
  ExpectExactly(head.footprint[0], {200, 200, 100});
  ExpectExactly(head.footprint[1], {400, 200, 100});
  ExpectExactly(head.footprint[2], {200, 600, 100});
  ExpectExactly(head.footprint[3], {200, 200, -700});
  ExpectExactly(head.footprintRadius, {102, 202, 402});
  ExpectSameMatrix(head.texMatrix, tag.matrix1);
  ExpectSameMatrix(head.texInverse, tag.matrix2);
  ExpectExactly(head.uvwPoint, sample.uvw);
  EXPECT_EQ(head.outerChannel, 3);
}

TEST_F(InputStageTest, TheTagsFlagsGoToTheInputWithTheirSign) {
  PlaceTag();
  BeginRender();
  for (const int flags : {3, 127, -1, -128}) {
    tag.flags = static_cast<std::int8_t>(flags);
    host.reads.clear();
    Output();
    EXPECT_EQ(host.reads[0].tagFlag, flags);
  }
}

struct NestedStageTest : InputStageTest {
  // What the enclosing filter wrote for CPU 1.
  FootprintBlock written = {.footprint = {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}},
                            .footprintRadius = {5, 5, 5},
                            .pointOffset = {6, 6, 6},
                            .uvwPoint = {7, 7, 7},
                            .uvwDelta = {8, 8, 8},
                            .uvwOffset = {9, 9, 9},
                            .basePoint = {10, 10, 10},
                            .baseDelta = {11, 11, 11},
                            .baseOffset = {12, 12, 12},
                            .tap = TapMinusU,
                            .texMatrix = {},
                            .texInverse = {},
                            .outerChannel = 13};
  NestedStageTest() {
    HoldAwareShader(2);
    PlaceTag();
    block.nested = 1;
    instance.channel = 3;
    BeginRender(2);
    Slot(1) = written;
    FakeHost::cpuIndex = 1;
  }
};

TEST_F(NestedStageTest, WithATagTheFootprintComesFromTheOwnSlotAndTheMatricesFromTheTag) {
  Output();
  FootprintBlock expected = written;
  expected.texMatrix = tag.matrix1;
  expected.texInverse = tag.matrix2;
  EXPECT_EQ(std::memcmp(&host.reads[0].head, &expected, sizeof expected), 0);
  ExpectExactly(host.reads[0].uvw, sample.uvw);
}

TEST_F(NestedStageTest, OnlyTheSlotOfTheCallingCpuIsWritten) {
  Output();
  const FootprintBlock clear = {};
  EXPECT_EQ(std::memcmp(&input.Slot(0), &clear, sizeof clear), 0);
}

// Deliberate: a filter looks at the first slot, not at that of the calling CPU.
TEST_F(NestedStageTest, OuterChannel8427InTheFirstSlotRebuildsTheFootprintFromTheTag) {
  Slot(0).outerChannel = 8427;
  Output();
  const FootprintBlock& head = host.reads[0].head;
  ExpectExactly(head.footprint[0], {200, 200, 100});
  ExpectExactly(head.uvwPoint, sample.uvw);
  EXPECT_EQ(head.tap, TapNone);
  EXPECT_EQ(head.outerChannel, 3);
}

TEST_F(NestedStageTest, OuterChannel8427InTheOwnSlotIsPassedOn) {
  Slot(1).outerChannel = 8427;
  Output();
  ExpectExactly(host.reads[0].head.uvwPoint, {7, 7, 7});
  EXPECT_EQ(host.reads[0].head.outerChannel, 8427);
}

TEST_F(NestedStageTest, AStandAloneFilterRebuildsTheFootprintFromTheTag) {
  block.nested = 0;
  Output();
  ExpectExactly(host.reads[0].head.uvwPoint, sample.uvw);
}

// --- the tap of an enclosing filter, for an input that cannot move by itself ---

TEST_F(InputStageTest, AnUnawareInputIsMovedByTheTapOfTheOwnSlot) {
  input.HoldBitmap(4, 8);
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  const Vector expected[] = {{0.5f, 0.5f, 0.25f},
                             {0.75f, 0.5f, 0.25f},
                             {0.25f, 0.5f, 0.25f},
                             {0.5f, 0.625f, 0.25f},
                             {0.5f, 0.375f, 0.25f}};
  for (const std::int32_t tap : {0, 1, 2, 3, 4}) {
    Slot(1).tap = tap;
    host.reads.clear();
    Output();
    ExpectExactly(host.reads[0].uvw, expected[tap]);
  }
  for (const std::int32_t tap : {-1, 5, INT32_MAX}) {
    Slot(1).tap = tap;
    host.reads.clear();
    Output();
    ExpectExactly(host.reads[0].uvw, sample.uvw);
  }
}

TEST_F(InputStageTest, TheTapCountsAlsoForAFilterThatIsNotNested) {
  input.HoldBitmap(4, 4);
  PlaceTag();
  BeginRender();
  Slot(0).tap = TapPlusU;
  Slot(0).outerChannel = 8427;
  Output();
  EXPECT_EQ(host.reads[0].uvw.x, 0.75f);
}

TEST_F(InputStageTest, AnAwareInputIsNotMoved) {
  HoldAwareShader();
  BeginRender();
  Slot(0).tap = TapPlusU;
  Output();
  ExpectExactly(host.reads[0].uvw, sample.uvw);
}

// --- the bump channel ---

struct BumpStageTest : InputStageTest {
  BumpStageTest() {
    instance.channel = ChannelBump;
    input.content.show = [](const LinkRead& read) {
      const float height = 0.5f + 0.4f * (read.uvw.x - 0.5f) + 0.2f * (read.uvw.y - 0.5f);
      return Vector{height, height, height};
    };
  }
};

TEST_F(BumpStageTest, AnUnawareInputIsReadAroundTheSample) {
  input.HoldBitmap(4, 8);
  PlaceTag();
  tag.flags = -2;
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  ASSERT_EQ(host.reads.size(), 4u);
  ExpectExactly(host.reads[0].uvw, {0.75f, 0.5f, 0.25f});
  ExpectExactly(host.reads[1].uvw, {0.25f, 0.5f, 0.25f});
  ExpectExactly(host.reads[2].uvw, {0.5f, 0.625f, 0.25f});
  ExpectExactly(host.reads[3].uvw, {0.5f, 0.375f, 0.25f});
  for (const LinkRead& read : host.reads) EXPECT_EQ(read.tagFlag, -2);
}

TEST_F(BumpStageTest, TheTapOfAnEnclosingFilterDoesNotMoveTheFourReads) {
  input.HoldBitmap(4, 4);
  BeginRender();
  Slot(0).tap = TapPlusV;
  Output();
  ExpectExactly(host.reads[0].uvw, {0.75f, 0.5f, 0.25f});
}

// Steps of a quarter. Means: 0.6 and 0.4 along u, 0.55 and 0.45 along v. gu = (0.4 - 0.6) 3.5
// = -0.7, gv = (0.55 - 0.45) 3.5 = 0.35: unlike signs, deliberate. n = (-0.7, 1, 0.35) over
// sqrt(0.49 + 1 + 0.1225) = 1.2698425.
TEST_F(BumpStageTest, BendsTheNormalAgainstTheRiseInUAndAlongItInV) {
  input.HoldBitmap(4, 4);
  BeginRender();
  Output();
  ExpectVector(render.bumpNormal, {-0.5512494f, 0.7874992f, 0.2756247f});
}

// The tangents scale the slopes: n = (2 * -0.7, 1, 3 * 0.35), |n| = sqrt(1.96 + 1 + 1.1025).
TEST_F(BumpStageTest, TheTangentsScaleTheSlopes) {
  input.HoldBitmap(4, 4);
  render.tangentU = {2, 0, 0};
  render.tangentV = {0, 0, 3};
  BeginRender();
  Output();
  ExpectVector(render.bumpNormal, {-1.4f / 2.0155644f, 1 / 2.0155644f, 1.05f / 2.0155644f});
}

// The filter works on each of the four reads: with a contrast of 1 the means are 1, 0, 1, 0.
// n = (-3.5, 1, 3.5) over sqrt(25.5).
TEST_F(BumpStageTest, TheFourReadsAreFilteredBeforeTheSlopeIsTaken) {
  input.HoldBitmap(4, 4);
  block.contrast = 1;
  BeginRender();
  Output();
  ExpectVector(render.bumpNormal, {-0.6931033f, 0.1980295f, 0.6931033f});
}

TEST_F(BumpStageTest, ABentNormalOfNoLengthIsTheZeroVector) {
  input.HoldBitmap(4, 4);
  render.bumpNormal = {};
  render.tangentU = render.tangentV = {};
  BeginRender();
  Output();
  ExpectExactly(render.bumpNormal, {0, 0, 0});
}

TEST_F(BumpStageTest, AnAwareInputSeesTheTapsAndAConstantCoordinate) {
  HoldAwareShader();
  PlacePoints();
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  ASSERT_EQ(host.reads.size(), 4u);
  for (std::int32_t tap = 1; tap <= 4; ++tap) {
    const LinkRead& read = host.reads[std::size_t(tap) - 1];
    EXPECT_EQ(read.head.tap, tap);
    ExpectExactly(read.uvw, sample.uvw);
    ExpectExactly(read.head.footprint[0], {1, 2, 3});
    EXPECT_EQ(read.head.outerChannel, ChannelBump);
  }
  EXPECT_EQ(input.Slot(0).tap, TapMinusV) << "it stays until the next copy of the block";
}

TEST_F(BumpStageTest, TheNextPlainReadClearsTheTap) {
  HoldAwareShader();
  BeginRender();
  Output();
  instance.channel = 0;
  host.reads.clear();
  Output();
  EXPECT_EQ(host.reads[0].head.tap, TapNone);
}

}  // namespace
}  // namespace sorvanix::test
