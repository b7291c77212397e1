// Arithmetic on Vector: points, directions and colours.
//
// Components are 32-bit floats. What an operator computes on its way to a component stays in
// double and is rounded once, so that squares of tiny or huge components neither vanish nor
// overflow. A colour holds red, green and blue in x, y and z and is not limited to 0..1.
#pragma once

#include <sorvanix/types.h>

#include <cmath>

namespace sorvanix {

/// The library's one third. Fourteen digits, a little below the exact value: the mean of white is
/// 0.99999999999999 in double and 1 as a float.
inline constexpr double kOneThird = 0.33333333333333;

/// Calls `function` with the x, then the y, then the z components of the vectors and gathers the
/// three results, each narrowed to float.
template <typename Function, typename... Vectors>
constexpr Vector ByComponent(Function function, const Vectors&... v) {
  return {static_cast<float>(function(v.x...)), static_cast<float>(function(v.y...)),
          static_cast<float>(function(v.z...))};
}

/// a + b.
constexpr Vector Add(const Vector& a, const Vector& b) {
  return ByComponent([](float p, float q) { return p + q; }, a, b);
}

/// a += b.
constexpr void AddInPlace(Vector& a, const Vector& b) { a = Add(a, b); }

/// a - b.
constexpr Vector Sub(const Vector& a, const Vector& b) {
  return ByComponent([](float p, float q) { return p - q; }, a, b);
}

/// a -= b.
constexpr void SubInPlace(Vector& a, const Vector& b) { a = Sub(a, b); }

/// v times s.
constexpr Vector Scale(float s, const Vector& v) {
  return ByComponent([s](float p) { return s * p; }, v);
}
constexpr Vector Scale(const Vector& v, float s) { return Scale(s, v); }

/// v *= s.
constexpr void ScaleInPlace(Vector& v, float s) { v = Scale(s, v); }

/// a times b by component: a light of one colour on a surface of another.
constexpr Vector Product(const Vector& a, const Vector& b) {
  return ByComponent([](float p, float q) { return p * q; }, a, b);
}

/// The colour with components below 0 raised to it. NaN stays.
constexpr Vector WithoutNegatives(const Vector& colour) {
  return ByComponent([](float p) { return p < 0 ? 0 : p; }, colour);
}

/// s added to every component of v.
constexpr Vector OffsetAll(float s, const Vector& v) {
  return ByComponent([s](float p) { return s + p; }, v);
}

/// The dot product before it is narrowed: products of floats are exact in double.
constexpr double WideDot(const Vector& a, const Vector& b) {
  return double{a.x} * b.x + double{a.y} * b.y + double{a.z} * b.z;
}

/// The dot product.
constexpr float Dot(const Vector& a, const Vector& b) { return static_cast<float>(WideDot(a, b)); }

/// The cross product a x b.
constexpr Vector Cross(const Vector& a, const Vector& b) {
  return {static_cast<float>(double{a.y} * b.z - double{a.z} * b.y),
          static_cast<float>(double{a.z} * b.x - double{a.x} * b.z),
          static_cast<float>(double{a.x} * b.y - double{a.y} * b.x)};
}

/// The sum of the components' magnitudes: a length that needs no root.
inline double SumOfMagnitudes(const Vector& v) {
  return std::fabs(double{v.x}) + std::fabs(double{v.y}) + std::fabs(double{v.z});
}

/// The Euclidean length.
inline float Length(const Vector& v) { return static_cast<float>(std::sqrt(WideDot(v, v))); }

/// The unit vector along v; the zero vector for the zero vector.
inline Vector Normalized(const Vector& v) {
  const double length = std::sqrt(WideDot(v, v));
  if (length == 0) return {};
  const double inverse = 1 / length;
  return ByComponent([inverse](double p) { return p * inverse; }, v);
}

/// (b - a) * t + a: a at 0, b at 1, beyond them outside; t is not clamped.
constexpr Vector Lerp(const Vector& a, const Vector& b, float t) {
  return ByComponent([t](double p, double q) { return (q - p) * t + p; }, a, b);
}

/// The perpendicular that leads from the line through `origin` along `direction` to `point`.
/// `direction` may have any length but zero, which gives NaN.
constexpr Vector OffsetFromLine(const Vector& origin, const Vector& direction,
                                const Vector& point) {
  const double t = WideDot(Sub(point, origin), direction) / WideDot(direction, direction);
  return ByComponent([t](double o, double d, double p) { return p - (o + t * d); }, origin,
                     direction, point);
}

/// The mean of a colour's components, with kOneThird for the division. Sums of three floats of
/// usual colours are exact in double, so the order of the components makes no difference.
constexpr double Mean(const Vector& colour) {
  return (double{colour.x} + colour.y + colour.z) * kOneThird;
}

}  // namespace sorvanix
