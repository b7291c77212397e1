// The seven ways to brush a surface: the direction at a point, and where the scratches read noise.
#include "module/shaders/surface/lumas_brushing.h"

#include <cmath>

#include "module/kit/matrix.h"
#include "module/shell/module_state.h"
#include "tests/support/analytic_noise.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

// A quarter turn about z that takes x to y and y to -x, and its inverse.
constexpr Matrix kTurn = {{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
constexpr Matrix kTurnBack = {{0, 0, 0}, {0, -1, 0}, {1, 0, 0}, {0, 0, 1}};

struct BrushingTest : ::testing::Test {
  AnalyticNoise noise;
  LumasBlock block = {};
  LumasSlot slot = {};
  RenderContext render = {};
  TextureTag tag = {};

  BrushingTest() {
    hostApi.render = noise.table();
    noise.SetConstant(NoiseOperation::Turbulence, 0.25);
    block.anisotropyScale = 2;
    block.anisotropyX = 7;
    block.anisotropyY = 1;
    block.scratchAmplitude = 0.5f;
    block.scratchScaleU = 2;
    block.scratchScaleV = 0.25f;
    block.scratchActive = 1;
    tag.matrix1 = slot.head.texMatrix = kTurn;
    tag.matrix2 = slot.head.texInverse = kTurnBack;
    render.textureTag = &tag;
  }
  ~BrushingTest() override { hostApi.render = nullptr; }

  /// Puts the hit, and the normal, where they are in the tag's frame.
  void StandAt(const Vector& inTag, const Vector& normalInTag) {
    render.hitPoint = Transform(inTag, kTurn);
    slot.surfaceNormal = Rotate(normalInTag, kTurn);
  }
  Brushing Brush(std::int32_t mode) {
    noise.Clear();
    block.anisotropyMode = mode;
    return BrushingAt(block, slot, render).value();
  }
  void ExpectNoiseAt(const Vector& point, float time) {
    const auto calls = noise.callsOf(NoiseOperation::Turbulence);
    ASSERT_EQ(calls.size(), 1u);
    const Vector& actual = calls[0].point;
    EXPECT_NEAR(actual.x, point.x, 1e-5 * (1 + std::fabs(point.x)));
    EXPECT_NEAR(actual.y, point.y, 1e-5 * (1 + std::fabs(point.y)));
    EXPECT_NEAR(actual.z, point.z, 1e-5 * (1 + std::fabs(point.z)));
    EXPECT_NEAR(calls[0].time, time, 1e-6 * (1 + std::fabs(time)));
    EXPECT_EQ(calls[0].octaves, 3);
    EXPECT_EQ(calls[0].absolute, 0);
  }
};

// --- straight ---

// The tag's second axis, (-1, 0, 0), which need not have unit length.
// Along x the scratches are long: 3 x 0.25 x 0.001 x 500; 4 x 2 x 500; 1 x 500.
TEST_F(BrushingTest, TagAxisIsTheSecondAxis) {
  tag.matrix1.v2 = {-3, 0, 0};
  StandAt({3, 4, 1}, {0, 0, 1});
  render.hitPoint = {-4, 3, 1};  // (3, 4, 1) in the frame of the slot
  ExpectVector(Brush(AnisoTagAxis).direction, {-1, 0, 0});
  ExpectNoiseAt({0.375f, 4000, 500}, 0);
}

// Where the stretch across is not the smaller one: 3 x 2 x 500; 4 x 0.25 x 0.001 x 500.
TEST_F(BrushingTest, TheLongSideOfScratchesFollowsTheGreaterStretch) {
  StandAt({3, 4, 1}, {0, 0, 1});
  block.anisotropyY = 7;
  Brush(AnisoTagAxis);
  ExpectNoiseAt({3000, 0.5f, 500}, 0);
}

// (0,1,0) x (0,0,1) = (1,0,0) in the tag's frame, turned to (0,1,0). The point along tangent,
// normal and across is (3, 1, 4): 3 x 0.25 x 0.05 x 500; 1 x 500; 4 x 2 x 500.
TEST_F(BrushingTest, TangentIsAcrossTheTagsYAxis) {
  StandAt({3, 4, 1}, {0, 0, 1});
  ExpectVector(Brush(AnisoTangent).direction, {0, 1, 0});
  ExpectNoiseAt({18.75f, 500, 4000}, 0);
}

// (1,0,0) x (0,1,0) = (0,0,1), which the turn leaves. Across is (0,1,0) x (0,0,1) = (1,0,0), so the
// point is (1, 4, 3): 1 x 6.25; 4 x 500; 3 x 1000.
TEST_F(BrushingTest, TangentTakesTheXAxisWhereTheNormalRunsAlongY) {
  StandAt({3, 4, 1}, {0, 1, 0});
  ExpectVector(Brush(AnisoTangent).direction, {0, 0, 1});
  ExpectNoiseAt({6.25f, 2000, 3000}, 0);
}

// The limit is 0.707: a normal of (0.8, 0.6, 0) still takes y, (0.6, 0.8, 0) takes x.
// (0,1,0) x (0.8,0.6,0) = (0,0,-0.8); (1,0,0) x (0.6,0.8,0) = (0,0,0.8).
TEST_F(BrushingTest, TangentChangesItsAxisAtALeanOfAboutFortyFiveDegrees) {
  StandAt({3, 4, 1}, {0.8f, 0.6f, 0});
  ExpectVector(Brush(AnisoTangent).direction, {0, 0, -1});
  StandAt({3, 4, 1}, {0.6f, 0.8f, 0});
  ExpectVector(Brush(AnisoTangent).direction, {0, 0, 1});
}

// --- round ---

// On a lathe at (3, 0, 0): around is (0,1,0) x (1,0,0) = (0,0,-1), and (1,0,0) x (0,0,-1) =
// (0,1,0), turned to (-1,0,0). Noise: (3, 0, 0) x 5 x 2 x 0.25, and 3 x 2 x 50 as time.
TEST_F(BrushingTest, AroundAxisCirclesTheYAxis) {
  StandAt({3, 0, 0}, {1, 0, 0});
  ExpectVector(Brush(AnisoAroundAxis).direction, {-1, 0, 0});
  ExpectNoiseAt({7.5f, 0, 0}, 300);
}

// The direction is turned by the slot's matrix, the normal by the tag's: a nested shader sees the
// enclosing filter's frame.
TEST_F(BrushingTest, AroundAxisTurnsByTheMatrixOfTheSlot) {
  StandAt({3, 0, 0}, {1, 0, 0});
  slot.head.texMatrix = kIdentityMatrix;
  ExpectVector(Brush(AnisoAroundAxis).direction, {0, 1, 0});
}

TEST_F(BrushingTest, OnTheAxisThereIsNoDirection) {
  StandAt({0, 5, 0}, {0, 1, 0});
  ExpectExactly(Brush(AnisoAroundAxis).direction, {0, 0, 0});
}

// (3, 4, 5) less its part along (0, 0, 1) is (3, 4, 0); as a unit (0.6, 0.8, 0), turned to
// (-0.8, 0.6, 0). Noise: the point x 2 x 0.25 x 100 x 0.01, and 5 x 2 x 100 as time.
TEST_F(BrushingTest, RadialSurfaceLeadsAwayFromTheOriginAlongTheSurface) {
  StandAt({3, 4, 5}, {0, 0, 1});
  ExpectVector(Brush(AnisoRadialSurface).direction, {-0.8f, 0.6f, 0});
  ExpectNoiseAt({1.5f, 2, 2.5f}, 1000);
}

// (3, 4, 5) less its part along (1, 0, 0) is (0, 4, 5), of length sqrt 41 = 6.4031242.
TEST_F(BrushingTest, RadialSurfaceFollowsTheNormal) {
  StandAt({3, 4, 5}, {1, 0, 0});
  ExpectVector(Brush(AnisoRadialSurface).direction, {-0.6246950f, 0, 0.7808688f});
  ExpectNoiseAt({1.5f, 2, 2.5f}, 1280.6248f);
}

TEST_F(BrushingTest, RadialPlanarStaysInThePlaneWhateverTheNormal) {
  StandAt({3, 4, 5}, {1, 0, 0});
  ExpectVector(Brush(AnisoRadialPlanar).direction, {-0.8f, 0.6f, 0});
  ExpectNoiseAt({1.5f, 2, 2.5f}, 1000);
}

// --- discs ---

// The hit over the size of 2 is (0.25, 0.5, 2) in the frame of the tag. Its normal runs along z, so
// the tangent is (1,0,0) x (0,0,1) = (0,-1,0) and across is (0,0,1) x (0,-1,0) = (1,0,0): the
// lattice is read at (-0.5, 0.25, 2). In the cell that is (0.5, 0.25); the corner (1, 0) is
// 0.559 away, so the disc in the middle counts: (0, -0.25), laid down (0, 0, -0.25), in the frame
// (-0.25, 0, 0), turned to (0, -1, 0).
// Noise: f = 25 x 2 x 0.5 = 25, times the spread 0.25 x 0.5 x 0.2 = 0.025: the point x 0.625.
// The cell is floor(-0.5) + floor(0.25) = -1, times f as time.
TEST_F(BrushingTest, DiscsSurfaceLieOnTheSurface) {
  StandAt({0.5f, 1, 4}, {0, 0, 1});
  ExpectVector(Brush(AnisoDiscsSurface).direction, {0, -1, 0});
  ExpectNoiseAt({-0.3125f, 0.15625f, 1.25f}, -25);
}

// A normal along x: the tangent is (0,0,1) x (1,0,0) = (0,1,0), across is (1,0,0) x (0,1,0) =
// (0,0,1). The lattice at (p.y, p.z, p.x) = (0.5, 2, 0.25): in the cell (0.5, 0), the corner 0.5
// away is not inside, so the middle: (0, -0.5). Laid down and out of the frame: (0, 0, -0.5).
TEST_F(BrushingTest, DiscsSurfaceTakeTheZAxisElsewhere) {
  StandAt({0.5f, 1, 4}, {1, 0, 0});
  ExpectVector(Brush(AnisoDiscsSurface).direction, {0, 0, -1});
  ExpectNoiseAt({0.3125f, 1.25f, 0.15625f}, 50);  // the cell is 0 + 2
}

// The lattice at (0.25, 0.5, 2): from the middle (-0.25, 0), laid down (-0.25, 0, 0), turned twice
// to (0.25, 0, 0).
TEST_F(BrushingTest, DiscsPlanarLieInThePlaneOfTheTagAndTurnTwice) {
  StandAt({0.5f, 1, 4}, {1, 0, 0});
  ExpectVector(Brush(AnisoDiscsPlanar).direction, {1, 0, 0});
  ExpectNoiseAt({0.15625f, 0.3125f, 1.25f}, 0);
}

// --- all modes ---

// A filter may leave matrices in the slot that are not those of the render's tag. Here all four
// differ, and none is the inverse of another:
//   slot, into its frame:  moved by (0, 3.5, 4)   slot, out of it:  (x, y, z) -> (x, z, -y)
//   tag, into its frame:   (x, y, z) -> (y, z, x)  tag, out of it:  (x, y, z) -> (-y, x, z)
// The hit (3, 0.5, 1) is (3, 4, 5) in the frame of the slot, the normal (1, 0, 0) is (0, 0, 1) in
// that of the tag, and the hit over the size of 2 is (0.25, 0.5, 1.5) there.
struct FourMatricesTest : BrushingTest {
  FourMatricesTest() {
    slot.head.texInverse = {{0, 3.5f, 4}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    slot.head.texMatrix = {{0, 0, 0}, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}};
    tag.matrix2 = {{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}};
    tag.matrix1 = kTurn;
    render.hitPoint = {3, 0.5f, 1};
    slot.surfaceNormal = {1, 0, 0};
  }
};

TEST_F(FourMatricesTest, EachModeTakesTheMatricesOfSlotAndTagThatAreItsOwn) {
  const struct {
    std::int32_t mode;
    Vector direction, noisePoint;
    float noiseTime;
  } expected[] = {
      // The tag's second axis. 3 x 0.25 x 0.001 x 500; 4 x 2 x 500; 5 x 500.
      {AnisoTagAxis, {-1, 0, 0}, {0.375f, 4000, 2500}, 0},
      // (0,1,0) x (0,0,1) = (1,0,0), turned by the tag. The point along tangent, normal and across
      // is
      // (3, 5, 4): 3 x 0.25 x 0.05 x 500; 5 x 500; 4 x 2 x 500.
      {AnisoTangent, {0, 1, 0}, {18.75f, 2500, 4000}, 0},
      // (0,1,0) x (3,4,5) = (5,0,-3), and (0,0,1) x (5,0,-3) = (0,5,0), turned by the slot.
      // (3,4,5) x 5 x 2 x 0.25; sqrt 50 x 2 x 50.
      {AnisoAroundAxis, {0, 0, -1}, {7.5f, 10, 12.5f}, 707.10678f},
      // (3,4,0), turned by the tag. (3,4,5) x 2 x 0.25 x 100 x 0.01; 5 x 2 x 100.
      {AnisoRadialSurface, {-0.8f, 0.6f, 0}, {1.5f, 2, 2.5f}, 1000},
      // The tangent is (1,0,0) x (0,0,1) = (0,-1,0), across is (1,0,0): the lattice at
      // (-0.5, 0.25, 1.5), as in DiscsSurfaceLieOnTheSurface: (-0.25,0,0), turned by the tag.
      {AnisoDiscsSurface, {0, -1, 0}, {-0.3125f, 0.15625f, 0.9375f}, -25},
      // As RadialSurface, for the normal runs along z.
      {AnisoRadialPlanar, {-0.8f, 0.6f, 0}, {1.5f, 2, 2.5f}, 1000},
      // The lattice at (0.25, 0.5, 1.5): (-0.25,0,0), turned twice by the tag.
      {AnisoDiscsPlanar, {1, 0, 0}, {0.15625f, 0.3125f, 0.9375f}, 0},
  };
  for (const auto& [mode, direction, noisePoint, noiseTime] : expected) {
    SCOPED_TRACE(mode);
    ExpectVector(Brush(mode).direction, direction);
    ExpectNoiseAt(noisePoint, noiseTime);
  }
}

TEST_F(BrushingTest, ScratchesAreTheAmplitudeTimesTheNoise) {
  StandAt({3, 4, 5}, {0.6f, 0, 0.8f});
  for (std::int32_t mode = 0; mode <= 6; ++mode) EXPECT_EQ(Brush(mode).scratch, 0.5 * 0.25) << mode;
}

TEST_F(BrushingTest, WithoutScratchesNoNoiseIsRead) {
  block.scratchActive = 0;
  StandAt({3, 4, 5}, {0.6f, 0, 0.8f});
  for (std::int32_t mode = 0; mode <= 6; ++mode) {
    EXPECT_EQ(Brush(mode).scratch, 0) << mode;
    EXPECT_TRUE(noise.calls().empty()) << mode;
  }
}

TEST_F(BrushingTest, WithoutATagTheWorldIsTheFrame) {
  render.textureTag = nullptr;
  slot.head.texMatrix = slot.head.texInverse = kIdentityMatrix;
  render.hitPoint = {3, 4, 5};
  slot.surfaceNormal = {0, 0, 1};
  ExpectVector(Brush(AnisoTagAxis).direction, {0, 1, 0});
  ExpectVector(Brush(AnisoTangent).direction, {1, 0, 0});
  ExpectVector(Brush(AnisoRadialSurface).direction, {0.6f, 0.8f, 0});
}

TEST_F(BrushingTest, AModeThatDoesNotExistHasNoBrushing) {
  for (const std::int32_t mode : {-1, 7, INT32_MAX, INT32_MIN}) {
    block.anisotropyMode = mode;
    EXPECT_FALSE(BrushingAt(block, slot, render).has_value()) << mode;
  }
  EXPECT_TRUE(noise.calls().empty());
}

}  // namespace
}  // namespace sorvanix::test
