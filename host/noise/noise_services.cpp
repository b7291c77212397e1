// Fits the noise functions to the signatures and ranges of the contract.
#include "host/noise/noise_services.h"

#include <cmath>
#include <cstring>

#include "host/noise/fractal.h"

namespace sorvanix::host {
namespace {

// Contrast around 0.5: 982 of 1000 values then lie within 0.3..0.7.
constexpr double UnitContrast = 0.44;
// Both sums get standard deviation 0.5 at five octaves, from 0.203 times the root of the summed
// squares of the amplitudes, 1.154 and 1.365. So 1.5 is three deviations and 2 is four.
constexpr double TurbulenceScale = 2.13;
constexpr double FractalScale = 1.80;
// Band turbulence reaches the ends of its band at 3.5 deviations.
constexpr double BandScale = TurbulenceScale / 1.75;

static_assert(sizeof(OctaveWeights) == FractalWeightsSize);

OctavePoint<3> At(const Vector* point) noexcept {
  return point ? MakeOctavePoint(point->x, point->y, point->z) : OctavePoint<3>{};
}

OctavePoint<4> At(const Vector* point, float time) noexcept {
  return point ? MakeOctavePoint(point->x, point->y, point->z, time)
               : MakeOctavePoint(0.0, 0.0, 0.0, time);
}

// The block is a caller's raw memory, so it is copied rather than viewed.
OctaveWeights ReadWeights(const void* weights) noexcept {
  OctaveWeights values{};
  if (weights) std::memcpy(values.data(), weights, sizeof(values));
  return values;
}

}  // namespace

float SignedNoise(const Vector* point, float time) noexcept {
  return OctaveNoise(At(point, time), 0, 1.0);
}

float UnitNoise(const Vector* point) noexcept {
  return static_cast<float>(0.5 + UnitContrast * OctaveNoise(At(point), 0, 1.0));
}

float UnitNoiseAt(const Vector* point, float time) noexcept {
  return static_cast<float>(0.5 + UnitContrast * OctaveNoise(At(point, time), 0, 1.0));
}

float Turbulence(const Vector* point, float time, float octaves, int32_t absolute) noexcept {
  return static_cast<float>(TurbulenceScale *
                            TurbulenceSum(At(point, time), octaves, absolute != 0));
}

float BandTurbulence(const Vector* point, float time, float octaves, float band) noexcept {
  const double value = 0.5 + band * BandScale * TurbulenceSum(At(point, time), octaves, false);
  if (std::isnan(value)) return 0.5F;
  return static_cast<float>(value < 0.0 ? 0.0 : value > 1.0 ? 1.0 : value);
}

int32_t FractalInit(void* weights, int32_t capacity, float step, float exponent) noexcept {
  if (!weights) return 0;
  constexpr double Limit = 1e30;  // keeps the sums finite
  const double ratio = step > 0.0F ? std::pow(step, -static_cast<double>(exponent)) : -1.0;
  const bool valid = ratio >= 0.0;
  OctaveWeights values{1.0F};
  double weight = 1.0;
  for (std::size_t i = 1; valid && i < values.size() && static_cast<int32_t>(i) <= capacity; ++i) {
    weight = std::fmin(weight * ratio, Limit);
    values[i] = static_cast<float>(weight);
  }
  std::memcpy(weights, values.data(), sizeof(values));
  return valid;
}

float FractalSum(const void* weights, const Vector* point, float time, float octaves) noexcept {
  return static_cast<float>(FractalScale *
                            SpectralSum(ReadWeights(weights), At(point, time), octaves));
}

float FractalSumPoint(const void* weights, const Vector* point, float octaves) noexcept {
  return static_cast<float>(FractalScale * SpectralSum(ReadWeights(weights), At(point), octaves));
}

float FractalRidged(const void* weights, const Vector* point, float octaves, float offset,
                    float gain) noexcept {
  return static_cast<float>(RidgedSum(ReadWeights(weights), At(point), octaves, offset, gain));
}

void InstallNoiseServices(RenderTable& table) noexcept {
  table.signedNoise = SignedNoise;
  table.unitNoise = UnitNoise;
  table.unitNoiseAt = UnitNoiseAt;
  table.turbulence = Turbulence;
  table.bandTurbulence = BandTurbulence;
  table.fractalInit = FractalInit;
  table.fractalSum = FractalSum;
  table.fractalSumPoint = FractalSumPoint;
  table.fractalRidged = FractalRidged;
}

}  // namespace sorvanix::host
