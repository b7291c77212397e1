// Every dialog while the host fails: the first, the second, ... call of each kind, until a user who
// tries everything makes no more of them. A dialog that cannot open answers 0, one that can is used
// to its end; the block changes only by a confirmation, and nothing is left over.
#include <algorithm>
#include <functional>
#include <utility>

#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

using Values = std::vector<StreamValue>;

struct Editor {
  const char* name;
  std::int32_t pluginId, dialog;
  int links = 0;  ///< how many stand at the start of the block
  friend void PrintTo(const Editor& editor, std::ostream* out) { *out << editor.name; }
};

const Editor kEditors[] = {
    {"Noise2D", PluginIdNoise2D, 19000},
    {"Noise3D", PluginIdNoise3D, 11000},
    {"Tiles", PluginIdTiles, 12000},
    {"Gradient", PluginIdGradient, 18000},
    {"Lumas", PluginIdLumas, 23000},
    {"Banj", PluginIdBanj, 22000},
    {"Fresnel", PluginIdFresnel, 27000},
    {"Falloff", PluginIdFalloff, 20000},
    {"Proximal", PluginIdProximal, 21000},
    {"Projector", PluginIdProjector, 16000, 1},
    {"BrightContrast", PluginIdBrightContrast, 15000, 1},
    {"Colorizer", PluginIdColorizer, 17000, 1},
    {"Hue", PluginIdHue, 24000, 1},
    {"Posterizer", PluginIdPosterizer, 26000, 1},
    {"Distorter", PluginIdDistorter, 14000, 2},
    {"Fusion", PluginIdFusion, 13000, 3},
};
constexpr std::int32_t kAbout = 35000;

// Which calls the dialog cannot do without.
enum class Needed {
  None,
  First,
  OneForEachLink,
  FirstOnes,  ///< the first, and perhaps some behind it
  Some
};

struct Fault {
  const char* name;
  int& (*countdown)(FakeHost&);
  Needed needed = Needed::None;
};

const Fault kFaults[] = {
    {"allocation", [](FakeHost& h) -> int& { return h.failAllocation; }, Needed::FirstOnes},
    {"creation of a link", [](FakeHost& h) -> int& { return h.failLink; }, Needed::FirstOnes},
    {"copy of a link", [](FakeHost& h) -> int& { return h.failLinkCopy; }, Needed::OneForEachLink},
    {"creation of a text", [](FakeHost& h) -> int& { return h.failText; }, Needed::Some},
    {"scene", [](FakeHost& h) -> int& { return h.documents.failLoad; }, Needed::First},
    {"dialog", [](FakeHost& h) -> int& { return h.dialogs.failCreate; }, Needed::First},
    {"resources", [](FakeHost& h) -> int& { return h.failResourcesOpen; }, Needed::First},
    {"layout", [](FakeHost& h) -> int& { return h.dialogs.failLoad; }, Needed::First},
    {"area", [](FakeHost& h) -> int& { return h.dialogs.failAttach; }},
    {"thread", [](FakeHost& h) -> int& { return h.dialogs.failThread; }},
    {"bitmap", [](FakeHost& h) -> int& { return h.failBitmap; }},
    {"size of a bitmap", [](FakeHost& h) -> int& { return h.failBitmapInit; }},
    {"picture", [](FakeHost& h) -> int& { return h.failPicture; }},
    {"material", [](FakeHost& h) -> int& { return h.documents.failMaterial; }},
    {"tag", [](FakeHost& h) -> int& { return h.documents.failTag; }},
    {"render", [](FakeHost& h) -> int& { return h.documents.failRender; }},
    {"bitmap of a link", [](FakeHost& h) -> int& { return h.failLinkBitmap; }},
    {"InitRender of a link", [](FakeHost& h) -> int& { return h.failLinkInit; }},
    {"creation of a container", [](FakeHost& h) -> int& { return h.failContainer; }},
    {"write into a container", [](FakeHost& h) -> int& { return h.failContainerWrite; }},
};

