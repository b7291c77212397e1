// Tile patterns around points: dots on a grid, and the regions of scattered points.
//
// S. Worley, A Cellular Texture Basis Function, SIGGRAPH 1996.
#include <cmath>

#include "module/kit/vector.h"
#include "module/noise/cellular.h"
#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// A dot in each unit cell, every second column moved up by `shift`.
Tile Dot(double x, double y, double shift) noexcept {
  const double column = std::floor(x);
  y += shift * Oddness(column);
  const double row = std::floor(y);
  const double dx = 0.5 - Fraction(x), dy = 0.5 - Fraction(y);
  const double radius = std::sqrt(dx * dx + dy * dy);
  return {1 - LinearStep(0, 0.5, radius), OneOfTwo(row), column, row};
}

}  // namespace

Tile PatternDots(const TilePlane&, double x, double y) noexcept {
  return Dot(x, y, 1);  // a whole cell moves no dot, only the colours
}

Tile PatternDotsStaggered(const TilePlane&, double x, double y) noexcept { return Dot(x, y, 0.5); }

Tile PatternDotsThree(const TilePlane&, double x, double y) noexcept {
  Tile tile = Dot(x, y, 0.5);
  tile.colorIndex = OneOfThree(tile.cellY + Oddness(tile.cellX));
  return tile;
}

// The region of each feature point is a tile. From f2 - f1 = 0 on the border the height rises with
// the distance to the border: (f2 - f1)(f2 + f1) is the gap between the points times twice that.
Tile PatternCracks(const TilePlane&, double x, double y) noexcept {
  constexpr float kJitter = 1;
  const CellularPoints near =
      CellularSearchHash2(static_cast<float>(x), static_cast<float>(y), kJitter);
  const double gap = Length(Sub(near.p2, near.p1));
  const double f1 = near.f1, f2 = near.f2;
  return {LinearStep(0, gap / (f1 + f2), f2 - f1), 1, near.p1.x, near.p1.y};
}

}  // namespace sorvanix
