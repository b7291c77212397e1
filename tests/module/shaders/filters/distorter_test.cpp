// Distorter: where it reads its input, by every kind of displacement, inside and outside a render
// and in the bump channel.
#include "module/shaders/filters/distorter.h"

#include <cstring>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

// What the host was asked about the surface, and what it answers: a point (x, y, z) has the
// texture coordinate (x / 10, z / 10, 0), and u and v run along (0.6, 0.8, 0) and (0, 0, 1).
struct SurfaceQuestions {
  int pointToUvw = 0;
  const TextureTag* tag = nullptr;
  std::int32_t identity = 0;
  Vector point = {}, normal = {};
};
SurfaceQuestions asked;

struct DistorterTest : FilterTest<DistorterBlock, PluginIdDistorter> {
  ScriptedLink& input = Link(block.input);
  ScriptedLink& drive = Link(block.distortInput);
  Vector uvwAtRead = {};  // of the sample's record, as `input` is read

  DistorterTest() {
    asked = {};
    host.render.pointToUvw = [](const RenderContext*, const TextureTag* t, std::int32_t id,
                                const Vector* point, const Vector* normal, Vector* uvw) noexcept {
      asked = {asked.pointToUvw + 1, t, id, *point, *normal};
      *uvw = {point->x / 10, point->z / 10, 0};
    };
    host.render.surfaceAxes = [](const RenderContext*, const TextureTag* t, const Vector* point,
                                 const Vector* normal, Vector* u, Vector* v) noexcept {
      asked.tag = t;
      asked.point = *point;
      asked.normal = *normal;
      *u = {0.6f, 0.8f, 0};
      *v = {0, 0, 1};
    };
    input.HoldShader(PluginIdBuffy);  // not aware
    drive.HoldShader(PluginIdBuffy);
    input.content.show = [this](const LinkRead&) {
      uvwAtRead = sample.uvw;
      return Vector{0.25f, 0.5f, 0.75f};
    };
    drive.content.colour = {0.3f, 0.6f, 0.9f};
    block.strength = 2;
    block.scaleX = 0.5f;
    block.scaleY = 0.25f;
    block.scaleZ = 0.125f;
    sample.uvw = {0.5f, 0.25f, 0.125f};
    sample.texFlags = 77;
    render.hitPoint = render.footprintA = render.footprintB = render.footprintC = {1, 2, 3};
    render.localHitPoint = {4, 5, 6};
    render.baseNormal = {0, 0, -1};
    render.lightParamA = 42;
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 0, 1};
  }
  FootprintBlock& Slot(std::int32_t cpu) { return FilterTest::Slot(cpu, SlotStrideDistorter); }
  static void MakeAware(ScriptedLink& link, std::int32_t cpus = 1) {
    link.HoldShader(PluginIdNoise2D);
    link.MakeSlots(cpus);
  }
  // The one read of `input`.
  const LinkRead& InputRead() {
    const LinkRead* found = nullptr;
    for (const LinkRead& read : host.reads) {
      if (read.link == input.number) found = &read;
    }
    if (found == nullptr) throw std::runtime_error("the input was not read");
    return *found;
  }
};

// --- outside a render ---

// The mean of (0.3, 0.6, 0.9) is 0.6, a fifth of it 0.12, added to all three components.
TEST_F(DistorterTest, PlainDirectAddsAFifthOfTheMean) {
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ExpectVector(InputRead().uvw, {0.62f, 0.37f, 0.245f});
  EXPECT_EQ(host.reads.size(), 2u);
  ExpectExactly(host.reads[0].uvw, {0.5f, 0.25f, 0.125f});
  for (const LinkRead& read : host.reads) EXPECT_EQ(read.tagFlag, 77);
}

TEST_F(DistorterTest, PlainCentredRestsAtMidGrey) {
  block.warpType = DistorterCentred;
  Output();
  ExpectVector(InputRead().uvw, {0.52f, 0.27f, 0.145f});
}

// e = 2 * 0.01. The drive rises by 1 along u and 2 along v: differences 0.04 and 0.08, times the
// strength of 3 and a fifth: 0.024 and 0.048.
TEST_F(DistorterTest, PlainGradientFollowsTheSlope) {
  block.warpType = DistorterGradient;
  block.gradientStep = 2;
  block.strength = 3;
  drive.content.show = [](const LinkRead& read) {
    const float height = read.uvw.x + 2 * read.uvw.y;
    return Vector{height, height, height};
  };
  Output();
  ASSERT_EQ(host.reads.size(), 5u);
  ExpectVector(host.reads[0].uvw, {0.48f, 0.25f, 0.125f});
  ExpectVector(host.reads[1].uvw, {0.52f, 0.25f, 0.125f});
  ExpectVector(host.reads[2].uvw, {0.5f, 0.23f, 0.125f});
  ExpectVector(host.reads[3].uvw, {0.5f, 0.27f, 0.125f});
  ExpectVector(InputRead().uvw, {0.524f, 0.298f, 0.125f});
}

