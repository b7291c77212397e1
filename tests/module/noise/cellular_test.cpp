#include "module/noise/cellular.h"

#include <cmath>
#include <limits>

#include "module/noise/lattice.h"
#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class Cellular : public test::NoiseEngine {
 protected:
  /// Feature points at the centres of their cells, to within the last bit of the remap.
  void CentreAllPoints() { noise.SetConstant(Operation::UnitNoiseAt, 0.5); }

  /// Noise in no pattern, beyond both ends of 0.3..0.7 here and there.
  void ScatterPoints() {
    noise.Set(Operation::UnitNoiseAt, [](const test::NoiseCall& call) {
      return 0.5 + 0.25 * std::sin(12.9898 * call.point.x + 78.233 * call.point.y +
                                   37.719 * call.point.z + call.time);
    });
  }

  float Next() { return static_cast<float>(20 * random_.NextSigned()); }
  SeededGenerator random_{1};
};

float DistanceTo(const Vector& p, float x, float y, float z) {
  return static_cast<float>(std::hypot(static_cast<double>(p.x) - x, static_cast<double>(p.y) - y,
                                       static_cast<double>(p.z) - z));
}

// Sample (0.5, 1.25): its cell's centre (0.5, 1.5) is 0.25 away, the one below (0.5, 0.5) 0.75.
TEST_F(Cellular, FindsTheTwoNearestOfThePlane) {
  CentreAllPoints();
  const CellularPoints found = CellularSearch2(0.5f, 1.25f, 0, 1);
  EXPECT_NEAR(found.f1, 0.25, test::kRounding);
  EXPECT_NEAR(found.f2, 0.75, test::kRounding);
  EXPECT_POINT(found.p1, 0.5, 1.5, 0);
  EXPECT_POINT(found.p2, 0.5, 0.5, 0);
}

// Sample (0.5, 1.25, 2.375): the own centre (0.5, 1.5, 2.5) at sqrt(1/16 + 1/64), the one below in
// y (0.5, 0.5, 2.5) at sqrt(9/16 + 1/64); the one below in z is farther: 1/16 + 49/64.
TEST_F(Cellular, FindsTheTwoNearestOfSpace) {
  CentreAllPoints();
  const CellularPoints found = CellularSearch3(0.5f, 1.25f, 2.375f, 0, 1);
  EXPECT_NEAR(found.f1, std::sqrt(5.0 / 64), test::kRounding);
  EXPECT_NEAR(found.f2, std::sqrt(37.0 / 64), test::kRounding);
  EXPECT_POINT(found.p1, 0.5, 1.5, 2.5);
  EXPECT_POINT(found.p2, 0.5, 0.5, 2.5);
}

// noise 0.4: (0.4 - 0.3) 2.5 = 0.25 of the cell; with jitter 0.5 the offset of -0.25 is halved.
TEST_F(Cellular, SpreadsTheMiddleOfTheNoiseOverTheCell) {
  noise.SetConstant(Operation::UnitNoiseAt, 0.4);
  EXPECT_POINT(CellularSearch2(0.25f, 0.25f, 0, 1).p1, 0.25, 0.25, 0);
  EXPECT_POINT(CellularSearch2(0.25f, 0.25f, 0, 0.5f).p1, 0.375, 0.375, 0);
  noise.SetConstant(Operation::UnitNoiseAt, 0.1);  // below 0.3: at the cell's corner
  EXPECT_POINT(CellularSearch2(0.25f, 0.25f, 0, 1).p1, 0, 0, 0);
  noise.SetConstant(Operation::UnitNoiseAt, 0.95);  // above 0.7
  EXPECT_POINT(CellularSearch3(0.75f, 0.75f, 0.75f, 0, 1).p1, 1, 1, 1);
}

// 0.7 as a float, less 0.3 as a float, times 2.5000002 passes 1 and is clamped; without the odd
// last bit of the scale it would fall short: (0.69999999 - 0.30000001) * 2.5 = 0.99999996.
TEST_F(Cellular, TheRemapReachesTheUpperBorder) {
  noise.SetConstant(Operation::UnitNoiseAt, 0.7);
  EXPECT_EQ(CellularSearch2(0.75f, 0.75f, 0, 1).p1.x, 1.0f);
}

