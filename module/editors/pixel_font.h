// Letters of five by seven dots, for text in pictures: the host draws none.
#pragma once

#include <cstdint>

namespace sorvanix {

inline constexpr std::int32_t kGlyphWidth = 5;
inline constexpr std::int32_t kGlyphHeight = 7;

/// Whether a letter has a dot at a place of its field. Letters, digits and the signs of plain
/// sentences are known; every other character is blank.
bool HasDot(char letter, std::int32_t column, std::int32_t row) noexcept;

}  // namespace sorvanix
