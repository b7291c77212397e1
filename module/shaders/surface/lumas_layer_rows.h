// The rows of Lumas' table that stand once for each of its three layers.
#pragma once

#include "module/shaders/surface/lumas.h"
#include "module/shell/numbered_text.h"

namespace sorvanix {

// What dialogs show as percent, or as a tick.
inline constexpr Limits kSwitch = {0, 1, 1};
inline constexpr Limits kLevel = {0, 10, 0.01};
inline constexpr Limits kStrength = {.minimum = 0, .step = 0.01};

/// The defaults of a layer. Derived values are left out: Alloc derives them.
struct LayerDefaults {
  Vector colour;
  float intensity, size, edgeIntensity, edgeWidth;
};
inline constexpr LayerDefaults kLayerDefaults[kLumasLayers] = {
    {{1, 1, 1}, 1.25f, 0.005f, 2, 1},
    {{1, 0.5f, 0.5f}, 0.5f, 0.05f, 2, 0.5f},
    {{1, 0, 0}, 0.5f, 0.85f, 0.75f, 0.5f},
};

// Layers are numbered 1, 2, 3, as people see them.

template <int number>
inline constexpr std::size_t kLayerOffset = offsetof(LumasBlock, layers) +
                                            sizeof(SpecularLayer) * std::size_t{number - 1};

// A word of an array with one for each layer.
#define LAYER_WORD(member, text)                                                               \
  .offset = std::uint32_t{offsetof(LumasBlock, member) + sizeof(std::int32_t) * (number - 1)}, \
  .name = Numbered<text, number>(), .kind = ValueKind::Int
#define LAYER_MEMBER(kind_, member, text)                                          \
  .offset = std::uint32_t{kLayerOffset<number> + offsetof(SpecularLayer, member)}, \
  .name = Numbered<"layer#" text, number>(), .kind = ValueKind::kind_
#define LAYER_LABEL(text) .label = Numbered<"Layer # " text, number>()

/// All fields of one layer.
template <int number>
constexpr auto LayerFields() {
  constexpr LayerDefaults kInitial = kLayerDefaults[number - 1];
  constexpr Vector kColour = kInitial.colour;
  constexpr std::int32_t kKey = 1005 + 16 * (number - 1);
  return std::to_array<Field>({
      {LAYER_WORD(layerOn, "layer#On"), .initial = Initially(1), .compared = true,
       .key = 1000 + number, .describeAs = DescribeInteger, .label = Numbered<"Layer #", number>(),
       .help = "Whether the highlight is wanted.", .limits = kSwitch, .choices = kSwitchChoices},
      {LAYER_MEMBER(Int, useAnisotropy, "UseAnisotropy"), .initial = Initially(1), .compared = true,
       .key = kKey, .describeAs = DescribeInteger, LAYER_LABEL("Anisotropy"),
       .help = "Whether the layer is brushed, where anisotropy is on.", .limits = kSwitch,
       .choices = kSwitchChoices},
      {LAYER_MEMBER(Vector, colour, "Colour"),
       .initial = Initially(kColour.x, kColour.y, kColour.z), .compared = true, .key = kKey + 1,
       LAYER_LABEL("Color"), .help = "The colour of the highlight.", .unit = Unit::Colour},
      {LAYER_MEMBER(Float, colourStrength, "ColourStrength"), .initial = Initially(1.0f),
       .compared = true, .key = kKey + 2, LAYER_LABEL("Color Strength"),
       .help = "Multiplies the colour.", .limits = kStrength, .unit = Unit::Percent},
      {LAYER_MEMBER(Vector, tint, "Tint"), .compared = true},
      {LAYER_MEMBER(Float, intensity, "Intensity"), .initial = Initially(kInitial.intensity),
       .compared = true, .key = kKey + 4, LAYER_LABEL("Intensity"),
       .help = "The level in the middle of the surface.", .limits = kLevel, .unit = Unit::Percent},
      {LAYER_MEMBER(Float, size, "Size"), .initial = Initially(kInitial.size), .compared = true,
       .key = kKey + 5, LAYER_LABEL("Size"), .help = "How wide the highlight is.",
       .limits = {0, 2, 0.01}, .unit = Unit::Percent},
      {LAYER_MEMBER(Float, contrast, "Contrast"), .initial = Initially(0.0f), .compared = true,
       .key = kKey + 6, LAYER_LABEL("Contrast"),
       .help = "Steepens the border of the highlight; 1 gives a hard spot.", .limits = {0, 1, 0.01},
       .unit = Unit::Percent},
      {LAYER_MEMBER(Float, spareReal, "Spare"), .initial = Initially(0.0f), .compared = true,
       .key = kKey + 7, LAYER_LABEL("Spare"), .help = "Kept with the material, without effect."},
      {LAYER_MEMBER(Vector, rimColour, "RimColour"),
       .initial = Initially(kColour.x, kColour.y, kColour.z), .compared = true},
      {LAYER_MEMBER(Float, rimColourStrength, "RimColourStrength"), .initial = Initially(1.0f),
       .compared = true},
      {LAYER_MEMBER(Float, edgeIntensity, "EdgeIntensity"),
       .initial = Initially(kInitial.edgeIntensity), .compared = true, .key = kKey + 8,
       LAYER_LABEL("Edge Intensity"),
       .help = "The level at the outline, where the surface is seen at a grazing angle.",
       .limits = kLevel, .unit = Unit::Percent},
      {LAYER_MEMBER(Float, edgeWidth, "EdgeWidth"), .initial = Initially(kInitial.edgeWidth),
       .compared = true, .key = kKey + 9, LAYER_LABEL("Edge Width"),
       .help = "How far the level of the outline reaches in.", .limits = kLevel,
       .unit = Unit::Percent},
      {LAYER_MEMBER(Int, active, "Active"), .compared = true},
      {LAYER_MEMBER(Float, exponent, "Exponent"), .compared = true},
      {LAYER_MEMBER(Float, contrastLow, "ContrastLow"), .compared = true},
      {LAYER_MEMBER(Float, contrastHigh, "ContrastHigh"), .compared = true},
      {LAYER_MEMBER(Int, useEdge, "UseEdge"), .compared = true},
      {LAYER_MEMBER(Float, roughness, "Roughness"), .compared = true},
  });
}

/// Whether one layer takes the scratches.
template <int number>
constexpr auto LayerScratchField() {
  return std::to_array<Field>({
      {LAYER_WORD(scratchOnLayer, "scratchOnLayer#"), .initial = Initially(1), .compared = true,
       .key = 1073 + number, .describeAs = DescribeInteger, LAYER_LABEL("Scratches"),
       .help = "Whether the highlight shows the scratches.", .limits = kSwitch,
       .choices = kSwitchChoices},
  });
}

/// One layer as files of this form hold it.
template <int number>
constexpr auto StoredLayer(std::int32_t marker) {
#define LAYER_ITEM(kind, member) \
  StoredSince(marker, ValueKind::kind, kLayerOffset<number> + offsetof(SpecularLayer, member))
  return std::to_array<StoredItem>({
      LAYER_ITEM(Int, useAnisotropy),
      LAYER_ITEM(Vector, colour),
      LAYER_ITEM(Float, colourStrength),
      LAYER_ITEM(Vector, tint),
      LAYER_ITEM(Float, intensity),
      LAYER_ITEM(Float, size),
      LAYER_ITEM(Float, contrast),
      LAYER_ITEM(Float, spareReal),
      LAYER_ITEM(Vector, rimColour),
      LAYER_ITEM(Float, rimColourStrength),
      LAYER_ITEM(Float, edgeIntensity),
      LAYER_ITEM(Float, edgeWidth),
      LAYER_ITEM(Int, active),
      LAYER_ITEM(Float, exponent),
      LAYER_ITEM(Float, roughness),
      LAYER_ITEM(Float, contrastLow),
      LAYER_ITEM(Float, contrastHigh),
      LAYER_ITEM(Int, useEdge),
  });
#undef LAYER_ITEM
}

#undef LAYER_LABEL
#undef LAYER_MEMBER
#undef LAYER_WORD

}  // namespace sorvanix
