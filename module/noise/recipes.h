// The recipes of the noise types. Each answers the value of its type before the common fade and
// fold of the catalogue; a recipe with a fade of its own applies it here.
//
// The families share files: recipes_cell.cpp, recipes_turbulence.cpp, recipes_octave.cpp and
// recipes_fractal.cpp. Their octave loops differ in where they start and stop, on purpose.
#pragma once

#include "module/noise/query.h"

namespace sorvanix {

using NoiseRecipe = double (*)(const NoiseQuery& query) noexcept;

// Single look-ups: unit noise, hashed cells, cellular and sparse convolution noise, white noise.
double AxisWarp(const NoiseQuery& query) noexcept;
double HashBlock(const NoiseQuery& query) noexcept;
double UnitBlock(const NoiseQuery& query) noexcept;
double PlainUnit(const NoiseQuery& query) noexcept;
double WhiteRandom(const NoiseQuery& query) noexcept;
double OffsetWarpPlanar(const NoiseQuery& query) noexcept;
double OffsetWarpSolid(const NoiseQuery& query) noexcept;
double CellValuePlanar(const NoiseQuery& query) noexcept;
double CellValueSolid(const NoiseQuery& query) noexcept;
double SparseConvolutionPlanar(const NoiseQuery& query) noexcept;
double SparseConvolutionSolid(const NoiseQuery& query) noexcept;
double CellNearestPlanar(const NoiseQuery& query) noexcept;
double CellNearestSolid(const NoiseQuery& query) noexcept;
double CellSecondPlanar(const NoiseQuery& query) noexcept;
double CellSecondSolid(const NoiseQuery& query) noexcept;
double CellEdgePlanar(const NoiseQuery& query) noexcept;
double CellEdgeSolid(const NoiseQuery& query) noexcept;

// Turbulence, remapped or displacing something.
double DualScaleBand(const NoiseQuery& query) noexcept;
double HardBand(const NoiseQuery& query) noexcept;
double TurbulentThreshold(const NoiseQuery& query) noexcept;
double WarpedMagnitude(const NoiseQuery& query) noexcept;
double SoftBand(const NoiseQuery& query) noexcept;
double RemappedTurbulence(const NoiseQuery& query) noexcept;
double BandTurbulence(const NoiseQuery& query) noexcept;

// Loops over shifted copies of one noise: sums, peaks, products, differences.
double BiasedSum(const NoiseQuery& query) noexcept;
double PeakMagnitude(const NoiseQuery& query) noexcept;
double TurbulentUnitSum(const NoiseQuery& query) noexcept;
double InvertedPeak(const NoiseQuery& query) noexcept;
double RidgeProduct(const NoiseQuery& query) noexcept;
double DifferenceOctave(const NoiseQuery& query) noexcept;
double SparsePeak(const NoiseQuery& query) noexcept;

// The host's fractals.
double SquaredFractal(const NoiseQuery& query) noexcept;
double SmoothFractalPlanar(const NoiseQuery& query) noexcept;
double SmoothFractalSolid(const NoiseQuery& query) noexcept;
double RidgedBand(const NoiseQuery& query) noexcept;
double FractalCellPlanar(const NoiseQuery& query) noexcept;
double FractalCellSolid(const NoiseQuery& query) noexcept;
double RidgedPeak(const NoiseQuery& query) noexcept;

}  // namespace sorvanix
