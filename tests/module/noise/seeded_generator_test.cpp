#include "module/noise/seeded_generator.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace sorvanix {
namespace {

TEST(SeededGenerator, IsSeededWithHundredUnlessTold) {
  SeededGenerator generator;
  EXPECT_EQ(generator.state, 100u);
  // 101 * 69069 = 6975969, below 2^31.
  EXPECT_EQ(generator.Next01(), 6975969.0 / 2147483648.0);
}

// (665 + 1) * 69069 = 45999954; (45999954 + 1) * 69069 = 3177170891895, of which the low 31 bits
// are 1042576503; and so on.
TEST(SeededGenerator, RunsThroughTheKnownStates) {
  SeededGenerator generator(665);
  for (const std::uint32_t state : {45999954u, 1042576503u, 294870040u, 1791427845u}) {
    EXPECT_EQ(generator.Next01(), state / 2147483648.0);
    EXPECT_EQ(generator.state, state);
  }
}

TEST(SeededGenerator, SignedNumbersTakeOneStepEach) {
  SeededGenerator generator(665);
  EXPECT_EQ(generator.NextSigned(), 2.0 * (45999954 / 2147483648.0) - 1.0);
  EXPECT_EQ(generator.state, 45999954u);
}

TEST(SeededGenerator, ResetStoresTheSeedAndClearsTheReservedWord) {
  SeededGenerator generator;
  generator.reserved = 7;
  generator.Next01();
  generator.Reset(665);
  EXPECT_EQ(generator.state, 665u);
  EXPECT_EQ(generator.reserved, 0u);
}

TEST(SeededGenerator, UsesThirtyOneBitsOfTheState) {
  SeededGenerator generator(0xFFFFFFFFu);  // wraps to 0 before the multiplication
  EXPECT_EQ(generator.Next01(), 0.0);
  EXPECT_EQ(generator.NextSigned(), 2.0 * (69069 / 2147483648.0) - 1.0);
}

// (1511872762 + 1) * 69069 is 2^31 - 1 modulo 2^31: the greatest state.
TEST(SeededGenerator, TheGreatestNumberIsBelowOneUntilNarrowed) {
  SeededGenerator generator(1511872762);
  const double number = generator.Next01();
  EXPECT_EQ(generator.state, 0x7FFFFFFFu);
  EXPECT_LT(number, 1.0);
  EXPECT_EQ(static_cast<float>(number), 1.0f);
}

TEST(SeededGenerator, SeveralThreadsMayDrawFromOne) {
  SeededGenerator shared(665);
  std::vector<std::thread> threads;
  std::vector<int> outside(8, 0);
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&shared, &count = outside[static_cast<std::size_t>(t)]] {
      for (int i = 0; i < 10000; ++i) {
        const double number = shared.Next01();
        if (!(number >= 0 && number < 1)) ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(outside, std::vector<int>(8, 0));
}

}  // namespace
}  // namespace sorvanix
