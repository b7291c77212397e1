// Every callback of every shader while the host fails: the first, the second, ... call of each
// kind, until the callback makes no more of them. Each time it gives the answer that is told, what
// it leaves behind can be used in every way, and in the end nothing is left over.
#include <memory>
#include <ostream>
#include <utility>

#include "module/shaders/surface/projector.h"
#include "tests/support/fake_scene.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

static_assert(offsetof(ProjectorBlock, input) == 0, "the links stand first in every block");

struct FaultyShader {
  const char* name;
  std::int32_t pluginId;
  std::size_t links = 0;        // how many stand at the start of the block
  bool needsOwnMarker = false;  // Read answers 0 to a file without its marker
  // Without which allocations InitRender answers RenderInitFailed, from the first to the last. Of
  // Projector's input, which comes before, the slots are not needed; nor is the list of Proximal,
  // behind its two blocks, any longer than memory lasts.
  int needed[2] = {0, 0};
  friend void PrintTo(const FaultyShader& shader, std::ostream* out) { *out << shader.name; }
};

const FaultyShader kShaders[] = {
    {"Noise2D", PluginIdNoise2D},
    {"Noise3D", PluginIdNoise3D},
    {"Tiles", PluginIdTiles},
    {"Gradient", PluginIdGradient},
    {"Lumas", PluginIdLumas},
    {"Banj", PluginIdBanj, 0, true},
    {"Fresnel", PluginIdFresnel},
    {"Falloff", PluginIdFalloff, 0, true},
    {"Proximal", PluginIdProximal, 0, false, {1, 2}},
    {"Projector", PluginIdProjector, 1, false, {2, 3}},
    {"Buffy", PluginIdBuffy},
    {"BrightContrast", PluginIdBrightContrast, 1},
    {"Colorizer", PluginIdColorizer, 1},
    {"Hue", PluginIdHue, 1},
    {"Posterizer", PluginIdPosterizer, 1},
    {"Distorter", PluginIdDistorter, 2},
    {"Fusion", PluginIdFusion, 3},
};

struct Fault {
  const char* name;
  int FakeHost::*countdown;
};

const Fault kAllocation = {"allocation", &FakeHost::failAllocation};
const Fault kLink = {"creation of a link", &FakeHost::failLink};
const Fault kLinkCopy = {"copy of a link", &FakeHost::failLinkCopy};
const Fault kLinkInit = {"InitRender of a link", &FakeHost::failLinkInit};
const Fault kRead = {"read", &FakeHost::failRead};
const Fault kFaults[] = {kAllocation,
                         kLink,
                         kLinkCopy,
                         kLinkInit,
                         kRead,
                         {"bitmap", &FakeHost::failLinkBitmap},
                         {"creation of a container", &FakeHost::failContainer},
                         {"write into a container", &FakeHost::failContainerWrite},
                         {"creation of a text", &FakeHost::failText},
                         {"write", &FakeHost::failWrite},
                         {"polygonise", &FakeHost::failPolygonise}};

bool Is(const Fault& fault, const Fault& other) { return fault.countdown == other.countdown; }

// A named lamp as a point, and one that must be polygonised.
struct Lamps {
  FakeScene scene;
  Lamps() {
    scene.Add("Lamp");
    FakeObject& sphere = scene.Add("Lamp");
    sphere.infoFlags = ObjectHasGeometry | ObjectNeedsPolygonise;
    sphere.polygonised = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
  }
};

// One instance on its way through the callbacks, beside a sound one. Each input holds a sound 2D
// Noise, but the last one of several a bitmap.
struct Life {
  explicit Life(const FaultyShader& kind)
      : kind(kind), record(started.Record(kind.pluginId)), sound(started, kind.pluginId) {
    Fill(sound.instance);
    ray.direction[2] = -1;
    render.ray = &ray;
    render.bumpNormal = render.faceNormal = {0, 0, 1};
    render.lightCount = 1;
    host.cpuCount = 2;
    sample.render = &render;
    Tell(sound.instance, MessageGetParameters, values);
    if (kind.pluginId == PluginIdProximal) {
      values.Set(1002, std::string("Lamp"));
      Tell(sound.instance, MessageSetParameters, values);
    }
    if (record.Write != nullptr) record.Write(&sound.instance, file.handle());
  }