TEST_F(DistorterTest, PlainAnyOtherTypeMovesNothing) {
  for (const std::int32_t type : {-1, 3}) {
    block.warpType = type;
    host.reads.clear();
    Output();
    ASSERT_EQ(host.reads.size(), 1u);
    ExpectExactly(InputRead().uvw, {0.5f, 0.25f, 0.125f});
  }
}

// Deliberate, and only seen outside a render.
TEST_F(DistorterTest, ThePlainReadLeavesTheSampleMoved) {
  Output();
  ExpectVector(sample.uvw, {0.62f, 0.37f, 0.245f});
}

TEST_F(DistorterTest, ARenderWithoutSlotsIsReadPlainly) {
  sample.render = &render;
  instance.channel = ChannelBump;
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ExpectVector(InputRead().uvw, {0.62f, 0.37f, 0.245f});
  ExpectExactly(render.bumpNormal, {0, 1, 0});
}

// --- in a render ---

// Points: 0.5 * 2 * 0.3 * 100 = 30, 0.25 * 2 * 0.6 * 100 = 30, 0.125 * 2 * 0.9 * 100 = 22.5.
// Coordinates: 0.5 * 2 * 0.3 = 0.3, 0.25 * 2 * 0.6 = 0.3, and the third 0.9 as it is.
TEST_F(DistorterTest, DirectMovesPointsAndCoordinateByTheColour) {
  BeginRender();
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ASSERT_EQ(host.reads.size(), 2u);
  ExpectExactly(host.reads[0].uvw, sample.uvw);
  const LinkRead& read = InputRead();
  ExpectVector(read.uvw, {0.8f, 0.55f, 1.025f});
  ExpectVector(uvwAtRead, {0.8f, 0.55f, 1.025f});
  ExpectVector(read.hitPoint, {31, 32, 25.5f}, 1e-5);
  ExpectVector(read.localHitPoint, {34, 35, 28.5f}, 1e-5);
  for (const LinkRead& any : host.reads) EXPECT_EQ(any.tagFlag, 77);
}

TEST_F(DistorterTest, TheMovedRecordsArePutBack) {
  BeginRender();
  Output();
  ExpectExactly(sample.uvw, {0.5f, 0.25f, 0.125f});
  ExpectExactly(render.hitPoint, {1, 2, 3});
  ExpectExactly(render.localHitPoint, {4, 5, 6});
}

TEST_F(DistorterTest, ABlackDriveReadsTheInputAtTheSample) {
  drive.content.colour = {};
  BeginRender();
  Output();
  ExpectExactly(InputRead().uvw, sample.uvw);
  ExpectExactly(InputRead().hitPoint, {1, 2, 3});
}

// -0.5 * 0.5 * 2 = -0.5 and -0.5 * 0.25 * 2 = -0.25; a hundred times for points, z by
// -0.5 * 0.125 * 2 * 100 = -12.5.
TEST_F(DistorterTest, CentredMovesABlackDriveByMinusAHalf) {
  block.warpType = DistorterCentred;
  drive.content.colour = {};
  BeginRender();
  Output();
  ExpectVector(uvwAtRead, {0, 0, -0.375f});
  ExpectVector(InputRead().hitPoint, {-49, -23, -9.5f}, 1e-5);
}

TEST_F(DistorterTest, AnyOtherTypeMovesNothing) {
  block.warpType = 3;
  BeginRender();
  Output();
  ASSERT_EQ(host.reads.size(), 1u);
  ExpectExactly(InputRead().uvw, sample.uvw);
}

// --- the borders of an input that is not aware ---

struct DistorterTileTest : DistorterTest {
  DistorterTileTest() {
    input.content.pluginId = 0;
    input.HoldBitmap(4, 4);
    block.strength = block.scaleX = block.scaleY = 1;
    sample.uvw = {0.5f, 0.5f, 0};
    drive.content.colour = {-0.75f, 0.5f, 0};  // to -0.25 and 1
  }
  Vector ReadAt() {
    host.reads.clear();
    Output();
    return InputRead().uvw;
  }
};

TEST_F(DistorterTileTest, WithTileACoordinateWrapsByTruncation) {
  BeginRender();
  ExpectExactly(ReadAt(), {0.75f, 0, 0});
}

