// Bright/Contrast: its colour function, its data, its saved forms and its messages.
#include "module/shaders/filters/bright_contrast.h"

#include <cmath>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;

struct BrightContrastTest : FilterTest<BrightContrastBlock, PluginIdBrightContrast> {};

// --- the colour function ---

TEST_F(BrightContrastTest, TheDefaultsAreTheIdentityOnAllEightBitColours) {
  host.recordReads = false;
  Vector& colour = Link(block.input).content.colour;
  int wrong = 0;
  for (int rgb = 0; rgb < 1 << 24; ++rgb) {
    colour = {float(rgb >> 16) / 255, float(rgb >> 8 & 255) / 255, float(rgb & 255) / 255};
    const Vector result = Output();
    wrong += result.x != colour.x || result.y != colour.y || result.z != colour.z;
  }
  EXPECT_EQ(wrong, 0);
}

TEST_F(BrightContrastTest, ColoursOutsideTheUnitRangeAreClamped) {
  ExpectExactly(Filtered({-0.5f, 1.5f, 0.25f}), {0, 1, 0.25f});
}

// (0.3 - 0.2) / (0.6 - 0.2) = 0.25.
TEST_F(BrightContrastTest, LevelsStretchLowToHigh) {
  block.levelLow = 0.2f;
  block.levelHigh = 0.6f;
  EXPECT_FLOAT_EQ(FilteredGrey(0.3f), 0.25f);
  EXPECT_EQ(FilteredGrey(0.1f), 0);
  EXPECT_EQ(FilteredGrey(0.9f), 1);
}

TEST_F(BrightContrastTest, EqualLevelsAreAThresholdThatTheLevelItselfPasses) {
  block.levelLow = block.levelHigh = 0.5f;
  EXPECT_EQ(FilteredGrey(0.5f), 1);
  EXPECT_EQ(FilteredGrey(0.49f), 0);
}

// (0.25 - 1) / (0 - 1) = 0.75.
TEST_F(BrightContrastTest, AHighLevelBelowTheLowOneInverts) {
  block.levelLow = 1;
  block.levelHigh = 0;
  EXPECT_FLOAT_EQ(FilteredGrey(0.25f), 0.75f);
  block.levelLow = 0.75f;  // (1 - 0.75) / -0.75 < 0
  EXPECT_EQ(FilteredGrey(1), 0);
}

TEST_F(BrightContrastTest, BrightnessIsAddedAndClamped) {
  block.brightness = 0.25f;
  EXPECT_FLOAT_EQ(FilteredGrey(0.5f), 0.75f);
  EXPECT_EQ(FilteredGrey(0.9f), 1);
  block.brightness = -0.25f;
  EXPECT_EQ(FilteredGrey(0.1f), 0);
}

// Brightness makes 1.5, clipped to 1; the contrast of -0.5 gives 1 + (0.5 - 1) * 0.5 = 0.75 and
// not 1.5 + (0.5 - 1.5) * 0.5 = 1.
TEST_F(BrightContrastTest, WhatTheBrightnessClipsStaysClipped) {
  block.brightness = 1;
  block.contrast = -0.5f;
  EXPECT_FLOAT_EQ(FilteredGrey(0.5f), 0.75f);
}

// lo = 0.25, hi = 0.75: (0.35 - 0.25) / 0.5 = 0.2.
TEST_F(BrightContrastTest, ContrastAboveZeroSteepensAroundTheMiddle) {
  block.contrast = 0.5f;
  EXPECT_FLOAT_EQ(FilteredGrey(0.35f), 0.2f);
  EXPECT_FLOAT_EQ(FilteredGrey(0.5f), 0.5f);
  EXPECT_EQ(FilteredGrey(0.2f), 0);
  EXPECT_EQ(FilteredGrey(0.8f), 1);
}

TEST_F(BrightContrastTest, AContrastOfOneIsAThresholdThatTheMiddlePasses) {
  block.contrast = 1;
  EXPECT_EQ(FilteredGrey(0.5f), 1);
  EXPECT_EQ(FilteredGrey(0.499f), 0);
}

TEST_F(BrightContrastTest, AContrastOfMinusOneIsMidGrey) {
  block.contrast = -1;
  for (const float x : {0.0f, 0.2f, 0.5f, 1.0f}) EXPECT_EQ(FilteredGrey(x), 0.5f) << x;
}

// 0 - (0.5 - 0) * -4 = 2 and 1 - (0.5 - 1) * -4 = -1: no clamp, deliberate.
TEST_F(BrightContrastTest, AContrastBelowMinusOneOvershootsUnclamped) {
  block.contrast = -4;
  EXPECT_EQ(FilteredGrey(0), 2);
  EXPECT_EQ(FilteredGrey(1), -1);
}

TEST_F(BrightContrastTest, AnUndefinedChannelBecomesBlackAndLeavesTheOthers) {
  const Vector result = Filtered({NAN, 0.5f, 1});
  ExpectExactly(result, {0, 0.5f, 1});
}

// --- data ---

TEST_F(BrightContrastTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.brightness, 0);
  EXPECT_EQ(block.contrast, 0);
  EXPECT_EQ(block.levelLow, 0);
  EXPECT_EQ(block.levelHigh, 1);
  EXPECT_EQ(block.previewObject, 0);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
}

