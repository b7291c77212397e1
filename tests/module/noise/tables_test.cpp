#include "module/noise/tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace sorvanix {
namespace {

TEST(NoisePermutation, HoldsEachByteOnce) {
  auto sorted = NoisePermutation;
  std::sort(sorted.begin(), sorted.end());
  for (std::size_t i = 0; i < 256; ++i) EXPECT_EQ(sorted[i], i);
}

// The diagonal of the table as printed, sixteen entries to a row.
TEST(NoisePermutation, HasItsEntriesInTheirPlaces) {
  const int diagonal[] = {225, 82, 2, 217, 237, 47, 150, 50, 39, 195, 183, 126, 42, 14, 143, 52};
  for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(NoisePermutation[17 * i], diagonal[i]) << i;
}

class NoiseTables : public ::testing::Test {
 protected:
  NoiseTables() { BuildNoiseTables(665); }
};

// Twice a known state over 2^31, less 1: 2 * 45999954 / 2147483648 - 1 = -0.95715922.
TEST_F(NoiseTables, ValuesFollowTheKnownStates) {
  EXPECT_EQ(NoiseValueTable[0], -0.95715922f);
  EXPECT_EQ(NoiseValueTable[1], static_cast<float>(2 * (1042576503 / 2147483648.0) - 1));
  EXPECT_EQ(NoiseValueTable[2], static_cast<float>(2 * (294870040 / 2147483648.0) - 1));
  EXPECT_EQ(NoiseValueTable[3], static_cast<float>(2 * (1791427845 / 2147483648.0) - 1));
}

// The first four states over 2^31, then the fifth number, signed.
TEST_F(NoiseTables, TheFirstImpulseIsKnown) {
  const float known[] = {0.0214204f, 0.4854875f, 0.1373096f, 0.8341986f, -0.4742232f};
  for (int i = 0; i < 5; ++i) EXPECT_NEAR(NoiseImpulseTable[0].field[i], known[i], 5e-8) << i;
}

TEST_F(NoiseTables, BothStreamsStartFromTheSeedAndRunToTheirEnds) {
  SeededGenerator values(665), impulses(665);
  for (const float value : NoiseValueTable) {
    ASSERT_EQ(value, static_cast<float>(values.NextSigned()));
  }
  for (const NoiseImpulse& impulse : NoiseImpulseTable) {
    for (int i = 0; i < 4; ++i) {
      ASSERT_EQ(impulse.field[i], static_cast<float>(impulses.Next01()));
    }
    ASSERT_EQ(impulse.field[4], static_cast<float>(impulses.NextSigned()));
  }
}

TEST_F(NoiseTables, KeepToTheirRanges) {
  for (const float value : NoiseValueTable) EXPECT_TRUE(value >= -1 && value < 1);
  for (const NoiseImpulse& impulse : NoiseImpulseTable) {
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(impulse.field[i] >= 0 && impulse.field[i] < 1);
    EXPECT_TRUE(impulse.field[4] >= -1 && impulse.field[4] < 1);
  }
}

TEST_F(NoiseTables, LeaveTheSharedGeneratorAlone) {
  sharedGenerator.Reset(100);
  BuildNoiseTables(665);
  EXPECT_EQ(sharedGenerator.state, 100u);
}

TEST_F(NoiseTables, AnotherSeedGivesOtherTables) {
  const auto values = NoiseValueTable;
  BuildNoiseTables(666);
  EXPECT_NE(values, NoiseValueTable);
}

}  // namespace
}  // namespace sorvanix
