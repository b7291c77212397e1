#include "module/editors/gradient_handles.h"

#include <limits>

#include "tests/module/editors/unit/ramp_readings.h"

namespace sorvanix {
namespace {

using test::Biases;
using test::Colours;
using test::ExpectSame;
using test::FourKnots;
using test::Grey;
using test::Order;
using test::Positions;
using test::ThreeKnots;
using testing::ElementsAre;

constexpr RampHandle kNone = {};
constexpr RampHandle Knot(std::int32_t knot) { return {HandleKind::Knot, knot}; }
constexpr RampHandle Bias(std::int32_t knot) { return {HandleKind::Bias, knot}; }

RampHandle SelectedOf(std::int32_t selected) {
  Ramp ramp = ThreeKnots();
  ramp.selected = selected;
  return SelectedHandle(ramp);
}

TEST(SelectedHandle, NumbersBiasHandlesFromFiftyOn) {
  EXPECT_EQ(SelectedOf(2), Knot(2));
  EXPECT_EQ(SelectedOf(50), Bias(0));
  EXPECT_EQ(SelectedOf(51), Bias(1));
}

TEST(SelectedHandle, IsNoneForNumbersThatNameNoLiveKnot) {
  for (const std::int32_t wild : {3, 49, 53, 99, 100, -1, std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(SelectedOf(wild), kNone) << wild;
  }
}

TEST(SelectHandle, MovesTheKnotToTheTop) {
  Ramp ramp = ThreeKnots();
  SelectHandle(ramp, Bias(1));
  EXPECT_EQ(ramp.selected, 51);
  EXPECT_THAT(Order(ramp), ElementsAre(2, 0, 1));
  SelectHandle(ramp, Knot(2));
  EXPECT_EQ(ramp.selected, 2);
  EXPECT_THAT(Order(ramp), ElementsAre(0, 1, 2));
}

TEST(HandleValue, IsAPositionAsItIsOrALimitedBias) {
  Ramp ramp = ThreeKnots();
  ramp.knots[2].position = 1.5f;
  ramp.knots[1].bias = 2;
  EXPECT_EQ(HandleValue(ramp, Knot(2)), 1.5f);
  EXPECT_EQ(HandleValue(ramp, Bias(0)), 0.125f);
  EXPECT_EQ(HandleValue(ramp, Bias(1)), 1);
  EXPECT_EQ(HandleValue(ramp, kNone), 0);
}

// --- what lies under the mouse ---

// How far to either side of the centre a row catches; -1 for a row that does not.
template <class HandleAt>
std::int32_t ReachOfRow(HandleAt at, std::int32_t centre, std::int32_t y) {
  std::int32_t reach = -1;
  while (at(centre + reach + 1, y) && at(centre - reach - 1, y)) ++reach;
  EXPECT_FALSE(at(centre + reach + 1, y) || at(centre - reach - 1, y)) << "symmetric, row " << y;
  return reach;
}

TEST(BiasHandleAt, CatchesADiamondAroundRowSix) {
  const Ramp ramp = ThreeKnots();
  const auto at = [&](std::int32_t x, std::int32_t y) { return BiasHandleAt(ramp, x, y); };
  const std::int32_t expected[] = {-1, 0, 1, 2, 3, 4, 5, 6, 5, 4, 3, 2, 1, 0, -1};
  for (std::int32_t y = -1; y <= 13; ++y) {
    EXPECT_EQ(ReachOfRow(at, 32, y), expected[y + 1]) << "row " << y;  // knot 0's, at pixel 32
  }
}

TEST(KnotHandleAt, CatchesAPointerBelowTheStrip) {
  const Ramp ramp = ThreeKnots();
  const auto at = [&](std::int32_t x, std::int32_t y) { return KnotHandleAt(ramp, x, y); };
  for (std::int32_t y = 26; y <= 30; ++y) EXPECT_EQ(ReachOfRow(at, 234, y), y - 26) << y;
  for (std::int32_t y = 31; y <= 40; ++y) EXPECT_EQ(ReachOfRow(at, 234, y), 5) << y;
  EXPECT_EQ(ReachOfRow(at, 234, 25), -1);
  EXPECT_EQ(ReachOfRow(at, 234, 41), -1);
}

TEST(BiasHandleAt, FindsNoneInStepsAndNoneOfTheLastKnot) {
  Ramp ramp = ThreeKnots();
  EXPECT_EQ(BiasHandleAt(ramp, 291, 6), Bias(1));
  EXPECT_EQ(BiasHandleAt(ramp, 465, 6), kNone);
  ramp.interpolation = RampStep;
  EXPECT_EQ(BiasHandleAt(ramp, 291, 6), kNone);
}

TEST(HandlesAtOnePlace, AreTakenFromTheTop) {
  Ramp ramp = ThreeKnots();
  ramp.knots[1].position = 0;  // both at pixel 4, so the bias of knot 0 is there, too
  ramp.knots[1].bias = 0;
  EXPECT_EQ(KnotHandleAt(ramp, 4, 32), Knot(0));
  EXPECT_EQ(BiasHandleAt(ramp, 4, 6), Bias(0));
  SelectHandle(ramp, Knot(1));
  EXPECT_EQ(KnotHandleAt(ramp, 4, 32), Knot(1));
  EXPECT_EQ(BiasHandleAt(ramp, 4, 6), Bias(1));
}

// --- moving ---

TEST(SetHandleValue, MovesAKnotWithinItsNeighbours) {
  Ramp ramp = FourKnots();
  SetHandleValue(ramp, Knot(1), 0.375f);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.375f, 0.5f, 1));
  EXPECT_THAT(Order(ramp), ElementsAre(3, 2, 0, 1));
  EXPECT_EQ(ramp.selected, 1);
}

TEST(SetHandleValue, TakesAKnotPastItsNeighbourWithItsColourAndBias) {
  Ramp ramp = FourKnots();
  SetHandleValue(ramp, Knot(1), 0.75f);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.5f, 0.75f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f, 0.5f, 1));
  EXPECT_THAT(Biases(ramp), ElementsAre(0.125f, 0.25f, 0.375f, 0.75f));
  // Without knot 1 the order 3, 2, 0, 1 is 2, 1, 0; the new knot 2 moves the last one up.
  EXPECT_THAT(Order(ramp), ElementsAre(3, 1, 0, 2));
  EXPECT_EQ(ramp.selected, 2);
}

