// The gadgets of Fusion.
#include "module/shaders/filters/fusion_dialog.h"

#include "module/editors/shader_dialog.h"
#include "module/shaders/filters/fusion.h"

namespace sorvanix {

namespace {

using Block = FusionBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

constexpr Gadget kGadgets[] = {
    {GADGET(13001, mode)},        {GADGET(13002, opacity)},
    {GADGET(13003, opacity)},     {GADGET(13004, useMask)},
    {GADGET(13005, invertMask)},  {GADGET(13006, invertOutput)},
    {GADGET(13012, baseInput)},   {GADGET(13021, blendInput)},
    {GADGET(13030, maskInput)},   {GADGET(13041, previewObject), .limits = kPreviewObjects},
    {GADGET(13042, previewAuto)},
};

constexpr std::int32_t kSceneGadgets[] = {13042};
constexpr EnablingRule kEnabling[] = {
    {kSceneGadgets, [](const void* b) noexcept { return BlockAs<Block>(b).previewObject != 0; }},
};

constexpr RandomDraw kRandom[] = {
    {AT(mode), 18.99},        {AT(opacity)}, {AT(invertMask), 1.99}, {AT(useMask), 1.99},
    {AT(invertOutput), 1.99},
};

}  // namespace

constexpr EditorTable kFusionEditor = {
    .shader = &kFusionTable,
    .fill = FillFusionRecord,
    .dialogId = 13000,
    .titleArea = 13039,
    .previewArea = 13040,
    .titleIcon = "Fusion Title.tif",
    .aboutName = "Fusion",
    .missingResources = "Unable to find dialog resources for sorvaNIX Fusion",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .preview = {.object = AT(previewObject),
                .dirty = AT(changed),
                .automatic = AT(previewAuto),
                .inScene = AT(previewBusy),
                .channel = AT(previewChannel)},
    .reset = {AT(mode), AT(invertOutput)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t EditFusion(ShaderInstance* instance) noexcept {
  return EditShader<kFusionEditor>(instance);
}

}  // namespace sorvanix
