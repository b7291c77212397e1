// The dialog of 2D Noise: every gadget, what it enables, its keys.
#include <algorithm>
#include <cmath>
#include <set>

#include "module/shaders/generators/noise_2d.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(Noise2DBlock, member)

struct Noise2DDialogTest : EditorTest {
  Noise2DDialogTest() : EditorTest(PluginIdNoise2D, 19000) {}
  Noise2DBlock& block = shader.block<Noise2DBlock>();
};

// A size is shown for a frequency: the member holds 1 over it, and 9e18 for a size of 0.
TEST_F(Noise2DDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {19002, AT(octaves), 0, 20, 0.1f},
      {19003, AT(scale), 1e-6f, 1e6f, 1, FormatReal, 1 / 1e-6f, 1 / 1e6f},
      {19004, AT(scaleU), 0, 1e6f, 1, FormatReal, kEndless, 1 / 1e6f},
      {19005, AT(scaleV), 0, 1e6f, 1, FormatReal, kEndless, 1 / 1e6f},
      {19006, AT(speed), 0, 100, 0.1f},
      {19007, AT(detail), 0, 100000, 1},
      // Shown in percent: -100 to 100 and 0 to 100, in steps of 1.
      {19008, AT(contrast), -1, 1, 0.01f, FormatPercent, -1, 1, 19009},
      {19009, AT(contrast), -1, 1, 0.01f, FormatPercent, -1, 1, 19008},
      {19010, AT(brightness), -1, 1, 0.01f, FormatPercent, -1, 1, 19011},
      {19011, AT(brightness), -1, 1, 0.01f, FormatPercent, -1, 1, 19010},
      {19012, AT(lowClip), 0, 1, 0.01f, FormatPercent, 0, 1, 19013},
      {19013, AT(lowClip), 0, 1, 0.01f, FormatPercent, 0, 1, 19012},
      {19014, AT(highClip), 0, 1, 0.01f, FormatPercent, 0, 1, 19015},
      {19015, AT(highClip), 0, 1, 0.01f, FormatPercent, 0, 1, 19014},
      {19016, AT(cycles), 0, 100, 0.1f},
      {19041, AT(bumpDetail), 0, kEndless, 1},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(Noise2DDialogTest, ChoicesSwitchesAndColours) {
  WalkInteger(*this, {19001, AT(noiseType), 0, 29});
  WalkInteger(*this, {19039, AT(previewObject), 0, 5});
  WalkSwitch(*this, 19019, AT(absolute));
  WalkSwitch(*this, 19020, AT(previewTile));
  WalkSwitch(*this, 19040, AT(previewAuto));
  WalkColour(*this, 19017, AT(colorLow));
  WalkColour(*this, 19018, AT(colorHigh));
}

TEST_F(Noise2DDialogTest, AFrequencyOfZeroOrBelowShowsAsEndless) {
  block.scale = 0;
  block.scaleU = -2;
  block.scaleV = 4;
  Edit([](FakeDialog& dialog) {
    EXPECT_EQ(dialog.Real(19003), kEndless);
    EXPECT_EQ(dialog.Real(19004), kEndless);
    EXPECT_EQ(dialog.Real(19005), 0.25f);
    dialog.Confirm();
  });
  // Showing is not setting.
  EXPECT_EQ(block.scale, 0);
  EXPECT_EQ(block.scaleU, -2);
}

TEST_F(Noise2DDialogTest, TheUsualBlockAsItIsShown) {
  Edit([](FakeDialog& dialog) {
    EXPECT_EQ(dialog.Int(19001), 12);
    EXPECT_EQ(dialog.Real(19002), 5);
    EXPECT_EQ(dialog.Real(19003), 1);
    EXPECT_EQ(dialog.Real(19014), 1);
    EXPECT_EQ(dialog.Real(19015), 1);
    EXPECT_EQ(dialog[19018].colour.y, 1);
    EXPECT_EQ(dialog.Int(19040), 1);
  });
}

// Types without layers know no octaves; cells, blocks and dots no cycles and no folding.
TEST_F(Noise2DDialogTest, TheTypeEnablesOctavesAndCycles) {
  const std::set<std::int32_t> noOctaves = {0, 3, 10, 12, 17, 21, 23, 25, 26, 27, 28};
  const std::set<std::int32_t> noCycles = {3, 10, 17, 18, 23};
  Edit([&](FakeDialog& dialog) {
    // The type on opening is 12.
    EXPECT_FALSE(dialog.Enabled(19002));
    EXPECT_TRUE(dialog.Enabled(19016));
    for (std::int32_t type = 0; type <= 29; ++type) {
      dialog.Set(19001, type);
      for (const std::int32_t id : {19002, 19024}) {
        EXPECT_EQ(dialog.Enabled(id), noOctaves.count(type) == 0) << id << " of type " << type;
      }
      for (const std::int32_t id : {19016, 19019, 19034, 19037}) {
        EXPECT_EQ(dialog.Enabled(id), noCycles.count(type) == 0) << id << " of type " << type;
      }
    }
  });
}

TEST_F(Noise2DDialogTest, ThePreviewObjectEnablesItsSwitches) {
  Edit([](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Enabled(19020));
    EXPECT_FALSE(dialog.Enabled(19040));
    for (std::int32_t object = 1; object <= 5; ++object) {
      dialog.Set(19039, object);
      EXPECT_FALSE(dialog.Enabled(19020));
      EXPECT_TRUE(dialog.Enabled(19040));
    }
    dialog.Set(19039, 0);
    EXPECT_TRUE(dialog.Enabled(19020));
    EXPECT_FALSE(dialog.Enabled(19040));
  });
}

