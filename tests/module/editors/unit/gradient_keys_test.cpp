#include "module/editors/gradient_keys.h"

#include <sorvanix/ids.h>

#include "tests/module/editors/unit/ramp_readings.h"

namespace sorvanix {
namespace {

using test::Biases;
using test::Colours;
using test::ExpectSame;
using test::FourKnots;
using test::ManyKnots;
using test::Order;
using test::Positions;
using test::ThreeKnots;
using testing::ElementsAre;
using testing::FloatEq;

constexpr std::int32_t kCommands[] = {QualifierControl, QualifierCommand,
                                      QualifierControl | QualifierCommand};

Ramp After(Ramp ramp, std::int32_t key, std::int32_t qualifier) {
  EXPECT_TRUE(ApplyRampKey(ramp, key, qualifier)) << key << " with " << qualifier;
  return ramp;
}

Ramp WithSelected(std::int32_t selected, Ramp ramp = FourKnots()) {
  ramp.selected = selected;
  RaiseKnot(ramp, selected % RampMaxKnots);
  return ramp;
}

// --- which keys are taken ---

bool IsTaken(std::int32_t key, std::int32_t qualifier) {
  Ramp ramp = FourKnots();
  const bool taken = ApplyRampKey(ramp, key, qualifier);
  if (!taken) ExpectSame(ramp, FourKnots());
  return taken;
}

TEST(RampKeys, TakeArrowsSidewaysWithShiftOrACommandKey) {
  for (std::int32_t q = 0; q < 32; ++q) {
    const bool shift = (q & 1) != 0, command = (q & 0x12) != 0;
    EXPECT_EQ(IsTaken(KeyLeft, q), shift || command) << q;
    EXPECT_EQ(IsTaken(KeyRight, q), shift || command) << q;
  }
}

TEST(RampKeys, TakeArrowsUpAndDownAndThreeLettersWithACommandKey) {
  for (std::int32_t q = 0; q < 32; ++q) {
    for (const std::int32_t key : {+KeyUp, +KeyDown, +'D', +'I', +'R'}) {
      EXPECT_EQ(IsTaken(key, q), (q & 0x12) != 0) << key << " with " << q;
    }
  }
}

TEST(RampKeys, TakeCopyAndPasteWithShiftAndACommandKey) {
  for (std::int32_t q = 0; q < 32; ++q) {
    const bool both = (q & 1) != 0 && (q & 0x12) != 0;
    EXPECT_EQ(IsTaken('C', q), both) << q;
    EXPECT_EQ(IsTaken('V', q), both) << q;
  }
}

TEST(RampKeys, LeaveAllOthersToTheHost) {
  for (std::int32_t q = 0; q < 32; ++q) {
    for (const std::int32_t key : {0, +'M', +'A', +'d', +'i', 0x8004, +KeyEscape, -1}) {
      EXPECT_FALSE(IsTaken(key, q)) << key << " with " << q;
    }
  }
}

TEST(RampKeys, TakeCopyPasteAndRevertWithoutDoingAnything) {
  ExpectSame(After(FourKnots(), 'C', 3), FourKnots());
  ExpectSame(After(FourKnots(), 'V', 17), FourKnots());
  ExpectSame(After(FourKnots(), 'R', 2), FourKnots());
  ExpectSame(After(FourKnots(), 'R', 3), FourKnots());
}

// --- nudging ---

TEST(RampKeys, NudgeAPositionByOnePixel) {
  // 0.25 -+ 0.0021691974
  EXPECT_FLOAT_EQ(After(FourKnots(), KeyLeft, 1).knots[1].position, 0.2478308f);
  EXPECT_FLOAT_EQ(After(FourKnots(), KeyRight, 1).knots[1].position, 0.2521692f);
}

TEST(RampKeys, ANudgeWinsOverASelection) {
  for (const std::int32_t command : kCommands) {
    const Ramp ramp = After(FourKnots(), KeyLeft, command | QualifierShift);
    EXPECT_EQ(ramp.selected, 1);
    EXPECT_FLOAT_EQ(ramp.knots[1].position, 0.2478308f);
  }
}

TEST(RampKeys, NudgeNoFurtherThanTheEnds) {
  EXPECT_EQ(After(WithSelected(0), KeyLeft, 1).knots[0].position, 0);
  EXPECT_EQ(After(WithSelected(3), KeyRight, 1).knots[3].position, 1);
}

TEST(RampKeys, ANudgePastANeighbourKeepsTheKnotsAscending) {
  Ramp ramp = FourKnots();
  ramp.knots[2].position = 0.251f;  // 0.25 + 0.00217 = 0.25217 is past it
  ramp = After(ramp, KeyRight, 1);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.251f, FloatEq(0.2521692f), 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f, 0.5f, 1));
  EXPECT_THAT(Biases(ramp), ElementsAre(0.125f, 0.25f, 0.375f, 0.75f));
  EXPECT_EQ(ramp.selected, 2);
  ramp = After(ramp, KeyLeft, 1);
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.5f, 0.25f, 1));
  EXPECT_EQ(ramp.selected, 1);
}

