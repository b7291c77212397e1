// Host noise that can be computed by hand: each operation is a function that the test chooses, and
// every call is recorded.
//
//   AnalyticNoise noise;
//   noise.Set(NoiseOperation::SignedNoise, LinearNoise{.constant = 0.2, .x = 0.1});
//   hostApi.render = noise.table();
//
// An operation that was not set answers 0.
#pragma once

#include <sorvanix/host_api.h>

#include <array>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace sorvanix::test {

enum class NoiseOperation {
  SignedNoise,
  UnitNoise,
  UnitNoiseAt,
  Turbulence,
  BandTurbulence,
  FractalInit,
  FractalSum,
  FractalSumPoint,
  FractalRidged,
};
inline constexpr std::size_t kNoiseOperationCount = 9;

/// One call of an operation. Arguments that the operation does not have are 0.
struct NoiseCall {
  NoiseOperation operation = NoiseOperation::SignedNoise;
  Vector point = {};
  float time = 0;
  float octaves = 0;
  std::int32_t absolute = 0;
  const void* weights = nullptr;
  std::int32_t capacity = 0;
  float first = 0;   // band; step of FractalInit; offset of FractalRidged
  float second = 0;  // exponent of FractalInit; gain of FractalRidged
};

/// The value that an operation answers to a call; narrowed to float.
using NoiseFunction = std::function<double(const NoiseCall&)>;

/// constant + x * point.x + y * point.y + z * point.z + time * call.time, in double.
struct LinearNoise {
  double constant = 0, x = 0, y = 0, z = 0, time = 0;
  double operator()(const NoiseCall& call) const {
    return constant + x * call.point.x + y * call.point.y + z * call.point.z + time * call.time;
  }
};

/// A RenderTable whose noise operations answer as told. The operations are plain C functions, so
/// only one object can live at a time: the constructor aborts when there is another.
class AnalyticNoise {
 public:
  AnalyticNoise();
  ~AnalyticNoise();
  AnalyticNoise(const AnalyticNoise&) = delete;
  AnalyticNoise& operator=(const AnalyticNoise&) = delete;

  /// Only while no other thread calls the table.
  void Set(NoiseOperation operation, NoiseFunction function);
  void SetConstant(NoiseOperation operation, double value);

  /// Holds the noise operations alone; a test may fill in the others that it needs.
  RenderTable* table() { return &table_; }

  /// The calls since the last Clear, in their order.
  const std::vector<NoiseCall>& calls() const { return calls_; }
  std::vector<NoiseCall> callsOf(NoiseOperation operation) const;
  void Clear() { calls_.clear(); }
  /// On at first; tests with many calls or threads switch it off.
  void Record(bool on) { recording_ = on; }

 private:
  friend struct AnalyticNoiseTable;
  float Answer(const NoiseCall& call) noexcept;

  RenderTable table_ = {};
  std::array<NoiseFunction, kNoiseOperationCount> functions_;
  std::vector<NoiseCall> calls_;
  std::mutex mutex_;
  bool recording_ = true;
};

}  // namespace sorvanix::test