TEST_F(DistorterTileTest, WithoutTileItSticksOneStepInsideTheBorder) {
  block.tile = 0;
  BeginRender();
  ExpectExactly(ReadAt(), {0.25f, 0.75f, 0});
}

// A step of 1 makes limits of 1 and 0: the lower one is tested first.
TEST_F(DistorterTileTest, OfAOnePixelBitmapTheLowerLimitIsTestedFirst) {
  input.HoldBitmap(1, 1);
  block.tile = 0;
  BeginRender();
  ExpectExactly(ReadAt(), {1, 0, 0});
}

TEST_F(DistorterTileTest, AnAwareInputIsNotWrapped) {
  input.content.bitmapWidth = 0;
  MakeAware(input);
  BeginRender();
  ExpectExactly(ReadAt(), {-0.25f, 1, 0});
  ExpectExactly(InputRead().head.uvwPoint, {-0.25f, 1, 0});
}

TEST_F(DistorterTest, ABitmapLinkWithoutABitmapIsBlackInARenderAsInput) {
  input.content.pluginId = 0;
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  EXPECT_TRUE(host.reads.empty());
}

TEST_F(DistorterTest, AndUnawareAsDrive) {
  drive.content.pluginId = 0;
  BeginRender();
  ExpectExactly(Output(), {0.25f, 0.5f, 0.75f});
  ExpectVector(InputRead().uvw, {0.8f, 0.55f, 1.025f});
}

// --- what aware inputs see ---

TEST_F(DistorterTest, AnAwareDriveSeesTheFootprintAndAnAwareInputTheMovedOne) {
  MakeAware(input, 2);
  MakeAware(drive, 2);
  instance.channel = 3;
  BeginRender(2);
  FakeHost::cpuIndex = 1;
  Output();
  const FootprintBlock& seen = host.reads[0].head;
  ExpectExactly(seen.footprint[0], {1, 2, 3});
  ExpectExactly(seen.uvwPoint, sample.uvw);
  ExpectExactly(seen.pointOffset, {0, 0, 0});
  EXPECT_EQ(seen.outerChannel, 3);
  const FootprintBlock& moved = InputRead().head;
  for (const Vector& point : moved.footprint) ExpectVector(point, {31, 32, 25.5f}, 1e-5);
  ExpectVector(moved.pointOffset, {30, 30, 22.5f}, 1e-5);
  ExpectVector(moved.uvwPoint, {0.8f, 0.55f, 1.025f});
  ExpectExactly(moved.uvwOffset, {0, 0, 0});
  ExpectExactly(moved.basePoint, sample.uvw);
  EXPECT_EQ(moved.tap, TapNone);
  EXPECT_EQ(moved.outerChannel, 3);
}

// --- the gradient ---

struct DistorterGradientTest : DistorterTest {
  DistorterGradientTest() {
    block.warpType = DistorterGradient;
    block.gradientStep = 0.5f;
    drive.content.show = [](const LinkRead& read) {
      const float height = 10 * read.uvw.x + 20 * read.uvw.y;
      return Vector{height, height, height};
    };
  }
};

// Probes of 0.5 * 0.01 on either side: gu = 10 * 0.01 = 0.1, gv = 20 * 0.01 = 0.2.
// Coordinates: (0.1, 0.2, 0) * 2 * scale * 2 = (0.2, 0.2, 0). Points: (0.1 (0.6, 0.8, 0)
// + 0.2 (0, 0, 1)) * 2 = (0.12, 0.16, 0.4), times scale * 2 * 100 = (12, 8, 10).
TEST_F(DistorterGradientTest, MovesAlongTheSurfaceByTheSlope) {
  render.textureTag = &tag;
  BeginRender();
  Output();
  ExpectVector(uvwAtRead, {0.7f, 0.45f, 0.125f}, 2e-5);
  ExpectVector(InputRead().hitPoint, {13, 10, 13}, 1e-3);
  EXPECT_EQ(asked.tag, &tag);
  ExpectExactly(asked.point, {1, 2, 3});
  ExpectExactly(asked.normal, {0, 0, -1});
}

TEST_F(DistorterGradientTest, ProbesBehindAndAheadInUThenInV) {
  BeginRender();
  Output();
  ASSERT_EQ(host.reads.size(), 5u);
  ExpectVector(host.reads[0].uvw, {0.495f, 0.25f, 0.125f});
  ExpectVector(host.reads[1].uvw, {0.505f, 0.25f, 0.125f});
  ExpectVector(host.reads[2].uvw, {0.5f, 0.245f, 0.125f});
  ExpectVector(host.reads[3].uvw, {0.5f, 0.255f, 0.125f});
}

