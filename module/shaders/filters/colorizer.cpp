// Colorizer: its table, and the number that a colour stands for on the ramp.
#include "module/shaders/filters/colorizer.h"

#include "module/kit/colour.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/filters/colorizer_dialog.h"
#include "module/shaders/filters/filter_fields.h"
#include "module/shaders/filters/input_stage.h"
#include "module/shell/ramp_form.h"

namespace sorvanix {

namespace {

using Block = ColorizerBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 309 * 4);

constexpr Ramp kInitialRamp =
    DefaultRamp({{0, 0, 0}, 0, 0.5f}, {{1, 0, 0}, 0.5f, 0.5f}, {{1, 1, 0}, 1, 0.5f});

constexpr Choice kSources[] = {
    {ColorizerMean, "mean", "Mean"},
    {ColorizerHue, "hue", "Hue"},
    {ColorizerSaturation, "saturation", "Saturation"},
    {ColorizerLightness, "lightness", "Lightness"},
    {ColorizerRed, "red", "Red"},
    {ColorizerGreen, "green", "Green"},
    {ColorizerBlue, "blue", "Blue"},
};

constexpr auto kInputField = std::to_array<Field>({
    SORVANIX_INPUT(Block, input, 1003, "Input", "The colour that is read."),
});
constexpr auto kSourceField = std::to_array<Field>({
    {SORVANIX_MEMBER(Block, Int, source), .initial = Initially(0), .compared = true, .copied = true,
     .key = 1001, .describeAs = DescribeInteger, .label = "Source",
     .help = "What of the input's colour chooses the place on the ramp.", .limits = {0, 6, 1},
     .choices = kSources},
});
constexpr auto kFields =
    Join(kInputField, RampFields<Block>({.interpolationKey = 1000, .countKey = 1002}), kSourceField,
         FilterStateFields<Block>());

constexpr auto kStoredFirst = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, RampCount, ramp)),
    Stored(SORVANIX_RAMP_PLACE(Block, Int, selected)),
    Stored(SORVANIX_RAMP_PLACE(Block, Int, interpolation)),
    Stored(SORVANIX_PLACE(Block, Int, source)),
});
constexpr auto kStoredLast = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, RampKnots, ramp)),
    Stored(SORVANIX_PLACE(Block, RampOrder, ramp)),
    Stored(SORVANIX_PLACE(Block, Link, input)),
});
constexpr auto kStored =
    Join(kStoredFirst, StoredPreview<Block>(), kStoredLast, StoredNesting<Block>(20000729));

constexpr double kTurnsPerDegree = 0.002777777777777778;  // 1/360

double SourceValue(std::int32_t source, const Vector& colour) noexcept {
  switch (source) {
    case ColorizerHue:  // Below 0 for grey, whose hue is kNoHue.
      return RgbToHls(colour).h * kTurnsPerDegree;
    case ColorizerSaturation:
      return RgbToHls(colour).s;
    case ColorizerLightness:
      return RgbToHls(colour).l;
    case ColorizerRed:
      return colour.x;
    case ColorizerGreen:
      return colour.y;
    case ColorizerBlue:
      return colour.z;
    default:
      return Mean(colour);
  }
}

Vector FilterColour(const Block& block, Vector colour) noexcept {
  const Vector clamped = ByComponent([](double x) { return Clamp01(x); }, colour);
  const auto t = static_cast<float>(SourceValue(block.source, clamped));
  return SampleRamp(t, block.ramp.knots, block.ramp.count, block.ramp.interpolation);
}

}  // namespace

constexpr ShaderTable kColorizerTable = {
    .pluginId = PluginIdColorizer,
    .name = "Colorizer",
    .category = ShaderCategory::Filter,
    .summary = "Shows a colour ramp at the brightness, hue or another number of an input.",
    .infoWord = kFilterInfoWord,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .ramp = {.offset = offsetof(Block, ramp),
             .initial = &kInitialRamp,
             .colourKey = 1100,
             .positionKey = 1200,
             .biasKey = 1300,
             .label = "Ramp",
             .help = "The colours, from the lowest to the highest number."},
    .copyRule = CopyRule::ListedFields,
    .marker = 20000729,
    .oldestMarker = 20000728,
    .stored = kStored,
    .slotStride = SlotStrideFilter,
    .slotFailureText = kFilterSlotFailureText,
};

void FillColorizerRecord(ShaderRecord* record) noexcept {
  FillFilterRecord<OneInputFilter<Block, InputSlot<1>, kColorizerTable, FilterColour>>(record);
  record->Edit = EditColorizer;
}

}  // namespace sorvanix
