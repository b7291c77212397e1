#include "module/kit/matrix.h"

#include "module/kit/vector.h"
#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsNear;
using test::IsVector;
using test::Random;

constexpr float kHalfPi = 1.57079632679f;

// The cosine of kHalfPi, which is a little off a right angle, and the rounding of an element.
constexpr double kTurnBound = 1e-7;

void ExpectMatrix(const Matrix& m, const Matrix& expected, double bound = 0) {
  EXPECT_THAT(m.off, IsNear(expected.off, bound));
  EXPECT_THAT(m.v1, IsNear(expected.v1, bound));
  EXPECT_THAT(m.v2, IsNear(expected.v2, bound));
  EXPECT_THAT(m.v3, IsNear(expected.v3, bound));
}

Matrix RandomMap(Random& random) {
  // Axes near the unit axes keep the determinant near 1.
  const auto axis = [&random](Vector v) { return Add(v, random.Point(0.25f)); };
  const Vector off = random.Point(10);
  const Vector v1 = axis({1, 0, 0}), v2 = axis({0, 1, 0});
  return {off, v1, v2, axis({0, 0, 1})};
}

TEST(Transform, AddsTheAxesToTheDisplacement) {
  const Matrix m{{100, 200, 300}, {1, 2, 3}, {4, 5, 6}, {7, 8, 10}};
  // 100 + 1*2 + 4*3 + 7*5 = 149; 200 + 2*2 + 5*3 + 8*5 = 259; 300 + 3*2 + 6*3 + 10*5 = 374.
  EXPECT_THAT(Transform({2, 3, 5}, m), IsVector(149, 259, 374));
}

TEST(Transform, ByTheIdentityChangesNothing) {
  EXPECT_THAT(Transform({2, 3, 5}, kIdentityMatrix), IsVector(2, 3, 5));
}

TEST(Rotate, LeavesTheDisplacementOut) {
  const Matrix m{{100, 200, 300}, {1, 2, 3}, {4, 5, 6}, {7, 8, 10}};
  EXPECT_THAT(Rotate({2, 3, 5}, m), IsVector(49, 59, 74));
}

TEST(Invert, OfAScaleDividesAndMovesBack) {
  // p -> 2 p.x + 1 has the inverse q -> q.x / 2 - 1/2, and so on.
  const Matrix m{{1, 2, 3}, {2, 0, 0}, {0, 4, 0}, {0, 0, 8}};
  ExpectMatrix(Invert(m), {{-0.5f, -0.5f, -0.375f}, {0.5f, 0, 0}, {0, 0.25f, 0}, {0, 0, 0.125f}});
}

TEST(Invert, PlacesTheCofactors) {
  // v1 = x, v2 = x + y, v3 = y + z; so y = v2 - v1 and z = v3 - v2 + v1.
  const Matrix m{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 1}};
  ExpectMatrix(Invert(m), {{0, 0, 0}, {1, 0, 0}, {-1, 1, 0}, {1, -1, 1}});
}

TEST(Invert, OfASingularMatrixIsTheIdentity) {
  ExpectMatrix(Invert({{5, 6, 7}, {1, 2, 3}, {2, 4, 6}, {0, 0, 1}}), kIdentityMatrix);
  ExpectMatrix(Invert({{5, 6, 7}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}), kIdentityMatrix);
}

TEST(Invert, OfTinyAxesIsNotSingular) {
  // The determinant 2^-300 is far below the smallest float.
  const float tiny = 0x1p-100f, huge = 0x1p100f;
  ExpectMatrix(Invert(ScaleMatrix({tiny, tiny, tiny})), ScaleMatrix({huge, huge, huge}));
}

TEST(Invert, UndoesTransform) {
  Random random(11);
  for (int i = 0; i < 1000; ++i) {
    const Matrix m = RandomMap(random);
    const Vector p = random.Point(10);
    // Images reach 10 + 10 * 1.75 < 32, so each is rounded by at most 2^-20. The inverse, whose
    // rows sum to less than 4 here, carries that and the roundings of its own elements.
    ASSERT_THAT(Transform(Transform(p, m), Invert(m)), IsNear(p, 2e-5));
  }
}

