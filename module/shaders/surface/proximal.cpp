// Proximal: its table, the list of points in its slots, and its colour and bump paths.
#include "module/shaders/surface/proximal.h"

#include <cmath>

#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/proximal_dialog.h"
#include "module/shaders/surface/proximal_targets.h"
#include "module/shaders/surface/proximal_weight.h"
#include "module/shaders/tilt_normal.h"
#include "module/shell/slot_address.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

using Block = ProximalBlock;
static_assert(sizeof(void*) != 4 || offsetof(Block, nested) == 11 * 4);

#define MEMBER(kind, member) SORVANIX_MEMBER(ProximalBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(ProximalBlock, kind, member)

constexpr Choice kFalloffs[] = {
    {ProximalLinear, "linear", "Linear"},
    {ProximalSquare, "square", "Square"},
    {ProximalCube, "cube", "Cube"},
    {ProximalBand, "band", "Band"},
    {ProximalInverse, "inverse", "Inverse"},
    {ProximalInverseSquare, "inverseSquare", "Inverse Square"},
    {ProximalInverseCube, "inverseCube", "Inverse Cube"},
    {ProximalSmooth, "smooth", "Smooth"},
};
constexpr Choice kCombines[] = {
    {ProximalMax, "max", "Maximum"},
    {ProximalScreen, "screen", "Screen"},
    {ProximalDifference, "difference", "Difference"},
    {ProximalOverlap, "overlap", "Overlap"},
    {ProximalAdd, "add", "Add"},
};

constexpr double kUnbounded = 9e18;  // the greatest number that dialogs show
constexpr Limits kDistance = {0, kUnbounded / 100, 0.01};

constexpr Field kFields[] = {
    {MEMBER(Float, minimum), .initial = Initially(0.0f), .compared = true, .copied = true,
     .key = 1000, .label = "Minimum",
     .help = "Distance at which the falloff begins; 1 is 100 scene units.", .limits = kDistance,
     .unit = Unit::Percent},
    {MEMBER(Float, maximum), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1001, .label = "Maximum",
     .help = "Distance at which it ends; 1 is 100 scene units, or the radius of a face.",
     .limits = kDistance, .unit = Unit::Percent},
    {MEMBER(String, objectName), .compared = true, .copied = true, .key = 1002,
     .describeAs = DescribeInteger, .label = "Object",
     .help = "The name of the objects whose nearness counts."},
    {MEMBER(Bool, matchFlag), .initial = Initially(0), .compared = true, .copied = true,
     .key = 1003, .describeAs = DescribeInteger, .label = "Match",
     .help = "Kept with the material, without effect."},
    {MEMBER(Bool, useChildren), .initial = Initially(0), .compared = true, .copied = true,
     .key = 1004, .describeAs = DescribeInteger, .label = "Use Children",
     .help = "Takes the children of the object in its place."},
    {MEMBER(Float, strength), .initial = Initially(1.0f), .compared = true, .copied = true,
     .key = 1005, .label = "Strength", .help = "Multiplies the weight of each point.",
     .limits = {0, kUnbounded, 0.01}},
    {MEMBER(Int, falloff), .initial = Initially(0), .compared = true, .copied = true, .key = 1006,
     .describeAs = DescribeInteger, .label = "Falloff",
     .help = "How the weight of a point falls with the distance.", .limits = {.step = 1},
     .choices = kFalloffs},
    {MEMBER(Bool, useGeometry), .initial = Initially(0), .compared = true, .copied = true,
     .key = 1007, .describeAs = DescribeInteger, .label = "Use Geometry",
     .help = "Takes every vertex of the object, not its position alone."},
    {MEMBER(Bool, useFaces), .initial = Initially(0), .compared = true, .copied = true, .key = 1008,
     .describeAs = DescribeInteger, .label = "Use Faces",
     .help = "With geometry, takes the centres of the faces of a mesh, which reach to their "
             "corners."},
    {MEMBER(Int, combine), .initial = Initially(4), .compared = true, .copied = true, .key = 1009,
     .describeAs = DescribeInteger, .label = "Combine",
     .help = "How the weights of several points become one value.", .limits = {.step = 1},
     .choices = kCombines},
    {MEMBER(Int, dialogWord), .initial = Initially(0), .copied = true},
    {MEMBER(Int, nested), .initial = Initially(0)},
    {MEMBER(Int, previewChannel), .initial = Initially(-1), .copied = true},
};

// Older files count distances in scene units, and knew one falloff, which they did not name until
// the version of kFalloffMarker.
constexpr std::int32_t kFirstMarker = 20000728;
constexpr std::int32_t kFalloffMarker = 20000815;
constexpr std::int32_t kMarker = 20000818;
constexpr StoredItem kStored[] = {
    Stored(PLACE(Float, minimum)),
    Stored(PLACE(Float, maximum)),
    Stored(PLACE(String, objectName)),
    Stored(PLACE(Bool, matchFlag)),
    Stored(PLACE(Bool, useChildren)),
    ImpliedBefore(kMarker, PLACE(Int, falloff), Initially(ProximalSquare)),
    StoredSince(kFalloffMarker, PLACE(Float, strength)),
    StoredSince(kFalloffMarker, PLACE(Int, falloff)),
    StoredSince(kMarker, PLACE(Bool, useGeometry)),
    StoredSince(kMarker, PLACE(Bool, useFaces)),
    StoredSince(kMarker, PLACE(Int, combine)),
};

#undef PLACE
#undef MEMBER

void CompleteRead(void* data, std::int32_t marker) noexcept {
  if (marker >= kMarker) return;
  Block& block = *static_cast<Block*>(data);
  block.minimum = static_cast<float>(block.minimum * 0.01);
  block.maximum = static_cast<float>(block.maximum * 0.01);
}

