// What the dialogs of all shaders share, told on 2D Noise: opening, confirming, cancelling, drags,
// and what becomes of all that a dialog makes.
#include <algorithm>

#include "module/shaders/generators/noise_2d.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

constexpr std::int32_t kTitleArea = 19022;
constexpr std::int32_t kPreviewArea = 19021;

struct ShaderDialogTest : EditorTest {
  ShaderDialogTest() : EditorTest(PluginIdNoise2D, 19000) {}
  Noise2DBlock& block = shader.block<Noise2DBlock>();

  // All that a dialog makes is gone.
  void ExpectNothingLeft(int blocks, int texts) {
    EXPECT_EQ(host.dialogs.live, 0);
    EXPECT_EQ(host.dialogs.thread, nullptr);
    EXPECT_EQ(host.documents.liveScenes, 0);
    EXPECT_EQ(host.documents.liveMaterials, 0);
    EXPECT_TRUE(host.bitmaps.empty());
    EXPECT_EQ(host.liveContainers, 0);
    EXPECT_EQ(host.liveBlocks(), blocks);
    EXPECT_EQ(host.liveTexts(), texts);
  }
};

TEST_F(ShaderDialogTest, OpensItsLayoutWhereTheHostLikes) {
  Edit([](FakeDialog& dialog) {
    EXPECT_EQ(dialog.resource, 19000);
    EXPECT_EQ(dialog.x, -1);
    EXPECT_EQ(dialog.y, -1);
    EXPECT_EQ(dialog.areas.count(kTitleArea), 1u);
    EXPECT_EQ(dialog.areas.count(kPreviewArea), 1u);
  });
  EXPECT_EQ(host.dialogs.opened, std::vector<std::int32_t>{19000});
}

TEST_F(ShaderDialogTest, TheResourcesOpenedForItAreClosedBeforeTheUserActs) {
  host.calls.clear();
  Edit([&](FakeDialog&) {
    const auto count = [&](const char* call) {
      return std::count(host.calls.begin(), host.calls.end(), call);
    };
    EXPECT_EQ(count("openResources(\"/plugins\")"), 1);
    EXPECT_EQ(count("closeResources"), 1);
  });
}

TEST_F(ShaderDialogTest, CancellingLeavesTheBlockWordForWord) {
  block.scale = -0.0f;
  block.nested = 1;
  const auto before = Words(sizeof(Noise2DBlock));
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              dialog.Set(19001, 3);
              dialog.Set(19002, 4.0f);
              dialog.Set(19017, Vector{1, 1, 0});
              dialog.Key('M', kControl);
              dialog.Key('R', kControl | kShift);
            }),
            0);
  EXPECT_EQ(Words(sizeof(Noise2DBlock)), before);
}

// Nothing that no gadget shows changes, not even the mark of an input.
TEST_F(ShaderDialogTest, ConfirmingAnUntouchedDialogLeavesTheBlockWordForWord) {
  block.scale = 0;
  block.nested = 1;
  block.reserved25[0] = 77;
  const auto before = Words(sizeof(Noise2DBlock));
  EXPECT_EQ(Edit([](FakeDialog& dialog) { dialog.Confirm(); }), 1);
  EXPECT_EQ(Words(sizeof(Noise2DBlock)), before);
}

TEST_F(ShaderDialogTest, ConfirmingTakesAllChangesOver) {
  EXPECT_EQ(Edit([&](FakeDialog& dialog) {
              dialog.Set(19001, 3);
              dialog.Set(19006, 2.5f);
              EXPECT_EQ(block.noiseType, 12) << "the dialog works on a copy";
              dialog.Confirm();
            }),
            1);
  EXPECT_EQ(block.noiseType, 3);
  EXPECT_EQ(block.speed, 2.5f);
}

TEST_F(ShaderDialogTest, AnInstanceWithoutABlockHasNoDialog) {
  ShaderInstance none = {};
  EXPECT_EQ(shader.record.Edit(&none), 0);
  EXPECT_TRUE(host.dialogs.opened.empty());
  EXPECT_TRUE(host.documents.asked.empty());
}

TEST_F(ShaderDialogTest, APreviewSceneThatCannotBeLoadedEndsItWithoutAMessage) {
  host.documents.files.clear();
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
  EXPECT_EQ(host.documents.asked,
            std::vector<std::string>{"/plugins/Resources/Preview_Sphere_C.c4d"});
  EXPECT_TRUE(host.messages.empty());
}

