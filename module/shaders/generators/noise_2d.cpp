// 2D Noise: its table, its per-CPU slots, and its colour and bump paths.
#include "module/shaders/generators/noise_2d.h"

#include <cmath>

#include "module/kit/vector.h"
#include "module/noise/catalogue.h"
#include "module/shaders/generators/noise_2d_dialog.h"
#include "module/shaders/generators/noise_bump_step.h"
#include "module/shaders/generators/noise_choices.h"
#include "module/shaders/generators/noise_shape.h"
#include "module/shaders/generators/noise_slot.h"
#include "module/shaders/tilt_normal.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

#define MEMBER(kind, member) SORVANIX_MEMBER(Noise2DBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(Noise2DBlock, kind, member)
#define AT(member) offsetof(Noise2DBlock, member)

static_assert(sizeof(Noise2DBlock) == 29 * 4);
static_assert(AT(colorLow) == 13 * 4 && AT(absolute) == 19 * 4 && AT(nested) == 24 * 4 &&
              AT(bumpDetail) == 28 * 4);

constexpr double kUnbounded = 9e18;  // the greatest number that dialogs show

constexpr Field kFields[] = {
    {MEMBER(Int, previewObject), .initial = Initially(0), .compared = true},
    {MEMBER(Int, noiseType), .initial = Initially(12), .compared = true, .key = 1000,
     .describeAs = DescribeInteger, .label = "Type", .help = "Which of the thirty noises is shown.",
     .limits = {0, 29, 1}, .choices = kNoiseTypeChoices},
    {MEMBER(Float, octaves), .initial = Initially(5.0f), .compared = true, .key = 1001,
     .label = "Octaves",
     .help = "How many layers of finer and finer detail; fractions fade the last layer in.",
     .limits = {0, 20, 0.1}},
    {MEMBER(Float, scale), .initial = Initially(1.0f), .compared = true, .key = 1002,
     .label = "Scale", .help = "Frequency over both axes: 2 makes everything half as large.",
     .limits = {1e-6, 1e6, 1}},
    {MEMBER(Float, scaleU), .initial = Initially(1.0f), .compared = true, .key = 1003,
     .label = "Scale U", .help = "Frequency along u.", .limits = {1e-6, kUnbounded, 1}},
    {MEMBER(Float, scaleV), .initial = Initially(1.0f), .compared = true, .key = 1004,
     .label = "Scale V", .help = "Frequency along v.", .limits = {1e-6, kUnbounded, 1}},
    {MEMBER(Float, detail), .initial = Initially(1.0f), .compared = true, .key = 1006,
     .label = "Filter",
     .help = "How strongly the noise settles to its mean where a sample covers much of it.",
     .limits = {0, 100000, 1}},
    {MEMBER(Float, speed), .initial = Initially(0.0f), .compared = true, .key = 1005,
     .label = "Speed", .help = "How fast the noise changes with time.", .limits = {0, 100, 0.1}},
    {MEMBER(Float, contrast), .initial = Initially(0.0f), .compared = true, .key = 1007,
     .label = "Contrast", .help = "Below 0 flattens towards the middle, above 0 steepens.",
     .limits = {-1, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, brightness), .initial = Initially(0.0f), .compared = true, .key = 1008,
     .label = "Brightness", .help = "Added to the value before the contrast.",
     .limits = {-1, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, lowClip), .initial = Initially(0.0f), .compared = true, .key = 1009,
     .label = "Low Clip", .help = "Noise values up to here show the first colour.",
     .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, highClip), .initial = Initially(1.0f), .compared = true, .key = 1010,
     .label = "High Clip", .help = "Noise values from here on show the second colour.",
     .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, cycles), .initial = Initially(0.0f), .compared = true, .key = 1011,
     .label = "Cycles", .help = "How often the value runs through the colours and back.",
     .limits = {0, 100, 0.1}},
    {MEMBER(Vector, colorLow), .initial = Initially(0.0f, 0.0f, 0.0f), .compared = true,
     .key = 1012, .label = "Color 1", .help = "The colour of the lowest values.",
     .unit = Unit::Colour},
    {MEMBER(Vector, colorHigh), .initial = Initially(1.0f, 1.0f, 1.0f), .compared = true,
     .key = 1013, .label = "Color 2", .help = "The colour of the highest values.",
     .unit = Unit::Colour},
    {MEMBER(Bool, absolute), .initial = Initially(0), .compared = true, .key = 1014,
     .describeAs = DescribeInteger, .label = "Absolute",
     .help = "Folds the noise at its middle, which draws sharp creases."},
    {MEMBER(Bool, previewTile), .initial = Initially(0), .compared = true},
    {MEMBER(Int, reserved21), .initial = Initially(0)},
    {MEMBER(Int, previewDirty), .initial = Initially(1)},
    {MEMBER(Bool, previewAuto), .initial = Initially(1), .compared = true},
    {MEMBER(Int, nested)},
    {MEMBER(Int, previewState), .initial = Initially(-1)},
    {MEMBER(Float, bumpDetail), .initial = Initially(1.0f), .compared = true, .key = 1015,
     .label = "Bump Detail", .help = "How far apart the samples of a bump lie.",
     .limits = {0, kUnbounded, 1}},
};

