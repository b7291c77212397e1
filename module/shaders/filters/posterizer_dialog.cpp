// The gadgets of Posterizer.
#include "module/shaders/filters/posterizer_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/shader_dialog.h"
#include "module/shaders/filters/posterizer.h"

namespace sorvanix {

namespace {

using Block = PosterizerBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

constexpr Limits kLevelSlider = {1, 20, 1};
// The whole soft edge, in levels.
constexpr Limits kEdge = {0, 1, 0.01};

constexpr Gadget kGadgets[] = {
    {GADGET(26001, levels)},
    {GADGET(26002, levels), .limits = kLevelSlider},
    {GADGET(26003, softness), .shown = Shown::Doubled, .limits = kEdge, .format = FormatPercent},
    {GADGET(26004, softness), .shown = Shown::Doubled, .limits = kEdge, .format = FormatPercent},
    {GADGET(26005, input)},
    {GADGET(26016, previewObject), .limits = kPreviewObjects},
    {GADGET(26017, previewAuto)},
};

constexpr RandomDraw kRandom[] = {
    {AT(levels), 19.99, 1},
    {AT(softness), 0.5},
};

}  // namespace

constexpr EditorTable kPosterizerEditor = {
    .shader = &kPosterizerTable,
    .fill = FillPosterizerRecord,
    .dialogId = 26000,
    .titleArea = 26014,
    .previewArea = 26015,
    .titleIcon = "Posterizer Title.tif",
    .aboutName = "Posterizer",
    .missingResources = "Unable to find dialog resources for sorvaNIX Posterizer",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 26017>,
    .preview = PreviewMembersOf<Block>(),
    .reset = {AT(levels), AT(softness)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t EditPosterizer(ShaderInstance* instance) noexcept {
  return EditShader<kPosterizerEditor>(instance);
}

}  // namespace sorvanix