// Twice the strength moves four times as far: deliberate. From 0.2 to 0.8.
TEST_F(DistorterGradientTest, TheStrengthActsTwice) {
  block.strength = 4;
  BeginRender();
  Output();
  ExpectVector(uvwAtRead, {1.3f, 1.05f, 0.125f}, 1e-4);
}

// A bitmap of 8 by 16 pixels, half a pixel each way, in all three components: deliberate.
TEST_F(DistorterGradientTest, ABitmapIsProbedInAllThreeComponents) {
  drive.content.pluginId = 0;
  drive.HoldBitmap(8, 16);
  BeginRender();
  Output();
  ExpectExactly(host.reads[0].uvw, {0.4375f, 0.1875f, 0.0625f});
  ExpectExactly(host.reads[1].uvw, {0.5625f, 0.3125f, 0.1875f});
  ExpectExactly(host.reads[2].uvw, {0.46875f, 0.21875f, 0.09375f});
  ExpectExactly(host.reads[3].uvw, {0.53125f, 0.28125f, 0.15625f});
}

// Points move by 0.5 * 0.2 = 0.1 along the axes, and back again for the input.
TEST_F(DistorterGradientTest, AnAwareDriveSeesTheMovedPoints) {
  MakeAware(input);
  MakeAware(drive);
  drive.content.show = nullptr;
  BeginRender();
  Output();
  const Vector expected[] = {{0.94f, 1.92f, 3}, {1.06f, 2.08f, 3}, {1, 2, 2.9f}, {1, 2, 3.1f}};
  for (std::size_t i = 0; i < 4; ++i) {
    for (const Vector& point : host.reads[i].head.footprint) ExpectVector(point, expected[i]);
    EXPECT_NEAR(host.reads[i].head.uvwPoint.x, host.reads[i].uvw.x, 1e-6);
  }
  ExpectExactly(InputRead().head.footprint[0], {1, 2, 3});
  ExpectExactly(InputRead().head.uvwPoint, sample.uvw);
}

// --- taps ---

struct DistorterTapTest : DistorterTest {
  DistorterTapTest() {
    drive.content.colour = {};
    render.textureTag = &tag;
    MakeAware(input);
    MakeAware(drive);
    block.sampleStep = 2;  // a tap step of 0.8
  }
};

// Under an enclosing filter's bump: +u, -u, and, unlike elsewhere, -v before +v. Deliberate.
TEST_F(DistorterTapTest, ATapMovesThePointsAndAsksTheHostForTheCoordinate) {
  block.nested = 1;
  BeginRender();
  const Vector expected[] = {{1.8f, 2, 3}, {0.2f, 2, 3}, {1, 2, 2.2f}, {1, 2, 3.8f}};
  for (std::int32_t tap = 1; tap <= 4; ++tap) {
    FootprintBlock& own = Slot(0);
    own.footprint[0] = own.footprint[1] = own.footprint[2] = own.footprint[3] = {1, 2, 3};
    own.uvwPoint = {9, 9, 9};
    own.tap = tap;
    host.reads.clear();
    Output();
    const Vector& at = expected[tap - 1];
    ExpectVector(host.reads[0].head.footprint[0], at);
    ExpectVector(host.reads[0].head.footprint[3], at);
    ExpectVector(host.reads[0].uvw, {at.x / 10, at.z / 10, 0});
    EXPECT_EQ(host.reads[0].head.tap, tap);
    ExpectVector(InputRead().uvw, {at.x / 10, at.z / 10, 0});
    EXPECT_EQ(InputRead().head.tap, TapNone) << "the input was moved already";
  }
  EXPECT_EQ(asked.pointToUvw, 4);
  EXPECT_EQ(asked.tag, &tag);
  EXPECT_EQ(asked.identity, 42);
  ExpectVector(asked.point, {1, 2, 3.8f});
  ExpectExactly(asked.normal, {0, 0, -1});
}

TEST_F(DistorterTapTest, WithoutATapTheHostIsNotAsked) {
  BeginRender();
  Output();
  block.nested = 1;
  Slot(0).tap = 5;
  Output();
  EXPECT_EQ(asked.pointToUvw, 0);
}

TEST_F(DistorterTapTest, WithoutTheHostsAnswerTheCoordinateStays) {
  host.render.pointToUvw = nullptr;
  block.nested = 1;
  BeginRender();
  Slot(0).tap = 1;
  Slot(0).uvwPoint = {0.1f, 0.2f, 0.3f};
  Output();
  ExpectExactly(InputRead().uvw, {0.1f, 0.2f, 0.3f});
}

