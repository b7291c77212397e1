// The interpreters of shader tables, on a table made up to hold every kind of value and every
// irregularity. The shaders' own tables are tested with the shaders.
#include "module/shell/shader_table.h"

#include <gtest/gtest.h>

#include "module/shell/host_channel.h"
#include "module/shell/module_state.h"
#include "module/shell/table_callbacks.h"
#include "tests/support/fake_host.h"

namespace sorvanix::test {
namespace {

struct MadeUpBlock {
  std::int32_t number;
  float real;
  Vector vector;
  HostString* text;
  ChannelLink* link;
  Matrix matrix;
  Ramp ramp;
  std::int32_t state;  // without an initial value and not copied
  std::int32_t nested;
};

#define MEMBER(kind, member) SORVANIX_MEMBER(MadeUpBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(MadeUpBlock, kind, member)

constexpr Ramp kRamp = DefaultRamp({{0, 0, 0}, 0}, {{1, 0, 0}, 0.5f}, {{1, 1, 0}, 1});

constexpr Field kFields[] = {
    {MEMBER(Int, number), .initial = Initially(7), .compared = true, .copied = true, .key = 1000,
     .describeAs = DescribeInteger},
    {MEMBER(Float, real), .initial = Initially(0.5f), .compared = true, .copied = true,
     .key = 1001},
    {MEMBER(Vector, vector), .initial = Initially(1.0f, 2.0f, 3.0f), .compared = true,
     .copied = true, .key = 1002},
    {MEMBER(String, text), .compared = true, .copied = true, .key = 1003,
     .describeAs = DescribeInteger},
    {MEMBER(Link, link), .compared = true, .copied = true, .key = 1004},
    {MEMBER(Matrix, matrix), .initial = InitiallyIdentity(), .compared = true, .copied = true},
    {SORVANIX_RAMP_MEMBER(MadeUpBlock, Int, count), .compared = true, .copied = true, .key = 1005},
    {MEMBER(Int, state)},
    {MEMBER(Int, nested), .initial = Initially(0)},
};

constexpr StoredItem kStored[] = {
    Stored(PLACE(String, text)),
    Stored(PLACE(Link, link)),
    Stored(PLACE(Matrix, matrix)),
    Stored(PLACE(RampCount, ramp)),
    Stored(PLACE(RampKnots, ramp)),
    Stored(PLACE(RampOrder, ramp)),
    StoredLiteral(200, ValueKind::Bool, 1, 2),
    StoredSince(201, PLACE(Int, number)),
};

// Keys of knots in threes: colours from 1008, positions from 1009, biases from 1010.
constexpr ShaderTable kSurface = {
    .pluginId = 1,
    .name = "Made up",
    .category = ShaderCategory::Surface,
    .summary = "",
    .blockSize = sizeof(MadeUpBlock),
    .nestedOffset = offsetof(MadeUpBlock, nested),
    .fields = kFields,
    .ramp = {.offset = offsetof(MadeUpBlock, ramp),
             .initial = &kRamp,
             .colourKey = 1008,
             .positionKey = 1009,
             .biasKey = 1010,
             .keyStride = 3},
    .copyRule = CopyRule::ListedFields,
    .marker = 201,
    .onlyOwnMarker = true,
    .stored = kStored,
};

struct ShaderTableTest : ::testing::Test {
  using Callbacks = TableCallbacks<kSurface>;
  FakeHost host;
  ShaderInstance instance = {};

