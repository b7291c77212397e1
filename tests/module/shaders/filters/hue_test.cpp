// Hue: its colour function, its data, its saved form and its messages.
#include "module/shaders/filters/hue.h"

#include <algorithm>
#include <cmath>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;

struct HueTest : FilterTest<HueBlock, PluginIdHue> {};

// --- the colour function ---

// A hue is rounded to a float of at most 1, which is off by 2^-25 at most, and counts sixfold in a
// channel; saturation and value add as much each. 6 * 2^-25 + 2 * 2^-25 < 3e-7.
TEST_F(HueTest, TheDefaultsKeepAllEightBitColours) {
  host.recordReads = false;
  Vector& colour = Link(block.input).content.colour;
  double worst = 0;
  for (int rgb = 0; rgb < 1 << 24; ++rgb) {
    colour = {float(rgb >> 16) / 255, float(rgb >> 8 & 255) / 255, float(rgb & 255) / 255};
    const Vector result = Output();
    worst =
        std::max({worst, std::fabs(double{result.x} - colour.x),
                  std::fabs(double{result.y} - colour.y), std::fabs(double{result.z} - colour.z)});
  }
  EXPECT_LT(worst, 3e-7);
}

TEST_F(HueTest, ColoursAreClampedFirst) { ExpectExactly(Filtered({3, -1, -1}), {1, 0, 0}); }

TEST_F(HueTest, AThirdOfATurnTakesRedToGreenToBlueToRed) {
  block.hueShift = 120;
  ExpectVector(Filtered({1, 0, 0}), {0, 1, 0}, 1e-6);
  ExpectVector(Filtered({0, 1, 0}), {0, 0, 1}, 1e-6);
  ExpectVector(Filtered({0, 0, 1}), {1, 0, 0}, 1e-6);
}

// The hue of red is 0: x = -0.5, whose fraction by truncation is -0.5, and 1 more is 0.5, cyan.
TEST_F(HueTest, AHalfTurnBackwardsGivesTheComplement) {
  block.hueShift = -180;
  ExpectVector(Filtered({1, 0, 0}), {0, 1, 1}, 1e-6);
}

// 360 times the float 1/360 is above 1 by 2.4e-8; a channel moves by six times that for each turn,
// and by the rounding of the hue.
TEST_F(HueTest, AFullTurnReturns) {
  for (const float turn : {360.0f, -360.0f, 720.0f}) {
    block.hueShift = turn;
    ExpectVector(Filtered({0.75f, 0.5f, 0.25f}), {0.75f, 0.5f, 0.25f}, 1e-6);
  }
}

// (1, 0.5, 0.5): saturation 0.5. With 0.5 more it is 1: (1, 0, 0).
TEST_F(HueTest, SaturationIsShiftedAndClamped) {
  block.saturationShift = 0.5f;
  ExpectVector(Filtered({1, 0.5f, 0.5f}), {1, 0, 0}, 1e-6);
  block.saturationShift = 5;
  ExpectVector(Filtered({1, 0.5f, 0.5f}), {1, 0, 0}, 1e-6);
  block.saturationShift = -1;
  ExpectExactly(Filtered({1, 0.5f, 0.5f}), {1, 1, 1});
}

// 0.5 towards white: 0.25 + 0.75 * 0.5 = 0.625; 0.5 towards black: 0.25 * 0.5 = 0.125.
TEST_F(HueTest, LightnessBlendsTowardsWhiteOrBlack) {
  block.lightnessShift = 0.5f;
  EXPECT_FLOAT_EQ(FilteredGrey(0.25f), 0.625f);
  EXPECT_FLOAT_EQ(FilteredGrey(0), 0.5f) << "black is lifted";
  block.lightnessShift = -0.5f;
  EXPECT_FLOAT_EQ(FilteredGrey(0.25f), 0.125f);
  block.lightnessShift = -1;
  EXPECT_EQ(FilteredGrey(0.25f), 0);
}

