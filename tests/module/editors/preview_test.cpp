// The live preview, told on 2D Noise: the flat picture, the scenes, when it is drawn and stopped.
#include <cmath>

#include "module/shaders/generators/noise_2d.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

constexpr std::int32_t kArea = 19021;
constexpr FakePixel kRed = {255, 0, 0};
constexpr FakePixel kBlack = {0, 0, 0};

// What the scripted noise of the host saw.
struct NoiseCall {
  Vector point;
  float time;
};
std::vector<NoiseCall> noiseCalls;

struct PreviewTest : EditorTest {
  PreviewTest() : EditorTest(PluginIdNoise2D, 19000) {
    host.dialogs.areaSizes[kArea] = {16, 12};
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
    FakeArea& area = dialog.Area(kArea);
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
              FakeArea& area = dialog.Area(kArea);
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
    host.dialogs.areaSizes[kArea] = size;
    block.previewDirty = 1;
    EXPECT_EQ(DirtyAfter([&](FakeDialog& dialog) {
                host.dialogs.RunPass();
                EXPECT_EQ(dialog.Area(kArea).redraws, 0);
              }),
              1);
    EXPECT_TRUE(noiseCalls.empty());
  }
}

TEST_F(PreviewTest, AHostWithoutBitmapsOrThreadsShowsNoPreview) {
  host.failBitmap = 1;  // areas come to be in the order of their ids: the preview first
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(host.dialogs.threadsStarted, 0);
    EXPECT_TRUE(dialog.Area(kArea).Draw());
    EXPECT_TRUE(dialog.Area(kArea).drawn.empty());
  });
  host.dialogs.threads = FakeDialogs::Threads::None;
  EXPECT_EQ(Edit([](FakeDialog& dialog) { dialog.Confirm(); }), 1);
  EXPECT_TRUE(noiseCalls.empty());
}

TEST_F(PreviewTest, AnAreaOfAnotherSizeGetsAPictureOfThatSize) {
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    dialog.Area(kArea).width = 20;
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
    EXPECT_EQ(dialog.Area(kArea).redraws, 1);
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
      redraws = dialog.Area(kArea).redraws;
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
    host.dialogs.areaSizes[kArea] = {size, size};
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
    EXPECT_TRUE(dialog.Area(kArea).Mouse(3, 3));
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
    EXPECT_EQ(dialog.Area(kArea).timer, 100);
    host.dialogs.RunPass();
    EXPECT_EQ(noiseCalls.back().time, 0);
    dialog.Area(kArea).Tick();
    ASSERT_TRUE(host.dialogs.RunPass());
    EXPECT_FLOAT_EQ(noiseCalls.back().time, 0.1f * 9);
    dialog.Area(kArea).Tick();
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
      dialog.Area(kArea).Tick();
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
    dialog.Area(kArea).Tick();
    dialog.Area(kArea).Tick();
    EXPECT_EQ(host.dialogs.thread, running);
    host.dialogs.RunPass();
    dialog.Area(kArea).Tick();
    host.dialogs.RunPass();
    EXPECT_FLOAT_EQ(noiseCalls.back().time, 0.3f);
  });
}

// --- scenes ---

struct ScenePreviewTest : PreviewTest {
  ScenePreviewTest() { block.previewObject = 3; }

  Word Setting(std::int32_t key) {
    const FakeValue* value = host.documents.renders.back().settings.Find(key);
    return value == nullptr ? -1 : std::get<Word>(*value);
  }
};

TEST_F(ScenePreviewTest, RendersTheShaderOnTheObject) {
  block.octaves = 8.5f;
  block.nested = 1;
  block.previewState = 6;
  block.previewDirty = 1;
  int seen = 0;
  host.documents.onRender = [&](const FakeRender& render, HostBitmap*) {
    ++seen;
    ASSERT_NE(render.material, nullptr);
    EXPECT_EQ(render.material->type, 5703);
    EXPECT_TRUE(render.materialInserted);
    EXPECT_EQ(render.material->enabled,
              (std::map<std::int32_t, bool>{{0, false}, {1, true}, {8, false}}));
    const LinkContent& content = render.material->links.at(1)->content;
    EXPECT_EQ(content.pluginId, 1001231);
    const auto& shown = *static_cast<const Noise2DBlock*>(content.instance->data);
    EXPECT_EQ(shown.octaves, 8.5f);
    EXPECT_EQ(shown.previewObject, 3);
    EXPECT_EQ(shown.previewState, 6);
    EXPECT_EQ(shown.reserved21, 1) << "the mark of a copy in a preview scene";
    EXPECT_EQ(shown.nested, 0) << "the copy stands alone";
  };
  EXPECT_EQ(DirtyAfter([&](FakeDialog& dialog) {
              host.dialogs.RunPass();
              EXPECT_EQ(dialog.Area(kArea).redraws, 2) << "the frame, then the picture";
            }),
            0);
  EXPECT_EQ(seen, 1);
  EXPECT_EQ(block.reserved21, 0);
  EXPECT_TRUE(noiseCalls.empty());
}

