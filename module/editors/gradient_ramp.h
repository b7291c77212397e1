// A ramp where it lies in a block that is being edited: read as a whole, written back word by word.
//
// A preview may read the block on its own thread at any time. It takes a word-wise snapshot and
// lives with old and new values mixed, so every word is stored by itself, as a relaxed atomic.
#pragma once

#include "module/kit/ramp.h"

namespace sorvanix {

/// The five fields of a ramp in a block. Null pointers hold an empty ramp that takes nothing.
struct RampInBlock {
  RampKnot* knots = nullptr;
  std::int32_t* order = nullptr;
  std::int32_t* interpolation = nullptr;
  std::int32_t* count = nullptr;
  std::int32_t* selected = nullptr;

  /// The ramp with a count of 0..RampMaxKnots and an order that names each live knot once.
  Ramp Load() const noexcept;

  /// Stores all of its words.
  void Store(const Ramp& ramp) const noexcept;
};

}  // namespace sorvanix
