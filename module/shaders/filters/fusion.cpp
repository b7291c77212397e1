// Fusion: its table, and the mix of three inputs, plain and in the bump channel.
#include "module/shaders/filters/fusion.h"

#include "module/kit/blend.h"
#include "module/kit/vector.h"
#include "module/shaders/filters/filter_fields.h"
#include "module/shaders/filters/fusion_dialog.h"
#include "module/shaders/filters/input_stage.h"

namespace sorvanix {

namespace {

using Block = FusionBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 12 * 4);

constexpr Choice kModes[] = {
    {BlendNormal, "normal", "Normal"},
    {BlendDarken, "darken", "Darken"},
    {BlendLighten, "lighten", "Lighten"},
    {BlendHue, "hue", "Hue"},
    {BlendSaturation, "saturation", "Saturation"},
    {BlendColor, "color", "Color"},
    {BlendLuminance, "luminance", "Luminance"},
    {BlendMultiply, "multiply", "Multiply"},
    {BlendScreen, "screen", "Screen"},
    {BlendOverlay, "overlay", "Overlay"},
    {BlendHardLight, "hardLight", "Hard Light"},
    {BlendSoftLight, "softLight", "Soft Light"},
    {BlendDifference, "difference", "Difference"},
    {BlendDodge, "dodge", "Dodge"},
    {BlendBurn, "burn", "Burn"},
    {BlendExclusion, "exclusion", "Exclusion"},
    {BlendAdd, "add", "Add"},
    {BlendSubtract, "subtract", "Subtract"},
    {BlendThreshold, "threshold", "Threshold"},
};
static_assert(std::size(kModes) == BlendThreshold + 1);

constexpr auto kOwnFields = std::to_array<Field>({
    SORVANIX_INPUT(Block, baseInput, 1005, "Base", "The colour underneath."),
    SORVANIX_INPUT(Block, blendInput, 1006, "Blend", "The colour laid over the base."),
    SORVANIX_INPUT(Block, maskInput, 1007, "Mask",
                   "Where it is dark the base stays; read only with Use Mask."),
    {SORVANIX_MEMBER(Block, Int, mode), .initial = Initially(0), .compared = true, .copied = true,
     .key = 1000, .describeAs = DescribeInteger, .label = "Mode",
     .help = "How the blend colour changes the base.", .limits = {0, 18, 1}, .choices = kModes},
    {SORVANIX_MEMBER(Block, Float, opacity), .initial = Initially(1.0f), .compared = true,
     .copied = true, .key = 1001, .label = "Opacity",
     .help = "How strongly the blend colour shows.", .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Bool, invertMask), .initial = Initially(0), .compared = true,
     .copied = true, .key = 1002, .describeAs = DescribeInteger, .label = "Invert Mask",
     .help = "Turns the mask's colour round."},
    {SORVANIX_MEMBER(Block, Bool, useMask), .initial = Initially(0), .compared = true,
     .copied = true, .key = 1003, .describeAs = DescribeInteger, .label = "Use Mask",
     .help = "Multiplies the opacity by the brightness of the mask."},
    {SORVANIX_MEMBER(Block, Bool, invertOutput), .initial = Initially(0), .compared = true,
     .copied = true, .key = 1004, .describeAs = DescribeInteger, .label = "Invert Result",
     .help = "Turns the mixed colour round."},
});
constexpr auto kFields = Join(kOwnFields, FilterStateFields<Block>());

constexpr auto kStoredFirst = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, Int, mode)),
    Stored(SORVANIX_PLACE(Block, Float, opacity)),
    Stored(SORVANIX_PLACE(Block, Bool, invertMask)),
    Stored(SORVANIX_PLACE(Block, Bool, useMask)),
    Stored(SORVANIX_PLACE(Block, Link, baseInput)),
    Stored(SORVANIX_PLACE(Block, Link, blendInput)),
    Stored(SORVANIX_PLACE(Block, Link, maskInput)),
});
// What follows invertOutput is written, but read only from files of a later marker than the one
// that is written. That gap is part of the format: a file of today leaves `nested` alone.
constexpr std::int32_t kMarker = 20000816;
constexpr std::int32_t kMarkerOfTheGap = 20000827;
constexpr auto kStoredLast = std::to_array<StoredItem>({
    StoredSince(kMarker, SORVANIX_PLACE(Block, Bool, invertOutput)),
    StoredLiteral(kMarkerOfTheGap, ValueKind::Int, 5, 6),
    StoredSince(kMarkerOfTheGap, SORVANIX_PLACE(Block, Int, nested)),
    StoredLiteral(kMarkerOfTheGap, ValueKind::Bool, 1),
});
constexpr auto kStored = Join(kStoredFirst, StoredPreview<Block>(), kStoredLast);

static_assert(sizeof(InputSlot<3>) == SlotStrideFusion);

}  // namespace

constexpr ShaderTable kFusionTable = {
    .pluginId = PluginIdFusion,
    .name = "Fusion",
    .category = ShaderCategory::Filter,
    .summary = "Lays one input over another by a blend mode, through a mask.",
    .infoWord = kFilterInfoWord,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .copyRule = CopyRule::ListedFields,
    .marker = kMarker,
    .oldestMarker = 20000728,
    .stored = kStored,
    .slotStride = SlotStrideFusion,
    .slotFailureText = kFilterSlotFailureText,
};

namespace {

Vector Inverted(const Vector& colour) noexcept {
  return ByComponent([](float c) { return 1 - c; }, colour);
}

}  // namespace

Vector MixFusion(const FusionBlock& block, const Vector& base, const Vector& blend,
                 const Vector& mask) noexcept {
  // Without a mask its colour counts as black, whatever `invertMask` says.
  const bool inverted = block.useMask != 0 && block.invertMask != 0;
  const Vector mixed = BlendColors(base, blend, inverted ? Inverted(mask) : mask, block.opacity,
                                   block.mode, block.useMask);
  return block.invertOutput != 0 ? Inverted(mixed) : mixed;
}

namespace {

struct Fusion {
  using Block = FusionBlock;
  using Slot = InputSlot<3>;
  static constexpr std::size_t kInputs = 3;
  static constexpr AskingOrder kAsking = AskingOrder::AfterOwnSlots;
  static constexpr const ShaderTable& kTable = kFusionTable;

  static Links<3> LinksOf(const Block& block) noexcept {
    return {block.baseInput, block.blendInput, block.maskInput};
  }
  static Steps<3> StepsOf(const Block&) noexcept { return {kPlainStep, kPlainStep, kPlainStep}; }
  static void CompleteSlot(const Block&, Slot&) noexcept {}

  // The mask comes last.
  static std::size_t Reads(const Block& block) noexcept { return block.useMask != 0 ? 3 : 2; }

  static Vector Combine(const Block& block, const std::array<Vector, 3>& colours) noexcept {
    return MixFusion(block, colours[0], colours[1], colours[2]);
  }
};

}  // namespace

void FillFusionRecord(ShaderRecord* record) noexcept {
  FillFilterRecord<Fusion>(record);
  record->Edit = EditFusion;
}

}  // namespace sorvanix