  ShaderTableTest() {
    hostApi = host.api;
    Callbacks::Alloc(&instance);
  }
  ~ShaderTableTest() override {
    Callbacks::Free(&instance);
    EXPECT_EQ(host.liveBlocks(), 0);
    EXPECT_EQ(host.liveTexts(), 0);
    EXPECT_EQ(host.liveLinks, 0);
    EXPECT_EQ(host.liveContainers, 0);
    hostApi = {};
  }
  MadeUpBlock& block() { return *static_cast<MadeUpBlock*>(instance.data); }
  std::int32_t Message(std::int32_t id, FakeContainer& payload) {
    return Callbacks::Message(&instance, id, payload.handle());
  }
  void SetText(const char* text) {
    FakeContainer payload;
    payload.Set(1003, std::string(text));
    Message(MessageSetParameters, payload);
  }
};

TEST_F(ShaderTableTest, AStringStartsAsTheSharedEmptyOne) {
  EXPECT_EQ(block().text, host.api.string->empty);
  EXPECT_EQ(host.liveTexts(), 0);
}

TEST_F(ShaderTableTest, AStringIsSetAndToldByMessage) {
  SetText("first");
  SetText("second");
  EXPECT_EQ(host.liveTexts(), 1) << "the former one was freed";
  FakeContainer answer;
  Message(MessageGetParameters, answer);
  EXPECT_TRUE(SameValue(*answer.Find(1003), std::string("second")));
}

TEST_F(ShaderTableTest, AStringIsComparedByItsText) {
  ShaderInstance other = {};
  Callbacks::Alloc(&other);
  EXPECT_EQ(Callbacks::Compare(&instance, &other), 1);
  SetText("text");
  EXPECT_EQ(Callbacks::Compare(&instance, &other), 0);
  EXPECT_EQ(Callbacks::Copy(&instance, &other), 1);
  EXPECT_EQ(Callbacks::Compare(&instance, &other), 1);
  EXPECT_NE(static_cast<MadeUpBlock*>(other.data)->text, block().text);
  Callbacks::Free(&other);
}

TEST_F(ShaderTableTest, AMatrixStartsAsTheIdentityAndIsComparedByItsElements) {
  const Matrix& matrix = block().matrix;
  EXPECT_EQ(matrix.off.x, 0);
  EXPECT_EQ(matrix.v1.x, 1);
  EXPECT_EQ(matrix.v2.y, 1);
  EXPECT_EQ(matrix.v3.z, 1);
  EXPECT_EQ(matrix.v3.y, 0);
  ShaderInstance other = {};
  Callbacks::Alloc(&other);
  for (float Vector::*component : {&Vector::x, &Vector::y, &Vector::z}) {
    for (Vector Matrix::*row : {&Matrix::off, &Matrix::v1, &Matrix::v2, &Matrix::v3}) {
      block().matrix.*row.*component += 1;
      EXPECT_EQ(Callbacks::Compare(&instance, &other), 0);
      EXPECT_EQ(Callbacks::Copy(&instance, &other), 1);
      EXPECT_EQ(Callbacks::Compare(&instance, &other), 1);
    }
  }
  Callbacks::Free(&other);
}

TEST_F(ShaderTableTest, WriteThenReadRestoresEveryKind) {
  SetText("text");
  ScriptedLink::Of(block().link).content.name = "linked";
  block().number = 8;
  block().matrix.v2.y = 5;
  block().ramp.knots[1].colour = {0.1f, 0.2f, 0.3f};
  FakeStream stream;
  EXPECT_EQ(Callbacks::Write(&instance, stream.handle()), 1);
  ShaderInstance other = {};
  Callbacks::Alloc(&other);
  EXPECT_EQ(Callbacks::Read(&other, stream.handle()), 1);
  EXPECT_EQ(stream.mismatches, 0);
  EXPECT_EQ(stream.position, stream.values.size());
  EXPECT_EQ(Callbacks::Compare(&instance, &other), 1);
  Callbacks::Free(&other);
}

TEST_F(ShaderTableTest, AStreamWithoutTheStringLeavesTheFormerOne) {
  SetText("kept");
  FakeStream stream;
  stream.values = {StreamValue::Int(201)};
  EXPECT_EQ(Callbacks::Read(&instance, stream.handle()), 1);
  EXPECT_EQ(FakeTextOf(block().text), "kept");
}

// A failed Copy may have left no link.
TEST_F(ShaderTableTest, ALinkThatIsMissingIsWrittenAsAnEmptyOne) {
  FakeStream whole, gap;
  Callbacks::Write(&instance, whole.handle());
  hostChannelRelease(block().link);
  block().link = nullptr;
  EXPECT_EQ(Callbacks::Write(&instance, gap.handle()), 1);
  EXPECT_EQ(gap.values, whole.values);
  EXPECT_EQ(host.liveLinks, 0) << "the one that was made for it is gone";
}

TEST_F(ShaderTableTest, ALinkThatIsMissingIsMadeWhenOneIsRead) {
  ScriptedLink::Of(block().link).content.name = "linked";
  FakeStream stream;
  Callbacks::Write(&instance, stream.handle());
  hostChannelRelease(block().link);
  block().link = nullptr;
  EXPECT_EQ(Callbacks::Read(&instance, stream.handle()), 1);
  EXPECT_EQ(stream.mismatches, 0);
  ASSERT_NE(block().link, nullptr);
  EXPECT_EQ(ScriptedLink::Of(block().link).content.name, "linked");
}

TEST_F(ShaderTableTest, WithoutMemoryForAMissingLinkReadAndWriteGoOn) {
  hostChannelRelease(block().link);
  block().link = nullptr;
  FakeStream stream;
  host.failLink = 1;
  EXPECT_EQ(Callbacks::Write(&instance, stream.handle()), 1);
  host.failLink = 1;
  Callbacks::Read(&instance, stream.handle());
  EXPECT_EQ(block().link, nullptr);
}

TEST_F(ShaderTableTest, ALiteralIsWrittenAsOftenAsItsRowSays) {
  FakeStream stream;
  Callbacks::Write(&instance, stream.handle());
  const auto& values = stream.values;
  ASSERT_GE(values.size(), 3u);
  EXPECT_EQ(values[values.size() - 3], StreamValue::Bool(true));
  EXPECT_EQ(values[values.size() - 2], StreamValue::Bool(true));
  EXPECT_EQ(values.back(), StreamValue::Int(7));
}

TEST_F(ShaderTableTest, AShaderMayRefuseEveryMarkerButItsOwn) {
  for (const std::int32_t marker : {200, 202, 0}) {
    FakeStream stream;
    stream.values = {StreamValue::Int(marker), StreamValue::String("not read")};
    EXPECT_EQ(Callbacks::Read(&instance, stream.handle()), 0);
    EXPECT_EQ(stream.position, 1u);
  }
}

TEST_F(ShaderTableTest, KnotKeysMayRunInThrees) {
  FakeContainer payload;
  payload.Set(1008 + 3 * 49, Vector{0.1f, 0.2f, 0.3f});
  payload.Set(1009 + 3 * 49, 0.25f);
  payload.Set(1010 + 3 * 49, 0.75f);
  payload.Set(1008 + 3 * 50, Vector{9, 9, 9});
  payload.Set(1010 + 3 * 50, 9.0f);
  Message(MessageSetParameters, payload);
  const RampKnot& last = block().ramp.knots[49];
  EXPECT_EQ(last.colour.z, 0.3f);
  EXPECT_EQ(last.position, 0.25f);
  EXPECT_EQ(last.bias, 0.75f);
  EXPECT_EQ(block().ramp.order[0], 2) << "what stands behind the knots";
  FakeContainer answer;
  Message(MessageGetParameters, answer);
  EXPECT_EQ(answer.entries.size(), 6u + 150u);
  EXPECT_TRUE(SameValue(*answer.Find(1156), 0.25f));
}

TEST_F(ShaderTableTest, CopyLeavesAFieldAloneThatAllocDoesNotSet) {
  ShaderInstance other = {};
  Callbacks::Alloc(&other);
  auto& copy = *static_cast<MadeUpBlock*>(other.data);
  block().state = 1;
  copy.state = 2;
  EXPECT_EQ(Callbacks::Copy(&instance, &other), 1);
  EXPECT_EQ(copy.state, 2);
  Callbacks::Free(&other);
}

// Only filters forward: for any other shader the message is one that it does not know.
TEST_F(ShaderTableTest, AShaderThatIsNoFilterForwardsNothing) {
  FakeContainer payload;
  ScriptedLink::Of(block().link).messageAnswer = 5;
  EXPECT_EQ(Message(MessageForward, payload), 1);
  EXPECT_TRUE(ScriptedLink::Of(block().link).messages.empty());
}

}  // namespace
}  // namespace sorvanix::test
