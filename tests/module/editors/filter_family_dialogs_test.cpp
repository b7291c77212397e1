// What the dialogs of all filters have alike: inputs, the working copy, previews, cancelling.
#include <algorithm>

#include "tests/module/editors/filter_editors.h"

namespace sorvanix::test {
namespace {

struct FilterDialogTest : EditorTest, testing::WithParamInterface<FilterEditor> {
  FilterDialogTest() : EditorTest(GetParam().pluginId, GetParam().dialog) {}
  const FilterEditor& its = GetParam();
  ChannelLink* LinkOf(const InputGadget& input) { return At<ChannelLink*>(input.member); }
};

INSTANTIATE_TEST_SUITE_P(Dialogs, FilterDialogTest, testing::ValuesIn(kFilterEditors),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(FilterDialogTest, HasItsTitleAndPreview) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog.resource, its.dialog);
    EXPECT_EQ(dialog.areas.count(its.title), 1u);
    EXPECT_EQ(dialog.areas.count(its.preview), 1u);
  });
}

TEST_P(FilterDialogTest, PreviewObjectAndItsSwitch) {
  Edit([&](FakeDialog& dialog) {
    for (std::int32_t object = 0; object <= 5; ++object) {
      EXPECT_TRUE(dialog.Set(its.previewObject, object));
      EXPECT_EQ(dialog.Enabled(its.previewAuto), object != 0) << object;
    }
    dialog.Set(its.previewObject, 6);
    EXPECT_EQ(dialog.Int(its.previewObject), 5);
    dialog.Set(its.previewObject, -1);
    EXPECT_EQ(dialog.Int(its.previewObject), 0);
    EXPECT_EQ(dialog[its.previewAuto].kind, FakeGadget::Kind::Switch);
  });
}

// The host edits links of the working copy: what the user cancels was never in the block.
TEST_P(FilterDialogTest, InputsAreCopies) {
  for (const InputGadget& input : its.inputs) {
    ChannelLink* const original = LinkOf(input);
    ScriptedLink::Of(original).content.name = "before";
    const auto change = [&](FakeDialog& dialog) {
      ASSERT_EQ(dialog[input.id].kind, FakeGadget::Kind::Link);
      ChannelLink* const copy = dialog[input.id].link;
      EXPECT_NE(copy, original);
      EXPECT_EQ(ScriptedLink::Of(copy).content.name, "before");
      ScriptedLink::Of(copy).content.name = "after";
      EXPECT_TRUE(dialog.Press(input.id));
    };
    EXPECT_EQ(Edit(change), 0);
    EXPECT_EQ(LinkOf(input), original);
    EXPECT_EQ(ScriptedLink::Of(original).content.name, "before");
    EXPECT_EQ(Edit([&](FakeDialog& dialog) {
                change(dialog);
                dialog.Confirm();
              }),
              1);
    EXPECT_EQ(ScriptedLink::Of(LinkOf(input)).content.name, "after");
  }
  EXPECT_EQ(host.liveLinks, static_cast<int>(its.inputs.size()));
}

TEST_P(FilterDialogTest, AnyOfTheNineGadgetsOfAnInputBeginsANewPicture) {
  host.dialogs.threads = FakeDialogs::Threads::OnDemand;
  for (const InputGadget& input : its.inputs) {
    for (std::int32_t id = input.id; id < input.id + 9; ++id) {
      Edit([&](FakeDialog& dialog) {
        const int before = host.dialogs.threadsStarted;
        EXPECT_TRUE(dialog.Press(id)) << id;
        EXPECT_EQ(host.dialogs.threadsStarted, before + 1) << id;
      });
    }
  }
}

TEST_P(FilterDialogTest, AMissingLinkOrFailedCopyOpensNothing) {
  host.failLinkCopy = 1;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL() << "the dialog opened"; }), 0);
  EXPECT_EQ(host.liveLinks, static_cast<int>(its.inputs.size()));
}

TEST_P(FilterDialogTest, TheWorkingCopyStandsAlone) {
  At<std::int32_t>(its.nested) = 1;
  Edit([](FakeDialog&) {});
  EXPECT_EQ(At<std::int32_t>(its.nested), 1) << "cancelled";
  Edit([](FakeDialog& dialog) { dialog.Confirm(); });
  EXPECT_EQ(At<std::int32_t>(its.nested), 0);
}

TEST_P(FilterDialogTest, TheWorkingCopyKnowsTheMaterialChannel) {
  shader.instance.channel = ChannelAlpha;
  Edit([](FakeDialog& dialog) { dialog.Confirm(); });
  EXPECT_EQ(At<std::int32_t>(its.previewChannel), ChannelAlpha);
}

// In the dialog of Colorizer the key is reserved.
struct RevertingFilterTest : FilterDialogTest {};

INSTANTIATE_TEST_SUITE_P(Dialogs, RevertingFilterTest,
                         testing::Values(kFilterEditors[0], kFilterEditors[2], kFilterEditors[3],
                                         kFilterEditors[4], kFilterEditors[5]),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(RevertingFilterTest, RevertKeepsTheMaterialChannel) {
  shader.instance.channel = ChannelAlpha;
  Edit([](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Key('R', kControl));
    dialog.Confirm();
  });
  EXPECT_EQ(At<std::int32_t>(its.previewChannel), ChannelAlpha);
}

