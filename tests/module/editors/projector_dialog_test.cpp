// The dialog of Projector: its gadgets, what follows from them, and the copy of a texture tag.
#include "module/shaders/surface/projector.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(ProjectorBlock, member)

constexpr std::int32_t kCopyButton = 16029;

// A degree, as the block's radians hold it.
constexpr float kDegree = 0.017453292519943295f;

struct ProjectorDialogTest : EditorTest {
  ProjectorDialogTest() : EditorTest(PluginIdProjector, 16000) {}
  ProjectorBlock& block = shader.block<ProjectorBlock>();
};

// -1000000 to 1000000 in steps of 1: percent, distances, degrees.
TEST_F(ProjectorDialogTest, NumbersKeepTheirLimits) {
  const float turn = 1e6f * 0.017453292519943295f;
  const NumberGadget rows[] = {
      {16014, AT(offsetU), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16015, AT(offsetV), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16016, AT(lengthU), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16017, AT(lengthV), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16018, AT(tilesU), 0, 1e6f, 1},
      {16019, AT(tilesV), 0, 1e6f, 1},
      {16020, AT(position.x), -1e6f, 1e6f, 1, FormatMeters},
      {16021, AT(position.y), -1e6f, 1e6f, 1, FormatMeters},
      {16022, AT(position.z), -1e6f, 1e6f, 1, FormatMeters},
      {16023, AT(scale.x), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16024, AT(scale.y), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16025, AT(scale.z), -1e4f, 1e4f, 0.01f, FormatPercent},
      {16026, AT(rotation.x), -turn, turn, kDegree, FormatDegrees},
      {16027, AT(rotation.y), -turn, turn, kDegree, FormatDegrees},
      {16028, AT(rotation.z), -turn, turn, kDegree, FormatDegrees},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(ProjectorDialogTest, ChoicesAndSwitches) {
  const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  WalkInteger(*this, {16011, AT(projection), lowest, highest});
  WalkInteger(*this, {16032, AT(uvwIndex), lowest, highest});
  WalkSwitch(*this, 16012, AT(tile));
  WalkSwitch(*this, 16013, AT(seamless));
}

TEST_F(ProjectorDialogTest, TilingAndUvwEnableTheirGadgets) {
  Edit([](FakeDialog& dialog) {
    for (const std::int32_t on : {1, 0, 1}) {
      dialog.Set(16012, on);
      for (const std::int32_t id : {16013, 16018, 16019}) EXPECT_EQ(dialog.Enabled(id), on != 0);
    }
    for (std::int32_t projection = 0; projection <= 7; ++projection) {
      dialog.Set(16011, projection);
      EXPECT_EQ(dialog.Enabled(16032), projection == 6);
      EXPECT_EQ(dialog.Enabled(16033), projection == 6);
    }
  });
}

TEST_F(ProjectorDialogTest, HasNoPreviewAndLoadsNoScene) {
  host.documents.files.clear();
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              EXPECT_EQ(dialog.areas.size(), 1u);
              EXPECT_EQ(dialog.areas.count(16010), 1u);
              dialog.Confirm();
            }),
            1);
  EXPECT_TRUE(host.documents.asked.empty());
}

// --- what follows ---

TEST_F(ProjectorDialogTest, TheSwitchesMakeTheTileFlags) {
  struct Case {
    std::int32_t tile, seamless, flags;
  };
  for (const Case& c : {Case{0, 0, 0}, Case{1, 0, 1}, Case{0, 1, 2}, Case{1, 1, 3}}) {
    Edit([&](FakeDialog& dialog) {
      dialog.Set(16012, 1 - c.tile);
      dialog.Set(16012, c.tile);
      dialog.Set(16013, 1 - c.seamless);
      dialog.Set(16013, c.seamless);
      dialog.Confirm();
    });
    EXPECT_EQ(block.tileFlags, c.flags);
  }
}

// Files and messages may say otherwise than the switches: that stands until one of them is set.
TEST_F(ProjectorDialogTest, ImportedTileFlagsStand) {
  block.tileFlags = 0;
  Edit([](FakeDialog& dialog) {
    dialog.Set(16014, 0.5f);
    dialog.Confirm();
  });
  EXPECT_EQ(block.tile, 1);
  EXPECT_EQ(block.tileFlags, 0);
}

TEST_F(ProjectorDialogTest, ALengthHasItsReciprocal) {
  Edit([](FakeDialog& dialog) {
    dialog.Set(16016, 0.25f);
    dialog.Set(16017, 0.0f);
    dialog.Confirm();
  });
  EXPECT_EQ(block.invLengthU, 4);
  EXPECT_EQ(block.invLengthV, 0);
}

