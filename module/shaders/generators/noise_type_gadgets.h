// Which of a noise shader's controls the noise types listen to.
#pragma once

#include <algorithm>
#include <cstdint>

namespace sorvanix {

/// Types of one layer, or of none: the number of octaves changes nothing.
inline bool NoiseHasOctaves(std::int32_t type) noexcept {
  constexpr std::int32_t kWithout[] = {0, 3, 10, 12, 17, 21, 23, 25, 26, 27, 28};
  return std::find(std::begin(kWithout), std::end(kWithout), type) == std::end(kWithout);
}

/// Types of flat cells and dots: their values are no wave that could be cycled or folded.
inline bool NoiseIsWave(std::int32_t type) noexcept {
  constexpr std::int32_t kNot[] = {3, 10, 17, 18, 23};
  return std::find(std::begin(kNot), std::end(kNot), type) == std::end(kNot);
}

}  // namespace sorvanix
