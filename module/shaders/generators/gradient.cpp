// Gradient: its table, and its colour and bump paths.
#include "module/shaders/generators/gradient.h"

#include "module/kit/vector.h"
#include "module/shaders/generators/gradient_dialog.h"
#include "module/shaders/generators/gradient_point.h"
#include "module/shaders/generators/gradient_shape.h"
#include "module/shaders/tilt_normal.h"
#include "module/shell/ramp_form.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

using Block = GradientBlock;

#define MEMBER(kind, member) SORVANIX_MEMBER(Block, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(Block, kind, member)
#define RAMP_PLACE(kind, member) SORVANIX_RAMP_PLACE(Block, kind, member)

static_assert(sizeof(Block) == 320 * 4);
static_assert(offsetof(Block, nested) == 317 * 4);

constexpr Ramp kInitialRamp =
    DefaultRamp({{0, 0, 0}, 0, 0.5f}, {{1, 0, 0}, 0.5f, 0.5f}, {{1, 1, 0}, 1, 0.5f});

constexpr Choice kTypes[] = {
    {GradientU, "u", "U"},
    {GradientV, "v", "V"},
    {GradientDiagonal, "diagonal", "Diagonal"},
    {GradientAngle, "angle", "Angle"},
    {GradientCircle, "circle", "Circle"},
    {GradientBox, "box", "Box"},
    {GradientCorners, "corners", "Corners"},
    {GradientFourColours, "fourColours", "Four Colours"},
    {GradientLinear3D, "linear3D", "3D Linear"},
    {GradientCylinder3D, "cylinder3D", "3D Cylinder"},
    {GradientSphere3D, "sphere3D", "3D Sphere"},
};

constexpr Choice kSpaces[] = {
    {GradientTexture, "texture", "Texture"}, {GradientObject, "object", "Object"},
    {GradientWorld, "world", "World"},       {GradientCamera, "camera", "Camera"},
    {GradientScreen, "screen", "Screen"},    {GradientUnitScreen, "unitScreen", "Screen, 0 to 1"},
};

constexpr Limits kLength = {-1e6, 1e6, 1};

constexpr auto kOwnFields = std::to_array<Field>({
    {MEMBER(Int, type), .initial = Initially(GradientU), .compared = true, .copied = true,
     .key = 1002, .describeAs = DescribeInteger, .label = "Type",
     .help = "The shape along which the ramp runs, in the texture or in space.",
     .limits = {.step = 1}, .choices = kTypes},
    {MEMBER(Int, space), .initial = Initially(GradientObject), .compared = true, .copied = true,
     .key = 1003, .describeAs = DescribeInteger, .label = "Space",
     .help = "What the shapes in space stay fixed to.", .limits = {.step = 1}, .choices = kSpaces},
    {SORVANIX_COMPONENT(Block, start, x, "startX"), .initial = Initially(-100.0f), .compared = true,
     .copied = true, .key = 1004, .label = "Start X",
     .help = "Where the line or the cylinder's axis begins; the middle of the sphere.",
     .limits = kLength},
    {SORVANIX_COMPONENT(Block, start, y, "startY"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1005, .label = "Start Y", .help = "The same along y.",
     .limits = kLength},
    {SORVANIX_COMPONENT(Block, start, z, "startZ"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1006, .label = "Start Z", .help = "The same along z.",
     .limits = kLength},
    {SORVANIX_COMPONENT(Block, end, x, "endX"), .initial = Initially(100.0f), .compared = true,
     .copied = true, .key = 1007, .label = "End X",
     .help = "Where the line or the cylinder's axis ends.", .limits = kLength},
    {SORVANIX_COMPONENT(Block, end, y, "endY"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1008, .label = "End Y", .help = "The same along y.", .limits = kLength},
    {SORVANIX_COMPONENT(Block, end, z, "endZ"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1009, .label = "End Z", .help = "The same along z.", .limits = kLength},
    {MEMBER(Float, radius), .initial = Initially(100.0f), .compared = true, .copied = true,
     .key = 1010, .label = "Radius", .help = "Where the ramp of the cylinder or the sphere ends.",
     .limits = kLength},
    {MEMBER(Bool, cycle), .initial = Initially(0), .compared = true, .copied = true, .key = 1011,
     .describeAs = DescribeInteger, .label = "Cycle",
     .help = "Repeats the gradient beyond its end instead of holding the last colour."},
    {MEMBER(Bool, previewBusy), .initial = Initially(0), .compared = true, .copied = true},
    {MEMBER(Bool, previewAuto), .initial = Initially(1), .compared = true, .copied = true},
    {MEMBER(Bool, changed), .initial = Initially(1), .compared = true, .copied = true},
    {MEMBER(Int, previewObject), .initial = Initially(0), .compared = true, .copied = true},
    // Unlike in 2D Noise and Tiles, a nested gradient does not equal one that stands alone.
    {MEMBER(Int, nested), .initial = Initially(0), .compared = true},
    {MEMBER(Int, dialogChannel), .initial = Initially(0)},
    {MEMBER(Int, dialogChannelMark), .initial = Initially(-1)},
});
constexpr auto kFields =
    Join(RampFields<Block>({.interpolationKey = 1000, .countKey = 1001}), kOwnFields);

constexpr std::int32_t kMarker = 20000729;
constexpr std::int32_t kOldestMarker = 20000728;
constexpr StoredItem kStored[] = {
    StoredLiteral(kOldestMarker, ValueKind::Bool, 1),
    Stored(PLACE(RampCount, ramp)),
    Stored(RAMP_PLACE(Int, selected)),
    Stored(RAMP_PLACE(Int, interpolation)),
    Stored(PLACE(Int, type)),
    Stored(PLACE(Int, space)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, start, x)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, start, y)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, start, z)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, end, x)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, end, y)),
    Stored(SORVANIX_COMPONENT_PLACE(Block, end, z)),
    Stored(PLACE(Float, radius)),
    Stored(PLACE(Bool, cycle)),
    Stored(PLACE(Int, previewObject)),
    Stored(PLACE(Bool, previewAuto)),
    Stored(PLACE(Bool, previewBusy)),
    Stored(PLACE(Bool, changed)),
    Stored(PLACE(RampKnots, ramp)),
    Stored(PLACE(RampOrder, ramp)),
    StoredSince(20000729, PLACE(Int, nested)),
};

