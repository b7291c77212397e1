// The dialogs of Gradient, Falloff, Fresnel and Colorizer: every gadget, what it enables, what the
// user is told where the resources are missing.
#include <algorithm>

#include "tests/module/editors/ramp_editors.h"

namespace sorvanix::test {
namespace {

template <class ItsBlock, std::int32_t pluginId, std::int32_t dialog>
struct DialogOf : EditorTest {
  using Block = ItsBlock;
  DialogOf() : EditorTest(pluginId, dialog) {}
  Block& block = shader.block<Block>();
};
using GradientDialogTest = DialogOf<GradientBlock, PluginIdGradient, 18000>;
using FalloffDialogTest = DialogOf<FalloffBlock, PluginIdFalloff, 20000>;
using FresnelDialogTest = DialogOf<FresnelBlock, PluginIdFresnel, 27000>;
using ColorizerDialogTest = DialogOf<ColorizerBlock, PluginIdColorizer, 17000>;

#define AT(member) offsetof(Block, member)

// An integer that the dialog does not limit.
void WalkAnyInteger(EditorTest& test, std::int32_t id, std::size_t member) {
  SCOPED_TRACE(id);
  for (const std::int32_t value : {-1000000, -1, 0, 3, 1000000}) {
    test.SetAndConfirm(id, value);
    EXPECT_EQ(test.At<std::int32_t>(member), value);
  }
  test.Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog[id].minimum, -2147483648.0f);
    EXPECT_EQ(dialog[id].maximum, 2147483648.0f);  // 2^31 - 1 as the fake's float
    EXPECT_EQ(dialog[id].step, 1);
  });
}

constexpr float kFar = 1e6f;

TEST_F(GradientDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {18010, AT(start.x), -kFar, kFar, 1}, {18011, AT(start.y), -kFar, kFar, 1},
      {18012, AT(start.z), -kFar, kFar, 1}, {18013, AT(end.x), -kFar, kFar, 1},
      {18014, AT(end.y), -kFar, kFar, 1},   {18015, AT(end.z), -kFar, kFar, 1},
      {18016, AT(radius), -kFar, kFar, 1},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(GradientDialogTest, ChoicesAndSwitches) {
  WalkAnyInteger(*this, 18003, AT(ramp.interpolation));
  WalkAnyInteger(*this, 18004, AT(type));
  WalkAnyInteger(*this, 18006, AT(space));
  WalkSwitch(*this, 18018, AT(cycle));
  WalkSwitch(*this, 18022, AT(previewAuto));
}

// Types 8, 9 and 10 lie in space: a line, a cylinder and a sphere. A sphere has no second point,
// and a line no radius.
TEST_F(GradientDialogTest, TheTypeEnablesWhatBelongsToIt) {
  Edit([&](FakeDialog& dialog) {
    for (std::int32_t type = -1; type <= 12; ++type) {
      dialog.Set(18004, type);
      const bool in3D = type >= 8 && type <= 10;
      for (const std::int32_t id : {18006, 18007, 18008}) {
        EXPECT_EQ(dialog.Enabled(id), in3D) << id << " of type " << type;
      }
      EXPECT_EQ(dialog.Enabled(18009), type == 8 || type == 9) << type;
      EXPECT_EQ(dialog.Enabled(18016), type == 9 || type == 10) << type;
      EXPECT_EQ(dialog.Enabled(18017), type == 9 || type == 10) << type;
      EXPECT_TRUE(dialog.Enabled(18018)) << type;
    }
  });
}

TEST_F(FalloffDialogTest, NumbersKeepTheirLimits) {
  WalkNumber(*this, {20007, AT(direction.x), -kFar, kFar, 1});
  WalkNumber(*this, {20008, AT(direction.y), -kFar, kFar, 1});
  WalkNumber(*this, {20009, AT(direction.z), -kFar, kFar, 1});
}

TEST_F(FalloffDialogTest, ChoicesAndSwitches) {
  WalkAnyInteger(*this, 20004, AT(ramp.interpolation));
  WalkAnyInteger(*this, 20005, AT(space));
  WalkSwitch(*this, 20010, AT(useBumpNormal));
  WalkSwitch(*this, 20014, AT(previewAuto));
}

TEST_F(FresnelDialogTest, ChoicesAndSwitches) {
  WalkAnyInteger(*this, 27003, AT(ramp.interpolation));
  WalkAnyInteger(*this, 27009, AT(sideMode));
  WalkSwitch(*this, 27004, AT(useBumpNormal));
  WalkSwitch(*this, 27008, AT(previewAuto));
}

TEST_F(ColorizerDialogTest, ChoicesAndSwitches) {
  WalkAnyInteger(*this, 17003, AT(ramp.interpolation));
  WalkInteger(*this, {17004, AT(source), 0, 6});
  WalkInteger(*this, {17016, AT(previewObject), 0, 5});
  WalkSwitch(*this, 17017, AT(previewAuto));
}

#undef AT

// --- what the four have alike ---

struct RampDialogTest : RampEditorTest {
  struct Preview {
    std::int32_t object, automatic;
  };
  Preview PreviewGadgets() const {
    switch (its.pluginId) {
      case PluginIdGradient:
        return {18021, 18022};
      case PluginIdFalloff:
        return {20013, 20014};
      case PluginIdFresnel:
        return {27007, 27008};
      default:
        return {17016, 17017};
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Dialogs, RampDialogTest, testing::ValuesIn(kRampEditors), NameOf);

TEST_P(RampDialogTest, HasThreeAreas) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog.resource, its.dialog);
    EXPECT_EQ(dialog.areas.size(), 3u);
    EXPECT_EQ(dialog.areas.count(its.area), 1u);
    EXPECT_EQ(dialog.areas.count(its.preview), 1u);
    EXPECT_EQ(dialog.areas.count(its.title), 1u);
  });
}

