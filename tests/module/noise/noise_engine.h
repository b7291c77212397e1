// A fixture for the noise engine: tables as at start, and host noise that each test chooses.
#pragma once

#include <gtest/gtest.h>

#include "module/noise/catalogue.h"
#include "module/noise/tables.h"
#include "module/shell/module_state.h"
#include "tests/support/analytic_noise.h"

namespace sorvanix::test {

/// The arguments of the catalogue but for the type. Most tests sample this point: no coordinate is
/// special, and all are exact in float.
struct Sample {
  float x = 0.5f, y = 1.25f, z = 2.25f;
  float octaves = 1;
  float time = 0.75f;
  std::int32_t absolute = 0;
  float footprint = 0, detail = 1;
};

inline float Planar(std::int32_t type, const Sample& s) {
  return NoiseCatalogue2D(type, s.x, s.y, s.z, s.octaves, s.time, s.absolute, s.footprint,
                          s.detail);
}

inline float Solid(std::int32_t type, const Sample& s) {
  return NoiseCatalogue3D(type, s.x, s.y, s.z, s.octaves, s.time, s.absolute, s.footprint,
                          s.detail);
}

class NoiseEngine : public ::testing::Test {
 protected:
  using Operation = NoiseOperation;

  NoiseEngine() {
    BuildNoiseTables(kNoiseSeed);
    sharedGenerator.Reset(kNoiseSeed);
    hostApi.render = noise.table();
  }
  ~NoiseEngine() override { hostApi.render = nullptr; }

  /// Answers values[i] where point.x is that of copy i of a recipe which moves its copies by `step`
  /// along x, from `start` on.
  static NoiseFunction AlongX(float start, float step, std::vector<double> values) {
    return [=](const NoiseCall& call) {
      const auto copy = static_cast<std::size_t>((call.point.x - start) / step + 0.5f);
      return copy < values.size() ? values[copy] : 0;
    };
  }

  AnalyticNoise noise;
};

/// Rounding of one or two floats of magnitude 1, and of the stored reciprocals in the recipes.
inline constexpr double kRounding = 1e-6;

}  // namespace sorvanix::test

#define EXPECT_POINT(point, px, py, pz)   \
  do {                                    \
    const Vector point_ = (point);        \
    EXPECT_FLOAT_EQ(point_.x, float(px)); \
    EXPECT_FLOAT_EQ(point_.y, float(py)); \
    EXPECT_FLOAT_EQ(point_.z, float(pz)); \
  } while (false)
