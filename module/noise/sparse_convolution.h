// Sparse convolution noise: a sum of filter kernels around impulses scattered over the lattice,
// three to a cell.
//
// J. P. Lewis, Algorithms for Solid Noise Synthesis, SIGGRAPH 1989, in the form of D. S. Ebert et
// al., Texturing and Modeling: A Procedural Approach.
#pragma once

namespace sorvanix {

/// The weight of an impulse at a squared distance: the Catmull-Rom cubic, 1 at 0, negative beyond a
/// radius of 1, 0 from a radius of 2 on; read from a table of 401 entries without interpolation. 0
/// for NaN and for what would be an entry before the first.
float ImpulseFilter(float distanceSquared) noexcept;

/// Noise of three coordinates. All impulses are positive, but the filter's negative lobe takes the
/// result below 0 as often as not.
float SparseConvolution3(float x, float y, float z) noexcept;

/// Noise of four coordinates with signed impulses: around 0.
float SparseConvolution4(float x, float y, float z, float w) noexcept;

}  // namespace sorvanix
