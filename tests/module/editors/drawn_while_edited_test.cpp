// Previews on a real thread while the user edits: for the sanitizer that looks for races.
#include "tests/module/editors/filter_editors.h"
#include "tests/module/editors/ramp_editors.h"

namespace sorvanix::test {
namespace {

constexpr FakePicture kLargeEnough = {48, 48};

struct RampDrawnWhileEdited : RampEditorTest {
  // In a full ramp nothing is dragged: the moves are then left over.
  void TryToDrag(FakeArea& area, std::int32_t x, std::int32_t y,
                 const std::vector<std::pair<std::int32_t, std::int32_t>>& moves) {
    for (const auto& [toX, toY] : moves) host.dialogs.drag.push_back({toX, toY, 0});
    area.Mouse(x, y);
    host.dialogs.drag.clear();
  }
};

INSTANTIATE_TEST_SUITE_P(Dialogs, RampDrawnWhileEdited, testing::ValuesIn(kRampEditors), NameOf);

TEST_P(RampDrawnWhileEdited, ByMouseWheelKeysAndGadgets) {
  host.dialogs.threads = FakeDialogs::Threads::Real;
  host.dialogs.areaSizes[its.preview] = kLargeEnough;
  host.recordReads = false;
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              FakeArea& area = dialog.Area(its.area);
              for (int i = 0; i < 60; ++i) {
                const std::int32_t x = 10 + i * 7;
                TryToDrag(area, x, 18, {{x + 20, 18}, {x + 60, 30}, {x, i % 3 == 0 ? 90 : 30}});
                TryToDrag(area, 119, 6, {{96, 6}, {140, 6}});
                area.Wheel(i % 2 == 0 ? 240 : -240);
                for (const float value : {0.25f, 0.5f, 0.75f}) dialog.Set(its.value, value, true);
                dialog.Set(its.interpolation, i % 5);
                dialog.Key(i % 4 == 0 ? +'I' : +KeyRight, kControl);
                area.Draw();
                dialog.Area(its.preview).Draw();
              }
              dialog.Confirm();
            }),
            1);
}

struct FilterDrawnWhileEdited : EditorTest, testing::WithParamInterface<FilterEditor> {
  FilterDrawnWhileEdited() : EditorTest(GetParam().pluginId, GetParam().dialog) {}
  const FilterEditor& its = GetParam();
};

INSTANTIATE_TEST_SUITE_P(Dialogs, FilterDrawnWhileEdited, testing::ValuesIn(kFilterEditors),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(FilterDrawnWhileEdited, ByEveryGadgetAndKey) {
  host.dialogs.threads = FakeDialogs::Threads::Real;
  host.dialogs.areaSizes[its.preview] = kLargeEnough;
  host.recordReads = false;
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              for (int i = 0; i < 20; ++i) {
                const bool dragging = i % 5 != 0;
                for (auto& [id, gadget] : dialog.gadgets) {
                  if (gadget.kind == FakeGadget::Kind::Real) {
                    dialog.Set(id, static_cast<float>(i) / 20, dragging);
                  }
                  if (id == its.previewObject) continue;
                  if (gadget.kind == FakeGadget::Kind::Int) dialog.Set(id, i % 3, dragging);
                  if (gadget.kind == FakeGadget::Kind::Switch) dialog.Set(id, i % 2, dragging);
                }
                for (const InputGadget& input : its.inputs) {
                  ScriptedLink::Of(dialog[input.id].link).content.colour = {1, 0.1f, 0};
                  dialog.Press(input.id);
                }
                if (i % 6 == 0) dialog.Key('M', kControl);
                if (i % 6 == 3) dialog.Key('R', kControl);
                dialog.Area(its.preview).Draw();
              }
              dialog.Confirm();
            }),
            1);
}

}  // namespace
}  // namespace sorvanix::test
