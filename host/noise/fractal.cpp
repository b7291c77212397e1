// Sums octaves in double; each octave is one call of the gradient noise.
#include "host/noise/fractal.h"

#include <cmath>

namespace sorvanix::host {
namespace {

double BoundedCount(float octaves) noexcept {
  if (!(octaves > 0.0F)) return 0.0;
  return octaves < static_cast<float>(MaximumOctaves) ? octaves : MaximumOctaves;
}

// Calls add(octave, frequency, share) for each octave; share is 1, or the fraction of the last.
template <typename Add>
void ForEachOctave(float octaves, double lacunarity, Add add) noexcept {
  double frequency = 1.0;
  double left = BoundedCount(octaves);
  for (int octave = 0; left > 0.0; ++octave) {
    add(octave, frequency, left < 1.0 ? left : 1.0);
    frequency *= lacunarity;
    left -= 1.0;
  }
}

// From octave to octave. Square roots: no step and no sum of steps is a whole number of cells.
constexpr LatticePoint<4> OctaveStep = {31.76476034853718, -27.25802634087802, 23.60084744241189,
                                        -38.56163896931768};

}  // namespace

OctavePoint<3> MakeOctavePoint(double x, double y, double z) noexcept {
  return {RotateToLattice(x, y, z), {}};
}

OctavePoint<4> MakeOctavePoint(double x, double y, double z, double time) noexcept {
  return {RotateToLattice(x, y, z, 0.0), RotateToLattice(0.0, 0.0, 0.0, time)};
}

template <std::size_t Dimensions>
float OctaveNoise(const OctavePoint<Dimensions>& point, int octave, double frequency) noexcept {
  LatticePoint<Dimensions> at;
  for (std::size_t i = 0; i < Dimensions; ++i) {
    at[i] = point.turned[i] * frequency + (point.moved[i] + OctaveStep[i] * (octave + 1));
  }
  return GradientNoise(at);
}

template float OctaveNoise(const OctavePoint<3>&, int, double) noexcept;
template float OctaveNoise(const OctavePoint<4>&, int, double) noexcept;

double TurbulenceSum(const OctavePoint<4>& point, float octaves, bool absolute) noexcept {
  double sum = 0.0;
  ForEachOctave(octaves, 2.0, [&](int octave, double frequency, double share) {
    const double noise = OctaveNoise(point, octave, frequency);
    sum += (absolute ? std::fabs(noise) : noise) * share / frequency;
  });
  return sum;
}

template <std::size_t Dimensions>
double SpectralSum(const OctaveWeights& weights, const OctavePoint<Dimensions>& point,
                   float octaves) noexcept {
  double sum = 0.0;
  ForEachOctave(octaves, FractalLacunarity, [&](int octave, double frequency, double share) {
    const double weight = weights[static_cast<std::size_t>(octave)];
    sum += OctaveNoise(point, octave, frequency) * weight * share;
  });
  return sum;
}

template double SpectralSum(const OctaveWeights&, const OctavePoint<3>&, float) noexcept;
template double SpectralSum(const OctaveWeights&, const OctavePoint<4>&, float) noexcept;

double RidgedSum(const OctaveWeights& weights, const OctavePoint<3>& point, float octaves,
                 float offset, float gain) noexcept {
  constexpr double NoiseTop = 0.65;
  double sum = 0.0;
  double passed = 1.0;
  ForEachOctave(octaves, FractalLacunarity, [&](int octave, double frequency, double share) {
    const double weight = weights[static_cast<std::size_t>(octave)];
    const double depth = std::fabs(OctaveNoise(point, octave, frequency)) / NoiseTop;
    sum += (offset - depth) * passed * weight * share;
    const double height = (1.0 - depth) * gain;
    passed *= height > 0.0 ? (height < 1.0 ? height : 1.0) : 0.0;
  });
  return sum;
}

}  // namespace sorvanix::host
