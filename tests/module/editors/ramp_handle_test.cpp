// The selected handle of a ramp in the dialogs of the four shaders: its value, keys, interpolation.
#include "tests/module/editors/ramp_editors.h"

namespace sorvanix::test {
namespace {

struct RampHandleTest : GradientAreaTest {};

INSTANTIATE_TEST_SUITE_P(Dialogs, RampHandleTest, testing::ValuesIn(kRampEditors), NameOf);

// --- the value gadget ---

TEST_P(RampHandleTest, ACommandWithoutAValueChangesNothing) {
  ramp.selected = 1;
  EditAndConfirm([&](FakeDialog& dialog, FakeArea&) { EXPECT_FALSE(dialog.Press(its.value)); });
  EXPECT_EQ(ramp.knots[1].position, 0.5f);
}

TEST_P(RampHandleTest, TheValueIsAPercentageInTenths) {
  ramp.selected = 1;
  Edit([&](FakeDialog& dialog) {
    const FakeGadget& gadget = dialog[its.value];
    EXPECT_EQ(gadget.real, 0.5f);
    EXPECT_EQ(gadget.minimum, 0);
    EXPECT_EQ(gadget.maximum, 1);
    EXPECT_EQ(gadget.step, 0.001f);
    EXPECT_EQ(gadget.format, FormatPercent);
  });
}

TEST_P(RampHandleTest, TheValueMovesTheKnotWithinItsLimits) {
  ramp.selected = 1;
  SetAndConfirm(its.value, 0.75f);
  EXPECT_EQ(ramp.knots[1].position, 0.75f);
  SetAndConfirm(its.value, 2.0f);
  // At the place of the last knot it does not pass it.
  EXPECT_EQ(ramp.knots[1].position, 1);
  EXPECT_EQ(ramp.knots[1].colour.y, 0);
  SetAndConfirm(its.value, -1.0f);
  EXPECT_EQ(ramp.knots[1].position, 0);
}

TEST_P(RampHandleTest, TheValueTakesAKnotPastItsNeighbour) {
  ramp.selected = 0;
  SetAndConfirm(its.value, 0.75f);
  EXPECT_EQ(ramp.knots[1].position, 0.75f);
  EXPECT_EQ(ramp.knots[1].colour.x, 0) << "the black knot";
  EXPECT_EQ(ramp.selected, 1);
}

TEST_P(RampHandleTest, TheValueOfABias) {
  ramp.selected = 51;
  ramp.knots[1].bias = 0.25f;
  Edit(
      [&](FakeDialog& dialog) { EXPECT_EQ(dialog.Real(its.value), showsPosition ? 0.5f : 0.25f); });
  SetAndConfirm(its.value, 0.75f);
  EXPECT_EQ(ramp.knots[1].bias, showsPosition ? 0.25f : 0.75f);
  EXPECT_EQ(ramp.knots[1].position, showsPosition ? 0.75f : 0.5f);
  EXPECT_EQ(ramp.selected, showsPosition ? 1 : 51) << "a position that is set is selected";
}

// --- keys ---

TEST_P(RampHandleTest, KeysReachTheAreaAndAreReadBack) {
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    area.redraws = 0;
    EXPECT_TRUE(dialog.Key(KeyRight, kControl));
    EXPECT_EQ(dialog.Real(its.value), 0.5f);
    EXPECT_GE(area.redraws, 1);
    EXPECT_TRUE(dialog.Key(KeyRight, kShift));
    EXPECT_FLOAT_EQ(dialog.Real(its.value), 0.5021692f);  // one pixel on
  });
  EXPECT_EQ(ramp.selected, 1);
}

TEST_P(RampHandleTest, AKeyMarksThePreviewAndBeginsIt) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(PassesOf([&] { EXPECT_TRUE(dialog.Key('I', kCommand)); }), 1);
    EXPECT_EQ(PassesOf([&] { EXPECT_FALSE(dialog.Key('Q', kCommand)); }), 0);
  });
}

TEST_P(RampHandleTest, ReverseAndRepeatByKey) {
  EditAndConfirm([&](FakeDialog& dialog, FakeArea&) { EXPECT_TRUE(dialog.Key('I', kControl)); });
  EXPECT_EQ(ramp.knots[0].colour.y, 1);
  EXPECT_EQ(ramp.knots[2].colour.x, 0);
  EditAndConfirm([&](FakeDialog& dialog, FakeArea&) { EXPECT_TRUE(dialog.Key('D', kControl)); });
  EXPECT_EQ(ramp.count, 6);
  EXPECT_EQ(ramp.knots[4].position, 0.75f);
}

// The keys that revert and draw at random in other dialogs do nothing here.
TEST_P(RampHandleTest, RevertIsTakenAndRandomIsTheHosts) {
  EditAndConfirm([&](FakeDialog& dialog, FakeArea&) {
    dialog.Set(its.interpolation, 2);
    EXPECT_TRUE(dialog.Key('R', kControl));
    EXPECT_TRUE(dialog.Key('R', kControl | kShift));
    EXPECT_FALSE(dialog.Key('M', kControl));
    EXPECT_FALSE(dialog.Key('M', kControl | kShift));
    EXPECT_FALSE(dialog.Key('R'));
  });
  EXPECT_EQ(ramp.interpolation, 2);
  EXPECT_EQ(ramp.count, 3);
}

// --- the interpolation, and cancelling ---

TEST_P(RampHandleTest, AnInterpolationShowsInTheArea) {
  Edit([&](FakeDialog& dialog) {
    FakeArea& area = dialog.Area(its.area);
    area.Draw();
    EXPECT_EQ(area.drawn[0].bitmap->At(119, 0), (FakePixel{0, 0, 0})) << "the tip of a diamond";
    area.redraws = 0;
    dialog.Set(its.interpolation, 4);
    EXPECT_EQ(area.redraws, 1);
    area.Draw();
    EXPECT_EQ(area.drawn[0].bitmap->At(119, 0), area.drawn[0].bitmap->At(60, 0));
    EXPECT_EQ(area.drawn[0].bitmap->At(200, 18), (FakePixel{0, 0, 0})) << "black up to the red";
  });
}

TEST_P(RampHandleTest, AnyIntegerIsTakenForAnInterpolation) {
  for (const std::int32_t value : {0, 4, 5, -1, 1000000}) {
    SetAndConfirm(its.interpolation, value);
    EXPECT_EQ(ramp.interpolation, value);
  }
}

TEST_P(RampHandleTest, CancellingLeavesTheBlockWordForWord) {
  host.dialogs.chosenColour = Vector{0, 1, 0};
  const std::vector<std::uint32_t> before = Words(its.blockSize);
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              FakeArea& area = dialog.Area(its.area);
              Drag(area, 119, 18, {{150, 18}, {150, 90}});
              Drag(area, 234, 32, {{400, 32}});
              area.Mouse(465, 32, 0, true);
              area.Wheel(120);
              dialog.Key('D', kControl);
              dialog.Set(its.interpolation, 2);
            }),
            0);
  EXPECT_EQ(Words(its.blockSize), before);
}

}  // namespace
}  // namespace sorvanix::test
