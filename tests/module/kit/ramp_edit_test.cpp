#include "module/kit/ramp_edit.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>
#include <vector>

#include "tests/module/kit/vector_matchers.h"

namespace sorvanix {
namespace {

using test::IsNear;
using test::IsVector;
using test::Random;
using testing::ElementsAre;

constexpr Vector Grey(float v) { return {v, v, v}; }

// Three knots at 0, 0.5 and 1 with greys 0, 0.25 and 1 and biases 0.125, 0.25 and 0.75.
constexpr Ramp kThree =
    DefaultRamp({Grey(0), 0, 0.125f}, {Grey(0.25f), 0.5f, 0.25f}, {Grey(1), 1, 0.75f});

template <typename Value>
std::vector<Value> OfLiveKnots(const Ramp& ramp, Value (*value)(const RampKnot&)) {
  std::vector<Value> values;
  for (std::int32_t i = 0; i < LiveKnots(ramp.count); ++i) values.push_back(value(ramp.knots[i]));
  return values;
}

std::vector<float> Positions(const Ramp& ramp) {
  return OfLiveKnots<float>(ramp, [](const RampKnot& k) { return k.position; });
}

std::vector<float> Biases(const Ramp& ramp) {
  return OfLiveKnots<float>(ramp, [](const RampKnot& k) { return k.bias; });
}

// The red components: enough to tell grey knots apart.
std::vector<float> Colours(const Ramp& ramp) {
  return OfLiveKnots<float>(ramp, [](const RampKnot& k) { return k.colour.x; });
}

std::vector<std::int32_t> Order(const Ramp& ramp) {
  return {ramp.order, ramp.order + LiveKnots(ramp.count)};
}

bool SameBytes(const Ramp& a, const Ramp& b) { return std::memcmp(&a, &b, sizeof(Ramp)) == 0; }

Ramp WithKnots(std::int32_t count) {
  Ramp ramp;
  for (std::int32_t i = 0; i < count; ++i) {
    InsertKnot(ramp, Grey(0.5f), static_cast<float>(i) / 64, 0.5f);
  }
  return ramp;
}

bool NamesEachLiveKnotOnce(const Ramp& ramp) {
  std::vector<std::int32_t> order = Order(ramp), all(order.size());
  std::iota(all.begin(), all.end(), 0);
  return std::is_permutation(order.begin(), order.end(), all.begin());
}

void ExpectSound(const Ramp& ramp) {
  ASSERT_TRUE(ramp.count >= 0 && ramp.count <= RampMaxKnots);
  const std::vector<float> positions = Positions(ramp);
  ASSERT_TRUE(std::is_sorted(positions.begin(), positions.end()));
  ASSERT_TRUE(NamesEachLiveKnotOnce(ramp));
  for (std::int32_t i = ramp.count; i < RampMaxKnots; ++i) {
    const RampKnot& idle = ramp.knots[i];
    ASSERT_THAT(idle.colour, IsVector(0, 0, 0));
    ASSERT_TRUE(idle.position == 0 && idle.bias == 0.5f) << i;
  }
}

TEST(InsertKnot, KeepsTheKnotsAscendingAndPutsTheNewOneOnTop) {
  Ramp ramp = kThree;
  EXPECT_EQ(InsertKnot(ramp, Grey(0.5f), 0.25f, 0.375f), 1);
  EXPECT_EQ(ramp.count, 4);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.25f, 0.5f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.5f, 0.25f, 1));
  EXPECT_THAT(Biases(ramp), ElementsAre(0.125f, 0.375f, 0.25f, 0.75f));
  // 2, 1, 0: the knots behind the new one have moved up by one.
  EXPECT_THAT(Order(ramp), ElementsAre(3, 2, 0, 1));
}

TEST(InsertKnot, LeavesTheSelectionToItsCaller) {
  Ramp ramp = kThree;
  ramp.selected = 52;
  InsertKnot(ramp, Grey(0.5f), 0.25f, 0.5f);
  EXPECT_EQ(ramp.selected, 52);
}

