// A 3D Noise under test over scripted noise: type 12 of the catalogue is the host's unit noise at
// the point, so a linear noise makes every value computable by hand, and the point can be recorded.
#pragma once

#include "module/shaders/generators/noise_3d.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {

/// What the scripted noise answers: base + slope . (x, y, z, time).
struct ScriptedNoise {
  float base = 0, x = 0, y = 0, z = 0, time = 0;
};

struct Noise3DTest : FilterTest<Noise3DBlock, PluginIdNoise3D> {
  static inline ScriptedNoise noise;
  static inline Vector asked;  ///< the point of the last question
  static inline float askedTime;
  static inline const Matrix* camera;

  /// The bump step of type 12.
  static constexpr float kStep = 0.45f;

  Noise3DTest() {
    noise = {};
    camera = nullptr;
    host.render.unitNoiseAt = [](const Vector* p, float t) noexcept {
      asked = *p;
      askedTime = t;
      return noise.base + noise.x * p->x + noise.y * p->y + noise.z * p->z + noise.time * t;
    };
    host.render.query = [](const RenderContext*, std::int32_t code) noexcept -> const void* {
      return code == QueryCameraMatrix ? camera : nullptr;
    };
    render.filteringOn = 1;
    render.filterScale = 1;
    sample.blurScale = 1;
  }

  FootprintBlock& OwnSlot(std::int32_t cpu = 0) { return Slot(cpu, SlotStrideNoise); }
  float StepOfSlot(std::int32_t cpu) { return *reinterpret_cast<const float*>(&OwnSlot(cpu) + 1); }
  /// Grey value; the default colours are black and white.
  float Grey() {
    const Vector colour = Output();
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
  float GreyOf(float value) {
    noise = {.base = value};
    return Grey();
  }
  /// The point that the catalogue is asked for.
  Vector PointAsked() {
    Output();
    return asked;
  }
};

}  // namespace sorvanix::test