TEST_F(Noise2DDialogTest, OnlyWhatChangesThePictureMarksThePreview) {
  const auto marks = [&](std::int32_t gadget, auto value) {
    block.previewDirty = 0;
    SetAndConfirm(gadget, value);
    return block.previewDirty;
  };
  host.dialogs.threads = FakeDialogs::Threads::None;
  EXPECT_EQ(marks(19002, 7.0f), 1);
  EXPECT_EQ(marks(19002, 7.0f), 0);  // the value that it has
  EXPECT_EQ(marks(19019, 0), 1);     // written without comparison, as colours are
  EXPECT_EQ(marks(19017, Vector{0, 0, 0}), 1);
  EXPECT_EQ(marks(19020, 1), 0);
  EXPECT_EQ(marks(19041, 3.0f), 0);
  EXPECT_EQ(marks(19040, 0), 1);
  EXPECT_EQ(marks(19039, 2), 1);
  EXPECT_EQ(marks(19039, 0), 1);
}

// --- keys ---

TEST_F(Noise2DDialogTest, RevertShowsTheSavedBlockAgain) {
  block.octaves = 9;
  for (const std::int32_t qualifier : {kControl, kCommand}) {
    ASSERT_EQ(Edit([&](FakeDialog& dialog) {
                dialog.Set(19002, 3.0f);
                dialog.Set(19001, 4);
                EXPECT_TRUE(dialog.Key('R', qualifier));
                EXPECT_EQ(dialog.Real(19002), 9);
                EXPECT_EQ(dialog.Int(19001), 12);
                EXPECT_FALSE(dialog.Enabled(19002));
                dialog.Confirm();
              }),
              1);
    EXPECT_EQ(block.octaves, 9);
    EXPECT_EQ(block.noiseType, 12);
  }
}

