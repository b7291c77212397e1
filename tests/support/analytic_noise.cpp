#include "tests/support/analytic_noise.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace sorvanix::test {

namespace {

AnalyticNoise* current = nullptr;

}  // namespace

/// The operations of the table, each of which turns its arguments into a NoiseCall.
struct AnalyticNoiseTable {
  using Operation = NoiseOperation;

  static float SignedNoise(const Vector* point, float time) noexcept {
    return current->Answer({.operation = Operation::SignedNoise, .point = *point, .time = time});
  }
  static float UnitNoise(const Vector* point) noexcept {
    return current->Answer({.operation = Operation::UnitNoise, .point = *point});
  }
  static float UnitNoiseAt(const Vector* point, float time) noexcept {
    return current->Answer({.operation = Operation::UnitNoiseAt, .point = *point, .time = time});
  }
  static float Turbulence(const Vector* point, float time, float octaves,
                          std::int32_t absolute) noexcept {
    return current->Answer({.operation = Operation::Turbulence,
                            .point = *point,
                            .time = time,
                            .octaves = octaves,
                            .absolute = absolute});
  }
  static float BandTurbulence(const Vector* point, float time, float octaves, float band) noexcept {
    return current->Answer({.operation = Operation::BandTurbulence,
                            .point = *point,
                            .time = time,
                            .octaves = octaves,
                            .first = band});
  }
  static std::int32_t FractalInit(void* weights, std::int32_t capacity, float step,
                                  float exponent) noexcept {
    current->Answer({.operation = Operation::FractalInit,
                     .weights = weights,
                     .capacity = capacity,
                     .first = step,
                     .second = exponent});
    return 1;
  }
  static float FractalSum(const void* weights, const Vector* point, float time,
                          float octaves) noexcept {
    return current->Answer({.operation = Operation::FractalSum,
                            .point = *point,
                            .time = time,
                            .octaves = octaves,
                            .weights = weights});
  }
  static float FractalSumPoint(const void* weights, const Vector* point, float octaves) noexcept {
    return current->Answer({.operation = Operation::FractalSumPoint,
                            .point = *point,
                            .octaves = octaves,
                            .weights = weights});
  }
  static float FractalRidged(const void* weights, const Vector* point, float octaves, float offset,
                             float gain) noexcept {
    return current->Answer({.operation = Operation::FractalRidged,
                            .point = *point,
                            .octaves = octaves,
                            .weights = weights,
                            .first = offset,
                            .second = gain});
  }
};

AnalyticNoise::AnalyticNoise() {
  if (current != nullptr) std::abort();
  current = this;
  table_.signedNoise = AnalyticNoiseTable::SignedNoise;
  table_.unitNoise = AnalyticNoiseTable::UnitNoise;
  table_.unitNoiseAt = AnalyticNoiseTable::UnitNoiseAt;
  table_.turbulence = AnalyticNoiseTable::Turbulence;
  table_.bandTurbulence = AnalyticNoiseTable::BandTurbulence;
  table_.fractalInit = AnalyticNoiseTable::FractalInit;
  table_.fractalSum = AnalyticNoiseTable::FractalSum;
  table_.fractalSumPoint = AnalyticNoiseTable::FractalSumPoint;
  table_.fractalRidged = AnalyticNoiseTable::FractalRidged;
}

AnalyticNoise::~AnalyticNoise() { current = nullptr; }

void AnalyticNoise::Set(NoiseOperation operation, NoiseFunction function) {
  functions_[static_cast<std::size_t>(operation)] = std::move(function);
}

void AnalyticNoise::SetConstant(NoiseOperation operation, double value) {
  Set(operation, LinearNoise{.constant = value});
}

std::vector<NoiseCall> AnalyticNoise::callsOf(NoiseOperation operation) const {
  std::vector<NoiseCall> found;
  std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
               [operation](const NoiseCall& call) { return call.operation == operation; });
  return found;
}

float AnalyticNoise::Answer(const NoiseCall& call) noexcept {
  if (recording_) {
    const std::lock_guard lock(mutex_);
    calls_.push_back(call);
  }
  const NoiseFunction& function = functions_[static_cast<std::size_t>(call.operation)];
  return function ? static_cast<float>(function(call)) : 0.0f;
}

}  // namespace sorvanix::test
