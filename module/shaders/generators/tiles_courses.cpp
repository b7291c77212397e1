// Tile patterns of rectangles in courses along x: grids, bricks, planks and stairs.
#include <algorithm>
#include <cmath>

#include "module/noise/lattice.h"
#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// Slopes at the ends of a tile. A tile is one unit long in its own units, which are twice and five
// times as long on the texture as they are high; the slopes are that much narrower, so that the
// grout is as wide at the ends as along the sides.
constexpr double kSquareEnd = 0.5;
constexpr double kBrickEnd = 0.25;
constexpr double kPlankEnd = 0.1;

// Tiles of one unit each way, each course moved by `shift` of its number.
template <class Shift>
Tile Course(const TilePlane& plane, double x, double y, double end, const Shift& shift) noexcept {
  const double row = std::floor(y);
  x += shift(row);
  const double side = Strip(Fraction(y), 0, 1, SlopeWidth(0.5, plane.scaleY));
  const double ends = Strip(Fraction(x), 0, 1, SlopeWidth(end, plane.scaleX));
  const double column = std::floor(x);
  return {std::min(side, ends), OneOfTwo(column), column, row};
}

Tile Bricks(const TilePlane& plane, double x, double y) noexcept {
  return Course(plane, x, y, kBrickEnd, [](double row) { return 0.5 * Oddness(row); });
}

Tile Stairs(const TilePlane& plane, double x, double y) noexcept {
  return Course(plane, x, y, kBrickEnd, [](double row) { return 0.5 * row; });
}

}  // namespace

Tile PatternGrid(const TilePlane& plane, double x, double y) noexcept {
  // A whole tile: it moves nothing but the colours, which makes the checker.
  return Course(plane, x, y, kSquareEnd, [](double row) { return 1.0 * Oddness(row); });
}

Tile PatternBrick(const TilePlane& plane, double x, double y) noexcept {
  return Bricks(plane, x, y);
}

Tile PatternBrickThree(const TilePlane& plane, double x, double y) noexcept {
  Tile tile = Bricks(plane, x, y);
  tile.colorIndex = OneOfThree(tile.cellY + Oddness(tile.cellX));
  return tile;
}

Tile PatternPlanks(const TilePlane& plane, double x, double y) noexcept {
  return Course(plane, x, y, kPlankEnd,
                [](double row) { return 7.0 * HashCell1(static_cast<float>(row)); });
}

Tile PatternHalfSteps(const TilePlane& plane, double x, double y) noexcept {
  return Stairs(plane, x, y);
}

Tile PatternHalfStepsThree(const TilePlane& plane, double x, double y) noexcept {
  Tile tile = Stairs(plane, x, y);
  tile.colorIndex = OneOfThree(tile.cellX + tile.cellY);
  return tile;
}

}  // namespace sorvanix
