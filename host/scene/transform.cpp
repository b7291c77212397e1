#include "host/scene/transform.h"

#include <cmath>
#include <numbers>

namespace sorvanix::host {
namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;

Vector Scaled(const Vector& v, float factor) noexcept {
  return {v.x * factor, v.y * factor, v.z * factor};
}

Vector ToVector(double x, double y, double z) noexcept {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

}  // namespace

Vector Radians(const Vector& degrees) noexcept {
  return ToVector(degrees.x * kRadiansPerDegree, degrees.y * kRadiansPerDegree,
                  degrees.z * kRadiansPerDegree);
}

Matrix RotationMatrix(const Vector& angles) noexcept {
  const double sh = std::sin(angles.x), ch = std::cos(angles.x);
  const double sp = std::sin(angles.y), cp = std::cos(angles.y);
  const double sb = std::sin(angles.z), cb = std::cos(angles.z);
  return {.off = {0, 0, 0},
          .v1 = ToVector(cb * ch - sb * sp * sh, -sb * cp, sb * sp * ch + cb * sh),
          .v2 = ToVector(cb * sp * sh + sb * ch, cb * cp, sb * sh - cb * sp * ch),
          .v3 = ToVector(-cp * sh, sp, cp * ch)};
}

Vector AnglesTowards(const Vector& direction) noexcept {
  const double x = direction.x, y = direction.y, z = direction.z;
  const double level = std::hypot(x, z);
  // The third axis is (-cos p sin h, sin p, cos p cos h). Straight up and down have no heading.
  const double heading = level > 0 ? std::atan2(-x, z) : 0;
  return ToVector(heading / kRadiansPerDegree, std::atan2(y, level) / kRadiansPerDegree, 0);
}

Matrix ToMatrix(const Transform& transform) noexcept {
  Matrix matrix = RotationMatrix(Radians(transform.rotation));
  matrix.off = transform.position;
  matrix.v1 = Scaled(matrix.v1, transform.scale.x);
  matrix.v2 = Scaled(matrix.v2, transform.scale.y);
  matrix.v3 = Scaled(matrix.v3, transform.scale.z);
  return matrix;
}

Vector TransformDirection(const Matrix& m, const Vector& d) noexcept {
  const auto component = [&](float Vector::*axis) {
    return double{m.v1.*axis} * d.x + double{m.v2.*axis} * d.y + double{m.v3.*axis} * d.z;
  };
  return ToVector(component(&Vector::x), component(&Vector::y), component(&Vector::z));
}

Vector TransformPoint(const Matrix& m, const Vector& p) noexcept {
  const auto component = [&](float Vector::*axis) {
    return m.off.*axis + double{m.v1.*axis} * p.x + double{m.v2.*axis} * p.y +
           double{m.v3.*axis} * p.z;
  };
  return ToVector(component(&Vector::x), component(&Vector::y), component(&Vector::z));
}

Matrix Multiply(const Matrix& first, const Matrix& second) noexcept {
  return {.off = TransformPoint(first, second.off),
          .v1 = TransformDirection(first, second.v1),
          .v2 = TransformDirection(first, second.v2),
          .v3 = TransformDirection(first, second.v3)};
}

Vector UnitVector(const Vector& v, const Vector& fallback) noexcept {
  const double length = std::hypot(double{v.x}, double{v.y}, double{v.z});
  if (!(length > 0) || !std::isfinite(length)) return fallback;
  return ToVector(v.x / length, v.y / length, v.z / length);
}

bool IsFinite(const Vector& v) noexcept {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool IsFinite(const Matrix& m) noexcept {
  return IsFinite(m.off) && IsFinite(m.v1) && IsFinite(m.v2) && IsFinite(m.v3);
}

}  // namespace sorvanix::host
