#include "module/editors/gradient_mouse.h"

#include <sorvanix/ids.h>

#include <limits>

#include "module/editors/gradient_scale.h"
#include "tests/module/editors/unit/ramp_readings.h"
#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::Biases;
using test::Colours;
using test::ExpectSame;
using test::ExpectSound;
using test::FourKnots;
using test::Grey;
using test::ManyKnots;
using test::Order;
using test::Positions;
using test::ThreeKnots;
using testing::ElementsAre;
using testing::FloatEq;

constexpr RampHandle Knot(std::int32_t knot) { return {HandleKind::Knot, knot}; }
constexpr RampHandle Bias(std::int32_t knot) { return {HandleKind::Bias, knot}; }
constexpr RampHandle kNone = {};

// The rows in the middle of the strip, the pointers and the diamonds.
constexpr std::int32_t kOnStrip = 18, kOnPointers = 32, kOnDiamonds = 6;

struct Session {
  Ramp ramp;
  GradientMouse mouse = {};

  RampHandle Press(std::int32_t x, std::int32_t y) { return mouse.Press(ramp, {x, y}); }
  RampHandle PressTwice(std::int32_t x, std::int32_t y) {
    return mouse.Press(ramp, {.x = x, .y = y, .twice = true});
  }
  RampHandle PressWith(std::int32_t qualifier, std::int32_t x, std::int32_t y) {
    return mouse.Press(ramp, {.x = x, .y = y, .qualifier = qualifier});
  }
  void Move(std::int32_t x, std::int32_t y) { mouse.Move(ramp, x, y); }
};

// --- pressing ---

TEST(GradientPress, SelectsThePointerUnderTheMouse) {
  Session session = {ThreeKnots()};
  EXPECT_EQ(session.Press(234, kOnPointers), Knot(1));
  EXPECT_EQ(session.ramp.selected, 1);
  EXPECT_THAT(Order(session.ramp), ElementsAre(2, 0, 1));
  EXPECT_EQ(session.ramp.count, 3);
}

TEST(GradientPress, SelectsTheDiamondUnderTheMouse) {
  Session session = {ThreeKnots()};
  EXPECT_EQ(session.Press(291, kOnDiamonds), Bias(1));
  EXPECT_EQ(session.ramp.selected, 51);
  EXPECT_THAT(Order(session.ramp), ElementsAre(2, 0, 1));
}

TEST(GradientPress, AddsAKnotInTheColourOfTheRamp) {
  Session session = {ThreeKnots()};
  session.ramp.knots[0].bias = 0.5f;
  EXPECT_EQ(session.Press(119, kOnStrip), Knot(1));
  // t = 115 * 0.0021691974 = 0.2494577; half the span to grey 0.25 is 0.5, so the grey is t / 2.
  EXPECT_THAT(Positions(session.ramp), ElementsAre(0, FloatEq(0.2494577f), 0.5f, 1));
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0, FloatEq(0.12472885f), 0.25f, 1));
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.5f, 0.5f, 0.25f, 0.75f));
  EXPECT_EQ(session.ramp.selected, 1);
  EXPECT_THAT(Order(session.ramp), ElementsAre(3, 2, 0, 1));
}

TEST(GradientPress, AddsAKnotAtAnyHeightBetweenTheEndsOfTheStrip) {
  for (const std::int32_t y : {-5, 0, 6, 13, 14, 25, 32, 41, 49, 100}) {
    Session session = {ThreeKnots()};
    EXPECT_TRUE(session.Press(150, y)) << y;  // no handle is near
    EXPECT_EQ(session.ramp.count, 4) << y;
  }
  for (const std::int32_t x : {4, 465}) {
    Session session = {ThreeKnots()};
    EXPECT_TRUE(session.Press(x, kOnStrip)) << x;
    EXPECT_EQ(session.ramp.count, 4) << x;
  }
  for (const std::int32_t x : {3, 466, -100, 1000}) {
    Session session = {ThreeKnots()};
    EXPECT_EQ(session.Press(x, kOnStrip), kNone) << x;
    ExpectSame(session.ramp, ThreeKnots());
  }
}

