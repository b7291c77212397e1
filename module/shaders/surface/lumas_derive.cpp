// The derived fields of Lumas.
//
// Small sizes go through the bias curve t^(log b / log 0.5): C. Schlick, "Fast Alternatives to
// Perlin's Bias and Gain Functions", Graphics Gems IV, 1994, names it; K. Perlin, E. M. Hoffert,
// "Hypertexture", SIGGRAPH 1989. Larger ones follow two tables.
#include "module/shaders/surface/lumas_derive.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "module/kit/oren_nayar.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

constexpr float kRoughnessTo01[] = {0,     0.04f,  0.0525f, 0.06f,   0.07f,   0.08f,   0.09f,
                                    0.1f,  0.105f, 0.11f,   0.1125f, 0.1275f, 0.13f,   0.1325f,
                                    0.14f, 0.145f, 0.1475f, 0.155f,  0.1625f, 0.1675f, 0.17f};
constexpr float kRoughnessTo2[] = {0,     0.17f,  0.225f, 0.27f,  0.32f, 0.36f,  0.4f,
                                   0.41f, 0.42f,  0.44f,  0.45f,  0.48f, 0.49f,  0.51f,
                                   0.52f, 0.535f, 0.55f,  0.565f, 0.58f, 0.595f, 0.61f};
static_assert(std::size(kRoughnessTo01) == 21 && std::size(kRoughnessTo2) == 21);

float AlongCurve(double position, const float (&curve)[21]) noexcept {
  return hostSplineLookup(static_cast<float>(Clamp01NanToZero(position)), curve, 21);
}

// What a contrast maps to 0 and to 1: a contrast of 1 leaves a step at one half, 2 inverts.
struct Window {
  float low, high;
};
Window WindowOf(float contrast) noexcept {
  const double half = contrast * 0.5;
  return {static_cast<float>(half), static_cast<float>(1 - half)};
}

bool IsBlack(const Vector& colour) noexcept { return Length(colour) == 0; }

void DeriveLayer(bool on, SpecularLayer& layer) noexcept {
  layer.tint = Scale(layer.colourStrength, layer.colour);
  layer.exponent = static_cast<float>(2.0 / layer.size);
  layer.roughness = RoughnessFromSize(layer.size);
  const Window window = WindowOf(layer.contrast);
  layer.contrastLow = window.low;
  layer.contrastHigh = window.high;

  const bool dark = layer.intensity == 0 && layer.edgeIntensity == 0;
  layer.active = on && !IsBlack(layer.colour) && layer.colourStrength != 0 && !dark;
  layer.useEdge = on && layer.intensity != layer.edgeIntensity;
}

void DeriveDiffuse(LumasBlock& block) noexcept {
  if (block.diffuseOn != 0) DeriveDiffuseTint(block);
  block.diffuseActive = block.diffuseOn != 0 && !IsBlack(block.diffuseColour) &&
                        block.diffuseStrength != 0 && block.diffuseLevel != 0;
  const Window window = WindowOf(block.diffuseContrast);
  block.diffuseLow = window.low;
  block.diffuseHigh = window.high;

  const OrenNayarFactors factors = OrenNayarFactorsOf(block.sigma);
  block.sigma2 = factors.sigma2;
  block.orenA = factors.a;
  block.orenB = factors.b;
}

bool ShowsScratches(const LumasBlock& block) noexcept {
  const bool onSomeLayer = std::any_of(std::begin(block.scratchOnLayer),
                                       std::end(block.scratchOnLayer), [](auto on) { return on; });
  return onSomeLayer && block.scratchAmplitude != 0 && block.scratchScaleU != 0 &&
         block.scratchScaleV != 0;
}

}  // namespace

void DeriveLumas(LumasBlock& block) noexcept {
  for (std::size_t i = 0; i < kLumasLayers; ++i) {
    DeriveLayer(block.layerOn[i] != 0, block.layers[i]);
  }
  DeriveDiffuse(block);
  block.anisotropyActive = block.anisotropyOn;
  block.scratchActive = ShowsScratches(block);
}

void DeriveDiffuseTint(LumasBlock& block) noexcept {
  block.diffuseTint = Scale(block.diffuseStrength, block.diffuseColour);
}

float RoughnessFromSize(float size) noexcept {
  if (size < 0.05) {
    const double bias = -std::log2(0.7);
    return static_cast<float>(std::pow(Clamp01NanToZero(20.0 * size), bias) * 0.11);
  }
  if (size < 0.1) return AlongCurve(10.0 * size, kRoughnessTo01);
  return AlongCurve(0.5 * size, kRoughnessTo2);
}

}  // namespace sorvanix