  // Lets the inputs of an instance show something.
  void Fill(ShaderInstance& of) {
    if (of.data == nullptr) return;
    for (std::size_t i = 0; i < kind.links; ++i) {
      ChannelLink* link = static_cast<ChannelLink**>(of.data)[i];
      if (link == nullptr) continue;
      if (i > 0 && i + 1 == kind.links) {
        ScriptedLink::Of(link).HoldBitmap(4, 8);
      } else {
        ScriptedLink::Of(link).HoldShader(noise, PluginIdNoise2D);
      }
    }
  }
  std::int32_t Tell(ShaderInstance& whom, std::int32_t message, FakeContainer& payload) {
    return record.Message == nullptr ? 1 : record.Message(&whom, message, payload.handle());
  }
  void Sample() {
    for (const std::int32_t channel : {ChannelColour, ChannelBump, ChannelPreview}) {
      instance.channel = channel;
      Vector colour;
      record.Output(&colour, &instance, &sample);
    }
  }

  const FaultyShader& kind;
  StartedModule started;
  FakeHost& host = started.host;
  Lamps lamps;
  const ShaderRecord& record;
  ShaderUnderTest noise{started, PluginIdNoise2D};
  ShaderUnderTest sound;
  ShaderInstance instance = {};
  FakeContainer values, answer;  // told to Message, and by it
  FakeStream file, saved;        // taken by Read, and stored by Write
  RayRecord ray = {};
  RenderContext render = {};
  RenderInit init = {&render, lamps.scene.handle()};
  ChannelSample sample = {};
};

// The way of an instance: `run` is one callback, whose answer without any fault is `answer`. A
// callback that a shader does not have counts as done.
struct Stage {
  const char* name;
  std::int32_t answer;
  std::int32_t (*run)(Life&);
};

const Stage kStages[] = {
    {"Alloc", 1,
     [](Life& l) {
       const std::int32_t made = l.record.Alloc == nullptr ? 1 : l.record.Alloc(&l.instance);
       l.Fill(l.instance);
       return made;
     }},
    {"Set", 1, [](Life& l) { return l.Tell(l.instance, MessageSetParameters, l.values); }},
    {"Get", 1, [](Life& l) { return l.Tell(l.instance, MessageGetParameters, l.answer); }},
    {"Describe", 1,
     [](Life& l) { return l.Tell(l.instance, MessageDescribeParameters, l.answer); }},
    {"Forward", 1, [](Life& l) { return l.Tell(l.instance, MessageForward, l.answer); }},
    {"Write", 1,
     [](Life& l) {
       return l.record.Write == nullptr ? 1 : l.record.Write(&l.instance, l.saved.handle());
     }},
    {"Read", 1,
     [](Life& l) {
       return l.record.Read == nullptr ? 1 : l.record.Read(&l.instance, l.file.handle());
     }},
    {"Copy", 1,
     [](Life& l) {
       return l.record.Copy == nullptr ? 1 : l.record.Copy(&l.sound.instance, &l.instance);
     }},
    {"Compare", 1,
     [](Life& l) {
       return l.record.Compare == nullptr ? 1 : l.record.Compare(&l.sound.instance, &l.instance);
     }},
    // Without scenes for previews, and nobody to confirm: edit_faults_test.cpp has both.
    {"Edit", 0, [](Life& l) { return l.record.Edit == nullptr ? 0 : l.record.Edit(&l.instance); }},
    {"InitRender", 0,
     [](Life& l) {
       return l.record.InitRender == nullptr ? 0 : l.record.InitRender(&l.instance, &l.init);
     }},
    {"InitRender again", 0,
     [](Life& l) {
       return l.record.InitRender == nullptr ? 0 : l.record.InitRender(&l.instance, &l.init);
     }},
    {"Slots", 1, [](Life& l) { return l.Tell(l.instance, MessageReportSlots, l.answer); }},
    {"Output", 0,
     [](Life& l) {
       l.Sample();
       return 0;
     }},
    {"FreeRender", 0,
     [](Life& l) {
       if (l.record.FreeRender != nullptr) l.record.FreeRender(&l.instance);
       return 0;
     }},
    {"Free", 0,
     [](Life& l) {
       if (l.record.Free != nullptr) l.record.Free(&l.instance);
       return 0;
     }},
};
constexpr std::size_t kStageCount = std::size(kStages);

// What the callback answers when call `k` of this kind fails in it.
std::int32_t ToldAnswer(const FaultyShader& shader, const Stage& stage, const Fault& fault, int k) {
  const std::string name = stage.name;
  if (name == "Alloc" && (Is(fault, kAllocation) || Is(fault, kLink))) return 0;
  if (name == "Copy" && (Is(fault, kLink) || Is(fault, kLinkCopy))) return 0;
  if (name == "Read" && Is(fault, kRead) && k == 1 && shader.needsOwnMarker) return 0;
  if (name.starts_with("InitRender")) {
    if (Is(fault, kLinkInit)) return RenderInitFailed;
    const bool needed = k >= shader.needed[0] && k <= shader.needed[1];
    if (Is(fault, kAllocation) && needed) return RenderInitFailed;
  }
  return stage.answer;
}

