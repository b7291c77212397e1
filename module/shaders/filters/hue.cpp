// Hue: its table, and the shift or replacement of hue, saturation and lightness.
#include "module/shaders/filters/hue.h"

#include "module/kit/colour.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/filters/filter_fields.h"
#include "module/shaders/filters/hue_dialog.h"
#include "module/shaders/filters/input_stage.h"

namespace sorvanix {

namespace {

using Block = HueBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 12 * 4);

constexpr auto kOwnFields = std::to_array<Field>({
    SORVANIX_INPUT(Block, input, 1007, "Input", "The colour that is filtered."),
    {SORVANIX_MEMBER(Block, Float, hueShift), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1000, .label = "Hue", .help = "Turns the hue: red to green to blue.",
     .limits = {-180, 180, 1}, .unit = Unit::Degrees},
    {SORVANIX_MEMBER(Block, Float, saturationShift), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1001, .label = "Saturation",
     .help = "Added to the saturation: -1 makes everything grey.", .limits = {-1, 1, 0.01},
     .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, lightnessShift), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1002, .label = "Lightness",
     .help = "Blends towards white above 0 and towards black below.", .limits = {-1, 1, 0.01},
     .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Bool, colorize), .initial = Initially(0), .compared = true,
     .copied = true, .key = 1003, .describeAs = DescribeInteger, .label = "Colorize",
     .help = "Paints the input's brightness in one hue instead of shifting its colours."},
    {SORVANIX_MEMBER(Block, Float, colorHue), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1004, .label = "Color Hue", .help = "The hue to paint in.",
     .limits = {0, 360, 1}, .unit = Unit::Degrees},
    {SORVANIX_MEMBER(Block, Float, colorSaturation), .initial = Initially(0.25f), .compared = true,
     .copied = true, .key = 1005, .label = "Color Saturation",
     .help = "The saturation to paint in.", .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, colorLightness), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1006, .label = "Color Lightness",
     .help = "Blends the painted colour towards white above 0 and towards black below.",
     .limits = {-1, 1, 0.01}, .unit = Unit::Percent},
});
constexpr auto kFields = Join(kOwnFields, FilterStateFields<Block>());

constexpr std::int32_t kMarker = 20000828;
constexpr auto kStoredOwn = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, Float, hueShift)),
    Stored(SORVANIX_PLACE(Block, Float, saturationShift)),
    Stored(SORVANIX_PLACE(Block, Float, lightnessShift)),
    Stored(SORVANIX_PLACE(Block, Bool, colorize)),
    Stored(SORVANIX_PLACE(Block, Float, colorHue)),
    Stored(SORVANIX_PLACE(Block, Float, colorSaturation)),
    Stored(SORVANIX_PLACE(Block, Float, colorLightness)),
    Stored(SORVANIX_PLACE(Block, Link, input)),
});
constexpr auto kStored = Join(kStoredOwn, StoredPreview<Block>(), StoredNesting<Block>(kMarker));

constexpr double kTurnsPerDegree = 0.0027777778450399637;  // 1/360 as a float

// Towards white above 0, towards black below.
Vector Lighten(const Vector& colour, double lightness) noexcept {
  if (lightness >= 0) {
    return ByComponent([=](double c) { return c + (1 - c) * lightness; }, colour);
  }
  return ByComponent([=](double c) { return c + -c * -lightness; }, colour);
}

Vector FilterColour(const Block& block, Vector colour) noexcept {
  const Vector hsv = RgbToHsvVector(ByComponent([](double x) { return Clamp01(x); }, colour));
  if (block.colorize != 0) {
    const auto hue = static_cast<float>(block.colorHue * kTurnsPerDegree);
    return Lighten(HsvVectorToRgb({hue, block.colorSaturation, hsv.z}), block.colorLightness);
  }
  const double hue = Fraction(hsv.x + block.hueShift * kTurnsPerDegree);
  const double saturation = Clamp01(double{hsv.y} + block.saturationShift);
  const Vector turned = {static_cast<float>(hue), static_cast<float>(saturation), hsv.z};
  return Lighten(HsvVectorToRgb(turned), block.lightnessShift);
}

}  // namespace

constexpr ShaderTable kHueTable = {
    .pluginId = PluginIdHue,
    .name = "Hue",
    .category = ShaderCategory::Filter,
    .summary = "Turns the hue of an input and shifts saturation and lightness, or recolours it.",
    .infoWord = kFilterInfoWord,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .copyRule = CopyRule::ListedFields,
    .marker = kMarker,
    .oldestMarker = kMarker,
    .stored = kStored,
    .slotStride = SlotStrideFilter,
    .slotFailureText = kFilterSlotFailureText,
};

void FillHueRecord(ShaderRecord* record) noexcept {
  FillFilterRecord<OneInputFilter<Block, InputSlot<1>, kHueTable, FilterColour>>(record);
  record->Edit = EditHue;
}

}  // namespace sorvanix