// Points at x 1.8 and 0.2, z 2.2 and 3.8; the input shows u + 2 v, with u = x / 10 and v = z / 10:
// 0.18 + 0.6, 0.02 + 0.6, 0.1 + 0.44, 0.1 + 0.76. gu = (0.62 - 0.78) 3.5 = -0.56,
// gv = (0.54 - 0.86) 3.5 = -1.12. |n| = sqrt(0.3136 + 1 + 1.2544) = 1.6024980.
TEST_F(DistorterTapTest, InTheBumpChannelFourTapsBendTheNormal) {
  render.textureTag = nullptr;
  instance.channel = ChannelBump;
  input.content.show = [](const LinkRead& read) {
    const float height = read.uvw.x + 2 * read.uvw.y;
    return Vector{height, height, height};
  };
  BeginRender();
  ExpectExactly(Output(), {0, 0, 0});
  ExpectVector(render.bumpNormal, {-0.3494544f, 0.6240257f, -0.6989088f});
  EXPECT_EQ(asked.pointToUvw, 4);
  EXPECT_EQ(host.reads.size(), 8u);
}

// The block is copied afresh before each, so that no move adds to the one before.
TEST_F(DistorterTapTest, InTheBumpChannelTheBlocksKeepTheTapOfTheFootprint) {
  instance.channel = ChannelBump;
  block.nested = 1;
  BeginRender();
  Slot(0).tap = TapMinusV;
  Output();
  const float x[] = {0.8f, -0.8f, 0, 0}, z[] = {0, 0, -0.8f, 0.8f};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(host.reads[2 * i].head.tap, TapMinusV);
    ExpectVector(host.reads[2 * i].head.footprint[0], {x[i], 0, z[i]});
    EXPECT_EQ(host.reads[2 * i + 1].head.tap, TapNone);
  }
}

// The whole displacement counts at every tap: the drive shows its u, 0.18 at the first.
TEST_F(DistorterTapTest, InTheBumpChannelTheDriveIsReadAtEachTap) {
  instance.channel = ChannelBump;
  render.textureTag = nullptr;
  drive.content.show = [](const LinkRead& read) { return Vector{read.uvw.x, 0, 0}; };
  BeginRender();
  Output();
  const float u[] = {0.18f, 0.02f, 0.1f, 0.1f};
  for (std::size_t i = 0; i < 4; ++i) {
    // scaleX * strength = 1: the coordinate doubles.
    EXPECT_NEAR(host.reads[2 * i + 1].uvw.x, 2 * u[i], 1e-6) << i;
  }
}

// --- slots ---

TEST_F(DistorterTest, TheSlotsHoldTheRecordsByKindAndTheSteps) {
  struct Tail {
    std::uint32_t imageAddress[2], driveAddress[2];
    std::int32_t imageStride, driveStride;
    float imageStep[2], driveStep[2];
    float tapStep, unused;
  };
  block.sampleStep = 2;
  drive.content.pluginId = 0;
  drive.HoldBitmap(4, 8);
  BeginRender(2);
  for (const std::int32_t cpu : {0, 1}) {
    Tail tail;
    std::memcpy(&tail, &Slot(cpu) + 1, sizeof tail);
    EXPECT_EQ(tail.imageStride, 0);
    EXPECT_FLOAT_EQ(tail.imageStep[0], 0.04f);
    EXPECT_FLOAT_EQ(tail.imageStep[1], 0.04f);
    EXPECT_EQ(tail.driveStep[0], 0.25f);
    EXPECT_EQ(tail.driveStep[1], 0.125f);
    EXPECT_FLOAT_EQ(tail.tapStep, 0.8f);
    EXPECT_EQ(tail.unused, 1);
  }
  drive.content.bitmapWidth = 0;
  drive.HoldShader(PluginIdBuffy);
  BeginRender();
  Tail tail;
  std::memcpy(&tail, &Slot(0) + 1, sizeof tail);
  EXPECT_FLOAT_EQ(tail.driveStep[0], 0.02f);
}

TEST_F(DistorterTest, InitRenderAsksBothInputsBeforeItsOwnSlotsAreMade) {
  MakeAware(input);
  MakeAware(drive);
  host.calls.clear();
  InitRender();
  EXPECT_EQ(host.calls,
            (std::vector<std::string>{"channelInitRender(1)", "channelInitRender(2)",
                                      "channelMessage(1, 1001257)", "channelMessage(2, 1001257)",
                                      "cpuCount", "alloc(296)"}));
}

}  // namespace
}  // namespace sorvanix::test
