// Colorizer: its colour function, its data with the ramp, its saved forms and its messages.
#include "module/shaders/filters/colorizer.h"

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

struct ColorizerTest : FilterTest<ColorizerBlock, PluginIdColorizer> {
  // A straight line from black at 0 to white at 1, which shows the number itself.
  void ShowTheNumber() {
    block.ramp.knots[0] = {{0, 0, 0}, 0, 0.5f};
    block.ramp.knots[1] = {{1, 1, 1}, 1, 0.5f};
    block.ramp.count = 2;
    block.ramp.interpolation = RampLinear;
  }
};

// --- the colour function ---

TEST_F(ColorizerTest, TheDefaultRampRunsFromBlackOverRedToYellow) {
  ExpectExactly(Filtered({0, 0, 0}), {0, 0, 0});
  ExpectVector(Filtered({0.5f, 0.5f, 0.5f}), {1, 0, 0});
  ExpectExactly(Filtered({1, 1, 1}), {1, 1, 0});
}

// The mean of (0.2, 0.4, 0.9) is 0.5; max 0.9, min 0.2: lightness 0.55, above a half, so the
// saturation is 0.7 / (2 - 1.1) = 0.7778; blue leads: hue (0.2 - 0.4) / 0.7 + 4 = 3.714286 sixths
// of a turn, 0.6190476 turns.
TEST_F(ColorizerTest, TheSourceChoosesTheNumber) {
  ShowTheNumber();
  const float expected[] = {0.5f, 0.6190476f, 0.7777778f, 0.55f, 0.2f, 0.4f, 0.9f};
  for (std::int32_t source = 0; source <= 6; ++source) {
    block.source = source;
    EXPECT_NEAR(Filtered({0.2f, 0.4f, 0.9f}).x, expected[source], 1e-6) << source;
  }
}

TEST_F(ColorizerTest, AnyOtherSourceIsTheMean) {
  ShowTheNumber();
  for (const std::int32_t source : {7, -1, INT32_MAX, INT32_MIN}) {
    block.source = source;
    EXPECT_NEAR(Filtered({0.2f, 0.4f, 0.9f}).x, 0.5f, 1e-6) << source;
  }
}

// A hue of -1 degree: below the first knot.
TEST_F(ColorizerTest, TheHueOfGreyShowsTheBeginningOfTheRamp) {
  block.source = ColorizerHue;
  block.ramp.knots[0].colour = {0.25f, 0.5f, 0.75f};
  ExpectExactly(Filtered({0.5f, 0.5f, 0.5f}), {0.25f, 0.5f, 0.75f});
  ExpectExactly(Filtered({1, 1, 1}), {0.25f, 0.5f, 0.75f});
}

// (2, 1, 0) is clipped to (1, 1, 0), whose hue is 60 degrees, 1/6. Unclipped it would be 30.
TEST_F(ColorizerTest, OverBrightColoursAreClippedBeforeTheHueIsTaken) {
  ShowTheNumber();
  block.source = ColorizerHue;
  EXPECT_NEAR(Filtered({2, 1, 0}).x, 1.0 / 6, 1e-6);
  block.source = ColorizerRed;
  EXPECT_EQ(Filtered({2, 1, 0}).x, 1);
  EXPECT_EQ(Filtered({-2, 1, 0}).x, 0);
}

TEST_F(ColorizerTest, ACountBeyondTheRampIsUsedAsFifty) {
  ShowTheNumber();
  block.ramp.count = 1000;  // the knots behind the second are black and at 0
  ExpectExactly(Filtered({1, 1, 1}), {0, 0, 0});
  block.ramp.count = -1;
  ExpectExactly(Filtered({1, 1, 1}), {0, 0, 0});
}

// --- data ---

TEST_F(ColorizerTest, AllocStoresTheDefaults) {
  const Ramp& ramp = block.ramp;
  EXPECT_EQ(ramp.count, 3);
  EXPECT_EQ(ramp.interpolation, RampCubic);
  EXPECT_EQ(ramp.selected, 0);
  EXPECT_EQ(ramp.order[0], 2);
  EXPECT_EQ(ramp.order[1], 1);
  EXPECT_EQ(ramp.order[2], 0);
  ExpectExactly(ramp.knots[1].colour, {1, 0, 0});
  EXPECT_EQ(ramp.knots[1].position, 0.5f);
  ExpectExactly(ramp.knots[2].colour, {1, 1, 0});
  EXPECT_EQ(ramp.knots[2].position, 1);
  for (const RampKnot& knot : ramp.knots) EXPECT_EQ(knot.bias, 0.5f);
  EXPECT_EQ(block.source, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.previewChannel, -1);
}