// From the type to the switch of the animation; the type becomes 0, where a new block has 12.
TEST_F(Noise2DDialogTest, ResetLeavesTheTypeAtZeroAndThePreviewAsItIs) {
  for (const std::int32_t shift : {kShift, kAlt}) {
    block = {};
    block.previewObject = 3;
    block.noiseType = 5;
    block.colorLow = {1, 2, 3};
    block.previewTile = 1;
    block.previewAuto = 0;
    block.previewState = 7;
    block.bumpDetail = 6;
    ASSERT_EQ(Edit([&](FakeDialog& dialog) {
                EXPECT_TRUE(dialog.Key('R', kControl | shift));
                EXPECT_EQ(dialog.Int(19001), 0);
                EXPECT_EQ(dialog.Real(19002), 5);
                EXPECT_FALSE(dialog.Enabled(19002)) << "type 0 has no octaves";
                EXPECT_FALSE(dialog.Enabled(19024));
                EXPECT_TRUE(dialog.Enabled(19016));
                dialog.Confirm();
              }),
              1);
    EXPECT_EQ(block.noiseType, 0);
    EXPECT_EQ(block.octaves, 5);
    EXPECT_EQ(block.scale, 1);
    EXPECT_EQ(block.scaleU, 1);
    EXPECT_EQ(block.scaleV, 1);
    EXPECT_EQ(block.detail, 1);
    EXPECT_EQ(block.speed, 0);
    EXPECT_EQ(block.contrast, 0);
    EXPECT_EQ(block.brightness, 0);
    EXPECT_EQ(block.lowClip, 0);
    EXPECT_EQ(block.highClip, 1);
    EXPECT_EQ(block.cycles, 0);
    EXPECT_EQ(block.colorLow.z, 0);
    EXPECT_EQ(block.colorHigh.x, 1);
    EXPECT_EQ(block.absolute, 0);
    EXPECT_EQ(block.previewTile, 0);
    EXPECT_EQ(block.previewObject, 3);
    EXPECT_EQ(block.previewAuto, 0);
    EXPECT_EQ(block.previewState, 7);
    EXPECT_EQ(block.bumpDetail, 6);
  }
}

// The program's generator starts with 665, and no other test of this process draws from it: each
// test loads the module anew.
TEST_F(Noise2DDialogTest, RandomDrawsInItsOrder) {
  SecondGenerator second = {kSeed};
  const auto drawn = [&](double range) { return static_cast<float>(second.Next() * range); };
  Noise2DBlock before = block;
  bool cyclesEnabled = false;
  for (const std::int32_t qualifier : {kControl, kCommand | kShift}) {
    ASSERT_EQ(Edit([&](FakeDialog& dialog) {
                dialog.Set(19001, 3);
                EXPECT_TRUE(dialog.Key('M', qualifier));
                cyclesEnabled = dialog.Enabled(19016);
                dialog.Confirm();
              }),
              1);
    EXPECT_EQ(block.noiseType, static_cast<int>(std::floor(second.Next() * 29.99)));
    EXPECT_EQ(block.octaves, drawn(15));
    EXPECT_EQ(block.speed, drawn(5));
    EXPECT_EQ(block.cycles, drawn(5));
    EXPECT_EQ(block.colorLow.z, drawn(1));
    EXPECT_EQ(block.colorLow.y, drawn(1));
    EXPECT_EQ(block.colorLow.x, drawn(1));
    EXPECT_EQ(block.colorHigh.z, drawn(1));
    EXPECT_EQ(block.colorHigh.y, drawn(1));
    EXPECT_EQ(block.colorHigh.x, drawn(1));
    EXPECT_EQ(block.absolute, static_cast<int>(std::floor(second.Next() * 1.99)));
    // What the drawn type enables follows it.
    const std::set<std::int32_t> noCycles = {3, 10, 17, 18, 23};
    EXPECT_EQ(cyclesEnabled, noCycles.count(block.noiseType) == 0);
    // Two in a row differ, since the generator moves on.
    EXPECT_NE(block.octaves, before.octaves);
    before = block;
  }
  EXPECT_EQ(block.scale, 1);
  EXPECT_EQ(block.contrast, 0);
}

TEST_F(Noise2DDialogTest, OtherKeysAreTheHosts) {
  Edit([](FakeDialog& dialog) {
    dialog.Set(19002, 3.0f);
    EXPECT_FALSE(dialog.Key('R'));
    EXPECT_FALSE(dialog.Key('R', kShift | kAlt));
    EXPECT_FALSE(dialog.Key('M', kShift));
    EXPECT_FALSE(dialog.Key('Q', kControl));
    EXPECT_FALSE(dialog.Key(KeyEscape, kControl));
    EXPECT_EQ(dialog.Real(19002), 3);
  });
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
