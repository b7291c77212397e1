// The gadgets of 2D Noise.
#include "module/shaders/generators/noise_2d_dialog.h"

#include "module/shaders/generators/noise_2d.h"
#include "module/shaders/generators/noise_dialog.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(Noise2DBlock, id, member)
#define AT(member) offsetof(Noise2DBlock, member)

constexpr Gadget kGadgets[] = {
    {GADGET(19001, noiseType)},
    {GADGET(19002, octaves)},
    {GADGET(19003, scale), .shown = Shown::Reciprocal},
    {GADGET(19004, scaleU), .shown = Shown::Reciprocal, .limits = kNoiseAxisSize},
    {GADGET(19005, scaleV), .shown = Shown::Reciprocal, .limits = kNoiseAxisSize},
    {GADGET(19006, speed)},
    {GADGET(19007, detail)},
    {GADGET(19008, contrast)},
    {GADGET(19009, contrast)},
    {GADGET(19010, brightness)},
    {GADGET(19011, brightness)},
    {GADGET(19012, lowClip)},
    {GADGET(19013, lowClip)},
    {GADGET(19014, highClip)},
    {GADGET(19015, highClip)},
    {GADGET(19016, cycles)},
    {GADGET(19017, colorLow)},
    {GADGET(19018, colorHigh)},
    {GADGET(19019, absolute), .effect = Effect::AlwaysNewPicture},
    // The timer looks at the switch itself, and bumps do not show in a flat picture.
    {GADGET(19020, previewTile), .effect = Effect::None},
    {GADGET(19041, bumpDetail), .effect = Effect::None},
    {GADGET(19039, previewObject), .limits = kPreviewObjects},
    {GADGET(19040, previewAuto)},
};

// 19024, 19034 and 19037 are the labels beside octaves, cycles and absolute.
constexpr std::int32_t kOctaveGadgets[] = {19002, 19024};
constexpr std::int32_t kWaveGadgets[] = {19016, 19019, 19034, 19037};
constexpr std::int32_t kFlatGadgets[] = {19020};
constexpr std::int32_t kSceneGadgets[] = {19040};

using Block = Noise2DBlock;
constexpr EnablingRule kEnabling[] = {
    {kOctaveGadgets,
     [](const void* b) noexcept { return NoiseHasOctaves(BlockAs<Block>(b).noiseType); }},
    {kWaveGadgets, [](const void* b) noexcept { return NoiseIsWave(BlockAs<Block>(b).noiseType); }},
    {kFlatGadgets, [](const void* b) noexcept { return BlockAs<Block>(b).previewObject == 0; }},
    {kSceneGadgets, [](const void* b) noexcept { return BlockAs<Block>(b).previewObject != 0; }},
};

constexpr RandomDraw kRandom[] = {
    {AT(noiseType), 29.99}, {AT(octaves), 15}, {AT(speed), 5},       {AT(cycles), 5},
    {AT(colorLow)},         {AT(colorHigh)},   {AT(absolute), 1.99},
};

}  // namespace

constexpr EditorTable kNoise2DEditor = {
    .shader = &kNoise2DTable,
    .fill = Fill2DNoiseRecord,
    .dialogId = 19000,
    .titleArea = 19022,
    .previewArea = 19021,
    .titleIcon = "2D Noise Title.tif",
    .aboutName = "2D Noise",
    .missingResources = "Unable to find dialog resources for sorvaNIX 2D Noise",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .preview = {.object = AT(previewObject),
                .dirty = AT(previewDirty),
                .automatic = AT(previewAuto),
                .animated = AT(previewTile),
                .speed = AT(speed),
                .inScene = AT(reserved21)},
    .reset = {AT(noiseType), AT(previewTile)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t Edit2DNoise(ShaderInstance* instance) noexcept {
  return EditShader<kNoise2DEditor, NoiseDialog<Noise2DBlock>>(instance);
}

}  // namespace sorvanix