struct ProximalSlot {
  FootprintBlock head;
  SlotAddress targets;  // the same list in all slots
};
static_assert(sizeof(ProximalSlot) == SlotStrideNoise);

}  // namespace

constexpr ShaderTable kProximalTable = {
    .pluginId = PluginIdProximal,
    .name = "Proximal",
    .category = ShaderCategory::Surface,
    .summary = "Grey by how near the surface comes to objects, their vertices, faces or particles.",
    .infoWord = 0x00200002,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .copyRule = CopyRule::ListedFields,
    .marker = kMarker,
    .oldestMarker = kFirstMarker,
    .stored = kStored,
    .completeRead = CompleteRead,
    .slotStride = SlotStrideNoise,
};

namespace {

const ProximalTargets* TargetsOf(const ProximalSlot& slot) noexcept {
  return static_cast<const ProximalTargets*>(slot.targets.Get());
}

void FreeRender(ShaderInstance* instance) noexcept {
  if (instance->slots != nullptr) {
    FreeTargets(
        static_cast<ProximalTargets*>(SlotAt<ProximalSlot>(instance->slots, 0)->targets.Get()));
  }
  FreeSlots(instance);
}

// Unlike other shaders this one cannot do without its slots, and says so.
std::int32_t InitRender(ShaderInstance* instance, const RenderInit* init) noexcept {
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr || init->render == nullptr) return 0;
  FreeRender(instance);
  const std::int32_t count = MakeSlots(kProximalTable, instance, init);
  if (count == 0) return RenderInitFailed;
  if (init->document == nullptr) return 0;
  ProximalTargets* targets = CollectTargets(*block, init->document);
  if (targets == nullptr) {
    FreeRender(instance);
    return RenderInitFailed;
  }
  for (std::int32_t cpu = 0; cpu < count; ++cpu) {
    SlotAt<ProximalSlot>(instance->slots, cpu)->targets.Set(targets);
  }
  return 0;
}

double ValueAt(const Vector& p, const Block& block, const ProximalTargets& targets) noexcept {
  const double low = 100.0 * block.minimum;
  const bool weighed = IsProximalFalloff(block.falloff);
  double value = 0;
  for (std::int32_t i = 0; i < targets.count; ++i) {
    const double distance = Length(Sub(targets.points[i], p));
    const double high = double{targets.weights[i]} * block.maximum;
    double weight = ProximalWeight(block.falloff, distance, low, high);
    if (weighed) weight *= block.strength;  // a bare distance is not scaled: deliberate
    value = CombineWeights(block.combine, value, weight);
  }
  return value;
}

// Without a render: one point in the middle of the unit square, which reaches to its sides.
double PreviewValue(const Block& block, const Vector& uvw) noexcept {
  const double distance = Clamp01(2 * std::hypot(uvw.x - 0.5, uvw.y - 0.5));
  return ProximalWeight(block.falloff, distance, block.minimum, block.maximum) * block.strength;
}

constexpr float kBumpStep = 0.25f;  // scene units, for tangents of unit length

// Bends the normal by the slope between four neighbours: J. F. Blinn, "Simulation of Wrinkled
// Surfaces", SIGGRAPH 1978. Behind minus ahead, along both tangents.
template <class Value>
void BendNormal(const Value& value, const Vector& p, RenderContext& render) noexcept {
  constexpr double kSlope = 7.4;
  const auto slopeAlong = [&](const Vector& tangent) {
    const Vector step = Scale(kBumpStep, tangent);
    return kSlope * (value(Sub(p, step)) - value(Add(p, step)));
  };
  render.bumpTint = {1, 1, 1};
  TiltNormal(render, slopeAlong(render.tangentU), slopeAlong(render.tangentV));
}

// Where an enclosing filter asks for a neighbour. Against u first, where most shaders step along
// it: deliberate.
Vector TapOffset(std::int32_t tap, const RenderContext& render) noexcept {
  switch (tap) {
    case TapPlusU:
      return Scale(-kBumpStep, render.tangentU);
    case TapMinusU:
      return Scale(kBumpStep, render.tangentU);
    case TapPlusV:
      return Scale(-kBumpStep, render.tangentV);
    case TapMinusV:
      return Scale(kBumpStep, render.tangentV);
    default:
      return Vector{};
  }
}

Vector Grey(double value) noexcept {
  const auto v = static_cast<float>(value);
  return {v, v, v};
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return;
  RenderContext* render = sample->render;
  if (instance->slots == nullptr || render == nullptr) {
    *result = Grey(PreviewValue(*block, sample->uvw));
    return;
  }
  const ProximalSlot& slot = *SlotAt<ProximalSlot>(instance->slots, hostCpuIndex(render));
  const ProximalTargets* targets = TargetsOf(slot);
  if (targets == nullptr) return;

  const bool nested = block->nested != 0 && slot.head.outerChannel != ChannelStandalone;
  Vector p = render->hitPoint;
  if (nested) AddInPlace(p, slot.head.pointOffset);
  const auto value = [&](const Vector& point) { return ValueAt(point, *block, *targets); };
  if (instance->channel == ChannelBump) {
    BendNormal(value, p, *render);
    return;
  }
  if (nested) AddInPlace(p, TapOffset(slot.head.tap, *render));
  *result = Grey(Clamp01(value(p)));
}

}  // namespace

void FillProximalRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kProximalTable>::Fill(record);
  record->Edit = EditProximal;
  record->InitRender = InitRender;
  record->FreeRender = FreeRender;
  record->Output = Output;
}

}  // namespace sorvanix
