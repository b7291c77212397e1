// The gadgets of Fresnel.
#include "module/shaders/surface/fresnel_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/ramp_dialog.h"
#include "module/shaders/surface/fresnel.h"

namespace sorvanix {

namespace {

using Block = FresnelBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)

constexpr RampGadgets kRamp = {.area = 27001, .value = 27002, .interpolation = 27003};

constexpr Gadget kGadgets[] = {
    {GADGET(27003, ramp.interpolation)},
    {GADGET(27004, useBumpNormal)},
    {GADGET(27007, previewObject), .limits = kAnyPreviewObject},
    {GADGET(27008, previewAuto)},
    {GADGET(27009, sideMode)},
};

}  // namespace

constexpr EditorTable kFresnelEditor = {
    .shader = &kFresnelTable,
    .fill = FillFresnelRecord,
    .dialogId = 27000,
    .titleArea = 27006,
    .previewArea = 27005,
    .titleIcon = "Fresnel Title.tif",
    .aboutName = "Fresnel",
    // Names another shader: deliberate, users know the message so.
    .missingResources = "Unable to find dialog resources for sorvaNIX Falloff",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 27008>,
    .furtherGadgets = kIdsOfRamp<kRamp>,
    .preview = PreviewMembersOf<Block>(),
};

#undef GADGET

std::int32_t EditFresnel(ShaderInstance* instance) noexcept {
  return EditShader<kFresnelEditor, PlainRampDialog<kRamp>>(instance);
}

}  // namespace sorvanix