TEST_P(RampDialogTest, AScenePreviewEnablesItsSwitch) {
  Edit([&](FakeDialog& dialog) {
    for (const std::int32_t object : {0, 1, 5, 0}) {
      dialog.Set(PreviewGadgets().object, object);
      EXPECT_EQ(dialog.Enabled(PreviewGadgets().automatic), object != 0) << object;
    }
  });
}

// Colorizer limits the object, and its picture is that of its input.
struct RampWithoutInputTest : RampDialogTest {};

INSTANTIATE_TEST_SUITE_P(Dialogs, RampWithoutInputTest,
                         testing::ValuesIn(kRampEditors, kRampEditors + 3), NameOf);

TEST_P(RampWithoutInputTest, APreviewObjectWithoutASceneShowsNothing) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Set(PreviewGadgets().object, 7));
    EXPECT_EQ(host.documents.asked.back(), "/plugins/Resources");
  });
}

TEST_P(RampDialogTest, EveryChangeMarksThePreviewIfItDiffers) {
  std::int32_t& changed = At<std::int32_t>(its.changed);
  host.dialogs.threads = FakeDialogs::Threads::None;
  changed = 0;
  SetAndConfirm(its.interpolation, 2);
  EXPECT_EQ(changed, 1);
  changed = 0;
  SetAndConfirm(its.interpolation, 2);
  EXPECT_EQ(changed, 0);
}

TEST_P(RampWithoutInputTest, TheFlatPictureIsTheShadersOutput) {
  At<std::int32_t>(its.changed) = 1;
  EditAndConfirm([&](FakeDialog& dialog, FakeArea&) {
    dialog.Set(PreviewGadgets().object, 0);
    ASSERT_TRUE(host.dialogs.RunPass());
    FakeArea& area = dialog.Area(its.preview);
    area.Draw();
    const FakeBitmap& picture = *area.drawn.at(0).bitmap;
    for (std::int32_t y = 0; y < 6; ++y) {
      for (std::int32_t x = 0; x < 8; ++x) {
        // Without a render Gradient shows u, the others 1 - v; the ramp is red at 0.5 and its red
        // component twice the place below.
        const float t = its.pluginId == PluginIdGradient ? static_cast<float>(x) / 8
                                                         : 1 - static_cast<float>(y) / 6;
        const float red = t < 0.5f ? 2 * t : 1;
        const float green = t < 0.5f ? 0 : 2 * t - 1;
        EXPECT_NEAR(picture.At(x, y).red, red * 255.99, 1) << x << " " << y;
        EXPECT_NEAR(picture.At(x, y).green, green * 255.99, 1) << x << " " << y;
      }
    }
  });
  EXPECT_EQ(At<std::int32_t>(its.changed), 0);
}

TEST_P(RampDialogTest, MissingResourcesAreToldByName) {
  // Fresnel names Falloff: deliberate.
  const std::string name = its.pluginId == PluginIdFresnel ? "Falloff" : its.name;
  host.failResources = true;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL() << "the dialog opened"; }), 0);
  const std::string call =
      "messageDialog(\"Unable to find dialog resources for sorvaNIX " + name + "\", 48)";
  EXPECT_EQ(std::count(host.calls.begin(), host.calls.end(), call), 1);
  EXPECT_EQ(host.messages.size(), 1u);
}

TEST_P(RampDialogTest, TheWorkingCopyKnowsTheMaterialChannel) {
  shader.instance.channel = ChannelDiffusion;
  EditAndConfirm([](FakeDialog&, FakeArea&) {});
  const std::size_t channel =
      its.pluginId == PluginIdGradient  ? offsetof(GradientBlock, dialogChannel)
      : its.pluginId == PluginIdFalloff ? offsetof(FalloffBlock, previewChannel)
      : its.pluginId == PluginIdFresnel ? offsetof(FresnelBlock, previewChannel)
                                        : offsetof(ColorizerBlock, previewChannel);
  EXPECT_EQ(At<std::int32_t>(channel), ChannelDiffusion);
}

}  // namespace
}  // namespace sorvanix::test