struct BrightContrastFileTest : BrightContrastTest {
  void FillBlock() {
    Link(block.input).content.name = "a noise";
    block.brightness = 0.5f;
    block.contrast = -0.25f;
    block.levelLow = 0.125f;
    block.levelHigh = 0.75f;
    block.previewObject = 3;
    block.previewBusy = 1;
    block.changed = 0;
    block.previewAuto = 0;
    block.nested = 1;
    block.previewChannel = 7;
  }
  // What the oldest version stores behind its marker.
  const Values common = {
      Float(0.5f), Float(-0.25f), Float(0.125f), Float(0.75f), StreamValue::Link("a noise"),
      Int(3),      Bool(false),   Bool(true),    Bool(false)};
  void ExpectCommon() {
    EXPECT_EQ(block.brightness, 0.5f);
    EXPECT_EQ(block.contrast, -0.25f);
    EXPECT_EQ(block.levelLow, 0.125f);
    EXPECT_EQ(block.levelHigh, 0.75f);
    EXPECT_EQ(Link(block.input).content.name, "a noise");
    EXPECT_EQ(block.previewObject, 3);
    EXPECT_EQ(block.previewAuto, 0);
    EXPECT_EQ(block.previewBusy, 1);
    EXPECT_EQ(block.changed, 0);
  }
};

TEST_F(BrightContrastFileTest, WriteStoresTheMarkerAndTheValuesInFileOrder) {
  FillBlock();
  Values expected = {Int(20000731)};
  expected.insert(expected.end(), common.begin(), common.end());
  for (const StreamValue& value : {Bool(true), Int(5), Int(1), Int(5), Int(5), Int(5), Int(7)}) {
    expected.push_back(value);
  }
  EXPECT_EQ(Written(), expected);
}

TEST_F(BrightContrastFileTest, AFileOlderThanTheFirstVersionIsNotRead) {
  ReadFile({{Int(20000727)}});
  EXPECT_EQ(block.levelHigh, 1);
}

TEST_F(BrightContrastFileTest, EachMarkerAddsItsValues) {
  ReadFile({{Int(20000728)}, common});
  ExpectCommon();
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
  ReadFile({{Int(20000729)}, common, {Bool(false), Int(77), Int(1)}});
  EXPECT_EQ(block.nested, 1);
  ReadFile({{Int(20000730)}, common, {Bool(true), Int(5), Int(0), Int(1), Int(2), Int(3)}});
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.previewChannel, -1);
  for (const std::int32_t marker : {20000731, INT32_MAX}) {
    ReadFile({{Int(marker)}, common, {Bool(true), Int(5), Int(1), Int(1), Int(2), Int(3), Int(7)}});
    ExpectCommon();
    EXPECT_EQ(block.nested, 1);
    EXPECT_EQ(block.previewChannel, 7);
  }
}

TEST_F(BrightContrastFileTest, GetAndDescribeAnswerTheseKeys) {
  FillBlock();
  ExpectParameters(shader,
                   {{1000, Word{2}, 0.5f},
                    {1001, Word{2}, -0.25f},
                    {1002, Word{2}, 0.125f},
                    {1003, Word{2}, 0.75f}},
                   {1004});
}

TEST_F(BrightContrastFileTest, SetTakesThem) {
  FakeContainer payload;
  payload.Set(1003, 0.75f);
  payload.Set(1001, -0.25f);
  payload.Set(1000, 0.5f);
  payload.Set(1002, 0.125f);
  EXPECT_EQ(shader.Message(MessageSetParameters, payload), 1);
  EXPECT_EQ(block.brightness, 0.5f);
  EXPECT_EQ(block.contrast, -0.25f);
  EXPECT_EQ(block.levelLow, 0.125f);
  EXPECT_EQ(block.levelHigh, 0.75f);
}

// Unlike in other filters the preview's channel is copied too.
TEST_F(BrightContrastFileTest, CopyTakesAllButTheNesting) {
  FillBlock();
  block.reserved9 = 99;
  block.previewScene = reinterpret_cast<HostDocument*>(&block);
  ShaderUnderTest other(started, PluginIdBrightContrast);
  auto& copy = other.block<BrightContrastBlock>();
  copy.nested = 1;
  ASSERT_EQ(record.Copy(&instance, &other.instance), 1);
  EXPECT_EQ(copy.nested, 0);
  EXPECT_EQ(copy.previewChannel, 7);
  EXPECT_EQ(copy.reserved9, 99);
  EXPECT_EQ(copy.previewScene, nullptr) << "owned by the source's preview";
  EXPECT_EQ(block.nested, 1) << "the source keeps its own";
  copy.nested = 1;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

TEST_F(BrightContrastFileTest, CompareLooksAtNestedButNotAtTheChannelOfThePreview) {
  ShaderUnderTest other(started, PluginIdBrightContrast);
  auto& changed = other.block<BrightContrastBlock>();
  const BrightContrastBlock defaults = changed;
  using Change = void (*)(BrightContrastBlock&);
  for (const Change change : {Change([](BrightContrastBlock& b) { b.brightness = 0.5f; }),
                              Change([](BrightContrastBlock& b) { b.contrast = 0.5f; }),
                              Change([](BrightContrastBlock& b) { b.levelLow = 0.5f; }),
                              Change([](BrightContrastBlock& b) { b.levelHigh = 0.5f; }),
                              Change([](BrightContrastBlock& b) { b.previewAuto = 0; }),
                              Change([](BrightContrastBlock& b) { b.previewObject = 1; }),
                              Change([](BrightContrastBlock& b) { b.previewBusy = 1; }),
                              Change([](BrightContrastBlock& b) { b.changed = 0; }),
                              Change([](BrightContrastBlock& b) { b.nested = 1; })}) {
    changed = defaults;
    EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
    change(changed);
    EXPECT_EQ(record.Compare(&instance, &other.instance), 0);
  }
  changed = defaults;
  changed.previewChannel = 3;
  changed.reserved9 = 3;
  EXPECT_EQ(record.Compare(&instance, &other.instance), 1);
}

}  // namespace
}  // namespace sorvanix::test
