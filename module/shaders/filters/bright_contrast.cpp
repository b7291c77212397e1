// Bright/Contrast: its table, and levels, brightness and contrast of a colour.
#include "module/shaders/filters/bright_contrast.h"

#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/filters/bright_contrast_dialog.h"
#include "module/shaders/filters/filter_fields.h"
#include "module/shaders/filters/input_stage.h"

namespace sorvanix {

namespace {

using Block = BrightContrastBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 10 * 4);

constexpr auto kOwnFields = std::to_array<Field>({
    SORVANIX_INPUT(Block, input, 1004, "Input", "The colour that is filtered."),
    {SORVANIX_MEMBER(Block, Float, brightness), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1000, .label = "Brightness",
     .help = "Added to each channel after the levels.", .limits = {-1, 1, 0.01},
     .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, contrast), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1001, .label = "Contrast",
     .help = "Below 0 flattens towards the middle, above 0 steepens around it.",
     .limits = {-1, 1, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, levelLow), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1002, .label = "Low Level",
     .help = "The black point: values up to here become 0.", .limits = {0, 1, 0.01},
     .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, levelHigh), .initial = Initially(1.0f), .compared = true,
     .copied = true, .key = 1003, .label = "High Level",
     .help = "The white point: values from here on become 1.", .limits = {0, 1, 0.01},
     .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Int, reserved9), .copied = true},
});
constexpr auto kFields = Join(kOwnFields, FilterStateFields<Block>({.channelCopied = true}));

constexpr auto kStoredFirst = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, Float, brightness)),
    Stored(SORVANIX_PLACE(Block, Float, contrast)),
    Stored(SORVANIX_PLACE(Block, Float, levelLow)),
    Stored(SORVANIX_PLACE(Block, Float, levelHigh)),
    Stored(SORVANIX_PLACE(Block, Link, input)),
});
constexpr auto kStoredLast = std::to_array<StoredItem>({
    StoredLiteral(20000730, ValueKind::Int, 5, 3),
    StoredSince(20000731, SORVANIX_PLACE(Block, Int, previewChannel)),
});
constexpr auto kStored =
    Join(kStoredFirst, StoredPreview<Block>(), StoredNesting<Block>(20000729), kStoredLast);

struct BrightContrastSlot : InputSlot<1> {
  std::int32_t unused;  // always 0
};
static_assert(sizeof(BrightContrastSlot) == SlotStrideBrightContrast);

// The order is fixed: what the brightness clips stays clipped in the contrast.
double FilterChannel(const Block& block, double x) noexcept {
  x = LinearStep(block.levelLow, block.levelHigh, Clamp01(x));
  x = Clamp01(x + block.brightness);
  const double contrast = block.contrast;
  if (contrast >= 0) return LinearStep(contrast * 0.5, 1 - contrast * 0.5, x);
  return x - (0.5 - x) * contrast;  // Below -1 it crosses over unclamped: deliberate.
}

Vector FilterColour(const Block& block, Vector colour) noexcept {
  return ByComponent([&block](float x) { return FilterChannel(block, x); }, colour);
}

}  // namespace

constexpr ShaderTable kBrightContrastTable = {
    .pluginId = PluginIdBrightContrast,
    .name = "Bright/Contrast",
    .category = ShaderCategory::Filter,
    .summary = "Levels, brightness and contrast of an input.",
    .infoWord = kFilterInfoWord,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .copyRule = CopyRule::ListedFields,
    .marker = 20000731,
    .oldestMarker = 20000728,
    .stored = kStored,
    .slotStride = SlotStrideBrightContrast,
    .slotFailureText = kFilterSlotFailureText,
};

void FillBrightContrastRecord(ShaderRecord* record) noexcept {
  using Filter = OneInputFilter<Block, BrightContrastSlot, kBrightContrastTable, FilterColour>;
  FillFilterRecord<Filter>(record);
  record->Edit = EditBrightContrast;
}

}  // namespace sorvanix
