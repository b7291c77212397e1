// Shaders through the contract, as a render calls them: one Output a sample.
#include <benchmark/benchmark.h>

#include "bench/bench_host.h"
#include "bench/sample_points.h"
#include "host/channels/channel_link.h"

namespace {

using namespace sorvanix;
using bench::LoadedModule;

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
  shader.InitRender({&render, nullptr});
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    ray.direction[2] = p.x;
    render.bumpNormal = render.baseNormal = render.faceNormal = sample.normal = {p.x, p.y, p.z};
    benchmark::DoNotOptimize(shader.Output(sample));
  }
  shader.FreeRender();
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

// A Projector with another shader in its input.
void ProjectorOf(benchmark::State& state, std::int32_t pluginId) {
  host::Container input, parameters;
  input.Set(KeyLinkPluginId, Word{pluginId});
  parameters.Set(1017, host::NestedContainer(input));
  host::Shader shader = LoadedModule().Create(PluginIdProjector, ChannelColour).value();
  shader.SetParameters(parameters);
  SurfaceOutput(state, shader);
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
BENCHMARK_CAPTURE(OnSurface, Fresnel, PluginIdFresnel)->Name("shader/Fresnel, on a surface");
BENCHMARK_CAPTURE(OnSurface, Falloff, PluginIdFalloff)->Name("shader/Falloff, on a surface");
BENCHMARK_CAPTURE(OnSurface, Banj, PluginIdBanj)->Name("shader/Banj, lit by the host");
BENCHMARK_CAPTURE(OnSurfaceWith, Banj, PluginIdBanj, 1000, 1)->Name("shader/Banj, Oren-Nayar");
BENCHMARK_CAPTURE(ProjectorOf, Buffy, PluginIdBuffy)->Name("shader/Projector of Buffy");

}  // namespace
