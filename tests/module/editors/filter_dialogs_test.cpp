// The dialogs of Bright/Contrast, Hue, Posterizer, Distorter and Fusion: every gadget and key.
#include <cmath>

#include "tests/module/editors/filter_editors.h"

namespace sorvanix::test {
namespace {

template <class ItsBlock, std::int32_t pluginId, std::int32_t dialog>
struct DialogOf : EditorTest {
  using Block = ItsBlock;
  DialogOf() : EditorTest(pluginId, dialog) {}
  Block& block = shader.block<Block>();

  void PressKeyAndConfirm(std::int32_t key, std::int32_t qualifier) {
    ASSERT_EQ(Edit([&](FakeDialog& its) {
                EXPECT_TRUE(its.Key(key, qualifier));
                its.Confirm();
              }),
              1);
  }
};
using BrightContrastDialogTest = DialogOf<BrightContrastBlock, PluginIdBrightContrast, 15000>;
using HueDialogTest = DialogOf<HueBlock, PluginIdHue, 24000>;
using PosterizerDialogTest = DialogOf<PosterizerBlock, PluginIdPosterizer, 26000>;
using DistorterDialogTest = DialogOf<DistorterBlock, PluginIdDistorter, 14000>;
using FusionDialogTest = DialogOf<FusionBlock, PluginIdFusion, 13000>;

#define AT(member) offsetof(Block, member)

// Both gadgets of a pair of percentages, in steps of 1 %.
void WalkPercentPair(EditorTest& test, std::int32_t id, std::size_t member, float minimum,
                     float maximum) {
  WalkNumber(test, {id, member, minimum, maximum, 0.01f, FormatPercent, minimum, maximum, id + 1});
  WalkNumber(test, {id + 1, member, minimum, maximum, 0.01f, FormatPercent, minimum, maximum, id});
}

// --- Bright/Contrast ---

TEST_F(BrightContrastDialogTest, NumbersKeepTheirLimits) {
  WalkPercentPair(*this, 15001, AT(brightness), -1, 1);
  WalkPercentPair(*this, 15003, AT(contrast), -1, 1);
  WalkPercentPair(*this, 15005, AT(levelLow), 0, 1);
  WalkPercentPair(*this, 15007, AT(levelHigh), 0, 1);
}

TEST_F(BrightContrastDialogTest, RevertShowsWhatTheBlockHeldOnOpening) {
  block.contrast = 0.25f;
  ASSERT_EQ(Edit([&](FakeDialog& its) {
              its.Set(15003, 0.75f);
              its.Set(15001, 0.5f);
              EXPECT_TRUE(its.Key('R', kControl));
              EXPECT_EQ(its.Real(15003), 0.25f);
              EXPECT_EQ(its.Real(15004), 0.25f);
              its.Confirm();
            }),
            1);
  EXPECT_EQ(block.contrast, 0.25f);
  EXPECT_EQ(block.brightness, 0);
}

TEST_F(BrightContrastDialogTest, ResetSetsTheDefaults) {
  for (const std::int32_t shift : {kShift, kAlt}) {
    block.brightness = block.contrast = block.levelLow = block.levelHigh = 0.5f;
    block.previewObject = 3;
    block.previewAuto = 0;
    PressKeyAndConfirm('R', kCommand | shift);
    EXPECT_EQ(block.brightness, 0);
    EXPECT_EQ(block.contrast, 0);
    EXPECT_EQ(block.levelLow, 0);
    EXPECT_EQ(block.levelHigh, 1);
    EXPECT_EQ(block.previewObject, 3);
    EXPECT_EQ(block.previewAuto, 0);
  }
}

TEST_F(BrightContrastDialogTest, RandomDrawsInItsOrder) {
  SecondGenerator second = {kSeed};
  for (int times = 0; times < 2; ++times) {
    PressKeyAndConfirm('M', kControl);
    // The first two from -1 to 1, the levels from 0 to 1.
    EXPECT_EQ(block.brightness, static_cast<float>(2 * second.Next() - 1));
    EXPECT_EQ(block.contrast, static_cast<float>(2 * second.Next() - 1));
    EXPECT_EQ(block.levelLow, static_cast<float>(second.Next()));
    EXPECT_EQ(block.levelHigh, static_cast<float>(second.Next()));
  }
}

// --- Hue ---

TEST_F(HueDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      // Degrees, as the block holds them.
      {24001, AT(hueShift), -180, 180, 1, FormatReal, -180, 180, 24002},
      {24002, AT(hueShift), -180, 180, 1, FormatReal, -180, 180, 24001},
      {24008, AT(colorHue), 0, 360, 1, FormatReal, 0, 360, 24009},
      {24009, AT(colorHue), 0, 360, 1, FormatReal, 0, 360, 24008},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
  WalkPercentPair(*this, 24003, AT(saturationShift), -1, 1);
  WalkPercentPair(*this, 24005, AT(lightnessShift), -1, 1);
  WalkPercentPair(*this, 24010, AT(colorSaturation), 0, 1);
  WalkPercentPair(*this, 24012, AT(colorLightness), -1, 1);
}

TEST_F(HueDialogTest, ThePageOnShowIsColorize) {
  Edit([](FakeDialog& its) { EXPECT_EQ(its.Int(24014), 24015); });
  SetAndConfirm(24014, 24016);
  EXPECT_EQ(block.colorize, 1);
  Edit([](FakeDialog& its) { EXPECT_EQ(its.Int(24014), 24016); });
  SetAndConfirm(24014, 24015);
  EXPECT_EQ(block.colorize, 0);
}

TEST_F(HueDialogTest, ATabWithoutAValueChangesNothing) {
  block.colorize = 1;
  Edit([](FakeDialog& its) {
    EXPECT_FALSE(its.Press(24014));
    its.Confirm();
  });
  EXPECT_EQ(block.colorize, 1);
}

TEST_F(HueDialogTest, AnotherPageIsAnotherPicture) {
  host.dialogs.threads = FakeDialogs::Threads::None;
  block.changed = 0;
  SetAndConfirm(24014, 24015);
  EXPECT_EQ(block.changed, 0) << "the page that was on show";
  SetAndConfirm(24014, 24016);
  EXPECT_EQ(block.changed, 1);
}

TEST_F(HueDialogTest, RevertGoesBackToThePage) {
  block.colorize = 1;
  Edit([](FakeDialog& its) {
    its.Set(24014, 24015);
    its.Key('R', kControl);
    EXPECT_EQ(its.Int(24014), 24016);
  });
}

TEST_F(HueDialogTest, ResetSetsTheDefaults) {
  block.hueShift = block.saturationShift = block.lightnessShift = 0.5f;
  block.colorHue = block.colorSaturation = block.colorLightness = 0.5f;
  block.colorize = 1;
  PressKeyAndConfirm('R', kControl | kShift);
  EXPECT_EQ(block.hueShift, 0);
  EXPECT_EQ(block.saturationShift, 0);
  EXPECT_EQ(block.lightnessShift, 0);
  EXPECT_EQ(block.colorize, 0);
  EXPECT_EQ(block.colorHue, 0);
  EXPECT_EQ(block.colorSaturation, 0.25f);
  EXPECT_EQ(block.colorLightness, 0);
}

TEST_F(HueDialogTest, RandomStaysWithinTheGadgets) {
  SecondGenerator second = {kSeed};
  PressKeyAndConfirm('M', kControl);
  EXPECT_EQ(block.hueShift, static_cast<float>(second.Next() * 360 - 180));
  EXPECT_EQ(block.saturationShift, static_cast<float>(second.Next() * 2 - 1));
  EXPECT_EQ(block.lightnessShift, static_cast<float>(second.Next() * 2 - 1));
  EXPECT_EQ(block.colorHue, static_cast<float>(second.Next() * 360));
  EXPECT_EQ(block.colorSaturation, static_cast<float>(second.Next()));
  EXPECT_EQ(block.colorLightness, static_cast<float>(second.Next() * 2 - 1));
  EXPECT_EQ(block.colorize, 0);
}

// --- Posterizer ---

TEST_F(PosterizerDialogTest, LevelsFollowOneAnother) {
  WalkInteger(*this, {26001, AT(levels), 1, 255});
  WalkInteger(*this, {26002, AT(levels), 1, 20});
  Edit([](FakeDialog& its) {
    its.Set(26001, 12);
    EXPECT_EQ(its.Int(26002), 12);
    its.Set(26002, 3);
    EXPECT_EQ(its.Int(26001), 3);
  });
}

// Half the width of the soft edge is held, the whole of it shown: 100 % stand for 0.5.
TEST_F(PosterizerDialogTest, TwiceTheSoftnessIsShown) {
  Edit([](FakeDialog& its) { EXPECT_EQ(its.Real(26003), 0.1f); });
  WalkNumber(*this, {26003, AT(softness), 0, 1, 0.01f, FormatPercent, 0, 0.5f, 26004});
  WalkNumber(*this, {26004, AT(softness), 0, 1, 0.01f, FormatPercent, 0, 0.5f, 26003});
}

TEST_F(PosterizerDialogTest, ResetAndRandom) {
  block.levels = 77;
  block.softness = 0.3f;
  PressKeyAndConfirm('R', kControl | kShift);
  EXPECT_EQ(block.levels, 5);
  EXPECT_EQ(block.softness, 0.05f);
  SecondGenerator second = {kSeed};
  PressKeyAndConfirm('M', kControl);
  EXPECT_EQ(block.levels, static_cast<int>(std::floor(second.Next() * 19.99 + 1)));
  EXPECT_EQ(block.softness, static_cast<float>(second.Next() * 0.5));
}

// --- Distorter ---

TEST_F(DistorterDialogTest, NumbersKeepTheirLimits) {
  // A field of +-1e5 or +-1e7 percent, and a slider of +-100 percent.
  const auto walk = [&](std::int32_t id, std::size_t member, float low, float high, float sliderLow,
                        float sliderHigh) {
    WalkNumber(*this, {id, member, low, high, 0.01f, FormatPercent, low, high, id + 1});
    WalkNumber(*this, {id + 1, member, sliderLow, sliderHigh, 0.01f, FormatPercent, sliderLow,
                       sliderHigh, id});
  };
  walk(14002, AT(strength), -1e3f, 1e3f, -1, 1);
  walk(14004, AT(scaleX), -1e5f, 1e5f, -1, 1);
  walk(14006, AT(scaleY), -1e5f, 1e5f, -1, 1);
  walk(14008, AT(scaleZ), -1e5f, 1e5f, -1, 1);
  walk(14010, AT(gradientStep), 0, 1e5f, 0, 10);
  WalkNumber(*this, {14038, AT(sampleStep), 0, 9e16f, 0.01f, FormatPercent});
}

TEST_F(DistorterDialogTest, ChoicesAndSwitches) {
  WalkInteger(*this, {14001, AT(warpType), 0, 2});
  WalkSwitch(*this, 14012, AT(tile));
}

TEST_F(DistorterDialogTest, ResetSetsTheDefaults) {
  block.warpType = 2;
  block.strength = block.scaleX = block.scaleY = block.scaleZ = block.gradientStep = 7;
  block.sampleStep = 7;
  block.tile = 0;
  block.previewAuto = 1;
  PressKeyAndConfirm('R', kControl | kAlt);
  EXPECT_EQ(block.warpType, 0);
  EXPECT_EQ(block.strength, 1);
  EXPECT_EQ(block.scaleX, 0.1f);
  EXPECT_EQ(block.scaleY, 0.1f);
  EXPECT_EQ(block.scaleZ, 0.1f);
  EXPECT_EQ(block.gradientStep, 1);
  EXPECT_EQ(block.tile, 1);
  EXPECT_EQ(block.sampleStep, 1);
  EXPECT_EQ(block.previewAuto, 1);
}

TEST_F(DistorterDialogTest, RandomStaysWithinTheSliders) {
  SecondGenerator second = {kSeed};
  PressKeyAndConfirm('M', kControl);
  EXPECT_EQ(block.warpType, static_cast<int>(std::floor(second.Next() * 2.99)));
  for (const float value : {block.strength, block.scaleX, block.scaleY, block.scaleZ}) {
    EXPECT_EQ(value, static_cast<float>(second.Next() * 2 - 1));
  }
  EXPECT_EQ(block.gradientStep, static_cast<float>(second.Next() * 10));
  EXPECT_EQ(block.tile, static_cast<int>(std::floor(second.Next() * 1.99)));
  EXPECT_EQ(block.sampleStep, 1);
}

// --- Fusion ---

TEST_F(FusionDialogTest, NumbersChoicesAndSwitches) {
  WalkInteger(*this, {13001, AT(mode), 0, 18});
  WalkPercentPair(*this, 13002, AT(opacity), 0, 1);
  WalkSwitch(*this, 13004, AT(useMask));
  WalkSwitch(*this, 13005, AT(invertMask));
  WalkSwitch(*this, 13006, AT(invertOutput));
}

TEST_F(FusionDialogTest, ResetAndRandom) {
  block.mode = 9;
  block.opacity = 0.5f;
  block.invertMask = block.useMask = block.invertOutput = 1;
  PressKeyAndConfirm('R', kControl | kShift);
  EXPECT_EQ(block.mode, 0);
  EXPECT_EQ(block.opacity, 1);
  EXPECT_EQ(block.invertMask + block.useMask + block.invertOutput, 0);
  SecondGenerator second = {kSeed};
  PressKeyAndConfirm('M', kControl);
  EXPECT_EQ(block.mode, static_cast<int>(std::floor(second.Next() * 18.99)));
  EXPECT_EQ(block.opacity, static_cast<float>(second.Next()));
  EXPECT_EQ(block.invertMask, static_cast<int>(std::floor(second.Next() * 1.99)));
  EXPECT_EQ(block.useMask, static_cast<int>(std::floor(second.Next() * 1.99)));
  EXPECT_EQ(block.invertOutput, static_cast<int>(std::floor(second.Next() * 1.99)));
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
