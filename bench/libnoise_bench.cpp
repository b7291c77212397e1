// The yardstick: gradient noise and five octaves of it, by a library that everybody can install.
#include <benchmark/benchmark.h>
#include <libnoise/noise.h>

#include "bench/sample_points.h"

namespace {

using namespace sorvanix;

void LibnoiseGradient(benchmark::State& state) {
  const bench::Points points = bench::CoherentPoints(0.05f);
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    benchmark::DoNotOptimize(noise::GradientCoherentNoise3D(p.x, p.y, p.z));
  }
}
BENCHMARK(LibnoiseGradient)->Name("libnoise/gradient");

void LibnoiseFractal(benchmark::State& state) {
  const bench::Points points = bench::CoherentPoints(0.05f);
  noise::module::Perlin perlin;
  perlin.SetOctaveCount(5);
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    benchmark::DoNotOptimize(perlin.GetValue(p.x, p.y, p.z));
  }
}
BENCHMARK(LibnoiseFractal)->Name("libnoise/fBm5");

}  // namespace
