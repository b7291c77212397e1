// The gadgets of 3D Noise.
#include "module/shaders/generators/noise_3d_dialog.h"

#include "module/shaders/generators/noise_3d.h"
#include "module/shaders/generators/noise_dialog.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(Noise3DBlock, id, member)
#define AT(member) offsetof(Noise3DBlock, member)

constexpr Limits kAnyNumber = {-9e18, 9e18, 1};

// The preview's own members have no meaning for a render, and go by older names: `revision` is the
// object, `flagC` the animation, `flagD` the switch for drawing by itself.
constexpr Gadget kGadgets[] = {
    {GADGET(11001, noiseType)},
    {GADGET(11002, space)},
    {GADGET(11003, octaves)},
    {GADGET(11004, globalScale), .shown = Shown::Reciprocal},
    {GADGET(11005, scaleX), .shown = Shown::Reciprocal, .limits = kNoiseAxisSize},
    {GADGET(11006, scaleY), .shown = Shown::Reciprocal, .limits = kNoiseAxisSize},
    {GADGET(11007, scaleZ), .shown = Shown::Reciprocal, .limits = kNoiseAxisSize},
    {GADGET(11008, timeScale)},
    {GADGET(11009, detail)},
    {GADGET(11010, contrast)},
    {GADGET(11011, contrast)},
    {GADGET(11012, brightness)},
    {GADGET(11013, brightness)},
    {GADGET(11014, lowClip)},
    {GADGET(11015, lowClip)},
    {GADGET(11016, highClip)},
    {GADGET(11017, highClip)},
    {GADGET(11018, cycles)},
    {GADGET(11019, colorA)},
    {GADGET(11020, colorB)},
    {GADGET(11021, absolute), .effect = Effect::AlwaysNewPicture},
    // As in 2D Noise: the timer looks at the switch itself, and no preview shows a bump.
    {GADGET(11022, flagC), .effect = Effect::None},
    {GADGET(11043, bumpStepScale), .effect = Effect::None},
    {GADGET(11044, bumpOneSided), .effect = Effect::None},
    {GADGET(11045, useObjectFrame)},
    {GADGET(11046, useSphereFrame)},
    {GADGET(11047, extraVector.x), .effect = Effect::None},
    {GADGET(11048, extraVector.y), .effect = Effect::None},
    {GADGET(11049, extraVector.z), .effect = Effect::None},
    {GADGET(11050, velocity.x), .shown = Shown::Component, .limits = kAnyNumber},
    {GADGET(11051, velocity.y), .shown = Shown::Component, .limits = kAnyNumber},
    {GADGET(11052, velocity.z), .shown = Shown::Component, .limits = kAnyNumber},
    {GADGET(11053, extraValue), .effect = Effect::None},
    {GADGET(11041, revision), .limits = kPreviewObjects},
    {GADGET(11042, flagD)},
};

constexpr std::int32_t kOctaveGadgets[] = {11003};
constexpr std::int32_t kWaveGadgets[] = {11018, 11021};
constexpr std::int32_t kFlatGadgets[] = {11022};
constexpr std::int32_t kSceneGadgets[] = {11042};

using Block = Noise3DBlock;
constexpr EnablingRule kEnabling[] = {
    {kOctaveGadgets,
     [](const void* b) noexcept { return NoiseHasOctaves(BlockAs<Block>(b).noiseType); }},
    {kWaveGadgets, [](const void* b) noexcept { return NoiseIsWave(BlockAs<Block>(b).noiseType); }},
    {kFlatGadgets, [](const void* b) noexcept { return BlockAs<Block>(b).revision == 0; }},
    {kSceneGadgets, [](const void* b) noexcept { return BlockAs<Block>(b).revision != 0; }},
};

constexpr RandomDraw kRandom[] = {
    {AT(noiseType), 29.99}, {AT(octaves), 15}, {AT(timeScale), 5},   {AT(cycles), 5},
    {AT(colorA)},           {AT(colorB)},      {AT(absolute), 1.99},
};

}  // namespace

constexpr EditorTable kNoise3DEditor = {
    .shader = &kNoise3DTable,
    .fill = Fill3DNoiseRecord,
    .dialogId = 11000,
    .titleArea = 11024,
    .previewArea = 11023,
    .titleIcon = "3D Noise Title.tif",
    .aboutName = "3D Noise",
    .missingResources = "Unable to find dialog resources for sorvaNIX 3D Noise",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .preview = {.object = AT(revision),
                .dirty = AT(reserved25),
                .automatic = AT(flagD),
                .animated = AT(flagC),
                .speed = AT(timeScale),
                .inScene = AT(reserved24)},
    .reset = {AT(noiseType), AT(flagC)},
    .random = kRandom,
};

#undef AT
#undef GADGET

std::int32_t Edit3DNoise(ShaderInstance* instance) noexcept {
  return EditShader<kNoise3DEditor, NoiseDialog<Noise3DBlock>>(instance);
}

}  // namespace sorvanix
