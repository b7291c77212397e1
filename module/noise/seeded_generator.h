// A linear congruential random generator whose sequence every noise image depends on.
//
// The multiplier 69069 is Marsaglia's, see D. E. Knuth, The Art of Computer Programming, volume 2,
// section 3.3.4, table 1.
#pragma once

#include <atomic>
#include <cstdint>

namespace sorvanix {

/// Random numbers from a 31-bit state. A default-constructed one is seeded with 100.
///
/// Several threads may draw from one object: the state goes through relaxed atomic accesses, which
/// cost no more than plain ones. Two threads may then draw the same number, which is accepted; a
/// lock or an atomic exchange on the per-sample path is not.
struct SeededGenerator {
  std::uint32_t state = 100;
  std::uint32_t reserved = 0;  // written and never read; it stays in the layout

  constexpr SeededGenerator() noexcept = default;
  explicit constexpr SeededGenerator(std::uint32_t seed) noexcept : state(seed) {}

  void Reset(std::uint32_t seed) noexcept {
    std::atomic_ref(state).store(seed, std::memory_order_relaxed);
    reserved = 0;
  }

  /// The next number in [0, 1), a multiple of 2^-31. Narrowed to float it may be exactly 1.
  double Next01() noexcept {
    const std::atomic_ref shared(state);
    const std::uint32_t next =
        ((shared.load(std::memory_order_relaxed) + 1) * 69069u) & 0x7FFFFFFFu;
    shared.store(next, std::memory_order_relaxed);
    return static_cast<double>(next) * 0x1p-31;
  }

  /// The next number in [-1, 1).
  double NextSigned() noexcept { return 2.0 * Next01() - 1.0; }
};

static_assert(sizeof(SeededGenerator) == 8);

}  // namespace sorvanix