// Only the copy of a tag makes one by the other.
TEST_F(ProjectorDialogTest, LengthsAndRepeatsAreFieldsOfTheirOwn) {
  block.tilesU = 5;
  Edit([](FakeDialog& dialog) {
    dialog.Set(16016, 0.25f);
    EXPECT_EQ(dialog.Real(16018), 5);
    dialog.Set(16019, 0.0f);
    EXPECT_EQ(dialog.Real(16017), 1);
    dialog.Confirm();
  });
  EXPECT_EQ(block.lengthU, 0.25f);
  EXPECT_EQ(block.tilesU, 5);
  EXPECT_EQ(block.lengthV, 1);
  EXPECT_EQ(block.tilesV, 0);
}

TEST_F(ProjectorDialogTest, ThePlacementMakesTheMatrix) {
  Edit([](FakeDialog& dialog) {
    dialog.Set(16014, 0.75f);
    dialog.Set(16020, 30.0f);
    dialog.Set(16024, 2.0f);
    dialog.Confirm();
  });
  EXPECT_EQ(block.offsetUCopy, 0.75f);
  EXPECT_EQ(block.projectionMatrix.off.x, 30);
  EXPECT_EQ(block.projectionMatrix.v1.x, 1);
  EXPECT_EQ(block.projectionMatrix.v2.y, 2);
  EXPECT_EQ(block.projectionMatrix.v3.z, 1);
}

// --- the input ---

TEST_F(ProjectorDialogTest, TheInputIsACopyThatConfirmingTakesOver) {
  ScriptedLink::Of(block.input).HoldShader(PluginIdNoise2D);
  const int links = host.liveLinks;
  Edit([&](FakeDialog& dialog) {
    ChannelLink* shown = dialog[16001].link;
    ASSERT_NE(shown, nullptr);
    EXPECT_NE(shown, block.input);
    EXPECT_EQ(ScriptedLink::Of(shown).content.name, "shader 1001231");
    ScriptedLink::Of(shown).HoldShader(PluginIdTiles);
    for (const std::int32_t id : {16001, 16002, 16004, 16005, 16006, 16008, 16009}) {
      EXPECT_TRUE(dialog.Press(id)) << id;
    }
    dialog.Confirm();
  });
  EXPECT_EQ(ScriptedLink::Of(block.input).content.name, "shader 1000123");
  EXPECT_EQ(host.liveLinks, links);
}

TEST_F(ProjectorDialogTest, CancellingKeepsTheInputAndAllWords) {
  ScriptedLink::Of(block.input).HoldShader(PluginIdNoise2D);
  const auto before = Words(sizeof(ProjectorBlock));
  const int links = host.liveLinks;
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              ScriptedLink::Of(dialog[16001].link).HoldShader(PluginIdTiles);
              dialog.Set(16020, 5.0f);
            }),
            0);
  EXPECT_EQ(Words(sizeof(ProjectorBlock)), before);
  EXPECT_EQ(ScriptedLink::Of(block.input).content.name, "shader 1001231");
  EXPECT_EQ(host.liveLinks, links);
}

TEST_F(ProjectorDialogTest, RevertShowsACopyOfTheSavedInput) {
  ScriptedLink::Of(block.input).HoldShader(PluginIdNoise2D);
  Edit([](FakeDialog& dialog) {
    ScriptedLink::Of(dialog[16001].link).HoldShader(PluginIdTiles);
    dialog.Key('R', kControl);
    EXPECT_EQ(ScriptedLink::Of(dialog[16001].link).content.name, "shader 1001231");
  });
}

TEST_F(ProjectorDialogTest, AnInputThatCannotBeCopiedOpensNoDialog) {
  host.failLinkCopy = 1;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
}

TEST_F(ProjectorDialogTest, ResetBringsBackTheProjectionAndKeepsTheInput) {
  ScriptedLink::Of(block.input).HoldShader(PluginIdNoise2D);
  block.projection = 6;
  block.position = {1, 2, 3};
  block.lengthU = 4;
  block.uvwIndex = 3;
  Edit([](FakeDialog& dialog) {
    dialog.Key('R', kControl | kShift);
    dialog.Confirm();
  });
  EXPECT_EQ(block.projection, 0);
  EXPECT_EQ(block.position.y, 0);
  EXPECT_EQ(block.lengthU, 1);
  EXPECT_EQ(block.invLengthU, 1);
  EXPECT_EQ(block.uvwIndex, 1);
  EXPECT_EQ(ScriptedLink::Of(block.input).content.name, "shader 1001231");
}

// --- the copy of a texture tag ---

struct CopyActionTest : ProjectorDialogTest {
  static constexpr float kQuarterTurn = 1.5707963f;
  FakeTextureTag tag;

  CopyActionTest() {
    host.documents.activeTag = &tag;
    tag.settings.Set(1000, 0.25f);
    tag.settings.Set(1001, 0.5f);
    tag.settings.Set(1002, 2.0f);
    tag.settings.Set(1003, 4.0f);
    tag.settings.Set(1004, Word{5});
    tag.settings.Set(1007, false);
    tag.settings.Set(1008, true);
    tag.position = {10, 20, 30};
    tag.scale = {100, 200, 300};
    tag.rotation = {kQuarterTurn, 0, 0};
  }
  void CopyAndConfirm() {
    Edit([](FakeDialog& dialog) {
      EXPECT_TRUE(dialog.Press(kCopyButton));
      dialog.Confirm();
    });
  }
};

