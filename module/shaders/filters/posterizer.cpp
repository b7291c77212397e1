// Posterizer: its table, and the soft steps of a colour.
#include "module/shaders/filters/posterizer.h"

#include <cmath>

#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/filters/filter_fields.h"
#include "module/shaders/filters/input_stage.h"
#include "module/shaders/filters/posterizer_dialog.h"

namespace sorvanix {

namespace {

using Block = PosterizerBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 7 * 4);

constexpr auto kOwnFields = std::to_array<Field>({
    SORVANIX_INPUT(Block, input, 1002, "Input", "The colour that is filtered."),
    // Messages give the levels as an integer, describe them as a real and take one.
    // Deliberate: importers rely on the truncation.
    {SORVANIX_MEMBER(Block, Int, levels), .initial = Initially(5), .compared = true, .copied = true,
     .key = 1000, .label = "Levels", .help = "How many steps each channel takes from 0 to 1.",
     .limits = {1, 255, 1}, .importedAsReal = true},
    {SORVANIX_MEMBER(Block, Float, softness), .initial = Initially(0.05f), .compared = true,
     .copied = true, .key = 1001, .label = "Softness",
     .help = "Half the width of the soft edge between two levels, in levels.",
     .limits = {0, 0.5, 0.005}},
});
constexpr auto kFields = Join(kOwnFields, FilterStateFields<Block>());

constexpr std::int32_t kMarker = 20000830;
constexpr auto kStoredOwn = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, Int, levels)),
    Stored(SORVANIX_PLACE(Block, Float, softness)),
    Stored(SORVANIX_PLACE(Block, Link, input)),
});
constexpr auto kStored = Join(kStoredOwn, StoredPreview<Block>(), StoredNesting<Block>(kMarker));

// x in levels: flat up to the middle of its level, then by a smooth step to the next.
double Cut(double x, double softness) noexcept {
  const double level = std::floor(x);
  return SmoothStep(level + 0.5 - softness, level + 0.5 + softness, x) + level;
}

Vector FilterColour(const Block& block, Vector colour) noexcept {
  if (block.levels == 0) return Vector{};
  const auto levels = static_cast<float>(block.levels);
  return ByComponent(
      [&block, levels](double x) {
        const float inLevels = static_cast<float>(Clamp01(x)) * levels;
        return Cut(inLevels, block.softness) / levels;
      },
      colour);
}

}  // namespace

constexpr ShaderTable kPosterizerTable = {
    .pluginId = PluginIdPosterizer,
    .name = "Posterizer",
    .category = ShaderCategory::Filter,
    .summary = "Cuts each channel of an input into levels with soft edges.",
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

void FillPosterizerRecord(ShaderRecord* record) noexcept {
  FillFilterRecord<OneInputFilter<Block, InputSlot<1>, kPosterizerTable, FilterColour>>(record);
  record->Edit = EditPosterizer;
}

}  // namespace sorvanix
