// Noise on the integer lattice: cell hashes and sparse convolution noise.
//
// Sparse convolution: J. P. Lewis, Algorithms for Solid Noise Synthesis, SIGGRAPH 1989, in the form
// of D. S. Ebert et al., Texturing and Modeling: A Procedural Approach.
#pragma once

#include <cstdint>

namespace sorvanix {

/// The cell that holds a coordinate: its floor, reduced to the low 32 bits.
/// NaN and infinities give INT32_MIN.
std::int32_t CellNumber(double coordinate) noexcept;

/// A value in [0, 1] that is constant over each unit cell. The hash runs from the last coordinate
/// inward to the first and repeats after 256 cells.
float HashCell1(float x) noexcept;
float HashCell2(float x, float y) noexcept;
float HashCell4(float x, float y, float z, float w) noexcept;

/// The weight of an impulse at a squared distance: the Catmull-Rom cubic, 1 at 0, negative beyond a
/// radius of 1, 0 from a radius of 2 on; read from a table without interpolation. 0 for NaN and for
/// negative arguments.
float ImpulseFilter(float distanceSquared) noexcept;

/// Sparse convolution noise of three coordinates. All impulses are positive, so that the result is
/// mostly positive; the filter's negative lobe can take it below 0.
float SparseConvolution3(float x, float y, float z) noexcept;

/// Sparse convolution noise of four coordinates, with signed impulses: around 0.
float SparseConvolution4(float x, float y, float z, float w) noexcept;

}  // namespace sorvanix
