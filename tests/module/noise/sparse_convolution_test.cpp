#include "module/noise/sparse_convolution.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>
#include <vector>

#include "module/noise/lattice.h"

namespace sorvanix {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

TEST(ImpulseFilter, KnownWeights) {
  EXPECT_EQ(ImpulseFilter(0), 1.0f);
  // r = 0.5: 0.5 ((1.5 - 5) 0.25 + 2) = 0.5625. The step of 0.01 is a float, hence the tolerance.
  EXPECT_NEAR(ImpulseFilter(0.25f), 0.5625f, 1e-6);
  EXPECT_NEAR(ImpulseFilter(1), 0.0f, 1e-6);
  // r = 1.5: 0.5 (((5 - 1.5) 1.5 - 8) 1.5 + 4) = -0.0625, the negative lobe.
  EXPECT_NEAR(ImpulseFilter(2.25f), -0.0625f, 1e-6);
  EXPECT_EQ(ImpulseFilter(4), 0.0f);
}

/// The cubic of Catmull and Rom in its usual form, by powers of the radius.
double CatmullRom(double r) {
  return r < 1 ? 1.5 * r * r * r - 2.5 * r * r + 1 : -0.5 * r * r * r + 2.5 * r * r - 4 * r + 2;
}

TEST(ImpulseFilter, FollowsTheCatmullRomCubicAtItsEntries) {
  for (int i = 0; i < 400; ++i) {
    const float distanceSquared = static_cast<float>(i) / 100;
    EXPECT_NEAR(ImpulseFilter(distanceSquared), CatmullRom(std::sqrt(i / 100.0)), 2e-6) << i;
  }
}

// The step is the float 0.01, which is 0.00999999977648. So entry 99 lies at r^2 = 0.98999997787,
// r = 0.99498742599, and weighs 0.00255634988; in double 0.01 it would be 0.00255634403. Entry 399
// lies at 2 - r = 0.00250158678: -3.121140823e-6 rather than -3.12108523e-6.
TEST(ImpulseFilter, StepsByAFloatHundredth) {
  EXPECT_EQ(ImpulseFilter(0.99f), 0.00255634988f);
  EXPECT_EQ(ImpulseFilter(3.99f), -3.121140823e-6f);
  // Entry 100 falls short of a radius of 1, where the weight is (1 - r) / 2, by 1.118e-8.
  EXPECT_NEAR(ImpulseFilter(1), 5.588e-9, 1e-12);
}

TEST(ImpulseFilter, DoesNotInterpolate) {
  // 25 - 0.5 and 25 + 0.5 hundredths round to entry 25; what lies just outside does not.
  EXPECT_EQ(ImpulseFilter(0.2451f), ImpulseFilter(0.25f));
  EXPECT_EQ(ImpulseFilter(0.2549f), ImpulseFilter(0.25f));
  EXPECT_NE(ImpulseFilter(0.2449f), ImpulseFilter(0.25f));
  EXPECT_NE(ImpulseFilter(0.2551f), ImpulseFilter(0.25f));
}

// r = 2 - e weighs -e^2 (1 - e) / 2, that is for r^2 = 3.99, e = 0.0025016: -3.12e-6.
TEST(ImpulseFilter, EndsWithEntry399) {
  EXPECT_NEAR(ImpulseFilter(3.99f), -3.12e-6, 5e-8);
  EXPECT_EQ(ImpulseFilter(3.99f), ImpulseFilter(3.9949f));
  EXPECT_NEAR(ImpulseFilter(std::nextafter(4.0f, 0.0f)), 0, 1e-12);
}

TEST(ImpulseFilter, IsZeroOutsideItsTable) {
  for (const float outside : {4.0f, 1e30f, kInfinity, -1.0f, -kInfinity, kNan}) {
    EXPECT_EQ(ImpulseFilter(outside), 0.0f) << outside;
  }
}

// Run alone, this is the first use of the table: eight threads may build it at once.
TEST(ImpulseFilter, MayBeBuiltBySeveralThreads) {
  std::vector<std::thread> threads;
  std::vector<float> sums(8);
  for (float& sum : sums) {
    threads.emplace_back([&sum] {
      for (int i = 0; i < 400; ++i) sum += ImpulseFilter(static_cast<float>(i) / 100);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(sums, std::vector<float>(8, sums[0]));
  EXPECT_GT(sums[0], 0);
}

/// The noise as its definition reads: every impulse of 5^n cells, in the order of nested loops with
/// the first axis outermost.
double SumOfAllImpulses(const std::vector<float>& point) {
  const std::size_t axes = point.size();
  const int cells = axes == 3 ? 125 : 625;
  double sum = 0;
  for (int cell = 0; cell < cells; ++cell) {
    std::vector<int> offset(axes);
    int rest = cell;
    for (std::size_t axis = axes; axis-- > 0; rest /= 5) offset[axis] = rest % 5 - 2;
    std::uint32_t hash = axes == 3 ? NoisePermutation[0] : 0;
    for (std::size_t axis = axes; axis-- > 0;) {
      hash = NoisePermutation[(hash + static_cast<std::uint32_t>(CellNumber(point[axis])) +
                               static_cast<std::uint32_t>(offset[axis])) &
                              255];
    }
    for (int n = 0; n < 3; ++n, hash = (hash + 1) & 255) {
      const float* field = NoiseImpulseTable[hash].field;
      double distanceSquared = 0;
      for (std::size_t axis = 0; axis < axes; ++axis) {
        const double fraction = static_cast<double>(point[axis]) - CellNumber(point[axis]);
        const double d = fraction - (offset[axis] + static_cast<double>(field[axis]));
        distanceSquared += d * d;
      }
      sum += static_cast<double>(ImpulseFilter(static_cast<float>(distanceSquared))) * field[axes];
    }
  }
  return sum * static_cast<double>(0.33333334f);
}

class SparseConvolution : public ::testing::Test {
 protected:
  SparseConvolution() { BuildNoiseTables(kNoiseSeed); }
  /// Coordinates around 0, on both sides, in no pattern.
  float Next() { return static_cast<float>(20 * random_.NextSigned()); }
  SeededGenerator random_{1};
};

TEST_F(SparseConvolution, IsTheSumOfAllImpulsesBitForBit) {
  for (int i = 0; i < 300; ++i) {
    const float x = Next(), y = Next(), z = Next(), w = Next();
    ASSERT_EQ(SparseConvolution3(x, y, z), static_cast<float>(SumOfAllImpulses({x, y, z})));
    ASSERT_EQ(SparseConvolution4(x, y, z, w), static_cast<float>(SumOfAllImpulses({x, y, z, w})));
  }
}

TEST_F(SparseConvolution, IsTheSumOnTheBordersOfCellsToo) {
  for (const float x :
       {-1.0f, -1e-20f, 0.0f, 1e-20f, 0.5f, 1.0f, 1.9999999f, -256.0f, 8388607.5f}) {
    EXPECT_EQ(SparseConvolution3(x, 1, -x), static_cast<float>(SumOfAllImpulses({x, 1, -x})));
    EXPECT_EQ(SparseConvolution4(x, 0, -x, 2), static_cast<float>(SumOfAllImpulses({x, 0, -x, 2})));
  }
}

// The amplitudes of three coordinates are all positive, but the filter has a negative lobe. In
// space the lobe balances the core (both integrate to a twelfth times 4 pi), so that values lie
// around 0.
TEST_F(SparseConvolution, TakesBothSigns) {
  int negative3 = 0, negative4 = 0;
  for (int i = 0; i < 2000; ++i) {
    const float x = Next(), y = Next(), z = Next(), w = Next();
    negative3 += SparseConvolution3(x, y, z) < 0;
    negative4 += SparseConvolution4(x, y, z, w) < 0;
  }
  for (const int negative : {negative3, negative4}) {
    EXPECT_GT(negative, 500);
    EXPECT_LT(negative, 1500);
  }
}

TEST_F(SparseConvolution, RepeatsAfter256Cells) {
  EXPECT_EQ(SparseConvolution3(0.5f, 1.25f, -3.75f), SparseConvolution3(256.5f, 1.25f, 252.25f));
  EXPECT_EQ(SparseConvolution4(0.5f, 1.25f, 2.5f, -3.75f),
            SparseConvolution4(0.5f, 257.25f, 2.5f, 252.25f));
}

TEST_F(SparseConvolution, IsZeroWhereNoCellCanBeNumbered) {
  for (const float wild : {1e30f, -1e30f, kInfinity, -kInfinity, kNan}) {
    EXPECT_EQ(SparseConvolution3(0.5f, wild, 0.5f), 0.0f) << wild;
    EXPECT_EQ(SparseConvolution4(0.5f, 0.5f, wild, 0.5f), 0.0f) << wild;
  }
}

}  // namespace
}  // namespace sorvanix
