// How Proximal weighs a distance, and how it merges the weights of many points.
#pragma once

#include <cstdint>

namespace sorvanix {

/// How a weight falls from 1 near `low` to 0 near `high`.
enum ProximalFalloff : std::int32_t {
  ProximalLinear = 0,
  ProximalSquare = 1,
  ProximalCube = 2,
  ProximalBand = 3,  ///< 1 between both, 0 elsewhere
  ProximalInverse = 4,
  ProximalInverseSquare = 5,
  ProximalInverseCube = 6,
  ProximalSmooth = 7
};

enum ProximalCombine : std::int32_t {
  ProximalMax = 0,
  ProximalScreen = 1,
  ProximalDifference = 2,
  ProximalOverlap = 3,  ///< a screen that darkens where weights are high
  ProximalAdd = 4
};

/// False for numbers that name no falloff: their weight is the distance itself.
constexpr bool IsProximalFalloff(std::int32_t falloff) noexcept {
  return falloff >= ProximalLinear && falloff <= ProximalSmooth;
}

/// The weight of a distance between two limits; `low` may lie above `high`.
double ProximalWeight(std::int32_t falloff, double distance, double low, double high) noexcept;

/// What becomes of `value` when `weight` joins it. A number that names no rule leaves it.
double CombineWeights(std::int32_t combine, double value, double weight) noexcept;

}  // namespace sorvanix
