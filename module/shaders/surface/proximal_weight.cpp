// The eight falloffs and the five rules.
#include "module/shaders/surface/proximal_weight.h"

#include <cmath>

#include "module/kit/remap.h"

namespace sorvanix {

namespace {

double Square(double v) noexcept { return v * v; }
double Cube(double v) noexcept { return v * v * v; }

// How far a distance is from the far end: 1 at `low`, 0 at `high`.
double Nearness(double distance, double low, double high) noexcept {
  return 1 - double{LinearStep(low, high, distance)};
}

// 1 / (distance - low), in scene units, and no more than 1.
double Inverse(double distance, double low, double high) noexcept {
  if (distance > high) return 0;
  const double k = distance - low;
  return k <= 1 ? 1 : 1 / k;
}

double Smooth(double distance, double low, double high) noexcept {
  if (distance < low) return 1;
  if (distance >= high) return 0;
  return Square(1 - SmoothCurve((distance - low) / (high - low)));
}

}  // namespace

double ProximalWeight(std::int32_t falloff, double distance, double low, double high) noexcept {
  switch (falloff) {
    case ProximalLinear:
      return Nearness(distance, low, high);
    case ProximalSquare:
      return Square(Nearness(distance, low, high));
    case ProximalCube:
      return Cube(Nearness(distance, low, high));
    case ProximalBand:
      return distance > low && distance < high ? 1 : 0;
    case ProximalInverse:
      return Inverse(distance, low, high);
    case ProximalInverseSquare:
      return Square(Inverse(distance, low, high));
    case ProximalInverseCube:
      return Cube(Inverse(distance, low, high));
    case ProximalSmooth:
      return Smooth(distance, low, high);
    default:
      return distance;
  }
}

double CombineWeights(std::int32_t combine, double value, double weight) noexcept {
  switch (combine) {
    case ProximalMax:
      return weight > value ? weight : value;
    case ProximalScreen:
      return 1 - (1 - value) * (1 - Clamp01(weight));
    case ProximalDifference:
      return std::fabs(weight - value);
    case ProximalOverlap: {
      const double w = Clamp01(weight);
      return 1 - (1 - value) * (1 - w) - Square(w);
    }
    case ProximalAdd:
      return value + weight;
    default:
      return value;
  }
}

}  // namespace sorvanix
