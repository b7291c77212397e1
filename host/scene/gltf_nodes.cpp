#include "host/scene/gltf_nodes.h"

#include <tiny_gltf.h>

#include <algorithm>
#include <limits>

namespace sorvanix::host {
namespace {

/// What is beyond a float becomes an infinity, which the mesh refuses.
float Narrow(double value) noexcept {
  constexpr double largest = std::numeric_limits<float>::max();
  return value > largest || value < -largest ? std::numeric_limits<float>::infinity()
                                             : static_cast<float>(value);
}

/// The nine factors of a unit quaternion (x, y, z, w) and a scale, after Shoemake, "Animating
/// Rotation with Quaternion Curves" (1985).
std::array<GltfPlacement::Row, 3> Rotation(const std::array<double, 4>& q,
                                           const std::array<double, 3>& s,
                                           const std::array<double, 3>& move) noexcept {
  const auto [x, y, z, w] = q;
  return {{{s[0] * (1 - 2 * (y * y + z * z)), s[1] * 2 * (x * y - z * w),
            s[2] * 2 * (x * z + y * w), move[0]},
           {s[0] * 2 * (x * y + z * w), s[1] * (1 - 2 * (x * x + z * z)),
            s[2] * 2 * (y * z - x * w), move[1]},
           {s[0] * 2 * (x * z - y * w), s[1] * 2 * (y * z + x * w),
            s[2] * (1 - 2 * (x * x + y * y)), move[2]}}};
}

template <std::size_t Size>
std::array<double, Size> Filled(const std::vector<double>& values,
                                std::array<double, Size> fallback) {
  if (values.size() == Size) std::copy(values.begin(), values.end(), fallback.begin());
  return fallback;
}

GltfPlacement PlacementOf(const tinygltf::Node& node) {
  if (node.matrix.size() != 16) {
    return GltfPlacement(Rotation(Filled<4>(node.rotation, {0, 0, 0, 1}),
                                  Filled<3>(node.scale, {1, 1, 1}),
                                  Filled<3>(node.translation, {0, 0, 0})));
  }
  std::array<GltfPlacement::Row, 3> rows;  // the file has it by columns
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      rows[row][column] = node.matrix[column * 4 + row];
    }
  }
  return GltfPlacement(rows);
}

}  // namespace

GltfPlacement GltfPlacement::After(const GltfPlacement& inner) const noexcept {
  std::array<Row, 3> product;
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      double sum = column == 3 ? rows_[row][3] : 0;
      for (std::size_t k = 0; k < 3; ++k) sum += rows_[row][k] * inner.rows_[k][column];
      product[row][column] = sum;
    }
  }
  return GltfPlacement(product);
}

Vector GltfPlacement::Point(const std::array<double, 3>& p) const noexcept {
  const auto component = [&](const Row& row) {
    return Narrow(row[0] * p[0] + row[1] * p[1] + row[2] * p[2] + row[3]);
  };
  return {component(rows_[0]), component(rows_[1]), component(rows_[2])};
}

double GltfPlacement::Cofactor(std::size_t row, std::size_t column) const noexcept {
  const std::size_t r1 = (row + 1) % 3, r2 = (row + 2) % 3;
  const std::size_t c1 = (column + 1) % 3, c2 = (column + 2) % 3;
  return rows_[r1][c1] * rows_[r2][c2] - rows_[r1][c2] * rows_[r2][c1];
}

Vector GltfPlacement::Normal(const std::array<double, 3>& n) const noexcept {
  const double sign = Mirrors() ? -1 : 1;
  const auto component = [&](std::size_t row) {
    return Narrow(sign *
                  (Cofactor(row, 0) * n[0] + Cofactor(row, 1) * n[1] + Cofactor(row, 2) * n[2]));
  };
  return {component(0), component(1), component(2)};
}

bool GltfPlacement::Mirrors() const noexcept {
  return rows_[0][0] * Cofactor(0, 0) + rows_[0][1] * Cofactor(0, 1) +
             rows_[0][2] * Cofactor(0, 2) <
         0;
}

tl::expected<std::vector<GltfInstance>, std::string> GltfInstances(const tinygltf::Model& model) {
  std::vector<GltfInstance> instances;
  if (model.scenes.empty()) {
    for (std::size_t mesh = 0; mesh < model.meshes.size(); ++mesh) instances.push_back({mesh, {}});
    return instances;
  }
  const auto scene = static_cast<std::size_t>(std::max(model.defaultScene, 0));
  if (scene >= model.scenes.size()) return tl::unexpected(std::string("the scene is missing"));

  struct Waiting {
    int node;
    GltfPlacement parent;
  };
  std::vector<Waiting> waiting;
  std::vector<bool> visited(model.nodes.size());
  const auto add = [&](const std::vector<int>& nodes, const GltfPlacement& parent) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
      waiting.push_back({*node, parent});
  };
  add(model.scenes[scene].nodes, {});
  while (!waiting.empty()) {
    const Waiting next = waiting.back();
    waiting.pop_back();
    const auto index = static_cast<std::size_t>(next.node);
    if (next.node < 0 || index >= model.nodes.size()) {
      return tl::unexpected(std::string("a node is missing"));
    }
    if (visited[index]) return tl::unexpected(std::string("a node has two parents"));
    visited[index] = true;
    const tinygltf::Node& node = model.nodes[index];
    const GltfPlacement placement = next.parent.After(PlacementOf(node));
    if (node.mesh >= 0) {
      const auto mesh = static_cast<std::size_t>(node.mesh);
      if (mesh >= model.meshes.size()) return tl::unexpected(std::string("a mesh is missing"));
      instances.push_back({mesh, placement});
    }
    add(node.children, placement);
  }
  return instances;
}

}  // namespace sorvanix::host