#undef RAMP_PLACE
#undef PLACE
#undef MEMBER

}  // namespace

constexpr ShaderTable kGradientTable = {
    .pluginId = PluginIdGradient,
    .name = "Gradient",
    .category = ShaderCategory::Generator,
    .summary = "A colour ramp along a line, an angle, a box, a disc, or a shape in space.",
    .infoWord = 0x0220000E,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .ramp = {.offset = offsetof(Block, ramp),
             .initial = &kInitialRamp,
             .colourKey = 1100,
             .positionKey = 1200,
             .biasKey = 1300,
             .label = "Ramp",
             .help = "The colours, from the beginning of the shape to its end."},
    .copyRule = CopyRule::ListedFields,
    .marker = kMarker,
    .oldestMarker = kOldestMarker,
    .stored = kStored,
    .slotStride = SlotStrideHeadOnly,
    .slotFailureText = "Couldn't Allocate Globals",
};

namespace {

// How far apart the samples of a bump lie, in texture coordinates and in units of the space.
constexpr float kStep = 0.001f;

struct Move {
  Vector uvw;
  Vector point;
};

// A neighbour's coordinate lies on the other side than its point: deliberate.
Move TapMove(std::int32_t tap, const RenderContext& render) noexcept {
  switch (tap) {
    case TapPlusU:
      return {{kStep, 0, 0}, Scale(-kStep, render.tangentU)};
    case TapMinusU:
      return {{-kStep, 0, 0}, Scale(kStep, render.tangentU)};
    case TapPlusV:
      return {{0, kStep, 0}, Scale(-kStep, render.tangentV)};
    case TapMinusV:
      return {{0, -kStep, 0}, Scale(kStep, render.tangentV)};
    default:
      return {};
  }
}

// Bends the normal by the slope, behind minus ahead in both directions.
void BendNormal(const Block& block, const GradientPlace& place, RenderContext& render) noexcept {
  // The two kinds of shape have factors of their own, which do not follow from one another.
  constexpr double kTextureSlope = 100, kSpaceSlope = 4;
  const bool solid = ReadsPoint(block.type);
  const auto height = [&](const Vector& uvwMove, const Vector& tangent, float step) {
    const GradientPlace moved = solid ? GradientPlace{{}, Add(place.point, Scale(step, tangent))}
                                      : GradientPlace{Add(place.uvw, Scale(step, uvwMove)), {}};
    return Mean(EvaluateGradient(block, &render, moved));
  };
  const auto slope = [&](const Vector& uvwMove, const Vector& tangent) {
    return height(uvwMove, tangent, -kStep) - height(uvwMove, tangent, kStep);
  };
  const double factor = solid ? kSpaceSlope : kTextureSlope;
  TiltNormal(render, slope({1, 0, 0}, render.tangentU) * factor,
             slope({0, 1, 0}, render.tangentV) * factor);
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return;

  RenderContext* render = sample->render;
  GradientPlace place = {sample->uvw, {}};
  std::int32_t tap = TapNone;
  if (render != nullptr) {
    const FootprintBlock* own = nullptr;
    if (instance->slots != nullptr) {
      own = SlotAt<FootprintBlock>(instance->slots, hostCpuIndex(render));
    }
    const bool fromSlot =
        block->nested != 0 && own != nullptr && own->outerChannel != ChannelStandalone;
    if (fromSlot) place.uvw = own->uvwPoint;
    const GradientHit hit = HitInSpace(*block, *render, own, fromSlot);
    place.point = hit.point;
    tap = hit.tap;
  }
  if (instance->channel == ChannelBump) {
    if (render != nullptr) BendNormal(*block, place, *render);
    return;
  }
  if (tap != TapNone) {
    const Move move = TapMove(tap, *render);
    AddInPlace(place.uvw, move.uvw);
    AddInPlace(place.point, move.point);
  }
  *result = EvaluateGradient(*block, render, place);
  sample->uvw = place.uvw;  // with the tap's step, which later readers of the sample see
}

}  // namespace

void FillGradientRecord(ShaderRecord* record) noexcept {
  using Callbacks = TableCallbacks<kGradientTable>;
  Callbacks::Fill(record);
  record->Edit = EditGradient;
  record->InitRender = Callbacks::InitSlots;
  record->Output = Output;
}

}  // namespace sorvanix
