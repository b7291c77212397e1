// The dialog of Proximal.
#include "module/shaders/surface/proximal.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

#define AT(member) offsetof(ProximalBlock, member)

struct ProximalDialogTest : EditorTest {
  ProximalDialogTest() : EditorTest(PluginIdProximal, 21000) {}
  ProximalBlock& block = shader.block<ProximalBlock>();

  void Name(const char* name) {
    FakeContainer payload;
    payload.Set(1002, std::string(name));
    shader.Message(MessageSetParameters, payload);
  }
  const std::string& HeldName() { return FakeTextOf(block.objectName); }
};

// The distances in percent, 0 to 9e18 in steps of 1: 9e16 in hundreds of units.
TEST_F(ProximalDialogTest, NumbersKeepTheirLimits) {
  const NumberGadget rows[] = {
      {21001, AT(minimum), 0, 9e16f, 0.01f, FormatPercent},
      {21002, AT(maximum), 0, 9e16f, 0.01f, FormatPercent},
      {21007, AT(strength), 0, kEndless, 0.01f},
  };
  for (const NumberGadget& row : rows) WalkNumber(*this, row);
}

TEST_F(ProximalDialogTest, ChoicesTakeAnyInteger) {
  const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  WalkInteger(*this, {21008, AT(falloff), lowest, highest});
  WalkInteger(*this, {21012, AT(combine), lowest, highest});
  Edit([](FakeDialog& dialog) {
    EXPECT_EQ(dialog[21008].step, 1);
    EXPECT_EQ(dialog[21012].step, 1);
  });
}

TEST_F(ProximalDialogTest, Switches) {
  WalkSwitch(*this, 21005, AT(matchFlag));
  WalkSwitch(*this, 21006, AT(useChildren));
  WalkSwitch(*this, 21010, AT(useGeometry));
  WalkSwitch(*this, 21011, AT(useFaces));
}

TEST_F(ProximalDialogTest, FacesCountOnlyWithGeometry) {
  Edit([](FakeDialog& dialog) {
    EXPECT_FALSE(dialog.Enabled(21011));
    dialog.Set(21010, 1);
    EXPECT_TRUE(dialog.Enabled(21011));
    dialog.Set(21010, 0);
    EXPECT_FALSE(dialog.Enabled(21011));
  });
}

TEST_F(ProximalDialogTest, HasNoPreviewAndLoadsNoScene) {
  host.documents.files.clear();
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              EXPECT_EQ(dialog.areas.size(), 1u);
              EXPECT_EQ(dialog.areas.count(21009), 1u);
              dialog.Set(21006, 1);
              dialog.Confirm();
            }),
            1);
  EXPECT_TRUE(host.documents.asked.empty());
  EXPECT_EQ(host.dialogs.threadsStarted, 0);
}

// --- the name ---

TEST_F(ProximalDialogTest, TheNameIsTakenOver) {
  Name("Lamp");
  const int texts = host.liveTexts();
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog[21003].text, "Lamp");
    dialog.Set(21003, "Candle");
    EXPECT_EQ(HeldName(), "Lamp") << "the dialog works on a copy";
    dialog.Confirm();
  });
  EXPECT_EQ(HeldName(), "Candle");
  EXPECT_EQ(host.liveTexts(), texts);
}

TEST_F(ProximalDialogTest, CancellingKeepsTheNameAndAllWords) {
  Name("Lamp");
  const auto before = Words(sizeof(ProximalBlock));
  const int texts = host.liveTexts();
  EXPECT_EQ(Edit([](FakeDialog& dialog) {
              dialog.Set(21003, "Candle");
              dialog.Set(21001, 3.0f);
            }),
            0);
  EXPECT_EQ(Words(sizeof(ProximalBlock)), before);
  EXPECT_EQ(HeldName(), "Lamp");
  EXPECT_EQ(host.liveTexts(), texts);
}