TEST(InsertKnot, StandsInFrontOfKnotsAtTheSamePosition) {
  Ramp ramp = kThree;
  EXPECT_EQ(InsertKnot(ramp, Grey(0.5f), 0.5f, 0.5f), 1);
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.5f, 0.25f, 1));
  EXPECT_EQ(InsertKnot(ramp, Grey(0.75f), 0, 0.5f), 0);
  EXPECT_THAT(Colours(ramp), ElementsAre(0.75f, 0, 0.5f, 0.25f, 1));
}

TEST(InsertKnot, GoesToTheEndBehindEveryPosition) {
  Ramp ramp = kThree;
  EXPECT_EQ(InsertKnot(ramp, Grey(0.5f), 2, 0.5f), 3);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.5f, 1, 2));
  EXPECT_THAT(Order(ramp), ElementsAre(2, 1, 0, 3));
}

TEST(InsertKnot, StartsAnEmptyRamp) {
  Ramp ramp;
  EXPECT_EQ(InsertKnot(ramp, Grey(0.5f), 0.25f, 0.5f), 0);
  EXPECT_EQ(ramp.count, 1);
  EXPECT_THAT(Order(ramp), ElementsAre(0));
}

TEST(InsertKnot, SucceedsAt49AndFailsAt50) {
  Ramp ramp = WithKnots(49);
  EXPECT_EQ(InsertKnot(ramp, Grey(1), 1, 0.5f), 49);
  EXPECT_EQ(ramp.count, 50);

  const Ramp full = ramp;
  EXPECT_EQ(InsertKnot(ramp, Grey(0), 0.5f, 0.25f), -1);
  EXPECT_TRUE(SameBytes(ramp, full));
}

TEST(InsertKnot, CopiesAKnotOfTheRampItself) {
  Ramp ramp = kThree;
  // The record that the colour is taken from moves away under the insertion.
  const RampKnot& own = ramp.knots[1];
  EXPECT_EQ(InsertKnot(ramp, own.colour, own.position, own.bias), 1);
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f, 0.25f, 1));
  EXPECT_THAT(Biases(ramp), ElementsAre(0.125f, 0.25f, 0.25f, 0.75f));
}

TEST(DeleteKnot, TakesOutTheKnotOnTop) {
  Ramp ramp = kThree;
  InsertKnot(ramp, Grey(0.5f), 0.25f, 0.5f);  // order 3, 2, 0, 1
  DeleteKnot(ramp, 1);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.5f, 1));
  EXPECT_THAT(Order(ramp), ElementsAre(2, 1, 0));
  EXPECT_EQ(ramp.selected, 0);
  ExpectSound(ramp);
}

TEST(DeleteKnot, SelectsTheNextKnotOnTop) {
  Ramp ramp = kThree;  // order 2, 1, 0
  DeleteKnot(ramp, 0);
  // The knots 2 and 1 are now 1 and 0.
  EXPECT_THAT(Order(ramp), ElementsAre(1, 0));
  EXPECT_THAT(Colours(ramp), ElementsAre(0.25f, 1));
  EXPECT_EQ(ramp.selected, 0);
}

TEST(DeleteKnot, RaisesAKnotFromBelowFirst) {
  Ramp ramp = kThree;
  DeleteKnot(ramp, 2);
  EXPECT_THAT(Order(ramp), ElementsAre(1, 0));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f));
}

TEST(DeleteKnot, UndoesInsertKnot) {
  Random random(51);
  for (int i = 0; i < 200; ++i) {
    Ramp ramp = WithKnots(1 + random.Below(49));
    ramp.selected = Order(ramp).back();
    const Ramp before = ramp;
    DeleteKnot(ramp, InsertKnot(ramp, random.Colour(), random.Unit(), random.Unit()));
    ramp.order[before.count] = before.order[before.count];  // not live
    ASSERT_TRUE(SameBytes(ramp, before));
  }
}

