// The gadgets of Tiles.
#include "module/shaders/generators/tiles_dialog.h"

#include "module/editors/shader_dialog.h"
#include "module/shaders/generators/tiles.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(TilesBlock, id, member)
#define AT(member) offsetof(TilesBlock, member)

// `globalMode` is the object of the preview, `alternate` its switch for drawing by itself.
constexpr Gadget kGadgets[] = {
    {GADGET(12001, pattern)},
    {GADGET(12002, orientation)},
    {GADGET(12003, globalScale)},
    {GADGET(12004, scaleU)},
    {GADGET(12005, scaleV)},
    {GADGET(12006, arms)},
    {GADGET(12007, groutWidth)},
    {GADGET(12008, bevel)},
    {GADGET(12009, groutColor)},
    {GADGET(12010, color1)},
    {GADGET(12011, color2)},
    {GADGET(12012, color3)},
    {GADGET(12013, smoothBevel)},
    {GADGET(12014, randomColor)},
    {GADGET(12032, bumpStepScale), .effect = Effect::None},
    {GADGET(12030, globalMode), .limits = kPreviewObjects},
    {GADGET(12031, alternate)},
};

constexpr std::int32_t kArmGadgets[] = {12006, 12019};  // and its label
constexpr std::int32_t kRandomGadgets[] = {12014};
constexpr std::int32_t kSceneGadgets[] = {12031};

// Spirals and wedges.
bool HasArms(const void* block) noexcept {
  const std::int32_t pattern = BlockAs<TilesBlock>(block).pattern;
  return pattern >= 23 && pattern <= 26;
}

// Cracks (8) draw random colours whatever the switch says. Spirals never do, yet their switch stays
// enabled. Deliberate.
bool HasRandomColour(const void* block) noexcept { return BlockAs<TilesBlock>(block).pattern != 8; }

bool ShowsScene(const void* block) noexcept { return BlockAs<TilesBlock>(block).globalMode != 0; }

constexpr EnablingRule kEnabling[] = {
    {kArmGadgets, HasArms},
    {kRandomGadgets, HasRandomColour},
    {kSceneGadgets, ShowsScene},
};

constexpr RandomDraw kRandom[] = {
    {AT(pattern), 27.99}, {AT(orientation), 1.99},
    {AT(groutWidth)},     {AT(bevel)},
    {AT(groutColor)},     {AT(color1)},
    {AT(color2)},         {AT(color3)},
};

}  // namespace

constexpr EditorTable kTilesEditor = {
    .shader = &kTilesTable,
    .fill = FillTilesRecord,
    .dialogId = 12000,
    .titleArea = 12028,
    .previewArea = 12029,
    .titleIcon = "Tiles Title.tif",
    .aboutName = "Tiles",
    .missingResources = "Unable to find dialog resources for sorvaNIX Tiles",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .preview = {.object = AT(globalMode),
                .dirty = AT(reserved24),
                .automatic = AT(alternate),
                .inScene = AT(reserved23)},
    .reset = {AT(pattern), AT(randomColor)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t EditTiles(ShaderInstance* instance) noexcept {
  return EditShader<kTilesEditor>(instance);
}

}  // namespace sorvanix
