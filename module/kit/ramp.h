// The colour ramp: up to fifty colour knots along a line, and its sampler.
//
// The knot list, its drawing order and the rest stand at the head of the blocks of Gradient,
// Falloff and Fresnel, and behind one field in Colorizer's, so the layout is a format.
#pragma once

#include <sorvanix/types.h>

#include <cstddef>
#include <cstdint>

namespace sorvanix {

/// The most knots that a ramp holds.
inline constexpr std::int32_t RampMaxKnots = 50;

/// The shape of a span between two knots. Documents store the numbers.
enum RampInterpolation : std::int32_t {
  RampCubic = 0,   ///< a Catmull-Rom curve through the neighbouring knots
  RampBezier = 1,  ///< a Bezier curve; the bias sets its handles
  RampSmooth = 2,  ///< a smooth step between the end colours
  RampLinear = 3,  ///< a straight blend of the end colours
  RampStep = 4     ///< the left colour for the whole span
};

/// One knot.
struct RampKnot {
  Vector colour{};     ///< red, green, blue; stored as given
  float position = 0;  ///< place on the ramp, 0 to 1
  float bias = 0.5f;   ///< where the span to the next knot reaches its middle, 0 to 1
};

/// A ramp inside a block.
///
/// `knots` ascend by position; two may share one. The first `count` are live; those behind them
/// keep what they held before. The first `count` entries of `order` name each live knot once, in
/// drawing order: the last one lies on top. `count` comes from files and messages unchecked; read
/// it through LiveKnots.
struct Ramp {
  RampKnot knots[RampMaxKnots];
  std::int32_t order[RampMaxKnots]{};
  std::int32_t interpolation = RampCubic;
  std::int32_t count = 0;
  std::int32_t selected = 0;  ///< 0 to 49 a knot's position handle, 50 to 99 its bias handle
};

static_assert(sizeof(RampKnot) == 20);
static_assert(offsetof(RampKnot, position) == 12 && offsetof(RampKnot, bias) == 16);
static_assert(sizeof(Ramp) == 1212);
static_assert(offsetof(Ramp, order) == 1000 && offsetof(Ramp, interpolation) == 1200);
static_assert(offsetof(Ramp, count) == 1204 && offsetof(Ramp, selected) == 1208);

/// The ramp of a new block: three knots, ascending by position, the first of them on top.
constexpr Ramp DefaultRamp(const RampKnot& first, const RampKnot& second, const RampKnot& third) {
  Ramp ramp;
  ramp.knots[0] = first;
  ramp.knots[1] = second;
  ramp.knots[2] = third;
  ramp.order[0] = 2;
  ramp.order[1] = 1;
  ramp.order[2] = 0;
  ramp.count = 3;
  return ramp;
}

/// How many knots a stored count stands for: `count` limited to 0..RampMaxKnots.
constexpr std::int32_t LiveKnots(std::int32_t count) {
  if (count < 0) return 0;
  return count > RampMaxKnots ? RampMaxKnots : count;
}

/// The colour at t. Below the first knot and from the last knot on, the ramp holds their colours,
/// whatever the interpolation; a t of NaN gives the last knot's. Without knots, black. `knots`
/// holds RampMaxKnots records, of which `count`, limited as in LiveKnots, are read. A pure
/// function.
Vector SampleRamp(float t, const RampKnot* knots, std::int32_t count, std::int32_t interpolation);

/// The colour within the span from knot `index` to the next, at u from 0 to 1. Black for an unknown
/// interpolation, or where there is no such span.
Vector InterpolateSpan(double u, std::int32_t index, const RampKnot* knots, std::int32_t count,
                       std::int32_t interpolation);

}  // namespace sorvanix
