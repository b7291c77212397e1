#include "module/noise/warp.h"

#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

/// Each operation answers a sum of its arguments, weighted so that their shares can be told apart.
class Warp : public test::NoiseEngine {
 protected:
  Warp() {
    noise.Set(Operation::SignedNoise, test::LinearNoise{.x = 0.1, .y = 0.2, .z = 0.3, .time = 0.4});
    noise.Set(Operation::UnitNoiseAt,
              test::LinearNoise{.x = 0.01, .y = 0.02, .z = 0.05, .time = 0.1});
  }
};

// Sample (0.5, 1.25, 2) at time 0.75, which gives each signed noise 0.3.
// a (0, 0, z) = 0.6 + 0.3 = 0.9; b (0, y, 0) = 0.25 + 0.3 = 0.55; c (x, 0, 0) = 0.05 + 0.3 = 0.35
// With amount 2: (0.5 + 0.7, 1.25 + 1.1, 2 + 1.8) = (1.2, 2.35, 3.8),
// and the result 0.012 + 0.047 + 0.19 + 0.075 = 0.324.
TEST_F(Warp, AxisWarpMovesEachAxisByItsOwnNoise) {
  EXPECT_NEAR(AxisWarpNoise(0.5f, 1.25f, 2, 0.75f, 2), 0.324, test::kRounding);
  const auto& calls = noise.calls();
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_POINT(calls[0].point, 0, 0, 2);
  EXPECT_POINT(calls[1].point, 0, 1.25, 0);
  EXPECT_POINT(calls[2].point, 0.5, 0, 0);
  EXPECT_POINT(calls[3].point, 1.2, 2.35, 3.8);
  for (const auto& call : calls) EXPECT_EQ(call.time, 0.75f);
}

// a (17.5, 9.25, -2) = 1.75 + 1.85 - 0.6 + 0.3 = 3.3; b (13.5, 0.25, 6) = 1.35 + 0.05 + 1.8 + 0.3
// = 3.5; c (-1.5, 8.25, 10) = -0.15 + 1.65 + 3 + 0.3 = 4.8. With amount 0.1: (0.98, 1.6, 2.33),
// and the result 0.0098 + 0.032 + 0.1165 + 0.075 = 0.2333.
TEST_F(Warp, OffsetWarpReadsThreeOffsetsOfThePoint) {
  EXPECT_NEAR(OffsetWarpNoise3(0.5f, 1.25f, 2, 0.75f, 0.1f), 0.2333, test::kRounding);
  const auto& calls = noise.calls();
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_POINT(calls[0].point, 17.5, 9.25, -2);
  EXPECT_POINT(calls[1].point, 13.5, 0.25, 6);
  EXPECT_POINT(calls[2].point, -1.5, 8.25, 10);
  EXPECT_POINT(calls[3].point, 0.98, 1.6, 2.33);
  for (const auto& call : calls) EXPECT_EQ(call.time, 0.75f);
}

// a (13.5, 0.25, 4) = 1.35 + 0.05 + 1.2 + 0.3 = 2.9; b (-1.5, 8.25, 8) = -0.15 + 1.65 + 2.4 + 0.3
// = 4.2. With amount 0.1: (0.92, 1.54, 0), and the result 0.0092 + 0.0308 + 0.075 = 0.115.
TEST_F(Warp, ThePlanarOffsetWarpStaysAtZero) {
  EXPECT_NEAR(OffsetWarpNoise2(0.5f, 1.25f, 0.75f, 0.1f), 0.115, test::kRounding);
  const auto& calls = noise.calls();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_POINT(calls[0].point, 13.5, 0.25, 4);
  EXPECT_POINT(calls[1].point, -1.5, 8.25, 8);
  EXPECT_POINT(calls[2].point, 0.92, 1.54, 0);
}

TEST_F(Warp, AnAmountOfZeroLeavesThePoint) {
  // 0.005 + 0.025 + 0.1 + 0.075, and without z in the plane
  EXPECT_NEAR(AxisWarpNoise(0.5f, 1.25f, 2, 0.75f, 0), 0.205, test::kRounding);
  EXPECT_NEAR(OffsetWarpNoise3(0.5f, 1.25f, 2, 0.75f, 0), 0.205, test::kRounding);
  EXPECT_NEAR(OffsetWarpNoise2(0.5f, 1.25f, 0.75f, 0), 0.105, test::kRounding);
}

}  // namespace
}  // namespace sorvanix
