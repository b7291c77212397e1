#include "host/dialogs/json_walk.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/channels/material_value.h"
#include "host/services/text_position.h"

namespace sorvanix::host {

namespace {

std::optional<double> WholeNumberIn(const Json& json) {
  if (const auto* whole = std::get_if<std::int64_t>(&json.value)) {
    return static_cast<double>(*whole);
  }
  // 5.0 is a whole number too, as it is to JSON schemas.
  const auto* real = std::get_if<double>(&json.value);
  if (real != nullptr && *real == std::floor(*real)) return *real;
  return std::nullopt;
}

}  // namespace

bool JsonWalk::Fail(const JsonPlace& place, std::string message) {
  if (!error_) error_ = JsonError{std::move(message), place.json->offset, place.pointer};
  return false;
}

std::optional<JsonPlace> JsonWalk::Find(const JsonPlace& object, std::string_view name) const {
  const Json* found = object.json->Find(name);
  if (found == nullptr) return std::nullopt;
  return JsonPlace{found, PointerBelow(object.pointer, name)};
}

std::optional<JsonPlace> JsonWalk::Require(const JsonPlace& object, std::string_view name) {
  auto found = Find(object, name);
  if (!found) Fail(object, fmt::format("\"{}\" is missing", name));
  return found;
}

const Json::Array* JsonWalk::Elements(const JsonPlace& place) {
  const auto* elements = std::get_if<Json::Array>(&place.json->value);
  if (elements == nullptr) {
    Fail(place, fmt::format("expected a list, found {}", KindOf(*place.json)));
  }
  return elements;
}

JsonPlace JsonWalk::Element(const JsonPlace& array, std::size_t index) {
  return {&std::get<Json::Array>(array.json->value)[index],
          PointerBelow(array.pointer, std::to_string(index))};
}

bool JsonWalk::HasOnly(const JsonPlace& place, std::initializer_list<std::string_view> known) {
  const auto* members = std::get_if<Json::Object>(&place.json->value);
  if (members == nullptr) {
    return Fail(place, fmt::format("expected an object, found {}", KindOf(*place.json)));
  }
  for (const JsonMember& member : *members) {
    if (std::find(known.begin(), known.end(), member.name) != known.end()) continue;
    return Fail({&member.value, PointerBelow(place.pointer, member.name)},
                UnknownName("name", member.name, std::vector<std::string_view>(known)));
  }
  return true;
}

std::string JsonWalk::Text(const JsonPlace& place) {
  if (const auto* text = std::get_if<std::string>(&place.json->value)) return *text;
  Fail(place, fmt::format("expected a text, found {}", KindOf(*place.json)));
  return {};
}

bool JsonWalk::Truth(const JsonPlace& place) {
  if (const auto* truth = std::get_if<bool>(&place.json->value)) return *truth;
  return Fail(place, fmt::format("expected true or false, found {}", KindOf(*place.json)));
}

std::int32_t JsonWalk::Integer(const JsonPlace& place, std::int32_t least, std::int32_t most) {
  const auto number = WholeNumberIn(*place.json);
  if (!number) {
    Fail(place, fmt::format("expected a whole number, found {}", KindOf(*place.json)));
  } else if (!(*number >= least && *number <= most)) {
    Fail(place, fmt::format("expected a whole number of {} to {}, found {}", least, most, *number));
  } else {
    return static_cast<std::int32_t>(*number);
  }
  return 0;
}

std::string JsonWalk::TextUnder(const JsonPlace& object, std::string_view name) {
  const auto place = Require(object, name);
  return place ? Text(*place) : std::string();
}

std::int32_t JsonWalk::IntegerUnder(const JsonPlace& object, std::string_view name,
                                    std::int32_t least, std::int32_t most) {
  const auto place = Require(object, name);
  return place ? Integer(*place, least, most) : 0;
}

std::string JsonWalk::OptionalText(const JsonPlace& object, std::string_view name) {
  const auto place = Find(object, name);
  return place ? Text(*place) : std::string();
}

std::int32_t JsonWalk::OptionalInteger(const JsonPlace& object, std::string_view name,
                                       std::int32_t otherwise) {
  const auto place = Find(object, name);
  return place ? Integer(*place) : otherwise;
}

std::string DescribeJsonError(std::string_view file, std::string_view text,
                              const JsonError& error) {
  const TextPosition position = PositionIn(text, error.offset);
  return fmt::format("{}:{}:{}: {}{}{}", file, position.line, position.column, error.pointer,
                     error.pointer.empty() ? "" : ": ", error.message);
}

}  // namespace sorvanix::host
