// Previews as renders of a small scene, told on 2D Noise.
#include "tests/module/editors/preview_fixture.h"

namespace sorvanix::test {
namespace {

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
              EXPECT_EQ(dialog.Area(kPreviewArea).redraws, 2) << "the frame, then the picture";
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
              EXPECT_EQ(dialog.Area(kPreviewArea).redraws, 1);
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

TEST_F(ScenePreviewTest, ASceneWithoutTheObjectEndsThePass) {
  block.previewDirty = 1;
  host.documents.objectName = "Subject";
  EXPECT_EQ(DirtyAfter([&](FakeDialog& dialog) {
              host.dialogs.RunPass();
              EXPECT_EQ(dialog.Area(kPreviewArea).redraws, 1) << "the frame alone";
              EXPECT_EQ(host.documents.liveMaterials, 0);
            }),
            1);
  EXPECT_TRUE(host.documents.renders.empty());
  EXPECT_TRUE(host.messages.empty());
}

// The host asks it whether to stop: a change must not wait for a whole render.
TEST_F(ScenePreviewTest, TheRenderIsHandedTheThread) {
  Edit([&](FakeDialog&) {
    host.dialogs.RunPass();
    EXPECT_EQ(host.documents.renders.back().thread, host.dialogs.thread->handle());
  });
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

}  // namespace
}  // namespace sorvanix::test
