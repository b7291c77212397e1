#include "host/services/text_position.h"

#include <algorithm>

namespace sorvanix::host {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Of a letter of several bytes, which counts once.
bool IsFollowing(char c) noexcept { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

TextWalk::TextWalk(std::string_view text) noexcept : text_(text) {
  if (text.starts_with(kByteOrderMark)) offset_ = kByteOrderMark.size();
}

TextPosition TextWalk::To(std::size_t offset) noexcept {
  for (const std::size_t end = std::min(offset, text_.size()); offset_ < end; ++offset_) {
    if (text_[offset_] == '\n') {
      ++position_.line;
      position_.column = 1;
    } else if (!IsFollowing(text_[offset_])) {
      ++position_.column;
    }
  }
  return position_;
}

TextPosition PositionIn(std::string_view text, std::size_t offset) noexcept {
  return TextWalk(text).To(offset);
}

}  // namespace sorvanix::host