// The distances along y are read before those along x, each at an offset of its own, at the time
// of the sample; cells run from -1 to 1 with x outermost.
TEST_F(Cellular, AsksTheNoiseOfThePlaneInOrder) {
  CellularSearch2(3.5f, -2.25f, 0.75f, 1);
  const auto& calls = noise.calls();
  ASSERT_EQ(calls.size(), 18u);
  EXPECT_POINT(calls[0].point, 2 + 20, -4 - 10, 0);
  EXPECT_POINT(calls[1].point, 2, -4, 0);
  EXPECT_POINT(calls[2].point, 2 + 20, -3 - 10, 0);
  EXPECT_POINT(calls[9].point, 3, -3, 0);
  EXPECT_POINT(calls[17].point, 4, -2, 0);
  for (const auto& call : calls) {
    EXPECT_EQ(call.operation, Operation::UnitNoiseAt);
    EXPECT_EQ(call.time, 0.75f);
  }
}

TEST_F(Cellular, AsksTheNoiseOfSpaceInOrder) {
  CellularSearch3(3.5f, -2.25f, 7.75f, 0.75f, 1);
  const auto& calls = noise.calls();
  ASSERT_EQ(calls.size(), 81u);
  EXPECT_POINT(calls[0].point, 2 - 18, -4 - 16, 6 + 23);
  EXPECT_POINT(calls[1].point, 2 + 20, -4 - 10, 6 + 20);
  EXPECT_POINT(calls[2].point, 2, -4, 6);
  EXPECT_POINT(calls[5].point, 2, -4, 7);   // z runs innermost
  EXPECT_POINT(calls[11].point, 2, -3, 6);  // then y
  EXPECT_POINT(calls[80].point, 4, -2, 8);
  for (const auto& call : calls) EXPECT_EQ(call.time, 0.75f);
}

TEST_F(Cellular, EachAxisTakesItsOwnNoise) {
  // x reads 0.3 at the cell itself; y and z read 0.5 and 0.7 at their offsets (x + 20, x - 18).
  noise.Set(Operation::UnitNoiseAt, [](const test::NoiseCall& call) {
    return call.point.x > 10 ? 0.5 : call.point.x < -10 ? 0.7 : 0.3;
  });
  EXPECT_POINT(CellularSearch3(0.125f, 0.5f, 0.875f, 0, 1).p1, 0, 0.5, 1);
}

// Halfway between the centres (0.5, 0.5) and (1.5, 0.5) both are 0.5 away; the one with the lesser
// x is visited first. A sample on the border belongs to the cell at 1.5.
TEST_F(Cellular, OfEqualDistancesTheFirstVisitedStaysNearest) {
  const CellularPoints alongX = CellularSearch2(1.0f, 0.5f, 0, 0);
  EXPECT_EQ(alongX.f1, 0.5f);
  EXPECT_EQ(alongX.f2, 0.5f);
  EXPECT_POINT(alongX.p1, 0.5, 0.5, 0);
  EXPECT_POINT(alongX.p2, 1.5, 0.5, 0);
  EXPECT_POINT(CellularSearch2(0.5f, 1.0f, 0, 0).p1, 0.5, 0.5, 0);
  EXPECT_POINT(CellularSearch3(0.5f, 0.5f, 1.0f, 0, 0).p1, 0.5, 0.5, 0.5);
  EXPECT_POINT(CellularSearchHash2(1.0f, 0.5f, 0).p1, 0.5, 0.5, 0);
  // At a corner four centres tie: the first two visited, (0.5, 0.5) and (0.5, 1.5), stay.
  EXPECT_POINT(CellularSearch2(1, 1, 0, 0).p2, 0.5, 1.5, 0);
}

// (0.49999 - 0.3) 2.5 - 0.5 = -2.5e-5, times a jitter of 1e-4: all points lie 2.5e-9 left of their
// centres, so that the second visited is nearer by that much, which no float can tell.
TEST_F(Cellular, DistancesAreComparedAsFloats) {
  noise.SetConstant(Operation::UnitNoiseAt, 0.49999);
  const CellularPoints found = CellularSearch2(1.0f, 0.5f, 0, 1e-4f);
  EXPECT_EQ(found.f1, found.f2);
  EXPECT_FLOAT_EQ(found.p1.x, 0.5f);
}

TEST_F(Cellular, AJitterOfZeroPutsThePointsAtTheCentres) {
  ScatterPoints();
  EXPECT_EQ(CellularSearch2(-3.5f, 7.5f, 0.75f, 0).f1, 0);
  EXPECT_EQ(CellularSearch3(-3.5f, 7.5f, 0.5f, 0.75f, 0).f1, 0);
  EXPECT_EQ(CellularSearchHash2(-3.5f, 7.5f, 0).f1, 0);
  EXPECT_EQ(CellularSearch2(-3.5f, 7.5f, 0.75f, 0).f2, 1);
}