TEST(GradientPress, TakesAPointerThatReachesBeyondTheStrip) {
  Session session = {ThreeKnots()};
  EXPECT_EQ(session.Press(-1, kOnPointers), Knot(0));
  EXPECT_EQ(session.Press(470, kOnPointers), Knot(2));
}

TEST(GradientPress, InAFullRampAddsNothingAndDragsNothing) {
  const Ramp full = ManyKnots(50);  // up to 49/64, so that pixel 400 is free
  Session session = {full};
  EXPECT_EQ(session.Press(400, kOnStrip), kNone);
  ExpectSame(session.ramp, full);
}

TEST(GradientPress, FillsTheRampUpToFiftyKnots) {
  Session session = {ManyKnots(49)};
  EXPECT_EQ(session.Press(400, kOnStrip), Knot(49));
  EXPECT_EQ(session.ramp.count, 50);
}

TEST(GradientPress, TheSecondInARowAddsNothing) {
  Session session = {ThreeKnots()};
  EXPECT_EQ(session.PressTwice(150, kOnStrip), kNone);
  ExpectSame(session.ramp, ThreeKnots());
}

TEST(GradientPress, TheSecondInARowStillSelects) {
  Session session = {ThreeKnots()};
  EXPECT_EQ(session.PressTwice(234, kOnPointers), Knot(1));
  EXPECT_EQ(session.ramp.selected, 1);
}

TEST(GradientPress, WithTheCopyQualifierCopiesTheKnotInPlace) {
  Session session = {ThreeKnots()};
  // The copy stands in front of the original, with a bias of its own.
  EXPECT_EQ(session.PressWith(QualifierAlt, 234, kOnPointers), Knot(1));
  EXPECT_THAT(Positions(session.ramp), ElementsAre(0, 0.5f, 0.5f, 1));
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0, 0.25f, 0.25f, 1));
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.125f, 0.5f, 0.25f, 0.75f));
  EXPECT_THAT(Order(session.ramp), ElementsAre(3, 0, 2, 1));
  EXPECT_EQ(session.ramp.selected, 1);
}

TEST(GradientPress, WithAnyOtherQualifierCopiesNothing) {
  for (std::int32_t qualifier = 0; qualifier < 32; ++qualifier) {
    if (qualifier == QualifierAlt) continue;
    Session session = {ThreeKnots()};
    EXPECT_EQ(session.PressWith(qualifier, 234, kOnPointers), Knot(1));
    EXPECT_EQ(session.ramp.count, 3) << qualifier;
  }
}

TEST(GradientPress, CopiesNothingIntoAFullRamp) {
  Session session = {ManyKnots(50)};
  EXPECT_EQ(session.PressWith(QualifierAlt, 356, kOnPointers),
            Knot(49));  // 461 * 49/64 + 4 = 356.9
  EXPECT_EQ(session.ramp.count, 50);
}

TEST(GradientPress, InStepsHitsNoDiamond) {
  Session session = {ThreeKnots()};
  session.ramp.interpolation = RampStep;
  EXPECT_EQ(session.Press(32, kOnDiamonds), Knot(1)) << "a new knot, where the diamond would be";
  EXPECT_EQ(session.ramp.count, 4);
}

// --- dragging a knot ---

TEST(GradientDrag, KeepsTheMouseWhereItCaughtThePointer) {
  Session session = {ThreeKnots()};
  session.Press(237, 36);  // three to the right of pixel 234, four below the centre
  session.Move(237, 36);
  EXPECT_FLOAT_EQ(session.ramp.knots[1].position, 0.4989154f);  // (234 - 4) * 0.0021691974
  session.Move(137, 36);
  EXPECT_FLOAT_EQ(session.ramp.knots[1].position, 0.28199566f);  // (134 - 4) * 0.0021691974
}

TEST(GradientDrag, StopsAtTheEndsOfTheRamp) {
  Session session = {ThreeKnots()};
  session.Press(465, kOnPointers);
  session.Move(5000, kOnPointers);
  EXPECT_EQ(session.ramp.knots[2].position, 1);
  session.Move(-5000, kOnPointers);
  EXPECT_EQ(session.ramp.knots[0].position, 0);
  EXPECT_EQ(session.ramp.knots[0].colour.x, 1) << "the white knot is the first now";
}