struct ColorizerFileTest : ColorizerTest {
  void FillBlock() {
    Link(block.input).content.name = "a noise";
    block.ramp.knots[0] = {{0.1f, 0.2f, 0.3f}, 0.25f, 0.4f};
    block.ramp.knots[1] = {{0.5f, 0.6f, 0.7f}, 0.75f, 0.8f};
    block.ramp.order[0] = 0;
    block.ramp.order[1] = 1;
    block.ramp.count = 2;
    block.ramp.selected = 51;
    block.ramp.interpolation = RampStep;
    block.source = 5;
    block.previewObject = 3;
    block.previewBusy = 1;
    block.changed = 0;
    block.previewAuto = 0;
    block.nested = 1;
  }
  // What every version stores in front of the knots, and behind them.
  static Values Head(std::int32_t count) {
    return {Int(count), Int(51), Int(4), Int(5), Int(3), Bool(false), Bool(true), Bool(false)};
  }
  const Values knots = {Vec(0.1f, 0.2f, 0.3f), Float(0.25f), Float(0.4f),
                        Vec(0.5f, 0.6f, 0.7f), Float(0.75f), Float(0.8f)};
  const Values order = {Int(0), Int(1)};
  const Values link = {StreamValue::Link("a noise")};
  const Values nesting = {Bool(true), Int(5), Int(1)};
};

TEST_F(ColorizerFileTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000729)};
  for (const Values& part : {Head(2), knots, order, link, nesting}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(ColorizerFileTest, ReadsTheOldestFormWithoutTheNesting) {
  ReadFile({{Int(20000728)}, Head(2), knots, order, link});
  EXPECT_EQ(block.ramp.count, 2);
  EXPECT_EQ(block.ramp.selected, 51);
  EXPECT_EQ(block.ramp.interpolation, RampStep);
  EXPECT_EQ(block.source, 5);
  ExpectExactly(block.ramp.knots[1].colour, {0.5f, 0.6f, 0.7f});
  EXPECT_EQ(block.ramp.knots[1].position, 0.75f);
  EXPECT_EQ(block.ramp.knots[1].bias, 0.8f);
  EXPECT_EQ(block.ramp.order[1], 1);
  EXPECT_EQ(Link(block.input).content.name, "a noise");
  EXPECT_EQ(block.nested, 0);
}

TEST_F(ColorizerFileTest, ReadsTheNestingFromTheNextMarkerOn) {
  ReadFile({{Int(20000729)}, Head(2), knots, order, link, nesting});
  EXPECT_EQ(block.nested, 1);
}

TEST_F(ColorizerFileTest, AFileOlderThanTheFirstVersionIsNotRead) {
  ReadFile({{Int(20000727)}});
  EXPECT_EQ(block.ramp.count, 3);
}

TEST_F(ColorizerFileTest, SurplusKnotsAreReadAndDropped) {
  Values many, indices;
  for (int i = 0; i < 60; ++i) {
    many.insert(many.end(), {Vec(float(i), 0, 0), Float(float(i)), Float(0.5f)});
    indices.push_back(Int(i));
  }
  ReadFile({{Int(20000729)}, Head(60), many, indices, link, nesting});
  EXPECT_EQ(block.ramp.count, 50);
  EXPECT_EQ(block.ramp.knots[49].position, 49);
  EXPECT_EQ(block.ramp.order[49], 49);
  EXPECT_EQ(block.source, 5) << "the word behind the ramp";
  EXPECT_EQ(Link(block.input).content.name, "a noise") << "still in step";
}

TEST_F(ColorizerFileTest, AnEndlessCountStopsWhereTheStreamEnds) {
  FakeStream stream;
  stream.values = {Int(20000729)};
  const Values head = Head(INT32_MAX);
  stream.values.insert(stream.values.end(), head.begin(), head.end());
  stream.values.insert(stream.values.end(), knots.begin(), knots.end());
  EXPECT_EQ(record.Read(&instance, stream.handle()), 1);
  EXPECT_EQ(block.ramp.count, 50);
  EXPECT_LT(stream.mismatches, 10);
}

TEST_F(ColorizerFileTest, ANegativeCountIsNone) {
  ReadFile({{Int(20000729)}, Head(-7), link, nesting});
  EXPECT_EQ(block.ramp.count, 0);
}

// A message stores the count as it comes; the file must still be one that can be read.
TEST_F(ColorizerFileTest, WriteLimitsTheCountToTheKnotsThatItStores) {
  block.ramp.count = 1000;
  const Values values = Written();
  EXPECT_EQ(values[1], Int(50));
  ReadFile({values});
  EXPECT_EQ(block.ramp.count, 50);
}

TEST_F(ColorizerFileTest, GetAndDescribeAnswerTheseKeysAndAllFiftyKnots) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{1}, Word{4}}, {1001, Word{1}, Word{5}}, {1002, Word{1}, Word{2}}},
                   {1003}, 150);
  FakeContainer values, types;
  shader.Message(MessageGetParameters, values);
  shader.Message(MessageDescribeParameters, types);
  for (std::int32_t i = 0; i < 50; ++i) {
    const RampKnot& knot = block.ramp.knots[i];
    ASSERT_NE(values.Find(1100 + i), nullptr);
    EXPECT_TRUE(SameValue(*values.Find(1100 + i), knot.colour)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1200 + i), knot.position)) << i;
    EXPECT_TRUE(SameValue(*values.Find(1300 + i), knot.bias)) << i;
    for (const std::int32_t first : {1100, 1200, 1300}) {
      ASSERT_NE(types.Find(first + i), nullptr);
      EXPECT_TRUE(SameValue(*types.Find(first + i), Word{2})) << i;
    }
  }
}

