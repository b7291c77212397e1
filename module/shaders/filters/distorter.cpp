// Distorter: its table, and the paths that read one input where another moves it.
#include "module/shaders/filters/distorter.h"

#include "module/kit/vector.h"
#include "module/shaders/filters/distorter_dialog.h"
#include "module/shaders/filters/distorter_warp.h"
#include "module/shaders/filters/filter_fields.h"

namespace sorvanix {

namespace {

using Block = DistorterBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 13 * 4);

constexpr Choice kWarps[] = {
    {DistorterDirect, "direct", "Direct"},
    {DistorterCentred, "centred", "Centred"},
    {DistorterGradient, "gradient", "Gradient"},
};

// The widest sample step, in percent 9e18.
constexpr double kWidest = 9e16;

constexpr auto kOwnFields = std::to_array<Field>({
    SORVANIX_INPUT(Block, input, 1007, "Input", "The colour that is read at the moved place."),
    SORVANIX_INPUT(Block, distortInput, 1008, "Distorter",
                   "The colour that moves the place, most often a noise."),
    {SORVANIX_MEMBER(Block, Int, warpType), .initial = Initially(0), .compared = true,
     .copied = true, .key = 1000, .describeAs = DescribeInteger, .label = "Type",
     .help = "Whether black, mid-grey or an even colour leaves the place alone.",
     .limits = {0, 2, 1}, .choices = kWarps},
    {SORVANIX_MEMBER(Block, Float, strength), .initial = Initially(1.0f), .compared = true,
     .copied = true, .key = 1001, .label = "Strength",
     .help = "The overall size of the displacement.", .limits = {-1000, 1000, 0.01},
     .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, scaleX), .initial = Initially(0.1f), .compared = true,
     .copied = true, .key = 1002, .label = "Scale X", .help = "Its size along x and u.",
     .limits = {-1e5, 1e5, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, scaleY), .initial = Initially(0.1f), .compared = true,
     .copied = true, .key = 1003, .label = "Scale Y", .help = "Its size along y and v.",
     .limits = {-1e5, 1e5, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, scaleZ), .initial = Initially(0.1f), .compared = true,
     .copied = true, .key = 1004, .label = "Scale Z", .help = "Its size along z.",
     .limits = {-1e5, 1e5, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Float, gradientStep), .initial = Initially(1.0f), .compared = true,
     .copied = true, .key = 1005, .label = "Gradient Step",
     .help = "How far the type Gradient looks to either side for the slope.",
     .limits = {0, 1e5, 0.01}, .unit = Unit::Percent},
    {SORVANIX_MEMBER(Block, Bool, tile), .initial = Initially(1), .compared = true, .copied = true,
     .key = 1006, .describeAs = DescribeInteger, .label = "Tile",
     .help = "Repeats a bitmap outside its borders instead of holding their colour."},
    // The type word of this key is told as a real. Deliberate: other programs know it so.
    {SORVANIX_MEMBER(Block, Float, sampleStep), .initial = Initially(1.0f), .compared = true,
     .copied = true, .key = 1009, .label = "Sample Step",
     .help = "How far apart the samples of a bump lie.", .limits = {0, kWidest, 0.01},
     .unit = Unit::Percent, .describedAsReal = true},
});
// Unlike other filters, a new Distorter leaves its preview alone.
constexpr auto kFields = Join(kOwnFields, FilterStateFields<Block>({.previewAuto = 0}));

constexpr auto kStoredFirst = std::to_array<StoredItem>({
    Stored(SORVANIX_PLACE(Block, Int, warpType)),
    Stored(SORVANIX_PLACE(Block, Float, strength)),
    Stored(SORVANIX_PLACE(Block, Float, scaleX)),
    Stored(SORVANIX_PLACE(Block, Float, scaleY)),
    Stored(SORVANIX_PLACE(Block, Float, scaleZ)),
    Stored(SORVANIX_PLACE(Block, Float, gradientStep)),
    Stored(SORVANIX_PLACE(Block, Bool, tile)),
    Stored(SORVANIX_PLACE(Block, Link, input)),
    Stored(SORVANIX_PLACE(Block, Link, distortInput)),
});
constexpr auto kStoredLast = std::to_array<StoredItem>({
    StoredSince(20000729, SORVANIX_PLACE(Block, Int, nested)),
    StoredLiteral(20000729, ValueKind::Bool, 1),
    StoredLiteral(20000729, ValueKind::Int, 5, 2),
    StoredLiteral(20000730, ValueKind::Int, 5, 4),
    StoredSince(20000731, SORVANIX_PLACE(Block, Float, sampleStep)),
});
constexpr auto kStored = Join(kStoredFirst, StoredPreview<Block>(), kStoredLast);

}  // namespace

constexpr ShaderTable kDistorterTable = {
    .pluginId = PluginIdDistorter,
    .name = "Distorter",
    .category = ShaderCategory::Filter,
    .summary = "Reads one input at a place that the colours of another move.",
    .infoWord = kFilterInfoWord,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .copyRule = CopyRule::ListedFields,
    .marker = 20000731,
    .oldestMarker = 20000728,
    .stored = kStored,
    .slotStride = SlotStrideDistorter,
    .slotFailureText = kFilterSlotFailureText,
};

namespace {

struct Distorter {
  using Block = DistorterBlock;
  using Slot = DistorterSlot;
  static constexpr std::size_t kInputs = 2;
  static constexpr AskingOrder kAsking = AskingOrder::BeforeOwnSlots;
  static constexpr const ShaderTable& kTable = kDistorterTable;

