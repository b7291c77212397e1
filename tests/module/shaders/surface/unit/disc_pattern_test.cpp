// Two lattices of discs that cover the plane.
#include "module/shaders/surface/disc_pattern.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

Vector FromCentre(float x, float y) { return DiscAt({x, y, 0}, 1, 1).fromCentre; }

// In the lower half of a cell the discs around its corners lie in front: (0.25, 0.25) is 0.354 from
// the corner (0, 0), and (0.75, 0.25) as far from (1, 0).
TEST(DiscPattern, InTheLowerHalfTheCornersLieInFront) {
  ExpectExactly(FromCentre(0.25f, 0.25f), {0.25f, 0.25f, 0});
  ExpectExactly(FromCentre(0.75f, 0.25f), {-0.25f, 0.25f, 0});
}

// (0.5, 0.25) is 0.559 from both corners, and 0.25 below the middle.
TEST(DiscPattern, BetweenTheCornersTheMiddleShows) {
  ExpectExactly(FromCentre(0.5f, 0.25f), {0, -0.25f, 0});
}

// (0.25, 0.75) is 0.354 from the middle, which is in front there.
TEST(DiscPattern, InTheUpperHalfTheMiddleLiesInFront) {
  ExpectExactly(FromCentre(0.25f, 0.75f), {-0.25f, 0.25f, 0});
}

// (0.0625, 0.75) is 0.504 from the middle; the corner is (0, 1).
TEST(DiscPattern, BesideTheMiddleTheCornersShow) {
  ExpectExactly(FromCentre(0.0625f, 0.75f), {0.0625f, -0.25f, 0});
}

TEST(DiscPattern, EveryPointIsInsideTheDiscThatCoversIt) {
  for (float y = -2; y < 2; y += 0.01f) {
    for (float x = -2; x < 2; x += 0.01f) {
      const Vector v = FromCentre(x, y);
      ASSERT_LE(std::hypot(v.x, v.y), 0.5f + 1e-6f) << x << " " << y;
    }
  }
}

TEST(DiscPattern, RepeatsWithEveryCellAlsoBelowZero) {
  for (const float shift : {-3.0f, 0.0f, 5.0f}) {
    ExpectVector(FromCentre(0.25f + shift, 0.25f - shift), {0.25f, 0.25f, 0});
    ExpectVector(FromCentre(0.5f - shift, 0.25f + shift), {0, -0.25f, 0});
  }
}

// f = 25 x 0.5 = 12.5; the spread 0.4 x 0.2 = 0.08 makes the point x 1.
// (1.5, 2.25): the middle of cell 1 + 2. (1.25, 2.25): the corner of cell floor(1.75) +
// floor(2.75). (1.75, 2.25): the corner of cell floor(2.25) + floor(2.75).
TEST(DiscPattern, NoiseIsToldApartByTheCell) {
  const Disc middle = DiscAt({1.5f, 2.25f, 7}, 0.5f, 0.4f);
  ExpectVector(middle.noisePoint, {1.5f, 2.25f, 7});
  EXPECT_EQ(middle.noiseTime, 12.5f * 3);
  EXPECT_EQ(DiscAt({1.25f, 2.25f, 7}, 0.5f, 0.4f).noiseTime, 12.5f * 3);
  EXPECT_EQ(DiscAt({1.75f, 2.25f, 7}, 0.5f, 0.4f).noiseTime, 12.5f * 4);
}

TEST(DiscPattern, AnUndefinedPointIsUndefinedAndNoMore) {
  for (const float wild : {NAN, INFINITY, -INFINITY}) {
    const Disc disc = DiscAt({wild, 0.25f, 0}, 1, 1);
    EXPECT_FALSE(std::isfinite(disc.noiseTime));
  }
}

}  // namespace
}  // namespace sorvanix::test
