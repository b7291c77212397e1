// The gadgets of Bright/Contrast.
#include "module/shaders/filters/bright_contrast_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/shader_dialog.h"
#include "module/shaders/filters/bright_contrast.h"

namespace sorvanix {

namespace {

using Block = BrightContrastBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

constexpr Gadget kGadgets[] = {
    {GADGET(15001, brightness)},  {GADGET(15002, brightness)},
    {GADGET(15003, contrast)},    {GADGET(15004, contrast)},
    {GADGET(15005, levelLow)},    {GADGET(15006, levelLow)},
    {GADGET(15007, levelHigh)},   {GADGET(15008, levelHigh)},
    {GADGET(15009, input)},       {GADGET(15020, previewObject), .limits = kPreviewObjects},
    {GADGET(15021, previewAuto)},
};

constexpr RandomDraw kRandom[] = {
    {AT(brightness), 2, -1},
    {AT(contrast), 2, -1},
    {AT(levelLow)},
    {AT(levelHigh)},
};

}  // namespace

constexpr EditorTable kBrightContrastEditor = {
    .shader = &kBrightContrastTable,
    .fill = FillBrightContrastRecord,
    .dialogId = 15000,
    .titleArea = 15018,
    .previewArea = 15019,
    .titleIcon = "Bright Contrast Title.tif",
    .aboutName = "Brightness/Contrast",
    .missingResources = "Unable to find dialog resources for sorvaNIX Brightness/Contrast",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 15021>,
    .preview = PreviewMembersOf<Block>(),
    .reset = {AT(brightness), AT(levelHigh)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t EditBrightContrast(ShaderInstance* instance) noexcept {
  return EditShader<kBrightContrastEditor>(instance);
}

}  // namespace sorvanix
