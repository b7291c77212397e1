// The live preview, told on 2D Noise: the flat picture, its frame, when it is drawn and stopped.
#include <set>

#include "tests/module/editors/preview_fixture.h"

namespace sorvanix::test {
namespace {

constexpr FakePixel kRed = {255, 0, 0};
constexpr FakePixel kBlack = {0, 0, 0};

// --- the flat picture ---

// Each component times 255.99, truncated, at uvw (x / w, y / h).
TEST_F(PreviewTest, ShowsTheShadersOwnColours) {
  block.colorLow = {0.2f, 0, 1};
  block.colorHigh = {1, 0.7f, 0};
  Edit([&](FakeDialog& dialog) {
    ASSERT_TRUE(host.dialogs.RunPass());
    const FakeBitmap& picture = Picture(dialog);
    ASSERT_EQ(picture.width, 16);
    ASSERT_EQ(picture.height, 12);
    EXPECT_EQ(picture.depth, 24);
    for (std::int32_t y = 0; y < 12; ++y) {
      for (std::int32_t x = 0; x < 16; ++x) {
        ChannelSample sample = {};
        sample.uvw = {static_cast<float>(x) / 16, static_cast<float>(y) / 12, 0};
        sample.normal = {0, 1, 0};
        sample.delta = {0.5f / 16, 0.5f / 12, 0};
        sample.blurScale = 1;
        const Vector colour = shader.Output(sample);
        const FakePixel expected = {static_cast<int>(colour.x * 255.99),
                                    static_cast<int>(colour.y * 255.99),
                                    static_cast<int>(colour.z * 255.99)};
        EXPECT_EQ(picture.At(x, y), expected) << x << ", " << y;
      }
    }
  });
}

// 1 gives 255 (255.99 truncated); the host limits what lies beyond the bytes; NaN is black.
TEST_F(PreviewTest, ColoursBecomeBytes) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  block.colorLow = block.colorHigh = {1, 0.5f, -3};
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    EXPECT_EQ(Picture(dialog).At(3, 3), (FakePixel{255, 127, 0}));
    dialog.Set(19017, Vector{3e38f, nan, -3e38f});
    dialog.Set(19018, Vector{3e38f, nan, -3e38f});
    host.dialogs.RunPass();
    EXPECT_EQ(Picture(dialog).At(3, 3), (FakePixel{255, 0, 0}));
  });
}

TEST_F(PreviewTest, AFinishedPictureIsNoLongerDirty) {
  block.previewDirty = 1;
  EXPECT_EQ(DirtyAfter([&](FakeDialog&) { host.dialogs.RunPass(); }), 0);
}

TEST_F(PreviewTest, StoppingInTheMiddleLeavesItDirtyAndHalfPainted) {
  block.previewDirty = 1;
  block.colorLow = block.colorHigh = {1, 1, 1};
  EXPECT_EQ(DirtyAfter([&](FakeDialog& dialog) {
              FakeArea& area = dialog.Area(kPreviewArea);
              const int redraws = area.redraws;
              host.dialogs.RunPass(5);
              EXPECT_EQ(area.redraws, redraws) << "an unfinished picture is not shown";
              const FakeBitmap& picture = Picture(dialog);
              EXPECT_EQ(picture.At(0, 4), (FakePixel{255, 255, 255}));
              EXPECT_EQ(picture.At(0, 5), kBlack);
            }),
            1);
}

TEST_F(PreviewTest, APictureWithoutWidthOrHeightDrawsNothing) {
  for (const FakePicture& size : {FakePicture{0, 12}, FakePicture{16, 0}, FakePicture{0, 0}}) {
    host.dialogs.areaSizes[kPreviewArea] = size;
    block.previewDirty = 1;
    EXPECT_EQ(DirtyAfter([&](FakeDialog& dialog) {
                host.dialogs.RunPass();
                EXPECT_EQ(dialog.Area(kPreviewArea).redraws, 0);
              }),
              1);
    EXPECT_TRUE(noiseCalls.empty());
  }
}

TEST_F(PreviewTest, AHostWithoutBitmapsOrThreadsShowsNoPreview) {
  host.failBitmap = 1;  // areas come to be in the order of their ids: the preview first
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(host.dialogs.threadsStarted, 0);
    EXPECT_TRUE(dialog.Area(kPreviewArea).Draw());
    EXPECT_TRUE(dialog.Area(kPreviewArea).drawn.empty());
  });
  host.dialogs.threads = FakeDialogs::Threads::None;
  EXPECT_EQ(Edit([](FakeDialog& dialog) { dialog.Confirm(); }), 1);
  EXPECT_TRUE(noiseCalls.empty());
}

