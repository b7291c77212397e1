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

void OutputAt(benchmark::State& state, std::int32_t pluginId, const bench::Points& points) {
  host::Shader shader = LoadedModule().Create(pluginId, ChannelColour).value();
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

// Texels side by side.
void Coherent(benchmark::State& state, std::int32_t pluginId) {
  OutputAt(state, pluginId, bench::CoherentPoints(1.0f / 512));
}

// Points without order, as reflections and distortions read them.
void Scattered(benchmark::State& state, std::int32_t pluginId) {
  OutputAt(state, pluginId, bench::RandomPoints(100));
}

// A surface in a render: seen from all sides, its normals in all directions.
void OnSurface(benchmark::State& state, std::int32_t pluginId) {
  host::Shader shader = LoadedModule().Create(pluginId, ChannelColour).value();
  const bench::Points points = bench::RandomPoints(1);
  RayRecord ray = {};
  RenderContext render = {};
  render.ray = &ray;
  ChannelSample sample = {};
  sample.render = &render;
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    ray.direction[2] = p.x;
    render.bumpNormal = render.baseNormal = render.faceNormal = sample.normal = {p.x, p.y, p.z};
    benchmark::DoNotOptimize(shader.Output(sample));
  }
}

BENCHMARK_CAPTURE(Coherent, Buffy, PluginIdBuffy)->Name("shader/empty (Buffy)");
BENCHMARK_CAPTURE(Coherent, Noise2D, PluginIdNoise2D)->Name("shader/2D Noise, coherent");
BENCHMARK_CAPTURE(Scattered, Noise2D, PluginIdNoise2D)->Name("shader/2D Noise, scattered");
BENCHMARK_CAPTURE(OnSurface, Fresnel, PluginIdFresnel)->Name("shader/Fresnel, on a surface");
BENCHMARK_CAPTURE(OnSurface, Falloff, PluginIdFalloff)->Name("shader/Falloff, on a surface");

}  // namespace