TEST_F(ColorizerFileTest, SetTakesKnotsByKeyAndIgnoresThoseBeyondTheLast) {
  FakeContainer payload;
  payload.Set(1149, Vector{0.1f, 0.2f, 0.3f});
  payload.Set(1249, 0.4f);
  payload.Set(1349, 0.6f);
  for (const std::int32_t key : {1150, 1199, 1250, 1299, 1350, 1399, 5000, INT32_MAX}) {
    payload.Set(key, 9.0f);
  }
  payload.Set(1002, Word{1000});
  const ColorizerBlock before = block;
  EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
  EXPECT_EQ(block.ramp.count, 1000) << "stored as it comes";
  ExpectExactly(block.ramp.knots[49].colour, {0.1f, 0.2f, 0.3f});
  EXPECT_EQ(block.ramp.knots[49].position, 0.4f);
  EXPECT_EQ(block.ramp.knots[49].bias, 0.6f);
  EXPECT_EQ(block.ramp.order[0], before.ramp.order[0]);
  EXPECT_EQ(block.ramp.interpolation, before.ramp.interpolation);
}

TEST_F(ColorizerFileTest, CopyTakesTheLiveKnotsAndTheDefaultsElsewhere) {
  FillBlock();
  block.ramp.knots[2].colour = {9, 9, 9};  // no longer live
  ShaderUnderTest other(started, PluginIdColorizer);
  auto& copy = other.block<ColorizerBlock>();
  copy.ramp.knots[40].position = 40;
  copy.previewChannel = 3;
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.ramp.count, 2);
  EXPECT_EQ(copy.ramp.selected, 51);
  EXPECT_EQ(copy.ramp.interpolation, RampStep);
  EXPECT_EQ(copy.ramp.knots[1].position, 0.75f);
  EXPECT_EQ(copy.ramp.order[0], 0);
  ExpectExactly(copy.ramp.knots[2].colour, {1, 1, 0});
  EXPECT_EQ(copy.ramp.knots[40].position, 0);
  EXPECT_EQ(copy.source, 5);
  EXPECT_EQ(copy.previewChannel, -1);
  EXPECT_EQ(copy.nested, 0);
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(ColorizerFileTest, CompareLooksAtTheLiveKnotsAndNotAtTheOrder) {
  ShaderUnderTest other(started, PluginIdColorizer);
  auto& changed = other.block<ColorizerBlock>();
  const ColorizerBlock defaults = changed;
  using Change = void (*)(ColorizerBlock&);
  for (const Change change : {Change([](ColorizerBlock& b) { b.ramp.knots[2].colour.y = 0.5f; }),
                              Change([](ColorizerBlock& b) { b.ramp.knots[1].position = 0.25f; }),
                              Change([](ColorizerBlock& b) { b.ramp.knots[0].bias = 0.25f; }),
                              Change([](ColorizerBlock& b) { b.ramp.count = 4; }),
                              Change([](ColorizerBlock& b) { b.ramp.count = 1000; }),
                              Change([](ColorizerBlock& b) { b.ramp.interpolation = 1; }),
                              Change([](ColorizerBlock& b) { b.ramp.selected = 1; }),
                              Change([](ColorizerBlock& b) { b.source = 1; }),
                              Change([](ColorizerBlock& b) { b.nested = 1; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
  changed = defaults;
  changed.ramp.knots[3].position = 0.25f;
  changed.ramp.order[0] = 0;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

}  // namespace
}  // namespace sorvanix::test
