// Projector as data: its defaults, its saved forms, its messages, Copy and Compare.
#include <cmath>
#include <functional>

#include "module/shaders/surface/projector.h"
#include "tests/support/surface_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;

constexpr Matrix kMatrix = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};

struct ProjectorDataTest : SurfaceTest<ProjectorBlock, PluginIdProjector> {
  void FillBlock() {
    Link(block.input).content.name = "a noise";
    ChannelLink* input = block.input;
    block = {.input = input,
             .projectionMatrix = kMatrix,
             .tileFlags = 3,
             .projection = 5,
             .offsetU = 0.125f,
             .offsetUCopy = 0.25f,
             .offsetV = 0.375f,
             .offsetVCopy = 0.5f,
             .lengthU = 2,
             .lengthV = 3,
             .invLengthU = 4,
             .invLengthV = 5,
             .tile = 0,
             .seamless = 1,
             .tilesU = 6,
             .tilesV = 7,
             .position = {8, 9, 10},
             .scale = {11, 12, 13},
             .rotation = {14, 15, 16},
             .uvwIndex = 17,
             .dialogWord = 18,
             .nested = 1,
             .previewChannel = 19};
  }
  const Values fields = {StreamValue::Link("a noise"),
                         StreamValue::Mat(kMatrix),
                         Int(3),
                         Int(5),
                         Float(0.125f),  // both offsets, then both copies
                         Float(0.375f),
                         Float(0.25f),
                         Float(0.5f),
                         Float(2),  // each length with its inverse
                         Float(4),
                         Float(3),
                         Float(5),
                         Int(0),
                         Int(1),
                         Float(6),
                         Float(7),
                         Float(8),
                         Float(9),
                         Float(10),
                         Float(11),
                         Float(12),
                         Float(13),
                         Float(14),
                         Float(15),
                         Float(16)};
  const Values nesting = {Bool(true), Int(5), Int(1)};
  const Values uvwIndex = {Int(17)};

  void ExpectFields() {
    EXPECT_EQ(Link(block.input).content.name, "a noise");
    ExpectExactly(block.projectionMatrix.off, kMatrix.off);
    ExpectExactly(block.projectionMatrix.v3, kMatrix.v3);
    EXPECT_EQ(block.tileFlags, 3);
    EXPECT_EQ(block.projection, 5);
    EXPECT_EQ(block.offsetU, 0.125f);
    EXPECT_EQ(block.offsetUCopy, 0.25f);
    EXPECT_EQ(block.offsetV, 0.375f);
    EXPECT_EQ(block.offsetVCopy, 0.5f);
    EXPECT_EQ(block.lengthU, 2);
    EXPECT_EQ(block.lengthV, 3);
    EXPECT_EQ(block.invLengthU, 4);
    EXPECT_EQ(block.invLengthV, 5);
    EXPECT_EQ(block.tile, 0);
    EXPECT_EQ(block.seamless, 1);
    EXPECT_EQ(block.tilesU, 6);
    EXPECT_EQ(block.tilesV, 7);
    ExpectExactly(block.position, {8, 9, 10});
    ExpectExactly(block.scale, {11, 12, 13});
    ExpectExactly(block.rotation, {14, 15, 16});
  }
};

TEST_F(ProjectorDataTest, AllocStoresTheDefaults) {
  ASSERT_NE(block.input, nullptr);
  EXPECT_EQ(host.liveLinks, 1);
  ExpectExactly(block.projectionMatrix.off, {0, 0, 0});
  ExpectExactly(block.projectionMatrix.v1, {1, 0, 0});
  ExpectExactly(block.projectionMatrix.v2, {0, 1, 0});
  ExpectExactly(block.projectionMatrix.v3, {0, 0, 1});
  EXPECT_EQ(block.tileFlags, 1);
  EXPECT_EQ(block.projection, 0);
  for (const float zero : {block.offsetU, block.offsetUCopy, block.offsetV, block.offsetVCopy}) {
    EXPECT_EQ(zero, 0);
  }
  for (const float one : {block.lengthU, block.lengthV, block.invLengthU, block.invLengthV,
                          block.tilesU, block.tilesV}) {
    EXPECT_EQ(one, 1);
  }
  EXPECT_EQ(block.tile, 1);
  EXPECT_EQ(block.seamless, 0);
  ExpectExactly(block.position, {0, 0, 0});
  ExpectExactly(block.scale, {1, 1, 1});
  ExpectExactly(block.rotation, {0, 0, 0});
  EXPECT_EQ(block.uvwIndex, 1);
  EXPECT_EQ(block.dialogWord, 0);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
}

