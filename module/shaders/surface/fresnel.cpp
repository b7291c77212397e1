// Fresnel: its table, the saved form of its first version, and the cosine that reads its ramp.
//
// Named after what it is used for. No refraction takes part: the ramp is the whole curve.
#include "module/shaders/surface/fresnel.h"

#include <cmath>

#include "module/kit/ramp_edit.h"
#include "module/shaders/surface/along_ray.h"
#include "module/shaders/surface/fresnel_dialog.h"
#include "module/shell/host_stream.h"
#include "module/shell/ramp_form.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

using Block = FresnelBlock;
static_assert(offsetof(Block, previewChannel) == 310 * 4);
#define MEMBER(kind, member) SORVANIX_MEMBER(FresnelBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(FresnelBlock, kind, member)

constexpr Ramp kInitialRamp =
    DefaultRamp({{1, 1, 1}, 0, 0.5f}, {{0.5f, 0.5f, 0.5f}, 0.5f, 0.5f}, {{0, 0, 0}, 1, 0.5f});

constexpr Choice kSideModes[] = {
    {FresnelFrontOnBlack, "frontOnBlack", "Front, Black Behind"},
    {FresnelFrontOnWhite, "frontOnWhite", "Front, White Behind"},
    {FresnelWhite, "white", "White"},
    {FresnelBackOnBlack, "backOnBlack", "Back, Black in Front"},
    {FresnelBackOnWhite, "backOnWhite", "Back, White in Front"},
    {FresnelBothSides, "bothSides", "Both Sides"},
};

constexpr auto kOwnFields = std::to_array<Field>({
    {MEMBER(Int, useBumpNormal), .initial = Initially(1), .compared = true, .copied = true,
     .key = 1001, .describeAs = DescribeInteger, .label = "Use Bump",
     .help = "Whether bumps bend the surface, or its plain normal counts.", .limits = {0, 1, 1},
     .choices = kSwitchChoices},
    {MEMBER(Int, sideMode), .initial = Initially(FresnelBothSides), .compared = true,
     .copied = true, .key = 1002, .describeAs = DescribeInteger, .label = "Sides",
     .help = "Which sides of the surface show the ramp, and what the others show.",
     .limits = {.step = 1}, .choices = kSideModes},
    {MEMBER(Int, previewBusy), .initial = Initially(0), .copied = true},
    {MEMBER(Int, previewAuto), .initial = Initially(1), .copied = true, .choices = kSwitchChoices},
    {MEMBER(Int, changed), .initial = Initially(1), .copied = true},
    {MEMBER(Int, previewObject), .initial = Initially(1), .copied = true},
    {MEMBER(Int, nested), .initial = Initially(0)},
    {MEMBER(Int, previewChannel), .initial = Initially(-1)},
});
constexpr auto kFields =
    Join(RampFields<Block>({.interpolationKey = 1000, .countKey = 1003, .selectedCompared = false}),
         kOwnFields);

constexpr StoredItem kStored[] = {
    Stored(PLACE(Int, previewObject)),
    Stored(PLACE(Int, previewAuto)),
    Stored(SORVANIX_RAMP_PLACE(Block, Int, interpolation)),
    Stored(PLACE(Int, useBumpNormal)),
    Stored(PLACE(Int, sideMode)),
    Stored(PLACE(RampCount, ramp)),
    Stored(SORVANIX_RAMP_PLACE(Block, Int, selected)),
    Stored(PLACE(RampKnots, ramp)),
    Stored(PLACE(RampOrder, ramp)),
};

#undef PLACE
#undef MEMBER

}  // namespace

constexpr ShaderTable kFresnelTable = {
    .pluginId = PluginIdFresnel,
    .name = "Fresnel",
    .category = ShaderCategory::Surface,
    .summary = "A colour ramp from the outline of a surface to where it faces the eye.",
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .ramp = {.offset = offsetof(Block, ramp),
             .initial = &kInitialRamp,
             .colourKey = 1008,
             .positionKey = 1009,
             .biasKey = 1010,
             .keyStride = 3,
             .label = "Ramp",
             .help = "The colours, from the outline to where the surface faces the eye."},
    .copyRule = CopyRule::ListedFields,
    .marker = 72500220,
    .stored = kStored,
};

