// Brushed highlights: the stretch at a point, made small where a sample covers too much, and one
// Ward highlight for each layer and light.
#include "module/shaders/surface/lumas_anisotropy.h"

#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/light_walk.h"
#include "module/shaders/surface/lumas_brushing.h"
#include "module/shaders/surface/ward.h"

namespace sorvanix {

namespace {

struct Stretch {
  double x, y;
};

// Along and across the brushing, both unit vectors.
struct Directions {
  Vector along, across;
};

// Scratches die out where a sample covers much of the surface.
double FadedScratch(const LumasBlock& block, const RenderContext& render, double scratch) noexcept {
  if (!(block.scratchFade > 0)) return scratch;
  const double size =
      SumOfMagnitudes(render.viewPoint) * block.scratchScaleU * 100 * block.scratchFade;
  return size > 0 ? scratch * Clamp01(1 / size) : scratch;
}

// Discs that become too small turn round instead of flickering.
Stretch BaseStretch(const LumasBlock& block, const LumasSlot& slot) noexcept {
  const Stretch full = {block.anisotropyX, block.anisotropyY};
  if (block.anisotropyMode != AnisoDiscsSurface) return full;
  const double covered = double{slot.footprintSize} * block.anisotropyScale * 25;
  const double g = Clamp01(0.5 / covered);
  return {1 + (full.x - 1) * g, 1 + (full.y - 1) * g};
}

// A stretch below 0 is not a turn: it becomes a highlight without end.
double ScratchedStretch(double stretch, double scratch) noexcept {
  constexpr double kEndless = 1e-5;
  const double sum = stretch + scratch;
  return sum < 0 ? kEndless : sum;
}

Vector OverWidth(const Vector& direction, double width) noexcept {
  if (width == 0) return {};
  return ByComponent([width](double v) { return v / width; }, direction);
}

WardAxes AxesOf(const SpecularLayer& layer, const Directions& directions,
                const Stretch& stretch) noexcept {
  return {OverWidth(directions.along, stretch.x * layer.roughness),
          OverWidth(directions.across, stretch.y * layer.roughness)};
}

// Only 1 itself lets a layer shine here, though every value but 0 keeps the host's highlight away.
// Deliberate.
bool Shines(const SpecularLayer& layer) noexcept {
  return layer.active != 0 && layer.roughness != 0 && layer.useAnisotropy == 1;
}

}  // namespace

void AddBrushedHighlights(const LumasBlock& block, const LumasSlot& slot,
                          const RenderContext& render, Highlights& highlights) noexcept {
  const std::optional<Brushing> brushing = BrushingAt(block, slot, render);
  if (!brushing) return;
  const Vector normal = render.side < 0 ? Scale(-1.0f, slot.surfaceNormal) : slot.surfaceNormal;
  const double cosEye = Limit(0.0001, 1, WideDot(slot.viewVector, normal));
  const Directions directions = {brushing->direction, Cross(normal, brushing->direction)};

  const double scratch = FadedScratch(block, render, brushing->scratch);
  const Stretch plain = BaseStretch(block, slot);
  const Stretch scratched = {ScratchedStretch(plain.x, scratch),
                             ScratchedStretch(plain.y, scratch)};
  std::array<WardAxes, kLumasLayers> axes;
  for (std::size_t i = 0; i < kLumasLayers; ++i) {
    axes[i] = AxesOf(block.layers[i], directions, block.scratchOnLayer[i] != 0 ? scratched : plain);
  }

  if (render.lightsEnabled == 0) return;
  ForEachArrivingLight(
      render, normal, [&](const LightRecord& light, const ArrivingLight& arriving) {
        const double cosLight = WideDot(normal, arriving.direction);
        if (light.noSpecular != 0 || !(cosLight > 0)) return;
        const Vector half = Normalized(Add(arriving.direction, slot.viewVector));
        for (std::size_t i = 0; i < kLumasLayers; ++i) {
          if (!Shines(block.layers[i])) continue;
          const double level = WardHighlight(axes[i], half, normal, cosLight, cosEye);
          AddInPlace(highlights[i], Scale(static_cast<float>(level), arriving.colour));
        }
      });
}

}  // namespace sorvanix