// --- the saved form ---

TEST_F(ProjectorDataTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20064760)};
  for (const Values& part : {fields, nesting, uvwIndex}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(ProjectorDataTest, TheFirstVersionEndsWithTheRotation) {
  ReadFile({{Int(20064758)}, fields});
  ExpectFields();
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.uvwIndex, 1);
}

TEST_F(ProjectorDataTest, TheSecondVersionAddsTwoFillersAndTheNesting) {
  ReadFile({{Int(20064759)}, fields, nesting});
  ExpectFields();
  EXPECT_EQ(block.nested, 1);
  EXPECT_EQ(block.uvwIndex, 1);
}

TEST_F(ProjectorDataTest, TheThirdVersionAddsTheSetOfCoordinates) {
  for (const std::int32_t marker : {20064760, INT32_MAX}) {
    ReadFile({{Int(marker)}, fields, nesting, uvwIndex});
    ExpectFields();
    EXPECT_EQ(block.nested, 1);
    EXPECT_EQ(block.uvwIndex, 17);
  }
}

TEST_F(ProjectorDataTest, AnOlderFileIsNotReadAndThatIsNoFailure) {
  for (const std::int32_t marker : {20064757, 0, INT32_MIN}) {
    ReadFile({{Int(marker)}});
    EXPECT_EQ(block.tileFlags, 1) << marker;
  }
}

// --- messages ---

TEST_F(ProjectorDataTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{3}},
                    {1001, Word{1}, Word{5}},
                    {1002, Word{2}, 0.125f},
                    {1003, Word{2}, 0.375f},
                    {1004, Word{2}, 2.0f},
                    {1005, Word{2}, 3.0f},
                    {1006, Word{1}, Word{0}},
                    {1007, Word{1}, Word{1}},
                    {1008, Word{2}, 8.0f},
                    {1009, Word{2}, 9.0f},
                    {1010, Word{2}, 10.0f},
                    {1011, Word{2}, 11.0f},
                    {1012, Word{2}, 12.0f},
                    {1013, Word{2}, 13.0f},
                    {1014, Word{2}, 14.0f},
                    {1015, Word{2}, 15.0f},
                    {1016, Word{2}, 16.0f},
                    {1018, Word{1}, Word{17}}},
                   {1017});
}

TEST_F(ProjectorDataTest, TheInputsContainerIsTheLinksOwn) {
  ScriptedLink& input = Link(block.input);
  input.parameters.Set(1016, Word{1000104});
  for (const std::int32_t message : {MessageGetParameters, MessageDescribeParameters}) {
    FakeContainer payload;
    shader.Message(message, payload);
    EXPECT_EQ(input.messages.back().id, message);
    EXPECT_TRUE(SameValue(*payload.Inner(1017).Find(1016), Word{1000104}));
  }
  auto inner = std::make_shared<FakeContainer>();
  inner->Set(1016, Word{5});
  FakeContainer payload;
  payload.Set(1017, inner);
  shader.Message(MessageSetParameters, payload);
  EXPECT_EQ(input.messages.back().id, MessageSetParameters);
  EXPECT_TRUE(SameValue(*input.messages.back().payload.Find(1016), Word{5}));
  EXPECT_EQ(host.liveContainers, 0);
}