// The name of the object that is found in the user's scene.
TEST_F(ProximalDialogTest, ShowsWhatTheNameFinds) {
  FakeScene& scene = host.documents.active;
  scene.Add("Lamp");
  Name("Lamp");
  Edit([](FakeDialog& dialog) {
    EXPECT_EQ(dialog[21004].text, "Lamp");
    dialog.Set(21003, "Nobody");
    EXPECT_EQ(dialog[21004].text, "");
    dialog.Set(21003, "Lamp");
    EXPECT_EQ(dialog[21004].text, "Lamp");
  });
}

TEST_F(ProximalDialogTest, AnEmptyNameShowsNothing) {
  host.documents.active.Add("Lamp");
  Name("Lamp");
  Edit([](FakeDialog& dialog) {
    dialog.Set(21003, "");
    EXPECT_EQ(dialog[21004].text, "");
  });
}

TEST_F(ProximalDialogTest, WithoutAnOpenDocumentNothingIsFound) {
  host.documents.hasActiveDocument = false;
  Name("Lamp");
  Edit([](FakeDialog& dialog) { EXPECT_EQ(dialog[21004].text, ""); });
}

// --- keys ---

TEST_F(ProximalDialogTest, ResetIsOfDistancesNameAndMatch) {
  Name("Lamp");
  block.minimum = 3;
  block.maximum = 4;
  block.matchFlag = 1;
  block.strength = 5;
  block.falloff = 2;
  const int texts = host.liveTexts();
  for (const std::int32_t shift : {kShift, kAlt}) {
    Edit([&](FakeDialog& dialog) {
      EXPECT_TRUE(dialog.Key('R', kControl | shift));
      EXPECT_EQ(dialog[21003].text, "");
      EXPECT_EQ(dialog.Real(21002), 1);
      dialog.Confirm();
    });
  }
  EXPECT_EQ(block.minimum, 0);
  EXPECT_EQ(block.maximum, 1);
  EXPECT_EQ(HeldName(), "");
  EXPECT_EQ(block.matchFlag, 0);
  EXPECT_EQ(block.strength, 5);
  EXPECT_EQ(block.falloff, 2);
  EXPECT_EQ(host.liveTexts(), texts - 1);
}

TEST_F(ProximalDialogTest, RevertBringsBackTheSavedBlock) {
  Name("Lamp");
  Edit([](FakeDialog& dialog) {
    dialog.Set(21003, "Candle");
    dialog.Set(21001, 3.0f);
    EXPECT_TRUE(dialog.Key('R', kCommand));
    EXPECT_EQ(dialog[21003].text, "Lamp");
    EXPECT_EQ(dialog.Real(21001), 0);
    dialog.Confirm();
  });
  EXPECT_EQ(HeldName(), "Lamp");
}

// Two distances far beyond any scene, one of the first two falloffs, and no match.
TEST_F(ProximalDialogTest, RandomDrawsInItsOrder) {
  SecondGenerator second = {kSeed};
  block.matchFlag = 1;
  block.combine = 2;
  Name("Lamp");
  Edit([](FakeDialog& dialog) {
    EXPECT_TRUE(dialog.Key('M', kControl));
    dialog.Confirm();
  });
  EXPECT_EQ(block.minimum, static_cast<float>(10000 * second.Next()));
  EXPECT_EQ(block.maximum, static_cast<float>(10000 * second.Next()));
  EXPECT_EQ(block.falloff, static_cast<int>(1.99 * second.Next()));
  EXPECT_EQ(block.matchFlag, 0);
  EXPECT_EQ(block.combine, 2);
  EXPECT_EQ(HeldName(), "Lamp");
}

TEST_F(ProximalDialogTest, KeysNeedTheirQualifier) {
  Edit([](FakeDialog& dialog) {
    EXPECT_FALSE(dialog.Key('R', kShift));
    EXPECT_FALSE(dialog.Key('M', kAlt));
  });
}

#undef AT

}  // namespace
}  // namespace sorvanix::test
