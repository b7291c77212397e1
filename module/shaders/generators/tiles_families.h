// The twenty-eight patterns, by family. Each is a tiling of the plane in units of its own; how
// these lie on a texture is in its row of kTilePatterns.
#pragma once

#include "module/shaders/generators/tiles_shape.h"

namespace sorvanix {

/// Rectangles in courses (tiles_courses.cpp).
PatternFunction PatternGrid, PatternBrick, PatternBrickThree, PatternPlanks, PatternHalfSteps,
    PatternHalfStepsThree;

/// Strips that run both ways (tiles_weave.cpp).
PatternFunction PatternThirds, PatternLattice;

/// Unit triangles and hexagons (tiles_polygons.cpp). The names of the first three are older than
/// what they show, which is triangles; that of the fourth, which shows hexagons, too.
PatternFunction PatternHexagon, PatternHexagonOffset, PatternHexagonThree, PatternTriangle;

/// Dots, and the regions around scattered points (tiles_dots.cpp).
PatternFunction PatternDots, PatternDotsStaggered, PatternDotsThree, PatternCracks;

/// Bands along y (tiles_stripes.cpp).
PatternFunction PatternStripes, PatternStripesThree, PatternSineStripes, PatternSineStripesThree,
    PatternZigzag, PatternZigzagThree;

/// Rings, spirals and wedges around the middle of each texture tile (tiles_polar.cpp).
PatternFunction PatternRings, PatternRingsThree, PatternSpiral, PatternSpiralThree, PatternWedges,
    PatternWedgesThree;

}  // namespace sorvanix