TEST(Multiply, AppliesTheSecondMapFirst) {
  const Matrix move{{1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const Matrix twice = ScaleMatrix({2, 2, 2});
  EXPECT_THAT(Transform({3, 0, 0}, Multiply(twice, move)), IsVector(8, 0, 0));  // (3 + 1) * 2
  EXPECT_THAT(Transform({3, 0, 0}, Multiply(move, twice)), IsVector(7, 0, 0));  // 3 * 2 + 1
}

TEST(Multiply, EqualsTheTwoMapsInTurn) {
  Random random(12);
  for (int i = 0; i < 1000; ++i) {
    const Matrix a = RandomMap(random), b = RandomMap(random);
    const Vector p = random.Point(10);
    // Values stay below 64 and are rounded to 2^-19 a few times on either way.
    ASSERT_THAT(Transform(p, Multiply(a, b)), IsNear(Transform(Transform(p, b), a), 2e-5));
  }
}

TEST(Multiply, ByAScaleOnTheLeftScalesTheDisplacementToo) {
  const Matrix m{{1, 2, 3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  ExpectMatrix(Multiply(ScaleMatrix({100, 100, 100}), m),
               {{100, 200, 300}, {100, 0, 0}, {0, 100, 0}, {0, 0, 100}});
}

TEST(ScaleMatrix, ScalesEachAxis) {
  EXPECT_THAT(Transform({1, 1, 1}, ScaleMatrix({2, 3, 5})), IsVector(2, 3, 5));
}

TEST(RotationY, TakesXTowardsZ) {
  ExpectMatrix(RotationY(kHalfPi), {{0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}, kTurnBound);
  ExpectMatrix(RotationY(0), kIdentityMatrix);
}

TEST(RotationZ, TakesYTowardsX) {
  ExpectMatrix(RotationZ(kHalfPi), {{0, 0, 0}, {0, -1, 0}, {1, 0, 0}, {0, 0, 1}}, kTurnBound);
  ExpectMatrix(RotationZ(0), kIdentityMatrix);
}

TEST(RotationFromAngles, OfOneAngleIsTheTurnAboutItsAxis) {
  ExpectMatrix(RotationFromAngles({0.7f, 0, 0}), RotationY(0.7f));
  ExpectMatrix(RotationFromAngles({0, 0, 0.7f}), RotationZ(0.7f));
  // Pitch alone: v2 = (0, cos p, -sin p), v3 = (0, sin p, cos p).
  ExpectMatrix(RotationFromAngles({0, kHalfPi, 0}), {{0, 0, 0}, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
               kTurnBound);
}

TEST(RotationFromAngles, BanksThenPitchesThenHeads) {
  const Vector angles{0.3f, -0.8f, 1.9f};
  const Matrix pitch = RotationFromAngles({0, angles.y, 0});
  const Matrix inTurn = Multiply(RotationY(angles.x), Multiply(pitch, RotationZ(angles.z)));
  // Two products, each of elements rounded by 2^-25.
  ExpectMatrix(RotationFromAngles(angles), inTurn, 4e-7);
}

TEST(RotationFromAngles, KeepsLengthsAndHandedness) {
  Random random(13);
  for (int i = 0; i < 200; ++i) {
    const Matrix m = RotationFromAngles(random.Point(7));
    // Elements below 1 are rounded by 2^-25 each.
    ASSERT_NEAR(Length(m.v1), 1, 2e-7);
    ASSERT_NEAR(Dot(m.v1, m.v2), 0, 2e-7);
    ASSERT_THAT(Cross(m.v1, m.v2), IsNear(m.v3, 3e-7));
  }
}

}  // namespace
}  // namespace sorvanix
