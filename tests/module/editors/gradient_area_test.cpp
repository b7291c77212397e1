// The gradient area in the dialogs of the four shaders with a ramp: its picture, mouse and wheel.
#include <gmock/gmock.h>

#include "tests/module/editors/ramp_editors.h"

namespace sorvanix::test {
namespace {

using testing::ElementsAre;

INSTANTIATE_TEST_SUITE_P(Dialogs, GradientAreaTest, testing::ValuesIn(kRampEditors), NameOf);

TEST_P(GradientAreaTest, AsksForItsSize) {
  Edit([&](FakeDialog& dialog) {
    const auto size = dialog.Area(its.area).MinSize();
    ASSERT_TRUE(size.has_value());
    EXPECT_EQ(size->width, 470);
    EXPECT_EQ(size->height, 50);
  });
}

TEST_P(GradientAreaTest, DrawsItselfInto470By50Pixels) {
  Edit([&](FakeDialog& dialog) {
    FakeArea& area = dialog.Area(its.area);
    area.Draw();
    ASSERT_EQ(area.drawn.size(), 1u);
    EXPECT_EQ(area.drawn[0].x, 0);
    EXPECT_EQ(area.drawn[0].y, 0);
    const FakeBitmap& picture = *area.drawn[0].bitmap;
    EXPECT_EQ(picture.width, 470);
    EXPECT_EQ(picture.height, 50);
    EXPECT_EQ(picture.depth, 24);
    // t = 115 * 0.0021691974 = 0.24946 is 0.49892 of the way to red: byte trunc(127.7).
    EXPECT_EQ(picture.At(119, 18), (FakePixel{127, 0, 0}));
  });
}

TEST_P(GradientAreaTest, FailsToBeginWithoutItsBitmap) {
  Edit([&](FakeDialog& dialog) {
    host.failBitmap = 1;
    EXPECT_FALSE(dialog.Area(its.area).Init());
    EXPECT_TRUE(dialog.Area(its.area).Draw()) << "and draws nothing";
    EXPECT_TRUE(dialog.Area(its.area).Init());
  });
}

TEST_P(GradientAreaTest, APressOnTheStripAddsAKnot) {
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    EXPECT_EQ(dialog.Real(its.value), 0);
    Drag(area, 119, 18, {});
    EXPECT_FLOAT_EQ(dialog.Real(its.value), 0.2494577f);  // 115 * 0.0021691974
    EXPECT_THAT(area.actions, ElementsAre(0));
  });
  ASSERT_EQ(ramp.count, 4);
  EXPECT_EQ(ramp.selected, 1);
  EXPECT_FLOAT_EQ(ramp.knots[1].colour.x, 0.4989154f);  // twice the position
  EXPECT_EQ(ramp.knots[1].bias, 0.5f);
}

TEST_P(GradientAreaTest, ADragMovesTheKnotAndTellsTheDialog) {
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    area.redraws = 0;
    Drag(area, 234, 32, {{240, 32}, {119, 40}});
    EXPECT_THAT(area.actions, ElementsAre(1, 1, 0));
    EXPECT_GE(area.redraws, 3);
    EXPECT_FLOAT_EQ(dialog.Real(its.value), 0.2494577f);
  });
  EXPECT_EQ(ramp.selected, 1);
  EXPECT_FLOAT_EQ(ramp.knots[1].position, 0.2494577f);
}

TEST_P(GradientAreaTest, NoPreviewBeginsWhileTheMouseDrags) {
  Edit([&](FakeDialog& dialog) {
    FakeArea& area = dialog.Area(its.area);
    EXPECT_EQ(PassesOf([&] { Drag(area, 234, 32, {{240, 32}, {250, 32}, {260, 32}}); }), 1);
    EXPECT_EQ(PassesOf([&] { dialog.Set(its.value, 0.25f, true); }), 0);
    EXPECT_EQ(PassesOf([&] { dialog.Set(its.value, 0.25f); }), 1);
  });
}

TEST_P(GradientAreaTest, AKnotIsTornOffAndComesBack) {
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { Drag(area, 234, 32, {{234, 70}, {234, 30}}); });
  EXPECT_EQ(ramp.count, 3);
  EXPECT_EQ(ramp.knots[1].position, 0.5f);
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { Drag(area, 234, 32, {{234, 70}}); });
  ASSERT_EQ(ramp.count, 2);
  EXPECT_EQ(ramp.knots[1].colour.y, 1);
  // Of the last two, none.
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { Drag(area, 465, 32, {{465, 70}}); });
  EXPECT_EQ(ramp.count, 2);
}

