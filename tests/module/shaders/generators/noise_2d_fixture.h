// What the tests of 2D Noise share: the shader through the contract, with a scripted host noise.
//
// Type 12 of the catalogue is the host's unit noise at the point, so a linear host noise makes
// every value computable by hand.
#pragma once

#include <gtest/gtest.h>

#include "module/shaders/generators/noise_2d.h"
#include "tests/support/loaded_module.h"

namespace sorvanix::test {

// What the scripted noise answers: base + slope . (x, y, z, time).
struct LinearNoise {
  float base = 0, x = 0, y = 0, z = 0, time = 0;
};
inline LinearNoise noise;

// A step of 0.45 is the table's for type 12.
inline constexpr float kStep = 0.45f;

struct Noise2DTest : ::testing::Test {
  StartedModule started;
  ShaderUnderTest shader{started, PluginIdNoise2D};
  Noise2DBlock& block = shader.block<Noise2DBlock>();
  RenderContext render = {};
  ChannelSample sample = {};

  Noise2DTest() {
    noise = {};
    started.host.render.unitNoiseAt = [](const Vector* p, float t) noexcept {
      return noise.base + noise.x * p->x + noise.y * p->y + noise.z * p->z + noise.time * t;
    };
    render.filteringOn = 1;
    render.filterScale = 1;
    sample.blurScale = 1;
  }

  void BeginRender(std::int32_t cpus = 1) {
    started.host.cpuCount = cpus;
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
    sample.render = &render;
  }
  FootprintBlock& Slot(int cpu) {
    return *reinterpret_cast<FootprintBlock*>(static_cast<char*>(shader.instance.slots) +
                                              cpu * SlotStrideNoise);
  }
  // Grey value; the default colours are black and white.
  float Grey() {
    const Vector colour = shader.Output(sample);
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
  float GreyOf(float n) {
    noise = {.base = n};
    return Grey();
  }
};

}  // namespace sorvanix::test
