// Lumas as data: its fields, their saved forms and their words.
#include "module/shaders/surface/illumination.h"
#include "module/shaders/surface/lumas.h"
#include "module/shaders/surface/lumas_derive.h"
#include "module/shaders/surface/lumas_layer_rows.h"

namespace sorvanix {

namespace {

#define MEMBER(kind, member) SORVANIX_MEMBER(LumasBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(LumasBlock, kind, member)
#define AT(member) offsetof(LumasBlock, member)

static_assert(AT(previewObject) == 7 * 4 && AT(nested) == 11 * 4 && AT(diffuseOn) == 13 * 4);

constexpr Choice kAnisotropyModes[] = {
    {AnisoTagAxis, "tagAxis", "Tag Axis"},
    {AnisoTangent, "tangent", "Tangent"},
    {AnisoAroundAxis, "aroundAxis", "Around Axis"},
    {AnisoRadialSurface, "radialSurface", "Radial on Surface"},
    {AnisoDiscsSurface, "discsSurface", "Discs on Surface"},
    {AnisoRadialPlanar, "radialPlanar", "Radial Planar"},
    {AnisoDiscsPlanar, "discsPlanar", "Discs Planar"},
};

constexpr Limits kStretch = {0, 1000, 0.01};
// Of scratches. Dialogs show percent of the reciprocal; the number itself has no unit.
constexpr Limits kFrequency = {.minimum = 1e-4, .step = 0.01};

// --- the fields ---

constexpr auto kStateFields = std::to_array<Field>({
    {MEMBER(Int, previewChannel), .initial = Initially(-1)},
    {MEMBER(Int, previewObject), .initial = Initially(1), .compared = true},
    {MEMBER(Bool, previewBusy), .initial = Initially(0), .compared = true},
    {MEMBER(Bool, previewAuto), .initial = Initially(1), .compared = true},
    {MEMBER(Bool, changed), .initial = Initially(1), .compared = true},
    {MEMBER(Int, nested)},
    {MEMBER(Int, activePage), .initial = Initially(23015), .compared = true},
});

constexpr auto kDiffuseFields = std::to_array<Field>({
    {MEMBER(Int, diffuseOn), .initial = Initially(1), .compared = true, .key = 1000,
     .describeAs = DescribeInteger, .label = "Diffuse",
     .help = "Whether the surface shows diffuse light.", .limits = kSwitch,
     .choices = kSwitchChoices},
    {MEMBER(Vector, diffuseColour), .initial = Initially(1.0f, 0.01f, 0.01f), .compared = true,
     .key = 1053, .label = "Diffuse Color", .help = "The colour of the surface in white light.",
     .unit = Unit::Colour},
    {MEMBER(Float, diffuseStrength), .initial = Initially(1.0f), .compared = true, .key = 1054,
     .label = "Diffuse Strength", .help = "Multiplies the colour.", .limits = kStrength,
     .unit = Unit::Percent},
    {MEMBER(Vector, diffuseTint), .compared = true},
    {MEMBER(Int, orenNayar), .initial = Initially(IlluminationHost), .compared = true, .key = 1056,
     .describeAs = DescribeInteger, .label = "Illumination",
     .help = "The host's diffuse light, or the flatter one of rough matt surfaces.",
     .limits = kSwitch, .choices = kIlluminations},
    {MEMBER(Float, sigma), .initial = Initially(1.0f), .compared = true, .key = 1057,
     .label = "Roughness", .help = "Roughness of the Oren-Nayar illumination; 0 is smooth.",
     .limits = {0, 2, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, diffuseLevel), .initial = Initially(0.6f), .compared = true, .key = 1058,
     .label = "Diffuse Level", .help = "The overall level of the diffuse light.", .limits = kLevel,
     .unit = Unit::Percent},
    {MEMBER(Float, diffuseContrast), .initial = Initially(0.0f), .compared = true, .key = 1059,
     .label = "Diffuse Contrast", .help = "Steepens the border between light and shade.",
     .limits = {-5, 5, 0.01}, .unit = Unit::Percent},
    {MEMBER(Int, diffuseActive), .compared = true},
    {MEMBER(Float, diffuseLow), .compared = true},
    {MEMBER(Float, diffuseHigh), .compared = true},
});

constexpr auto kAnisotropyFields = std::to_array<Field>({
    {MEMBER(Int, anisotropyOn), .initial = Initially(0), .compared = true, .key = 1004,
     .describeAs = DescribeInteger, .label = "Anisotropy",
     .help = "Whether highlights are drawn out by brushing.", .limits = kSwitch,
     .choices = kSwitchChoices},
    {MEMBER(Int, anisotropyMode), .initial = Initially(2), .compared = true, .key = 1063,
     .describeAs = DescribeInteger, .label = "Brushing",
     .help = "How the direction of brushing is found at each point.", .limits = {0, 6, 1},
     .choices = kAnisotropyModes},
    {MEMBER(Float, anisotropyScale), .initial = Initially(1.0f), .compared = true, .key = 1064,
     .label = "Disc Size", .help = "The size of the discs, where the brushing is made of them.",
     .limits = {-1000, 1000, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, anisotropyX), .initial = Initially(7.0f), .compared = true, .key = 1065,
     .label = "Stretch X", .help = "Stretches highlights along the brushing.", .limits = kStretch,
     .unit = Unit::Percent},
    {MEMBER(Float, anisotropyY), .initial = Initially(1.0f), .compared = true, .key = 1066,
     .label = "Stretch Y", .help = "Stretches highlights across the brushing.", .limits = kStretch,
     .unit = Unit::Percent},
    {MEMBER(Int, anisotropyActive), .compared = true},
    {MEMBER(Int, spareLong), .initial = Initially(0), .key = 1068, .describeAs = DescribeInteger,
     .label = "Spare", .help = "Exchanged, but not saved and without effect."},
    {MEMBER(Float, scratchAmplitude), .initial = Initially(0.5f), .compared = true, .key = 1069,
     .label = "Scratches", .help = "How much scratches vary the stretch.",
     .limits = {0, 10000, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, scratchScaleU), .initial = Initially(2.0f), .compared = true, .key = 1070,
     .label = "Scratch Scale U", .help = "How close scratches lie side by side.",
     .limits = kFrequency},
    {MEMBER(Float, scratchScaleV), .initial = Initially(0.2f), .compared = true, .key = 1071,
     .label = "Scratch Scale V", .help = "How often scratches end along their length.",
     .limits = kFrequency},
    {MEMBER(Float, scratchFade), .initial = Initially(1.0f), .compared = true, .key = 1072,
     .label = "Scratch Fade", .help = "How soon scratches fade with the distance; 0 is never.",
     .limits = kStretch, .unit = Unit::Percent},
    {MEMBER(Int, scratchActive), .initial = Initially(0), .compared = true},
    {MEMBER(Float, orenA), .compared = true},
    {MEMBER(Float, orenB), .compared = true},
    {MEMBER(Float, sigma2), .compared = true},
});

constexpr auto kFields =
    Join(kStateFields, kDiffuseFields, LayerFields<1>(), LayerFields<2>(), LayerFields<3>(),
         kAnisotropyFields, LayerScratchField<1>(), LayerScratchField<2>(), LayerScratchField<3>());

// --- the saved forms ---

// The first form knew a diffuse term alone, in an order of its own. What such a file does not hold
// shows no highlight.
constexpr std::int32_t kFirstMarker = 20000728;
constexpr std::int32_t kMarker = 20000729;

#define FIRST_FORM(kind, member) StoredBefore(kMarker, PLACE(kind, member))
#define NEWER(kind, member) StoredSince(kMarker, PLACE(kind, member))
#define FIRST_FORM_IMPLIES(kind, member, value) \
  ImpliedBefore(kMarker, PLACE(kind, member), Initially(value))

constexpr auto kFirstForm = std::to_array<StoredItem>({
    FIRST_FORM(Int, previewObject),
    FIRST_FORM(Int, orenNayar),
    FIRST_FORM(Float, diffuseLevel),
    FIRST_FORM(Float, sigma),
    FIRST_FORM(Float, sigma2),
    FIRST_FORM(Float, orenA),
    FIRST_FORM(Float, orenB),
    FIRST_FORM(Float, diffuseContrast),
    FIRST_FORM(Vector, diffuseColour),
    FIRST_FORM(Bool, changed),
    FIRST_FORM(Bool, previewBusy),
    FIRST_FORM(Bool, previewAuto),
    FIRST_FORM_IMPLIES(Float, diffuseStrength, 1.0f),
    FIRST_FORM_IMPLIES(Int, layerOn[0], 0),
    FIRST_FORM_IMPLIES(Int, layerOn[1], 0),
    FIRST_FORM_IMPLIES(Int, layerOn[2], 0),
    FIRST_FORM_IMPLIES(Int, layers[0].active, 0),
    FIRST_FORM_IMPLIES(Int, layers[1].active, 0),
    FIRST_FORM_IMPLIES(Int, layers[2].active, 0),
});

constexpr auto kStoredSwitches = std::to_array<StoredItem>({
    NEWER(Int, previewObject),
    NEWER(Bool, changed),
    NEWER(Bool, previewBusy),
    NEWER(Bool, previewAuto),
    NEWER(Int, activePage),
    NEWER(Int, diffuseOn),
    NEWER(Int, layerOn[0]),
    NEWER(Int, layerOn[1]),
    NEWER(Int, layerOn[2]),
    NEWER(Int, anisotropyOn),
});

constexpr auto kStoredTerms = std::to_array<StoredItem>({
    NEWER(Vector, diffuseColour),  NEWER(Float, diffuseStrength), NEWER(Int, orenNayar),
    NEWER(Float, sigma),           NEWER(Float, sigma2),          NEWER(Float, orenA),
    NEWER(Float, orenB),           NEWER(Float, diffuseLevel),    NEWER(Float, diffuseContrast),
    NEWER(Int, diffuseActive),     NEWER(Float, diffuseLow),      NEWER(Float, diffuseHigh),
    NEWER(Int, anisotropyMode),    NEWER(Float, anisotropyScale), NEWER(Float, anisotropyX),
    NEWER(Float, anisotropyY),     NEWER(Int, anisotropyActive),  NEWER(Float, scratchAmplitude),
    NEWER(Float, scratchScaleU),   NEWER(Float, scratchScaleV),   NEWER(Float, scratchFade),
    NEWER(Int, scratchOnLayer[0]), NEWER(Int, scratchOnLayer[1]), NEWER(Int, scratchOnLayer[2]),
    NEWER(Int, scratchActive),
});

constexpr auto kStored = Join(kFirstForm, kStoredSwitches, StoredLayer<1>(kMarker),
                              StoredLayer<2>(kMarker), StoredLayer<3>(kMarker), kStoredTerms);

#undef FIRST_FORM_IMPLIES
#undef NEWER
#undef FIRST_FORM
#undef AT
#undef PLACE
#undef MEMBER

// Files hold every derived value but this one.
void CompleteRead(void* block, std::int32_t) noexcept {
  DeriveDiffuseTint(*static_cast<LumasBlock*>(block));
}

}  // namespace

constexpr ShaderTable kLumasTable = {
    .pluginId = PluginIdLumas,
    .name = "Lumas",
    .category = ShaderCategory::Surface,
    .summary =
        "A complete illumination: rough or plain diffuse light and three highlights, brushed "
        "or round.",
    .infoWord = 0x0020000E,
    .blockSize = sizeof(LumasBlock),
    .nestedOffset = offsetof(LumasBlock, nested),
    .fields = kFields,
    .copyStart = offsetof(LumasBlock, previewObject),
    .marker = kMarker,
    .oldestMarker = kFirstMarker,
    .stored = kStored,
    .completeRead = CompleteRead,
    .slotStride = SlotStrideDistorter,
    .slotFailureText = "Couldn't Allocate Globals",
};

}  // namespace sorvanix
