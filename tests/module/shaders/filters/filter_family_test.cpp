// What all six filters have in common: their registration, their links through every callback, and
// what they do when something is missing or fails.
#include <algorithm>
#include <cstring>
#include <memory>

#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/colorizer.h"
#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/fusion.h"
#include "module/shaders/filters/hue.h"
#include "module/shaders/filters/posterizer.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

struct FilterKind {
  const char* name;
  std::int32_t pluginId;
  std::int32_t stride;
  std::vector<std::int32_t> inputKeys;  // of the links, which stand first in the block
  std::size_t nestedOffset;
};

const FilterKind kFilters[] = {
    {"BrightContrast", 1001214, 272, {1004}, offsetof(BrightContrastBlock, nested)},
    {"Colorizer", 1001216, 268, {1003}, offsetof(ColorizerBlock, nested)},
    {"Hue", 1001271, 268, {1007}, offsetof(HueBlock, nested)},
    {"Posterizer", 1001277, 268, {1002}, offsetof(PosterizerBlock, nested)},
    {"Distorter", 1001203, 296, {1007, 1008}, offsetof(DistorterBlock, nested)},
    {"Fusion", 1000125, 308, {1005, 1006, 1007}, offsetof(FusionBlock, nested)},
};

struct FilterFamilyTest : ::testing::TestWithParam<FilterKind> {
  StartedModule started;
  FakeHost& host = started.host;
  const FilterKind& kind = GetParam();
  const int links = static_cast<int>(kind.inputKeys.size());
  const ShaderRecord& record = started.Record(kind.pluginId);
  const int blocksAtFirst = host.liveBlocks();
  ShaderUnderTest shader{started, kind.pluginId};
  ShaderInstance& instance = shader.instance;
  RenderContext render = {};
  RenderInit init = {&render, nullptr};
  ChannelSample sample = {};

  static ChannelLink*& Link(ShaderInstance& of, int index) {
    return static_cast<ChannelLink**>(of.data)[index];
  }
  ScriptedLink& Link(int index) { return ScriptedLink::Of(Link(instance, index)); }
  std::int32_t& Nested(ShaderInstance& of) {
    return *reinterpret_cast<std::int32_t*>(static_cast<char*>(of.data) + kind.nestedOffset);
  }
  // Takes a link out of the block, as a host might that could not make one.
  void Lose(int index) {
    host.api.channel->release(Link(instance, index));
    Link(instance, index) = nullptr;
  }
};

