// Puts a mesh together from the corners that a file tells, and lets nothing wrong into it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <tl/expected.hpp>

#include "host/scene/mesh.h"

namespace sorvanix::host {

inline constexpr std::size_t kMostUvwSets = 4;

/// What a file knows of its corners, the same for all of them.
struct MeshLayout {
  std::size_t uvwSetCount = 0;  ///< at most kMostUvwSets
  bool hasNormals = false;
  bool uvwUpwards = false;  ///< v grows upwards: it is turned round
};

/// Right-handed, as files have it. What the layout leaves out is not read.
struct MeshCorner {
  std::int64_t point = 0;
  Vector normal = {};
  std::array<Vector, kMostUvwSets> uvw = {};
};

/// Errors are one line without the file's name; after one the mesh is of no use.
class MeshAssembler {
 public:
  using Result = tl::expected<void, std::string>;

  explicit MeshAssembler(const MeshLayout& layout);

  /// Right-handed; refused when it is not finite.
  Result AddPoint(const Vector& point);
  std::size_t PointCount() const noexcept { return mesh_.points.size(); }

  /// A polygon over points that were added before; refused when an index is none of theirs, or a
  /// texture coordinate is not finite. One with fewer than three corners is left out.
  Result AddPolygon(std::span<const MeshCorner> corners);

  PolygonMesh Take() { return std::move(mesh_); }

 private:
  void AddPart(const std::array<const MeshCorner*, 4>& corners);
  Vector NormalOf(const MeshCorner& corner, const Vector& polygonNormal) const;

  MeshLayout layout_;
  PolygonMesh mesh_;
};

}  // namespace sorvanix::host
