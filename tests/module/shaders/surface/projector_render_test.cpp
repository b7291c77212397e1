// Projector in a render: the bump, the road through an enclosing filter, its slots and tags, and
// several threads.
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "module/kit/matrix.h"
#include "module/shaders/filters/hue.h"
#include "tests/module/shaders/surface/projector_fixture.h"

namespace sorvanix::test {
namespace {

// --- bump ---

struct ProjectorBumpTest : ProjectorTest {
  ProjectorBumpTest() {
    instance.channel = ChannelBump;
    projection.project = [](const TextureTag&, const Vector&) { return Vector{0.5f, 0.25f, 0}; };
  }
};

TEST_F(ProjectorBumpTest, ThePlacesOfAPlainInputAreThese) {
  input.content.name = "";
  input.content.pluginId = 0;
  input.HoldBitmap(50, 25);  // a pixel is (0.02, 0.04)
  BeginRender();
  Output();
  ASSERT_EQ(host.reads.size(), 4u);
  ExpectVector(host.reads[0].uvw, {0.52f, 0.25f, 0});
  ExpectVector(host.reads[1].uvw, {0.5f, 0.25f, 0});
  ExpectVector(host.reads[2].uvw, {0.52f, 0.29f, 0});
  ExpectVector(host.reads[3].uvw, {0.52f, 0.21f, 0});
  for (const LinkRead& read : host.reads) {
    EXPECT_EQ(read.tagFlag, 1);
    ExpectExactly(read.delta, {0, 0, 0});
  }
  EXPECT_EQ(sample.texFlags, 1) << "as on the plain path";
  ExpectExactly(sample.delta, {0, 0, 0});
}

TEST_F(ProjectorBumpTest, AShaderAndAnEmptyLinkAreReadAHundredthAway) {
  for (const bool empty : {false, true}) {
    host.reads.clear();
    if (empty) input.content = {};
    BeginRender();
    Output();
    ExpectVector(host.reads.at(2).uvw, {0.51f, 0.26f, 0});
  }
}

// Greys of 0.5 and 0.25 at the first two places, 0.75 and 0.125 at the others: the normal (0, 0, 1)
// plus 3.5 * 0.25 = 0.875 along u and 3.5 * 0.625 = 2.1875 along v; the length is
// sqrt(0.765625 + 4.785156 + 1) = 2.5594491.
TEST_F(ProjectorBumpTest, TheNormalLeansToTheFirstAndThirdPlace) {
  const float greys[] = {0.5f, 0.25f, 0.75f, 0.125f};
  int reads = 0;
  input.content.show = [&](const LinkRead&) {
    const float grey = greys[reads++];
    return Vector{grey, grey, grey};
  };
  BeginRender();
  ExpectExactly(Output(), {-1, -1, -1});
  ExpectVector(render.bumpNormal, {0.3418704f, 0.8546761f, 0.3907091f});
}

TEST_F(ProjectorBumpTest, ColoursCountByTheirMean) {
  int reads = 0;
  input.content.show = [&](const LinkRead&) {
    return ++reads == 1 ? Vector{3, 0, 0} : Vector{0, 0, 0};  // a mean of 1
  };
  BeginRender();
  Output();
  // (3.5, 0, 1) over sqrt(13.25) = 3.640055.
  ExpectVector(render.bumpNormal, {0.961524f, 0, 0.274721f});
}

TEST_F(ProjectorBumpTest, AnAwareInputMovesByItself) {
  MakeInputAware();
  BeginRender();
  ExpectExactly(Output(), {-1, -1, -1});
  ASSERT_EQ(host.reads.size(), 4u);
  for (std::int32_t tap = 1; tap <= 4; ++tap) {
    const LinkRead& read = host.reads[std::size_t(tap - 1)];
    EXPECT_EQ(read.head.tap, tap);
    ExpectExactly(read.uvw, {0.5f, 0.25f, 0});
    ExpectExactly(read.head.uvwPoint, {0.5f, 0.25f, 0});
    EXPECT_EQ(read.head.outerChannel, ChannelBump);
    EXPECT_EQ(read.tagFlag, 77);
  }
  EXPECT_EQ(sample.texFlags, 77);
  ExpectExactly(render.bumpNormal, {0, 0, 1});
}

TEST_F(ProjectorBumpTest, AVanishingNormalIsZero) {
  render.bumpNormal = {0, 0, 0};
  BeginRender();
  Output();
  ExpectExactly(render.bumpNormal, {0, 0, 0});
}

// --- inside a filter ---

// At the default placement.
Vector Projected(const Vector& point) { return {100 * point.x, 100 * point.y, 100 * point.z}; }

struct NestedProjectorTest : ProjectorTest {
  ShaderUnderTest hue{started, PluginIdHue, 5};