TEST_F(HueTest, BlackStaysBlackUnlessLifted) {
  block.hueShift = 77;
  block.saturationShift = 1;
  ExpectExactly(Filtered({0, 0, 0}), {0, 0, 0});
  ExpectExactly(Filtered({-1, -2, 0}), {0, 0, 0});
  block.colorize = 1;
  ExpectExactly(Filtered({0, 0, 0}), {0, 0, 0});
}

// A saturation of 1 - 0.4997 / 0.5 = 0.0006 is none: the value is the smallest component.
TEST_F(HueTest, NearGreysDarkenToTheirSmallestComponent) {
  ExpectExactly(Filtered({0.5f, 0.4997f, 0.4999f}), {0.4997f, 0.4997f, 0.4997f});
}

// Their hue is 0, so that saturation makes them red: (0.5, 0, 0).
TEST_F(HueTest, SaturatedGreysTurnRed) {
  block.saturationShift = 1;
  ExpectVector(Filtered({0.5f, 0.5f, 0.5f}), {0.5f, 0, 0}, 1e-6);
}

// Hue 120, saturation 0.5, the value 0.8 of the input: (0.4, 0.8, 0.4).
TEST_F(HueTest, ColorizeKeepsOnlyTheValueOfTheInput) {
  block.colorize = 1;
  block.colorHue = 120;
  block.colorSaturation = 0.5f;
  block.hueShift = 50;
  block.saturationShift = 0.5f;
  block.lightnessShift = 0.5f;
  for (const Vector& input : {Vector{0.8f, 0, 0}, Vector{0.1f, 0.2f, 0.8f}}) {
    ExpectVector(Filtered(input), {0.4f, 0.8f, 0.4f}, 1e-6);
  }
}

// (0.4, 0.8, 0.4) halfway to black, and halfway to white.
TEST_F(HueTest, ColorizeHasALightnessOfItsOwn) {
  block.colorize = 7;  // any number but 0
  block.colorHue = 120;
  block.colorSaturation = 0.5f;
  block.colorLightness = -0.5f;
  ExpectVector(Filtered({0.8f, 0, 0}), {0.2f, 0.4f, 0.2f}, 1e-6);
  block.colorLightness = 0.5f;
  ExpectVector(Filtered({0.8f, 0, 0}), {0.7f, 0.9f, 0.7f}, 1e-6);
}

// 360 times the float 1/360 is 1.00000002, and 1 as a float: the hue that is the same as 0.
TEST_F(HueTest, AColorHueOf360IsRed) {
  block.colorize = 1;
  block.colorSaturation = 1;
  block.colorHue = 360;
  ExpectVector(Filtered({0.5f, 0.5f, 0.5f}), {0.5f, 0, 0}, 1e-6);
}

// --- data ---

TEST_F(HueTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.hueShift, 0);
  EXPECT_EQ(block.saturationShift, 0);
  EXPECT_EQ(block.lightnessShift, 0);
  EXPECT_EQ(block.colorize, 0);
  EXPECT_EQ(block.colorHue, 0);
  EXPECT_EQ(block.colorSaturation, 0.25f);
  EXPECT_EQ(block.colorLightness, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.previewChannel, -1);
}

struct HueFileTest : HueTest {
  void FillBlock() {
    Link(block.input).content.name = "a noise";
    block.hueShift = 10;
    block.saturationShift = 0.5f;
    block.lightnessShift = -0.5f;
    block.colorize = 1;
    block.colorHue = 20;
    block.colorSaturation = 0.75f;
    block.colorLightness = 0.125f;
    block.previewObject = 4;
    block.previewBusy = 1;
    block.changed = 0;
    block.previewAuto = 0;
    block.nested = 1;
    block.previewChannel = 7;
  }
  const Values filled = {Float(10),  Float(0.5f),  Float(-0.5f),  Bool(true),
                         Float(20),  Float(0.75f), Float(0.125f), StreamValue::Link("a noise"),
                         Int(4),     Bool(false),  Bool(true),    Bool(false),
                         Bool(true), Int(5),       Int(1)};
};