TEST_P(GradientAreaTest, ABiasMovesAndComesBackFromOutside) {
  // The diamond of the first span lies at 4 + (234 - 4) * 0.5 = 119.
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    Drag(area, 119, 6, {{96, 6}});
    // (96 - 4) / (234 - 4) = 0.4; Colorizer goes on showing the position of the knot.
    EXPECT_FLOAT_EQ(dialog.Real(its.value), showsPosition ? 0 : 0.4f);
  });
  EXPECT_FLOAT_EQ(ramp.knots[0].bias, 0.4f);
  EXPECT_EQ(ramp.selected, 50);
  // Now it lies at trunc(4 + 230 * 0.4f) = 96.
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { Drag(area, 96, 6, {{200, 6}, {200, 40}}); });
  EXPECT_FLOAT_EQ(ramp.knots[0].bias, 0.4f);
}

TEST_P(GradientAreaTest, ASecondPressOnAKnotAsksForItsColour) {
  host.dialogs.chosenColour = Vector{0.25f, 0.5f, 0.75f};
  EditAndConfirm([&](FakeDialog&, FakeArea& area) {
    EXPECT_TRUE(area.Mouse(465, 32, 0, true));
    EXPECT_THAT(area.actions, ElementsAre(0));
  });
  ASSERT_EQ(host.dialogs.coloursOffered.size(), 1u);
  EXPECT_EQ(host.dialogs.coloursOffered[0].y, 1) << "yellow";
  EXPECT_EQ(ramp.count, 3);
  EXPECT_EQ(ramp.knots[2].colour.x, 0.25f);
  EXPECT_EQ(ramp.knots[2].colour.z, 0.75f);
}

TEST_P(GradientAreaTest, ASecondPressOnTheStripAsksForTheColourOfTheSelectedKnot) {
  host.dialogs.chosenColour = Vector{0, 0, 1};
  ramp.selected = 51;  // the bias of knot 1 stands for its knot
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { EXPECT_TRUE(area.Mouse(300, 18, 0, true)); });
  EXPECT_EQ(ramp.count, 3) << "adds nothing";
  EXPECT_EQ(ramp.knots[1].colour.z, 1);
  EXPECT_EQ(ramp.knots[1].colour.x, 0);
}

TEST_P(GradientAreaTest, ACancelledChooserLeavesTheColour) {
  host.dialogs.chosenColour = std::nullopt;
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { EXPECT_TRUE(area.Mouse(465, 32, 0, true)); });
  EXPECT_EQ(host.dialogs.coloursOffered.size(), 1u);
  EXPECT_EQ(ramp.knots[2].colour.x, 1);
}

TEST_P(GradientAreaTest, ASecondPressOnADiamondDragsIt) {
  EditAndConfirm([&](FakeDialog&, FakeArea& area) {
    host.dialogs.drag.push_back({96, 6, 0});
    EXPECT_TRUE(area.Mouse(119, 6, 0, true));
  });
  EXPECT_TRUE(host.dialogs.coloursOffered.empty());
  EXPECT_FLOAT_EQ(ramp.knots[0].bias, 0.4f);
}

TEST_P(GradientAreaTest, APressWithTheCopyQualifierDragsACopy) {
  EditAndConfirm([&](FakeDialog&, FakeArea& area) {
    host.dialogs.drag.push_back({119, 32, 4});
    EXPECT_TRUE(area.Mouse(234, 32, 4));
  });
  ASSERT_EQ(ramp.count, 4);
  EXPECT_FLOAT_EQ(ramp.knots[1].position, 0.2494577f);
  EXPECT_EQ(ramp.knots[1].colour.x, 1);
  EXPECT_EQ(ramp.knots[2].position, 0.5f);
}

TEST_P(GradientAreaTest, TheWheelMovesTheSelectedHandle) {
  ramp.selected = 1;
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    EXPECT_TRUE(area.Wheel(240));
    // 0.5 + 240 * 8.333333e-05
    EXPECT_FLOAT_EQ(dialog.Real(its.value), 0.52f);
    EXPECT_TRUE(area.Wheel(-120));
    EXPECT_THAT(area.actions, ElementsAre(0, 0));
  });
  EXPECT_FLOAT_EQ(ramp.knots[1].position, 0.51f);
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { EXPECT_TRUE(area.Wheel(1000000)); });
  EXPECT_EQ(ramp.knots[2].position, 1);
}

TEST_P(GradientAreaTest, TheWheelMovesASelectedBias) {
  ramp.selected = 51;
  EditAndConfirm([&](FakeDialog&, FakeArea& area) { EXPECT_TRUE(area.Wheel(120)); });
  EXPECT_FLOAT_EQ(ramp.knots[1].bias, 0.51f);
}

TEST_P(GradientAreaTest, OtherInputIsNotItsOwn) {
  Edit([&](FakeDialog& dialog) {
    FakeArea& area = dialog.Area(its.area);
    FakeContainer rightButton;
    rightButton.Set(InputDevice, Word{DialogMouse});
    rightButton.Set(InputChannel, Word{2});
    EXPECT_FALSE(area.Send(AreaInput, rightButton));
    FakeContainer key;
    key.Set(InputDevice, Word{DialogKey});
    key.Set(InputChannel, Word{1});
    EXPECT_FALSE(area.Send(AreaInput, key));
    EXPECT_TRUE(area.actions.empty());
  });
}

