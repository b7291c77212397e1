// Comparison of the renderer's vectors in tests.
#pragma once

#include <gmock/gmock.h>

#include <ostream>

#include "host/render/vec3.h"

namespace sorvanix::host {

inline void PrintTo(const Vec3& v, std::ostream* out) {
  *out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

}  // namespace sorvanix::host

inline void PrintTo(const Vector& v, std::ostream* out) {
  *out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

namespace sorvanix::host {

// Each component differs by no more than `tolerance`.
MATCHER_P4(NearVec, x, y, z, tolerance, "") {
  const auto near = [](double a, double b, double limit) { return std::abs(a - b) <= limit; };
  return near(arg.x, x, tolerance) && near(arg.y, y, tolerance) && near(arg.z, z, tolerance);
}

// A few units in the last place of a double, of values around 1.
inline auto Vec(double x, double y, double z) { return NearVec(x, y, z, 1e-12); }
// The same of a float.
inline auto FloatVec(double x, double y, double z) { return NearVec(x, y, z, 2e-6); }

}  // namespace sorvanix::host