TEST(DeleteKnot, OfTheOnlyKnotLeavesAnEmptyRamp) {
  Ramp ramp = WithKnots(1);
  DeleteKnot(ramp, 0);
  EXPECT_EQ(ramp.count, 0);
  EXPECT_EQ(ramp.selected, 0);
}

TEST(DeleteKnot, IgnoresAKnotThatIsNotLive) {
  Ramp ramp = kThree;
  for (const std::int32_t index : {-1, 3, 50, 1000000}) DeleteKnot(ramp, index);
  EXPECT_TRUE(SameBytes(ramp, kThree));
}

TEST(RaiseKnot, MovesOneEntryToTheTop) {
  Ramp ramp = kThree;
  RaiseKnot(ramp, 2);
  EXPECT_THAT(Order(ramp), ElementsAre(1, 0, 2));
  RaiseKnot(ramp, 2);
  EXPECT_THAT(Order(ramp), ElementsAre(1, 0, 2));
  RaiseKnot(ramp, 3);
  RaiseKnot(ramp, -1);
  EXPECT_THAT(Order(ramp), ElementsAre(1, 0, 2));
}

TEST(ReverseKnots, MirrorsKnotsAndSpans) {
  Ramp ramp = kThree;
  RaiseKnot(ramp, 2);  // order 1, 0, 2
  ReverseKnots(ramp);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.5f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(1, 0.25f, 0));
  // Mirrored 1/4, 3/4, 7/8 for the knots from the right; each moves to the knot on its left. The
  // last keeps its own.
  EXPECT_THAT(Biases(ramp), ElementsAre(0.75f, 0.875f, 0.875f));
  EXPECT_THAT(Order(ramp), ElementsAre(1, 2, 0));
  EXPECT_EQ(ramp.selected, 0);
}

TEST(ReverseKnots, MakesTheMirroredPicture) {
  Ramp mirrored = kThree;
  ReverseKnots(mirrored);
  for (const std::int32_t interpolation : {RampCubic, RampBezier, RampSmooth, RampLinear}) {
    for (float t = 1.0f / 64; t < 1; t += 1.0f / 32) {
      // Colours are rounded to floats below 1, by other sums on either side.
      EXPECT_THAT(SampleRamp(1 - t, mirrored.knots, 3, interpolation),
                  IsNear(SampleRamp(t, kThree.knots, 3, interpolation), 1e-7))
          << interpolation << ' ' << t;
    }
  }
}

TEST(ReverseKnots, TwiceRestoresAllButTheLastBias) {
  Ramp ramp = kThree;
  ReverseKnots(ramp);
  ReverseKnots(ramp);
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.5f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f, 1));
  // The last bias comes from the knot before it: it was the first of the mirrored ramp.
  EXPECT_THAT(Biases(ramp), ElementsAre(0.125f, 0.25f, 0.25f));
  EXPECT_THAT(Order(ramp), ElementsAre(2, 1, 0));
}

TEST(ReverseKnots, OfAnEmptyRampDoesNothing) {
  Ramp ramp;
  const Ramp before = ramp;
  ReverseKnots(ramp);
  EXPECT_TRUE(SameBytes(ramp, before));
}

TEST(RepeatKnots, PutsTheRampTwiceSideBySide) {
  Ramp ramp = kThree;
  RepeatKnots(ramp);
  // The copy of the first knot lands on the former last one and stands to its left.
  EXPECT_THAT(Positions(ramp), ElementsAre(0, 0.25f, 0.5f, 0.5f, 0.75f, 1));
  EXPECT_THAT(Colours(ramp), ElementsAre(0, 0.25f, 0, 1, 0.25f, 1));
  EXPECT_THAT(Biases(ramp), ElementsAre(0.125f, 0.25f, 0.125f, 0.75f, 0.25f, 0.75f));
  // Inserted at 2, where the former 2 becomes 3, then at 4 and 5.
  EXPECT_THAT(Order(ramp), ElementsAre(3, 1, 0, 2, 4, 5));
}