  static Links<2> LinksOf(const Block& block) noexcept { return {block.input, block.distortInput}; }
  static Steps<2> StepsOf(const Block& block) noexcept {
    const auto image = static_cast<float>(block.sampleStep * 0.02);
    const auto drive = static_cast<float>(block.sampleStep * 0.01);
    return {BumpStep{image, image}, BumpStep{drive, drive}};
  }
  static void CompleteSlot(const Block& block, Slot& slot) noexcept {
    slot.tapStep = static_cast<float>(block.sampleStep * 0.4);
    slot.unused = 1;
  }
};
using Stage = InputStage<Distorter>;

// How the coordinate moves outside a render, for one unit of displacement.
constexpr double kPlainScale = 0.2;

double PlainMean(const Block& block, const ChannelSample& sample, float du, float dv) noexcept {
  const Vector uvw = Add(sample.uvw, {du, dv, 0});
  return Mean(ReadInput(block.distortInput, sample, uvw, sample.texFlags));
}

Vector PlainMove(const Block& block, const ChannelSample& sample) noexcept {
  const auto evenly = [](double move) {
    const auto each = static_cast<float>(move * kPlainScale);
    return Vector{each, each, each};
  };
  switch (block.warpType) {
    case DistorterDirect:
      return evenly(PlainMean(block, sample, 0, 0));
    case DistorterCentred:
      return evenly(PlainMean(block, sample, 0, 0) - 0.5);
    case DistorterGradient: {
      const auto e = static_cast<float>(block.gradientStep * 0.01);
      const double behindU = PlainMean(block, sample, -e, 0);
      const double aheadU = PlainMean(block, sample, e, 0);
      const double behindV = PlainMean(block, sample, 0, -e);
      const double aheadV = PlainMean(block, sample, 0, e);
      const double scale = block.strength * kPlainScale;
      return {static_cast<float>((aheadU - behindU) * scale),
              static_cast<float>((aheadV - behindV) * scale), 0};
    }
    default:
      return Vector{};
  }
}

// Without a render. Leaves the sample's coordinate moved: deliberate, and only previews see it.
Vector PlainRead(const Block& block, ChannelSample& sample) noexcept {
  AddInPlace(sample.uvw, PlainMove(block, sample));
  return ReadInput(block.input, sample, sample.uvw, sample.texFlags);
}

// Moves the drive's footprint to a neighbour on the surface, and asks the host where that lies in
// texture coordinates. Unlike elsewhere the third tap goes against v, and the fourth along it:
// deliberate.
void MoveToTap(std::int32_t tap, const DistorterReading& r) noexcept {
  const RenderContext& render = *r.sample.render;
  const float step = r.first.tapStep;
  const Vector moves[] = {Scale(step, render.tangentU), Scale(-step, render.tangentU),
                          Scale(-step, render.tangentV), Scale(step, render.tangentV)};
  if (tap < TapPlusU || tap > TapMinusV) return;
  FootprintBlock& drive = r.driveBlock;
  for (Vector& point : drive.footprint) AddInPlace(point, moves[tap - TapPlusU]);
  drive.uvwPoint = hostPointToUvw(&render, render.textureTag, render.lightParamA,
                                  drive.footprint[0], render.baseNormal, drive.uvwPoint);
}

// The colour at a tap. The blocks keep the tap of the footprint itself.
Vector ReadAtTap(const FootprintBlock& footprint, std::int32_t tap,
                 const DistorterReading& r) noexcept {
  PutFootprint(footprint, r.driveBlock);
  PutFootprint(footprint, r.imageBlock);
  MoveToTap(tap, r);
  return DistortAndRead(r);
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr || Stage::HasGap(Distorter::LinksOf(*block))) return;
  RenderContext* render = sample->render;
  if (render == nullptr || instance->slots == nullptr) {
    *result = PlainRead(*block, *sample);
    return;
  }
  DistorterSlot* slots = SlotAt<DistorterSlot>(instance->slots, 0);
  const auto& inputs = slots[0].inputs;
  if (inputs.innerStride[kImageInput] == InputRecords<2>::kBitmapMissing) return;

  const std::int32_t cpu = hostCpuIndex(render);
  const FootprintBlock footprint =
      BuildFootprint(*instance, *sample, block->nested, slots[0].head, slots[cpu].head).block;
  FootprintBlock localImage, localDrive;
  FootprintBlock* innerImage = inputs.InnerSlot(kImageInput, cpu);
  FootprintBlock* innerDrive = inputs.InnerSlot(kDriveInput, cpu);
  const DistorterReading reading = {*block, slots[0], *sample,
                                    innerDrive != nullptr ? *innerDrive : localDrive,
                                    innerImage != nullptr ? *innerImage : localImage};
  if (instance->channel != ChannelBump) {
    *result = ReadAtTap(footprint, footprint.tap, reading);
    return;
  }
  TapColours colours;
  for (std::int32_t tap = TapPlusU; tap <= TapMinusV; ++tap) {
    colours[static_cast<std::size_t>(tap - TapPlusU)] = ReadAtTap(footprint, tap, reading);
  }
  BendNormal(colours, *render);
}

}  // namespace

void FillDistorterRecord(ShaderRecord* record) noexcept {
  FillFilterRecord<Distorter>(record, Output);
  record->Edit = EditDistorter;
}

}  // namespace sorvanix
