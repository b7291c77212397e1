// What the tile patterns share: what one is told and answers, and the profile across a tile.
#pragma once

#include <cmath>

#include "module/kit/remap.h"

namespace sorvanix {

/// What a pattern may know of the plane that it lies on.
struct TilePlane {
  double scaleX, scaleY;    ///< by how much the axes are stretched
  double periodX, periodY;  ///< size of one texture tile; 0 where a scale is 0
  double arms;
};

/// The tile that holds a point.
struct Tile {
  double height;        ///< 0 in the middle of the grout, up to 1 inside the tile
  int colorIndex;       ///< 1 to 3
  double cellX, cellY;  ///< name the tile: its random colour is their hash
};

/// One pattern, at a point in its own units. Pure: it reads nothing but its arguments and the
/// hash tables.
using PatternFunction = Tile(const TilePlane& plane, double x, double y) noexcept;

/// 1 for an odd number of a column or row, else 0. The numbers are whole; NaN is not odd.
inline int Oddness(double number) noexcept { return Fraction(number * 0.5) == 0.5 ? 1 : 0; }

/// Colours in turn by a whole number: 1, 2, 1, 2, ...
inline int OneOfTwo(double number) noexcept { return 1 + Oddness(number); }

/// 1, 2, 3, 1, ...
inline int OneOfThree(double number) noexcept {
  const double turn = Wrap(number, 3);
  return turn == 0 ? 1 : turn == 1 ? 2 : 3;
}

/// 0 at whole numbers, 1 half way between.
inline double Tent(double v) noexcept { return 1 - std::fabs(2 * Fraction(v) - 1); }

/// How far the slope of a tile reaches, in the units of an axis. Divided by the axis' stretch, so
/// that grout keeps its width however the tiles are stretched; at most `unstretched`.
inline double SlopeWidth(double unstretched, double scale) noexcept {
  return scale == 0 ? unstretched : Limit(0, unstretched, unstretched / scale);
}

/// The profile across a strip from low to high: rises from 0 at low over the width w, stays at 1,
/// and falls to 0 at high. A width of 0 makes the sides steep.
inline double Strip(double v, double low, double high, double w) noexcept {
  if (w == 0) return (v >= low ? 1.0 : 0.0) - (v >= high ? 1.0 : 0.0);
  return Clamp01((v - low) / w) - Clamp01((v - high + w) / w);
}

}  // namespace sorvanix
