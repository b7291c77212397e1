// Projector: its table, the slots and tags of a render, and how it reads its input.
#include "module/shaders/surface/projector.h"

#include <array>

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "module/shaders/filters/filter_fields.h"
#include "module/shaders/filters/input_stage.h"
#include "module/shaders/sample_points.h"
#include "module/shaders/surface/projector_dialog.h"
#include "module/shaders/surface/projector_tags.h"
#include "module/shaders/tilt_normal.h"
#include "module/shell/host_core.h"

namespace sorvanix {

namespace {

using Block = ProjectorBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 38 * 4);
#define MEMBER(kind, member) SORVANIX_MEMBER(ProjectorBlock, kind, member)
#define COMPONENT(member, axis, name) SORVANIX_COMPONENT(ProjectorBlock, member, axis, name)
#define PLACE(kind, member) SORVANIX_PLACE(ProjectorBlock, kind, member)
#define COMPONENT_PLACE(member, axis) SORVANIX_COMPONENT_PLACE(ProjectorBlock, member, axis)

constexpr Choice kProjections[] = {
    {0, "sphere", "Sphere"},
    {1, "cylinder", "Cylinder"},
    {2, "flat", "Flat"},
    {3, "cube", "Cube"},
    {4, "frontal", "Frontal"},
    {5, "spatial", "Spatial"},
    {kProjectionUvw, "uvw", "UVW"},
    {7, "shrinkWrap", "Shrink Wrap"},
};

constexpr Choice kTilings[] = {
    {0, "none", "None"},
    {ProjectorTile, "tile", "Tile"},
    {ProjectorSeamless, "seamless", "Seamless"},
    {ProjectorTile | ProjectorSeamless, "tileSeamless", "Tile, Seamless"},
};

constexpr double kDegree = 0.017453292519943295;
constexpr Limits kPercents = {-1e4, 1e4, 0.01};
constexpr Limits kDistance = {-1e6, 1e6, 1};
constexpr Limits kAngle = {-1e6 * kDegree, 1e6 * kDegree, kDegree};

constexpr Field kFields[] = {
    SORVANIX_INPUT(Block, input, 1017, "Input", "What is projected."),
    {MEMBER(Matrix, projectionMatrix), .initial = InitiallyIdentity(), .compared = true,
     .copied = true},
    {MEMBER(Int, tileFlags), .initial = Initially(ProjectorTile), .compared = true, .copied = true,
     .key = 1000, .describeAs = DescribeInteger, .label = "Tiling",
     .help = "How a bitmap goes on outside its borders.", .limits = {0, 3, 1}, .choices = kTilings},
    {MEMBER(Int, projection), .initial = Initially(0), .compared = true, .copied = true,
     .key = 1001, .describeAs = DescribeInteger, .label = "Projection",
     .help = "The shape from which the input is thrown onto the surface.", .limits = {.step = 1},
     .choices = kProjections},
    {MEMBER(Float, offsetU), .initial = Initially(0.0f), .compared = true, .copied = true,
     .key = 1002, .label = "Offset U", .help = "Where the tile starts, along u.",
     .limits = kPercents, .unit = Unit::Percent},
    {MEMBER(Float, offsetV), .initial = Initially(0.0f), .compared = true, .copied = true,
     .key = 1003, .label = "Offset V", .help = "Where the tile starts, along v.",
     .limits = kPercents, .unit = Unit::Percent},
    {MEMBER(Float, offsetUCopy), .initial = Initially(0.0f), .compared = true, .copied = true},
    {MEMBER(Float, offsetVCopy), .initial = Initially(0.0f), .compared = true, .copied = true},
    {MEMBER(Float, lengthU), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1004, .label = "Length U", .help = "The size of the tile along u.", .limits = kPercents,
     .unit = Unit::Percent},
    {MEMBER(Float, lengthV), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1005, .label = "Length V", .help = "The size of the tile along v.", .limits = kPercents,
     .unit = Unit::Percent},
    {MEMBER(Float, invLengthU), .initial = Initially(1.0f), .compared = true, .copied = true},
    {MEMBER(Float, invLengthV), .initial = Initially(1.0f), .compared = true, .copied = true},
    {MEMBER(Int, tile), .initial = Initially(1), .compared = true, .copied = true, .key = 1006,
     .describeAs = DescribeInteger, .label = "Tile",
     .help = "The dialog's switch for tiling; a render goes by Tiling.", .limits = {0, 1, 1},
     .choices = kSwitchChoices},
    {MEMBER(Int, seamless), .initial = Initially(0), .compared = true, .copied = true, .key = 1007,
     .describeAs = DescribeInteger, .label = "Seamless",
     .help = "The dialog's switch for mirrored tiles; a render goes by Tiling.",
     .limits = {0, 1, 1}, .choices = kSwitchChoices},
    {MEMBER(Float, tilesU), .initial = Initially(1.0f), .compared = true, .copied = true},
    {MEMBER(Float, tilesV), .initial = Initially(1.0f), .compared = true, .copied = true},
    {COMPONENT(position, x, "positionX"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1008, .label = "Position X",
     .help =
         "Where the projection stands, along x: 10000 is one unit of the surface's tag; without "
         "a tag, 100 is one unit.",
     .limits = kDistance},
    {COMPONENT(position, y, "positionY"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1009, .label = "Position Y", .help = "The same along y.",
     .limits = kDistance},
    {COMPONENT(position, z, "positionZ"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1010, .label = "Position Z", .help = "The same along z.",
     .limits = kDistance},
    {COMPONENT(scale, x, "scaleX"), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1011, .label = "Scale X", .help = "The size of the projection along its x axis.",
     .limits = kPercents, .unit = Unit::Percent},
    {COMPONENT(scale, y, "scaleY"), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1012, .label = "Scale Y", .help = "The same along its y axis.", .limits = kPercents,
     .unit = Unit::Percent},
    {COMPONENT(scale, z, "scaleZ"), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1013, .label = "Scale Z", .help = "The same along its z axis.", .limits = kPercents,
     .unit = Unit::Percent},
    {COMPONENT(rotation, x, "rotationX"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1014, .label = "Heading", .help = "The turn of the projection about y.",
     .limits = kAngle, .unit = Unit::Radians},
    {COMPONENT(rotation, y, "rotationY"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1015, .label = "Pitch", .help = "Its turn about x, before the heading.",
     .limits = kAngle, .unit = Unit::Radians},
    {COMPONENT(rotation, z, "rotationZ"), .initial = Initially(0.0f), .compared = true,
     .copied = true, .key = 1016, .label = "Bank", .help = "Its turn about z, before the pitch.",
     .limits = kAngle, .unit = Unit::Radians},
    {MEMBER(Int, nested), .initial = Initially(0), .compared = true},
    {MEMBER(Int, uvwIndex), .initial = Initially(1), .compared = true, .copied = true, .key = 1018,
     .describeAs = DescribeInteger, .label = "UVW Set",
     .help = "Which of the surface's sets of coordinates the projection UVW reads, from 1.",
     .limits = {.step = 1}},
    {MEMBER(Int, dialogWord), .initial = Initially(0), .copied = true},
    {MEMBER(Int, previewChannel), .initial = Initially(-1), .copied = true},
};

constexpr std::int32_t kFirstMarker = 20064758;
constexpr StoredItem kStored[] = {
    Stored(PLACE(Link, input)),
    Stored(PLACE(Matrix, projectionMatrix)),
    Stored(PLACE(Int, tileFlags)),
    Stored(PLACE(Int, projection)),
    Stored(PLACE(Float, offsetU)),
    Stored(PLACE(Float, offsetV)),
    Stored(PLACE(Float, offsetUCopy)),
    Stored(PLACE(Float, offsetVCopy)),
    Stored(PLACE(Float, lengthU)),
    Stored(PLACE(Float, invLengthU)),
    Stored(PLACE(Float, lengthV)),
    Stored(PLACE(Float, invLengthV)),
    Stored(PLACE(Int, tile)),
    Stored(PLACE(Int, seamless)),
    Stored(PLACE(Float, tilesU)),
    Stored(PLACE(Float, tilesV)),
    Stored(COMPONENT_PLACE(position, x)),
    Stored(COMPONENT_PLACE(position, y)),
    Stored(COMPONENT_PLACE(position, z)),
    Stored(COMPONENT_PLACE(scale, x)),
    Stored(COMPONENT_PLACE(scale, y)),
    Stored(COMPONENT_PLACE(scale, z)),
    Stored(COMPONENT_PLACE(rotation, x)),
    Stored(COMPONENT_PLACE(rotation, y)),
    Stored(COMPONENT_PLACE(rotation, z)),
    StoredLiteral(kFirstMarker + 1, ValueKind::Bool, 1),
    StoredLiteral(kFirstMarker + 1, ValueKind::Int, 5),
    StoredSince(kFirstMarker + 1, PLACE(Int, nested)),
    StoredSince(kFirstMarker + 2, PLACE(Int, uvwIndex)),
};

#undef COMPONENT_PLACE
#undef PLACE
#undef COMPONENT
#undef MEMBER

}  // namespace

constexpr ShaderTable kProjectorTable = {
    .pluginId = PluginIdProjector,
    .name = "Projector",
    .category = ShaderCategory::Surface,
    .summary = "Shows an input through a projection of its own, as a decal or a slide.",
    .infoWord = kFilterInfoWord,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .copyRule = CopyRule::ListedFields,
    .marker = kFirstMarker + 2,
    .oldestMarker = kFirstMarker,
    .stored = kStored,
    .slotStride = SlotStrideProjector,
    .slotFailureText = kFilterSlotFailureText,
};

namespace {

// --- the slots of a render ---

// The tags of all CPUs are one array, which begins with that of the first slot.
void ReleaseSlots(ShaderInstance* instance) noexcept {
  if (instance->slots == nullptr) return;
  hostFree(SlotAt<ProjectorSlot>(instance->slots, 0)->privateTag.Get());
  FreeSlots(instance);
}

// False, with null slots, when memory is short.
bool FillSlots(ShaderInstance* instance, ChannelLink* input, const InnerSlots& inner,
               std::int32_t cpus) noexcept {
  struct Tags {
    TextureTag privateTag, uvwTag;
  };
  static_assert(sizeof(Tags) <= sizeof(ProjectorSlot), "the size fits where that of the slots did");
  auto* tags = static_cast<Tags*>(hostAlloc(sizeof(Tags) * static_cast<std::size_t>(cpus)));
  if (tags == nullptr) {
    FreeSlots(instance);
    return false;
  }
  const InputSetup setup = SetUpInput(input, inner, kPlainStep);
  for (std::int32_t cpu = 0; cpu < cpus; ++cpu) {
    ProjectorSlot& slot = *SlotAt<ProjectorSlot>(instance->slots, cpu);
    slot.input.innerSlots[0].Set(setup.slots.address);
    slot.input.innerStride[0] = setup.stride;
    slot.input.step[0] = setup.step;
    slot.privateTag.Set(&tags[cpu].privateTag);
    slot.uvwTag.Set(&tags[cpu].uvwTag);
  }
  return true;
}

std::int32_t InitRender(ShaderInstance* instance, const RenderInit* init) noexcept {
  auto* block = BlockOf<Block>(instance);
  if (block == nullptr || block->input == nullptr) return RenderInitFailed;
  ReleaseSlots(instance);
  const std::int32_t inputAnswer = hostChannelInitRender(block->input, init);
  PlaceProjection(*block);
  const InnerSlots inner = AskForSlots(block->input);
  if (init->render != nullptr) {
    const std::int32_t cpus = MakeSlots(kProjectorTable, instance, init);
    if (cpus == 0 || !FillSlots(instance, block->input, inner, cpus)) return RenderInitFailed;
  }
  // Told at the end: a failed input leaves a render that shows it as it is.
  return inputAnswer == 0 ? 0 : RenderInitFailed;
}

void FreeRender(ShaderInstance* instance) noexcept {
  ReleaseSlots(instance);
  if (const auto* block = BlockOf<Block>(instance)) hostChannelFreeRender(block->input);
}

// --- a sample ---

// The footprint as it is, and its coordinates as they are projected. `nested` plays no part: the
// projection goes by the surface, wherever an enclosing filter reads.
FootprintBlock ProjectedFootprint(const ShaderInstance& instance, const Block& block,
                                  const ChannelSample& sample, ProjectorSlot& slot) noexcept {
  constexpr std::int32_t kNotNested = 0;
  RenderContext& render = *sample.render;
  FootprintBlock head = BuildFootprint(instance, sample, kNotNested, slot.head, slot.head).block;
  hostSetUpTexture(&render, head.footprint, block.uvwIndex);
  if (slot.ready == 0) BuildTags(block, render.textureTag, slot);

  const ProjectedPoints projected = ProjectPoints(block, slot, render, head.footprint);
  head.uvwPoint = head.basePoint = projected.uvw[0];
  head.uvwDelta = head.baseDelta = HalfExtent(projected.uvw, sample);
  return head;
}

// The way from the object to the projection and back, which only an aware input asks for.
void PutPlacement(const Block& block, const RenderContext& render, FootprintBlock& head) noexcept {
  const Matrix& object = render.object != nullptr ? render.object->matrix : kIdentityMatrix;
  head.texMatrix = Multiply(Invert(object), block.projectionMatrix);
  head.texInverse = Multiply(Invert(block.projectionMatrix), object);
}

// An input that cannot move by itself. The second and fourth place are not the mirror images of the
// first and third: deliberate.
TapColours ReadPlainTaps(ChannelLink* input, const ChannelSample& sample,
                         const BumpStep& step) noexcept {
  const Vector& plain = sample.uvw;
  const Vector ahead = Add(plain, {step.u, 0, 0});
  const Vector above = Add(plain, {step.u, step.v, 0});
  const Vector below = Sub(above, {0, 2 * step.v, 0});
  const auto read = [&](const Vector& uvw) {
    return ReadInput(input, sample, uvw, sample.texFlags);
  };
  return {read(ahead), read(plain), read(above), read(below)};
}

// Unlike filters, the first tap counts upwards in u as the third does in v.
void BendByTaps(const TapColours& colours, RenderContext& render) noexcept {
  constexpr double kSlope = 3.5;
  TiltNormal(render, kSlope * (HeightOf(colours[0]) - HeightOf(colours[1])),
             kSlope * (HeightOf(colours[2]) - HeightOf(colours[3])));
}

// Leaves flags and delta of a sample as its plain input reads them: deliberate.
void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) *result = Vector{};
  if (block == nullptr || block->input == nullptr) return;  // what the caller had stays
  RenderContext* render = sample->render;
  if (render == nullptr || instance->slots == nullptr) {
    *result = ReadInput(block->input, *sample, sample->uvw, sample->texFlags);
    return;
  }
  const std::int32_t cpu = hostCpuIndex(render);
  ProjectorSlot& slot = *SlotAt<ProjectorSlot>(instance->slots, cpu);
  FootprintBlock head = ProjectedFootprint(*instance, *block, *sample, slot);
  FootprintBlock* innerSlot = slot.input.InnerSlot(0, cpu);
  if (innerSlot != nullptr) {
    PutPlacement(*block, *render, head);
  } else {
    sample->texFlags = block->tileFlags;
    sample->delta = head.uvwDelta;
  }
  ChannelSample projected = *sample;
  projected.uvw = head.uvwPoint;

  if (instance->channel == ChannelBump) {
    BendByTaps(innerSlot == nullptr
                   ? ReadPlainTaps(block->input, projected, slot.input.step[0])
                   : ReadTaps(block->input, projected, {head, projected.texFlags}, innerSlot, {}),
               *render);
    return;
  }
  if (innerSlot != nullptr) PutFootprint(head, *innerSlot);
  *result = ReadInput(block->input, projected, projected.uvw, projected.texFlags);
}

}  // namespace

void FillProjectorRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kProjectorTable>::Fill(record);
  record->Edit = EditProjector;
  record->InitRender = InitRender;
  record->FreeRender = FreeRender;
  record->Output = Output;
}

}  // namespace sorvanix
