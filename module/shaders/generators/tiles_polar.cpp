// Tile patterns around the middle of each texture tile: rings, spirals and wedges.
#include <cmath>
#include <numbers>

#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

using ColourOf = int (*)(double number) noexcept;

constexpr double kTilesPerUnit = 10;

/// A point seen from the middle of its texture tile.
struct FromCentre {
  double x, y;

  double Radius() const noexcept { return std::sqrt(x * x + y * y); }

  /// 0 to 2 pi, from the left round by way of below. Never quite a quarter turn on the right, where
  /// a tiny guard against a division by 0 stands in the quotient.
  double Angle() const noexcept {
    constexpr double kPi = std::numbers::pi;
    constexpr double kGuard = 1e-10;
    const bool right = x >= 0, above = y >= 0;
    const double slope = std::atan(std::fabs(y) / (std::fabs(x) + (right ? kGuard : 0)));
    if (right) return above ? kPi + slope : kPi - slope;
    return above ? 2 * kPi - slope : slope;
  }
};

double FromMiddle(double v, double period) noexcept {
  return period == 0 ? 0 : Wrap(v, period) - 0.5 * period;
}

FromCentre CentredAt(const TilePlane& plane, double x, double y) noexcept {
  return {FromMiddle(x, plane.periodX), FromMiddle(y, plane.periodY)};
}

// The tile at a coordinate that counts tiles. Grout runs half way between whole numbers, so that
// number n reaches from n + 0.5 to n + 1.5.
double NumberAt(double c) noexcept { return std::floor(c - 0.5); }
Tile TileAt(double c, double number, ColourOf colourOf) noexcept {
  return {1 - Tent(c), colourOf(number), number, number + 13};
}

Tile Ring(const TilePlane& plane, double x, double y, ColourOf colourOf) noexcept {
  const double c = CentredAt(plane, x, y).Radius() * kTilesPerUnit;
  return TileAt(c, NumberAt(c), colourOf);
}

// Rings that grow with the angle. `perRadian` is a whole number of colour cycles a turn for each
// arm, so that the arms meet themselves.
Tile Spiral(const TilePlane& plane, double x, double y, double perRadian,
            ColourOf colourOf) noexcept {
  const FromCentre point = CentredAt(plane, x, y);
  const double c = (point.Angle() * plane.arms * perRadian + point.Radius()) * kTilesPerUnit;
  return TileAt(c, NumberAt(c), colourOf);
}

// Wedges by angle alone, `share` * 10 of them a turn for each arm. The half wedge at angle 0 is the
// rest of the last one of the turn.
Tile Wedge(const TilePlane& plane, double x, double y, double perRadian, double share,
           ColourOf colourOf) noexcept {
  constexpr double kHalfWedge = 0.31415927f;
  constexpr double kAlmostOne = 0.9999998f;
  const double turned = CentredAt(plane, x, y).Angle() * plane.arms;
  const double c = turned * perRadian * kTilesPerUnit;
  const bool first = turned * share <= kHalfWedge;
  const double last = NumberAt(plane.arms * share * kAlmostOne * kTilesPerUnit);
  return TileAt(c, first ? last : NumberAt(c), colourOf);
}

}  // namespace

Tile PatternRings(const TilePlane& plane, double x, double y) noexcept {
  return Ring(plane, x, y, OneOfTwo);
}

Tile PatternRingsThree(const TilePlane& plane, double x, double y) noexcept {
  return Ring(plane, x, y, OneOfThree);
}

Tile PatternSpiral(const TilePlane& plane, double x, double y) noexcept {
  return Spiral(plane, x, y, 0.03183098861837907, OneOfTwo);  // 2 / 10 / 2 pi
}

Tile PatternSpiralThree(const TilePlane& plane, double x, double y) noexcept {
  return Spiral(plane, x, y, 0.047746482927568605, OneOfThree);  // 3 / 10 / 2 pi
}

Tile PatternWedges(const TilePlane& plane, double x, double y) noexcept {
  return Wedge(plane, x, y, 0.15915494f, 1, OneOfTwo);  // 1 / 2 pi
}

Tile PatternWedgesThree(const TilePlane& plane, double x, double y) noexcept {
  return Wedge(plane, x, y, 0.14323945f, 0.9, OneOfThree);  // 0.9 / 2 pi
}

}  // namespace sorvanix