TEST_F(PreviewTest, AnAreaOfAnotherSizeGetsAPictureOfThatSize) {
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    dialog.Area(kPreviewArea).width = 20;
    EXPECT_EQ(Picture(dialog).width, 20);
    EXPECT_TRUE(host.dialogs.RunPass());
    EXPECT_NE(Picture(dialog).At(19, 11), kBlack);
  });
}

// A pass sees each row of the block as it is when the row begins.
TEST_F(PreviewTest, TheBlockIsReadAnewForEachRow) {
  block.colorLow = block.colorHigh = {0, 0, 0};
  static FakeDialog* open;
  static int calls;
  calls = 0;
  host.render.unitNoiseAt = [](const Vector*, float) noexcept {
    // In the middle of the third row the user drags a colour.
    if (++calls == 2 * 16 + 8) {
      open->Set(19017, Vector{1, 1, 1}, true);
      open->Set(19018, Vector{1, 1, 1}, true);
    }
    return 0.5f;
  };
  Edit([&](FakeDialog& dialog) {
    open = &dialog;
    host.dialogs.RunPass();
    const FakeBitmap& picture = Picture(dialog);
    EXPECT_EQ(picture.At(15, 2), kBlack);
    EXPECT_EQ(picture.At(0, 3), (FakePixel{255, 255, 255}));
  });
}

// --- the frame ---

// In a picture of 16 x 12: columns 2, 3, 12 and 13 and rows 2, 3, 8 and 9, from 2 up to the size
// less 3.
TEST_F(PreviewTest, ARedFrameTellsThatAPictureIsOnItsWay) {
  block.previewObject = 1;
  host.documents.renderAnswer = 1;
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    EXPECT_EQ(dialog.Area(kPreviewArea).redraws, 1);
    const FakeBitmap& picture = Picture(dialog);
    const std::set<int> columns = {2, 3, 12, 13};
    const std::set<int> rows = {2, 3, 8, 9};
    for (int y = 0; y < 12; ++y) {
      for (int x = 0; x < 16; ++x) {
        const bool inside = x >= 2 && x <= 13 && y >= 2 && y <= 9;
        const bool framed = inside && (columns.count(x) != 0 || rows.count(y) != 0);
        EXPECT_EQ(picture.At(x, y), framed ? kRed : kBlack) << x << ", " << y;
      }
    }
  });
}

TEST_F(PreviewTest, AFlatPictureHasTheFrameUnlessItIsAnimated) {
  const auto frames = [&](std::int32_t animated) {
    block.previewTile = animated;
    int redraws = 0;
    Edit([&](FakeDialog& dialog) {
      host.dialogs.RunPass(1);  // stopped after a row: only the frame is shown
      redraws = dialog.Area(kPreviewArea).redraws;
      EXPECT_EQ(Picture(dialog).At(5, 3) == kRed, animated == 0);
    });
    return redraws;
  };
  EXPECT_EQ(frames(0), 1);
  EXPECT_EQ(frames(1), 0);
}

TEST_F(PreviewTest, AFrameFitsIntoATinyPicture) {
  block.previewTile = 0;
  for (int size = 1; size <= 9; ++size) {
    host.dialogs.areaSizes[kPreviewArea] = {size, size};
    Edit([&](FakeDialog& dialog) {
      host.dialogs.RunPass(1);
      EXPECT_EQ(Picture(dialog).At(2, 2) == kRed, size >= 5) << size;
    });
  }
}

// --- when it is drawn ---

TEST_F(PreviewTest, AChangeStopsThePassAndStartsAnother) {
  Edit([&](FakeDialog& dialog) {
    FakeThread* first = host.dialogs.thread;
    ASSERT_NE(first, nullptr);
    dialog.Set(19002, 3.0f);
    EXPECT_EQ(host.dialogs.threadsStarted, 2);
    EXPECT_TRUE(host.dialogs.RunPass());
  });
}

