// A gradient under test within a render whose object, camera and picture the test sets, with a way
// to see the point that it reads.
#pragma once

#include <array>
#include <optional>

#include "tests/module/shaders/generators/gradient_fixture.h"

namespace sorvanix::test {

/// The object and the camera of these tests: turned by a quarter about z, twice as large, moved.
/// (1, 2, 3) goes to (10, 20, 30) + (0, 2, 0) + 2 (-2, 0, 0) + 3 (0, 0, 2) = (6, 22, 36).
inline constexpr Matrix kPlaced = {{10, 20, 30}, {0, 2, 0}, {-2, 0, 0}, {0, 0, 2}};
inline constexpr Vector kInside = {1, 2, 3};
inline constexpr Vector kInWorld = {6, 22, 36};

struct GradientSpaceTest : GradientTest {
  // What the scripted host answers about the render.
  static inline const Matrix* camera;
  static inline std::optional<std::array<std::int32_t, 2>> pictureSize;

  ObjectRecord object = {};

  GradientSpaceTest() {
    camera = nullptr;
    pictureSize.reset();
    host.render.query = [](const RenderContext*, std::int32_t code) noexcept -> const void* {
      if (code == QueryCameraMatrix) return camera;
      return code == QueryPictureSize && pictureSize ? pictureSize->data() : nullptr;
    };
    host.render.projectToScreen = [](const RenderContext*, const Vector* p,
                                     Vector* screen) noexcept {
      *screen = {100 + 10 * p->x, 200 + 10 * p->y, p->z};
    };
    BeginRender();
    render.hitPoint = kInWorld;
  }
  /// The point that the shapes in space are read at, by its projection onto the three axes. A
  /// thousand units to either side are 2^-24 of 2000, about 1e-4, exact.
  Vector PointSeen() {
    block.type = GradientLinear3D;
    const auto along = [this](const Vector& axis) {
      block.start = Scale(-1000, axis);
      block.end = Scale(1000, axis);
      return Shown() * 2000 - 1000;
    };
    return {along({1, 0, 0}), along({0, 1, 0}), along({0, 0, 1})};
  }
  void ExpectPoint(const Vector& expected) { ExpectVector(PointSeen(), expected, 3e-4); }
  static Vector Scale(float s, const Vector& v) { return {s * v.x, s * v.y, s * v.z}; }
};

}  // namespace sorvanix::test