struct FaultsTest : ::testing::TestWithParam<FaultyShader> {
  // Leads one instance through all stages while call `k` of a kind fails in one of them. False when
  // that stage made fewer such calls.
  bool Walk(const Fault& fault, std::size_t faulty, int k) {
    Life life(GetParam());
    FakeHost& host = life.host;
    const int blocks = host.liveBlocks(), links = host.liveLinks, texts = host.liveTexts();
    bool fired = false;
    for (std::size_t i = 0; i < kStageCount; ++i) {
      const Stage& stage = kStages[i];
      SCOPED_TRACE(stage.name);
      if (i == faulty) host.*fault.countdown = k;
      const std::int32_t answer = stage.run(life);
      if (i != faulty) continue;
      fired = std::exchange(host.*fault.countdown, 0) == 0;
      EXPECT_EQ(answer, fired ? ToldAnswer(GetParam(), stage, fault, k) : stage.answer);
    }
    EXPECT_EQ(life.instance.data, nullptr);
    EXPECT_EQ(life.instance.slots, nullptr);
    EXPECT_EQ(host.liveBlocks(), blocks);
    EXPECT_EQ(host.liveLinks, links);
    EXPECT_EQ(host.liveTexts(), texts);
    EXPECT_EQ(host.liveContainers, 0);
    EXPECT_EQ(LivePolygonisedObjects(), 0);
    return fired;
  }
};

INSTANTIATE_TEST_SUITE_P(AllShaders, FaultsTest, ::testing::ValuesIn(kShaders),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(FaultsTest, EveryCallbackGivesTheToldAnswerAndLeavesNothingBehind) {
  constexpr int kNoCallbackCallsSoOften = 10000;
  for (const Fault& fault : kFaults) {
    for (std::size_t stage = 0; stage < kStageCount; ++stage) {
      int k = 1;
      for (; k < kNoCallbackCallsSoOften; ++k) {
        SCOPED_TRACE("failing: " + std::string(fault.name) + " " + std::to_string(k) + " in " +
                     kStages[stage].name);
        if (!Walk(fault, stage, k) || HasFailure()) break;
      }
      ASSERT_FALSE(HasFailure());
      ASSERT_LT(k, kNoCallbackCallsSoOften);
    }
  }
}

// What a callback could not store is all that is missing.
TEST_P(FaultsTest, AFailingWriteLeavesOutOneValue) {
  Life whole(GetParam());
  if (whole.record.Write == nullptr) return;  // Buffy stores nothing
  const Values all = whole.file.values;
  ASSERT_FALSE(all.empty());
  for (std::size_t k = 0; k < all.size(); ++k) {
    FakeStream stream;
    whole.host.failWrite = static_cast<int>(k) + 1;
    EXPECT_EQ(whole.record.Write(&whole.sound.instance, stream.handle()), 1);
    Values expected = all;
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(k));
    EXPECT_EQ(stream.values, expected) << k;
  }
}

TEST_P(FaultsTest, AFailingContainerWriteLeavesOutOneKey) {
  Life whole(GetParam());
  if (whole.record.Message == nullptr) return;  // Buffy takes no messages
  for (const std::int32_t message : {MessageGetParameters, MessageDescribeParameters}) {
    FakeContainer all;
    whole.Tell(whole.sound.instance, message, all);
    for (int k = 1;; ++k) {
      FakeContainer answer;
      whole.host.failContainerWrite = k;
      whole.Tell(whole.sound.instance, message, answer);
      if (std::exchange(whole.host.failContainerWrite, 0) != 0) break;
      // A write into the answer of an input leaves the outer keys complete.
      EXPECT_GE(answer.entries.size() + 1, all.entries.size());
      for (const FakeContainer::Entry& entry : answer.entries) {
        const FakeValue* told = all.Find(entry.key);
        ASSERT_NE(told, nullptr);
        if (std::holds_alternative<std::shared_ptr<FakeContainer>>(*told)) continue;
        EXPECT_TRUE(SameValue(entry.value, *told)) << entry.key;
      }
    }
  }
}

// The counts are of a stream that holds what it should: a fault that never fires tests nothing.
TEST(FaultTest, TheFaultsStrikeWhereTheyShould) {
  Life life(kShaders[16]);  // Fusion: three links
  life.host.failLink = 3;
  EXPECT_EQ(life.record.Alloc(&life.instance), 0);
  EXPECT_EQ(life.host.failLink, 0);
  life.host.failLink = 4;
  EXPECT_EQ(life.record.Alloc(&life.instance), 1);
  EXPECT_EQ(life.host.failLink, 1) << "Alloc makes three links";
  life.host.failLink = 0;
  life.record.Free(&life.instance);
}

}  // namespace
}  // namespace sorvanix::test
