#include "module/kit/vector.h"

#include <limits>

#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsNanVector;
using test::IsNear;
using test::IsVector;
using test::Random;

constexpr Vector kA{1, 2, 4};
constexpr Vector kB{0.5f, -3, 8};

TEST(VectorArithmetic, WorksByComponent) {
  EXPECT_THAT(Add(kA, kB), IsVector(1.5, -1, 12));
  EXPECT_THAT(Sub(kA, kB), IsVector(0.5, 5, -4));
  EXPECT_THAT(Scale(0.5f, kA), IsVector(0.5, 1, 2));
  EXPECT_THAT(Product(kA, kB), IsVector(0.5, -6, 32));
  EXPECT_THAT(OffsetAll(10, kA), IsVector(11, 12, 14));
}

TEST(VectorArithmetic, ScaleTakesItsArgumentsInEitherOrder) {
  Random random(1);
  for (int i = 0; i < 1000; ++i) {
    const Vector v = random.Point(100);
    const float s = random.Between(-5, 5);
    ASSERT_THAT(Scale(v, s), IsVector(Scale(s, v)));
  }
}

TEST(VectorArithmetic, InPlaceFormsChangeTheirFirstArgument) {
  Vector v = kA;
  AddInPlace(v, kB);
  EXPECT_THAT(v, IsVector(1.5, -1, 12));
  SubInPlace(v, kB);
  EXPECT_THAT(v, IsVector(kA));
  ScaleInPlace(v, -2);
  EXPECT_THAT(v, IsVector(-2, -4, -8));
}

TEST(VectorArithmetic, IsUsableAtCompileTime) {
  static_assert(Dot(Add({1, 0, 0}, {0, 2, 0}), {3, 4, 5}) == 11);  // 1 * 3 + 2 * 4
}

TEST(Dot, SumsTheProducts) { EXPECT_EQ(Dot(kA, kB), 0.5f - 6 + 32); }

TEST(Cross, TurnsTheAxesIntoOneAnother) {
  EXPECT_THAT(Cross({1, 0, 0}, {0, 1, 0}), IsVector(0, 0, 1));
  EXPECT_THAT(Cross({0, 1, 0}, {0, 0, 1}), IsVector(1, 0, 0));
  EXPECT_THAT(Cross({0, 0, 1}, {1, 0, 0}), IsVector(0, 1, 0));
}

TEST(Cross, IsPerpendicularToBoth) {
  Random random(2);
  for (int i = 0; i < 1000; ++i) {
    const Vector a = random.Point(1), b = random.Point(1);
    const Vector c = Cross(a, b);
    // Three products of at most 1 times the rounding of a component of at most 2, half of 2^-22.
    ASSERT_NEAR(Dot(a, c), 0, 3 * 0x1p-23);
    ASSERT_NEAR(Dot(b, c), 0, 3 * 0x1p-23);
  }
}

TEST(WithoutNegatives, RaisesThemToZeroAndLeavesTheRest) {
  EXPECT_THAT(WithoutNegatives({-0.5f, 0, 7}), IsVector(0, 0, 7));
  EXPECT_TRUE(std::isnan(WithoutNegatives({NAN, -1, 2}).x));
}

// 3e38 three times is beyond the largest float.
TEST(SumOfMagnitudes, CountsEveryComponentWhateverItsSign) {
  EXPECT_EQ(SumOfMagnitudes({1, -2, 4}), 7);
  EXPECT_EQ(SumOfMagnitudes({0, 0, -0.25f}), 0.25);
  EXPECT_NEAR(SumOfMagnitudes({3e38f, -3e38f, 3e38f}), 9e38, 1e33);
}

TEST(Length, IsEuclidean) {
  EXPECT_EQ(Length({2, 3, 6}), 7);  // 4 + 9 + 36 = 49
  EXPECT_EQ(Length({0, 0, 0}), 0);
}

TEST(Length, NeitherVanishesNorOverflows) {
  // The squares are beyond a float's range, the lengths are not.
  EXPECT_FLOAT_EQ(Length({3e-30f, 4e-30f, 0}), 5e-30f);
  EXPECT_FLOAT_EQ(Length({3e30f, 4e30f, 0}), 5e30f);
}

