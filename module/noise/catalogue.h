// The thirty noise types: one function that turns a type number and a sample point into one value,
// in a planar and a solid form.
//
// A type is a recipe of host noise and lattice noise with remaps and shaping. Each carries its own
// answer to aliasing: as the footprint of a sample grows, its octave count is cut, or its value
// fades to the type's mean, so that a distant surface settles on grey instead of shimmering.
#pragma once

#include <cstdint>

namespace sorvanix {

/// The numbers are stored in documents.
enum NoiseType : std::int32_t {
  AxisWarpType = 0,
  DualScaleBandType = 1,
  SquaredFractalType = 2,
  HashBlockType = 3,
  BiasedSumType = 4,
  PeakMagnitudeType = 5,
  TurbulentUnitSumType = 6,
  SmoothFractalType = 7,
  InvertedPeakType = 8,
  HardBandType = 9,
  UnitBlockType = 10,
  TurbulentThresholdType = 11,
  PlainUnitType = 12,
  WarpedMagnitudeType = 13,
  RidgedBandType = 14,
  RidgeProductType = 15,
  DifferenceOctaveType = 16,
  WhiteRandomType = 17,
  SparsePeakType = 18,
  SoftBandType = 19,
  RemappedTurbulenceType = 20,
  OffsetWarpType = 21,
  BandTurbulenceType = 22,
  CellValueType = 23,
  FractalCellType = 24,
  SparseConvolutionType = 25,
  CellNearestType = 26,
  CellSecondType = 27,
  CellEdgeType = 28,
  RidgedPeakType = 29,
};
inline constexpr std::int32_t kNoiseTypeCount = 30;

/// The value of a noise type at a point, normally in 0 to 1; 0.5 for a number off the table.
///
/// `octaves` may be fractional. `absolute` other than 0 asks for the absolute form. `footprint` is
/// the width of the sample in noise space, 0 for none; `detail` multiplies it.
/// Safe on several threads at once; a pure function of its arguments but for WhiteRandomType.
///
/// The planar form: its cells, warps and fractals lie in the plane of x and y, and
/// SmoothFractalType and SparseConvolutionType take time as the third coordinate. The other types
/// read z as well.
float NoiseCatalogue2D(std::int32_t noiseType, float x, float y, float z, float octaves, float time,
                       std::int32_t absolute, float footprint, float detail) noexcept;

/// The solid form: as the planar one, with z as a coordinate and time as time in every type.
float NoiseCatalogue3D(std::int32_t noiseType, float x, float y, float z, float octaves, float time,
                       std::int32_t absolute, float footprint, float detail) noexcept;

}  // namespace sorvanix
