// Angles, matrices and their products.
#include "host/scene/transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "tests/host/scene/vector_checks.h"

namespace sorvanix::host {
namespace {

constexpr float kQuarter = static_cast<float>(std::numbers::pi / 2);

TEST(RotationMatrix, HeadingTurnsTheZAxisToTheLeft) {
  // h = 90 degrees, p = b = 0: v3 = (-cos p sin h, sin p, cos p cos h) = (-1, 0, 0),
  // v1 = (cos h, 0, sin h) = (0, 0, 1), v2 = (0, 1, 0).
  const Matrix m = RotationMatrix({kQuarter, 0, 0});
  EXPECT_TRUE(Near(m.v3, {-1, 0, 0}));
  EXPECT_TRUE(Near(m.v1, {0, 0, 1}));
  EXPECT_TRUE(Near(m.v2, {0, 1, 0}));
}

TEST(RotationMatrix, PitchRaisesTheZAxis) {
  // p = 90 degrees: v3 = (0, 1, 0), v2 = (0, cos p, -sin p) = (0, 0, -1).
  const Matrix m = RotationMatrix({0, kQuarter, 0});
  EXPECT_TRUE(Near(m.v3, {0, 1, 0}));
  EXPECT_TRUE(Near(m.v2, {0, 0, -1}));
  EXPECT_TRUE(Near(m.v1, {1, 0, 0}));
}

TEST(RotationMatrix, BankLowersTheXAxis) {
  // b = 90 degrees: v1 = (cos b, -sin b, 0) = (0, -1, 0), v2 = (sin b, cos b, 0) = (1, 0, 0).
  const Matrix m = RotationMatrix({0, 0, kQuarter});
  EXPECT_TRUE(Near(m.v1, {0, -1, 0}));
  EXPECT_TRUE(Near(m.v2, {1, 0, 0}));
  EXPECT_TRUE(Near(m.v3, {0, 0, 1}));
}

TEST(RotationMatrix, AxesStayUnitVectorsAtRightAngles) {
  const Matrix m = RotationMatrix({0.7f, -1.1f, 2.3f});
  for (const Vector& axis : {m.v1, m.v2, m.v3}) EXPECT_NEAR(Length(axis), 1, 1e-6);
  EXPECT_NEAR(Dot(m.v1, m.v2), 0, 1e-6);
  EXPECT_NEAR(Dot(m.v1, m.v3), 0, 1e-6);
  EXPECT_NEAR(Dot(m.v2, m.v3), 0, 1e-6);
  EXPECT_TRUE(Near(Cross(m.v1, m.v2), m.v3)) << "a rotation does not mirror";
}

TEST(AnglesTowards, PointTheZAxisThere) {
  for (const Vector& direction : {Vector{0, 0, 1}, Vector{0, 0, -1}, Vector{1, 0, 0},
                                  Vector{-1, 2, 3}, Vector{0, 1, 0}, Vector{0, -1, 0}}) {
    const Matrix m = RotationMatrix(Radians(AnglesTowards(direction)));
    EXPECT_TRUE(Near(m.v3, UnitVector(direction, {})));
    EXPECT_NEAR(m.v1.y, 0, 1e-6) << "no bank: x stays level";
  }
}

TEST(AnglesTowards, IsNothingForAZeroDirection) {
  EXPECT_TRUE(Near(AnglesTowards({0, 0, 0}), {0, 0, 0}));
}

TEST(ToMatrix, ScalesThenRotatesThenMoves) {
  // (1, 0, 0) scaled by 2 is (2, 0, 0); heading 90 takes x to z: (0, 0, 2); moved by (10, 0, 0).
  const Matrix m = ToMatrix({.position = {10, 0, 0}, .rotation = {90, 0, 0}, .scale = {2, 3, 4}});
  EXPECT_TRUE(Near(TransformPoint(m, {1, 0, 0}), {10, 0, 2}));
  EXPECT_TRUE(Near(TransformPoint(m, {0, 1, 0}), {10, 3, 0}));
  EXPECT_TRUE(Near(TransformDirection(m, {0, 0, 1}), {-4, 0, 0}));
}

TEST(Multiply, AppliesTheSecondFirst) {
  const Matrix move = {{1, 2, 3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const Matrix twice = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  // twice(move(1, 1, 1)) = 2 (2, 3, 4); move(twice(1, 1, 1)) = (3, 4, 5).
  EXPECT_TRUE(Near(TransformPoint(Multiply(twice, move), {1, 1, 1}), {4, 6, 8}));
  EXPECT_TRUE(Near(TransformPoint(Multiply(move, twice), {1, 1, 1}), {3, 4, 5}));
}

TEST(UnitVector, HasTheFallbackWithoutADirection) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  const Vector fallback = {0, 1, 0};
  EXPECT_TRUE(Near(UnitVector({0, 3, 4}, fallback), {0, 0.6f, 0.8f}));
  EXPECT_TRUE(Near(UnitVector({0, 0, 0}, fallback), fallback));
  EXPECT_TRUE(Near(UnitVector({infinity, 0, 0}, fallback), fallback));
  EXPECT_TRUE(Near(UnitVector({std::nanf(""), 0, 0}, fallback), fallback));
}

TEST(UnitVector, KeepsTheDirectionOfTheSmallestAndLargestVectors) {
  EXPECT_TRUE(Near(UnitVector({0, 0, 1e-45f}, {}), {0, 0, 1}));
  EXPECT_TRUE(Near(UnitVector({3e38f, 0, 0}, {}), {1, 0, 0}));
}

}  // namespace
}  // namespace sorvanix::host
