// Cellular noise: the two feature points nearest to a place, one feature point to a unit cell.
//
// S. Worley, A Cellular Texture Basis Function, SIGGRAPH 1996. Unlike there, a cell holds exactly
// one point and only the neighbouring cells are searched.
#pragma once

#include <sorvanix/types.h>

namespace sorvanix {

/// The two nearest feature points and their distances, f1 <= f2. Of points at the same distance
/// the one visited first counts as nearer. In two dimensions p1.z and p2.z are 0.
struct CellularPoints {
  float f1 = 0, f2 = 0;
  Vector p1 = {}, p2 = {};
};

/// Searches the cell of a point and its 8 or 26 neighbours. The feature points are drawn from the
/// host's noise and move with time; a jitter of 0 puts them at the cells' centres, one of 1 lets
/// them reach the borders.
CellularPoints CellularSearch2(float x, float y, float time, float jitter) noexcept;
CellularPoints CellularSearch3(float x, float y, float z, float time, float jitter) noexcept;

/// The same in two dimensions with points drawn from HashCell2: without time, and independent of
/// the host's noise.
CellularPoints CellularSearchHash2(float x, float y, float jitter) noexcept;

/// Distance to the nearest feature point.
float CellularNearest2(float x, float y, float time, float jitter) noexcept;
float CellularNearest3(float x, float y, float z, float time, float jitter) noexcept;

/// Distance to the second nearest.
float CellularSecond2(float x, float y, float time, float jitter) noexcept;
float CellularSecond3(float x, float y, float z, float time, float jitter) noexcept;

/// The difference of the two: 0 on the border between two points' regions.
float CellularEdge2(float x, float y, float time, float jitter) noexcept;
float CellularEdge3(float x, float y, float z, float time, float jitter) noexcept;

/// A value that is flat over the region of each feature point, drawn from the host's noise.
float CellularValue2(float x, float y, float time, float jitter) noexcept;
float CellularValue3(float x, float y, float z, float time, float jitter) noexcept;

}  // namespace sorvanix
