// Tile patterns of strips that run both ways over unit cells: a parquet and a plain weave.
//
// B. Gruenbaum and G. C. Shephard, Tilings and Patterns, 1987.
#include <algorithm>
#include <cmath>

#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// As 32-bit numbers: where a point on a border belongs depends on their last digits.
constexpr double kSixth = 0.16666667f;
constexpr double kThird = 0.33333334f;
constexpr double kTwoThirds = 0.6666667f;
constexpr double kFiveSixths = 0.8333333f;

/// A point in its cell, along one axis.
struct AxisPlace {
  double cell;      ///< the cell's number
  double fraction;  ///< 0 to 1
  double slope;     ///< width of a strip's slopes, across it and at its ends
};

AxisPlace PlaceAlong(double v, double scale) noexcept {
  return {std::floor(v), Fraction(v), SlopeWidth(kSixth, scale)};
}

/// The strips of a cell of the parquet. The steps of the cell number give them random colours of
/// their own.
struct ThirdOfCell {
  double low, high, cellStep;
};
constexpr ThirdOfCell kThirds[] = {{0, kThird, 0}, {kThird, kTwoThirds, 7}, {kTwoThirds, 1, 16}};

}  // namespace

Tile PatternThirds(const TilePlane& plane, double x, double y) noexcept {
  AxisPlace u = PlaceAlong(x, plane.scaleX), v = PlaceAlong(y, plane.scaleY);
  const bool stripsAlongX = Oddness(u.cell) != Oddness(v.cell);
  AxisPlace& across = stripsAlongX ? v : u;
  const AxisPlace& along = stripsAlongX ? u : v;

  const int third = (across.fraction >= kThird ? 1 : 0) + (across.fraction >= kTwoThirds ? 1 : 0);
  const ThirdOfCell& strip = kThirds[third];
  const double height = std::min(Strip(across.fraction, strip.low, strip.high, across.slope),
                                 Strip(along.fraction, 0, 1, along.slope));
  across.cell += strip.cellStep;
  return {height, third + 1, u.cell, v.cell};
}

Tile PatternLattice(const TilePlane& plane, double x, double y) noexcept {
  AxisPlace u = PlaceAlong(x, plane.scaleX), v = PlaceAlong(y, plane.scaleY);
  // In each cell the strip on top runs along x or y by turns.
  const bool topAlongX = Oddness(u.cell) == Oddness(v.cell);
  AxisPlace& across = topAlongX ? v : u;
  const AxisPlace& along = topAlongX ? u : v;
  const int topColour = topAlongX ? 1 : 2, otherColour = 3 - topColour;

  if (across.fraction >= kSixth && across.fraction <= kFiveSixths) {
    const double height = Strip(across.fraction, kSixth, kFiveSixths, across.slope);
    return {height, topColour, u.cell, v.cell};
  }
  // Beside it, the strip that is on top in the neighbour's cell runs on for a sixth, and dives. Its
  // profile is 0 in the corners, which are open.
  const bool before = across.fraction < kSixth;
  const double distance = before ? across.fraction : 1 - across.fraction;
  const double end = across.slope == 0 ? 1 : Clamp01((kSixth - distance) / across.slope);
  across.cell += before ? -1 : 1;
  const double height = std::min(Strip(along.fraction, kSixth, kFiveSixths, along.slope), end);
  return {height, otherColour, u.cell, v.cell};
}

}  // namespace sorvanix
