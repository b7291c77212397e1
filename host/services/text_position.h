// Places in a text as people count them: lines and columns from 1.
#pragma once

#include <cstddef>
#include <string_view>

namespace sorvanix::host {

/// Columns are characters, not bytes, of a text in UTF-8; a byte order mark at its beginning counts
/// nothing.
struct TextPosition {
  std::size_t line = 1, column = 1;

  friend bool operator==(const TextPosition&, const TextPosition&) = default;
};

/// Walks through a text once, for many places in it.
class TextWalk {
 public:
  explicit TextWalk(std::string_view text) noexcept;

  /// The position of a byte. Offsets must not fall from call to call; beyond the end is the end.
  TextPosition To(std::size_t offset) noexcept;

 private:
  std::string_view text_;
  std::size_t offset_ = 0;
  TextPosition position_;
};

/// The same for one place.
TextPosition PositionIn(std::string_view text, std::size_t offset) noexcept;

}  // namespace sorvanix::host