INSTANTIATE_TEST_SUITE_P(AllFilters, FilterFamilyTest, ::testing::ValuesIn(kFilters),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(FilterFamilyTest, FillsAllCallbacksAndTellsTheFiltersWord) {
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  ASSERT_NE(record.Edit, nullptr);
  EXPECT_EQ(record.Edit(&instance), 0) << "nothing was confirmed";
  EXPECT_NE(record.Message, nullptr);
  EXPECT_NE(record.InitRender, nullptr);
  EXPECT_NE(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
  ASSERT_NE(record.GetInfo, nullptr);
  EXPECT_EQ(record.GetInfo(), 35651599u);
}

// --- Alloc, Free ---

TEST_P(FilterFamilyTest, AllocMakesTheLinksAndFreeReleasesThem) {
  EXPECT_EQ(host.liveLinks, links);
  record.Free(&instance);
  EXPECT_EQ(instance.data, nullptr);
  EXPECT_EQ(host.liveLinks, 0);
  EXPECT_EQ(host.liveBlocks(), blocksAtFirst);
  record.Free(&instance);
  EXPECT_EQ(host.liveLinks, 0);
}

TEST_P(FilterFamilyTest, AFailingAllocLeavesNothingBehind) {
  const int blocks = host.liveBlocks();
  for (int k = 1; k <= links; ++k) {
    ShaderInstance bare = {};
    host.failLink = k;
    EXPECT_EQ(record.Alloc(&bare), 0) << k;
    EXPECT_EQ(bare.data, nullptr);
    EXPECT_EQ(host.liveLinks, links);
    EXPECT_EQ(host.liveBlocks(), blocks);
    host.failLink = 0;
  }
  ShaderInstance bare = {};
  host.failAllocation = 1;
  EXPECT_EQ(record.Alloc(&bare), 0);
  EXPECT_EQ(bare.data, nullptr);
  EXPECT_EQ(host.liveLinks, links);
}

// --- Copy ---

TEST_P(FilterFamilyTest, CopyTakesTheContentsOfTheLinksAndClearsNested) {
  ShaderUnderTest other(started, kind.pluginId);
  for (int i = 0; i < links; ++i) Link(i).content.name = "input " + std::to_string(i);
  Nested(instance) = Nested(other.instance) = 1;
  EXPECT_EQ(record.Copy(&instance, &other.instance), 1);
  for (int i = 0; i < links; ++i) {
    EXPECT_NE(Link(other.instance, i), Link(instance, i)) << "a link of its own";
    EXPECT_EQ(ScriptedLink::Of(Link(other.instance, i)).content.name, Link(i).content.name);
  }
  EXPECT_EQ(Nested(other.instance), 0);
  EXPECT_EQ(Nested(instance), 1);
  EXPECT_EQ(host.liveLinks, 2 * links) << "the former ones were released";
}

TEST_P(FilterFamilyTest, AFailingCopyAnswersZeroAndLeavesAnInstanceThatAllCallbacksTake) {
  for (int* failure : {&host.failLink, &host.failLinkCopy}) {
    for (int k = 1; k <= links; ++k) {
      ShaderUnderTest other(started, kind.pluginId);
      *failure = k;
      EXPECT_EQ(record.Copy(&instance, &other.instance), 0) << k;
      *failure = 0;
      EXPECT_EQ(host.liveLinks, links) << "none is left of the destination's";
      EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
      EXPECT_EQ(record.InitRender(&other.instance, &init), RenderInitFailed);
      record.FreeRender(&other.instance);
      ExpectExactly(other.Output(sample), {0, 0, 0});
      FakeContainer payload;
      EXPECT_EQ(other.Message(MessageGetParameters, payload), 1);
      EXPECT_EQ(record.Copy(&other.instance, &instance), 0) << "and no source for a copy";
      EXPECT_EQ(record.Copy(&instance, &other.instance), 1) << "but a destination again";
    }
  }
}

TEST_P(FilterFamilyTest, CopyOntoItselfKeepsItsLinks) {
  Link(0).content.name = "kept";
  Nested(instance) = 1;
  EXPECT_EQ(record.Copy(&instance, &instance), 1);
  EXPECT_EQ(Link(0).content.name, "kept");
  EXPECT_EQ(Nested(instance), 0);
}

TEST_P(FilterFamilyTest, CopyRequiresAllLinksOfTheSource) {
  ShaderUnderTest other(started, kind.pluginId);
  Lose(links - 1);
  EXPECT_EQ(record.Copy(&instance, &other.instance), 0);
}

// --- Compare ---

TEST_P(FilterFamilyTest, CompareAsksTheHostAboutEachLink) {
  ShaderUnderTest other(started, kind.pluginId);
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  for (int i = 0; i < links; ++i) {
    Link(i).content.name = "different";
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0) << i;
    Link(i).content.name = "";
  }
  Lose(0);
  EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  EXPECT_EQ(record.Compare(&other.instance, &instance), 0);
}

// --- messages ---

TEST_P(FilterFamilyTest, ReportsItsSlotsAndTheirStride) {
  ASSERT_EQ(record.InitRender(&instance, &init), 0);
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageReportSlots, payload), 1);
  ASSERT_EQ(payload.entries.size(), 2u);
  EXPECT_EQ(std::get<Word>(*payload.Find(12000)), reinterpret_cast<Word>(instance.slots));
  EXPECT_EQ(std::get<Word>(*payload.Find(12001)), kind.stride);
}

TEST_P(FilterFamilyTest, GetAndDescribeStoreTheAnswersOfTheLinks) {
  for (int i = 0; i < links; ++i) Link(i).parameters.Set(1016, Word{100 + i});
  for (const std::int32_t message : {MessageGetParameters, MessageDescribeParameters}) {
    FakeContainer payload;
    EXPECT_EQ(shader.Message(message, payload), 1);
    for (int i = 0; i < links; ++i) {
      EXPECT_EQ(Link(i).messages.back().id, message);
      EXPECT_TRUE(Link(i).messages.back().payload.entries.empty()) << "a container of its own";
      const FakeContainer& inner = payload.Inner(kind.inputKeys[std::size_t(i)]);
      EXPECT_TRUE(SameValue(*inner.Find(1016), Word{100 + i}));
    }
  }
  EXPECT_EQ(host.liveContainers, 0);
}

