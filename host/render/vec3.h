// Vectors of the renderer: three doubles with the usual operators.
//
// The contract's Vector holds floats; a render computes in double and narrows once, when a result
// goes into a record of the contract.
#pragma once

#include <sorvanix/types.h>

#include <cmath>

namespace sorvanix::host {

/// A point, a direction or a colour.
struct Vec3 {
  double x = 0, y = 0, z = 0;

  constexpr Vec3() = default;
  constexpr Vec3(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  constexpr explicit Vec3(const Vector& v) : x(v.x), y(v.y), z(v.z) {}

  constexpr Vector Narrow() const {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
  }

  constexpr Vec3& operator+=(const Vec3& v) { return *this = {x + v.x, y + v.y, z + v.z}; }

  friend constexpr bool operator==(const Vec3&, const Vec3&) = default;
};

constexpr Vec3 operator+(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vec3 operator-(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vec3 operator-(const Vec3& v) { return {-v.x, -v.y, -v.z}; }
constexpr Vec3 operator*(const Vec3& v, double s) { return {v.x * s, v.y * s, v.z * s}; }
constexpr Vec3 operator*(double s, const Vec3& v) { return v * s; }
constexpr Vec3 operator/(const Vec3& v, double s) { return {v.x / s, v.y / s, v.z / s}; }
/// By component: a colour through a filter.
constexpr Vec3 operator*(const Vec3& a, const Vec3& b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }

constexpr double Dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
constexpr Vec3 Cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(const Vec3& v) { return std::sqrt(Dot(v, v)); }

inline bool IsFinite(const Vec3& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// The unit vector along v; `fallback` for a vector without a direction: zero, infinite or NaN.
inline Vec3 Normalised(const Vec3& v, const Vec3& fallback = {}) {
  const double length = Length(v);
  return length > 0 && std::isfinite(length) ? v / length : fallback;
}

/// The part of v that is perpendicular to a unit vector.
constexpr Vec3 Perpendicular(const Vec3& v, const Vec3& unit) { return v - unit * Dot(v, unit); }

/// v as a mirror with this unit normal throws it back.
constexpr Vec3 Mirrored(const Vec3& v, const Vec3& unit) { return v - unit * (2 * Dot(v, unit)); }

constexpr Vec3 Lerp(const Vec3& a, const Vec3& b, double t) { return a + (b - a) * t; }

/// The mean of a colour's components.
constexpr double Mean(const Vec3& colour) { return (colour.x + colour.y + colour.z) / 3; }

constexpr bool IsBlack(const Vec3& colour) { return colour == Vec3(0, 0, 0); }

/// The image of a point.
constexpr Vec3 MapPoint(const Matrix& m, const Vec3& p) {
  return Vec3(m.off) + Vec3(m.v1) * p.x + Vec3(m.v2) * p.y + Vec3(m.v3) * p.z;
}
/// The image of a direction: the axes without the displacement.
constexpr Vec3 MapDirection(const Matrix& m, const Vec3& d) {
  return Vec3(m.v1) * d.x + Vec3(m.v2) * d.y + Vec3(m.v3) * d.z;
}

}  // namespace sorvanix::host
