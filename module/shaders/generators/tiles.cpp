// Tiles: its table, its per-CPU slots, and its colour and bump paths.
#include "module/shaders/generators/tiles.h"

#include "module/kit/vector.h"
#include "module/shaders/generators/tiles_catalogue.h"
#include "module/shaders/generators/tiles_dialog.h"
#include "module/shaders/generators/tiles_pattern.h"
#include "module/shaders/tilt_normal.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

#define MEMBER(kind, member) SORVANIX_MEMBER(TilesBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(TilesBlock, kind, member)
#define AT(member) offsetof(TilesBlock, member)

static_assert(sizeof(TilesBlock) == 32 * 4);
static_assert(AT(groutColor) == 9 * 4 && AT(smoothBevel) == 21 * 4 && AT(nested) == 27 * 4 &&
              AT(bumpStepScale) == 31 * 4);

constexpr double kUnbounded = 9e18;  // the greatest number that dialogs show
constexpr Limits kScaleLimits = {1e-6, 100000, 0.1};
constexpr Limits kShareLimits = {0, 1, 0.001};

constexpr Choice kOrientations[] = {{0, "alongU", "Along U"}, {1, "alongV", "Along V"}};

constexpr Field kFields[] = {
    {MEMBER(Int, pattern), .initial = Initially(0), .compared = true, .key = 1000,
     .describeAs = DescribeInteger, .label = "Pattern", .help = "How the tiles are laid.",
     .limits = {0, kTilePatterns - 1, 1}, .choices = kTilePatternChoices},
    {MEMBER(Int, orientation), .initial = Initially(0), .compared = true, .key = 1013,
     .describeAs = DescribeInteger, .label = "Orientation",
     .help = "Which way the pattern's first axis runs.", .limits = {0, 1, 1},
     .choices = kOrientations},
    {MEMBER(Int, globalMode), .initial = Initially(0), .compared = true},
    {MEMBER(Float, globalScale), .initial = Initially(1.0f), .compared = true, .key = 1001,
     .label = "Scale", .help = "Size over both axes: 2 makes everything twice as large.",
     .limits = kScaleLimits},
    {MEMBER(Float, scaleU), .initial = Initially(1.0f), .compared = true, .key = 1002,
     .label = "Scale U", .help = "Size along u. The grout keeps its width as far as it fits.",
     .limits = kScaleLimits},
    {MEMBER(Float, scaleV), .initial = Initially(1.0f), .compared = true, .key = 1003,
     .label = "Scale V", .help = "Size along v. The grout keeps its width as far as it fits.",
     .limits = kScaleLimits},
    {MEMBER(Float, arms), .initial = Initially(1.0f), .compared = true, .key = 1004,
     .label = "Arms",
     .help = "How often a spiral winds, and each ten wedges; whole numbers meet themselves.",
     .limits = kScaleLimits},
    {MEMBER(Float, groutWidth), .initial = Initially(0.05f), .compared = true, .key = 1005,
     .label = "Grout Width", .help = "How much of the way to a tile's middle is grout.",
     .limits = kShareLimits, .unit = Unit::Percent},
    {MEMBER(Float, bevel), .initial = Initially(0.3f), .compared = true, .key = 1006,
     .label = "Bevel",
     .help = "How much of the rest turns from grout to tile; at 0 tiles touch without grout.",
     .limits = kShareLimits, .unit = Unit::Percent},
    {MEMBER(Vector, groutColor), .initial = Initially(0.0f, 0.0f, 0.0f), .compared = true,
     .key = 1007, .label = "Grout Color", .help = "The colour between the tiles.",
     .unit = Unit::Colour},
    {MEMBER(Vector, color1), .initial = Initially(0.5f, 0.0f, 0.0f), .compared = true, .key = 1008,
     .label = "Color 1", .help = "The first colour of tiles.", .unit = Unit::Colour},
    {MEMBER(Vector, color2), .initial = Initially(0.5f, 0.5f, 0.5f), .compared = true, .key = 1009,
     .label = "Color 2", .help = "The second colour of tiles.", .unit = Unit::Colour},
    {MEMBER(Vector, color3), .initial = Initially(0.0f, 0.0f, 0.5f), .compared = true, .key = 1010,
     .label = "Color 3",
     .help = "The third colour, of patterns in three colours and of random tiles.",
     .unit = Unit::Colour},
    {MEMBER(Bool, smoothBevel), .initial = Initially(1), .compared = true, .key = 1011,
     .describeAs = DescribeInteger, .label = "Smooth Bevel",
     .help = "Rounds the bevel; without it the bevel is straight."},
    {MEMBER(Bool, randomColor), .initial = Initially(0), .compared = true, .key = 1012,
     .describeAs = DescribeInteger, .label = "Random Color",
     .help = "Gives each tile a colour of its own between the three."},
    {MEMBER(Int, reserved23), .initial = Initially(0)},
    {MEMBER(Int, reserved24), .initial = Initially(1)},
    {MEMBER(Bool, alternate), .initial = Initially(1), .compared = true},
    {MEMBER(Int, reserved26), .initial = Initially(0)},
    {MEMBER(Int, nested), .initial = Initially(0)},
    {MEMBER(Int, reserved30), .initial = Initially(-1)},
    {MEMBER(Float, bumpStepScale), .initial = Initially(1.0f), .compared = true, .key = 1014,
     .label = "Bump Detail", .help = "How far apart the samples of a bump lie.",
     .limits = {0, kUnbounded, 1}},
};

