#include "host/dialogs/gadget.h"

#include <numbers>

#include "host/services/json_numbers.h"

namespace sorvanix::host {

namespace {

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

}  // namespace

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

}  // namespace sorvanix::host
