// 3D Noise: its table, and its colour and bump paths.
#include "module/shaders/generators/noise_3d.h"

#include "module/shaders/generators/noise_3d_dialog.h"
#include "module/shaders/generators/noise_3d_point.h"
#include "module/shaders/generators/noise_3d_sampling.h"
#include "module/shaders/generators/noise_bump_step.h"
#include "module/shaders/generators/noise_choices.h"
#include "module/shaders/generators/noise_slot.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

using Block = Noise3DBlock;

#define MEMBER(kind, member) SORVANIX_MEMBER(Block, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(Block, kind, member)
#define AT(member) offsetof(Block, member)

static_assert(sizeof(Block) == 40 * 4);
static_assert(AT(colorA) == 15 * 4 && AT(reserved24) == 0x60 && AT(extraVector) == 29 * 4 &&
              AT(nested) == 36 * 4 && AT(bumpStepScale) == 39 * 4);

constexpr Choice kSpaces[] = {
    {SpaceTexture, "texture", "Texture"}, {SpaceObject, "object", "Object"},
    {SpaceWorld, "world", "World"},       {SpaceCamera, "camera", "Camera"},
    {SpaceScreen, "screen", "Screen"},    {SpaceRaster, "raster", "Raster"},
};

constexpr double kUnbounded = 9e18;  // the greatest number that dialogs show
constexpr Limits kAnyNumber = {-kUnbounded, kUnbounded, 1};
constexpr const char* kExtraHelp = "Kept for other programs; no picture depends on it.";

