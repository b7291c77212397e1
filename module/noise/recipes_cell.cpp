// Recipes that are a single look-up: unit noise, hashed cells, cellular noise, sparse convolution
// noise, white noise.
#include <cmath>

#include "module/noise/cellular.h"
#include "module/noise/lattice.h"
#include "module/noise/recipes.h"
#include "module/noise/sparse_convolution.h"
#include "module/noise/warp.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

/// The cell of a coordinate, a little stretched to keep the cells' edges off the integers.
double Block(float coordinate) noexcept {
  constexpr double kStretch = 1.0001f;
  return std::floor(coordinate * kStretch);
}

/// Maps -1..1 to 0..1.
double FromSigned(double value) noexcept { return (value + 1) * 0.5; }

}  // namespace

double AxisWarp(const NoiseQuery& q) noexcept { return AxisWarpNoise(q.x, q.y, q.z, q.time, 1); }

double HashBlock(const NoiseQuery& q) noexcept {
  const Vector block = Point(Block(q.x), Block(q.y), Block(q.z));
  // Time is a hashed coordinate: the blocks change at whole time steps.
  return HashCell4(block.x, block.y, block.z, q.time);
}

double UnitBlock(const NoiseQuery& q) noexcept {
  return hostUnitNoiseAt(Point(Block(q.x), Block(q.y), Block(q.z)), q.time);
}

double PlainUnit(const NoiseQuery& q) noexcept { return hostUnitNoiseAt(q.point(), q.time); }

double WhiteRandom(const NoiseQuery&) noexcept { return sharedGenerator.Next01(); }

double OffsetWarpPlanar(const NoiseQuery& q) noexcept {
  return OffsetWarpNoise2(q.x, q.y, q.time, 1);
}

double OffsetWarpSolid(const NoiseQuery& q) noexcept {
  return OffsetWarpNoise3(q.x, q.y, q.z, q.time, 1);
}

double CellValuePlanar(const NoiseQuery& q) noexcept { return CellularValue2(q.x, q.y, q.time, 1); }

double CellValueSolid(const NoiseQuery& q) noexcept {
  return CellularValue3(q.x, q.y, q.z, q.time, 1);
}

double SparseConvolutionPlanar(const NoiseQuery& q) noexcept {
  return FromSigned(SparseConvolution3(q.x, q.y, q.time));
}

double SparseConvolutionSolid(const NoiseQuery& q) noexcept {
  return FromSigned(SparseConvolution4(q.x, q.y, q.z, q.time));
}

double CellNearestPlanar(const NoiseQuery& q) noexcept {
  return CellularNearest2(q.x, q.y, q.time, 1);
}

double CellNearestSolid(const NoiseQuery& q) noexcept {
  return CellularNearest3(q.x, q.y, q.z, q.time, 1);
}

double CellSecondPlanar(const NoiseQuery& q) noexcept {
  return CellularSecond2(q.x, q.y, q.time, 1);
}

double CellSecondSolid(const NoiseQuery& q) noexcept {
  return CellularSecond3(q.x, q.y, q.z, q.time, 1);
}

double CellEdgePlanar(const NoiseQuery& q) noexcept { return CellularEdge2(q.x, q.y, q.time, 1); }

double CellEdgeSolid(const NoiseQuery& q) noexcept {
  return CellularEdge3(q.x, q.y, q.z, q.time, 1);
}

}  // namespace sorvanix
