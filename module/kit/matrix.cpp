// Affine maps; the inverse is Cramer's rule: cofactors over the determinant.
#include "module/kit/matrix.h"

#include <cmath>

#include "module/kit/vector.h"

namespace sorvanix {
namespace {

struct WideVector {
  double x, y, z;
};

Vector Narrow(double x, double y, double z) {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

// A cross product that is not narrowed, so that the determinant of very small axes does not
// underflow to the 0 of a singular map.
WideVector WideCross(const Vector& a, const Vector& b) {
  return {double{a.y} * b.z - double{a.z} * b.y, double{a.z} * b.x - double{a.x} * b.z,
          double{a.x} * b.y - double{a.y} * b.x};
}

}  // namespace

Vector Transform(const Vector& point, const Matrix& m) {
  const auto map = [&point](double off, double a, double b, double c) {
    return off + a * point.x + b * point.y + c * point.z;
  };
  return ByComponent(map, m.off, m.v1, m.v2, m.v3);
}

Vector Rotate(const Vector& direction, const Matrix& m) {
  return Transform(direction, {{0, 0, 0}, m.v1, m.v2, m.v3});
}

Matrix Invert(const Matrix& m) {
  const WideVector row1 = WideCross(m.v2, m.v3);
  const WideVector row2 = WideCross(m.v3, m.v1);
  const WideVector row3 = WideCross(m.v1, m.v2);
  const double determinant = m.v1.x * row1.x + m.v1.y * row1.y + m.v1.z * row1.z;
  if (determinant == 0) return kIdentityMatrix;

  const double k = 1 / determinant;
  Matrix inverse{{0, 0, 0},
                 Narrow(row1.x * k, row2.x * k, row3.x * k),
                 Narrow(row1.y * k, row2.y * k, row3.y * k),
                 Narrow(row1.z * k, row2.z * k, row3.z * k)};
  // From the axes as they were stored, so that both parts carry the same rounding.
  inverse.off = Rotate(Scale(-1.0f, m.off), inverse);
  return inverse;
}

Matrix Multiply(const Matrix& a, const Matrix& b) {
  return {Transform(b.off, a), Rotate(b.v1, a), Rotate(b.v2, a), Rotate(b.v3, a)};
}

Matrix ScaleMatrix(const Vector& v) { return {{0, 0, 0}, {v.x, 0, 0}, {0, v.y, 0}, {0, 0, v.z}}; }

Matrix RotationY(float angle) {
  const double c = std::cos(double{angle}), s = std::sin(double{angle});
  return {{0, 0, 0}, Narrow(c, 0, s), {0, 1, 0}, Narrow(-s, 0, c)};
}

Matrix RotationZ(float angle) {
  const double c = std::cos(double{angle}), s = std::sin(double{angle});
  return {{0, 0, 0}, Narrow(c, -s, 0), Narrow(s, c, 0), {0, 0, 1}};
}

Matrix RotationFromAngles(const Vector& angles) {
  const double ch = std::cos(double{angles.x}), sh = std::sin(double{angles.x});
  const double cp = std::cos(double{angles.y}), sp = std::sin(double{angles.y});
  const double cb = std::cos(double{angles.z}), sb = std::sin(double{angles.z});
  return {{0, 0, 0},
          Narrow(cb * ch - sb * sp * sh, -sb * cp, sb * sp * ch + cb * sh),
          Narrow(cb * sp * sh + sb * ch, cb * cp, sb * sh - cb * sp * ch),
          Narrow(-cp * sh, sp, cp * ch)};
}

}  // namespace sorvanix