// With a jitter of 1 every point stays in its cell, so the nearest is at most the diagonal of a
// cell away, and the second within the neighbourhood's.
TEST_F(Cellular, LawsOfAnyPlace) {
  ScatterPoints();
  noise.Record(false);
  for (int i = 0; i < 2000; ++i) {
    const float x = Next(), y = Next(), z = Next(), time = Next();
    const CellularPoints plane = CellularSearch2(x, y, time, 1);
    const CellularPoints hashed = CellularSearchHash2(x, y, 1);
    const CellularPoints space = CellularSearch3(x, y, z, time, 1);
    for (const CellularPoints& found : {plane, hashed, space}) ASSERT_LE(found.f1, found.f2);
    ASSERT_LE(plane.f1, std::sqrt(2.0f));
    ASSERT_LE(hashed.f1, std::sqrt(2.0f));
    ASSERT_LE(space.f1, std::sqrt(3.0f));
    for (const CellularPoints& found : {plane, hashed}) ASSERT_LE(found.f2, std::sqrt(5.0f));
    ASSERT_LE(space.f2, std::sqrt(6.0f));
    // Stored points are floats of magnitude up to 21: half a unit in the last place is 1e-6.
    for (const CellularPoints& found : {plane, hashed}) {
      ASSERT_NEAR(found.f1, DistanceTo(found.p1, x, y, 0), 4e-6);
      ASSERT_NEAR(found.f2, DistanceTo(found.p2, x, y, 0), 4e-6);
    }
    ASSERT_NEAR(space.f1, DistanceTo(space.p1, x, y, z), 4e-6);
    ASSERT_NEAR(space.f2, DistanceTo(space.p2, x, y, z), 4e-6);
  }
}

// Cell (3, -2): x from the hash of the cell itself, y from that of (23, -12).
TEST_F(Cellular, HashedPointsComeFromTheCellHash) {
  const float fx = HashCell2(3, -2), fy = HashCell2(23, -12);
  const CellularPoints found = CellularSearchHash2(3 + fx, -2 + fy, 1);
  EXPECT_NEAR(found.f1, 0, test::kRounding);
  EXPECT_NEAR(found.p1.x, 3 + fx, test::kRounding);
  EXPECT_NEAR(found.p1.y, -2 + fy, test::kRounding);
  EXPECT_TRUE(noise.calls().empty());
}

TEST_F(Cellular, ResultsAreReadFromTheirSearch) {
  ScatterPoints();
  for (int i = 0; i < 50; ++i) {
    const float x = Next(), y = Next(), z = Next(), time = Next();
    const CellularPoints plane = CellularSearch2(x, y, time, 1);
    EXPECT_EQ(CellularNearest2(x, y, time, 1), plane.f1);
    EXPECT_EQ(CellularSecond2(x, y, time, 1), plane.f2);
    EXPECT_EQ(CellularEdge2(x, y, time, 1), plane.f2 - plane.f1);
    const CellularPoints space = CellularSearch3(x, y, z, time, 0.5f);
    EXPECT_EQ(CellularNearest3(x, y, z, time, 0.5f), space.f1);
    EXPECT_EQ(CellularSecond3(x, y, z, time, 0.5f), space.f2);
    EXPECT_EQ(CellularEdge3(x, y, z, time, 0.5f), space.f2 - space.f1);
  }
}

// The nearest points are (0.5, 1.5, 0) and (0.5, 1.5, 2.5); 10 is added to x.
TEST_F(Cellular, ValuesAreDrawnWithoutTimeFromTheNearestPoint) {
  noise.SetConstant(Operation::UnitNoise, 0.625);
  EXPECT_EQ(CellularValue2(0.5f, 1.25f, 0.75f, 0), 0.625f);
  EXPECT_EQ(CellularValue3(0.5f, 1.25f, 2.375f, 0.75f, 0), 0.625f);
  const auto calls = noise.callsOf(Operation::UnitNoise);
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_POINT(calls[0].point, 10.5, 1.5, 0);
  EXPECT_POINT(calls[1].point, 10.5, 1.5, 2.5);
}

TEST_F(Cellular, ANanFindsNothing) {
  const CellularPoints found = CellularSearch2(kNan, 0, 0, 1);
  EXPECT_FLOAT_EQ(found.f1, std::sqrt(1000.0f));
  EXPECT_POINT(found.p1, 0, 0, 0);
  EXPECT_EQ(CellularEdge3(0, kNan, 0, 0, 1), 0);
  noise.SetConstant(Operation::UnitNoiseAt, std::numeric_limits<double>::quiet_NaN());
  EXPECT_FLOAT_EQ(CellularNearest2(0, 0, 0, 1), std::sqrt(1000.0f));
}

}  // namespace
}  // namespace sorvanix
