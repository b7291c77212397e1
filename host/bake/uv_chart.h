// A mesh laid flat by its texture coordinates: which triangle each texel of a picture shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/render/mesh_surface.h"

namespace sorvanix::host {

/// A unit square of texture space. UDIM numbers count from 1001 to the right, ten in a row, and
/// rows upwards.
struct UvTile {
  std::int32_t u = 0, v = 0;  ///< the square's least coordinates; v runs downwards

  std::int32_t Udim() const noexcept { return 1001 + u - 10 * v; }
  friend bool operator==(const UvTile&, const UvTile&) = default;
};

struct UvChart {
  static constexpr std::int32_t kNothing = -1;

  int width = 0, height = 0;
  UvTile tile = {};
  std::vector<std::int32_t> triangle;  ///< of each texel's middle, by rows; kNothing: none
  std::size_t covered = 0;             ///< texels that show a triangle
  std::size_t overlapping = 0;         ///< texels that more than one triangle covers
};

/// Of several triangles at one texel the first counts. Neighbours that share an edge neither
/// overlap along it nor leave a gap. Throws std::bad_alloc.
UvChart ChartOf(const MeshSurface& surface, std::size_t uvwSet, const UvTile& tile, int width,
                int height);

/// The barycentric coordinates of the second and third corner of a triangle at a place of texture
/// space, inside or outside it.
struct ChartPlace {
  double b, c;
};
ChartPlace PlaceOnTriangle(const MeshSurface& surface, std::size_t uvwSet, std::size_t triangle,
                           double u, double v) noexcept;

/// The tiles with a UDIM number, 1001 to 1999, into which triangles reach, by number.
std::vector<UvTile> UdimTiles(const MeshSurface& surface, std::size_t uvwSet);

}  // namespace sorvanix::host