TEST(GradientDrag, TakesAKnotPastItsNeighbour) {
  Session session = {FourKnots()};
  session.Press(119, kOnPointers);
  session.Move(234, kOnPointers);  // the neighbour's pixel itself: not past it
  EXPECT_EQ(session.ramp.selected, 1);
  session.Move(300, kOnPointers);
  // 296 * 0.0021691974 = 0.6420824
  EXPECT_THAT(Positions(session.ramp), ElementsAre(0, 0.5f, FloatEq(0.6420824f), 1));
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0, 0.25f, 0.5f, 1));
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.125f, 0.25f, 0.375f, 0.75f));
  EXPECT_THAT(Order(session.ramp), ElementsAre(3, 1, 0, 2));
  EXPECT_EQ(session.ramp.selected, 2);
  session.Move(119, kOnPointers);  // and back
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0, 0.5f, 0.25f, 1));
  EXPECT_EQ(session.ramp.selected, 1);
}

TEST(GradientDrag, TakesAKnotPastSeveralAtOnce) {
  Session session = {FourKnots()};
  session.Press(4, kOnPointers);
  session.Move(400, kOnPointers);
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0.5f, 0.25f, 0, 1));
  EXPECT_EQ(session.ramp.selected, 2);
}

TEST(GradientDrag, TearsAKnotOffAndPutsItBack) {
  Session session = {ThreeKnots()};
  session.Press(234, kOnPointers);
  session.Move(240, 56);
  EXPECT_THAT(Positions(session.ramp), ElementsAre(0, 1));
  EXPECT_EQ(session.ramp.selected, 0) << "the knot that is on top now";
  session.Move(300, 80);
  EXPECT_EQ(session.ramp.count, 2) << "one knot only is torn off";
  // It comes back as it was, and follows the mouse from the next move on.
  session.Move(300, kOnPointers);
  EXPECT_THAT(Positions(session.ramp), ElementsAre(0, 0.5f, 1));
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0, 0.25f, 1));
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.125f, 0.25f, 0.75f));
  EXPECT_THAT(Order(session.ramp), ElementsAre(2, 0, 1));
  EXPECT_EQ(session.ramp.selected, 1);
  session.Move(300, kOnPointers);
  EXPECT_FLOAT_EQ(session.ramp.knots[1].position, 0.6420824f);  // 296 * 0.0021691974
}

TEST(GradientDrag, TheAreaReachesFromRow1To55) {
  for (const std::int32_t y : {1, 55}) {
    Session session = {ThreeKnots()};
    session.Press(234, kOnPointers);
    session.Move(234, y);
    EXPECT_EQ(session.ramp.count, 3) << y;
  }
  for (const std::int32_t y : {0, 56}) {
    Session session = {ThreeKnots()};
    session.Press(234, kOnPointers);
    session.Move(234, y);
    EXPECT_EQ(session.ramp.count, 2) << y;
  }
}

TEST(GradientDrag, ATornOffKnotIsGoneWithTheNextPress) {
  Session session = {ThreeKnots()};
  session.Press(234, kOnPointers);
  session.Move(234, 60);
  session.Press(465, kOnPointers);
  session.Move(465, kOnPointers);
  EXPECT_THAT(Colours(session.ramp), ElementsAre(0, 1));
}

TEST(GradientDrag, OneOfTheLastTwoKnotsStaysWhereItIs) {
  Session session = {ThreeKnots()};
  session.Press(234, kOnPointers);
  session.Move(234, 60);
  session.Press(4, kOnPointers);
  session.Move(100, 60);
  EXPECT_THAT(Positions(session.ramp), ElementsAre(0, 1));
  session.Move(100, kOnPointers);
  EXPECT_THAT(Positions(session.ramp), ElementsAre(FloatEq(0.20824295f), 1)) << "96 * 0.0021691974";
}

TEST(GradientDrag, AnAddedKnotComesBackWithAnEvenBias) {
  Session session = {ThreeKnots()};
  session.Press(119, kOnStrip);
  session.Move(119, 100);
  session.Move(119, kOnStrip);
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.125f, 0.5f, 0.25f, 0.75f));
}