constexpr Field kFields[] = {
    {MEMBER(Int, revision), .initial = Initially(0), .compared = true},
    {MEMBER(Int, noiseType), .initial = Initially(12), .compared = true, .key = 1000,
     .describeAs = DescribeInteger, .label = "Type", .help = "Which of the thirty noises is shown.",
     .limits = {0, 29, 1}, .choices = kNoiseTypeChoices},
    {MEMBER(Int, space), .initial = Initially(SpaceTexture), .compared = true, .key = 1001,
     .describeAs = DescribeInteger, .label = "Space", .help = "What the noise stays fixed to.",
     .limits = {0, 5, 1}, .choices = kSpaces},
    {MEMBER(Float, octaves), .initial = Initially(5.0f), .compared = true, .key = 1002,
     .label = "Octaves",
     .help = "How many layers of finer and finer detail; fractions fade the last layer in.",
     .limits = {0, 20, 0.1}},
    {MEMBER(Float, globalScale), .initial = Initially(1.0f), .compared = true, .key = 1003,
     .label = "Scale",
     .help = "Frequency over all axes: 0.1 puts ten units of the space into one cell of the noise.",
     .limits = {1e-6, 1e6, 1}},
    {MEMBER(Float, scaleX), .initial = Initially(1.0f), .compared = true, .key = 1004,
     .label = "Scale X", .help = "Frequency along x.", .limits = {1e-6, kUnbounded, 1}},
    {MEMBER(Float, scaleY), .initial = Initially(1.0f), .compared = true, .key = 1005,
     .label = "Scale Y", .help = "Frequency along y.", .limits = {1e-6, kUnbounded, 1}},
    {MEMBER(Float, scaleZ), .initial = Initially(1.0f), .compared = true, .key = 1006,
     .label = "Scale Z", .help = "Frequency along z.", .limits = {1e-6, kUnbounded, 1}},
    {MEMBER(Float, detail), .initial = Initially(1.0f), .compared = true, .key = 1008,
     .label = "Filter",
     .help = "How strongly the noise settles to its mean where a sample covers much of it.",
     .limits = {0, 100000, 1}},
    {MEMBER(Float, timeScale), .initial = Initially(0.0f), .compared = true, .key = 1007,
     .label = "Speed", .help = "How fast the noise changes with time.", .limits = {0, 100, 0.1}},
    {MEMBER(Float, contrast), .initial = Initially(0.0f), .compared = true, .key = 1009,
     .label = "Contrast", .help = "Below 0 flattens towards the middle, above 0 steepens.",
     .limits = {-1, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, brightness), .initial = Initially(0.0f), .compared = true, .key = 1010,
     .label = "Brightness", .help = "Added to the value before the contrast.",
     .limits = {-1, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, lowClip), .initial = Initially(0.0f), .compared = true, .key = 1011,
     .label = "Low Clip", .help = "Noise values up to here show the first colour.",
     .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, highClip), .initial = Initially(1.0f), .compared = true, .key = 1012,
     .label = "High Clip", .help = "Noise values from here on show the second colour.",
     .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, cycles), .initial = Initially(0.0f), .compared = true, .key = 1013,
     .label = "Cycles", .help = "How often the value runs through the colours and back.",
     .limits = {0, 100, 0.1}},
    {MEMBER(Vector, colorA), .initial = Initially(0.0f, 0.0f, 0.0f), .compared = true, .key = 1014,
     .label = "Color 1", .help = "The colour of the lowest values.", .unit = Unit::Colour},
    {MEMBER(Vector, colorB), .initial = Initially(1.0f, 1.0f, 1.0f), .compared = true, .key = 1015,
     .label = "Color 2", .help = "The colour of the highest values.", .unit = Unit::Colour},
    {MEMBER(Bool, bumpOneSided), .initial = Initially(0), .compared = true, .key = 1016,
     .describeAs = DescribeInteger, .label = "Bump Along Axes",
     .help = "Takes a bump's slope along the axes of the space, not along the surface."},
    {MEMBER(Bool, absolute), .initial = Initially(0), .compared = true, .key = 1017,
     .describeAs = DescribeInteger, .label = "Absolute",
     .help = "Folds the noise at its middle, which draws sharp creases."},
    {MEMBER(Bool, flagC), .initial = Initially(0), .compared = true},
    {MEMBER(Int, reserved25), .initial = Initially(1)},
    {MEMBER(Bool, flagD), .initial = Initially(1), .compared = true},
    // Not compared, an oddity that documents rely on.
    {MEMBER(Bool, useObjectFrame), .initial = Initially(0), .key = 1018,
     .describeAs = DescribeInteger, .label = "Stick to Object",
     .help = "Reads the noise where the surface was before the object was bent, in place of the "
             "space."},
    {MEMBER(Bool, useSphereFrame), .initial = Initially(0), .compared = true, .key = 1019,
     .describeAs = DescribeInteger, .label = "On a Sphere",
     .help = "With Stick to Object: wraps the texture coordinates around a sphere."},
    {SORVANIX_COMPONENT(Block, extraVector, x, "extraX"), .initial = Initially(0.0f),
     .compared = true, .key = 1022, .label = "Extra X", .help = kExtraHelp, .limits = kAnyNumber},
    {SORVANIX_COMPONENT(Block, extraVector, y, "extraY"), .initial = Initially(0.0f),
     .compared = true, .key = 1023, .label = "Extra Y", .help = kExtraHelp, .limits = kAnyNumber},
    {SORVANIX_COMPONENT(Block, extraVector, z, "extraZ"), .initial = Initially(1.0f),
     .compared = true, .key = 1024, .label = "Extra Z", .help = kExtraHelp, .limits = kAnyNumber},
    {MEMBER(Vector, velocity), .initial = Initially(0.0f, 0.0f, 0.0f), .compared = true,
     .key = 1025, .label = "Movement",
     .help = "How far the point that is read moves along each axis of the space in a second; the "
             "pattern moves the other way."},
    {MEMBER(Float, extraValue), .initial = Initially(0.0f), .compared = true, .key = 1021,
     .label = "Extra Value", .help = kExtraHelp, .limits = kAnyNumber},
    // Unlike in 2D Noise and Tiles, a nested noise does not equal one that stands alone.
    {MEMBER(Int, nested), .compared = true},
    {MEMBER(Int, reserved38), .initial = Initially(-1)},
    {MEMBER(Float, bumpStepScale), .initial = Initially(1.0f), .compared = true, .key = 1020,
     .label = "Bump Detail", .help = "How far apart the samples of a bump lie.",
     .limits = {0, kUnbounded, 1}},
};

