// Falloff: its table, and the angle that reads its ramp.
#include "module/shaders/surface/falloff.h"

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/falloff_dialog.h"
#include "module/shell/ramp_form.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

using Block = FalloffBlock;
static_assert(offsetof(Block, nested) == 312 * 4);
#define MEMBER(kind, member) SORVANIX_MEMBER(FalloffBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(FalloffBlock, kind, member)

constexpr Ramp kInitialRamp =
    DefaultRamp({{0, 0, 0}, 0, 0.5f}, {{1, 0, 0}, 0.5f, 0.5f}, {{1, 1, 0}, 1, 0.5f});

constexpr Choice kSpaces[] = {
    {FalloffWorld, "world", "World"},
    {FalloffTexture, "texture", "Texture"},
    {FalloffCamera, "camera", "Camera"},
};

constexpr Limits kDirectionLimits = {-1e6, 1e6, 1};

constexpr auto kOwnFields = std::to_array<Field>({
    {MEMBER(Int, space), .initial = Initially(FalloffTexture), .compared = true, .copied = true,
     .key = 1002, .describeAs = DescribeInteger, .label = "Space",
     .help = "What the direction turns with: nothing, the texture, or the camera.",
     .limits = {.step = 1}, .choices = kSpaces},
    {SORVANIX_COMPONENT(Block, direction, x, "directionX"), .initial = Initially(0.0f),
     .compared = true, .copied = true, .key = 1003, .label = "Direction X",
     .help = "The direction that shows the ramp's end, along x.", .limits = kDirectionLimits},
    {SORVANIX_COMPONENT(Block, direction, y, "directionY"), .initial = Initially(1.0f),
     .compared = true, .copied = true, .key = 1004, .label = "Direction Y",
     .help = "The same along y.", .limits = kDirectionLimits},
    {SORVANIX_COMPONENT(Block, direction, z, "directionZ"), .initial = Initially(0.0f),
     .compared = true, .copied = true, .key = 1005, .label = "Direction Z",
     .help = "The same along z.", .limits = kDirectionLimits},
    {MEMBER(Bool, useBumpNormal), .initial = Initially(1), .compared = true, .copied = true,
     .key = 1006, .describeAs = DescribeInteger, .label = "Use Bump",
     .help = "Whether bumps bend the surface, or its plain normal counts."},
    {MEMBER(Bool, previewBusy), .initial = Initially(0), .compared = true, .copied = true},
    {MEMBER(Bool, previewAuto), .initial = Initially(1), .compared = true, .copied = true},
    {MEMBER(Bool, changed), .initial = Initially(1), .compared = true, .copied = true},
    {MEMBER(Int, previewObject), .initial = Initially(1), .compared = true, .copied = true},
    {MEMBER(Int, nested), .initial = Initially(0)},
    {MEMBER(Int, previewChannel), .initial = Initially(-1)},
});
constexpr auto kFields =
    Join(RampFields<Block>({.interpolationKey = 1000, .countKey = 1001}), kOwnFields);

constexpr StoredItem kStored[] = {
    Stored(PLACE(RampCount, ramp)),
    Stored(SORVANIX_RAMP_PLACE(Block, Int, selected)),
    Stored(SORVANIX_RAMP_PLACE(Block, Int, interpolation)),
    Stored(PLACE(Int, space)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, direction, x)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, direction, y)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, direction, z)),
    Stored(PLACE(Bool, useBumpNormal)),
    Stored(PLACE(Int, previewObject)),
    Stored(PLACE(Bool, previewAuto)),
    Stored(PLACE(Bool, previewBusy)),
    Stored(PLACE(Bool, changed)),
    Stored(PLACE(RampKnots, ramp)),
    Stored(PLACE(RampOrder, ramp)),
};

#undef PLACE
#undef MEMBER

}  // namespace

constexpr ShaderTable kFalloffTable = {
    .pluginId = PluginIdFalloff,
    .name = "Falloff",
    .category = ShaderCategory::Surface,
    .summary = "A colour ramp over the angle between a surface and a fixed direction.",
    .infoWord = 0x0000000C,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .ramp = {.offset = offsetof(Block, ramp),
             .initial = &kInitialRamp,
             .colourKey = 1100,
             .positionKey = 1200,
             .biasKey = 1300,
             .label = "Ramp",
             .help = "The colours, from against the direction over across it to along it."},
    .copyRule = CopyRule::ListedFields,
    .marker = 20000728,
    .onlyOwnMarker = true,
    .stored = kStored,
    .slotStride = SlotStrideHeadOnly,
    .slotFailureText = "Couldn't Allocate Falloff Globals",
};

namespace {

// The normal in the frame that the space names; as it is where the render has no such frame.
Vector InSpace(std::int32_t space, const RenderContext& render, const Vector& normal) noexcept {
  if (space == FalloffTexture && render.textureTag != nullptr) {
    return Normalized(Rotate(normal, render.textureTag->matrix2));
  }
  if (space == FalloffCamera) {
    if (const Matrix* camera = hostCameraMatrix(&render)) {
      return Normalized(Rotate(normal, Invert(*camera)));
    }
  }
  return normal;
}

// From 0 against the direction to 1 along it; a half for a direction without length.
double Place(const Block& block, const RenderContext& render) noexcept {
  const Vector& normal = block.useBumpNormal != 0 ? render.bumpNormal : render.baseNormal;
  const float cosine = Dot(Normalized(block.direction), InSpace(block.space, render, normal));
  return (double{cosine} + 1) * 0.5;
}

// The slots are for an enclosing filter to write into; nothing in them is of use here.
void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return;
  const double t =
      sample->render == nullptr ? 1 - double{sample->uvw.y} : Place(*block, *sample->render);
  *result = SampleRamp(static_cast<float>(t), block->ramp.knots, block->ramp.count,
                       block->ramp.interpolation);
}

}  // namespace

void FillFalloffRecord(ShaderRecord* record) noexcept {
  using Callbacks = TableCallbacks<kFalloffTable>;
  Callbacks::Fill(record);
  record->Edit = EditFalloff;
  record->InitRender = Callbacks::InitSlots;
  record->Output = Output;
}

}  // namespace sorvanix
