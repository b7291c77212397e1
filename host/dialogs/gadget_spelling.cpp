#include "host/dialogs/gadget_spelling.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "host/channels/material_value.h"
#include "host/services/json_numbers.h"

namespace sorvanix::host {

namespace {

using Typed = tl::expected<GadgetValue, std::string>;

std::optional<double> NumberIn(const Json& json) {
  if (const auto* whole = std::get_if<std::int64_t>(&json.value)) {
    return static_cast<double>(*whole);
  }
  const auto* real = std::get_if<double>(&json.value);
  return real != nullptr && std::isfinite(*real) ? std::optional(*real) : std::nullopt;
}

tl::unexpected<std::string> Expected(std::string_view what, const Json& found) {
  return tl::unexpected(fmt::format("expected {}, found {}", what, KindOf(found)));
}

Typed TypedInNumberField(const Gadget& gadget, const Json& shown) {
  const auto number = NumberIn(shown);
  if (!number) return Expected("a number", shown);
  if (std::holds_alternative<std::int32_t>(gadget.value) && *number != std::floor(*number)) {
    return Expected("a whole number", shown);
  }
  return gadget.TypedNumber(*number);
}

Typed TypedChoice(const Gadget& gadget, const Json& shown) {
  const auto* label = std::get_if<std::string>(&shown.value);
  const auto number = NumberIn(shown);
  if (label == nullptr && !number) return Expected("an entry's value or label", shown);
  std::vector<std::string_view> labels;
  for (const ChoiceEntry& entry : gadget.entries) {
    if (label != nullptr ? entry.label == *label : entry.value == *number) return entry.value;
    labels.push_back(entry.label);
  }
  if (label != nullptr) return tl::unexpected(UnknownName("entry", *label, labels));
  return tl::unexpected(fmt::format("none of the entries has the value {}", *number));
}

// A colour field gives 0..1 alone.
Typed TypedColour(const Json& shown) {
  return ReadColour(shown).map([](const Vector& colour) -> GadgetValue {
    const auto limited = [](float part) { return std::clamp(part, 0.0f, 1.0f); };
    return Vector{limited(colour.x), limited(colour.y), limited(colour.z)};
  });
}

Typed TypedText(const Json& shown) {
  if (const auto* text = std::get_if<std::string>(&shown.value)) return *text;
  return Expected("a text", shown);
}

bool IsNear(double found, double expected) {
  return found == expected ||
         std::fabs(found - expected) <= 1e-6 * std::max(1.0, std::fabs(expected));
}

bool ShowsColour(const Vector& found, const Json& expected) {
  const auto colour = ReadColour(expected);
  return colour && IsNear(found.x, colour->x) && IsNear(found.y, colour->y) &&
         IsNear(found.z, colour->z);
}

}  // namespace

tl::expected<Vector, std::string> ReadColour(const Json& json) {
  ShaderParameter colour;
  colour.type = ParameterType::Vector;
  colour.unit = "colour";
  return ReadParameterValue(colour, json).map([](const ReadValue& reading) {
    return std::get<Vector>(reading.value);
  });
}

Json ShownValue(const Gadget& gadget) {
  struct Visitor {
    const Gadget& gadget;
    Json operator()(std::monostate) const { return Json(); }
    Json operator()(std::int32_t number) const { return JsonOf(number); }
    Json operator()(float number) const {
      return std::isfinite(number) ? Json(gadget.ShownNumber()) : JsonOf(number);
    }
    Json operator()(bool truth) const { return Json(truth); }
    Json operator()(const Vector& colour) const { return JsonOf(colour); }
    Json operator()(const std::string& text) const { return Json(text); }
  };
  return std::visit(Visitor{gadget}, gadget.value);
}

Typed TypedValue(const Gadget& gadget, const Json& shown) {
  switch (gadget.kind) {
    case ElementKind::Integer:
    case ElementKind::Real:
    case ElementKind::Slider:
      return TypedInNumberField(gadget, shown);
    case ElementKind::Choice:
    case ElementKind::Tabs:
      return TypedChoice(gadget, shown);
    case ElementKind::Check:
      if (const auto* truth = std::get_if<bool>(&shown.value)) return *truth;
      return Expected("true or false", shown);
    case ElementKind::Colour:
      return TypedColour(shown);
    case ElementKind::Text:
    case ElementKind::Filename:
      return TypedText(shown);
    case ElementKind::Button:
      if (const auto* truth = std::get_if<bool>(&shown.value); truth && *truth) return true;
      return Expected("true, which presses the button", shown);
    default:
      return tl::unexpected(
          fmt::format("a gadget of the kind {} takes no value from the user", NameOf(gadget.kind)));
  }
}

bool Shows(const Gadget& gadget, const Json& expected) {
  if (const auto* colour = std::get_if<Vector>(&gadget.value))
    return ShowsColour(*colour, expected);
  if (!gadget.entries.empty()) {
    const auto typed = TypedChoice(gadget, expected);
    return typed && std::get<std::int32_t>(*typed) == gadget.Integer();
  }
  const auto number = NumberIn(expected);
  if (gadget.IsNumber() && number) return IsNear(gadget.ShownNumber(), *number);
  const Json shown = ShownValue(gadget);
  return shown.value.index() == expected.value.index() &&
         WriteJson(shown, -1) == WriteJson(expected, -1);
}

}  // namespace sorvanix::host