// The order is that of the file, where timeScale stands before detail. A marker of 20000731 stands
// alone with two values that no other version has.
constexpr std::int32_t kMarker = 20000733;
constexpr std::int32_t kOldestMarker = 20000728;
constexpr StoredItem kStored[] = {
    Stored(PLACE(Int, revision)),
    Stored(PLACE(Int, noiseType)),
    Stored(PLACE(Float, octaves)),
    Stored(PLACE(Float, globalScale)),
    Stored(PLACE(Float, scaleX)),
    Stored(PLACE(Float, scaleY)),
    Stored(PLACE(Float, scaleZ)),
    Stored(PLACE(Float, timeScale)),
    Stored(PLACE(Float, detail)),
    Stored(PLACE(Float, contrast)),
    Stored(PLACE(Float, brightness)),
    Stored(PLACE(Float, lowClip)),
    Stored(PLACE(Float, highClip)),
    Stored(PLACE(Float, cycles)),
    Stored(PLACE(Vector, colorA)),
    Stored(PLACE(Vector, colorB)),
    Stored(PLACE(Bool, bumpOneSided)),
    Stored(PLACE(Bool, absolute)),
    Stored(PLACE(Bool, flagC)),
    Stored(PLACE(Bool, flagD)),
    StoredLiteral(kOldestMarker, ValueKind::Bool, 5),
    Stored(PLACE(Bool, useObjectFrame)),
    Stored(PLACE(Bool, useSphereFrame)),
    StoredSince(20000729, PLACE(Int, nested)),
    StoredSince(20000730, PLACE(Int, space)),
    StoredOnlyIn(20000731, ValueKind::Float),
    StoredOnlyIn(20000731, ValueKind::Float),
    StoredSince(20000732, PLACE(Float, bumpStepScale)),
    StoredSince(20000733, PLACE(Vector, extraVector)),
    StoredSince(20000733, PLACE(Vector, velocity)),
    StoredSince(20000733, PLACE(Float, extraValue)),
};

#undef AT
#undef PLACE
#undef MEMBER

}  // namespace

constexpr ShaderTable kNoise3DTable = {
    .pluginId = PluginIdNoise3D,
    .name = "3D Noise",
    .category = ShaderCategory::Generator,
    .summary = "Thirty noises in space, fixed to object, world or camera, mixed from two colours.",
    .infoWord = 0x0220000E,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .marker = kMarker,
    .oldestMarker = kOldestMarker,
    .stored = kStored,
    .slotStride = SlotStrideNoise,
    .slotFailureText = "Couldn't Allocate 3D Noise Globals",
};

namespace {

// Finer where the points of the space lie closer together.
double BumpStepOf(const Block& block) noexcept {
  const double step = double{NoiseBumpStep(block.noiseType, block.octaves)} * block.bumpStepScale;
  if (block.space == SpaceScreen) return step * 0.1;
  if (block.space == SpaceRaster) return step * 0.05;
  return step;
}

std::int32_t InitRender(ShaderInstance* instance, const RenderInit* init) noexcept {
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr || init->render == nullptr) return 0;
  MakeNoiseSlots(kNoise3DTable, instance, init, BumpStepOf(*block));
  return 0;
}

// Without a render, cycles below 0 are off; within one they blend as those up to 1 do: deliberate.
Vector ColourOnSquare(const Block& block, const ChannelSample& sample) noexcept {
  const NoisePlace place = PlaceOnSquare(block, sample);
  const Noise3DSampling sampling = {block, block.timeScale * sample.time, place.width,
                                    NegativeCycles::Off};
  return sampling.Colour(place.point);
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return;
  RenderContext* render = sample->render;
  if (render == nullptr) {
    *result = ColourOnSquare(*block, *sample);
    return;
  }

  const NoiseSlot* slots = SlotAt<NoiseSlot>(instance->slots, 0);
  const FootprintBlock* own = slots == nullptr ? nullptr : &slots[hostCpuIndex(render)].head;
  const bool standalone = own != nullptr && own->outerChannel == ChannelStandalone;
  const bool nested = block->nested != 0 && own != nullptr && !standalone;
  const NoisePlace place = PlaceOnSurface(*block, *sample, own, nested);
  const Noise3DSampling sampling = {*block, block->timeScale * sample->time, place.width,
                                    NegativeCycles::Blend};

  // Without slots there is no step, and a bump shows its colour.
  if (own != nullptr && (instance->channel == ChannelBump || standalone)) {
    render->bumpTint = {1, 1, 1};
    const auto bend = block->bumpOneSided != 0 ? BendAlongAxes : BendAlongSurface;
    bend(sampling, place.point, slots->bumpStep, *render);
    return;
  }
  *result = sampling.Colour(nested ? MovedByTap(place.point, own->tap, slots->bumpStep, *render)
                                   : place.point);
}

}  // namespace

void Fill3DNoiseRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kNoise3DTable>::Fill(record);
  record->Edit = Edit3DNoise;
  record->InitRender = InitRender;
  record->Output = Output;
}

}  // namespace sorvanix