namespace {

// Files of the first version have no marker: they begin with their number of knots.
constexpr std::int32_t kFirstMarker = 1000;

// One knot of the first version, which had no bias; false where the stream does not hold it.
bool ReadOlderKnot(RampKnot& knot, HostStream* reader) noexcept {
  knot.bias = 0.5f;
  return hostReadVector(reader, &knot.colour) != 0 && hostReadFloat(reader, &knot.position) != 0;
}

// The first version, whose ramp ran from where the surface faces the eye to its outline.
void ReadOlderForm(Block& block, std::int32_t count, HostStream* reader) noexcept {
  block.previewObject = 0;
  block.previewAuto = 1;
  block.useBumpNormal = 1;
  block.sideMode = FresnelBothSides;
  Ramp& ramp = block.ramp;
  ramp.interpolation = RampBezier;
  ramp.count = LiveKnots(count);
  hostReadInt(reader, &ramp.selected);
  RampKnot surplus;
  for (std::int32_t i = 0; i < count; ++i) {
    if (!ReadOlderKnot(i < RampMaxKnots ? ramp.knots[i] : surplus, reader)) break;
  }
  for (std::int32_t i = 0; i < ramp.count; ++i) ramp.order[i] = i;
  ReverseKnots(ramp);
}

std::int32_t Read(ShaderInstance* instance, HostStream* reader) noexcept {
  auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return 0;
  std::int32_t first = 0;
  if (hostReadInt(reader, &first) == 0) return 1;  // nothing to take
  if (first < kFirstMarker) {
    ReadOlderForm(*block, first, reader);
  } else {
    ReadItems(kFresnelTable, block, first, reader);
  }
  return 1;
}

// A Fresnel needs nothing for a render, and says so itself.
std::int32_t InitRender(ShaderInstance*, const RenderInit*) noexcept { return 0; }
void FreeRender(ShaderInstance*) noexcept {}

constexpr Vector kBlack = {0, 0, 0};
constexpr Vector kWhite = {1, 1, 1};

// What a side shows: the ramp where there is no plain colour.
const Vector* PlainColour(std::int32_t sideMode, bool fromBehind) noexcept {
  switch (sideMode) {
    case FresnelFrontOnBlack:
      return fromBehind ? &kBlack : nullptr;
    case FresnelFrontOnWhite:
      return fromBehind ? &kWhite : nullptr;
    case FresnelBackOnBlack:
      return fromBehind ? nullptr : &kBlack;
    case FresnelBackOnWhite:
      return fromBehind ? nullptr : &kWhite;
    case FresnelBothSides:
      return nullptr;
    default:
      return &kWhite;
  }
}

Vector RampAt(const Block& block, double t) noexcept {
  return SampleRamp(static_cast<float>(t), block.ramp.knots, block.ramp.count,
                    block.ramp.interpolation);
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = kBlack;
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return;
  const RenderContext* render = sample->render;
  if (render == nullptr || render->ray == nullptr) {
    *result = RampAt(*block, 1 - double{sample->uvw.y});
    return;
  }
  const bool fromBehind = AlongRay(*render->ray, render->faceNormal) > 0;
  if (const Vector* plain = PlainColour(block->sideMode, fromBehind)) {
    *result = *plain;
    return;
  }
  const Vector& normal = block->useBumpNormal != 0 ? render->bumpNormal : sample->normal;
  *result = RampAt(*block, std::fabs(AlongRay(*render->ray, normal)));
}

}  // namespace

void FillFresnelRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kFresnelTable>::Fill(record);
  record->Edit = EditFresnel;
  record->GetInfo = nullptr;
  record->Read = Read;
  record->InitRender = InitRender;
  record->FreeRender = FreeRender;
  record->Output = Output;
}

}  // namespace sorvanix
