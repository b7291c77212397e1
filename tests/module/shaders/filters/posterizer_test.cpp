// Posterizer: its colour function, its data, its saved form and its messages.
#include "module/shaders/filters/posterizer.h"

#include <cmath>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;

struct PosterizerTest : FilterTest<PosterizerBlock, PluginIdPosterizer> {};

// --- the colour function ---

// An eight-bit value is a whole number of 255 levels, the bottom of its level, and stays there.
TEST_F(PosterizerTest, With255LevelsAllEightBitColoursStay) {
  host.recordReads = false;
  block.levels = 255;
  Vector& colour = Link(block.input).content.colour;
  int wrong = 0;
  for (int rgb = 0; rgb < 1 << 24; ++rgb) {
    colour = {float(rgb >> 16) / 255, float(rgb >> 8 & 255) / 255, float(rgb & 255) / 255};
    const Vector result = Output();
    wrong += result.x != colour.x || result.y != colour.y || result.z != colour.z;
  }
  EXPECT_EQ(wrong, 0);
}

TEST_F(PosterizerTest, BlackAndWhiteStayForAnyNumberOfLevels) {
  for (const std::int32_t levels : {1, 2, 3, 5, 7, 20, 255}) {
    block.levels = levels;
    EXPECT_EQ(FilteredGrey(0), 0) << levels;
    EXPECT_EQ(FilteredGrey(1), 1) << levels;
    EXPECT_EQ(FilteredGrey(1.5f), 1) << levels;
    EXPECT_EQ(FilteredGrey(-1), 0) << levels;
  }
}

// x = 0.3 * 5 = 1.5, the middle of its level, where the smooth step is a half: (1 + 0.5) / 5 = 0.3.
// x = 0.28 * 5 = 1.4 is below 1.45 and stays at 1: 1 / 5. x = 0.32 * 5 = 1.6 is 2: 2 / 5.
TEST_F(PosterizerTest, ALevelIsFlatUpToTheSoftEdgeInItsMiddle) {
  EXPECT_NEAR(FilteredGrey(0.3f), 0.3f, 1e-6f);
  EXPECT_FLOAT_EQ(FilteredGrey(0.28f), 0.2f);
  EXPECT_FLOAT_EQ(FilteredGrey(0.32f), 0.4f);
}

// levels 2, softness 0.25: x = 0.1875 * 2 = 0.375, t = (0.375 - 0.25) / 0.5 = 0.25,
// t t (3 - 2 t) = 0.15625, over 2 levels 0.078125.
TEST_F(PosterizerTest, TheEdgeIsASmoothStep) {
  block.levels = 2;
  block.softness = 0.25f;
  EXPECT_EQ(FilteredGrey(0.1875f), 0.078125f);
}

TEST_F(PosterizerTest, OneLevelWithTheDefaultSoftnessIsASoftThreshold) {
  block.levels = 1;
  EXPECT_EQ(FilteredGrey(0.44f), 0);
  EXPECT_EQ(FilteredGrey(0.56f), 1);
  EXPECT_NEAR(FilteredGrey(0.5f), 0.5f, 1e-6f);
}

TEST_F(PosterizerTest, NoSoftnessIsAHardEdgeThatTheMiddlePasses) {
  block.levels = 1;
  block.softness = 0;
  EXPECT_EQ(FilteredGrey(0.49f), 0);
  EXPECT_EQ(FilteredGrey(0.5f), 1);
}

// softness 1, levels 1: lo = -0.5, hi = 1.5. x = 0: t = 0.25, r = 0.15625: just above its level
// already.
TEST_F(PosterizerTest, WideSoftnessReachesIntoTheNeighbours) {
  block.levels = 1;
  block.softness = 1;
  EXPECT_EQ(FilteredGrey(0), 0.15625f);
}

TEST_F(PosterizerTest, NoLevelsAreBlack) {
  block.levels = 0;
  ExpectExactly(Filtered({0.5f, 1, 2}), {0, 0, 0});
}

// levels -2: x = -0.5 has b = -1, its middle exactly, r = 0.5: (-1 + 0.5) / -2 = 0.25.
// x = -1.2 has b = -2, x is above -1.45: (-2 + 1) / -2 = 0.5.
TEST_F(PosterizerTest, NegativeLevelsDivideAsTheyStand) {
  block.levels = -2;
  EXPECT_NEAR(FilteredGrey(0.25f), 0.25f, 1e-6f);
  EXPECT_FLOAT_EQ(FilteredGrey(0.6f), 0.5f);
}

