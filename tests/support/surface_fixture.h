// What tests of surface shaders share: a shader, and a surface that a ray meets.
#pragma once

#include "module/kit/ramp.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {

/// A shader on a surface that faces +z, seen from straight above.
template <class Block, std::int32_t pluginId>
struct SurfaceTest : FilterTest<Block, pluginId> {
  RayRecord ray = {{0, 0, 10}, {0, 0, -1}};

  SurfaceTest() {
    RenderContext& render = this->render;
    render.ray = &ray;
    render.faceNormal = render.baseNormal = render.bumpNormal = {0, 0, 1};
    this->sample.normal = {0, 0, 1};
    this->sample.render = &render;
  }
  void LookAlong(double x, double y, double z) {
    ray.direction[0] = x;
    ray.direction[1] = y;
    ray.direction[2] = z;
  }
};

/// Lets a ramp show the number that reads it: a straight line from black at 0 to white at 1.
inline void ShowTheNumber(Ramp& ramp) {
  ramp.knots[0] = {{0, 0, 0}, 0, 0.5f};
  ramp.knots[1] = {{1, 1, 1}, 1, 0.5f};
  ramp.count = 2;
  ramp.interpolation = RampLinear;
}

}  // namespace sorvanix::test
