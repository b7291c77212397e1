// What a filter keeps of its inputs in each of its slots, and how it hands a footprint to them.
//
// A slot has the same size on every build: whether an input takes part shows in its stride.
#pragma once

#include <sorvanix/footprint.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "module/shell/nesting.h"
#include "module/shell/slot_address.h"

namespace sorvanix {

/// How far apart the samples of a bump lie in texture coordinates.
struct BumpStep {
  float u;
  float v;
};

/// The records of all inputs, laid out by kind and not by input.
template <std::size_t count>
struct InputRecords {
  SlotAddress innerSlots[count];
  /// Above 0 the size in bytes of one slot of an aware input. 0: the input takes no part.
  /// kBitmapMissing: there is no shader that could, and no bitmap either.
  std::int32_t innerStride[count];
  BumpStep step[count];

  static constexpr std::int32_t kBitmapMissing = -1;

  /// Whether footprints are written into the input's slots.
  bool Aware(std::size_t input) const noexcept { return innerStride[input] > 0; }

  /// The slot of an aware input for one CPU; null for other inputs.
  FootprintBlock* InnerSlot(std::size_t input, std::int32_t cpu) const noexcept {
    if (!Aware(input)) return nullptr;
    char* first = static_cast<char*>(innerSlots[input].Get());
    return reinterpret_cast<FootprintBlock*>(first + std::ptrdiff_t{cpu} * innerStride[input]);
  }
};

/// The slot of a filter without further values.
template <std::size_t count>
struct InputSlot {
  FootprintBlock head;
  InputRecords<count> inputs;
};
static_assert(sizeof(InputSlot<1>) == SlotStrideFilter);

// Filters look at `outerChannel` of the first slot on every CPU, while the first CPU's enclosing
// filter may be rewriting that slot. It alone is therefore read and written as an atomic word;
// everything else in a slot belongs to one CPU.

inline std::int32_t OuterChannelOf(FootprintBlock& slot) noexcept {
  return std::atomic_ref(slot.outerChannel).load(std::memory_order_relaxed);
}

/// Copies a whole block into a slot.
inline void PutFootprint(const FootprintBlock& block, FootprintBlock& slot) noexcept {
  constexpr std::size_t kBefore = offsetof(FootprintBlock, outerChannel);
  static_assert(kBefore + sizeof(std::int32_t) == sizeof(FootprintBlock));
  std::memcpy(&slot, &block, kBefore);
  std::atomic_ref(slot.outerChannel).store(block.outerChannel, std::memory_order_relaxed);
}

}  // namespace sorvanix
