// Shaders through the contract, as a render calls them: one Output a sample.
#include <benchmark/benchmark.h>

#include "bench/sample_points.h"
#include "host/host.h"
#include "host/loader/module.h"
#include "host/noise/noise_services.h"

namespace {

using namespace sorvanix;

// Loaded once for all benchmarks.
host::Module& LoadedModule() {
  static host::Host host(
      {.services = {[](host::HostTables& tables) { host::InstallNoiseServices(tables.render); }}});
  static host::Module module = host::Module::Load(host, SORVANIX_MODULE_PATH).value();
  return module;
}

void ReadAt(benchmark::State& state, host::Shader& shader, const bench::Points& points) {
  ChannelSample sample = {};
  sample.delta = {0.001f, 0.001f, 0};
  sample.blurScale = 1;
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    sample.uvw = {p.x, p.y, p.z};
    benchmark::DoNotOptimize(shader.Output(sample));
  }
}

void OutputAt(benchmark::State& state, std::int32_t pluginId, const bench::Points& points) {
  host::Shader shader = LoadedModule().Create(pluginId, ChannelColour).value();
  ReadAt(state, shader, points);
}

// Texels side by side.
void Coherent(benchmark::State& state, std::int32_t pluginId) {
  OutputAt(state, pluginId, bench::CoherentPoints(1.0f / 512));
}

// Points without order, as reflections and distortions read them.
void Scattered(benchmark::State& state, std::int32_t pluginId) {
  OutputAt(state, pluginId, bench::RandomPoints(100));
}

// One choice of a shader's first parameter, at texels side by side.
void Chosen(benchmark::State& state, std::int32_t pluginId) {
  constexpr std::int32_t kKeyOfChoice = 1000;
  host::Shader shader = LoadedModule().Create(pluginId, ChannelColour).value();
  host::Container parameters;
  parameters.Set(kKeyOfChoice, static_cast<Word>(state.range(0)));
  shader.SetParameters(parameters);
  ReadAt(state, shader, bench::CoherentPoints(1.0f / 512));
}

BENCHMARK_CAPTURE(Coherent, Buffy, PluginIdBuffy)->Name("shader/empty (Buffy)");
BENCHMARK_CAPTURE(Coherent, Noise2D, PluginIdNoise2D)->Name("shader/2D Noise, coherent");
BENCHMARK_CAPTURE(Scattered, Noise2D, PluginIdNoise2D)->Name("shader/2D Noise, scattered");
BENCHMARK_CAPTURE(Scattered, Tiles, PluginIdTiles)->Name("shader/Tiles, scattered");
BENCHMARK_CAPTURE(Chosen, Tiles, PluginIdTiles)->Name("shader/Tiles, pattern")->DenseRange(0, 27);
BENCHMARK_CAPTURE(Coherent, Noise3D, PluginIdNoise3D)->Name("shader/3D Noise, coherent");
BENCHMARK_CAPTURE(Scattered, Noise3D, PluginIdNoise3D)->Name("shader/3D Noise, scattered");
BENCHMARK_CAPTURE(Coherent, Gradient, PluginIdGradient)->Name("shader/Gradient, coherent");
BENCHMARK_CAPTURE(Scattered, Gradient, PluginIdGradient)->Name("shader/Gradient, scattered");

}  // namespace
