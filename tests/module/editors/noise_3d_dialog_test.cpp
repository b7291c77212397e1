// The dialog of 3D Noise.
#include <cmath>
#include <set>

#include "module/shaders/generators/noise_3d.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(Noise3DBlock, member)

struct Noise3DDialogTest : EditorTest {
  Noise3DDialogTest() : EditorTest(PluginIdNoise3D, 11000) {}
  Noise3DBlock& block = shader.block<Noise3DBlock>();
};

// Sizes are shown for frequencies, as in 2D Noise.
TEST_F(Noise3DDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {11003, AT(octaves), 0, 20, 0.1f},
      {11004, AT(globalScale), 1e-6f, 1e6f, 1, FormatReal, 1 / 1e-6f, 1 / 1e6f},
      {11005, AT(scaleX), 0, 1e6f, 1, FormatReal, kEndless, 1 / 1e6f},
      {11006, AT(scaleY), 0, 1e6f, 1, FormatReal, kEndless, 1 / 1e6f},
      {11007, AT(scaleZ), 0, 1e6f, 1, FormatReal, kEndless, 1 / 1e6f},
      {11008, AT(timeScale), 0, 100, 0.1f},
      {11009, AT(detail), 0, 100000, 1},
      {11010, AT(contrast), -1, 1, 0.01f, FormatPercent, -1, 1, 11011},
      {11011, AT(contrast), -1, 1, 0.01f, FormatPercent, -1, 1, 11010},
      {11012, AT(brightness), -1, 1, 0.01f, FormatPercent, -1, 1, 11013},
      {11013, AT(brightness), -1, 1, 0.01f, FormatPercent, -1, 1, 11012},
      {11014, AT(lowClip), 0, 1, 0.01f, FormatPercent, 0, 1, 11015},
      {11015, AT(lowClip), 0, 1, 0.01f, FormatPercent, 0, 1, 11014},
      {11016, AT(highClip), 0, 1, 0.01f, FormatPercent, 0, 1, 11017},
      {11017, AT(highClip), 0, 1, 0.01f, FormatPercent, 0, 1, 11016},
      {11018, AT(cycles), 0, 100, 0.1f},
      {11043, AT(bumpStepScale), 0, kEndless, 1},
      {11047, AT(extraVector.x), -kEndless, kEndless, 1},
      {11048, AT(extraVector.y), -kEndless, kEndless, 1},
      {11049, AT(extraVector.z), -kEndless, kEndless, 1},
      {11050, AT(velocity.x), -kEndless, kEndless, 1},
      {11051, AT(velocity.y), -kEndless, kEndless, 1},
      {11052, AT(velocity.z), -kEndless, kEndless, 1},
      {11053, AT(extraValue), -kEndless, kEndless, 1},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(Noise3DDialogTest, ChoicesSwitchesAndColours) {
  WalkInteger(*this, {11001, AT(noiseType), 0, 29});
  WalkInteger(*this, {11002, AT(space), 0, 5});
  WalkInteger(*this, {11041, AT(revision), 0, 5});
  WalkSwitch(*this, 11021, AT(absolute));
  WalkSwitch(*this, 11022, AT(flagC));
  WalkSwitch(*this, 11042, AT(flagD));
  WalkSwitch(*this, 11044, AT(bumpOneSided));
  WalkSwitch(*this, 11045, AT(useObjectFrame));
  WalkSwitch(*this, 11046, AT(useSphereFrame));
  WalkColour(*this, 11019, AT(colorA));
  WalkColour(*this, 11020, AT(colorB));
}

TEST_F(Noise3DDialogTest, OneComponentLeavesTheOthers) {
  block.velocity = {1, 2, 3};
  SetAndConfirm(11051, 7.0f);
  EXPECT_EQ(block.velocity.x, 1);
  EXPECT_EQ(block.velocity.y, 7);
  EXPECT_EQ(block.velocity.z, 3);
}

TEST_F(Noise3DDialogTest, TheTypeEnablesOctavesAndCycles) {
  const std::set<std::int32_t> noOctaves = {0, 3, 10, 12, 17, 21, 23, 25, 26, 27, 28};
  const std::set<std::int32_t> noCycles = {3, 10, 17, 18, 23};
  Edit([&](FakeDialog& dialog) {
    for (std::int32_t type = 0; type <= 29; ++type) {
      dialog.Set(11001, type);
      EXPECT_EQ(dialog.Enabled(11003), noOctaves.count(type) == 0) << type;
      EXPECT_EQ(dialog.Enabled(11018), noCycles.count(type) == 0) << type;
      EXPECT_EQ(dialog.Enabled(11021), noCycles.count(type) == 0) << type;
    }
  });
}

TEST_F(Noise3DDialogTest, ThePreviewObjectEnablesItsSwitches) {
  Edit([](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Enabled(11022));
    EXPECT_FALSE(dialog.Enabled(11042));
    dialog.Set(11041, 2);
    EXPECT_FALSE(dialog.Enabled(11022));
    EXPECT_TRUE(dialog.Enabled(11042));
  });
}

