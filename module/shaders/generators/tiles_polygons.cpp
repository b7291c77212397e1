// Tile patterns of equilateral triangles with sides of one unit, and of hexagons with such sides.
#include <algorithm>
#include <cmath>

#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// Equilateral geometry, as 32-bit numbers: all points on one side of a border agree on where it is.
constexpr double kHalfRoot3 = 0.8660254f;        // height of a triangle; half width of a hexagon
constexpr double kRoot3 = 1.7320508f;            // width of a hexagon
constexpr double kInverseRoot3 = 0.57735026f;    // slope of a side
constexpr double kRowsPerUnit = 1.1547005f;      // 1 / kHalfRoot3
constexpr double kInverseInradius = 3.4641018f;  // of a triangle, whose inradius is 0.28867513

/// Rows of triangles. One in each unit of a row stands on its corner; between them are the halves
/// of two that stand on a side.
struct TriangleRow {
  Tile tile;       // its colour is still to be chosen
  bool onItsSide;  // as the side parts are
};

TriangleRow TriangleAt(double x, double y) noexcept {
  const double row = std::floor(y * kRowsPerUnit), column = std::floor(x);
  const double py = Wrap(y, kHalfRoot3), px = Fraction(x);
  const double toTop = kHalfRoot3 - py;
  const double half = toTop * kInverseRoot3;  // half width of a side part, on either side
  const bool previous = px < half, next = !previous && px >= 1 - half;

  // Distances to the two slopes and to the level side; the sign of the first tells the part.
  const double toSlope = (std::min(px, 1 - px) - half) * kHalfRoot3;
  const bool onItsSide = previous || next;
  const double distance = onItsSide ? std::min(-toSlope, py) : std::min(toSlope, toTop);
  const double cellX = 2 * column + (next ? 1 : 0) - (previous ? 1 : 0);
  return {{Limit(0, 1, distance * kInverseInradius), 1, cellX, row}, onItsSide};
}

// With every second row moved by half a side the rows fit together.
TriangleRow FittedTriangleAt(double x, double y) noexcept {
  return TriangleAt(x + 0.5 * Oddness(std::floor(y * kRowsPerUnit)), y);
}

Tile InTwoColours(TriangleRow triangle) noexcept {
  triangle.tile.colorIndex = triangle.onItsSide ? 2 : 1;
  return triangle.tile;
}

}  // namespace

Tile PatternHexagon(const TilePlane&, double x, double y) noexcept {
  return InTwoColours(TriangleAt(x, y));
}

Tile PatternHexagonOffset(const TilePlane&, double x, double y) noexcept {
  return InTwoColours(FittedTriangleAt(x, y));
}

Tile PatternHexagonThree(const TilePlane&, double x, double y) noexcept {
  TriangleRow triangle = FittedTriangleAt(x, y);
  triangle.tile.colorIndex = OneOfThree(triangle.tile.cellY + (triangle.onItsSide ? 1 : 0));
  return triangle.tile;
}

// Hexagons on a corner. A row is the band from the lower ends of their upright sides to their upper
// corners; the next row's lower corners reach into its top.
Tile PatternTriangle(const TilePlane&, double x, double y) noexcept {
  constexpr double kRowStep = 1.5;
  constexpr double kRowsPerHexagonUnit = 0.6666667f;
  double row = std::floor(y * kRowsPerHexagonUnit);
  const double fy = Wrap(y, kRowStep);
  x += kHalfRoot3 * Oddness(row);
  double column = std::floor(x * kInverseRoot3);
  double px = Wrap(x, kRoot3) - kHalfRoot3;  // from the middle of the hexagon
  double py = fy - 0.5;

  if (fy > kRowStep - std::fabs(px) * kInverseRoot3) {
    row += 1;
    column += (px >= 0 ? 1 : 0) - (Oddness(row) == 0 ? 1 : 0);
    px += px >= 0 ? -kHalfRoot3 : kHalfRoot3;
    py -= kRowStep;
  }
  const double toUpright = kHalfRoot3 - std::fabs(px);
  const double toSloping = kHalfRoot3 - (0.5 * std::fabs(px) + kHalfRoot3 * std::fabs(py));
  const double height = std::min(toUpright, toSloping) * kRowsPerUnit;  // the inradius is the same
  return {Limit(0, 1, height), OneOfThree(column + Oddness(row)), column, row};
}

}  // namespace sorvanix