  NestedProjectorTest() {
    Link(hue.block<HueBlock>().input).HoldShader(shader, PluginIdProjector);
    MakeInputAware(2);
    sample.render = &render;
  }
  void BeginOuterRender() {
    host.cpuCount = 2;
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(hue.record.InitRender(&hue.instance, &init), 0);
  }
};

TEST_F(NestedProjectorTest, TheFilterPreparesAndMarksIt) {
  BeginOuterRender();
  EXPECT_NE(instance.slots, nullptr);
  EXPECT_EQ(block.nested, 1);
  hue.record.FreeRender(&hue.instance);
  EXPECT_EQ(instance.slots, nullptr);
}

// The filter writes its own footprint into the projector's slot; the projector's input gets the
// projector's, with and without a tag.
TEST_F(NestedProjectorTest, ItProjectsTheSurfaceAndNotTheFiltersFootprint) {
  tag.matrix1 = tag.matrix2 = kIdentityMatrix;
  instance.channel = 9;
  BeginOuterRender();
  for (const std::int32_t cpu : {0, 1}) {
    for (const TextureTag* surfaceTag : {static_cast<TextureTag*>(nullptr), &tag}) {
      host.reads.clear();
      FakeHost::cpuIndex = cpu;
      render.textureTag = surfaceTag;
      ExpectVector(hue.Output(sample), kInputColour, 3e-7);
      ExpectExactly(Slot(cpu).uvwPoint, {0.5f, 0.25f, 0.125f});
      EXPECT_EQ(Slot(cpu).outerChannel, 5);
      const LinkRead& read = Read();
      const Vector point = surfaceTag == nullptr ? Vector{1, 2, 3} : Vector{400, 500, 600};
      ExpectVector(read.head.footprint[0], point, 1e-3);
      ExpectVector(read.head.uvwPoint, Projected(point), 1e-1);
      EXPECT_EQ(read.head.outerChannel, 9);
      EXPECT_EQ(read.head.tap, 0);
    }
  }
}

// The taps of a filter's bump do not reach through a projection: all four reads are the same.
TEST_F(NestedProjectorTest, TheTapsOfAFilterEndHere) {
  hue.instance.channel = ChannelBump;
  BeginOuterRender();
  hue.Output(sample);
  ASSERT_EQ(host.reads.size(), 4u);
  for (const LinkRead& read : host.reads) {
    EXPECT_EQ(read.head.tap, 0);
    ExpectExactly(read.uvw, host.reads[0].uvw);
  }
}

// --- slots ---

TEST_F(ProjectorTest, InitRenderStartsTheInputAsksItAndThenMakesSlotsAndTags) {
  MakeInputAware(3);
  host.calls.clear();
  ASSERT_EQ(InitRender(3), 0);
  const std::string link = std::to_string(input.number);
  const std::vector<std::string> expected = {
      "channelInitRender(" + link + ")", "channelMessage(" + link + ", 1001257)", "cpuCount",
      "alloc(1008)",  // 3 * 336
      "alloc(" + std::to_string(3 * 2 * sizeof(TextureTag)) + ")"};
  EXPECT_EQ(host.calls, expected);
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageReportSlots, payload), 1);
  EXPECT_EQ(std::get<Word>(*payload.Find(12000)), reinterpret_cast<Word>(instance.slots));
  EXPECT_EQ(std::get<Word>(*payload.Find(12001)), 336);
}

