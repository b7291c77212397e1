// The gadgets of Falloff.
#include "module/shaders/surface/falloff_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/ramp_dialog.h"
#include "module/shaders/surface/falloff.h"

namespace sorvanix {

namespace {

using Block = FalloffBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)

constexpr RampGadgets kRamp = {.area = 20001, .value = 20003, .interpolation = 20004};

constexpr Gadget kGadgets[] = {
    {GADGET(20004, ramp.interpolation)},
    {GADGET(20005, space)},
    {GADGET(20007, direction.x)},
    {GADGET(20008, direction.y)},
    {GADGET(20009, direction.z)},
    {GADGET(20010, useBumpNormal)},
    {GADGET(20013, previewObject), .limits = kAnyPreviewObject},
    {GADGET(20014, previewAuto)},
};

}  // namespace

constexpr EditorTable kFalloffEditor = {
    .shader = &kFalloffTable,
    .fill = FillFalloffRecord,
    .dialogId = 20000,
    .titleArea = 20012,
    .previewArea = 20011,
    .titleIcon = "Falloff Title.tif",
    .aboutName = "Falloff",
    .missingResources = "Unable to find dialog resources for sorvaNIX Falloff",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 20014>,
    .furtherGadgets = kIdsOfRamp<kRamp>,
    .preview = PreviewMembersOf<Block>(),
};

#undef GADGET

std::int32_t EditFalloff(ShaderInstance* instance) noexcept {
  return EditShader<kFalloffEditor, PlainRampDialog<kRamp>>(instance);
}

}  // namespace sorvanix
