// Builds a polygon mesh from patches: grids of surface points that share their borders.
//
// A patch is told as a function of column and row. Points that fall on the same place become one
// point of the mesh, so seams close and poles become triangles by themselves; polygons without a
// third corner are left out.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "host/scene/mesh.h"

namespace sorvanix::host {

/// One corner of a patch: place, unit normal, and one texture coordinate for each set of the mesh.
struct PatchCorner {
  Vector point, normal;
  std::array<Vector, 2> uvw;
};

/// sin and cos of `part` of `whole` turns, exact at the quarters, so that seams meet.
double SinTurn(std::int32_t part, std::int32_t whole) noexcept;
double CosTurn(std::int32_t part, std::int32_t whole) noexcept;

class SurfaceBuilder {
 public:
  explicit SurfaceBuilder(std::size_t uvwSetCount);

  /// Adds columns x rows quadrangles between the corners (0, 0) and (columns, rows). Growing
  /// columns run to the right, growing rows downwards, as seen from outside.
  template <class Surface>
  void AddPatch(std::int32_t columns, std::int32_t rows, Surface&& surface) {
    for (std::int32_t row = 0; row < rows; ++row) {
      for (std::int32_t column = 0; column < columns; ++column) {
        AddPolygon({surface(column, row), surface(column + 1, row), surface(column + 1, row + 1),
                    surface(column, row + 1)});
      }
    }
  }

  PolygonMesh Take() { return std::move(mesh_); }
  PolygonMesh& Mesh() noexcept { return mesh_; }

 private:
  using PointKey = std::array<std::uint32_t, 3>;
  struct PointHash {
    std::size_t operator()(const PointKey& key) const noexcept;
  };

  void AddPolygon(const std::array<PatchCorner, 4>& corners);
  std::int32_t PointIndex(const Vector& point);

  PolygonMesh mesh_;
  std::unordered_map<PointKey, std::int32_t, PointHash> indices_;
};

}  // namespace sorvanix::host
