// Distorter: where it reads its input, by the colour of the other one, inside and outside a render.
#include <cstring>

#include "tests/module/shaders/filters/distorter_fixture.h"

namespace sorvanix::test {
namespace {

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