// Between the oldest form, which had no orientation, and the next one no version wrote files.
constexpr std::int32_t kOldestMarker = 20000728;
constexpr std::int32_t kOrientedMarker = 20000820;
constexpr std::int32_t kMarker = 20000903;
constexpr StoredItem kStored[] = {
    Stored(PLACE(Int, globalMode)),
    Stored(PLACE(Int, pattern)),
    StoredSince(kOrientedMarker, PLACE(Int, orientation)),
    Stored(PLACE(Float, globalScale)),
    Stored(PLACE(Float, scaleU)),
    Stored(PLACE(Float, scaleV)),
    Stored(PLACE(Float, groutWidth)),
    Stored(PLACE(Float, bevel)),
    Stored(PLACE(Vector, groutColor)),
    Stored(PLACE(Vector, color1)),
    Stored(PLACE(Vector, color2)),
    Stored(PLACE(Vector, color3)),
    Stored(PLACE(Bool, smoothBevel)),
    Stored(PLACE(Bool, randomColor)),
    Stored(PLACE(Bool, alternate)),
    StoredSince(20000902, PLACE(Float, arms)),
    StoredSince(kMarker, PLACE(Float, bumpStepScale)),
};

#undef AT
#undef PLACE
#undef MEMBER

struct TilesSlot {
  FootprintBlock head;
  float bumpStep;   // in units of the plane of the tiles
  float bumpScale;  // never read
  std::int32_t reserved[2];
};
static_assert(sizeof(TilesSlot) == SlotStrideTiles);

}  // namespace

constexpr ShaderTable kTilesTable = {
    .pluginId = PluginIdTiles,
    .name = "Tiles",
    .category = ShaderCategory::Generator,
    .summary = "Twenty-eight patterns of tiles and grout over a surface's texture coordinates.",
    .infoWord = 0x0020000E,
    .blockSize = sizeof(TilesBlock),
    .nestedOffset = offsetof(TilesBlock, nested),
    .fields = kFields,
    .marker = kMarker,
    .oldestMarker = kOldestMarker,
    .foreignMarkers = {kOldestMarker + 1, kOrientedMarker - 1},
    .stored = kStored,
    .slotStride = SlotStrideTiles,
    .slotFailureText = "Couldn't Allocate Tiles Globals",
};

namespace {

std::int32_t InitRender(ShaderInstance* instance, const RenderInit* init) noexcept {
  const auto* block = BlockOf<TilesBlock>(instance);
  if (block == nullptr || init->render == nullptr) return 0;
  const std::int32_t count = MakeSlots(kTilesTable, instance, init);
  for (std::int32_t cpu = 0; cpu < count; ++cpu) {
    TilesSlot& slot = *SlotAt<TilesSlot>(instance->slots, cpu);
    slot.bumpStep = static_cast<float>(block->bumpStepScale * 0.005);
    slot.bumpScale = 1.0f;
  }
  return 0;
}

// Bends the normal by the slope between four neighbours. Behind minus ahead in x, ahead minus
// behind in y: the unlike signs are deliberate. So is that x bends along u and y along v also where
// the orientation exchanges the axes.
void BendNormal(const TilesBlock& block, const ChannelSample& sample, const Vector& point,
                float step) noexcept {
  constexpr double kSlope = 7.4;
  const auto valueAt = [&](float dx, float dy) noexcept {
    return HeightOf(TilePattern(block, sample, Add(point, {dx, dy, 0})));
  };
  TiltNormal(*sample.render, (valueAt(-step, 0) - valueAt(step, 0)) * kSlope,
             (valueAt(0, step) - valueAt(0, -step)) * kSlope);
}

Vector Moved(const Vector& point, std::int32_t tap, float step) noexcept {
  switch (tap) {
    case TapPlusU:
      return Add(point, {step, 0, 0});
    case TapMinusU:
      return Add(point, {-step, 0, 0});
    case TapPlusV:
      return Add(point, {0, step, 0});
    case TapMinusV:
      return Add(point, {0, -step, 0});
    default:
      return point;
  }
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<TilesBlock>(instance);
  if (block == nullptr) return;

  RenderContext* render = sample->render;
  const TilesSlot* slot = nullptr;
  if (instance->slots != nullptr && render != nullptr) {
    slot = SlotAt<TilesSlot>(instance->slots, hostCpuIndex(render));
  }
  const bool nested = block->nested != 0 && slot != nullptr;
  Vector point =
      TilePoint(*block, nested ? Add(slot->head.uvwPoint, slot->head.uvwOffset) : sample->uvw);

  // Without slots there is no step, so that the bump channel shows the colour.
  if (slot != nullptr && instance->channel == ChannelBump) {
    BendNormal(*block, *sample, point, slot->bumpStep);
    return;
  }
  if (nested) point = Moved(point, slot->head.tap, slot->bumpStep);
  *result = TilePattern(*block, *sample, point);
}

}  // namespace

void FillTilesRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kTilesTable>::Fill(record);
  record->Edit = EditTiles;
  record->InitRender = InitRender;
  record->Output = Output;
}

}  // namespace sorvanix
