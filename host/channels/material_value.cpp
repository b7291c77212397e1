#include "host/channels/material_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "host/channels/nearest_name.h"

namespace sorvanix::host {

namespace {

using Reading = tl::expected<ReadValue, std::string>;

tl::unexpected<std::string> Failed(std::string message) {
  return tl::unexpected<std::string>(std::move(message));
}

tl::unexpected<std::string> Expected(std::string_view what, const Json& found) {
  return Failed(fmt::format("expected {}, found {}", what, KindOf(found)));
}

std::optional<double> NumberIn(const Json& json) {
  if (const auto* whole = std::get_if<std::int64_t>(&json.value)) {
    return static_cast<double>(*whole);
  }
  if (const auto* real = std::get_if<double>(&json.value)) return *real;
  return std::nullopt;
}

// Numbers too large for 32 bits are refused, not made infinite.
std::optional<float> Narrowed(double number) {
  if (!(std::fabs(number) <= std::numeric_limits<float>::max())) return std::nullopt;
  return static_cast<float>(number);
}

std::string TooLarge(double number) { return fmt::format("{} is too large for 32 bits", number); }

std::string LimitWarning(const ShaderParameter& parameter, double number) {
  if (parameter.minimum && number < *parameter.minimum) {
    return fmt::format("{} is below the dialog's least value, {}", number, *parameter.minimum);
  }
  if (parameter.maximum && number > *parameter.maximum) {
    return fmt::format("{} is above the dialog's greatest value, {}", number, *parameter.maximum);
  }
  return {};
}

Reading ReadChoice(const ShaderParameter& parameter, const std::string& name) {
  if (const ParameterChoice* choice = parameter.FindChoice(name)) {
    return ReadValue{choice->value, {}};
  }
  std::vector<std::string_view> names;
  for (const ParameterChoice& choice : parameter.choices) names.push_back(choice.name);
  return Failed(UnknownName("choice", name, names));
}

Reading ReadInteger(const ShaderParameter& parameter, const Json& json) {
  const auto* name = std::get_if<std::string>(&json.value);
  if (name != nullptr && !parameter.choices.empty()) return ReadChoice(parameter, *name);
  const std::optional<double> number = NumberIn(json);
  // 5.0 is a whole number too, as it is to JSON schemas.
  if (!number || *number != std::floor(*number)) {
    return Expected(parameter.choices.empty() ? "a whole number" : "a choice's name or number",
                    json);
  }
  using Limits = std::numeric_limits<std::int32_t>;
  if (*number < Limits::min() || *number > Limits::max()) {
    return Failed(TooLarge(*number));
  }
  const auto integer = static_cast<std::int32_t>(*number);
  const bool isChoice =
      parameter.choices.empty() ||
      std::any_of(parameter.choices.begin(), parameter.choices.end(),
                  [integer](const ParameterChoice& choice) { return choice.value == integer; });
  return ReadValue{integer, isChoice ? LimitWarning(parameter, *number)
                                     : fmt::format("{} is none of the choices", integer)};
}

Reading ReadReal(const ShaderParameter& parameter, const Json& json) {
  const std::optional<double> number = NumberIn(json);
  if (!number) return Expected("a number", json);
  const std::optional<float> real = Narrowed(*number);
  if (!real) return Failed(TooLarge(*number));
  return ReadValue{*real, LimitWarning(parameter, *number)};
}

// "#ff8000" is (1, 128/255, 0).
std::optional<Vector> HexColour(std::string_view text) {
  if (text.size() != 7 || text[0] != '#') return std::nullopt;
  float parts[3];
  for (std::size_t i = 0; i < 3; ++i) {
    unsigned byte = 0;
    const char* const begin = text.data() + 1 + 2 * i;
    const auto [end, error] = std::from_chars(begin, begin + 2, byte, 16);
    if (error != std::errc() || end != begin + 2) return std::nullopt;
    parts[i] = static_cast<float>(byte / 255.0);
  }
  return Vector{parts[0], parts[1], parts[2]};
}

Reading ReadVector(const ShaderParameter& parameter, const Json& json) {
  const bool isColour = parameter.unit == "colour";
  const auto* text = std::get_if<std::string>(&json.value);
  if (isColour && text != nullptr) {
    const std::optional<Vector> colour = HexColour(*text);
    if (!colour) return Failed("expected a colour such as \"#ff8000\" or [1, 0.5, 0]");
    return ReadValue{*colour, {}};
  }
  const auto* list = std::get_if<Json::Array>(&json.value);
  if (list == nullptr) return Expected("a list of three numbers", json);
  if (list->size() != 3) {
    return Failed(fmt::format("expected three numbers, found {}", list->size()));
  }
  float parts[3];
  for (std::size_t i = 0; i < 3; ++i) {
    const std::optional<double> number = NumberIn((*list)[i]);
    if (!number) return Expected("three numbers", (*list)[i]);
    const std::optional<float> part = Narrowed(*number);
    if (!part) return Failed(TooLarge(*number));
    parts[i] = *part;
  }
  return ReadValue{Vector{parts[0], parts[1], parts[2]}, {}};
}

}  // namespace

Reading ReadParameterValue(const ShaderParameter& parameter, const Json& json) {
  switch (parameter.type) {
    case ParameterType::Integer:
      return ReadInteger(parameter, json);
    case ParameterType::Real:
      return ReadReal(parameter, json);
    case ParameterType::Vector:
      return ReadVector(parameter, json);
    case ParameterType::Bool:
      if (const auto* truth = std::get_if<bool>(&json.value)) return ReadValue{*truth, {}};
      return Expected("true or false", json);
    case ParameterType::Text:
      if (const auto* text = std::get_if<std::string>(&json.value)) return ReadValue{*text, {}};
      return Expected("a text", json);
    case ParameterType::Ramp:  // has many places, and a reader that can tell them
      break;
  }
  return Failed("a parameter of an unknown type");
}

std::string_view KindOf(const Json& json) {
  constexpr std::string_view kKinds[] = {"null",   "true or false", "a whole number", "a number",
                                         "a text", "a list",        "an object"};
  return kKinds[json.value.index()];
}

std::string UnknownName(std::string_view what, std::string_view name,
                        const std::vector<std::string_view>& knownNames) {
  std::string message = fmt::format("unknown {} {}", what, WriteJson(Json(Excerpt(name)), -1));
  const std::string_view nearest = NearestName(name, knownNames);
  if (!nearest.empty()) message += fmt::format("; did you mean \"{}\"?", nearest);
  return message;
}

}  // namespace sorvanix::host