TEST(RampKeys, NudgeABiasByOnePixelOfItsSpan) {
  // The span from 0.25 to 0.5 is 115.25 pixels wide: 0.375 -+ 1 / 115.25.
  EXPECT_FLOAT_EQ(After(WithSelected(51), KeyLeft, 1).knots[1].bias, 0.36632321f);
  EXPECT_FLOAT_EQ(After(WithSelected(51), KeyRight, 1).knots[1].bias, 0.38367679f);
}

TEST(RampKeys, NudgeABiasNoFurtherThanItsSpan) {
  Ramp ramp = WithSelected(51);
  ramp.knots[1].bias = 0.001f;
  EXPECT_EQ(After(ramp, KeyLeft, 1).knots[1].bias, 0);
  ramp.knots[1].bias = 0.999f;
  EXPECT_EQ(After(ramp, KeyRight, 1).knots[1].bias, 1);
}

TEST(RampKeys, ANudgeInASpanWithoutWidthSendsTheBiasToAnEnd) {
  Ramp ramp = WithSelected(51);
  ramp.knots[2].position = 0.25f;
  EXPECT_EQ(After(ramp, KeyLeft, 1).knots[1].bias, 0);
  EXPECT_EQ(After(ramp, KeyRight, 1).knots[1].bias, 1);
}

TEST(RampKeys, DoNothingToABiasThatShapesNoSpan) {
  const Ramp ramp = WithSelected(53);  // the last knot's, as a damaged file may have it
  ExpectSame(After(ramp, KeyLeft, 1), ramp);
}

// --- selecting ---

TEST(RampKeys, SelectTheKnotsBeside) {
  for (const std::int32_t command : kCommands) {
    const Ramp left = After(FourKnots(), KeyLeft, command);
    EXPECT_EQ(left.selected, 0);
    EXPECT_THAT(Order(left), ElementsAre(3, 2, 1, 0));
    const Ramp right = After(FourKnots(), KeyRight, command);
    EXPECT_EQ(right.selected, 2);
    EXPECT_THAT(Order(right), ElementsAre(3, 0, 1, 2));
  }
}

TEST(RampKeys, SelectTheBiasesBeside) {
  const Ramp left = After(WithSelected(51), KeyLeft, 2);
  EXPECT_EQ(left.selected, 50);
  EXPECT_EQ(Order(left).back(), 0);
  const Ramp right = After(WithSelected(51), KeyRight, 2);
  EXPECT_EQ(right.selected, 52);
  EXPECT_EQ(Order(right).back(), 2);
}

TEST(RampKeys, SelectNothingBeyondTheEnds) {
  EXPECT_EQ(After(WithSelected(0), KeyLeft, 2).selected, 0);
  EXPECT_EQ(After(WithSelected(3), KeyRight, 2).selected, 3);
  EXPECT_EQ(After(WithSelected(50), KeyLeft, 2).selected, 50);
  EXPECT_EQ(After(WithSelected(52), KeyRight, 2).selected, 52) << "the last knot has no bias";
}

TEST(RampKeys, GoUpFromAKnotToItsBias) {
  EXPECT_EQ(After(WithSelected(1), KeyUp, 2).selected, 51);
  const Ramp fromLast = After(WithSelected(3), KeyUp, 16);
  EXPECT_EQ(fromLast.selected, 52) << "to that of the knot before it";
  EXPECT_EQ(Order(fromLast).back(), 2);
  EXPECT_EQ(After(WithSelected(51), KeyUp, 2).selected, 51) << "no further up";
}

TEST(RampKeys, GoDownFromABiasToItsKnot) {
  EXPECT_EQ(After(WithSelected(51), KeyDown, 2).selected, 1);
  EXPECT_EQ(After(WithSelected(1), KeyDown, 2).selected, 1) << "no further down";
}

TEST(RampKeys, DoNothingWhereNothingIsSelected) {
  Ramp lost = FourKnots();
  lost.selected = 40;
  for (const std::int32_t key : {+KeyLeft, +KeyRight, +KeyUp, +KeyDown}) {
    ExpectSame(After(lost, key, 2), lost);
  }
  ExpectSame(After(lost, KeyLeft, 1), lost);
  ExpectSame(After(Ramp{}, KeyUp, 2), Ramp{});
}

// --- repeating and reversing ---

TEST(RampKeys, Reverse) {
  Ramp ramp = ThreeKnots();
  ramp.knots[1].position = 0.25f;
  ramp = After(ramp, 'I', 2);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.75f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(1, 0.25f, 0));
  // Mirrored, 0.25, 0.75 and 0.875; then each but the last takes that of the knot on its right.
  EXPECT_THAT(Biases(ramp), ElementsAre(0.75f, 0.875f, 0.875f));
}

TEST(RampKeys, Repeat) {
  const Ramp ramp = After(ThreeKnots(), 'D', 16);
  // The copy of the first knot comes in front of the last one, both at 0.5.
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.25f, 0.5f, 0.5f, 0.75f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f, 0, 1, 0.25f, 1));
  EXPECT_EQ(ramp.selected, 0);
}

TEST(RampKeys, RepeatNothingFromTwentySixKnotsOn) {
  EXPECT_EQ(After(ManyKnots(25), 'D', 2).count, 50);
  ExpectSame(After(ManyKnots(26), 'D', 2), ManyKnots(26));
}

}  // namespace
}  // namespace sorvanix
