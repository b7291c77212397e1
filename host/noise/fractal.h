// Sums of noise octaves: turbulence, the spectral sum and the ridged multifractal.
//
// K. Perlin, "An Image Synthesizer", SIGGRAPH 1985 (turbulence); F. K. Musgrave in D. Ebert et al.,
// "Texturing and Modeling: A Procedural Approach", chapter 16 (the fractals).
//
// Octaves count fractionally, the last one by its fraction, so that a sum has no step where an
// octave joins. Counts that are not above 0, and NaN, give 0; counts above MaximumOctaves act as
// that.
#pragma once

#include <array>

#include "host/noise/gradient_noise.h"

namespace sorvanix::host {

constexpr int MaximumOctaves = 21;
constexpr double FractalLacunarity = 2.1;  // from each octave of a fractal to the next

// Amplitudes of a fractal's octaves, the first 1: the layout of the contract's weights block.
using OctaveWeights = std::array<float, MaximumOctaves + 1>;

// The octaves' view of one point. Octave k sees it enlarged by a frequency and moved by k + 1 equal
// steps, so that the cells of different octaves never start together. Time runs at one pace in all
// octaves: otherwise the finest would flicker thousands of times faster than the coarsest drifts.
template <std::size_t Dimensions>
struct OctavePoint {
  LatticePoint<Dimensions> turned;  // the point, to be enlarged
  LatticePoint<Dimensions> moved;   // time, not to be enlarged
};

OctavePoint<3> MakeOctavePoint(double x, double y, double z) noexcept;
OctavePoint<4> MakeOctavePoint(double x, double y, double z, double time) noexcept;

// Gradient noise of one octave, with its range.
template <std::size_t Dimensions>
float OctaveNoise(const OctavePoint<Dimensions>& point, int octave, double frequency) noexcept;

// Octaves of twice the frequency and half the amplitude of the one before. absolute: sum
// magnitudes.
double TurbulenceSum(const OctavePoint<4>& point, float octaves, bool absolute) noexcept;

// Octaves by the weights, each FractalLacunarity times the frequency of the one before.
template <std::size_t Dimensions>
double SpectralSum(const OctaveWeights& weights, const OctavePoint<Dimensions>& point,
                   float octaves) noexcept;

// The ridged multifractal. The depth of an octave is the magnitude of its noise, 0 on a crest and
// near 1 in the deepest hollow; it adds offset less depth, so that crests stand at offset and
// hollows go below 0. Musgrave squares that, which leaves no sign. The height 1 - depth times gain,
// limited to 0..1, is the share of all later octaves that gets through: crests are rough and
// hollows smooth.
double RidgedSum(const OctaveWeights& weights, const OctavePoint<3>& point, float octaves,
                 float offset, float gain) noexcept;

}  // namespace sorvanix::host