TEST(RepeatKnots, LeavesTheSelection) {
  Ramp ramp = kThree;
  ramp.selected = 51;
  RepeatKnots(ramp);
  EXPECT_EQ(ramp.selected, 51);
}

TEST(RepeatKnots, StopsAtFiftyKnots) {
  Ramp ramp = WithKnots(25);
  RepeatKnots(ramp);
  EXPECT_EQ(ramp.count, 50);
  ExpectSound(ramp);

  Ramp tooMany = WithKnots(26);
  const Ramp before = tooMany;
  RepeatKnots(tooMany);
  EXPECT_TRUE(SameBytes(tooMany, before));
}

TEST(RepairOrder, KeepsAPermutation) {
  Ramp ramp = kThree;
  RaiseKnot(ramp, 1);
  RepairOrder(ramp);
  EXPECT_THAT(Order(ramp), ElementsAre(2, 0, 1));
}

TEST(RepairOrder, RebuildsAnythingElseWithTheFirstKnotOnTop) {
  for (const std::int32_t wrong : {0, 3, -1, 1000000}) {  // 0 is there twice then
    Ramp ramp = kThree;
    ramp.order[1] = wrong;
    RepairOrder(ramp);
    EXPECT_THAT(Order(ramp), ElementsAre(2, 1, 0)) << wrong;
  }
}

TEST(RampEdits, MendADamagedOrderOrChangeNothing) {
  void (*const edits[])(Ramp&) = {
      [](Ramp& ramp) { InsertKnot(ramp, Grey(1), 0.5f, 0.5f); },
      [](Ramp& ramp) { DeleteKnot(ramp, 0); },
      [](Ramp& ramp) { DeleteKnot(ramp, 49); },
      [](Ramp& ramp) { RaiseKnot(ramp, 7); },
      ReverseKnots,
      RepeatKnots,
  };
  constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t count : {kLowest, -1, 0, 1, 2, 25, 49, 50, 51, kHighest}) {
    for (const std::int32_t entry : {kLowest, -1, 0, 49, 50, kHighest}) {
      for (const auto edit : edits) {
        Ramp ramp = WithKnots(RampMaxKnots);
        ramp.count = count;
        ramp.interpolation = 77;  // stands right behind the order
        ramp.selected = kHighest;
        std::fill(std::begin(ramp.order), std::end(ramp.order), entry);
        const Ramp before = ramp;
        edit(ramp);
        ASSERT_EQ(ramp.interpolation, 77) << count << ' ' << entry;
        ASSERT_TRUE(SameBytes(ramp, before) || NamesEachLiveKnotOnce(ramp))
            << count << ' ' << entry;
      }
    }
  }
}

TEST(RampEdits, KeepTheRampSoundInAnySequence) {
  for (unsigned seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    Ramp ramp = kThree;
    for (int step = 0; step < 200; ++step) {
      switch (random.Below(8)) {
        case 0:
          ReverseKnots(ramp);
          break;
        case 1:
          if (ramp.count <= 12) RepeatKnots(ramp);
          break;
        case 2:
          RaiseKnot(ramp, random.Below(RampMaxKnots));
          break;
        case 3:
        case 4:
          if (ramp.count > 2) {
            DeleteKnot(ramp, random.Below(ramp.count));
            ASSERT_EQ(ramp.selected, Order(ramp).back());
          }
          break;
        default: {
          const std::int32_t former = ramp.count;
          const std::int32_t index =
              InsertKnot(ramp, random.Colour(), random.Unit(), random.Unit());
          ASSERT_EQ(index == -1, former == RampMaxKnots);
          ASSERT_TRUE(index == -1 || Order(ramp).back() == index);
        }
      }
      ASSERT_NO_FATAL_FAILURE(ExpectSound(ramp)) << step;
    }
  }
}

}  // namespace
}  // namespace sorvanix
