// The colour of one point of a tile pattern: the pattern's tile, its grout, blur and colours.
#pragma once

#include <sorvanix/records.h>

#include "module/shaders/generators/tiles.h"

namespace sorvanix {

/// Where a texture coordinate lies in the plane of the tiles. A scale of 0 puts it at 0.
Vector TilePoint(const TilesBlock& block, const Vector& uvw) noexcept;

/// The colour at a point of that plane. Pure; `sample` tells how large the sample is.
Vector TilePattern(const TilesBlock& block, const ChannelSample& sample,
                   const Vector& point) noexcept;

}  // namespace sorvanix
