// Tile patterns of equilateral triangles with sides of one unit, and of hexagons with such sides.
//
// B. Gruenbaum and G. C. Shephard, Tilings and Patterns, 1987.
#include <algorithm>
#include <cmath>

#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// Equilateral geometry, as 32-bit numbers.
constexpr double kHalfRoot3 = 0.8660254f;      // height of a triangle; inradius of a hexagon
constexpr double kRoot3 = 1.7320508f;          // width of a hexagon
constexpr double kInverseRoot3 = 0.57735026f;  // slope of a side
constexpr double kInverseTriangleInradius = 3.4641018f;  // 1 / 0.28867513
constexpr double kInverseHexagonInradius = 1.1547005f;

/// A coordinate as a number of steps and the rest. Both come from one quotient: two, by a constant
/// and by its rounded inverse, would disagree next to a border and draw a seam there.
struct Steps {
  double number, rest;
};
Steps StepsOf(double v, double size) noexcept {
  const double number = std::floor(v / size);
  return {number, v - number * size};
}

/// Rows of triangles. One in each unit of a row stands on its corner; between them are the halves
/// of two that stand on a side.
struct TriangleRow {
  Tile tile;  // its colour is still to be chosen
  bool onASide;
};

TriangleRow TriangleAt(double x, double y, double shiftOfOddRows) noexcept {
  const Steps row = StepsOf(y, kHalfRoot3);
  const Steps column = StepsOf(x + shiftOfOddRows * Oddness(row.number), 1);
  const double px = column.rest, py = row.rest;
  const double toTop = kHalfRoot3 - py;
  const double half = toTop * kInverseRoot3;  // how wide the halves on either side are here
  const bool previous = px < half, next = !previous && px >= 1 - half;
  const bool onASide = previous || next;

  // The distance to the slope is negative beyond it, on the halves.
  const double toSlope = (std::min(px, 1 - px) - half) * kHalfRoot3;
  const double distance = onASide ? std::min(-toSlope, py) : std::min(toSlope, toTop);
  const double cellX = 2 * column.number + (next ? 1 : 0) - (previous ? 1 : 0);
  return {{Limit(0, 1, distance * kInverseTriangleInradius), 1, cellX, row.number}, onASide};
}

// With every second row moved by half a side the rows fit together.
constexpr double kFitting = 0.5;

Tile InTwoColours(TriangleRow triangle) noexcept {
  triangle.tile.colorIndex = triangle.onASide ? 2 : 1;
  return triangle.tile;
}

}  // namespace

Tile PatternHexagon(const TilePlane&, double x, double y) noexcept {
  return InTwoColours(TriangleAt(x, y, 0));
}

Tile PatternHexagonOffset(const TilePlane&, double x, double y) noexcept {
  return InTwoColours(TriangleAt(x, y, kFitting));
}

Tile PatternHexagonThree(const TilePlane&, double x, double y) noexcept {
  TriangleRow triangle = TriangleAt(x, y, kFitting);
  triangle.tile.colorIndex = OneOfThree(triangle.tile.cellY + (triangle.onASide ? 1 : 0));
  return triangle.tile;
}

// Hexagons on a corner. A row is the band from the lower ends of their upright sides to their upper
// corners; the lower corners of the next row reach into its top.
Tile PatternTriangle(const TilePlane&, double x, double y) noexcept {
  constexpr double kRowStep = 1.5;
  const Steps band = StepsOf(y, kRowStep);
  const Steps across = StepsOf(x + kHalfRoot3 * Oddness(band.number), kRoot3);
  double row = band.number, column = across.number;
  double px = across.rest - kHalfRoot3, py = band.rest - 0.5;  // from the middle of the hexagon

  if (band.rest > kRowStep - std::fabs(px) * kInverseRoot3) {
    const bool right = px >= 0;
    row += 1;
    column += (right ? 1 : 0) - (Oddness(row) == 0 ? 1 : 0);
    px += right ? -kHalfRoot3 : kHalfRoot3;
    py -= kRowStep;
  }
  const double toUpright = kHalfRoot3 - std::fabs(px);
  const double toSloping = kHalfRoot3 - (0.5 * std::fabs(px) + kHalfRoot3 * std::fabs(py));
  const double height = std::min(toUpright, toSloping) * kInverseHexagonInradius;
  return {Limit(0, 1, height), OneOfThree(column + Oddness(row)), column, row};
}

}  // namespace sorvanix