TEST_P(GradientAreaTest, WhateverChangesTheRampMarksThePreview) {
  EXPECT_FALSE(Marks([](FakeDialog&, FakeArea&) {}));
  EXPECT_TRUE(Marks([&](FakeDialog&, FakeArea& area) { Drag(area, 234, 32, {{240, 32}}); }));
  EXPECT_TRUE(Marks([](FakeDialog&, FakeArea& area) { area.Wheel(-120); }));
  EXPECT_TRUE(Marks([&](FakeDialog& dialog, FakeArea&) { dialog.Set(its.value, 0.4f); }));
  EXPECT_TRUE(Marks([&](FakeDialog& dialog, FakeArea&) { dialog.Set(its.value, 0.3f, true); }));
  EXPECT_TRUE(Marks([](FakeDialog& dialog, FakeArea&) { dialog.Key('I', kControl); }));
  host.dialogs.chosenColour = Vector{0, 0, 1};
  EXPECT_TRUE(Marks([](FakeDialog&, FakeArea& area) { area.Mouse(465, 32, 0, true); }));
}

TEST_P(GradientAreaTest, KeysThatChangeNothingMarkNothing) {
  ramp.selected = 0;
  EXPECT_FALSE(Marks([](FakeDialog& dialog, FakeArea&) {
    EXPECT_TRUE(dialog.Key('C', kControl | kShift));
    EXPECT_TRUE(dialog.Key('V', kControl | kShift));
    EXPECT_TRUE(dialog.Key('R', kControl));
    EXPECT_TRUE(dialog.Key(KeyLeft, kControl)) << "nothing is left of the first knot";
    EXPECT_FALSE(dialog.Key('Q', kControl));
  }));
  host.dialogs.threads = FakeDialogs::Threads::OnDemand;
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(PassesOf([&] { dialog.Key('R', kControl); }), 0);
    EXPECT_EQ(PassesOf([&] { dialog.Key(KeyLeft, kControl); }), 0);
  });
}

TEST_P(GradientAreaTest, ASecondPressBesideTheStripAsksForTheColourOfTheSelectedKnot) {
  host.dialogs.chosenColour = Vector{0, 0, 1};
  ramp.selected = 1;
  for (const std::int32_t x : {-3, 473}) {
    host.dialogs.coloursOffered.clear();
    EditAndConfirm([&](FakeDialog&, FakeArea& area) {
      EXPECT_TRUE(area.Mouse(x, 18, 0, true));
      EXPECT_THAT(area.actions, ElementsAre(0)) << "no drag";
    });
    EXPECT_EQ(host.dialogs.coloursOffered.size(), 1u) << x;
  }
  EXPECT_EQ(ramp.knots[1].colour.z, 1);
  EXPECT_EQ(ramp.count, 3);
}

TEST_P(GradientAreaTest, WithoutASelectionWheelValueAndChooserDoNothing) {
  host.dialogs.chosenColour = Vector{0, 0, 1};
  ramp.selected = 40;
  const Ramp before = ramp;
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    EXPECT_EQ(dialog.Real(its.value), 0);
    area.Wheel(240);
    dialog.Set(its.value, 0.5f);
    area.Mouse(300, 18, 0, true);
  });
  EXPECT_TRUE(host.dialogs.coloursOffered.empty());
  EXPECT_EQ(std::memcmp(&ramp, &before, sizeof before), 0);
}

// --- damaged blocks ---

TEST_P(GradientAreaTest, ABlockWithWildNumbersIsEdited) {
  ramp.count = 1000;
  ramp.selected = -5;
  ramp.order[3] = 77;
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    EXPECT_EQ(dialog.Real(its.value), 0) << "nothing is selected";
    area.Draw();
    EXPECT_TRUE(area.Mouse(300, 18)) << "a full ramp: nothing is added";
    Drag(area, 234, 32, {{400, 32}, {400, 90}});
    area.Wheel(120);
    dialog.Key(KeyLeft, kControl);
    dialog.Set(its.value, 0.3f);
  });
  EXPECT_EQ(ramp.count, 49) << "limited to 50, and one torn off";
}

TEST_P(GradientAreaTest, AnEmptyRampIsEdited) {
  ramp.count = 0;
  EditAndConfirm([&](FakeDialog& dialog, FakeArea& area) {
    area.Draw();
    EXPECT_TRUE(area.Mouse(100, 18, 0, true));
    EXPECT_TRUE(host.dialogs.coloursOffered.empty());
    area.Wheel(120);
    for (const std::int32_t key : {+KeyLeft, +KeyRight, +KeyUp, +KeyDown, +'D', +'I'}) {
      dialog.Key(key, kControl);
    }
    Drag(area, 119, 18, {});
  });
  EXPECT_EQ(ramp.count, 1);
}

}  // namespace
}  // namespace sorvanix::test
