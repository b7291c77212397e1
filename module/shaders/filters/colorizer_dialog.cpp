// The gadgets of Colorizer.
#include "module/shaders/filters/colorizer_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/ramp_dialog.h"
#include "module/shaders/filters/colorizer.h"

namespace sorvanix {

namespace {

using Block = ColorizerBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)

constexpr RampGadgets kRamp = {
    .area = 17001, .value = 17002, .interpolation = 17003, .shown = RampValue::OfPosition};

constexpr Gadget kGadgets[] = {
    {GADGET(17003, ramp.interpolation)},
    {GADGET(17004, source)},
    {GADGET(17005, input)},
    {GADGET(17016, previewObject), .limits = kPreviewObjects},
    {GADGET(17017, previewAuto)},
};

}  // namespace

constexpr EditorTable kColorizerEditor = {
    .shader = &kColorizerTable,
    .fill = FillColorizerRecord,
    .dialogId = 17000,
    .titleArea = 17014,
    .previewArea = 17015,
    .titleIcon = "Colorizer Title.tif",
    .aboutName = "Colorizer",
    .missingResources = "Unable to find dialog resources for sorvaNIX Colorizer",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 17017>,
    .furtherGadgets = kIdsOfRamp<kRamp>,
    .preview = PreviewMembersOf<Block>(),
};

#undef GADGET

std::int32_t EditColorizer(ShaderInstance* instance) noexcept {
  return EditShader<kColorizerEditor, PlainRampDialog<kRamp>>(instance);
}

}  // namespace sorvanix
