// A plane bake: a source over the unit square of texture coordinates, with a render around it.
//
// The plane stands in the world as a unit square around the origin and faces the viewer at -z, who
// looks straight at it; u runs to the right, v downwards. It has a texture tag that leaves points
// as they are, no camera and no lights. Shaders that need a surface get one: solid noise, bump,
// projections.
#pragma once

#include "host/bake/parallel_tiles.h"
#include "host/bake/surface_bake.h"

namespace sorvanix::host {

/// Texels are placed as in a flat bake: one sample lies in the upper left corner, several in the
/// middles of their shares. Throws std::bad_alloc.
SurfaceBake BakePlane(ChannelSource& source, const SurfaceBakeSettings& settings,
                      const TaskOptions& options);

}  // namespace sorvanix::host
