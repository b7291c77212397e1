// A mesh bake: a source on the surface of a mesh, painted into the chart of its coordinates.
//
// The mesh stands in the world as it is in its file, seen straight from outside at every point,
// without a camera or lights. Its texture tag fills -100 to 100 on each axis, as a new one in a
// scene does, so that solid shaders have the size that they have in a render.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <tl/expected.hpp>

#include "host/bake/parallel_tiles.h"
#include "host/bake/surface_bake.h"
#include "host/bake/uv_chart.h"
#include "host/scene/mesh.h"

namespace sorvanix::host {

struct MeshBakeSettings {
  SurfaceBakeSettings surface = {};
  std::size_t uvwSet = 0;
  UvTile tile = {};  ///< which part of texture space the picture shows
  int gutter = 8;    ///< texels around a chart that repeat its edge: 0 and above
};

struct MeshBake {
  SurfaceBake surface;
  std::size_t covered = 0;      ///< texels that show the mesh
  std::size_t overlapping = 0;  ///< texels that several polygons share: the first one shows
};

/// Whether a mesh can be baked by a set of its coordinates. The error is one line.
tl::expected<void, std::string> CheckCoordinates(const PolygonMesh& mesh, std::size_t uvwSet);

/// One sample lies in the middle of a texel. Texels beyond the gutter are black, in a normal map
/// unbent. The error is one line: a mesh without the set of coordinates. Throws std::bad_alloc.
tl::expected<MeshBake, std::string> BakeMesh(std::shared_ptr<const PolygonMesh> mesh,
                                             ChannelSource& source,
                                             const MeshBakeSettings& settings,
                                             const TaskOptions& options);

/// The UDIM tiles of a set of coordinates, which the mesh must have, by number.
std::vector<UvTile> TilesOfMesh(std::shared_ptr<const PolygonMesh> mesh, std::size_t uvwSet);

}  // namespace sorvanix::host
