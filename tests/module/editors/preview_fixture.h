// What the tests of previews share: 2D Noise with a preview of 16 x 12 pixels.
#pragma once

#include <cmath>

#include "module/shaders/generators/noise_2d.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {

inline constexpr std::int32_t kPreviewArea = 19021;

/// What the scripted noise of the host saw.
struct NoiseCall {
  Vector point;
  float time;
};
inline std::vector<NoiseCall> noiseCalls;

struct PreviewTest : EditorTest {
  PreviewTest() : EditorTest(PluginIdNoise2D, 19000) {
    host.dialogs.areaSizes[kPreviewArea] = {16, 12};
    noiseCalls.clear();
    // The noise type of a new block is the host's unit noise at the point.
    host.render.unitNoiseAt = [](const Vector* p, float time) noexcept {
      noiseCalls.push_back({*p, time});
      return 0.5f + 0.25f * std::sin(p->x) * std::cos(p->y);
    };
    // The animated flat picture has no frame, which many tests would only have to look past.
    block.previewTile = 1;
  }
  Noise2DBlock& block = shader.block<Noise2DBlock>();

  // The picture of a preview, drawn into its area.
  static const FakeBitmap& Picture(FakeDialog& dialog) {
    FakeArea& area = dialog.Area(kPreviewArea);
    EXPECT_TRUE(area.Draw());
    return *area.drawn.at(0).bitmap;
  }
  // The mark of the working copy, as confirming brings it back.
  std::int32_t DirtyAfter(Script script) {
    Edit([&](FakeDialog& dialog) {
      script(dialog);
      dialog.Confirm();
    });
    return block.previewDirty;
  }
};

}  // namespace sorvanix::test
