// JSON as plain values that remember where in the text they stood: read and written here alone.
//
// RFC 8259. A duplicate name in an object is an error, and so is nesting beyond 256 levels. Texts
// are UTF-8. The order of an object's names is kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

namespace sorvanix::host {

struct Json;

/// One name of an object. A template, so that Json and its members can be made of one another.
template <class Value>
struct JsonMemberOf {
  std::string name;
  Value value;
};
using JsonMember = JsonMemberOf<Json>;

struct Json {
  using Array = std::vector<Json>;
  using Object = std::vector<JsonMember>;
  /// Numbers without fraction and exponent that fit are integers, all others doubles.
  using Value =
      std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Array, Object>;

  Json() = default;
  Json(Value content) : value(std::move(content)) {}  // NOLINT: a value is its own description

  /// The value of a name; null when this is no object or has no such name.
  const Json* Find(std::string_view name) const noexcept;

  Value value = nullptr;
  std::size_t offset = 0;  ///< of its first byte in the text that it was read from
};

/// The pointer to what stands under a name in what `pointer` points to: RFC 6901. Of a name that is
/// longer than any that is known here, an excerpt.
std::string PointerBelow(const std::string& pointer, std::string_view name);

/// A text as a message may quote it: what is beyond some 60 characters is left out.
std::string Excerpt(std::string_view text);

/// What is wrong with a text, and where.
struct JsonError {
  std::string message;
  std::size_t offset = 0;
  std::string pointer = {};  ///< of what was being read; empty for the whole
};

tl::expected<Json, JsonError> ParseJson(std::string_view text);

/// As text, with this many spaces for each level; all on one line for -1. Bytes that are no UTF-8
/// become U+FFFD, numbers that JSON cannot say become null.
std::string WriteJson(const Json& json, int indent = 2);

}  // namespace sorvanix::host
