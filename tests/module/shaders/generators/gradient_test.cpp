// Gradient through the contract: its spaces, its taps, its bump path and what it writes.
#include "module/shaders/generators/gradient.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <thread>

#include "tests/module/kit/vector_matchers.h"
#include "tests/module/shaders/generators/gradient_fixture.h"

namespace sorvanix::test {
namespace {

// What the scripted host answers about the render.
const Matrix* camera;
std::optional<std::array<std::int32_t, 2>> pictureSize;

// The object and the camera of these tests: turned by a quarter about z, twice as large, moved.
// (1, 2, 3) goes to (10, 20, 30) + (0, 2, 0) + 2 (-2, 0, 0) + 3 (0, 0, 2) = (6, 22, 36).
constexpr Matrix kPlaced = {{10, 20, 30}, {0, 2, 0}, {-2, 0, 0}, {0, 0, 2}};
constexpr Vector kInside = {1, 2, 3};
constexpr Vector kInWorld = {6, 22, 36};

struct GradientSpaceTest : GradientTest {
  ObjectRecord object = {};

  GradientSpaceTest() {
    camera = nullptr;
    pictureSize.reset();
    host.render.query = [](const RenderContext*, std::int32_t code) noexcept -> const void* {
      if (code == QueryCameraMatrix) return camera;
      return code == QueryPictureSize && pictureSize ? pictureSize->data() : nullptr;
    };
    host.render.projectToScreen = [](const RenderContext*, const Vector* p,
                                     Vector* screen) noexcept {
      *screen = {100 + 10 * p->x, 200 + 10 * p->y, p->z};
    };
    BeginRender();
    render.hitPoint = kInWorld;
  }
  // The point that the shapes in space are read at, by its projection onto the three axes. A
  // thousand units to either side are 2^-24 of 2000, about 1e-4, exact.
  Vector PointSeen() {
    block.type = GradientLinear3D;
    const auto along = [this](const Vector& axis) {
      block.start = Scale(-1000, axis);
      block.end = Scale(1000, axis);
      return Shown() * 2000 - 1000;
    };
    return {along({1, 0, 0}), along({0, 1, 0}), along({0, 0, 1})};
  }
  void ExpectPoint(const Vector& expected) { ExpectVector(PointSeen(), expected, 3e-4); }
  static Vector Scale(float s, const Vector& v) { return {s * v.x, s * v.y, s * v.z}; }
};

// --- spaces ---

// The tag is at (1, 0, 0): world (6, 22, 36) is (5, 22, 36) in it, times 100. The point that it is
// applied to is the local one.
TEST_F(GradientSpaceTest, TextureSpaceIsTheTagsTimesAHundred) {
  block.space = GradientTexture;
  tag.matrix2 = {{-1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  render.textureTag = &tag;
  render.localHitPoint = {3, 4, -5};
  ExpectPoint({200, 400, -500});
}

TEST_F(GradientSpaceTest, TextureSpaceWithoutATagIsTheHit) {
  block.space = GradientTexture;
  block.nested = 1;
  OwnSlot().footprint[0] = {500, 500, 500};
  ExpectPoint(kInWorld);
}

TEST_F(GradientSpaceTest, ObjectSpaceMovesTurnsAndScalesWithTheObject) {
  block.space = GradientObject;
  object.matrix = kPlaced;
  render.object = &object;
  ExpectPoint(kInside);
}

TEST_F(GradientSpaceTest, ObjectSpaceWithoutAnObjectOrWithAFlatOneIsTheWorld) {
  block.space = GradientObject;
  ExpectPoint(kInWorld);
  object.matrix = {{1, 2, 3}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
  render.object = &object;
  ExpectPoint(kInWorld);
}

TEST_F(GradientSpaceTest, WorldSpaceStaysPut) {
  object.matrix = kPlaced;
  render.object = &object;
  camera = &kPlaced;
  for (const std::int32_t space : {2, -1, 6, INT32_MIN, INT32_MAX}) {
    block.space = space;
    ExpectPoint(kInWorld);
  }
}

TEST_F(GradientSpaceTest, CameraSpaceMovesWithTheCamera) {
  block.space = GradientCamera;
  camera = &kPlaced;
  ExpectPoint(kInside);
  camera = nullptr;
  ExpectPoint(kInWorld);
}

// (1, 2, 3) in camera space is the pixel (110, 220) at depth 3.
TEST_F(GradientSpaceTest, ScreenSpaceIsThePixelAndItsDepth) {
  block.space = GradientScreen;
  camera = &kPlaced;
  ExpectPoint({110, 220, 3});
  camera = nullptr;
  ExpectPoint({0, 0, 0});
}

// The pixel (110, 220) over (441 - 1, 331 - 1) is (0.25, 0.66667), without its depth.
TEST_F(GradientSpaceTest, UnitScreenSpaceIsAFractionOfThePicture) {
  block.space = GradientUnitScreen;
  camera = &kPlaced;
  pictureSize = {441, 331};
  ExpectPoint({0.25f, 220.0f / 330, 0});
  camera = nullptr;
  ExpectPoint({0, 0, 0});
}

TEST_F(GradientSpaceTest, UnitScreenSpaceOfAPictureWithoutExtentIsItsMiddle) {
  block.space = GradientUnitScreen;
  camera = &kPlaced;
  OwnSlot().pointOffset = {7, 7, 7};
  ExpectPoint({0.5f, 0.5f, 0});
  for (const auto& [width, height] : {std::pair{1, 100}, {100, 1}, {0, 0}, {INT32_MIN, 100}}) {
    pictureSize = {width, height};
    ExpectPoint({0.5f, 0.5f, 0});
  }
}

TEST_F(GradientSpaceTest, ThePointOffsetCountsInWorldCameraAndScreenOnly) {
  camera = &kPlaced;
  object.matrix = kPlaced;
  render.object = &object;
  render.textureTag = &tag;
  tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
  render.localHitPoint = kInWorld;
  pictureSize = {101, 201};
  OwnSlot().pointOffset = {100, 200, 300};
  const Vector expected[] = {kInWorld,        kInside,         {106, 222, 336},
                             {101, 202, 303}, {210, 420, 303}, {101.1f, 201.1f, 300}};
  for (std::int32_t space = 0; space <= 5; ++space) {
    block.space = space;
    ExpectPoint(expected[space]);
  }
}

TEST_F(GradientSpaceTest, ThePointOffsetIsThatOfTheCallingCpu) {
  BeginRender(2);
  block.space = GradientWorld;
  FakeHost::cpuIndex = 1;
  OwnSlot(0).pointOffset = {500, 500, 500};
  OwnSlot(1).pointOffset = {1, 0, 0};
  ExpectPoint({7, 22, 36});
}

TEST_F(GradientSpaceTest, WithoutSlotsThereIsNoOffset) {
  record.FreeRender(&instance);
  block.space = GradientWorld;
  ExpectPoint(kInWorld);
}

TEST_F(GradientSpaceTest, AHostThatTellsNothingOfTheRenderLeavesTheWorld) {
  host.render.query = nullptr;
  host.render.projectToScreen = nullptr;
  block.space = GradientCamera;
  ExpectPoint(kInWorld);
  block.space = GradientScreen;
  ExpectPoint({0, 0, 0});
}

// --- inside a filter ---

struct NestedGradientTest : GradientSpaceTest {
  NestedGradientTest() {
    block.nested = 1;
    OwnSlot().uvwPoint = {0.25f, 0.75f, 0};
    OwnSlot().uvwOffset = {0.5f, 0.5f, 0};
    OwnSlot().footprint[0] = {11, 12, 13};
    sample.uvw = {0.875f, 0.125f, 0};
    render.tangentU = {1000, 0, 0};
    render.tangentV = {0, 2000, 0};
  }
};

TEST_F(NestedGradientTest, ReadsTheSlotsCoordinateWithoutItsOffset) {
  block.type = GradientU;
  EXPECT_EQ(Shown(), 0.25f);
  block.type = GradientV;
  EXPECT_EQ(Shown(), 0.25f);
}

TEST_F(NestedGradientTest, ReadsTheSlotsPointInTextureSpace) {
  block.space = GradientTexture;
  render.textureTag = &tag;
  ExpectPoint({11, 12, 13});
}

TEST_F(NestedGradientTest, OuterChannel8427MakesItStandAlone) {
  OwnSlot().outerChannel = ChannelStandalone;
  OwnSlot().tap = TapPlusU;
  block.type = GradientU;
  EXPECT_EQ(Shown(), 0.875f);
  block.space = GradientTexture;
  render.textureTag = &tag;
  tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
  render.localHitPoint = {1, 2, 3};
  ExpectPoint({1, 2, 3});
}

TEST_F(NestedGradientTest, WithoutSlotsOrARenderItStandsAlone) {
  block.type = GradientU;
  record.FreeRender(&instance);
  EXPECT_EQ(Shown(), 0.875f);
  BeginRender();
  sample.render = nullptr;
  sample.uvw = {0.875f, 0.125f, 0};
  EXPECT_EQ(Shown(), 0.875f);
}

// A thousandth of the tangents is one along u and two along v. The point moves against the
// coordinate.
TEST_F(NestedGradientTest, TapsMoveTheCoordinateOneWayAndThePointTheOther) {
  block.space = GradientTexture;
  render.textureTag = &tag;
  struct Row {
    std::int32_t tap;
    Vector point;
    float u, v;
  };
  const Row rows[] = {{0, {11, 12, 13}, 0.25f, 0.75f},  {1, {10, 12, 13}, 0.251f, 0.75f},
                      {2, {12, 12, 13}, 0.249f, 0.75f}, {3, {11, 10, 13}, 0.25f, 0.751f},
                      {4, {11, 14, 13}, 0.25f, 0.749f}, {5, {11, 12, 13}, 0.25f, 0.75f},
                      {-1, {11, 12, 13}, 0.25f, 0.75f}};
  for (const Row& row : rows) {
    OwnSlot().tap = row.tap;
    ExpectPoint(row.point);
    block.type = GradientU;
    EXPECT_FLOAT_EQ(Shown(), row.u) << row.tap;
    block.type = GradientV;
    EXPECT_NEAR(Shown(), 1 - row.v, 1e-7) << row.tap;
  }
}

TEST_F(NestedGradientTest, TheSampleKeepsTheCoordinateWithItsTap) {
  block.space = GradientTexture;
  render.textureTag = &tag;
  OwnSlot().tap = TapPlusV;
  Output();
  ExpectVector(sample.uvw, {0.25f, 0.751f, 0}, 1e-7);
}

TEST_F(NestedGradientTest, OnlyTextureSpaceWithATagIsToldOfTaps) {
  OwnSlot().tap = TapPlusU;
  block.type = GradientU;
  for (std::int32_t space = 0; space <= 6; ++space) {
    block.space = space;
    render.textureTag = space == GradientTexture ? nullptr : &tag;
    EXPECT_EQ(Shown(), 0.25f) << space;
  }
}

TEST_F(GradientTest, APreviewKeepsTheSamplesCoordinate) {
  sample.uvw = {0.25f, 0.5f, 0.75f};
  Output();
  ExpectExactly(sample.uvw, {0.25f, 0.5f, 0.75f});
}

// --- the bump path ---

struct GradientBumpTest : GradientSpaceTest {
  GradientBumpTest() {
    instance.channel = ChannelBump;
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 1, 0};
    render.bumpNormal = {0, 0, 1};
    sample.uvw = {0.5f, 0.5f, 0};
  }
  void ExpectBent(double x, double y) {
    ExpectExactly(Output(), {0, 0, 0});
    const double length = std::sqrt(x * x + y * y + 1);
    EXPECT_NEAR(render.bumpNormal.x, x / length, 2e-5);
    EXPECT_NEAR(render.bumpNormal.y, y / length, 2e-5);
    EXPECT_NEAR(render.bumpNormal.z, 1 / length, 2e-5);
  }
};

// Behind less ahead: -0.002 * 100 along u.
TEST_F(GradientBumpTest, ARisingURampBendsAgainstU) {
  block.type = GradientU;
  ExpectBent(-0.2, 0);
}

// The ramp falls along v: 0.002 * 100.
TEST_F(GradientBumpTest, AFallingVRampBendsAlongV) {
  block.type = GradientV;
  ExpectBent(0, 0.2);
}

// Over 2 units of x, a step of 0.001 to either side is 0.001 of the ramp: -0.001 * 4.
TEST_F(GradientBumpTest, AShapeInSpaceBendsByItsOwnFactor) {
  block.type = GradientLinear3D;
  block.space = GradientWorld;
  block.start = {5, 0, 0};
  block.end = {7, 0, 0};
  ExpectBent(-0.004, 0);
}

TEST_F(GradientBumpTest, WithoutARenderItIsBlackAndNothingChanges) {
  sample.render = nullptr;
  ExpectExactly(Output(), {0, 0, 0});
  ExpectExactly(render.bumpNormal, {0, 0, 1});
  ExpectExactly(sample.uvw, {0.5f, 0.5f, 0});
}

TEST_F(GradientBumpTest, WithoutSlotsItBendsAsWell) {
  record.FreeRender(&instance);
  block.type = GradientU;
  ExpectBent(-0.2, 0);
}

TEST_F(GradientBumpTest, AnEvenRampAndNoNormalGiveTheZeroVector) {
  render.bumpNormal = {};
  block.ramp.count = 1;
  ExpectExactly(Output(), {0, 0, 0});
  ExpectExactly(render.bumpNormal, {0, 0, 0});
}

TEST_F(GradientBumpTest, TheSamplesCoordinateStays) {
  block.nested = 1;
  OwnSlot().uvwPoint = {0.25f, 0.75f, 0};
  Output();
  ExpectExactly(sample.uvw, {0.5f, 0.5f, 0});
}

// The bend is the difference of the colours that Output itself shows a step to either side.
TEST_F(GradientBumpTest, EveryTextureShapeBendsByTheSlopeOfItsOwnColours) {
  constexpr float kStep = 0.001f;
  Random random(7);
  for (std::int32_t type = 0; type < GradientLinear3D; ++type) {
    block.type = type;
    for (int i = 0; i < 20; ++i) {
      const Vector uvw = {random.Between(0.1f, 0.9f), random.Between(0.1f, 0.9f), 0};
      const auto mean = [&](float du, float dv) {
        sample.uvw = {uvw.x + du, uvw.y + dv, 0};
        const Vector colour = Output();
        return (double{colour.x} + colour.y + colour.z) / 3;
      };
      instance.channel = ChannelColour;
      const double du = (mean(-kStep, 0) - mean(kStep, 0)) * 100;
      const double dv = (mean(0, -kStep) - mean(0, kStep)) * 100;
      instance.channel = ChannelBump;
      sample.uvw = uvw;
      render.bumpNormal = {0, 0, 1};
      ExpectBent(du, dv);
    }
  }
}

// --- InitRender, threads, missing things ---

TEST_F(GradientTest, InitRenderMakesOneClearHeadPerCpu) {
  ASSERT_EQ(InitRender(4), 0);
  EXPECT_EQ(host.calls.back(), "alloc(992)");  // 4 * 248
  const FootprintBlock clear = {};
  for (int cpu = 0; cpu < 4; ++cpu) {
    EXPECT_EQ(std::memcmp(&OwnSlot(cpu), &clear, sizeof clear), 0);
  }
}

TEST_F(GradientTest, InitRenderDoesNothingWithoutARenderOrABlock) {
  RenderInit init = {};
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
  ShaderInstance bare = {};
  init.render = &render;
  EXPECT_EQ(record.InitRender(&bare, &init), 0);
  EXPECT_EQ(bare.slots, nullptr);
}

TEST_F(GradientTest, AFailedSlotAllocationShowsAMessageAndTheRenderGoesOn) {
  host.failAllocation = 1;
  EXPECT_EQ(InitRender(), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.calls.back(), "messageDialog(\"Couldn't Allocate Globals\", 48)");
  sample.render = &render;
  EXPECT_EQ(ShownAt(0.25f, 0), 0.25f);
}

TEST_F(GradientTest, RendersOneAfterTheOtherLeaveNoSlotsBehind) {
  const int blocks = host.liveBlocks();
  ASSERT_EQ(InitRender(2), 0);
  ASSERT_EQ(InitRender(2), 0);
  EXPECT_EQ(host.liveBlocks(), blocks + 1);
  record.FreeRender(&instance);
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(GradientTest, EightThreadsGiveTheSameBytesAsOne) {
  constexpr int kSide = 64, kSamples = kSide * kSide;
  BeginRender(8);
  block.type = GradientAngle;
  const auto shade = [&](int begin, int end, std::vector<Vector>& picture) {
    for (int i = begin; i < end; ++i) {
      RenderContext ownRender = render;
      ChannelSample own = sample;
      own.render = &ownRender;
      own.uvw = {float(i % kSide) / kSide, float(i / kSide) / kSide, 0};
      record.Output(&picture[std::size_t(i)], &instance, &own);
    }
  };
  std::vector<Vector> one(kSamples), eight(kSamples);
  shade(0, kSamples, one);
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      FakeHost::cpuIndex = t;
      shade(t * kSamples / 8, (t + 1) * kSamples / 8, eight);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0);
}

int cpuIndexCalls;

TEST_F(GradientTest, OutputAsksForTheCpuOnceAndAllocatesNothing) {
  BeginRender();
  cpuIndexCalls = 0;
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++cpuIndexCalls;
    return std::int32_t{0};
  };
  const std::size_t calls = host.calls.size();
  for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
    instance.channel = channel;
    Output();
  }
  EXPECT_EQ(cpuIndexCalls, 2);
  EXPECT_EQ(host.calls.size(), calls);
}

// Whatever a file or a message left in the block: every type and space comes to an end, and finite
// colours of the knots give finite colours.
TEST_F(GradientSpaceTest, WildBlocksDoNoHarm) {
  const float inf = std::numeric_limits<float>::infinity();
  const float wild[] = {NAN, inf, -inf, 1e38f, -1e38f, 0, 1e-42f};
  const std::int32_t numbers[] = {INT32_MIN, -1, 0, 1, 50, 51, INT32_MAX};
  camera = &kPlaced;
  pictureSize = {INT32_MAX, INT32_MAX};
  tag.flags = 3;
  render.textureTag = &tag;
  for (std::int32_t type = -1; type <= 11; ++type) {
    for (std::int32_t space = -1; space <= 6; ++space) {
      for (std::size_t i = 0; i < std::size(wild); ++i) {
        const float value = wild[i];
        block.type = type;
        block.space = space;
        block.start = {value, value, value};
        block.radius = value;
        block.cycle = block.nested = numbers[i];
        block.ramp.count = block.ramp.interpolation = numbers[i];
        render.hitPoint = {value, -value, 1};
        sample.uvw = {value, value, value};
        OwnSlot().uvwPoint = sample.uvw;
        OwnSlot().tap = numbers[i];
        instance.channel = ChannelColour;
        const Vector colour = Output();
        if (type != GradientFourColours) {
          EXPECT_TRUE(std::isfinite(colour.x)) << type << " " << space << " " << value;
        }
        instance.channel = ChannelBump;
        ExpectExactly(Output(), {0, 0, 0});
      }
    }
  }
}

TEST_F(GradientTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  ShaderInstance bare = {};
  FakeStream stream;
  FakeContainer container;
  EXPECT_EQ(record.Copy(&bare, &instance), 0);
  EXPECT_EQ(record.Copy(&instance, &bare), 0);
  EXPECT_EQ(record.Compare(&bare, &instance), 0);
  EXPECT_EQ(record.Read(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Write(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Edit(&bare), 0);
  EXPECT_EQ(record.Message(&bare, MessageGetParameters, container.handle()), 1);
  EXPECT_TRUE(stream.values.empty());
  EXPECT_TRUE(container.entries.empty());
  record.FreeRender(&bare);
  record.Free(&bare);
  Vector result = {1, 1, 1};
  record.Output(&result, &bare, &sample);
  ExpectExactly(result, {0, 0, 0});
}

}  // namespace
}  // namespace sorvanix::test
