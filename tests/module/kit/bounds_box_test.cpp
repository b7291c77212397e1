#include "module/kit/bounds_box.h"

#include <limits>

#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsVector;

BoundsBox BoxAround(std::initializer_list<Vector> points) {
  BoundsBox box;
  BoundsStart(box, *points.begin());
  for (const Vector& p : points) BoundsAdd(box, p);
  return box;
}

TEST(BoundsBox, HalfSizeIsHalfTheExtentOnEachAxis) {
  const BoundsBox box = BoxAround({{1, 5, -2}, {3, 4, -2}, {2, 9, -4}});
  EXPECT_THAT(box.min, IsVector(1, 4, -4));
  EXPECT_THAT(box.max, IsVector(3, 9, -2));
  EXPECT_THAT(BoundsHalfSize(box), IsVector(1, 2.5, 1));
}

TEST(BoundsBox, OfOnePointHasNoSize) {
  EXPECT_THAT(BoundsHalfSize(BoxAround({{7, 8, 9}})), IsVector(0, 0, 0));
}

TEST(BoundsBox, StartAddsNoPoint) {
  BoundsBox box;
  BoundsStart(box, {1, 2, 3});
  EXPECT_EQ(box.used, 0);
  EXPECT_THAT(box.min, IsVector(1, 2, 3));
  EXPECT_THAT(box.max, IsVector(1, 2, 3));

  BoundsAdd(box, {2, 2, 3});
  EXPECT_EQ(box.used, 1);
  BoundsStart(box, {5, 5, 5});
  EXPECT_EQ(box.used, 1);
}

TEST(BoundsBox, ThatWasNeverUsedHasNoSize) {
  BoundsBox box;
  box.max = {4, 4, 4};
  EXPECT_THAT(BoundsHalfSize(box), IsVector(0, 0, 0));
}

TEST(BoundsBox, HoldsEveryPointAdded) {
  test::Random random(21);
  BoundsBox box;
  BoundsStart(box, {0, 0, 0});
  for (int i = 0; i < 1000; ++i) {
    const Vector p = random.Point(50);
    BoundsAdd(box, p);
    ASSERT_TRUE(box.min.x <= p.x && box.min.y <= p.y && box.min.z <= p.z);
    ASSERT_TRUE(box.max.x >= p.x && box.max.y >= p.y && box.max.z >= p.z);
  }
}

TEST(BoundsBox, NanMovesNoSide) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const BoundsBox box = BoxAround({{1, 1, 1}, {nan, 3, nan}});
  EXPECT_THAT(BoundsHalfSize(box), IsVector(0, 1, 0));
}

}  // namespace
}  // namespace sorvanix
