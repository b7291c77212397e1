// The dialog of Tiles.
#include <cmath>

#include "module/shaders/generators/tiles.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(TilesBlock, member)

struct TilesDialogTest : EditorTest {
  TilesDialogTest() : EditorTest(PluginIdTiles, 12000) {}
  TilesBlock& block = shader.block<TilesBlock>();
};

// Grout and bevel are shown in percent, 0 to 100 in steps of 0.1.
TEST_F(TilesDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {12003, AT(globalScale), 1e-6f, 100000, 0.1f},
      {12004, AT(scaleU), 1e-6f, 100000, 0.1f},
      {12005, AT(scaleV), 1e-6f, 100000, 0.1f},
      {12006, AT(arms), 1e-6f, 100000, 0.1f},
      {12007, AT(groutWidth), 0, 1, 0.001f, FormatPercent},
      {12008, AT(bevel), 0, 1, 0.001f, FormatPercent},
      {12032, AT(bumpStepScale), 0, kEndless, 1},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(TilesDialogTest, ChoicesSwitchesAndColours) {
  WalkInteger(*this, {12001, AT(pattern), 0, 27});
  WalkInteger(*this, {12002, AT(orientation), 0, 1});
  WalkInteger(*this, {12030, AT(globalMode), 0, 5});
  WalkSwitch(*this, 12013, AT(smoothBevel));
  WalkSwitch(*this, 12014, AT(randomColor));
  WalkSwitch(*this, 12031, AT(alternate));
  WalkColour(*this, 12009, AT(groutColor));
  WalkColour(*this, 12010, AT(color1));
  WalkColour(*this, 12011, AT(color2));
  WalkColour(*this, 12012, AT(color3));
}

// Spirals (23, 24) take no random colour either, but only pattern 8 disables the switch.
TEST_F(TilesDialogTest, ThePatternEnablesArmsAndRandomColours) {
  Edit([](FakeDialog& dialog) {
    for (std::int32_t pattern = 0; pattern <= 27; ++pattern) {
      dialog.Set(12001, pattern);
      const bool polar = pattern == 23 || pattern == 24 || pattern == 25 || pattern == 26;
      EXPECT_EQ(dialog.Enabled(12006), polar) << pattern;
      EXPECT_EQ(dialog.Enabled(12019), polar) << pattern;
      EXPECT_EQ(dialog.Enabled(12014), pattern != 8) << pattern;
    }
  });
}

TEST_F(TilesDialogTest, AScenePreviewEnablesItsSwitch) {
  Edit([](FakeDialog& dialog) {
    EXPECT_FALSE(dialog.Enabled(12031));
    dialog.Set(12030, 4);
    EXPECT_TRUE(dialog.Enabled(12031));
    dialog.Set(12030, 0);
    EXPECT_FALSE(dialog.Enabled(12031));
  });
}

TEST_F(TilesDialogTest, OnlyWhatChangesThePictureMarksThePreview) {
  host.dialogs.threads = FakeDialogs::Threads::None;
  block.reserved24 = 0;
  SetAndConfirm(12032, 2.0f);
  EXPECT_EQ(block.reserved24, 0);
  SetAndConfirm(12013, 0);
  EXPECT_EQ(block.reserved24, 1);
}

TEST_F(TilesDialogTest, ThePreviewIsFlatWithAFrameAndWithoutATimer) {
  host.dialogs.areaSizes[12029] = {10, 10};
  block.color1 = block.color2 = block.color3 = block.groutColor = {0, 1, 0};
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog.Area(12029).timer, 0);
    ASSERT_TRUE(host.dialogs.RunPass());
    EXPECT_EQ(dialog.Area(12029).redraws, 2);
    dialog.Area(12029).Draw();
    EXPECT_EQ(dialog.Area(12029).drawn.at(0).bitmap->At(2, 2), (FakePixel{0, 255, 0}));
    dialog.Confirm();
  });
  EXPECT_EQ(block.reserved24, 0);
}

TEST_F(TilesDialogTest, ResetLeavesThePreview) {
  block.pattern = 9;
  block.orientation = 1;
  block.globalMode = 3;
  block.arms = 6;
  block.randomColor = 1;
  block.alternate = 0;
  block.bumpStepScale = 4;
  Edit([](FakeDialog& dialog) {
    dialog.Key('R', kCommand | kShift);
    dialog.Confirm();
  });
  EXPECT_EQ(block.pattern, 0);
  EXPECT_EQ(block.orientation, 0);
  EXPECT_EQ(block.arms, 1);
  EXPECT_EQ(block.groutWidth, 0.05f);
  EXPECT_EQ(block.bevel, 0.3f);
  EXPECT_EQ(block.color3.z, 0.5f);
  EXPECT_EQ(block.smoothBevel, 1);
  EXPECT_EQ(block.randomColor, 0);
  EXPECT_EQ(block.globalMode, 3);
  EXPECT_EQ(block.alternate, 0);
  EXPECT_EQ(block.bumpStepScale, 4);
}

TEST_F(TilesDialogTest, RandomDrawsInItsOrder) {
  SecondGenerator second = {kSeed};
  const auto drawn = [&] { return static_cast<float>(second.Next()); };
  Edit([](FakeDialog& dialog) {
    dialog.Key('M', kControl);
    dialog.Confirm();
  });
  EXPECT_EQ(block.pattern, static_cast<int>(std::floor(second.Next() * 27.99)));
  EXPECT_EQ(block.orientation, static_cast<int>(std::floor(second.Next() * 1.99)));
  EXPECT_EQ(block.groutWidth, drawn());
  EXPECT_EQ(block.bevel, drawn());
  for (const Vector* colour : {&block.groutColor, &block.color1, &block.color2, &block.color3}) {
    EXPECT_EQ(colour->z, drawn());
    EXPECT_EQ(colour->y, drawn());
    EXPECT_EQ(colour->x, drawn());
  }
}

TEST_F(TilesDialogTest, CancellingLeavesTheBlockWordForWord) {
  const auto before = Words(sizeof(TilesBlock));
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              dialog.Set(12001, 5);
              dialog.Key('M', kControl);
            }),
            0);
  EXPECT_EQ(Words(sizeof(TilesBlock)), before);
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