TEST(SetHandleValue, KeepsKnotsAscendingWithinOnePixel) {
  Ramp ramp = FourKnots();
  // Pixel trunc(461 * 0.501953125 + 4) = 235 is the right neighbour's; just past it all the same.
  ramp.knots[2].position = 0.501953125f;
  SetHandleValue(ramp, Knot(1), 0.50244140625f);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.501953125f, 0.50244140625f, 1));
  EXPECT_EQ(ramp.selected, 2);
}

TEST(SetHandleValue, DoesNotLimitAPosition) {
  Ramp ramp = ThreeKnots();
  SetHandleValue(ramp, Knot(2), 1.5f);
  SetHandleValue(ramp, Knot(0), -0.5f);
  EXPECT_THAT(Positions(ramp), ElementsAre(-0.5f, 0.5f, 1.5f));
}

TEST(SetHandleValue, LimitsABias) {
  Ramp ramp = ThreeKnots();
  SetHandleValue(ramp, Bias(0), 1.5f);
  SetHandleValue(ramp, Bias(1), -1);
  EXPECT_THAT(Biases(ramp), ElementsAre(1, 0, 0.75f));
}

TEST(SetHandleValue, DoesNothingWithoutAHandle) {
  Ramp ramp = ThreeKnots();
  SetHandleValue(ramp, kNone, 0.5f);
  ExpectSame(ramp, ThreeKnots());
}

TEST(MoveKnot, TakesTheLastKnotInFrontOfItsEqualsWhenPulledBeyondTheStrip) {
  Ramp ramp = FourKnots();
  ramp.knots[2].position = 1;  // grey 0.25, beside the last knot's grey 1
  SelectHandle(ramp, Knot(3));
  MoveKnot(ramp, 3, 1, 465);
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.5f, 0.25f, 1));
  MoveKnot(ramp, 3, 1, 466);
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.5f, 1, 0.25f));
  EXPECT_EQ(ramp.selected, 2);
}

}  // namespace
}  // namespace sorvanix
