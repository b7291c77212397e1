// Computes gradient noise for all corners of a cell at once.
//
// Nothing here branches on data or reads a table at a hashed index, which would cost a mispredicted
// jump or a stall for each corner: signs and choices are bit masks. That keeps the work the same
// for every point, so that octaves, too, can run side by side.
#include "host/noise/gradient_noise.h"

#include <bit>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace sorvanix::host {
namespace {

// Four corners side by side. The compilers that we support have these vector types and give the
// bits of the same scalar arithmetic at every level of optimisation.
using Floats = float __attribute__((vector_size(16)));
using Words = uint32_t __attribute__((vector_size(16)));
using Integers = int32_t __attribute__((vector_size(16)));

// Where a coordinate lies: its cell, and the fraction of the cell, 0..1.
struct CellPosition {
  int64_t cell;
  float fraction;
};

CellPosition Locate(double coordinate) noexcept {
  constexpr double Limit = 4611686018427387904.0;  // 2^62: the next cell's number fits, too
  const double value = coordinate > -Limit && coordinate < Limit ? coordinate : 0.0;
  const auto truncated = static_cast<int64_t>(value);
  const int64_t cell = truncated - (value < static_cast<double>(truncated));
  return {cell, static_cast<float>(value - static_cast<double>(cell))};
}

float Fade(float t) noexcept { return t * t * t * (t * (t * 6.0F - 15.0F) + 10.0F); }

Floats Mix(Floats a, Floats b, float t) noexcept { return a + (b - a) * t; }
float Mix(float a, float b, float t) noexcept { return a + (b - a) * t; }

// A random word for a cell number of one dimension: the SplitMix64 generator (G. Steele, D. Lea,
// C. Flood, "Fast Splittable Pseudorandom Number Generators", OOPSLA 2014) with the cell as its
// count, without the last shift, which leaves the upper half as it is.
uint32_t HashCell(int64_t cell, std::size_t dimension) noexcept {
  uint64_t h =
      static_cast<uint64_t>(cell) * 0x9E3779B97F4A7C15U + (dimension + 1) * 0xD1B54A32D192ED03U;
  h = (h ^ (h >> 30)) * 0xBF58476D1CE4E5B9U;
  h = (h ^ (h >> 27)) * 0x94D049BB133111EBU;
  return static_cast<uint32_t>(h >> 32);
}

// A corner's word is the sum of its dimensions' words. The four sums over a rectangle depend on
// each other; this round hides it. Its upper bits are the best.
Words MixCorner(Words h) noexcept {
  h = (h ^ (h >> 16)) * 0x7FEB352DU;
  return h ^ (h >> 15);
}

// A gradient has length 1, one longer component and the others alike, each with either sign. Its
// fourth moments are those of a sphere, E[a^4] = 3 E[a^2 b^2] for two components a and b, when
// r = (longer / other)^2 solves r^2 - 6r = 1 in three dimensions and r^2 - 6r = 3 in four.
//
// Scale gives both the same standard deviation. The bound of the scaled noise is where all
// gradients of a cell point to its middle: 0.85 in three dimensions. In four it is 1.09, which
// takes sixteen gradients that each have a chance of one in sixteen, so the noise is limited to 1.
template <std::size_t Dimensions>
struct Gradients;
template <>
struct Gradients<3> {
  static constexpr float Longer = 0.8688903F, Other = 0.3500212F;
  static constexpr float Scale = 1.064F;
};
template <>
struct Gradients<4> {
  static constexpr float Longer = 0.8264458F, Other = 0.3250576F;
  static constexpr float Scale = 1.2F;
};

// Calls body for 0 .. Count - 1 as compile-time constants: what depends on the index costs nothing.
template <std::size_t Count, typename Body>
void Unrolled(Body body) noexcept {
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    (body(std::integral_constant<std::size_t, I>{}), ...);
  }
  (std::make_index_sequence<Count>{});
}

// The ramps at four corners, gradient times distance. Of the hash, the bits from 31 downwards are
// the signs of the components and those below choose the longer one.
template <std::size_t Dimensions>
Floats Ramps(Words hash, const std::array<Floats, Dimensions>& distance) noexcept {
  constexpr uint64_t Choices = 1U << (32 - Dimensions);
  const auto choice = std::bit_cast<Integers>(hash & static_cast<uint32_t>(Choices - 1));
  Floats sum{};
  Floats longest{};
  Unrolled<Dimensions>([&](auto i) {
    constexpr auto First = static_cast<int32_t>(Choices * i / Dimensions);
    constexpr auto End = static_cast<int32_t>(Choices * (i + 1) / Dimensions);
    const Words sign = (hash << static_cast<uint32_t>(i)) & 0x80000000U;
    const Words term = std::bit_cast<Words>(distance[i]) ^ sign;
    const auto chosen = std::bit_cast<Words>((choice >= First) & (choice < End));
    sum += std::bit_cast<Floats>(term);
    longest += std::bit_cast<Floats>(term & chosen);
  });
  using Set = Gradients<Dimensions>;
  return sum * Set::Other + longest * (Set::Longer - Set::Other);
}

