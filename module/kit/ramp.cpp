// The ramp's sampler: a scan for the span, then one of five curves.
//
// References: E. Catmull, R. Rom, "A class of local interpolating splines", 1974; G. Farin, "Curves
// and Surfaces for CAGD", chapter 4 (Bezier curves).
#include "module/kit/ramp.h"

#include "module/kit/remap.h"
#include "module/kit/vector.h"

namespace sorvanix {
namespace {

// Bends u so that u = bias lands on a half.
double BiasedParameter(double u, double bias) {
  if (u < bias) return Clamp01NanToZero(u / bias) * 0.5;
  if (bias == 1) return 1;  // every u below 1 went up to a half only: the rest is a jump
  return (Clamp01NanToZero((u - bias) / (1 - bias)) + 1) * 0.5;
}

Vector CubicSpan(double w, std::int32_t index, const RampKnot* knots, std::int32_t live) {
  const Vector& p1 = knots[index].colour;
  const Vector& p2 = knots[index + 1].colour;
  const Vector& p0 = index < 1 ? p1 : knots[index - 1].colour;
  const Vector& p3 = index + 2 < live ? knots[index + 2].colour : p2;
  const auto curve = [w](double a, double b, double c, double d) {
    const double square = a - 2.5 * b + 2 * c - 0.5 * d;
    const double cube = -0.5 * a + 1.5 * b - 1.5 * c + 0.5 * d;
    return Clamp01NanToZero(b + w * ((c - a) / 2 + w * (square + w * cube)));
  };
  return ByComponent(curve, p0, p1, p2, p3);
}

Vector BezierSpan(double u, double bias, const Vector& left, const Vector& right) {
  const double s = 1 - u;
  const auto curve = [=](double k, double l) {
    const double handle1 = k + 0.75 * (1 - bias) * (l - k);
    const double handle2 = k + (1 - 0.75 * bias) * (l - k);
    return Clamp01NanToZero(s * s * s * k + 3 * u * s * s * handle1 + 3 * u * u * s * handle2 +
                            u * u * u * l);
  };
  return ByComponent(curve, left, right);
}

Vector BlendSpan(double weight, const Vector& left, const Vector& right) {
  return ByComponent([weight](double k, double l) { return k + weight * (l - k); }, left, right);
}

}  // namespace

Vector InterpolateSpan(double u, std::int32_t index, const RampKnot* knots, std::int32_t count,
                       std::int32_t interpolation) {
  const std::int32_t live = LiveKnots(count);
  if (index < 0 || index >= live - 1) return {0, 0, 0};

  const RampKnot& left = knots[index];
  const Vector& right = knots[index + 1].colour;
  switch (interpolation) {
    case RampCubic:
      return CubicSpan(BiasedParameter(u, left.bias), index, knots, live);
    case RampBezier:  // The bias stands in the handles, so u stays plain.
      return BezierSpan(u, left.bias, left.colour, right);
    case RampSmooth:
      return BlendSpan(SmoothCurve(BiasedParameter(u, left.bias)), left.colour, right);
    case RampLinear:
      return BlendSpan(BiasedParameter(u, left.bias), left.colour, right);
    case RampStep:
      return left.colour;
    default:
      return {0, 0, 0};
  }
}

Vector SampleRamp(float t, const RampKnot* knots, std::int32_t count, std::int32_t interpolation) {
  const std::int32_t live = LiveKnots(count);
  if (live == 0) return {0, 0, 0};

  // The last knot that t has reached: of knots that share a position, the rightmost.
  std::int32_t i = 0;
  for (std::int32_t j = 1; j < live && !(t < knots[j].position); ++j) i = j;

  const RampKnot& left = knots[i];
  if (i + 1 >= live || !(t >= left.position)) return left.colour;
  const double span = double{knots[i + 1].position} - left.position;
  if (span == 0) return left.colour;
  return InterpolateSpan((double{t} - left.position) / span, i, knots, count, interpolation);
}

}  // namespace sorvanix
