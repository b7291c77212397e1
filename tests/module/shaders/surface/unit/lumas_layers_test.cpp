// What a layer of Lumas makes of its highlight: level, contrast, tint.
#include "module/shaders/surface/lumas_layers.h"

#include <cmath>

#include "tests/support/filter_fixture.h"

namespace sorvanix::test {
namespace {

constexpr Vector kGrey = {0.5f, 0.5f, 0.5f};

// Level 1 in the middle, 3 at the rim, white.
SpecularLayer Layer(float edgeWidth) {
  SpecularLayer layer = {};
  layer.tint = {1, 1, 1};
  layer.intensity = 1;
  layer.edgeIntensity = 3;
  layer.edgeWidth = edgeWidth;
  layer.useEdge = 1;
  layer.contrastHigh = 1;
  return layer;
}

float LevelAt(const SpecularLayer& layer, double rim) {
  return FinishHighlight(layer, rim, {1, 1, 1}).x;
}

TEST(LumasRim, RisesFromTheMiddleToTheOutline) {
  EXPECT_EQ(RimOf(1), 0);
  EXPECT_EQ(RimOf(0.25), 0.75);
  EXPECT_EQ(RimOf(0), 1);
}

TEST(LumasRim, BackFacesHaveTheFullRim) {
  EXPECT_EQ(RimOf(-1e-9), 1);
  EXPECT_EQ(RimOf(-1), 1);
}

TEST(LumasLayers, WithoutAnEdgeTheIntensityHoldsEverywhere) {
  SpecularLayer layer = Layer(0.5f);
  layer.useEdge = 0;
  for (const double rim : {0.0, 0.5, 1.0}) EXPECT_EQ(LevelAt(layer, rim), 1);
}

// A width of 0.5 begins at 0.5: at 0.75 half the way, 1 + 2 x 0.5.
TEST(LumasLayers, TheEdgeReachesInByItsWidth) {
  const SpecularLayer layer = Layer(0.5f);
  EXPECT_EQ(LevelAt(layer, 0.25), 1);
  EXPECT_EQ(LevelAt(layer, 0.5), 1);
  EXPECT_EQ(LevelAt(layer, 0.75), 2);
  EXPECT_EQ(LevelAt(layer, 1), 3);
}

TEST(LumasLayers, AnEdgeWithoutWidthIsTheOutlineAlone) {
  const SpecularLayer layer = Layer(0);
  EXPECT_EQ(LevelAt(layer, 0.999999), 1);
  EXPECT_EQ(LevelAt(layer, 1), 3);
  EXPECT_EQ(LevelAt(layer, RimOf(-0.5)), 3) << "and back faces";
}

// A width of 2 begins at -1: the middle, at 0, is half the way.
TEST(LumasLayers, AWideEdgeRaisesTheMiddleToo) { EXPECT_EQ(LevelAt(Layer(2), 0), 2); }

TEST(LumasLayers, TheTintFiltersEachChannel) {
  SpecularLayer layer = Layer(0.5f);
  layer.tint = {1, 0.5f, 0};
  ExpectExactly(FinishHighlight(layer, 0, {0.5f, 0.5f, 4}), {0.5f, 0.25f, 0});
}

TEST(LumasLayers, ThereIsNoLimitWithoutContrast) {
  ExpectExactly(FinishHighlight(Layer(0.5f), 1, {2, 1, 0.5f}), {6, 3, 1.5f});
}

// The window 0.25 to 0.75 leaves 0.5 and maps 0.625 to 0.75.
TEST(LumasLayers, TheContrastSteepensTheValue) {
  SpecularLayer layer = Layer(0.5f);
  layer.contrast = 0.5f;
  layer.contrastLow = 0.25f;
  layer.contrastHigh = 0.75f;
  ExpectVector(FinishHighlight(layer, 0, kGrey), kGrey);
  ExpectVector(FinishHighlight(layer, 0, {0.625f, 0.625f, 0.625f}), {0.75f, 0.75f, 0.75f});
  ExpectVector(FinishHighlight(layer, 0, {0.125f, 0.125f, 0.125f}), {0, 0, 0});
}

// (0.5, 0.25, 0): a value of 0.5 becomes 0.5; (0.75, 0.375, 0) becomes white-hot in value, and
// keeps hue and saturation.
TEST(LumasLayers, TheContrastKeepsHueAndSaturation) {
  SpecularLayer layer = Layer(0.5f);
  layer.contrast = 0.5f;
  layer.contrastLow = 0.25f;
  layer.contrastHigh = 0.75f;
  ExpectVector(FinishHighlight(layer, 0, {0.5f, 0.25f, 0}), {0.5f, 0.25f, 0});
  ExpectVector(FinishHighlight(layer, 0, {0.75f, 0.375f, 0}), {1, 0.5f, 0});
}

// Channels are cut at 1 before: (3, 1.5, 0) becomes (1, 1, 0), yellow and not orange.
TEST(LumasLayers, TheContrastCutsEachChannelFirst) {
  SpecularLayer layer = Layer(0.5f);
  layer.contrast = 0.5f;
  layer.contrastLow = 0.25f;
  layer.contrastHigh = 0.75f;
  ExpectVector(FinishHighlight(layer, 0, {3, 1.5f, 0}), {1, 1, 0});
}

// A contrast of 1 has equal ends: from 0.5 on white, black below.
TEST(LumasLayers, AContrastOfOneIsAHardStep) {
  SpecularLayer layer = Layer(0.5f);
  layer.contrast = 1;
  layer.contrastLow = layer.contrastHigh = 0.5f;
  ExpectVector(FinishHighlight(layer, 0, kGrey), {1, 1, 1});
  ExpectVector(FinishHighlight(layer, 0, {0.499f, 0.499f, 0.499f}), {0, 0, 0});
}

}  // namespace
}  // namespace sorvanix::test
