// The thirty noise types by name, as materials, dialogs and the manual show them.
#pragma once

#include <iterator>

#include "module/shell/shader_table.h"

namespace sorvanix {

/// One choice for each number of the catalogue, in order.
inline constexpr Choice kNoiseTypeChoices[] = {
    {0, "AxisWarpType", "Axis Warp"},
    {1, "DualScaleBandType", "Dual Scale Band"},
    {2, "SquaredFractalType", "Squared Fractal"},
    {3, "HashBlockType", "Hash Block"},
    {4, "BiasedSumType", "Biased Sum"},
    {5, "PeakMagnitudeType", "Peak Magnitude"},
    {6, "TurbulentUnitSumType", "Turbulent Unit Sum"},
    {7, "SmoothFractalType", "Smooth Fractal"},
    {8, "InvertedPeakType", "Inverted Peak"},
    {9, "HardBandType", "Hard Band"},
    {10, "UnitBlockType", "Unit Block"},
    {11, "TurbulentThresholdType", "Turbulent Threshold"},
    {12, "PlainUnitType", "Plain Unit"},
    {13, "WarpedMagnitudeType", "Warped Magnitude"},
    {14, "RidgedBandType", "Ridged Band"},
    {15, "RidgeProductType", "Ridge Product"},
    {16, "DifferenceOctaveType", "Difference Octave"},
    {17, "WhiteRandomType", "White Random", true},
    {18, "SparsePeakType", "Sparse Peak"},
    {19, "SoftBandType", "Soft Band"},
    {20, "RemappedTurbulenceType", "Remapped Turbulence"},
    {21, "OffsetWarpType", "Offset Warp"},
    {22, "BandTurbulenceType", "Band Turbulence"},
    {23, "CellValueType", "Cell Value"},
    {24, "FractalCellType", "Fractal Cell"},
    {25, "SparseConvolutionType", "Sparse Convolution"},
    {26, "CellNearestType", "Cell Nearest"},
    {27, "CellSecondType", "Cell Second"},
    {28, "CellEdgeType", "Cell Edge"},
    {29, "RidgedPeakType", "Ridged Peak"},
};
static_assert(std::size(kNoiseTypeChoices) == 30);

}  // namespace sorvanix