TEST_F(CopyActionTest, TakesOverAllSettings) {
  CopyAndConfirm();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(block.projection, 5);
  EXPECT_EQ(block.offsetU, 0.25f);
  EXPECT_EQ(block.offsetV, 0.5f);
  EXPECT_EQ(block.lengthU, 2);
  EXPECT_EQ(block.lengthV, 4);
  EXPECT_EQ(block.tile, 0);
  EXPECT_EQ(block.seamless, 1);
  EXPECT_EQ(block.tileFlags, 2);
  EXPECT_EQ(block.position.x, 10);
  EXPECT_EQ(block.position.y, 20);
  EXPECT_EQ(block.position.z, 30);
  EXPECT_EQ(block.scale.x, 1);
  EXPECT_EQ(block.scale.y, 2);
  EXPECT_EQ(block.scale.z, 3);
  EXPECT_EQ(block.rotation.x, kQuarterTurn);
  EXPECT_EQ(block.rotation.y, 0);
  EXPECT_EQ(block.rotation.z, 0);
  EXPECT_EQ(block.invLengthU, 0.5f);
  EXPECT_EQ(block.tilesU, 0.5f);
  EXPECT_EQ(block.invLengthV, 0.25f);
  EXPECT_EQ(block.tilesV, 0.25f);
  EXPECT_EQ(block.offsetUCopy, 0.25f);
  EXPECT_EQ(block.offsetVCopy, 0.5f);
  // A quarter turn of the heading takes x to z and z to -x; the axes are 1, 2 and 3 long.
  const Matrix& matrix = block.projectionMatrix;
  EXPECT_EQ(matrix.off.y, 20);
  EXPECT_NEAR(matrix.v1.x, 0, 1e-6);
  EXPECT_EQ(matrix.v1.z, 1);
  EXPECT_EQ(matrix.v2.y, 2);
  EXPECT_EQ(matrix.v3.x, -3);
  EXPECT_NEAR(matrix.v3.z, 0, 1e-6);
}

TEST_F(CopyActionTest, TileFlagsOfAllFourKinds) {
  struct Case {
    bool tile, seamless;
    std::int32_t flags;
  };
  for (const Case& c :
       {Case{false, false, 0}, Case{true, false, 1}, Case{false, true, 2}, Case{true, true, 3}}) {
    tag.settings.Set(1007, c.tile);
    tag.settings.Set(1008, c.seamless);
    CopyAndConfirm();
    EXPECT_EQ(block.tileFlags, c.flags);
  }
}

TEST_F(CopyActionTest, ALengthOfZeroHasNoRepeats) {
  tag.settings.Set(1002, 0.0f);
  CopyAndConfirm();
  EXPECT_EQ(block.lengthU, 0);
  EXPECT_EQ(block.invLengthU, 0);
  EXPECT_EQ(block.tilesU, 0);
}

TEST_F(CopyActionTest, RedrawsTheFields) {
  Edit([](FakeDialog& dialog) {
    dialog.Press(kCopyButton);
    EXPECT_EQ(dialog.Int(16011), 5);
    EXPECT_EQ(dialog.Real(16016), 2);
    EXPECT_EQ(dialog.Real(16018), 0.5f);
    EXPECT_EQ(dialog.Real(16022), 30);
    EXPECT_FALSE(dialog.Enabled(16013)) << "tiling is off";
  });
}

TEST_F(CopyActionTest, WithoutASelectedTagItSaysSoAndKeepsTheBlock) {
  const std::string call = "messageDialog(\"You must select a TextureTag before copying.\", 48)";
  // What showing alone derives, such as zeros of the other sign in the matrix, is there before.
  Edit([](FakeDialog& dialog) { dialog.Confirm(); });
  const auto before = Words(sizeof(ProjectorBlock));
  for (const bool hasDocument : {true, false}) {
    host.documents.hasActiveDocument = hasDocument;
    if (hasDocument) host.documents.activeTag = nullptr;
    host.calls.clear();
    Edit([](FakeDialog& dialog) { EXPECT_TRUE(dialog.Press(kCopyButton)); });
    EXPECT_EQ(std::count(host.calls.begin(), host.calls.end(), call), 1);
    host.documents.activeTag = &tag;
  }
  EXPECT_EQ(Words(sizeof(ProjectorBlock)), before);

  // The working copy stays as it was too: confirming changes no word but the handle of the input,
  // which comes first.
  host.documents.hasActiveDocument = false;
  CopyAndConfirm();
  const auto after = Words(sizeof(ProjectorBlock));
  for (std::size_t i = sizeof(void*) / 4; i < after.size(); ++i)
    EXPECT_EQ(after[i], before[i]) << i;
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
