// The constant tables of the lattice noises, and the generator that all shaders share.
//
// Impulse tables for sparse convolution noise: J. P. Lewis, Algorithms for Solid Noise Synthesis,
// SIGGRAPH 1989; permutation and layout: D. S. Ebert et al., Texturing and Modeling: A Procedural
// Approach.
#pragma once

#include <array>
#include <cstdint>

#include "module/noise/seeded_generator.h"

namespace sorvanix {

/// The seed of every table and of the shared generator.
inline constexpr std::uint32_t kNoiseSeed = 665;

/// A permutation of 0 to 255: all lattice hashing goes through it.
extern const std::array<std::uint8_t, 256> NoisePermutation;

/// Values in [-1, 1) for the cell hashes. Zero until BuildNoiseTables.
extern std::array<float, 256> NoiseValueTable;

/// One impulse of a sparse convolution: its position inside a unit cell, each coordinate in [0, 1],
/// then an amplitude in [-1, 1). A noise over n coordinates takes field n as the amplitude, so that
/// three dimensions read a coordinate, which is never negative, where four read a signed number.
struct NoiseImpulse {
  float field[5];
};
static_assert(sizeof(NoiseImpulse) == 20);

/// Impulses by hash. Zero until BuildNoiseTables.
extern std::array<NoiseImpulse, 256> NoiseImpulseTable;

/// The generator behind white noise and everything else that need not repeat. Render threads
/// advance it without a lock.
extern SeededGenerator sharedGenerator;

/// Fills both tables. Each starts a generator of its own from `seed`, so that the two streams
/// overlap; noise images depend on that. Called at start, before any shader runs.
void BuildNoiseTables(std::uint32_t seed) noexcept;

}  // namespace sorvanix