// What the corners share along one dimension. Inlined, or the compiler would pass it through
// memory, which takes a fifth of the whole time.
struct Edge {
  float low, high;  // distances of the point from the two ends
  uint32_t lowHash, highHash;
  float fade;
};

[[gnu::always_inline]] inline Edge MakeEdge(double coordinate, std::size_t dimension) noexcept {
  const CellPosition at = Locate(coordinate);
  return {at.fraction, at.fraction - 1.0F, HashCell(at.cell, dimension),
          HashCell(at.cell + 1, dimension), Fade(at.fraction)};
}

template <std::size_t Dimensions>
float Noise(const LatticePoint<Dimensions>& point) noexcept {
  std::array<Edge, Dimensions> edges;
  Unrolled<Dimensions>([&](auto i) { edges[i] = MakeEdge(point[i], i); });
  const Edge& x = edges[0];
  const Edge& y = edges[1];

  // The lanes are the four corners in x and y; bit i - 2 of a group's number is its end in
  // dimension i.
  const Words hash = Words{x.lowHash, x.highHash, x.lowHash, x.highHash} +
                     Words{y.lowHash, y.lowHash, y.highHash, y.highHash};
  std::array<Floats, Dimensions> distance;
  distance[0] = Floats{x.low, x.high, x.low, x.high};
  distance[1] = Floats{y.low, y.low, y.high, y.high};
  std::array<Floats, 1 << (Dimensions - 2)> ramps;
  Unrolled<ramps.size()>([&](auto group) {
    Words groupHash = hash;
    Unrolled<Dimensions - 2>([&](auto j) {
      const Edge& edge = edges[j + 2];
      constexpr bool Upper = (group >> j) & 1;
      groupHash += Upper ? edge.highHash : edge.lowHash;
      distance[j + 2] = Floats{} + (Upper ? edge.high : edge.low);
    });
    ramps[group] = Ramps<Dimensions>(MixCorner(groupHash), distance);
  });
  for (std::size_t i = Dimensions - 1; i >= 2; --i) {
    const std::size_t half = std::size_t{1} << (i - 2);
    for (std::size_t group = 0; group < half; ++group) {
      ramps[group] = Mix(ramps[group], ramps[group + half], edges[i].fade);
    }
  }
  const float value =
      Mix(Mix(ramps[0][0], ramps[0][1], x.fade), Mix(ramps[0][2], ramps[0][3], x.fade), y.fade) *
      Gradients<Dimensions>::Scale;
  const float limited = value < -1.0F ? -1.0F : value;
  return limited > 1.0F ? 1.0F : limited;
}

template <std::size_t Dimensions>
using Rows = std::array<LatticePoint<Dimensions>, Dimensions>;

// By 0.86 about the axis (sqrt 2, sqrt 3, sqrt 5): no coordinate of the lattice stays near one of
// the caller's, and no whole step of the caller is a whole step of the lattice.
constexpr Rows<3> Turn3 = {{{0.7219499745312415, -0.4507405296242524, 0.5249963897289087},
                            {0.6210107009658337, 0.7567062277148363, -0.2043071076186686},
                            {-0.3051785437416328, 0.4735278871319310, 0.8262187340820260}}};

// Multiplication by the unit quaternion of components sqrt(10/21), sqrt(6/21), sqrt(3/21) and
// sqrt(2/21): each of the caller's axes, time among them, meets the lattice at the same angles.
constexpr double A = 0.6900655593423543, B = 0.5345224838248488, C = 0.3779644730092272,
                 D = 0.3086066999241838;
constexpr Rows<4> Turn4 = {{{A, -B, -C, -D}, {B, A, -D, C}, {C, D, A, -B}, {D, -C, B, A}}};

// Only sums: where signs alternate, GCC 12 fuses products and sums on machines that can, although
// it is told not to, and the last bit would depend on the machine.
template <std::size_t Dimensions>
LatticePoint<Dimensions> Turned(const Rows<Dimensions>& rows,
                                const LatticePoint<Dimensions>& point) noexcept {
  LatticePoint<Dimensions> turned{};
  Unrolled<Dimensions>(
      [&](auto i) { Unrolled<Dimensions>([&](auto j) { turned[i] += rows[i][j] * point[j]; }); });
  return turned;
}

}  // namespace

LatticePoint<3> RotateToLattice(double x, double y, double z) noexcept {
  return Turned(Turn3, {x, y, z});
}

LatticePoint<4> RotateToLattice(double x, double y, double z, double time) noexcept {
  return Turned(Turn4, {x, y, z, time});
}

float GradientNoise(const LatticePoint<3>& point) noexcept { return Noise<3>(point); }
float GradientNoise(const LatticePoint<4>& point) noexcept { return Noise<4>(point); }

}  // namespace sorvanix::host