// What no preview can show does not draw it anew.
TEST_F(Noise3DDialogTest, OnlyWhatChangesThePictureMarksThePreview) {
  host.dialogs.threads = FakeDialogs::Threads::None;
  const auto marks = [&](std::int32_t gadget, auto value) {
    block.reserved25 = 0;
    SetAndConfirm(gadget, value);
    return block.reserved25;
  };
  EXPECT_EQ(marks(11002, 2), 1);
  EXPECT_EQ(marks(11045, 1), 1);
  EXPECT_EQ(marks(11050, 2.0f), 1);
  EXPECT_EQ(marks(11021, 0), 1);
  for (const std::int32_t quiet : {11043, 11047, 11048, 11049, 11053}) {
    EXPECT_EQ(marks(quiet, 0.5f), 0) << quiet;
  }
  EXPECT_EQ(marks(11044, 1), 0);
  EXPECT_EQ(marks(11022, 1), 0);
}

TEST_F(Noise3DDialogTest, ResetLeavesTheTypeAtZero) {
  block.revision = 2;
  block.space = 4;
  block.scaleX = 7;
  block.bumpOneSided = 1;
  block.flagC = 1;
  block.flagD = 0;
  block.useObjectFrame = 1;
  block.velocity = {1, 2, 3};
  block.bumpStepScale = 5;
  Edit([](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Key('R', kControl | kShift));
    dialog.Confirm();
  });
  EXPECT_EQ(block.noiseType, 0);
  EXPECT_EQ(block.space, 0);
  EXPECT_EQ(block.octaves, 5);
  EXPECT_EQ(block.scaleX, 1);
  EXPECT_EQ(block.highClip, 1);
  EXPECT_EQ(block.colorB.y, 1);
  EXPECT_EQ(block.bumpOneSided, 0);
  EXPECT_EQ(block.flagC, 0);
  // Behind the switch of the animation nothing is touched.
  EXPECT_EQ(block.revision, 2);
  EXPECT_EQ(block.flagD, 0);
  EXPECT_EQ(block.useObjectFrame, 1);
  EXPECT_EQ(block.velocity.y, 2);
  EXPECT_EQ(block.bumpStepScale, 5);
}

TEST_F(Noise3DDialogTest, RandomDrawsInTheOrderOf2DNoise) {
  SecondGenerator second = {kSeed};
  const auto drawn = [&](double range) { return static_cast<float>(second.Next() * range); };
  Edit([](FakeDialog& dialog) {
    dialog.Key('M', kCommand);
    dialog.Confirm();
  });
  EXPECT_EQ(block.noiseType, static_cast<int>(std::floor(second.Next() * 29.99)));
  EXPECT_EQ(block.octaves, drawn(15));
  EXPECT_EQ(block.timeScale, drawn(5));
  EXPECT_EQ(block.cycles, drawn(5));
  EXPECT_EQ(block.colorA.z, drawn(1));
  EXPECT_EQ(block.colorA.y, drawn(1));
  EXPECT_EQ(block.colorA.x, drawn(1));
  EXPECT_EQ(block.colorB.z, drawn(1));
  EXPECT_EQ(block.colorB.y, drawn(1));
  EXPECT_EQ(block.colorB.x, drawn(1));
  EXPECT_EQ(block.absolute, static_cast<int>(std::floor(second.Next() * 1.99)));
}

TEST_F(Noise3DDialogTest, RevertAndCancel) {
  block.nested = 1;
  const auto before = Words(sizeof(Noise3DBlock));
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              dialog.Set(11003, 3.0f);
              dialog.Key('R', kControl);
              EXPECT_EQ(dialog.Real(11003), 5);
              dialog.Set(11050, 3.0f);
            }),
            0);
  EXPECT_EQ(Words(sizeof(Noise3DBlock)), before);
}

TEST_F(Noise3DDialogTest, ThePreviewMarksItsCopy) {
  block.revision = 2;
  host.documents.onRender = [](const FakeRender& render, HostBitmap*) {
    const LinkContent& content = render.material->links.at(1)->content;
    EXPECT_EQ(content.pluginId, PluginIdNoise3D);
    EXPECT_EQ(static_cast<const Noise3DBlock*>(content.instance->data)->reserved24, 1);
  };
  Edit([&](FakeDialog& dialog) {
    EXPECT_TRUE(host.dialogs.RunPass());
    dialog.Confirm();
  });
  EXPECT_EQ(host.documents.renders.size(), 1u);
  EXPECT_EQ(block.reserved25, 0);
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