void UseArea(FakeHost& host, FakeArea& area) {
  area.MinSize();
  area.Draw();
  area.Tick();
  area.Wheel(120);
  // On the strip of a ramp, which adds a knot; out of the area, which tears it off; and back.
  host.dialogs.drag = {{200, 30, 0}, {200, 90, 0}, {210, 32, 0}};
  area.Mouse(120, 18);
  area.Mouse(4, 32, 0, true);
  area.Draw();
}

void SetGadget(FakeDialog& dialog, std::int32_t id, FakeGadget::Kind kind) {
  using Kind = FakeGadget::Kind;
  if (kind == Kind::Int || kind == Kind::Switch) dialog.Set(id, 1);
  if (kind == Kind::Real) dialog.Set(id, 0.25f);
  if (kind == Kind::Colour) dialog.Set(id, Vector{0, 0.5f, 1});
  if (kind == Kind::Text) dialog.Set(id, "Lamp");
  if (kind == Kind::Link || kind == Kind::Unset) dialog.Press(id);
}

// Does everything that a user can do once. A preview object of 1 is among it, and so a scene.
void UseDialog(FakeHost& host, FakeDialog& dialog) {
  host.dialogs.RunPass();
  const auto gadgets = dialog.gadgets;
  for (const auto& [id, gadget] : gadgets) SetGadget(dialog, id, gadget.kind);
  host.dialogs.RunPass();
  for (const auto& [id, area] : dialog.areas) UseArea(host, *area);
  host.dialogs.RunPass();
  dialog.Key('M', kControl);
  dialog.Key('R', kControl | kShift);
  dialog.Key('R', kControl);
  host.dialogs.RunPass();
}

struct EditFaultsTest : ::testing::TestWithParam<Editor> {
  EditorHost started;
  FakeHost& host = started.host;
  const Editor& editor = GetParam();
  const ShaderRecord& record = started.Record(editor.pluginId);
  ShaderUnderTest noise{started, PluginIdNoise2D};
  bool openedBefore = false;  // with an earlier call of the same kind failing

  EditFaultsTest() {
    for (const char* picture : {"sorvaNIX Logo.tif", "sorvaNIX Spacer.tif", "sorvanix About.tif"}) {
      host.pictures[std::string("/plugins/Resources/") + picture] = {12, 9};
    }
    host.dialogs.chosenColour = Vector{1, 0.5f, 0};
    host.dialogs.scripts[kAbout] = [this](FakeDialog& about) {
      for (const auto& [id, area] : about.areas) UseArea(host, *area);
    };
  }

  void FillLinks(ShaderInstance& instance) {
    for (int i = 0; i < editor.links; ++i) {
      ScriptedLink::Of(LinkAt(instance, i)).HoldShader(noise, PluginIdNoise2D);
    }
  }
  static ChannelLink* LinkAt(const ShaderInstance& instance, int index) {
    return static_cast<ChannelLink**>(instance.data)[index];
  }
  Values Saved(ShaderInstance& instance) {
    FakeStream stream;
    record.Write(&instance, stream.handle());
    return stream.values;
  }

  std::int32_t Edit(ShaderInstance& instance, std::function<void(FakeDialog&)> script) {
    host.dialogs.opened.clear();
    host.dialogs.scripts[editor.dialog] = std::move(script);
    return record.Edit(&instance);
  }
  std::int32_t EditAll(ShaderInstance& instance, bool confirms) {
    return Edit(instance, [this, confirms](FakeDialog& dialog) {
      UseDialog(host, dialog);
      if (confirms) dialog.Confirm();
    });
  }
  bool Opened() const {
    return std::count(host.dialogs.opened.begin(), host.dialogs.opened.end(), editor.dialog) != 0;
  }

