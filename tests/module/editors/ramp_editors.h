// The four dialogs with a ramp, as tests go through them.
#pragma once

#include <ostream>

#include "module/shaders/filters/colorizer.h"
#include "module/shaders/generators/gradient.h"
#include "module/shaders/surface/falloff.h"
#include "module/shaders/surface/fresnel.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {

struct RampEditor {
  const char* name;
  std::int32_t pluginId, dialog, area, value, interpolation, preview, title;
  std::size_t blockSize, ramp, changed;
  friend void PrintTo(const RampEditor& editor, std::ostream* out) { *out << editor.name; }
};

inline constexpr RampEditor kRampEditors[] = {
    {"Gradient", PluginIdGradient, 18000, 18001, 18002, 18003, 18019, 18020, sizeof(GradientBlock),
     offsetof(GradientBlock, ramp), offsetof(GradientBlock, changed)},
    {"Falloff", PluginIdFalloff, 20000, 20001, 20003, 20004, 20011, 20012, sizeof(FalloffBlock),
     offsetof(FalloffBlock, ramp), offsetof(FalloffBlock, changed)},
    {"Fresnel", PluginIdFresnel, 27000, 27001, 27002, 27003, 27005, 27006, sizeof(FresnelBlock),
     offsetof(FresnelBlock, ramp), offsetof(FresnelBlock, changed)},
    {"Colorizer", PluginIdColorizer, 17000, 17001, 17002, 17003, 17015, 17014,
     sizeof(ColorizerBlock), offsetof(ColorizerBlock, ramp), offsetof(ColorizerBlock, changed)},
};

/// A shader with a ramp from black over red at 0.5 to yellow at 1, straight in between: pixels 4,
/// trunc(461 * 0.5 + 4) = 234 and 465. The first knot is selected.
struct RampEditorTest : EditorTest, ::testing::WithParamInterface<RampEditor> {
  RampEditorTest() : EditorTest(GetParam().pluginId, GetParam().dialog) {
    ramp.knots[0].colour = {0, 0, 0};
    ramp.knots[1].colour = {1, 0, 0};
    ramp.knots[2].colour = {1, 1, 0};
    ramp.interpolation = RampLinear;
  }
  const RampEditor& its = GetParam();
  Ramp& ramp = At<Ramp>(its.ramp);

  /// Edit with a script that is confirmed at its end.
  void EditAndConfirm(const std::function<void(FakeDialog&, FakeArea&)>& script) {
    ASSERT_EQ(Edit([&](FakeDialog& dialog) {
                script(dialog, dialog.Area(its.area));
                dialog.Confirm();
              }),
              1);
  }
  /// A press, the moves of the held mouse, and the release.
  void Drag(FakeArea& area, std::int32_t x, std::int32_t y,
            const std::vector<std::pair<std::int32_t, std::int32_t>>& moves) {
    for (const auto& [toX, toY] : moves) host.dialogs.drag.push_back({toX, toY, 0});
    EXPECT_TRUE(area.Mouse(x, y));
    EXPECT_TRUE(host.dialogs.drag.empty());
  }
};

/// Counts what follows a change.
struct GradientAreaTest : RampEditorTest {
  bool showsPosition = its.pluginId == PluginIdColorizer;  // never a bias

  // How many passes of the preview a change began.
  int PassesOf(const std::function<void()>& change) {
    const int before = host.dialogs.threadsStarted;
    change();
    return host.dialogs.threadsStarted - before;
  }
  // Whether a session marks the preview as out of date.
  bool Marks(const std::function<void(FakeDialog&, FakeArea&)>& script) {
    host.dialogs.threads = FakeDialogs::Threads::None;
    At<std::int32_t>(its.changed) = 0;
    EditAndConfirm(script);
    return At<std::int32_t>(its.changed) != 0;
  }
};

inline std::string NameOf(const ::testing::TestParamInfo<RampEditor>& info) {
  return info.param.name;
}

}  // namespace sorvanix::test
