// The points that the benchmarks read: neighbours on a grid, and points without any order.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sorvanix::bench {

inline constexpr std::size_t kPoints = 4096;  // a power of two

struct Point {
  float x, y, z;
};
using Points = std::array<Point, kPoints>;

/// A 64 by 64 grid, row by row, with `spacing` between neighbours.
inline Points CoherentPoints(float spacing) {
  Points points;
  for (std::size_t i = 0; i < kPoints; ++i) {
    points[i] = {static_cast<float>(i % 64) * spacing, static_cast<float>(i / 64) * spacing, 0};
  }
  return points;
}

/// Points without order in a cube with sides of `extent`.
inline Points RandomPoints(float extent) {
  Points points;
  std::uint32_t state = 1;
  const auto next = [&] {
    state = state * 1664525u + 1013904223u;
    return static_cast<float>(state >> 8) * 0x1p-24f * extent;
  };
  for (Point& point : points) point = {next(), next(), next()};
  return points;
}

}  // namespace sorvanix::bench
