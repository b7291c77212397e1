// Vectors in expectations: compared by component, printed readably, and the geometry that laws
// about meshes need, in double.
#pragma once

#include <gtest/gtest.h>
#include <sorvanix/types.h>

#include <cmath>
#include <cstddef>

#include "host/scene/mesh.h"

namespace sorvanix::host {

inline bool IsNear(const Vector& a, const Vector& b, double tolerance) {
  return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance &&
         std::fabs(a.z - b.z) <= tolerance;
}

/// Equal to within some roundings of numbers about as large as `tolerance` times 10^6.
inline testing::AssertionResult Near(const Vector& actual, const Vector& expected,
                                     double tolerance = 1e-6) {
  if (IsNear(actual, expected, tolerance)) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << '(' << actual.x << ", " << actual.y << ", " << actual.z << ") is not (" << expected.x
         << ", " << expected.y << ", " << expected.z << ')';
}

inline Vector Minus(const Vector& a, const Vector& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline double Dot(const Vector& a, const Vector& b) {
  return double{a.x} * b.x + double{a.y} * b.y + double{a.z} * b.z;
}
inline double Length(const Vector& v) { return std::sqrt(Dot(v, v)); }
inline Vector Cross(const Vector& a, const Vector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline const Vector& PointOf(const PolygonMesh& mesh, std::int32_t index) {
  return mesh.points.at(static_cast<std::size_t>(index));
}

/// Twice the area of the first three corners, as a vector that should point outwards.
inline Vector AreaVector(const PolygonMesh& mesh, const PolygonRecord& p) {
  return Cross(Minus(PointOf(mesh, p.b), PointOf(mesh, p.a)),
               Minus(PointOf(mesh, p.c), PointOf(mesh, p.a)));
}

inline double AreaOf(const PolygonMesh& mesh, const PolygonRecord& p) {
  const PolygonRecord other = {p.a, p.c, p.d, p.d};
  return 0.5 * (Length(AreaVector(mesh, p)) + Length(AreaVector(mesh, other)));
}

inline double AreaOf(const PolygonMesh& mesh) {
  double area = 0;
  for (const PolygonRecord& polygon : mesh.polygons) area += AreaOf(mesh, polygon);
  return area;
}

}  // namespace sorvanix::host