  void ExpectOpenedAsTold(const Fault& fault, int k) {
    const bool opened = Opened();
    switch (fault.needed) {
      case Needed::None:
        EXPECT_TRUE(opened);
        break;
      case Needed::First:
        EXPECT_EQ(opened, k > 1);
        break;
      case Needed::OneForEachLink:
        EXPECT_EQ(opened, k > editor.links);
        break;
      case Needed::FirstOnes:
        EXPECT_TRUE(!opened || k > 1);
        EXPECT_TRUE(opened || !openedBefore);
        break;
      case Needed::Some:
        break;
    }
    openedBefore = opened;
  }
  // What a fault left can be edited, and shows something.
  void ExpectUsable(ShaderInstance& instance) {
    for (int i = 0; i < editor.links; ++i) ASSERT_NE(LinkAt(instance, i), nullptr);
    EXPECT_EQ(Edit(instance, [](FakeDialog& dialog) { dialog.Confirm(); }), 1);
    ChannelSample sample = {};
    Vector colour;
    record.Output(&colour, &instance, &sample);
  }
  void ExpectNothingLeft() {
    EXPECT_EQ(host.dialogs.live, 0);
    EXPECT_EQ(host.dialogs.thread, nullptr);
    EXPECT_TRUE(host.bitmaps.empty());
    EXPECT_EQ(host.documents.liveScenes, 0);
    EXPECT_EQ(host.documents.liveMaterials, 0);
    EXPECT_EQ(host.liveContainers, 0);
  }

  // One edit while call `k` of a kind fails. False when it made fewer such calls.
  bool Walk(const Fault& fault, int k, bool confirms) {
    const int blocks = host.liveBlocks(), links = host.liveLinks, texts = host.liveTexts();
    bool fired = false;
    {
      ShaderUnderTest shader(started, editor.pluginId);
      FillLinks(shader.instance);
      const Values before = Saved(shader.instance);
      fault.countdown(host) = k;
      const std::int32_t answer = EditAll(shader.instance, confirms);
      fired = std::exchange(fault.countdown(host), 0) == 0;
      if (fired) ExpectOpenedAsTold(fault, k);
      EXPECT_EQ(answer, Opened() && confirms ? 1 : 0);
      EXPECT_TRUE(answer != 0 || Saved(shader.instance) == before);
      ExpectNothingLeft();
      ExpectUsable(shader.instance);
    }
    ExpectNothingLeft();
    EXPECT_EQ(host.liveBlocks(), blocks);
    EXPECT_EQ(host.liveLinks, links);
    EXPECT_EQ(host.liveTexts(), texts);
    host.calls.clear();
    host.reads.clear();
    return fired;
  }
};

INSTANTIATE_TEST_SUITE_P(AllDialogs, EditFaultsTest, ::testing::ValuesIn(kEditors),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(EditFaultsTest, ADialogOpensOrAnswersZeroAndLeavesNothingBehind) {
  constexpr int kNoDialogCallsSoOften = 10000;
  for (const Fault& fault : kFaults) {
    for (const bool confirms : {false, true}) {
      openedBefore = false;
      int k = 1;
      for (; k < kNoDialogCallsSoOften; ++k) {
        SCOPED_TRACE("failing: " + std::string(fault.name) + " " + std::to_string(k));
        if (!Walk(fault, k, confirms) || HasFailure()) break;
      }
      ASSERT_FALSE(HasFailure());
      ASSERT_LT(k, kNoDialogCallsSoOften);
    }
  }
}

// A fault that never fires tests nothing.
TEST_P(EditFaultsTest, TheUserOfTheseTestsMakesTheCallsThatFail) {
  const bool hasPreview =
      editor.pluginId != PluginIdProjector && editor.pluginId != PluginIdProximal;
  ShaderUnderTest shader(started, editor.pluginId);
  FillLinks(shader.instance);
  EXPECT_EQ(EditAll(shader.instance, true), 1);
  EXPECT_EQ(std::count(host.dialogs.opened.begin(), host.dialogs.opened.end(), kAbout), 1);
  EXPECT_EQ(host.dialogs.threadsStarted > 0, hasPreview);
  EXPECT_EQ(host.documents.renders.empty(), !hasPreview);
}

}  // namespace
}  // namespace sorvanix::test
