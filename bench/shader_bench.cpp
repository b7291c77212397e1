// Shaders through the contract, as a render calls them: one Output a sample.
#include <benchmark/benchmark.h>

#include "bench/sample_points.h"
#include "host/host.h"
#include "host/loader/module.h"
#include "host/noise/noise_services.h"

namespace {

using namespace sorvanix;

// Two lights, of which every one arrives unblocked.
void InstallLights(RenderTable& table) {
  static constexpr std::int32_t kLights = 2;
  table.illuminate = [](const RenderContext*, Vector* diffuse, Vector*, float) noexcept {
    diffuse->x += 1;
  };
  table.lightCount = [](const RenderContext*) noexcept { return kLights; };
  table.lightAt = [](const RenderContext*, std::int32_t) noexcept {
    static const LightRecord light = {};
    return &light;
  };
  table.lightSample = [](const RenderContext*, const LightRecord*, Vector* colour,
                         Vector* direction, const Vector*, const Vector* normal, std::int32_t,
                         std::int32_t) noexcept {
    *colour = {1, 1, 1};
    *direction = *normal;
    return 1;
  };
}

// Loaded once for all benchmarks.
host::Module& LoadedModule() {
  static host::Host host({.services = {[](host::HostTables& tables) {
                            host::InstallNoiseServices(tables.render);
                            InstallLights(tables.render);
                          }}});
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
void SurfaceOutput(benchmark::State& state, host::Shader& shader) {
  const bench::Points points = bench::RandomPoints(1);
  RayRecord ray = {};
  RenderContext render = {};
  render.ray = &ray;
  render.lightCount = 1;
  render.lightsEnabled = 1;
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

void OnSurface(benchmark::State& state, std::int32_t pluginId) {
  host::Shader shader = LoadedModule().Create(pluginId, ChannelColour).value();
  SurfaceOutput(state, shader);
}

// The same with one whole number set.
void OnSurfaceWith(benchmark::State& state, std::int32_t pluginId, std::int32_t key,
                   std::int32_t value) {
  host::Shader shader = LoadedModule().Create(pluginId, ChannelColour).value();
  host::Container parameters;
  parameters.Set(key, host::ContainerValue(Word{value}));
  shader.SetParameters(parameters);
  SurfaceOutput(state, shader);
}

BENCHMARK_CAPTURE(Coherent, Buffy, PluginIdBuffy)->Name("shader/empty (Buffy)");
BENCHMARK_CAPTURE(Coherent, Noise2D, PluginIdNoise2D)->Name("shader/2D Noise, coherent");
BENCHMARK_CAPTURE(Scattered, Noise2D, PluginIdNoise2D)->Name("shader/2D Noise, scattered");
BENCHMARK_CAPTURE(OnSurface, Fresnel, PluginIdFresnel)->Name("shader/Fresnel, on a surface");
BENCHMARK_CAPTURE(OnSurface, Falloff, PluginIdFalloff)->Name("shader/Falloff, on a surface");
BENCHMARK_CAPTURE(OnSurface, Banj, PluginIdBanj)->Name("shader/Banj, lit by the host");
BENCHMARK_CAPTURE(OnSurfaceWith, Banj, PluginIdBanj, 1000, 1)->Name("shader/Banj, Oren-Nayar");

}  // namespace
