// Gradient noise in three and four dimensions on a rotated lattice without a period.
//
// K. Perlin, "Improving Noise", SIGGRAPH 2002: the value is the blend of ramps at the corners of a
// lattice cell, with the quintic fade 6t^5 - 15t^4 + 10t^3. Three things differ from the paper:
//
// - The gradients come from an integer hash of the 64-bit cell numbers: nothing repeats after 256
//   cells.
// - The moments of the set of gradients are those of a sphere up to the fourth: no direction is
//   preferred.
// - The lattice is turned against the axes of the caller. Noise on an unturned lattice is zero at
//   every whole point and weaker on the planes between; callers that read it at whole points, along
//   an axis, in the plane z = 0 or at time 0 would see only a part of it.
#pragma once

#include <array>
#include <cstddef>

namespace sorvanix::host {

// A position among the cells of the noise, which are unit cubes.
template <std::size_t Dimensions>
using LatticePoint = std::array<double, Dimensions>;

// Turns a point, or a difference of points, into the frame of the lattice. Both are rotations, so
// that features stay one unit wide.
LatticePoint<3> RotateToLattice(double x, double y, double z) noexcept;
LatticePoint<4> RotateToLattice(double x, double y, double z, double time) noexcept;

// Gradient noise: smooth, centred on 0, standard deviation 0.203, one value in ten thousand beyond
// 0.65, none beyond 1. Pure. A coordinate that is not a number or not below 2^62 in magnitude
// counts as 0.
float GradientNoise(const LatticePoint<3>& point) noexcept;
float GradientNoise(const LatticePoint<4>& point) noexcept;

}  // namespace sorvanix::host