TEST(GradientDrag, ACopiedKnotComesBackWithAnEvenBias) {
  Session session = {ThreeKnots()};
  session.PressWith(QualifierAlt, 234, kOnPointers);
  session.Move(234, 100);
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.125f, 0.25f, 0.75f));
  session.Move(234, kOnPointers);
  EXPECT_THAT(Biases(session.ramp), ElementsAre(0.125f, 0.5f, 0.25f, 0.75f));
}

// Keys may come in while the mouse holds a torn-off knot.
TEST(GradientDrag, AKnotThatFindsNoRoomOnItsReturnStaysAway) {
  Session session = {ManyKnots(26)};
  session.Press(4, kOnPointers);
  session.Move(4, 100);
  RepeatKnots(session.ramp);
  const Ramp full = session.ramp;
  ASSERT_EQ(full.count, 50);
  session.Move(4, kOnPointers);
  ExpectSame(session.ramp, full);
}

// --- dragging a bias ---

TEST(GradientDrag, MovesABiasBetweenItsKnots) {
  Session session = {ThreeKnots()};
  session.Press(34, 7);  // two to the right of the diamond at 32, one below its centre
  session.Move(121, 7);
  EXPECT_EQ(session.ramp.knots[0].bias, 0.5f);  // (119 - 4) / (234 - 4)
  session.Move(-1000, 7);
  EXPECT_EQ(session.ramp.knots[0].bias, 0);
  session.Move(1000, 7);
  EXPECT_EQ(session.ramp.knots[0].bias, 1);
  EXPECT_EQ(session.ramp.selected, 50);
}

TEST(GradientDrag, ABiasThatLeavesTheAreaGetsItsOldValue) {
  Session session = {ThreeKnots()};
  session.Press(32, kOnDiamonds);
  for (const std::int32_t y : {-10, 23}) {
    session.Move(119, kOnDiamonds);
    EXPECT_EQ(session.ramp.knots[0].bias, 0.5f);
    session.Move(119, y);
    EXPECT_EQ(session.ramp.knots[0].bias, 0.125f) << y;
  }
  for (const std::int32_t y : {-9, 22}) {
    session.Move(119, y);
    EXPECT_EQ(session.ramp.knots[0].bias, 0.5f) << y;
  }
}

TEST(GradientDrag, ABiasBetweenKnotsAtOnePixelIsAtEitherEnd) {
  Session session = {ThreeKnots()};
  session.ramp.knots[1].position = 0;
  session.Press(4, kOnDiamonds);
  session.Move(3, kOnDiamonds);
  EXPECT_EQ(session.ramp.knots[0].bias, 0);
  session.Move(4, kOnDiamonds);
  EXPECT_EQ(session.ramp.knots[0].bias, 1);
}

// --- whatever the mouse does ---

TEST(GradientMouse, LeavesEveryRampSound) {
  test::Random random(7);
  Session session = {ThreeKnots()};
  for (int press = 0; press < 3000; ++press) {
    const std::int32_t x = random.Below(480) - 5, y = random.Below(50);
    session.ramp.interpolation = random.Below(5);
    const std::int32_t qualifier = random.Below(4) == 0 ? QualifierAlt : 0;
    if (!session.PressWith(qualifier, x, y)) continue;
    for (int move = random.Below(6); move > 0; --move) {
      session.Move(random.Below(520) - 25, random.Below(90) - 20);
      ExpectSound(session.ramp);
      ASSERT_GE(session.ramp.count, 2);
      ASSERT_FALSE(testing::Test::HasFailure()) << "press " << press;
    }
  }
}

TEST(GradientMouse, TakesPlacesFarOutsideTheArea) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t wild : {kLeast, kMost}) {
    Session session = {ThreeKnots()};
    EXPECT_EQ(session.Press(wild, wild), kNone);
    session.Press(236, 30);
    session.Move(wild, wild);
    session.Move(wild, kOnPointers);
    ExpectSound(session.ramp);
  }
}

}  // namespace
}  // namespace sorvanix
