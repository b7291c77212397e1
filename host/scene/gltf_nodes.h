// Where the meshes of a glTF model stand: its tree of nodes, flattened.
#pragma once

#include <sorvanix/types.h>

#include <array>
#include <cstddef>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace tinygltf {
class Model;
}

namespace sorvanix::host {

/// An affine map in double: three rows of three factors and a displacement.
class GltfPlacement {
 public:
  using Row = std::array<double, 4>;

  GltfPlacement() = default;
  explicit GltfPlacement(const std::array<Row, 3>& rows) : rows_(rows) {}

  /// The map that applies `inner` first.
  GltfPlacement After(const GltfPlacement& inner) const noexcept;

  Vector Point(const std::array<double, 3>& point) const noexcept;
  /// By the cofactors, so that normals stay upright under uneven scales. Not at unit length.
  Vector Normal(const std::array<double, 3>& normal) const noexcept;
  bool Mirrors() const noexcept;

 private:
  double Cofactor(std::size_t row, std::size_t column) const noexcept;

  std::array<Row, 3> rows_ = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};
};

struct GltfInstance {
  std::size_t mesh = 0;  ///< a valid index
  GltfPlacement placement;
};

/// The meshes of the default scene; without scenes every mesh once. The error is one line: nodes
/// that are missing, or reached twice.
tl::expected<std::vector<GltfInstance>, std::string> GltfInstances(const tinygltf::Model& model);

}  // namespace sorvanix::host