// 0 and 1 the sphere, then cube, plane, cylinder and torus.
TEST_F(ShaderDialogTest, TheSceneFollowsThePreviewObject) {
  const char* const names[] = {"Sphere", "Sphere", "Cube", "Plane", "Cylinder", "Torus"};
  for (std::int32_t object = 0; object <= 5; ++object) {
    block.previewObject = object;
    host.documents.asked.clear();
    EXPECT_EQ(Edit([](FakeDialog& dialog) { dialog.Confirm(); }), 1);
    const std::string file = std::string("/plugins/Resources/Preview_") + names[object] + "_C.c4d";
    EXPECT_EQ(host.documents.asked, std::vector<std::string>{file});
  }
}

TEST_F(ShaderDialogTest, AnObjectBeyondTheListTriesTheBareFolder) {
  for (const std::int32_t object : {6, 1000, -1}) {
    block.previewObject = object;
    host.documents.asked.clear();
    EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
    EXPECT_EQ(host.documents.asked, std::vector<std::string>{"/plugins/Resources"});
  }
}

TEST_F(ShaderDialogTest, AMissingLayoutIsToldLikeMissingResources) {
  host.dialogs.failLoad = true;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
  EXPECT_EQ(host.messages,
            std::vector<std::string>{"Unable to find dialog resources for sorvaNIX 2D Noise"});
}

TEST_F(ShaderDialogTest, AHostWithoutDialogsOrMemoryAnswersZero) {
  host.dialogs.failCreate = true;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
  host.dialogs.failCreate = false;
  host.failAllocation = 1;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ShaderDialogTest, NothingIsLeftBehind) {
  const int blocks = host.liveBlocks();
  const int texts = host.liveTexts();
  host.pictures["/plugins/Resources/sorvaNIX Logo.tif"] = {4, 4};
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    dialog.Set(19039, 3);
    host.dialogs.RunPass();
    dialog.Area(kTitleArea).Mouse(1, 1);
    dialog.Confirm();
  });
  ExpectNothingLeft(blocks, texts);

  // Nor where it ends early.
  host.failResources = true;
  Edit([](FakeDialog&) {});
  ExpectNothingLeft(blocks, texts);
}

// The preview's thread reads what the dialog holds: it ends before anything goes.
TEST_F(ShaderDialogTest, ThePreviewIsStoppedWhenTheDialogCloses) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_NE(host.dialogs.thread, nullptr);
    dialog.Confirm();
  });
  EXPECT_EQ(host.dialogs.thread, nullptr);
  EXPECT_EQ(host.dialogs.freedWhileDrawing, 0);
}

TEST_F(ShaderDialogTest, AnUnknownGadgetIsNotHandled) {
  Edit([](FakeDialog& dialog) {
    EXPECT_FALSE(dialog.Send(19555, {}));
    EXPECT_FALSE(dialog.Send(0, {}));
  });
}

TEST_F(ShaderDialogTest, ACommandWithoutAValueChangesNothing) {
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              EXPECT_TRUE(dialog.Send(19001, {}));
              EXPECT_TRUE(dialog.Send(19017, {}));
              dialog.Confirm();
            }),
            1);
  EXPECT_EQ(block.noiseType, 12);
}

// --- drags ---

TEST_F(ShaderDialogTest, ADragWritesAtOnceAndDrawsAtItsEnd) {
  Edit([&](FakeDialog& dialog) {
    host.dialogs.RunPass();
    const int before = host.dialogs.threadsStarted;
    dialog.Set(19009, 0.25f, true);
    dialog.Set(19009, 0.5f, true);
    EXPECT_EQ(dialog.Real(19008), 0.5f);
    EXPECT_EQ(host.dialogs.threadsStarted, before);
    // The last message brings the value that the block has already.
    dialog.Set(19009, 0.5f, false);
    EXPECT_EQ(host.dialogs.threadsStarted, before + 1);
    dialog.Confirm();
  });
  EXPECT_EQ(block.contrast, 0.5f);
}

TEST_F(ShaderDialogTest, EnablingWaitsForTheEndOfADrag) {
  Edit([](FakeDialog& dialog) {
    dialog.Set(19001, 1, true);
    EXPECT_FALSE(dialog.Enabled(19002));
    dialog.Set(19001, 1, false);
    EXPECT_TRUE(dialog.Enabled(19002));
  });
}

