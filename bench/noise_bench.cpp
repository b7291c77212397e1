// Every type of the two noise catalogues over the standalone host's noise, at five octaves.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/sample_points.h"
#include "host/noise/noise_services.h"
#include "module/noise/catalogue.h"
#include "module/noise/tables.h"
#include "module/shaders/generators/noise_choices.h"
#include "module/shell/module_state.h"

namespace {

using namespace sorvanix;

constexpr float kOctaves = 5;
constexpr float kDetail = 1;

void InstallHostNoise() {
  static RenderTable table = {};
  static float weights[FractalWeightsSize / sizeof(float)];
  host::InstallNoiseServices(table);
  hostApi.render = &table;
  fractalWeights = weights;
  table.fractalInit(weights, 21, 2.1f, 0.5f);
  BuildNoiseTables(665);
}

using Catalogue = float (*)(std::int32_t, float, float, float, float, float, std::int32_t, float,
                            float);

void NoiseType(benchmark::State& state, Catalogue catalogue, std::int32_t type) {
  const bench::Points points = bench::CoherentPoints(0.05f);
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    benchmark::DoNotOptimize(catalogue(type, p.x, p.y, p.z, kOctaves, 0, 0, 0, kDetail));
  }
}

const int kRegistered = [] {
  InstallHostNoise();
  for (const Choice& type : kNoiseTypeChoices) {
    benchmark::RegisterBenchmark((std::string("noise2D/") + type.name).c_str(), NoiseType,
                                 NoiseCatalogue2D, type.value);
    benchmark::RegisterBenchmark((std::string("noise3D/") + type.name).c_str(), NoiseType,
                                 NoiseCatalogue3D, type.value);
  }
  return 0;
}();

}  // namespace
