// The integer lattice under the noises: cell numbers, and hashes that are constant over a cell.
//
// Hashing by a permutation table: K. Perlin in D. S. Ebert et al., Texturing and Modeling: A
// Procedural Approach.
#pragma once

#include <cstdint>

#include "module/noise/tables.h"

namespace sorvanix {

/// The cell that holds a coordinate: its floor, reduced to the low 32 bits.
/// NaN and infinities give INT32_MIN.
std::int32_t CellNumber(double coordinate) noexcept;

/// Folds one more cell number into a hash, which starts from 0. Both count modulo 256, so that
/// negative cell numbers wrap.
inline std::uint32_t HashStep(std::uint32_t hash, std::uint32_t cell) noexcept {
  return NoisePermutation[(hash + cell) & 255];
}

/// A value in [0, 1] that is constant over each unit cell and repeats after 256 cells. The hash
/// runs from the last coordinate inward to the first.
float HashCell1(float x) noexcept;
float HashCell2(float x, float y) noexcept;
float HashCell4(float x, float y, float z, float w) noexcept;

}  // namespace sorvanix
