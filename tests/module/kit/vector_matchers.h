// Matchers for Vector: exact, within a bound, and all components NaN.
#pragma once

#include <gmock/gmock.h>
#include <sorvanix/types.h>

#include <cmath>
#include <random>

namespace sorvanix::test {

MATCHER_P3(IsVector, x, y, z, "is the vector as given") {
  *result_listener << "which is (" << arg.x << ", " << arg.y << ", " << arg.z << ")";
  return arg.x == static_cast<float>(x) && arg.y == static_cast<float>(y) &&
         arg.z == static_cast<float>(z);
}

inline auto IsVector(const Vector& v) { return IsVector(v.x, v.y, v.z); }

inline double Distance(const Vector& a, const Vector& b) {
  return std::fmax(std::fmax(std::fabs(double{a.x} - b.x), std::fabs(double{a.y} - b.y)),
                   std::fabs(double{a.z} - b.z));
}

MATCHER_P2(IsNear, vector, bound, "is within the bound of the vector") {
  *result_listener << "which is (" << arg.x << ", " << arg.y << ", " << arg.z << ") against ("
                   << vector.x << ", " << vector.y << ", " << vector.z << ")";
  const double distance = Distance(arg, vector);
  return distance <= bound;  // false for NaN
}

MATCHER(IsNanVector, "has NaN in every component") {
  *result_listener << "which is (" << arg.x << ", " << arg.y << ", " << arg.z << ")";
  return std::isnan(arg.x) && std::isnan(arg.y) && std::isnan(arg.z);
}

/// Repeatable random values: the engine's numbers are the same on every platform.
class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  /// A multiple of 2^-24 in 0..1, 1 excluded.
  float Unit() { return static_cast<float>(engine_() >> 8) / 16777216.0f; }
  float Between(float low, float high) { return low + (high - low) * Unit(); }
  /// An integer in 0..n-1.
  int Below(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
  Vector Colour() {
    const float x = Unit(), y = Unit(), z = Unit();
    return {x, y, z};
  }
  Vector Point(float extent) {
    const float x = Between(-extent, extent), y = Between(-extent, extent);
    return {x, y, Between(-extent, extent)};
  }

 private:
  std::mt19937 engine_;
};

}  // namespace sorvanix::test
