// Distorter in a render: along the gradient of its drive, at the taps of a bump, inside another
// filter.
#include "tests/module/shaders/filters/distorter_fixture.h"

namespace sorvanix::test {
namespace {

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

// An id below 0 is no shader either: the drive's step of 0.01, times the gradient step of 0.5,
// moves all three components in both directions.
TEST_F(DistorterGradientTest, ADriveWithANegativeIdIsProbedInAllThreeComponents) {
  drive.content.pluginId = -1;
  BeginRender();
  Output();
  ASSERT_EQ(host.reads.size(), 5u);
  for (const std::size_t direction : {0, 2}) {
    ExpectVector(host.reads[direction].uvw, {0.495f, 0.245f, 0.12f});
    ExpectVector(host.reads[direction + 1].uvw, {0.505f, 0.255f, 0.13f});
  }
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

// --- inside another filter ---

struct DistorterNestedTest : DistorterTest {
  DistorterNestedTest() {
    drive.content.colour = {};
    render.textureTag = &tag;
    tag.matrix1 = tag.matrix2 = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    MakeAware(input, 2);
    MakeAware(drive, 2);
    block.nested = 1;
    BeginRender(2);
    for (const std::int32_t cpu : {0, 1}) {
      const float own = static_cast<float>(cpu + 1);
      Slot(cpu).uvwPoint = {0.1f * own, 0.2f * own, 0};
      for (Vector& point : Slot(cpu).footprint) point = {10 * own, 0, 0};
    }
  }
};

TEST_F(DistorterNestedTest, EachCpuTakesThePointOfItsOwnSlot) {
  FakeHost::cpuIndex = 1;
  Output();
  ExpectVector(InputRead().uvw, {0.2f, 0.4f, 0});
  ExpectVector(InputRead().head.footprint[0], {20, 0, 0});
}

// Deliberate: the first slot decides for all CPUs, where generators look at the calling CPU's own.
TEST_F(DistorterNestedTest, TheMark8427InTheFirstSlotMakesItStandAloneOnEveryCpu) {
  Slot(0).outerChannel = ChannelStandalone;
  for (const std::int32_t cpu : {0, 1}) {
    FakeHost::cpuIndex = cpu;
    host.reads.clear();
    Output();
    ExpectVector(InputRead().uvw, sample.uvw);
    // The hit in the tag's space, a hundred times its local point of (4, 5, 6).
    ExpectVector(InputRead().head.footprint[0], {400, 500, 600}, 1e-3);
  }
}

TEST_F(DistorterNestedTest, TheMark8427InAnotherSlotDoesNotCount) {
  Slot(1).outerChannel = ChannelStandalone;
  FakeHost::cpuIndex = 1;
  Output();
  ExpectVector(InputRead().uvw, {0.2f, 0.4f, 0});
}

// What an enclosing Distorter has set stays, and is scaled as if it were this one's own: points
// 0.5 * 2 * 100 * 100 = 10000, 0.25 * 2 * 100 * 100 = 5000, 0.125 * 2 * 75 * 100 = 1875;
// coordinates 0.5 * 2 * 0.1 = 0.1, 0.25 * 2 * 0.1 = 0.05, and the third 0.3 as it is.
TEST_F(DistorterNestedTest, AnyOtherTypeScalesTheOffsetsThatAreThere) {
  block.warpType = 3;
  Slot(0).pointOffset = {100, 100, 75};
  Slot(0).uvwOffset = {0.1f, 0.1f, 0.3f};
  Output();
  ASSERT_EQ(host.reads.size(), 1u) << "the drive is not read";
  const LinkRead& read = InputRead();
  ExpectVector(read.uvw, {0.2f, 0.25f, 0.3f});
  ExpectVector(uvwAtRead, {0.6f, 0.3f, 0.425f});
  ExpectVector(read.hitPoint, {10001, 5002, 1878}, 1e-2);
  ExpectVector(read.head.pointOffset, {10000, 5000, 1875}, 1e-2);
  ExpectVector(read.head.footprint[3], {10010, 5000, 1875}, 1e-2);
}

}  // namespace
}  // namespace sorvanix::test