// The switch for drawing by itself is one of scenes; a flat picture always follows.
TEST_F(PreviewTest, WithoutAutomaticASceneWaitsForAClick) {
  block.previewAuto = 0;
  Edit([&](FakeDialog& dialog) {
    dialog.Set(19002, 3.0f);
    EXPECT_EQ(host.dialogs.threadsStarted, 2);
    dialog.Set(19039, 1);
    EXPECT_EQ(host.dialogs.thread, nullptr) << "the flat pass is stopped";
    dialog.Set(19002, 4.0f);
    EXPECT_EQ(host.dialogs.threadsStarted, 2);
    EXPECT_TRUE(dialog.Area(kPreviewArea).Mouse(3, 3));
    EXPECT_EQ(host.dialogs.threadsStarted, 3);
    dialog.Set(19040, 1);
    EXPECT_EQ(host.dialogs.threadsStarted, 4);
  });
}

// --- animation ---

// Each tick adds a tenth of a second. The time is multiplied by the speed twice, once here and once
// by the shader: deliberate.
TEST_F(PreviewTest, TheTimerMovesTheFlatPictureByTheSquareOfTheSpeed) {
  block.speed = 3;
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog.Area(kPreviewArea).timer, 100);
    host.dialogs.RunPass();
    EXPECT_EQ(noiseCalls.back().time, 0);
    dialog.Area(kPreviewArea).Tick();
    ASSERT_TRUE(host.dialogs.RunPass());
    EXPECT_FLOAT_EQ(noiseCalls.back().time, 0.1f * 9);
    dialog.Area(kPreviewArea).Tick();
    ASSERT_TRUE(host.dialogs.RunPass());
    EXPECT_FLOAT_EQ(noiseCalls.back().time, 0.2f * 9);
  });
}

TEST_F(PreviewTest, TheTimerRestsWithoutSpeedAnimationOrAFlatPicture) {
  const auto starts = [&](float speed, std::int32_t animated, std::int32_t object) {
    block.speed = speed;
    block.previewTile = animated;
    block.previewObject = object;
    int started = 0;
    Edit([&](FakeDialog& dialog) {
      host.dialogs.RunPass();
      started = host.dialogs.threadsStarted;
      dialog.Area(kPreviewArea).Tick();
      started = host.dialogs.threadsStarted - started;
    });
    return started;
  };
  EXPECT_EQ(starts(1, 1, 0), 1);
  EXPECT_EQ(starts(0, 1, 0), 0);
  EXPECT_EQ(starts(-1, 1, 0), 0);
  EXPECT_EQ(starts(std::numeric_limits<float>::quiet_NaN(), 1, 0), 0);
  EXPECT_EQ(starts(1, 0, 0), 0);
  EXPECT_EQ(starts(1, 1, 2), 0);
}

// A picture that takes longer than a tick would never be seen otherwise.
TEST_F(PreviewTest, ATickLetsAPictureFinish) {
  block.speed = 1;
  Edit([&](FakeDialog& dialog) {
    FakeThread* running = host.dialogs.thread;
    dialog.Area(kPreviewArea).Tick();
    dialog.Area(kPreviewArea).Tick();
    EXPECT_EQ(host.dialogs.thread, running);
    host.dialogs.RunPass();
    dialog.Area(kPreviewArea).Tick();
    host.dialogs.RunPass();
    EXPECT_FLOAT_EQ(noiseCalls.back().time, 0.3f);
  });
}

// --- several threads: for the sanitizer that looks for races ---

TEST_F(PreviewTest, ADialogIsEditedWhileItsPreviewIsDrawn) {
  host.dialogs.threads = FakeDialogs::Threads::Real;
  host.dialogs.areaSizes[kPreviewArea] = {64, 64};
  host.render.unitNoiseAt = [](const Vector* p, float) noexcept { return p->x; };
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              for (int i = 0; i < 200; ++i) {
                const bool dragging = i % 10 != 0;
                const auto step = static_cast<float>(i) / 200;
                dialog.Set(19009, step, dragging);
                dialog.Set(19017, Vector{step, 1, 0}, dragging);
                dialog.Set(19003, 1 + step, dragging);
                if (i % 50 == 0) dialog.Set(19039, i / 50 % 3, false);
                if (i % 20 == 0) dialog.Key(i % 40 == 0 ? 'M' : 'R', kControl);
                dialog.Area(kPreviewArea).Tick();
                dialog.Area(kPreviewArea).Draw();
              }
              dialog.Confirm();
            }),
            1);
}

}  // namespace
}  // namespace sorvanix::test