TEST_F(HueFileTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000828)};
  expected.insert(expected.end(), filled.begin(), filled.end());
  EXPECT_EQ(Written(), expected);
}

TEST_F(HueFileTest, ReadsItsOwnAndNewerForms) {
  for (const std::int32_t marker : {20000828, 20990101}) {
    block.hueShift = 0;
    ReadFile({{Int(marker)}, filled});
    EXPECT_EQ(block.hueShift, 10);
    EXPECT_EQ(block.saturationShift, 0.5f);
    EXPECT_EQ(block.lightnessShift, -0.5f);
    EXPECT_EQ(block.colorize, 1);
    EXPECT_EQ(block.colorHue, 20);
    EXPECT_EQ(block.colorSaturation, 0.75f);
    EXPECT_EQ(block.colorLightness, 0.125f);
    EXPECT_EQ(Link(block.input).content.name, "a noise");
    EXPECT_EQ(block.previewObject, 4);
    EXPECT_EQ(block.previewAuto, 0);
    EXPECT_EQ(block.previewBusy, 1);
    EXPECT_EQ(block.changed, 0);
    EXPECT_EQ(block.nested, 1);
    EXPECT_EQ(block.previewChannel, -1) << "not stored";
  }
}

TEST_F(HueFileTest, OfAnOlderFileNothingIsReadAndThatIsASuccess) {
  ReadFile({{Int(20000827)}});
  EXPECT_EQ(block.colorSaturation, 0.25f);
}

TEST_F(HueFileTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{2}, 10.0f},
                    {1001, Word{2}, 0.5f},
                    {1002, Word{2}, -0.5f},
                    {1003, Word{1}, true},
                    {1004, Word{2}, 20.0f},
                    {1005, Word{2}, 0.75f},
                    {1006, Word{2}, 0.125f}},
                   {1007});
}

TEST_F(HueFileTest, GetThenSetGivesTheSameParameters) {
  FillBlock();
  FakeContainer payload;
  shader.Message(MessageGetParameters, payload);
  ShaderUnderTest other(started, PluginIdHue);
  other.Message(MessageSetParameters, payload);
  auto& taken = other.block<HueBlock>();
  EXPECT_EQ(taken.hueShift, 10);
  EXPECT_EQ(taken.saturationShift, 0.5f);
  EXPECT_EQ(taken.lightnessShift, -0.5f);
  EXPECT_EQ(taken.colorize, 1);
  EXPECT_EQ(taken.colorHue, 20);
  EXPECT_EQ(taken.colorSaturation, 0.75f);
  EXPECT_EQ(taken.colorLightness, 0.125f);
}

TEST_F(HueFileTest, CopyTakesTheFieldsUpToPreviewAuto) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdHue);
  auto& copy = other.block<HueBlock>();
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, -1);
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(HueFileTest, CompareLooksAtTheseFields) {
  ShaderUnderTest other(started, PluginIdHue);
  auto& changed = other.block<HueBlock>();
  const HueBlock defaults = changed;
  using Change = void (*)(HueBlock&);
  for (const Change change :
       {Change([](HueBlock& b) { b.hueShift = 1; }),
        Change([](HueBlock& b) { b.saturationShift = 1; }),
        Change([](HueBlock& b) { b.lightnessShift = 1; }),
        Change([](HueBlock& b) { b.colorize = 1; }), Change([](HueBlock& b) { b.colorHue = 1; }),
        Change([](HueBlock& b) { b.colorSaturation = 1; }),
        Change([](HueBlock& b) { b.colorLightness = 1; }),
        Change([](HueBlock& b) { b.colorHue = NAN; }), Change([](HueBlock& b) { b.nested = 1; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
}

}  // namespace
}  // namespace sorvanix::test
