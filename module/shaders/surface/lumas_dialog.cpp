// The gadgets of Lumas, on five pages: the diffuse term, three highlights, and their brushing.
#include "module/shaders/surface/lumas_dialog.h"

#include "module/editors/shader_dialog.h"
#include "module/editors/shared_words.h"
#include "module/shaders/surface/lumas.h"
#include "module/shaders/surface/lumas_derive.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(LumasBlock, id, member)
#define AT(member) offsetof(LumasBlock, member)

constexpr std::int32_t kPagesGadget = 23014;
constexpr std::int32_t kLayerSwitches[kLumasLayers] = {23002, 23003, 23004};
constexpr std::int32_t kLayerPages[kLumasLayers] = {23023, 23038, 23051};

// Dialogs show percent of what the scratches' frequencies are the reciprocals of.
constexpr Limits kScratchSize = {0, 10000, 0.01};

constexpr auto kHeadGadgets = std::to_array<Gadget>({
    {GADGET(23001, diffuseOn)},
    {GADGET(kLayerSwitches[0], layerOn[0])},
    {GADGET(kLayerSwitches[1], layerOn[1])},
    {GADGET(kLayerSwitches[2], layerOn[2])},
    {GADGET(23005, anisotropyOn)},
    {GADGET(23012, previewObject), .limits = kPreviewObjects},
    {GADGET(23013, previewAuto)},
    {GADGET(kPagesGadget, activePage), .effect = Effect::None, .limits = {.step = 1}},
});

constexpr auto kDiffuseGadgets = std::to_array<Gadget>({
    {GADGET(23016, diffuseColour)},
    {GADGET(23017, diffuseStrength)},
    {GADGET(23018, orenNayar)},
    {GADGET(23019, sigma)},
    {GADGET(23020, diffuseLevel)},
    {GADGET(23021, diffuseContrast)},
});

// The gadgets of a layer follow the id of its page.
template <std::size_t layer>
constexpr auto LayerGadgets() {
  constexpr std::int32_t kPage = kLayerPages[layer];
  return std::to_array<Gadget>({
      {GADGET(kPage + 1, layers[layer].useAnisotropy)},
      {GADGET(kPage + 2, layers[layer].colour)},
      {GADGET(kPage + 3, layers[layer].colourStrength)},
      {GADGET(kPage + 4, layers[layer].intensity)},
      {GADGET(kPage + 5, layers[layer].size)},
      {GADGET(kPage + 6, layers[layer].contrast)},
      {GADGET(kPage + 7, layers[layer].edgeIntensity)},
      {GADGET(kPage + 8, layers[layer].edgeWidth)},
      {GADGET(kPage + 9, scratchOnLayer[layer])},
  });
}

constexpr auto kAnisotropyGadgets = std::to_array<Gadget>({
    {GADGET(23065, anisotropyMode)},
    {GADGET(23066, anisotropyScale)},
    {GADGET(23067, anisotropyX)},
    {GADGET(23068, anisotropyY)},
    {GADGET(23069, scratchAmplitude)},
    {GADGET(23070, scratchScaleU), .shown = Shown::Reciprocal, .limits = kScratchSize,
     .format = FormatPercent},
    {GADGET(23071, scratchScaleV), .shown = Shown::Reciprocal, .limits = kScratchSize,
     .format = FormatPercent},
    {GADGET(23072, scratchFade)},
});

constexpr auto kGadgets = Join(kHeadGadgets, kDiffuseGadgets, LayerGadgets<0>(), LayerGadgets<1>(),
                               LayerGadgets<2>(), kAnisotropyGadgets);

constexpr std::int32_t kDiscGadgets[] = {23075};  // the label of the size of discs
constexpr EnablingRule kEnabling[] = {
    {kDiscGadgets,
     [](const void* block) noexcept {
       return BlockAs<LumasBlock>(block).anisotropyMode == AnisoDiscsSurface;
     }},
};

constexpr RandomDraw kRandom[] = {
    {AT(diffuseColour)},  {AT(layers[0].colour)}, {AT(layers[0].size)}, {AT(layers[1].colour)},
    {AT(layers[1].size)}, {AT(layers[2].colour)}, {AT(layers[2].size)},
};

}  // namespace

constexpr EditorTable kLumasEditor = {
    .shader = &kLumasTable,
    .fill = FillLumasRecord,
    .dialogId = 23000,
    .titleArea = 23008,
    .previewArea = 23011,
    .titleIcon = "Lumas Title.tif",
    .aboutName = "Lumas",
    .missingResources = "Unable to find dialog resources for sorvaNIX Lumas",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .preview = {.object = AT(previewObject),
                .dirty = AT(changed),
                .automatic = AT(previewAuto),
                .inScene = AT(previewBusy)},
    .reset = {AT(diffuseOn), AT(sigma2)},
    .random = kRandom,
};

#undef AT
#undef GADGET

namespace {

class LumasDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;

 protected:
  void Derive() noexcept override { ChangeShared<LumasBlock>(session().block(), DeriveLumas); }

  // A layer that is switched on comes on show.
  void Edited(std::uint32_t member) noexcept override {
    for (std::size_t layer = 0; layer < kLumasLayers; ++layer) {
      const std::int32_t& on = block<LumasBlock>().layerOn[layer];
      const bool isSwitch = member == offsetof(LumasBlock, layerOn) + layer * sizeof on;
      if (isSwitch && on != 0) ShowPage(kLayerPages[layer]);
    }
  }

 private:
  void ShowPage(std::int32_t page) noexcept {
    StoreShared(session().block(), offsetof(LumasBlock, activePage), page);
    ShowMember(offsetof(LumasBlock, activePage));
  }
};

}  // namespace

std::int32_t EditLumas(ShaderInstance* instance) noexcept {
  return EditShader<kLumasEditor, LumasDialog>(instance);
}

}  // namespace sorvanix
