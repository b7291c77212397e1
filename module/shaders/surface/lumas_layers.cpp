// Level, contrast and tint of a layer.
#include "module/shaders/surface/lumas_layers.h"

#include "module/kit/colour.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"

namespace sorvanix {

namespace {

float LevelAt(const SpecularLayer& layer, double rim) noexcept {
  if (layer.useEdge == 0) return layer.intensity;
  const double reach = LinearStep(1 - double{layer.edgeWidth}, 1, rim);
  return static_cast<float>(layer.intensity +
                            (double{layer.edgeIntensity} - layer.intensity) * reach);
}

float AtMostOne(float v) noexcept { return v > 1 ? 1 : v; }

// The contrast changes the value alone, so that a coloured light keeps its colour.
Vector WithContrast(const SpecularLayer& layer, const Vector& colour) noexcept {
  Vector hsv = RgbToHsvVector(ByComponent(AtMostOne, colour));
  hsv.z = LinearStep(layer.contrastLow, layer.contrastHigh, hsv.z);
  return HsvVectorToRgb(hsv);
}

}  // namespace

Vector FinishHighlight(const SpecularLayer& layer, double rim, Vector highlight) noexcept {
  ScaleInPlace(highlight, LevelAt(layer, rim));
  if (layer.contrast != 0) highlight = WithContrast(layer, highlight);
  return Product(highlight, layer.tint);
}

}  // namespace sorvanix
