// The dialog of Banj.
#include "module/shaders/surface/banj.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(BanjBlock, member)

struct BanjDialogTest : EditorTest {
  BanjDialogTest() : EditorTest(PluginIdBanj, 22000) {}
  BanjBlock& block = shader.block<BanjBlock>();
};

// All in percent: level 0..1000, shadows 0..100, roughness 0..200, contrast -500..500.
TEST_F(BanjDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {22002, AT(diffuseLevel), 0, 10, 0.01f, FormatPercent},
      {22003, AT(shadowMix), 0, 1, 0.01f, FormatPercent},
      {22004, AT(sigma), 0, 2, 0.01f, FormatPercent},
      {22005, AT(diffuseContrast), -5, 5, 0.01f, FormatPercent},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(BanjDialogTest, ChoicesSwitchesAndColours) {
  WalkInteger(*this, {22001, AT(orenNayar), 0, 1});
  WalkInteger(*this, {22012, AT(previewObject), 0, 5});
  WalkSwitch(*this, 22013, AT(previewAuto));
  WalkColour(*this, 22006, AT(diffuseColour));
}

// sigma 0: A = 1 - 0 and B = 0. sigma 2: sigma2 = 4, A = 1 - 0.5 * 4 / 4.33, B = 0.45 * 4 / 4.09.
TEST_F(BanjDialogTest, WhatFollowsFromTheRoughnessFollowsIt) {
  SetAndConfirm(22004, 0.0f);
  EXPECT_EQ(block.sigma2, 0);
  EXPECT_EQ(block.orenA, 1);
  EXPECT_EQ(block.orenB, 0);
  SetAndConfirm(22004, 2.0f);
  EXPECT_EQ(block.sigma2, 4);
  EXPECT_FLOAT_EQ(block.orenA, 1 - 0.5f * 4 / 4.33f);
  EXPECT_FLOAT_EQ(block.orenB, 0.45f * 4 / 4.09f);
}

TEST_F(BanjDialogTest, OpeningBringsDerivedFieldsUpToDate) {
  block.sigma = 0;
  Edit([](FakeDialog& dialog) { dialog.Confirm(); });
  EXPECT_EQ(block.sigma2, 0);
  EXPECT_EQ(block.orenA, 1);
}

TEST_F(BanjDialogTest, AnyChangeIsMarked) {
  host.dialogs.threads = FakeDialogs::Threads::None;
  EXPECT_EQ(block.changed, 0);
  SetAndConfirm(22003, 0.25f);
  EXPECT_EQ(block.changed, 1);
}

TEST_F(BanjDialogTest, ThePreviewMarksItsCopy) {
  block.previewBusy = 0;
  host.documents.onRender = [](const FakeRender& render, HostBitmap*) {
    const LinkContent& content = render.material->links.at(1)->content;
    EXPECT_EQ(content.pluginId, PluginIdBanj);
    EXPECT_EQ(static_cast<const BanjBlock*>(content.instance->data)->previewBusy, 1);
  };
  Edit([&](FakeDialog& dialog) {
    EXPECT_TRUE(host.dialogs.RunPass());
    dialog.Confirm();
  });
  EXPECT_EQ(host.documents.renders.size(), 1u);
  EXPECT_EQ(block.previewBusy, 0);
}

// Its Copy keeps the mark of an input, and so does revert.
TEST_F(BanjDialogTest, RevertGoesThroughCopy) {
  block.nested = 1;
  Edit([](FakeDialog& dialog) {
    dialog.Set(22002, 5.0f);
    dialog.Key('R', kControl);
    dialog.Confirm();
  });
  EXPECT_EQ(block.diffuseLevel, 0.8f);
  EXPECT_EQ(block.nested, 1);
}

TEST_F(BanjDialogTest, ResetBringsBackTheLight) {
  block.orenNayar = 1;
  block.sigma = 0.5f;
  block.diffuseColour = {1, 1, 1};
  block.previewObject = 5;
  block.previewAuto = 0;
  Edit([](FakeDialog& dialog) {
    dialog.Key('R', kControl | kAlt);
    dialog.Confirm();
  });
  EXPECT_EQ(block.orenNayar, 0);
  EXPECT_EQ(block.diffuseLevel, 0.8f);
  EXPECT_EQ(block.shadowMix, 0.6f);
  EXPECT_EQ(block.sigma, 1);
  EXPECT_EQ(block.sigma2, 1);
  EXPECT_FLOAT_EQ(block.orenA, 0.62406f);
  EXPECT_EQ(block.diffuseContrast, 0);
  EXPECT_EQ(block.diffuseColour.z, 0.5f);
  EXPECT_EQ(block.previewObject, 5);
  EXPECT_EQ(block.previewAuto, 0);
}

TEST_F(BanjDialogTest, RandomDrawsInItsOrderAndDerives) {
  SecondGenerator second = {kSeed};
  Edit([](FakeDialog& dialog) {
    dialog.Key('M', kControl);
    dialog.Confirm();
  });
  EXPECT_EQ(block.diffuseLevel, static_cast<float>(second.Next()));
  EXPECT_EQ(block.shadowMix, static_cast<float>(second.Next()));
  EXPECT_EQ(block.sigma, static_cast<float>(second.Next() * 2));
  EXPECT_EQ(block.diffuseColour.z, static_cast<float>(second.Next()));
  EXPECT_EQ(block.diffuseColour.y, static_cast<float>(second.Next()));
  EXPECT_EQ(block.diffuseColour.x, static_cast<float>(second.Next()));
  EXPECT_FLOAT_EQ(block.sigma2, block.sigma * block.sigma);
}

TEST_F(BanjDialogTest, CancellingLeavesTheBlockWordForWord) {
  block.sigma = 0.3f;  // what follows from it is stale, and stays so
  const auto before = Words(sizeof(BanjBlock));
  EXPECT_EQ(Edit([](FakeDialog& dialog) { dialog.Set(22004, 1.5f); }), 0);
  EXPECT_EQ(Words(sizeof(BanjBlock)), before);
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
