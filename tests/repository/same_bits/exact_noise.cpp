#include "tests/repository/same_bits/exact_noise.h"

#include <cmath>
#include <cstdint>

namespace sorvanix::test {

namespace {

/// A cell's value in 0..1; the multipliers are the primes of Teschner's spatial hash.
double Corner(std::int32_t x, std::int32_t y, std::int32_t z) {
  std::uint32_t hash = static_cast<std::uint32_t>(x) * 73856093u ^
                       static_cast<std::uint32_t>(y) * 19349663u ^
                       static_cast<std::uint32_t>(z) * 83492791u;
  hash = (hash ^ (hash >> 15)) * 2246822519u;
  return (hash >> 8) * 0x1p-24;
}

struct Place {
  std::int32_t cell;
  double fraction;
};
Place PlaceOf(double coordinate) {
  constexpr double kPeriod = 65536;  // keeps the cell within its type; fmod is exact
  const double wrapped = std::isfinite(coordinate) ? std::fmod(coordinate, kPeriod) : 0;
  const double cell = std::floor(wrapped);
  return {static_cast<std::int32_t>(cell), wrapped - cell};
}

double Between(double a, double b, double t) { return a + (b - a) * t; }

double Octaves(const Vector& point, float time, float octaves) {
  double sum = 0, weight = 0.5;
  Vector p = point;
  for (int i = 0; i < 8 && static_cast<float>(i) < octaves; ++i) {
    sum += weight * (ExactNoise(p, time) - 0.5);
    weight *= 0.5;
    p = {p.x * 2, p.y * 2, p.z * 2};
  }
  return sum;
}

float Narrow(double value) { return static_cast<float>(value); }

}  // namespace

double ExactNoise(const Vector& point, float time) {
  const Place x = PlaceOf(point.x + 0.7 * time), y = PlaceOf(point.y), z = PlaceOf(point.z);
  const auto edge = [&](std::int32_t j, std::int32_t k) {
    return Between(Corner(x.cell, y.cell + j, z.cell + k),
                   Corner(x.cell + 1, y.cell + j, z.cell + k), x.fraction);
  };
  return Between(Between(edge(0, 0), edge(1, 0), y.fraction),
                 Between(edge(0, 1), edge(1, 1), y.fraction), z.fraction);
}

void InstallExactNoise(RenderTable& table) {
  table.signedNoise = [](const Vector* p, float time) noexcept {
    return Narrow(ExactNoise(*p, time) - 0.5);
  };
  table.unitNoise = [](const Vector* p) noexcept { return Narrow(ExactNoise(*p, 0)); };
  table.unitNoiseAt = [](const Vector* p, float time) noexcept {
    return Narrow(ExactNoise(*p, time));
  };
  table.turbulence = [](const Vector* p, float time, float octaves,
                        std::int32_t absolute) noexcept {
    const double sum = Octaves(*p, time, octaves);
    return Narrow(absolute != 0 && sum < 0 ? -sum : sum);
  };
  table.bandTurbulence = [](const Vector* p, float time, float octaves, float) noexcept {
    return Narrow(0.5 + Octaves(*p, time, octaves));
  };
  table.fractalSum = [](const void*, const Vector* p, float time, float octaves) noexcept {
    return Narrow(2 * Octaves(*p, time, octaves));
  };
  table.fractalSumPoint = [](const void*, const Vector* p, float octaves) noexcept {
    return Narrow(2 * Octaves(*p, 0, octaves));
  };
  table.fractalRidged = [](const void*, const Vector* p, float octaves, float offset,
                           float gain) noexcept {
    return Narrow((offset - Octaves(*p, 0, octaves)) * gain * 0.25);
  };
}

}  // namespace sorvanix::test
