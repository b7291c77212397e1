// A gradient under test whose ramp shows the place on the ramp itself.
#pragma once

#include "module/shaders/generators/gradient.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {

struct GradientTest : FilterTest<GradientBlock, PluginIdGradient> {
  /// Black at 0 to white at 1 in a straight line: the colour is the place, held to 0..1.
  GradientTest() {
    block.ramp.knots[0] = {{0, 0, 0}, 0, 0.5f};
    block.ramp.knots[1] = {{1, 1, 1}, 1, 0.5f};
    block.ramp.count = 2;
    block.ramp.interpolation = RampLinear;
  }

  float Shown() {
    const Vector colour = Output();
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
  float ShownAt(float u, float v) {
    sample.uvw = {u, v, 0};
    return Shown();
  }
  /// In world space, within a render.
  float ShownAt(const Vector& point) {
    block.space = GradientWorld;
    render.hitPoint = point;
    return Shown();
  }
  FootprintBlock& OwnSlot(std::int32_t cpu = 0) { return Slot(cpu, SlotStrideHeadOnly); }
};

}  // namespace sorvanix::test
