// The table of noise types, and the fade and fold that follow every recipe.
#include "module/noise/catalogue.h"

#include <array>

#include "module/noise/recipes.h"

namespace sorvanix {

namespace {

/// One type: its recipe, and the common steps after it.
struct Entry {
  NoiseRecipe recipe;
  float mean;  // what the value fades to for wide footprints, or kNoFade
  bool folds;  // whether `absolute` folds the value around 0.5
};
using Catalogue = std::array<Entry, kNoiseTypeCount>;

/// The recipe filters by its octave count, fades by itself, or does neither.
constexpr float kNoFade = -1;

constexpr Catalogue kPlanar = {{
    {AxisWarp, 0.5f, true},
    {DualScaleBand, kNoFade, true},
    {SquaredFractal, kNoFade, true},
    {HashBlock, 0.5f, false},
    {BiasedSum, kNoFade, true},
    {PeakMagnitude, kNoFade, true},
    {TurbulentUnitSum, kNoFade, true},
    {SmoothFractalPlanar, kNoFade, true},
    {InvertedPeak, kNoFade, true},
    {HardBand, kNoFade, true},
    {UnitBlock, 0.5f, false},
    {TurbulentThreshold, 0.5f, true},
    {PlainUnit, 0.5f, true},
    {WarpedMagnitude, kNoFade, false},  // `absolute` went into the turbulence
    {RidgedBand, kNoFade, true},
    {RidgeProduct, kNoFade, true},
    {DifferenceOctave, kNoFade, true},
    {WhiteRandom, kNoFade, false},
    {SparsePeak, kNoFade, false},
    {SoftBand, kNoFade, true},
    {RemappedTurbulence, kNoFade, false},
    {OffsetWarpPlanar, 0.5f, true},
    {BandTurbulence, 0.5f, true},
    {CellValuePlanar, 0.5f, false},
    {FractalCellPlanar, 0.5f, true},
    {SparseConvolutionPlanar, 0.5f, true},
    {CellNearestPlanar, 0.5f, true},
    {CellSecondPlanar, 0.75f, true},
    {CellEdgePlanar, 0.25f, true},
    {RidgedPeak, kNoFade, true},
}};

/// The planar catalogue with other recipes for the eight types that lie in a plane there.
constexpr Catalogue kSolid = [] {
  Catalogue solid = kPlanar;
  solid[SmoothFractalType].recipe = SmoothFractalSolid;
  solid[OffsetWarpType].recipe = OffsetWarpSolid;
  solid[CellValueType].recipe = CellValueSolid;
  solid[FractalCellType].recipe = FractalCellSolid;
  solid[SparseConvolutionType].recipe = SparseConvolutionSolid;
  solid[CellNearestType].recipe = CellNearestSolid;
  solid[CellSecondType].recipe = CellSecondSolid;
  solid[CellEdgeType].recipe = CellEdgeSolid;
  return solid;
}();

float Evaluate(const Catalogue& catalogue, std::int32_t noiseType,
               const NoiseQuery& query) noexcept {
  if (noiseType < 0 || noiseType >= kNoiseTypeCount) return 0.5f;
  const Entry& entry = catalogue[static_cast<std::size_t>(noiseType)];
  double value = entry.recipe(query);
  if (entry.mean != kNoFade && query.filtered()) value = FadeTo(query, value, entry.mean);
  if (entry.folds && query.absolute != 0) value = Fold(value);
  return static_cast<float>(value);
}

}  // namespace

float NoiseCatalogue2D(std::int32_t noiseType, float x, float y, float z, float octaves, float time,
                       std::int32_t absolute, float footprint, float detail) noexcept {
  return Evaluate(kPlanar, noiseType, {x, y, z, octaves, time, absolute, footprint, detail});
}

float NoiseCatalogue3D(std::int32_t noiseType, float x, float y, float z, float octaves, float time,
                       std::int32_t absolute, float footprint, float detail) noexcept {
  return Evaluate(kSolid, noiseType, {x, y, z, octaves, time, absolute, footprint, detail});
}

}  // namespace sorvanix
