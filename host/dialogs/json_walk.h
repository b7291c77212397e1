// A walk through JSON that is to have a certain form: what is asked for is there, or the first
// problem is kept with its place, and answers are neutral from then on.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "host/services/json.h"

namespace sorvanix::host {

/// A value and the way to it.
struct JsonPlace {
  const Json* json;
  std::string pointer;  ///< RFC 6901
};

class JsonWalk {
 public:
  /// The first problem stays. Always false, for `return walk.Fail(...)`.
  bool Fail(const JsonPlace& place, std::string message);
  bool Failed() const noexcept { return error_.has_value(); }
  /// The first problem; only after Failed().
  const JsonError& Error() const noexcept { return *error_; }

  /// What stands under a name; nothing, and no problem, when it is absent.
  std::optional<JsonPlace> Find(const JsonPlace& object, std::string_view name) const;
  /// The same where it must be there.
  std::optional<JsonPlace> Require(const JsonPlace& object, std::string_view name);
  /// The elements of an array; null when it is none.
  const Json::Array* Elements(const JsonPlace& place);
  static JsonPlace Element(const JsonPlace& array, std::size_t index);

  /// Holds that the value is an object whose names are all among the known ones.
  bool HasOnly(const JsonPlace& place, std::initializer_list<std::string_view> known);

  // A value of its type, or a neutral one with the problem told.
  std::string Text(const JsonPlace& place);
  bool Truth(const JsonPlace& place);
  std::int32_t Integer(const JsonPlace& place, std::int32_t least = INT32_MIN,
                       std::int32_t most = INT32_MAX);

  // The same for what stands under a name that must be there.
  std::string TextUnder(const JsonPlace& object, std::string_view name);
  std::int32_t IntegerUnder(const JsonPlace& object, std::string_view name,
                            std::int32_t least = INT32_MIN, std::int32_t most = INT32_MAX);

  // The same for what may be absent: then the answer is the neutral or the given value.
  std::string OptionalText(const JsonPlace& object, std::string_view name);
  std::int32_t OptionalInteger(const JsonPlace& object, std::string_view name,
                               std::int32_t otherwise);

 private:
  std::optional<JsonError> error_;
};

/// "FILE:3:14: /events/2/set: expected a whole number, found a text", of a problem in a text.
std::string DescribeJsonError(std::string_view file, std::string_view text, const JsonError& error);

}  // namespace sorvanix::host
