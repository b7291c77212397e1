#include "host/services/json_numbers.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

namespace sorvanix::host {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr double kGreatest = std::numeric_limits<float>::max();
constexpr std::uint32_t kCommonNaN = 0x7FC00000;
constexpr std::string_view kBitsMark = "NaN:";

std::string NameOf(float value) {
  if (value == kInfinity) return "Infinity";
  if (value == -kInfinity) return "-Infinity";
  const auto bits = std::bit_cast<std::uint32_t>(value);
  if (bits == kCommonNaN) return "NaN";
  char name[16];
  std::snprintf(name, sizeof name, "NaN:%08x", static_cast<unsigned>(bits));
  return name;
}

std::optional<float> NamedFloat(std::string_view name) {
  if (name == "Infinity") return kInfinity;
  if (name == "-Infinity") return -kInfinity;
  if (name == "NaN") return std::bit_cast<float>(kCommonNaN);
  constexpr std::size_t kDigits = 8;
  if (!name.starts_with(kBitsMark) || name.size() != kBitsMark.size() + kDigits) return {};
  std::uint32_t bits = 0;
  const char* end = name.data() + name.size();
  const auto parsed = std::from_chars(name.data() + kBitsMark.size(), end, bits, 16);
  if (parsed.ptr != end || !std::isnan(std::bit_cast<float>(bits))) return {};
  return std::bit_cast<float>(bits);
}

}  // namespace

double ShortestDouble(float value) noexcept {
  char digits[32];
  const auto written = std::to_chars(std::begin(digits), std::end(digits), value);
  double shortest = value;
  std::from_chars(std::begin(digits), written.ptr, shortest);
  // Rounding twice, to double and then to float, could miss by one; nothing beats being exact.
  const bool isExact = std::abs(shortest) <= kGreatest && static_cast<float>(shortest) == value;
  return isExact ? shortest : value;
}

Json JsonOf(std::int32_t value) { return Json(std::int64_t{value}); }

Json JsonOf(float value) {
  return std::isfinite(value) ? Json(ShortestDouble(value)) : Json(NameOf(value));
}

Json JsonOf(const Vector& value) {
  return Json(Json::Array{JsonOf(value.x), JsonOf(value.y), JsonOf(value.z)});
}

std::optional<std::int32_t> IntegerIn(const Json& json) {
  const auto* integer = std::get_if<std::int64_t>(&json.value);
  if (integer == nullptr || !std::in_range<std::int32_t>(*integer)) return {};
  return static_cast<std::int32_t>(*integer);
}

std::optional<float> FloatIn(const Json& json) {
  if (const auto* integer = std::get_if<std::int64_t>(&json.value)) {
    return static_cast<float>(*integer);
  }
  if (const auto* name = std::get_if<std::string>(&json.value)) return NamedFloat(*name);
  const auto* real = std::get_if<double>(&json.value);
  if (real == nullptr || std::abs(*real) > kGreatest) return {};
  return static_cast<float>(*real);
}

std::optional<Vector> VectorIn(const Json& json) {
  const auto* parts = std::get_if<Json::Array>(&json.value);
  if (parts == nullptr || parts->size() != 3) return {};
  const std::optional<float> x = FloatIn((*parts)[0]);
  const std::optional<float> y = FloatIn((*parts)[1]);
  const std::optional<float> z = FloatIn((*parts)[2]);
  if (!x || !y || !z) return {};
  return Vector{*x, *y, *z};
}

}  // namespace sorvanix::host
