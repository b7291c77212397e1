// The gadgets of Gradient.
#include "module/shaders/generators/gradient_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/ramp_dialog.h"
#include "module/shaders/generators/gradient.h"

namespace sorvanix {

namespace {

using Block = GradientBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

constexpr RampGadgets kRamp = {.area = 18001, .value = 18002, .interpolation = 18003};

constexpr Gadget kGadgets[] = {
    {GADGET(18003, ramp.interpolation)},
    {GADGET(18004, type)},
    {GADGET(18006, space)},
    {GADGET(18010, start.x)},
    {GADGET(18011, start.y)},
    {GADGET(18012, start.z)},
    {GADGET(18013, end.x)},
    {GADGET(18014, end.y)},
    {GADGET(18015, end.z)},
    {GADGET(18016, radius)},
    {GADGET(18018, cycle)},
    {GADGET(18021, previewObject), .limits = kAnyPreviewObject},
    {GADGET(18022, previewAuto)},
};

// 18007, 18008, 18009 and 18017 are the labels of space, start, end and radius.
constexpr std::int32_t kRampIds[] = {kRamp.area, kRamp.value, 18007, 18008, 18009, 18017};

constexpr std::int32_t kSpaceGadgets[] = {18006, 18007, 18008};
constexpr std::int32_t kEndGadgets[] = {18009};
constexpr std::int32_t kRadiusGadgets[] = {18016, 18017};
constexpr std::int32_t kSceneGadgets[] = {18022};

std::int32_t TypeOf(const void* block) noexcept { return BlockAs<Block>(block).type; }
bool IsIn3D(const void* block) noexcept {
  return TypeOf(block) >= GradientLinear3D && TypeOf(block) <= GradientSphere3D;
}

constexpr EnablingRule kEnabling[] = {
    {kSpaceGadgets, IsIn3D},
    {kEndGadgets,
     [](const void* b) noexcept { return IsIn3D(b) && TypeOf(b) != GradientSphere3D; }},
    {kRadiusGadgets,
     [](const void* b) noexcept { return IsIn3D(b) && TypeOf(b) != GradientLinear3D; }},
    {kSceneGadgets, ShowsScene<Block>}};

}  // namespace

constexpr EditorTable kGradientEditor = {
    .shader = &kGradientTable,
    .fill = FillGradientRecord,
    .dialogId = 18000,
    .titleArea = 18020,
    .previewArea = 18019,
    .titleIcon = "Gradient Title.tif",
    .aboutName = "Gradient",
    .missingResources = "Unable to find dialog resources for sorvaNIX Gradient",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .furtherGadgets = kRampIds,
    .preview = {.object = AT(previewObject),
                .dirty = AT(changed),
                .automatic = AT(previewAuto),
                .inScene = AT(previewBusy),
                .channel = AT(dialogChannel)},
};

#undef AT
#undef GADGET

std::int32_t EditGradient(ShaderInstance* instance) noexcept {
  return EditShader<kGradientEditor, PlainRampDialog<kRamp>>(instance);
}

}  // namespace sorvanix