TEST_P(RevertingFilterTest, RevertBringsTheInputsBack) {
  for (const InputGadget& input : its.inputs) {
    ScriptedLink::Of(LinkOf(input)).content.name = "before";
    Edit([&](FakeDialog& dialog) {
      ScriptedLink::Of(dialog[input.id].link).content.name = "edited";
      dialog.Press(input.id);
      EXPECT_TRUE(dialog.Key('R', kControl));
      EXPECT_EQ(ScriptedLink::Of(dialog[input.id].link).content.name, "before");
      dialog.Confirm();
    });
    EXPECT_EQ(ScriptedLink::Of(LinkOf(input)).content.name, "before");
  }
}

TEST_P(RevertingFilterTest, ARevertThatFailsLosesNothing) {
  host.dialogs.threads = FakeDialogs::Threads::None;
  const InputGadget& input = its.inputs.back();
  Edit([&](FakeDialog& dialog) {
    ScriptedLink::Of(dialog[input.id].link).content.name = "edited";
    host.failLinkCopy = static_cast<int>(its.inputs.size());
    EXPECT_TRUE(dialog.Key('R', kControl));
    EXPECT_EQ(host.failLinkCopy, 0) << "it failed";
    dialog.Confirm();
  });
  ASSERT_NE(LinkOf(input), nullptr);
  EXPECT_EQ(ScriptedLink::Of(LinkOf(input)).content.name, "edited");
  EXPECT_EQ(host.liveLinks, static_cast<int>(its.inputs.size()));
}

// Fusion mixes bytes instead, and has tests of its own.
struct FilterPictureTest : FilterDialogTest {};

INSTANTIATE_TEST_SUITE_P(Dialogs, FilterPictureTest,
                         testing::ValuesIn(kFilterEditors, kFilterEditors + 5),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(FilterPictureTest, TheFlatPictureIsTheShadersOutputInBytes) {
  for (const InputGadget& input : its.inputs) {
    ScriptedLink::Of(LinkOf(input)).content.show = [](const LinkRead& read) {
      return Vector{read.uvw.x, read.uvw.y, 0.3f};
    };
  }
  Edit([&](FakeDialog& dialog) {
    dialog.Set(its.previewObject, 0);
    ASSERT_TRUE(host.dialogs.RunPass());
    FakeArea& area = dialog.Area(its.preview);
    area.Draw();
    for (std::int32_t y = 0; y < 6; ++y) {
      for (std::int32_t x = 0; x < 8; ++x) {
        ChannelSample sample = {};
        sample.uvw = {static_cast<float>(x) / 8, static_cast<float>(y) / 6, 0};
        sample.delta = {0.5f / 8, 0.5f / 6, 0};
        sample.normal = {0, 1, 0};
        sample.blurScale = 1;
        const Vector colour = shader.Output(sample);
        // The host limits what Distorter reads beyond the unit square.
        const auto byte = [](float c) { return std::min(static_cast<int>(c * 255.99), 255); };
        const FakePixel expected = {byte(colour.x), byte(colour.y), byte(colour.z)};
        ASSERT_EQ(area.drawn.at(0).bitmap->At(x, y), expected) << x << " " << y;
      }
    }
  });
}

TEST_P(FilterDialogTest, CancellingLeavesTheBlockWordForWord) {
  const std::vector<std::uint32_t> before = Words(its.blockSize);
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              for (auto& [id, gadget] : dialog.gadgets) {
                if (gadget.kind == FakeGadget::Kind::Real) dialog.Set(id, gadget.minimum);
                if (gadget.kind == FakeGadget::Kind::Switch) dialog.Set(id, 1 - gadget.integer);
                if (gadget.kind == FakeGadget::Kind::Int) dialog.Set(id, 2);
              }
              dialog.Key('M', kControl);
              dialog.Key('R', kControl | kShift);
            }),
            0);
  EXPECT_EQ(Words(its.blockSize), before);
}

TEST_P(FilterDialogTest, MissingResourcesAreToldByName) {
  host.failResources = true;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL() << "the dialog opened"; }), 0);
  const std::string call = std::string("messageDialog(\"Unable to find dialog resources for ") +
                           "sorvaNIX " + its.textName + "\", 48)";
  EXPECT_EQ(std::count(host.calls.begin(), host.calls.end(), call), 1);
}

TEST_P(FilterDialogTest, AnInputThatIsStoppedLeavesThePreviewMarked) {
  At<std::int32_t>(its.changed) = 1;
  Edit([&](FakeDialog& dialog) {
    ASSERT_TRUE(host.dialogs.RunPass(2));
    dialog.Confirm();
  });
  EXPECT_EQ(At<std::int32_t>(its.changed), 1);
  Edit([&](FakeDialog& dialog) {
    ASSERT_TRUE(host.dialogs.RunPass());
    dialog.Confirm();
  });
  EXPECT_EQ(At<std::int32_t>(its.changed), 0);
}

}  // namespace
}  // namespace sorvanix::test