TEST_F(ProjectorDataTest, GetThenSetGivesAnEqualBlockInAllExchangedFields) {
  FillBlock();
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  ShaderUnderTest other(started, PluginIdProjector);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  // The input holds no real shader, and these have no key.
  auto& taken = other.block<ProjectorBlock>();
  Link(taken.input).content.name = "a noise";
  taken.projectionMatrix = block.projectionMatrix;
  taken.offsetUCopy = block.offsetUCopy;
  taken.offsetVCopy = block.offsetVCopy;
  taken.invLengthU = block.invLengthU;
  taken.invLengthV = block.invLengthV;
  taken.tilesU = block.tilesU;
  taken.tilesV = block.tilesV;
  taken.nested = block.nested;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(ProjectorDataTest, ForwardIsNotForIt) {
  Link(block.input).messageAnswer = 40;
  FakeContainer payload;
  EXPECT_EQ(shader.Message(MessageForward, payload), 1);
  EXPECT_TRUE(Link(block.input).messages.empty());
}

// --- Copy, Compare, Free ---

TEST_F(ProjectorDataTest, CopyTakesEveryFieldAndTheInputsContent) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdProjector);
  auto& copy = other.block<ProjectorBlock>();
  copy.nested = 1;
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_NE(copy.input, block.input);
  EXPECT_EQ(Link(copy.input).content.name, "a noise");
  EXPECT_EQ(copy.dialogWord, 18);
  EXPECT_EQ(copy.previewChannel, 19);
  EXPECT_EQ(copy.nested, 0);
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  EXPECT_EQ(host.liveLinks, 2);
}

TEST_F(ProjectorDataTest, AFailingCopyOfTheInputFailsTheCopy) {
  ShaderUnderTest other(started, PluginIdProjector);
  for (int* failure : {&host.failLink, &host.failLinkCopy}) {
    *failure = 1;
    EXPECT_EQ(record.Copy(&instance, &other.instance), 0);
    EXPECT_EQ(other.block<ProjectorBlock>().input, nullptr);
    EXPECT_EQ(host.liveLinks, 1);
    EXPECT_EQ(record.Copy(&instance, &other.instance), 1) << "but a destination again";
  }
}

TEST_F(ProjectorDataTest, AFailingAllocLeavesNothing) {
  const int blocks = host.liveBlocks();
  for (int* failure : {&host.failAllocation, &host.failLink}) {
    ShaderInstance bare = {};
    *failure = 1;
    EXPECT_EQ(record.Alloc(&bare), 0);
    EXPECT_EQ(bare.data, nullptr);
    EXPECT_EQ(host.liveBlocks(), blocks);
    EXPECT_EQ(host.liveLinks, 1);
  }
}

TEST_F(ProjectorDataTest, FreeReleasesTheInput) {
  record.Free(&instance);
  EXPECT_EQ(host.liveLinks, 0);
  EXPECT_EQ(instance.data, nullptr);
}

TEST_F(ProjectorDataTest, CompareLooksAtTheFieldsOfTheFileAndTheInput) {
  ShaderUnderTest other(started, PluginIdProjector);
  auto& changed = other.block<ProjectorBlock>();
  const ProjectorBlock defaults = changed;
  using Change = std::function<void(ProjectorBlock&)>;
  const Change compared[] = {[](auto& b) { b.projectionMatrix.off.x = 9; },
                             [](auto& b) { b.projectionMatrix.v1.y = 9; },
                             [](auto& b) { b.projectionMatrix.v2.z = 9; },
                             [](auto& b) { b.projectionMatrix.v3.z = NAN; },
                             [](auto& b) { b.tileFlags = 9; },
                             [](auto& b) { b.projection = 9; },
                             [](auto& b) { b.offsetU = 9; },
                             [](auto& b) { b.offsetUCopy = 9; },
                             [](auto& b) { b.offsetV = 9; },
                             [](auto& b) { b.offsetVCopy = 9; },
                             [](auto& b) { b.lengthU = 9; },
                             [](auto& b) { b.lengthV = 9; },
                             [](auto& b) { b.invLengthU = 9; },
                             [](auto& b) { b.invLengthV = 9; },
                             [](auto& b) { b.tile = 9; },
                             [](auto& b) { b.seamless = 9; },
                             [](auto& b) { b.tilesU = 9; },
                             [](auto& b) { b.tilesV = 9; },
                             [](auto& b) { b.position.y = 9; },
                             [](auto& b) { b.scale.z = 9; },
                             [](auto& b) { b.rotation.x = 9; },
                             [](auto& b) { b.nested = 9; },
                             [](auto& b) { b.uvwIndex = 9; }};
  for (std::size_t i = 0; i < std::size(compared); ++i) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    compared[i](changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0) << i;
  }
  changed = defaults;
  changed.dialogWord = changed.previewChannel = 9;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  Link(changed.input).content.name = "different";
  EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
}

}  // namespace
}  // namespace sorvanix::test
