// From a coordinate to a place on the ramp: one function for each shape.
#include "module/shaders/generators/gradient_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "module/kit/remap.h"
#include "module/kit/vector.h"

namespace sorvanix {

namespace {

struct Coordinate {
  double u, v;
};

// --- tiling ---

// There and back again within two tiles.
Coordinate Mirrored(const Coordinate& at) noexcept {
  double u = Wrap(at.u, 2);
  if (u >= 1) u = 2 - u;
  double v = Wrap(at.v, 2);
  // Deliberate: it is u that a mirrored v shows. Pictures depend on it.
  if (v >= 1) v = 2 - u;
  return {u, v};
}

// Only a render knows how the surface is tiled.
Coordinate Tiled(const GradientBlock& block, const RenderContext* render,
                 const Coordinate& at) noexcept {
  constexpr int kTiles = 1, kMirrors = 2;
  if (ReadsPoint(block.type) || render == nullptr || block.cycle == 0) return at;
  const TextureTag* tag = render->textureTag;
  if (tag == nullptr || (tag->flags & kTiles) == 0) return at;
  if ((tag->flags & kMirrors) != 0) return Mirrored(at);
  return {Fraction(at.u), Fraction(at.v)};
}

// --- shapes in the texture: fractions of the ramp ---

double Angle(const Coordinate& at) noexcept {
  constexpr double kTurn = 2 * std::numbers::pi;
  constexpr double kOffSeam = 1e-5;  // puts the vertical through the middle on a defined side
  double a = at.u - 0.5;
  if (a == 0) a = kOffSeam;
  double angle = std::atan((at.v - 0.5) / a);
  if (a < 0) angle += std::numbers::pi;
  if (angle < 0) angle += kTurn;
  return angle * (1 / kTurn);
}

double Diagonal(double a, double b) noexcept { return std::sqrt(a * a + b * b); }

// Not quite the root of 2, so that the corners stay just below the ramp's end.
double Circle(const Coordinate& at) noexcept { return Diagonal(at.u - 0.5, at.v - 0.5) * 1.4142; }

double Box(const Coordinate& at) noexcept {
  return 2 * std::max(std::fabs(at.u - 0.5), std::fabs(at.v - 0.5));
}

double Corners(const Coordinate& at) noexcept {
  return Diagonal(std::fabs(at.u - 0.5) - 0.5, std::fabs(at.v - 0.5) - 0.5) * 1.41;
}

Vector FourColours(const Ramp& ramp, const Coordinate& at) noexcept {
  const auto colour = [&ramp](std::int32_t knot) {
    return knot < LiveKnots(ramp.count) ? ramp.knots[knot].colour : Vector{};
  };
  const auto u = static_cast<float>(Clamp01(at.u)), v = static_cast<float>(Clamp01(at.v));
  return Lerp(Lerp(colour(0), colour(1), u), Lerp(colour(2), colour(3), u), v);
}

// --- shapes in space ---

// Repeats a distance from 0 to 1, or holds its end.
double CycledOrHeld(double t, std::int32_t cycle) noexcept {
  return cycle != 0 ? Fraction(t) : Clamp01(t);
}

// A line without length divides 0 by 0, and the ramp then shows its last colour; with `cycle` its
// last place.
double Linear(const GradientBlock& block, const Vector& point) noexcept {
  const Vector line = Sub(block.end, block.start);
  const double length = Length(line);
  const double along = WideDot(Normalized(line), Sub(point, block.start));
  if (block.cycle == 0) return Clamp01(along / length);
  const double rest = Wrap(along, length);
  if (length == 0) return rest < length ? 0 : 1;
  return Clamp01(rest / length);
}

double Cylinder(const GradientBlock& block, const Vector& point) noexcept {
  const float radius = block.radius;
  Vector off = OffsetFromLine(block.start, Sub(block.end, block.start), point);
  off = radius == 0 ? Vector{} : ByComponent([radius](double c) { return c / radius; }, off);
  return CycledOrHeld(Length(off), block.cycle);
}

// A radius of 0 is not guarded: all is far outside.
double Sphere(const GradientBlock& block, const Vector& point) noexcept {
  const auto distance = static_cast<double>(Length(Sub(point, block.start)));
  return CycledOrHeld(distance / block.radius, block.cycle);
}

double PlaceOnRamp(const GradientBlock& block, const Coordinate& at, const Vector* point) noexcept {
  switch (block.type) {
    case GradientV:
      return 1 - at.v;
    case GradientDiagonal:
      return (at.u + at.v) * 0.5;
    case GradientAngle:
      return Angle(at);
    case GradientCircle:
      return Circle(at);
    case GradientBox:
      return Box(at);
    case GradientCorners:
      return Corners(at);
    case GradientLinear3D:
      return point == nullptr ? at.u : Linear(block, *point);
    case GradientCylinder3D:
      return point == nullptr ? std::fabs(2 * at.u - 1) : Cylinder(block, *point);
    case GradientSphere3D:
      return point == nullptr ? Circle(at) : Sphere(block, *point);
    default:
      return at.u;
  }
}

}  // namespace

Vector EvaluateGradient(const GradientBlock& block, const RenderContext* render,
                        const GradientPlace& place) noexcept {
  const Coordinate at = Tiled(block, render, {place.uvw.x, place.uvw.y});
  const Ramp& ramp = block.ramp;
  if (block.type == GradientFourColours) return FourColours(ramp, at);
  const double t = PlaceOnRamp(block, at, render == nullptr ? nullptr : &place.point);
  return SampleRamp(static_cast<float>(t), ramp.knots, ramp.count, ramp.interpolation);
}

}  // namespace sorvanix