TEST_F(ProjectorTest, FreeRenderReleasesTagsThenSlotsThenTheInputAlsoTwice) {
  const int blocks = host.liveBlocks();
  BeginRender(3);
  record.FreeRender(&instance);
  const std::string freeInput = "channelFreeRender(" + std::to_string(input.number) + ")";
  EXPECT_EQ(host.calls, (std::vector<std::string>{"free", "free", freeInput}));
  EXPECT_EQ(instance.slots, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
  record.FreeRender(&instance);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(ProjectorTest, InitRenderAgainReplacesSlotsAndTags) {
  BeginRender(2);
  const int blocks = host.liveBlocks();
  BeginRender(1);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(ProjectorTest, InitRenderFailsWithoutABlockOrAnInput) {
  ShaderInstance bare = {};
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(record.InitRender(&bare, &init), -100);
  ChannelLink* lost = block.input;
  block.input = nullptr;
  EXPECT_EQ(InitRender(), -100);
  record.FreeRender(&instance);
  block.input = lost;
}

TEST_F(ProjectorTest, AFailedInputIsToldAfterAllElseIsDone) {
  input.initAnswer = -100;
  block.position = {10, 0, 0};
  EXPECT_EQ(InitRender(), -100);
  EXPECT_NE(instance.slots, nullptr);
  EXPECT_EQ(block.projectionMatrix.off.x, 10);
  sample.render = &render;
  ExpectExactly(Output(), kInputColour);
  record.FreeRender(&instance);
  const RenderInit noRender = {};
  EXPECT_EQ(record.InitRender(&instance, &noRender), -100);
  EXPECT_EQ(instance.slots, nullptr);
}

TEST_F(ProjectorTest, WithoutARenderThereAreNoSlots) {
  const RenderInit noRender = {};
  EXPECT_EQ(record.InitRender(&instance, &noRender), 0);
  EXPECT_EQ(instance.slots, nullptr);
}

// The slots are the first allocation, the tags the second; only the first is told to the user.
TEST_F(ProjectorTest, EveryFailingAllocationIsAnsweredAndLeavesNothing) {
  const int blocks = host.liveBlocks();
  for (int k = 1; k <= 2; ++k) {
    host.messages.clear();
    host.failAllocation = k;
    EXPECT_EQ(InitRender(3), -100) << k;
    EXPECT_EQ(host.failAllocation, 0) << "it was asked for that one";
    EXPECT_EQ(instance.slots, nullptr);
    EXPECT_EQ(host.liveBlocks(), blocks);
    EXPECT_EQ(host.messages, k == 1 ? std::vector<std::string>{"Couldn't Allocate Globals"}
                                    : std::vector<std::string>{});
    sample.render = &render;
    ExpectExactly(Output(), kInputColour);
    record.FreeRender(&instance);
  }
  host.failAllocation = 3;
  EXPECT_EQ(InitRender(3), 0) << "there is no third";
}

// --- what Output costs, and threads ---

TEST_F(ProjectorTest, OutputAsksForTheCpuOnceAndForNoMemory) {
  static int asked;
  host.render.cpuIndex = [](const RenderContext*) noexcept {
    ++asked;
    return std::int32_t{0};
  };
  for (const bool aware : {false, true}) {
    if (aware) MakeInputAware();
    for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
      instance.channel = channel;
      BeginRender();
      asked = 0;
      Output();
      EXPECT_EQ(asked, 1);
      EXPECT_TRUE(host.calls.empty()) << host.calls.front();
    }
  }
}

TEST_F(ProjectorTest, SeveralThreadsSeeWhatOneSees) {
  constexpr int kThreads = 4, kSamples = 200;
  MakeInputAware(kThreads);
  host.recordReads = projection.record = false;
  input.content.show = [](const LinkRead& read) { return read.head.uvwPoint; };
  block.position = {10, 20, 30};
  BeginRender(kThreads);
  std::vector<std::thread> threads;
  std::vector<int> wrong(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      FakeHost::cpuIndex = t;
      RenderContext own = render;
      ChannelSample mine = sample;
      mine.render = &own;
      for (int i = 0; i < kSamples; ++i) {
        own.hitPoint = {float(t), float(i), 0};
        Vector result;
        record.Output(&result, &instance, &mine);
        // ((t, i, 0) - (0.1, 0.2, 0.3)) * 100, within the rounding of 20000.
        const bool right = std::fabs(result.x - (float(t) * 100 - 10)) < 0.01f &&
                           std::fabs(result.y - (float(i) * 100 - 20)) < 0.01f &&
                           std::fabs(result.z + 30) < 0.01f;
        if (!right) ++wrong[std::size_t(t)];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(kThreads));
}

}  // namespace
}  // namespace sorvanix::test
