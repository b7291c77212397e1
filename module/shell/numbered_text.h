// Texts of table rows with a number in them.
#pragma once

#include <algorithm>
#include <cstddef>

namespace sorvanix {

/// A text as a template argument.
template <std::size_t size>
struct TextPattern {
  char chars[size] = {};
  consteval TextPattern(const char (&text)[size]) { std::copy_n(text, size, chars); }
};

namespace detail {

template <TextPattern pattern, int number>
inline constexpr auto kNumbered = [] {
  static_assert(number >= 0 && number <= 9);
  TextPattern text = pattern;
  for (char& c : text.chars) {
    if (c == '#') c = static_cast<char>('0' + number);
  }
  return text;
}();

}  // namespace detail

/// The pattern with every # replaced by the number: Numbered<"Layer #", 2>() is "Layer 2".
template <TextPattern pattern, int number>
constexpr const char* Numbered() {
  return detail::kNumbered<pattern, number>.chars;
}

}  // namespace sorvanix