// The order is that of the file, where speed stands before detail. A marker of 20000730 stands
// alone with two values that no other version has.
constexpr std::int32_t kMarker = 20000732;
constexpr StoredItem kStored[] = {
    Stored(PLACE(Int, previewObject)),
    Stored(PLACE(Int, noiseType)),
    Stored(PLACE(Float, octaves)),
    Stored(PLACE(Float, scale)),
    Stored(PLACE(Float, scaleU)),
    Stored(PLACE(Float, scaleV)),
    Stored(PLACE(Float, speed)),
    Stored(PLACE(Float, detail)),
    Stored(PLACE(Float, contrast)),
    Stored(PLACE(Float, brightness)),
    Stored(PLACE(Float, lowClip)),
    Stored(PLACE(Float, highClip)),
    Stored(PLACE(Float, cycles)),
    Stored(PLACE(Vector, colorLow)),
    Stored(PLACE(Vector, colorHigh)),
    Stored(PLACE(Bool, absolute)),
    Stored(PLACE(Bool, previewTile)),
    Stored(PLACE(Bool, previewAuto)),
    StoredSince(20000729, PLACE(Int, nested)),
    StoredOnlyIn(20000730, ValueKind::Float),
    StoredOnlyIn(20000730, ValueKind::Float),
    StoredSince(20000731, PLACE(Float, bumpDetail)),
    StoredSince(20000732, PLACE(Int, previewState)),
};

#undef AT
#undef PLACE
#undef MEMBER

// Noise units across the unit square of texture coordinates, at a scale of 1.
constexpr float kUnitsPerTile = 12.8f;

}  // namespace

constexpr ShaderTable kNoise2DTable = {
    .pluginId = PluginIdNoise2D,
    .name = "2D Noise",
    .category = ShaderCategory::Generator,
    .summary = "Thirty noises over a surface's texture coordinates, mixed from two colours.",
    .infoWord = 0x02200002,
    .blockSize = sizeof(Noise2DBlock),
    .nestedOffset = offsetof(Noise2DBlock, nested),
    .fields = kFields,
    .marker = kMarker,
    .stored = kStored,
    .slotStride = SlotStrideNoise,
    .slotFailureText = "Couldn't Allocate 2D Noise Globals",
};

namespace {

std::int32_t InitRender(ShaderInstance* instance, const RenderInit* init) noexcept {
  const auto* block = BlockOf<Noise2DBlock>(instance);
  if (block == nullptr || init->render == nullptr) return 0;
  const double step = NoiseBumpStep(block->noiseType, block->octaves);
  MakeNoiseSlots(kNoise2DTable, instance, init, step * block->bumpDetail);
  return 0;
}

// What one call of Output works on.
struct Sampling {
  const Noise2DBlock& block;
  float time;
  float width;  // of the filter, in noise units

  double Value(double x, double y) const noexcept {
    const double noise =
        NoiseCatalogue2D(block.noiseType, static_cast<float>(x), static_cast<float>(y), 0,
                         block.octaves, time, block.absolute, width, block.detail);
    return ShapeNoise(
        noise, {block.contrast, block.brightness, block.lowClip, block.highClip, block.cycles},
        NegativeCycles::Off);
  }
};

float FilterWidth(const Noise2DBlock& block, const ChannelSample& sample) noexcept {
  const double d = static_cast<double>(block.scale) * 10;
  double width = std::fabs(d * sample.delta.x) + std::fabs(d * sample.delta.y) +
                 std::fabs(d * sample.delta.z) +
                 static_cast<double>(sample.blurScale) * sample.blurOffset;
  if (sample.render != nullptr) {
    width *= sample.render->filterScale;
    if (sample.render->filteringOn == 0) width = 0;
  }
  return static_cast<float>(width);
}

// Bends the normal by the slope between four neighbours. Behind minus ahead in u, ahead minus
// behind in v: the unlike signs are deliberate.
void BendNormal(const Sampling& sampling, double x, double y, double step,
                RenderContext& render) noexcept {
  constexpr double kSlope = 3.5;
  const double a = sampling.Value(x + step, y);
  const double b = sampling.Value(x - step, y);
  const double c = sampling.Value(x, y + step);
  const double d = sampling.Value(x, y - step);
  TiltNormal(render, (b - a) * kSlope, (c - d) * kSlope);
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Noise2DBlock>(instance);
  if (block == nullptr) return;

  RenderContext* render = sample->render;
  const NoiseSlot* slots = nullptr;
  const NoiseSlot* own = nullptr;
  if (instance->slots != nullptr && render != nullptr) {
    slots = SlotAt<NoiseSlot>(instance->slots, 0);
    own = slots + hostCpuIndex(render);
  }
  const bool nested =
      block->nested != 0 && own != nullptr && own->head.outerChannel != ChannelStandalone;
  const Vector point = nested ? Add(own->head.uvwPoint, own->head.uvwOffset) : sample->uvw;

  const double perTile = static_cast<double>(kUnitsPerTile) * block->scale;
  double x = point.x * perTile * block->scaleU;
  double y = point.y * perTile * block->scaleV;
  const Sampling sampling = {*block, block->speed * sample->time, FilterWidth(*block, *sample)};

  if (instance->channel == ChannelBump && render != nullptr) {
    // Without slots there is no step: only a failed InitRender leads here, and the normal stays.
    if (slots != nullptr) BendNormal(sampling, x, y, slots->bumpStep, *render);
    return;
  }
  if (nested) {
    const double step = slots->bumpStep;
    switch (own->head.tap) {
      case TapPlusU:
        x += step;
        break;
      case TapMinusU:
        x -= step;
        break;
      case TapPlusV:
        y += step;
        break;
      case TapMinusV:
        y -= step;
        break;
      default:
        break;
    }
  }
  *result = Lerp(block->colorLow, block->colorHigh, static_cast<float>(sampling.Value(x, y)));
}

}  // namespace

void Fill2DNoiseRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kNoise2DTable>::Fill(record);
  record->Edit = Edit2DNoise;
  record->InitRender = InitRender;
  record->Output = Output;
}

}  // namespace sorvanix