TEST_P(FilterFamilyTest, SetForwardsEachContainerToItsLink) {
  for (int i = 0; i < links; ++i) {
    auto inner = std::make_shared<FakeContainer>();
    inner->Set(1000, Word{7 + i});
    FakeContainer payload;
    payload.Set(kind.inputKeys[std::size_t(i)], inner);
    EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
    ASSERT_EQ(Link(i).messages.size(), 1u) << "and to no other";
    EXPECT_EQ(Link(i).messages[0].id, MessageSetParameters);
    EXPECT_TRUE(SameValue(*Link(i).messages[0].payload.Find(1000), Word{7 + i}));
  }
}

TEST_P(FilterFamilyTest, SetSkipsAnInputThatIsNoContainer) {
  FakeContainer payload;
  payload.Set(kind.inputKeys[0], Word{3});
  EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
  EXPECT_TRUE(Link(0).messages.empty());
}

TEST_P(FilterFamilyTest, ForwardGoesToAllLinksAndAnswersWithTheLastOnesAnswer) {
  FakeContainer payload;
  payload.Set(5, Word{6});
  for (int i = 0; i < links; ++i) Link(i).messageAnswer = 40 + i;
  EXPECT_EQ(shader.Message(MessageForward, payload), 40 + links - 1);
  for (int i = 0; i < links; ++i) {
    ASSERT_EQ(Link(i).messages.size(), 1u);
    EXPECT_EQ(Link(i).messages[0].id, MessageForward);
    EXPECT_TRUE(SameValue(*Link(i).messages[0].payload.Find(5), Word{6})) << "the same payload";
  }
}

TEST_P(FilterFamilyTest, OtherMessagesAnswerOne) {
  FakeContainer payload;
  for (const std::int32_t id : {0, 112002, 112005, -1}) {
    EXPECT_EQ(shader.Message(id, payload), 1) << id;
    EXPECT_TRUE(Link(0).messages.empty());
  }
}

TEST_P(FilterFamilyTest, WithoutMemoryForContainersTheMessagesGoThroughAllTheSame) {
  host.failContainers = true;
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageGetParameters, payload), 1);
  Link(0).HoldShader(PluginIdNoise2D);
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
}

// --- InitRender, FreeRender ---

TEST_P(FilterFamilyTest, InitRenderMakesOneSlotPerCpu) {
  host.cpuCount = 3;
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_NE(std::find(host.calls.begin(), host.calls.end(),
                      "alloc(" + std::to_string(3 * kind.stride) + ")"),
            host.calls.end());
  const FootprintBlock clear = {};
  for (int cpu = 0; cpu < 3; ++cpu) {
    EXPECT_EQ(
        std::memcmp(static_cast<char*>(instance.slots) + cpu * kind.stride, &clear, sizeof clear),
        0)
        << "matrices and outerChannel included";
  }
}

TEST_P(FilterFamilyTest, InitRenderAgainReplacesTheSlots) {
  record.InitRender(&instance, &init);
  const int blocks = host.liveBlocks();
  record.InitRender(&instance, &init);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_P(FilterFamilyTest, InitRenderFailsWithoutABlockOrALink) {
  ShaderInstance bare = {};
  EXPECT_EQ(record.InitRender(&bare, &init), -100);
  for (int i = 0; i < links; ++i) {
    ShaderUnderTest other(started, kind.pluginId);
    ScriptedLink& link = ScriptedLink::Of(Link(other.instance, i));
    Link(other.instance, i) = nullptr;
    EXPECT_EQ(record.InitRender(&other.instance, &init), -100);
    EXPECT_EQ(other.instance.slots, nullptr);
    Link(other.instance, i) = link.handle();
  }
}

// The slots are made all the same, and inputs behind the failed one are left alone.
TEST_P(FilterFamilyTest, AFailedInputIsToldAtTheEnd) {
  for (int failing = 0; failing < links; ++failing) {
    for (int i = 0; i < links; ++i) Link(i).initAnswer = i == failing ? -100 : 0;
    host.calls.clear();
    EXPECT_EQ(record.InitRender(&instance, &init), -100);
    EXPECT_NE(instance.slots, nullptr);
    const auto inits = std::count_if(host.calls.begin(), host.calls.end(), [](const auto& call) {
      return call.rfind("channelInitRender", 0) == 0;
    });
    EXPECT_EQ(inits, failing + 1);
    record.FreeRender(&instance);
  }
}

TEST_P(FilterFamilyTest, WithoutARenderThereAreNoSlotsAndNoFailure) {
  Link(0).initAnswer = -100;
  instance.slots = nullptr;
  init.render = nullptr;
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
}

TEST_P(FilterFamilyTest, WithoutMemoryForSlotsAMessageIsShownAndTheRenderGoesOn) {
  Link(0).initAnswer = -100;
  host.failAllocation = 1;
  EXPECT_EQ(record.InitRender(&instance, &init), 0);
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.messages, std::vector<std::string>{"Couldn't Allocate Globals"});
}

