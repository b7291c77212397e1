#include "host/dialogs/gadget.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/channels/material_value.h"
#include "host/services/json_numbers.h"

namespace sorvanix::host {

namespace {

using Typed = tl::expected<GadgetValue, std::string>;

GadgetValue NeutralValue(ElementKind kind) {
  switch (kind) {
    case ElementKind::Integer:
    case ElementKind::Choice:
    case ElementKind::Tabs:
      return std::int32_t{0};
    case ElementKind::Real:
    case ElementKind::Slider:
      return 0.0f;
    case ElementKind::Check:
      return false;
    case ElementKind::Colour:
      return Vector{0, 0, 0};
    case ElementKind::Label:
    case ElementKind::Text:
    case ElementKind::Filename:
      return std::string();
    default:
      return std::monostate();
  }
}

// Saturating, NaN to 0: a conversion beyond the range is undefined.
std::int32_t WholeOf(double number) noexcept {
  if (!(number == number)) return 0;
  if (number <= INT32_MIN) return INT32_MIN;
  if (number >= INT32_MAX) return INT32_MAX;
  return static_cast<std::int32_t>(number);
}

float NarrowedOf(double number) noexcept {
  constexpr double kLargest = std::numeric_limits<float>::max();
  if (number > kLargest) return static_cast<float>(kLargest);
  if (number < -kLargest) return static_cast<float>(-kLargest);
  return static_cast<float>(number);
}

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

Gadget::Gadget(const LayoutElement& element)
    : id(element.id),
      kind(element.kind),
      entries(element.entries),
      value(NeutralValue(element.kind)) {
  if (kind == ElementKind::Label) value = element.label;
}

bool Gadget::IsNumber() const noexcept {
  return std::holds_alternative<std::int32_t>(value) || std::holds_alternative<float>(value);
}

double Gadget::Scale() const noexcept {
  if (format == FormatPercent) return 100;
  if (format == FormatDegrees) return 180 / std::numbers::pi;
  return 1;
}

void Gadget::SetNumber(std::int32_t number) noexcept {
  if (std::holds_alternative<bool>(value)) {
    value = number != 0;
  } else if (IsNumber()) {
    value = number;
  }
}

void Gadget::SetNumber(float number) noexcept {
  const bool isWhole = kind == ElementKind::Integer || !entries.empty();
  if (std::holds_alternative<bool>(value) || isWhole) {
    SetNumber(WholeOf(number));
  } else if (IsNumber()) {
    value = number;
  }
}

std::optional<std::int32_t> Gadget::Integer() const noexcept {
  if (const auto* whole = std::get_if<std::int32_t>(&value)) return *whole;
  if (const auto* real = std::get_if<float>(&value)) return WholeOf(*real);
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? 1 : 0;
  return std::nullopt;
}

std::optional<float> Gadget::Real() const noexcept {
  if (const auto* real = std::get_if<float>(&value)) return *real;
  const auto whole = Integer();
  return whole ? std::optional(static_cast<float>(*whole)) : std::nullopt;
}

double Gadget::ShownNumber() const noexcept {
  // To as many digits as the value has: 0.1f is 10 percent.
  if (const auto* real = std::get_if<float>(&value)) {
    return ShortestDouble(NarrowedOf(*real * Scale()));
  }
  return Integer().value_or(0);
}

GadgetValue Gadget::TypedNumber(double shown) const noexcept {
  const bool isWhole = std::holds_alternative<std::int32_t>(value);
  double number = isWhole ? shown : shown / Scale();
  // What was typed is compared as it is stored, so that a limit of 0.1f can be typed as 0.1.
  if (!isWhole) number = NarrowedOf(number);
  if (number < minimum) number = minimum;
  if (number > maximum) number = maximum;
  if (isWhole) return WholeOf(number);
  return NarrowedOf(number);
}

GadgetValue Gadget::Stepped(int steps) const noexcept {
  if (const auto* real = std::get_if<float>(&value)) {
    return TypedNumber((*real + steps * step) * Scale());
  }
  return TypedNumber(Integer().value_or(0) + steps * step);
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