TEST_F(ScenePreviewTest, AsksForTheSizeAndTheQualityOfThePicture) {
  for (const std::int32_t automatic : {1, 0}) {
    block.previewAuto = automatic;
    Edit([&](FakeDialog&) { host.dialogs.RunPass(); });
    EXPECT_EQ(Setting(5008), 16);
    EXPECT_EQ(Setting(5009), 12);
    EXPECT_EQ(Setting(5002), automatic != 0 ? 2 : 0);
    EXPECT_TRUE(std::get<bool>(*host.documents.renders.back().settings.Find(5067)));
  }
}

TEST_F(ScenePreviewTest, ARenderThatFailsLeavesItDirty) {
  block.previewDirty = 1;
  host.documents.renderAnswer = 5;
  EXPECT_EQ(DirtyAfter([&](FakeDialog& dialog) {
              host.dialogs.RunPass();
              EXPECT_EQ(dialog.Area(kArea).redraws, 1);
              EXPECT_EQ(host.documents.liveMaterials, 0);
            }),
            1);
}

TEST_F(ScenePreviewTest, WithoutAnInstanceTheMaterialIsFreedAndNothingRendered) {
  block.previewDirty = 1;
  host.failLinkedShader = true;
  EXPECT_EQ(DirtyAfter([&](FakeDialog&) {
              host.dialogs.RunPass();
              EXPECT_NE(host.documents.lastMaterial, nullptr);
              EXPECT_EQ(host.documents.liveMaterials, 0);
            }),
            1);
  EXPECT_TRUE(host.documents.renders.empty());
}

TEST_F(ScenePreviewTest, ASceneWithoutTheObjectIsRenderedAsItIs) {
  host.documents.objectName = "Subject";
  host.documents.onRender = [](const FakeRender& render, HostBitmap*) {
    EXPECT_EQ(render.material, nullptr);
  };
  Edit([&](FakeDialog&) { host.dialogs.RunPass(); });
  EXPECT_EQ(host.documents.renders.size(), 1u);
}

TEST_F(ScenePreviewTest, TheTagOfAnEarlierPassIsUsedAgain) {
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    dialog.Set(19002, 3.0f);
    host.dialogs.RunPass();
    EXPECT_EQ(host.documents.textureTags.size(), 1u);
  });
  EXPECT_EQ(host.documents.renders.size(), 2u);
}

// The new scene takes the place of the former one, which is freed; a flat picture keeps it.
TEST_F(ScenePreviewTest, AnotherObjectLoadsItsScene) {
  Edit([&](FakeDialog& dialog) {
    host.documents.asked.clear();
    dialog.Set(19039, 5);
    EXPECT_EQ(host.documents.asked,
              std::vector<std::string>{"/plugins/Resources/Preview_Torus_C.c4d"});
    EXPECT_EQ(host.documents.liveScenes, 1);
    dialog.Set(19039, 0);
    EXPECT_EQ(host.documents.asked.size(), 1u);
    EXPECT_EQ(host.documents.liveScenes, 1);
  });
}

TEST_F(ScenePreviewTest, ASceneThatIsGoneShowsNothing) {
  Edit([&](FakeDialog& dialog) {
    host.documents.files.clear();
    dialog.Set(19039, 4);
    EXPECT_EQ(host.documents.liveScenes, 0);
    host.dialogs.RunPass();
  });
  EXPECT_TRUE(host.documents.renders.empty());
}

// --- several threads: for the sanitizer that looks for races ---

TEST_F(PreviewTest, ADialogIsEditedWhileItsPreviewIsDrawn) {
  host.dialogs.threads = FakeDialogs::Threads::Real;
  host.dialogs.areaSizes[kArea] = {64, 64};
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
                dialog.Area(kArea).Tick();
                dialog.Area(kArea).Draw();
              }
              dialog.Confirm();
            }),
            1);
}

}  // namespace
}  // namespace sorvanix::test
