// Ray casting through Embree: I. Wald et al., "Embree: a kernel framework for efficient CPU ray
// tracing", 2014.
//
// Embree is told to use AVX2 and to build with one thread, so that equal scenes give equal pictures
// on every machine that has it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tl/expected.hpp>

#include "host/render/lights.h"
#include "host/render/render_scene.h"

namespace sorvanix::host {

/// Where a ray meets a surface first.
struct RayHit {
  std::size_t object;    ///< of RenderScene::objects
  std::size_t triangle;  ///< of its surface
  double b, c;           ///< barycentric coordinates of the second and third corner
  double distance;
};

/// Questions may be asked on several threads at once.
class Tracer : public Occluder {
 public:
  /// The scene must outlive the tracer. The error is one line: what Embree lacks.
  static tl::expected<Tracer, std::string> Create(const RenderScene& scene);

  Tracer(Tracer&&) noexcept;
  ~Tracer() override;

  /// The first hit at more than `nearest` from the origin that is not on the element `identity`;
  /// 0 is no element. `direction` is a unit vector.
  std::optional<RayHit> Intersect(const Vec3& origin, const Vec3& direction, double nearest,
                                  std::int32_t identity = 0) const noexcept;

  bool Blocks(const Vec3& origin, const Vec3& direction, double distance,
              std::int32_t identity) const noexcept override;

 private:
  struct State;
  explicit Tracer(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace sorvanix::host
