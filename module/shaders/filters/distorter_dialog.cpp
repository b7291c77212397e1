// The gadgets of Distorter.
#include "module/shaders/filters/distorter_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/shader_dialog.h"
#include "module/shaders/filters/distorter.h"

namespace sorvanix {

namespace {

using Block = DistorterBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

constexpr Limits kSlider = {-1, 1, 0.01};
constexpr Limits kStepSlider = {0, 10, 0.01};

constexpr Gadget kGadgets[] = {
    {GADGET(14001, warpType)},
    {GADGET(14002, strength)},
    {GADGET(14003, strength), .limits = kSlider},
    {GADGET(14004, scaleX)},
    {GADGET(14005, scaleX), .limits = kSlider},
    {GADGET(14006, scaleY)},
    {GADGET(14007, scaleY), .limits = kSlider},
    {GADGET(14008, scaleZ)},
    {GADGET(14009, scaleZ), .limits = kSlider},
    {GADGET(14010, gradientStep)},
    {GADGET(14011, gradientStep), .limits = kStepSlider},
    {GADGET(14012, tile)},
    {GADGET(14013, input)},
    {GADGET(14022, distortInput)},
    {GADGET(14035, previewObject), .limits = kPreviewObjects},
    {GADGET(14036, previewAuto)},
    {GADGET(14038, sampleStep)},
};

constexpr RandomDraw kRandom[] = {
    {AT(warpType), 2.99}, {AT(strength), 2, -1},  {AT(scaleX), 2, -1}, {AT(scaleY), 2, -1},
    {AT(scaleZ), 2, -1},  {AT(gradientStep), 10}, {AT(tile), 1.99},
};

}  // namespace

constexpr EditorTable kDistorterEditor = {
    .shader = &kDistorterTable,
    .fill = FillDistorterRecord,
    .dialogId = 14000,
    .titleArea = 14033,
    .previewArea = 14034,
    .titleIcon = "Distorter Title.tif",
    .aboutName = "Distorter",
    .missingResources = "Unable to find dialog resources for sorvaNIX Distorter",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 14036>,
    .preview = PreviewMembersOf<Block>(),
    .reset = {AT(warpType), AT(tile)},
    .furtherReset = {AT(sampleStep), AT(sampleStep)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t EditDistorter(ShaderInstance* instance) noexcept {
  return EditShader<kDistorterEditor>(instance);
}

}  // namespace sorvanix