TEST_F(ShaderDialogTest, OnlyGadgetsOfThePictureDrawAnew) {
  Edit([&](FakeDialog& dialog) {
    const int before = host.dialogs.threadsStarted;
    dialog.Set(19041, 2.0f);
    dialog.Set(19020, 1);
    EXPECT_EQ(host.dialogs.threadsStarted, before);
    dialog.Set(19018, Vector{1, 0, 0});
    EXPECT_EQ(host.dialogs.threadsStarted, before + 1);
  });
}

TEST_F(ShaderDialogTest, KeysDrawThePreviewAnew) {
  Edit([&](FakeDialog& dialog) {
    for (const std::int32_t key : {'R', 'M'}) {
      for (const std::int32_t qualifier : {kControl, kCommand | kAlt}) {
        const int before = host.dialogs.threadsStarted;
        dialog.Key(key, qualifier);
        EXPECT_EQ(host.dialogs.threadsStarted, before + 1);
      }
    }
  });
}

// Revert goes through Copy, whose copies stand alone.
TEST_F(ShaderDialogTest, ARevertedCopyIsNotNested) {
  block.nested = 1;
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              dialog.Key('R', kControl);
              dialog.Confirm();
            }),
            1);
  EXPECT_EQ(block.nested, 0);
}

TEST_F(ShaderDialogTest, RevertBringsBackThePreviewObjectAndItsScene) {
  block.previewObject = 2;
  Edit([&](FakeDialog& dialog) {
    dialog.Set(19039, 5);
    host.documents.asked.clear();
    dialog.Key('R', kControl);
    EXPECT_EQ(dialog.Int(19039), 2);
    EXPECT_EQ(host.documents.asked,
              std::vector<std::string>{"/plugins/Resources/Preview_Cube_C.c4d"});
  });
}

// --- the title ---

struct TitleTest : ShaderDialogTest {
  TitleTest() {
    host.pictures["/plugins/Resources/sorvaNIX Logo.tif"] = {100, 40};
    host.pictures["/plugins/Resources/sorvaNIX Spacer.tif"] = {30, 38};
    host.pictures["/plugins/Resources/2D Noise Title.tif"] = {200, 36};
  }
};

TEST_F(TitleTest, LoadsItsThreePictures) {
  Edit([&](FakeDialog&) {
    EXPECT_EQ(host.picturesAsked,
              (std::vector<std::string>{"/plugins/Resources/sorvaNIX Logo.tif",
                                        "/plugins/Resources/sorvaNIX Spacer.tif",
                                        "/plugins/Resources/2D Noise Title.tif"}));
  });
}

// As wide as the three side by side, as high as the highest.
TEST_F(TitleTest, AsksForTheSizeOfItsPictures) {
  Edit([](FakeDialog& dialog) {
    const auto size = dialog.Area(kTitleArea).MinSize();
    ASSERT_TRUE(size.has_value());
    EXPECT_EQ(size->width, 330);
    EXPECT_EQ(size->height, 40);
  });
}

// In an area of 370 the title starts at 170; the spacer fills 100 to 170 in steps of 30.
TEST_F(TitleTest, DrawsTheLogoTheSpacerAndTheTitle) {
  host.dialogs.areaSizes[kTitleArea] = {370, 40};
  Edit([](FakeDialog& dialog) {
    FakeArea& area = dialog.Area(kTitleArea);
    ASSERT_TRUE(area.Draw());
    std::vector<std::int32_t> places;
    for (const FakeArea::Drawn& drawn : area.drawn) places.push_back(drawn.x);
    EXPECT_EQ(places, (std::vector<std::int32_t>{100, 130, 160, 0, 170}));
    EXPECT_EQ(area.drawn.back().bitmap->file, "/plugins/Resources/2D Noise Title.tif");
  });
}

TEST_F(TitleTest, MissingPicturesLeaveTheirPlaceEmpty) {
  host.pictures.clear();
  Edit([](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Area(kTitleArea).Draw());
    EXPECT_TRUE(dialog.Area(kTitleArea).drawn.empty());
  });
}

TEST_F(TitleTest, ASingleLeftClickOpensAbout) {
  Edit([&](FakeDialog& dialog) {
    FakeArea& area = dialog.Area(kTitleArea);
    EXPECT_FALSE(area.Mouse(1, 1, 0, true));
    EXPECT_FALSE(area.Wheel(120));
    EXPECT_EQ(host.dialogs.opened.size(), 1u);
    EXPECT_TRUE(area.Mouse(1, 1));
  });
  EXPECT_EQ(host.dialogs.opened, (std::vector<std::int32_t>{19000, 35000}));
}

}  // namespace
}  // namespace sorvanix::test
