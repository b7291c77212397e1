#include "module/noise/lattice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sorvanix {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

TEST(CellNumber, IsATrueFloor) {
  EXPECT_EQ(CellNumber(2.9), 2);
  EXPECT_EQ(CellNumber(0.0), 0);
  EXPECT_EQ(CellNumber(-0.0), 0);
  EXPECT_EQ(CellNumber(-0.1), -1);
  EXPECT_EQ(CellNumber(-3.0), -3);
}

TEST(CellNumber, KeepsTheLowBitsOfWhatIsTooLarge) {
  EXPECT_EQ(CellNumber(2147483647.5), 2147483647);
  EXPECT_EQ(CellNumber(2147483648.0), kLeast);     // 2^31
  EXPECT_EQ(CellNumber(4294967301.0), 5);          // 2^32 + 5
  EXPECT_EQ(CellNumber(-4294967297.0), -1);        // -2^32 - 1
  EXPECT_EQ(CellNumber(0x1p62 + 0x1p31), kLeast);  // exact in double
}

TEST(CellNumber, NeverConvertsOutOfRange) {
  EXPECT_EQ(CellNumber(1e30), 0);
  EXPECT_EQ(CellNumber(-1e30), 0);
  EXPECT_EQ(CellNumber(kNan), kLeast);
  EXPECT_EQ(CellNumber(kInfinity), kLeast);
  EXPECT_EQ(CellNumber(-kInfinity), kLeast);
}

class HashCell : public ::testing::Test {
 protected:
  HashCell() { BuildNoiseTables(kNoiseSeed); }
  static float ValueOf(std::size_t hash) { return std::fabs(NoiseValueTable[hash]); }
};

// P[0] = 225, P[1] = 155, P[255] = 52.
TEST_F(HashCell, OneCoordinateIsOneLookUp) {
  EXPECT_EQ(HashCell1(0.5f), ValueOf(225));
  EXPECT_EQ(HashCell1(1.0f), ValueOf(155));
  EXPECT_EQ(HashCell1(-0.5f), ValueOf(52));
}

// y first: P[iy], then P[P[iy] + ix]. P[255] = 52, P[53] = 121; P[3] = 108, P[110] = 255.
TEST_F(HashCell, TwoCoordinatesRunFromYToX) {
  EXPECT_EQ(HashCell2(1.5f, -0.5f), ValueOf(121));
  EXPECT_EQ(HashCell2(2.5f, 3.5f), ValueOf(255));
}

// w, z, y, x = 0, 2, 1, 0: P[0] = 225, P[227] = 85, P[86] = 80, P[80] = 170.
// w, z, y, x = 3, 200, -1, 9: P[3] = 108; 308 - 256 = 52, P[52] = 22; P[21] = 139;
// P[148] = 164.
TEST_F(HashCell, FourCoordinatesRunFromWToX) {
  EXPECT_EQ(HashCell4(0.5f, 1.25f, 2.0f, 0.75f), ValueOf(170));
  EXPECT_EQ(HashCell4(9.5f, -0.5f, 200.5f, 3.5f), ValueOf(164));
}

TEST_F(HashCell, NegativeCellsWrap) {
  for (int cell = 1; cell <= 256; ++cell) {
    EXPECT_EQ(HashCell1(static_cast<float>(-cell)), HashCell1(static_cast<float>(256 - cell)));
  }
  EXPECT_EQ(HashCell2(-0.5f, -7.5f), HashCell2(255.5f, 248.5f));
  EXPECT_EQ(HashCell4(-1, -2, -3, -4), HashCell4(255, 254, 253, 252));
}

TEST_F(HashCell, IsConstantOverACellAndNeverNegative) {
  for (int cell = -300; cell < 300; ++cell) {
    const float start = static_cast<float>(cell);
    const float value = HashCell1(start);
    EXPECT_TRUE(value >= 0 && value <= 1);
    EXPECT_EQ(HashCell1(start + 0.25f), value);
    EXPECT_EQ(HashCell1(start + 0.99f), value);
    EXPECT_EQ(HashCell2(3, start), HashCell2(3.75f, start + 0.75f));
    EXPECT_EQ(HashCell4(1, 2, start, 4), HashCell4(1.5f, 2.5f, start + 0.75f, 4.5f));
  }
}

TEST_F(HashCell, CoordinatesBeyondAllMeasureGiveAValue) {
  for (const float wild : {1e30f, -1e30f, kInfinity, -kInfinity, kNan}) {
    EXPECT_EQ(HashCell1(wild), ValueOf(225));  // the low eight bits of all of them are 0
    EXPECT_EQ(HashCell4(wild, wild, wild, wild), HashCell4(0, 0, 0, 0));
  }
}

}  // namespace
}  // namespace sorvanix