// --- data ---

TEST_F(PosterizerTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.levels, 5);
  EXPECT_EQ(block.softness, 0.05f);
  EXPECT_EQ(block.previewObject, 0);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
}

TEST_F(PosterizerTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  Link(block.input).content.name = "a noise";
  block.levels = 8;
  block.previewObject = 2;
  block.nested = 1;
  EXPECT_EQ(Written(),
            (Values{Int(20000830), Int(8), Float(0.05f), StreamValue::Link("a noise"), Int(2),
                    Bool(true), Bool(false), Bool(true), Bool(true), Int(5), Int(1)}));
}

TEST_F(PosterizerTest, ReadsItsOwnAndNewerForms) {
  for (const std::int32_t marker : {20000830, 20000831}) {
    ReadFile({{Int(marker), Int(8), Float(0.25f), StreamValue::Link("a noise"), Int(2), Bool(false),
               Bool(true), Bool(false), Bool(false), Int(99), Int(1)}});
    EXPECT_EQ(block.levels, 8);
    EXPECT_EQ(block.softness, 0.25f);
    EXPECT_EQ(Link(block.input).content.name, "a noise");
    EXPECT_EQ(block.previewObject, 2);
    EXPECT_EQ(block.previewAuto, 0);
    EXPECT_EQ(block.previewBusy, 1);
    EXPECT_EQ(block.changed, 0);
    EXPECT_EQ(block.nested, 1);
  }
}

TEST_F(PosterizerTest, OfAnOlderFileNothingIsReadAndThatIsASuccess) {
  ReadFile({{Int(20000829)}});
  EXPECT_EQ(block.levels, 5);
}

TEST_F(PosterizerTest, LevelsAreTakenAsARealAndTruncated) {
  const auto set = [this](FakeValue value) {
    FakeContainer payload;
    payload.Set(1000, value);
    shader.Message(MessageSetParameters, payload);
    return block.levels;
  };
  EXPECT_EQ(set(7.9f), 7);
  EXPECT_EQ(set(-7.9f), -7);
  EXPECT_EQ(set(Word{12}), 12);
  EXPECT_EQ(set(3e9f), INT32_MAX);
  EXPECT_EQ(set(-3e9f), INT32_MIN);
  EXPECT_EQ(set(-2147483648.0f), INT32_MIN);
  EXPECT_EQ(set(2147483520.0f), 2147483520) << "the largest float below 2^31";
  EXPECT_EQ(set(INFINITY), INT32_MAX);
  EXPECT_EQ(set(-INFINITY), INT32_MIN);
  EXPECT_EQ(set(NAN), 0);
}

// An integer that is described as a real: deliberate.
TEST_F(PosterizerTest, GetAndDescribeAnswerTheseKeys) {
  ExpectParameters(shader, {{1000, Word{2}, Word{5}}, {1001, Word{2}, 0.05f}}, {1002});
}

TEST_F(PosterizerTest, CopyTakesTheListedFieldsAndTheDefaultsElsewhere) {
  block.levels = 9;
  block.softness = 0.5f;
  block.previewObject = 2;
  block.previewAuto = 0;
  block.previewBusy = 1;
  block.changed = 0;
  block.previewChannel = 7;
  ShaderUnderTest other(started, PluginIdPosterizer);
  auto& copy = other.block<PosterizerBlock>();
  copy.previewChannel = 3;
  copy.nested = 1;
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.levels, 9);
  EXPECT_EQ(copy.softness, 0.5f);
  EXPECT_EQ(copy.previewObject, 2);
  EXPECT_EQ(copy.previewAuto, 0);
  EXPECT_EQ(copy.previewBusy, 1);
  EXPECT_EQ(copy.changed, 0);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, -1);
}

TEST_F(PosterizerTest, CompareSeesLevelsSoftnessAndNested) {
  ShaderUnderTest other(started, PluginIdPosterizer);
  auto& changed = other.block<PosterizerBlock>();
  const PosterizerBlock defaults = changed;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
  changed.levels = 6;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  changed = defaults;
  changed.softness = 0.06f;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  changed = defaults;
  changed.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
}

}  // namespace
}  // namespace sorvanix::test
