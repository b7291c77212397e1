// A small scene for shaders, computed without libm: a surface, lights, a projection, a camera.
#pragma once

#include <sorvanix/host_api.h>

#include "tests/repository/same_bits/recorder.h"

namespace sorvanix::test {

/// Serves noise, lights, projections and queries.
void InstallTestScene(RenderTable& table);

/// A surface hit, with all that its record points to.
class TestSurface {
 public:
  TestSurface();
  TestSurface(const TestSurface&) = delete;
  TestSurface& operator=(const TestSurface&) = delete;

  /// Moves the hit to another place.
  void Hit(Inputs& inputs);

  RenderContext render = {};

 private:
  RayRecord ray_ = {{0, 0, 500}, {0, 0, -1}};
  TextureTag tag_ = {};
  ObjectRecord object_ = {};
};

}  // namespace sorvanix::test