TEST_P(FilterFamilyTest, FreeRenderFreesTheInputsThenTheSlotsAlsoTwice) {
  record.InitRender(&instance, &init);
  host.calls.clear();
  record.FreeRender(&instance);
  EXPECT_EQ(instance.slots, nullptr);
  ASSERT_EQ(host.calls.size(), std::size_t(links) + 1);
  for (int i = 0; i < links; ++i) {
    EXPECT_EQ(host.calls[std::size_t(i)],
              "channelFreeRender(" + std::to_string(Link(i).number) + ")");
  }
  EXPECT_EQ(host.calls.back(), "free");
  record.FreeRender(&instance);
}

TEST_P(FilterFamilyTest, FreeRenderDoesNothingWithoutALink) {
  record.InitRender(&instance, &init);
  ScriptedLink& lost = Link(links - 1);
  Link(instance, links - 1) = nullptr;
  host.calls.clear();
  record.FreeRender(&instance);
  EXPECT_TRUE(host.calls.empty());
  EXPECT_NE(instance.slots, nullptr);
  Link(instance, links - 1) = lost.handle();
}

// --- Output ---

TEST_P(FilterFamilyTest, OutputIsBlackAtOnceWhereALinkIsMissing) {
  for (int i = 0; i < links; ++i) Link(i).content.colour = {1, 1, 1};
  for (int i = 0; i < links; ++i) {
    ScriptedLink& lost = Link(i);
    Link(instance, i) = nullptr;
    ExpectExactly(shader.Output(sample), {0, 0, 0});
    EXPECT_TRUE(host.reads.empty());
    Link(instance, i) = lost.handle();
  }
}

TEST_P(FilterFamilyTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  ShaderInstance bare = {};
  FakeStream stream;
  FakeContainer container;
  EXPECT_EQ(record.Copy(&bare, &instance), 0);
  EXPECT_EQ(record.Copy(&instance, &bare), 0);
  EXPECT_EQ(record.Compare(&bare, &instance), 0);
  EXPECT_EQ(record.Compare(&instance, &bare), 0);
  EXPECT_EQ(record.Read(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Write(&bare, stream.handle()), 0);
  EXPECT_EQ(record.Edit(&bare), 0);
  for (const std::int32_t id : {112000, 112001, 112003, 112004}) {
    EXPECT_EQ(record.Message(&bare, id, container.handle()), 1);
  }
  EXPECT_TRUE(stream.values.empty());
  EXPECT_TRUE(container.entries.empty());
  record.FreeRender(&bare);
  record.Free(&bare);
  Vector result = {1, 1, 1};
  record.Output(&result, &bare, &sample);
  ExpectExactly(result, {0, 0, 0});
}

// A host that serves no links: Alloc cannot succeed, and nothing else is called.
TEST(FilterFamily, WithoutAChannelTableAllocAnswersZero) {
  FakeHost host;
  host.api.channel = nullptr;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);
  const int blocks = host.liveBlocks();
  for (const FilterKind& kind : kFilters) {
    for (const Registration& registration : host.registrations) {
      if (registration.id != kind.pluginId) continue;
      ShaderInstance instance = {};
      EXPECT_EQ(registration.record.Alloc(&instance), 0);
      EXPECT_EQ(host.liveBlocks(), blocks);
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
