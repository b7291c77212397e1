// Lumas: its callbacks, and how one sample becomes a lit colour.
#include "module/shaders/surface/lumas.h"

#include "module/kit/matrix.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/along_ray.h"
#include "module/shaders/surface/illumination.h"
#include "module/shaders/surface/lumas_anisotropy.h"
#include "module/shaders/surface/lumas_derive.h"
#include "module/shaders/surface/lumas_dialog.h"
#include "module/shaders/surface/lumas_diffuse.h"
#include "module/shell/host_render.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

std::int32_t Alloc(ShaderInstance* instance) noexcept {
  if (AllocBlock(kLumasTable, instance) == 0) return 0;
  LumasBlock& block = *BlockOf<LumasBlock>(instance);
  DeriveLumas(block);
  block.scratchActive = 0;  // deliberate: a new block shows none until a value changes
  return 1;
}

// Without a render there is no light: the tints, each by its level and the highlights also by their
// size.
Vector FlatColour(const LumasBlock& block) noexcept {
  Vector colour = {};
  if (block.diffuseOn != 0) colour = Scale(block.diffuseLevel, block.diffuseTint);
  for (std::size_t i = 0; i < kLumasLayers; ++i) {
    if (block.layerOn[i] == 0) continue;
    const SpecularLayer& layer = block.layers[i];
    const double level = layer.intensity * Clamp01(layer.size);
    AddInPlace(colour, Scale(static_cast<float>(level), layer.tint));
  }
  return colour;
}

// Keeps the surface of the sample in the slot. A nested Lumas finds the matrices there, as the
// enclosing filter left them.
void FillSlot(const LumasBlock& block, const RenderContext& render, LumasSlot& slot) noexcept {
  const TextureTag* tag = render.textureTag;
  const Vector view = tag == nullptr ? render.viewPoint : Rotate(render.viewPoint, tag->matrix2);
  slot.footprintSize = static_cast<float>(1e-5 * SumOfMagnitudes(view));
  slot.surfaceNormal = render.bumpNormal;
  slot.viewVector = Scale(-1, DirectionOf(*render.ray));
  slot.faceNormal = render.faceNormal;
  if (block.nested != 0) return;
  slot.head.texMatrix = tag == nullptr ? kIdentityMatrix : tag->matrix1;
  slot.head.texInverse = tag == nullptr ? kIdentityMatrix : tag->matrix2;
}

// The lights as the layers see them. The host's call for each layer adds the same diffuse light
// once more: deliberate.
struct Lit {
  Vector diffuse = {};
  Highlights highlights = {};
};
Lit LightUp(const LumasBlock& block, const LumasSlot& slot, const RenderContext& render) noexcept {
  Lit lit;
  const bool brushed = block.anisotropyActive != 0;
  if (brushed && block.anisotropyX != 0 && block.anisotropyY != 0) {
    AddBrushedHighlights(block, slot, render, lit.highlights);
  }
  for (std::size_t i = 0; i < kLumasLayers; ++i) {
    const SpecularLayer& layer = block.layers[i];
    if (layer.active == 0 || (brushed && layer.useAnisotropy != 0)) continue;
    hostIlluminate(&render, lit.diffuse, lit.highlights[i], layer.exponent);
  }
  return lit;
}

Vector FinishDiffuse(const LumasBlock& block, const LumasSlot& slot, const RenderContext& render,
                     Vector diffuse) noexcept {
  if (Length(diffuse) == 0 || block.orenNayar != IlluminationHost) {
    diffuse = DiffuseLight(block, slot, render);
  }
  if (block.diffuseContrast != 0) {
    const auto contrasted = [&](float v) {
      return LinearStep(block.diffuseLow, block.diffuseHigh, v);
    };
    diffuse = ByComponent(contrasted, diffuse);
  }
  // The Oren-Nayar term holds level and colour once already: deliberate.
  return Product(Scale(block.diffuseLevel, block.diffuseTint), diffuse);
}

Vector LitColour(const LumasBlock& block, const LumasSlot& slot,
                 const RenderContext& render) noexcept {
  Lit lit = LightUp(block, slot, render);
  const double rim = RimOf(WideDot(slot.viewVector, slot.surfaceNormal));
  for (std::size_t i = 0; i < kLumasLayers; ++i) {
    const SpecularLayer& layer = block.layers[i];
    if (layer.active != 0) lit.highlights[i] = FinishHighlight(layer, rim, lit.highlights[i]);
  }
  Vector total = Add(Add(lit.highlights[0], lit.highlights[1]), lit.highlights[2]);
  if (block.diffuseActive != 0) AddInPlace(total, FinishDiffuse(block, slot, render, lit.diffuse));
  return total;
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<LumasBlock>(instance);
  if (block == nullptr) return;
  const RenderContext* render = sample->render;
  if (instance->slots == nullptr || render == nullptr) {
    *result = FlatColour(*block);
    return;
  }
  if (render->ray == nullptr || render->lightCount < 1) {
    *result = {1, 1, 1};
    return;
  }
  LumasSlot& slot = *SlotAt<LumasSlot>(instance->slots, hostCpuIndex(render));
  FillSlot(*block, *render, slot);
  *result = LitColour(*block, slot, *render);
}

}  // namespace

void FillLumasRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kLumasTable>::Fill(record);
  record->Edit = EditLumas;
  record->Alloc = Alloc;
  record->InitRender = TableCallbacks<kLumasTable>::InitSlots;
  record->Output = Output;
}

}  // namespace sorvanix