TEST(Normalized, OfZeroIsZero) { EXPECT_THAT(Normalized({0, 0, 0}), IsVector(0, 0, 0)); }

TEST(Normalized, KeepsTheDirection) {
  // 1 / 5 in double, times 3 and 4, rounds to the floats nearest 0.6 and 0.8.
  EXPECT_THAT(Normalized({3, 0, 4}), IsVector(0.6f, 0, 0.8f));
}

TEST(Normalized, MultipliesByTheReciprocal) {
  // 2500 / sqrt(8038146) is 4e-17 below 0x1.c37927p-1, the middle between two floats. Times the
  // rounded reciprocal it comes out as just the middle, which rounds to the even float above; a
  // division would stay below, and give 0x1.c37926p-1.
  EXPECT_EQ(Normalized({445, 1261, 2500}).z, 0x1.c37928p-1f);
}

TEST(Normalized, HasUnitLengthWhateverTheScale) {
  Random random(3);
  for (const float extent : {1e-38f, 1.0f, 1e38f}) {
    for (int i = 0; i < 300; ++i) {
      // Three components, each rounded by at most half of 2^-24 for components below 1.
      ASSERT_NEAR(Length(Normalized(random.Point(extent))), 1, 2 * 0x1p-24) << extent;
    }
  }
}

TEST(Lerp, ReachesBothEndsExactly) {
  Random random(4);
  for (int i = 0; i < 1000; ++i) {
    const Vector a = random.Colour(), b = random.Colour();
    ASSERT_THAT(Lerp(a, b, 0), IsVector(a));
    ASSERT_THAT(Lerp(a, b, 1), IsVector(b));
  }
}

TEST(Lerp, DoesNotClampItsParameter) {
  EXPECT_THAT(Lerp({0, 1, 2}, {1, 1, 0}, 0.25f), IsVector(0.25, 1, 1.5));
  EXPECT_THAT(Lerp({0, 1, 2}, {1, 1, 0}, 2), IsVector(2, 1, -2));
  EXPECT_THAT(Lerp({0, 1, 2}, {1, 1, 0}, -1), IsVector(-1, 1, 4));
}

TEST(Lerp, OfEqualEndsStaysThereHoweverFarItGoes) {
  // (b - a) t + a adds exactly nothing, where a (1 - t) + b t would lose a beside 1e50.
  EXPECT_THAT(Lerp({1e30f, 1, -3}, {1e30f, 1, -3}, 1e20f), IsVector(1e30f, 1, -3));
}

TEST(OffsetFromLine, LeadsFromTheFootOfThePerpendicular) {
  // On the line through (1, 1, 1) along z the foot of (4, 5, 9) is (1, 1, 9).
  EXPECT_THAT(OffsetFromLine({1, 1, 1}, {0, 0, 1}, {4, 5, 9}), IsVector(3, 4, 0));
  EXPECT_THAT(OffsetFromLine({1, 1, 1}, {0, 0, -8}, {4, 5, 9}), IsVector(3, 4, 0));
}

TEST(OffsetFromLine, OfAPointOnTheLineIsZero) {
  EXPECT_THAT(OffsetFromLine({1, 2, 3}, {1, 1, 2}, {3, 4, 7}), IsVector(0, 0, 0));
}

TEST(OffsetFromLine, WithoutADirectionIsNan) {
  EXPECT_THAT(OffsetFromLine({1, 2, 3}, {0, 0, 0}, {4, 5, 6}), IsNanVector());
}

TEST(Mean, UsesFourteenDigitsOfAThird) {
  EXPECT_EQ(Mean({1, 1, 1}), 3 * 0.33333333333333);
  EXPECT_LT(Mean({1, 1, 1}), 1);
  EXPECT_EQ(static_cast<float>(Mean({1, 1, 1})), 1.0f);
}

TEST(Mean, DoesNotDependOnTheOrderOfComponents) {
  Random random(5);
  for (int i = 0; i < 10000; ++i) {
    const Vector c = random.Colour();
    ASSERT_EQ(Mean(c), Mean({c.x, c.z, c.y}));
    ASSERT_EQ(Mean(c), Mean({c.z, c.y, c.x}));
  }
}

}  // namespace
}  // namespace sorvanix
