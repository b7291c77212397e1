// Surface shaders that look around: at the lights of a render, or at the points of a scene.
#include <benchmark/benchmark.h>

#include "bench/bench_host.h"
#include "bench/sample_points.h"
#include "host/scene/scene.h"
#include "module/shaders/surface/lumas.h"

namespace {

using namespace sorvanix;
using bench::LoadedModule;

// A surface that is seen from above, hit at points without order.
void ShadeSurface(benchmark::State& state, host::Shader& shader, const RenderInit& init,
                  RenderContext& render) {
  if (!shader.InitRender(init)) return state.SkipWithError("the shader takes no part");
  const bench::Points points = bench::RandomPoints(100);
  RayRecord ray = {{0, 0, 500}, {0, 0.28, -0.96}};
  render.ray = &ray;
  render.bumpNormal = render.faceNormal = {0, 0, 1};
  render.side = 1;
  render.lightCount = 3;
  render.lightsEnabled = 1;
  ChannelSample sample = {};
  sample.render = &render;
  std::size_t i = 0;
  for (auto _ : state) {
    const bench::Point& p = points[i++ % bench::kPoints];
    render.hitPoint = {p.x, p.y, p.z};
    benchmark::DoNotOptimize(shader.Output(sample));
  }
}

void Lumas(benchmark::State& state, void (*setUp)(LumasBlock&)) {
  host::Shader shader = LoadedModule().Create(PluginIdLumas, ChannelLuminance).value();
  setUp(*static_cast<LumasBlock*>(shader.Instance().data));
  RenderContext render = {};
  ShadeSurface(state, shader, {&render, nullptr}, render);
}
void HostLight(LumasBlock&) {}
void Rough(LumasBlock& block) { block.orenNayar = 1; }
void Brushed(LumasBlock& block) {
  block.anisotropyActive = block.scratchActive = 1;
  for (SpecularLayer& layer : block.layers) layer.roughness = 0.1f;
}

// So many nulls of one name, side by side.
void Proximal(benchmark::State& state) {
  constexpr std::int32_t kKeyName = 1002;
  host::Scene scene;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    auto object = std::make_unique<host::Object>();
    object->name = host::Text("Lamp");
    object->transform.position = {static_cast<float>(i), 0, 0};
    scene.root.Add(std::move(object));
  }
  scene.Update();
  host::Shader shader = LoadedModule().Create(PluginIdProximal, ChannelLuminance).value();
  host::Container parameters;
  parameters.Set(kKeyName, host::Text("Lamp"));
  shader.SetParameters(parameters);
  RenderContext render = {};
  ShadeSurface(state, shader, {&render, scene.Handle()}, render);
}

BENCHMARK_CAPTURE(Lumas, Host, HostLight)->Name("shader/Lumas, the host's light");
BENCHMARK_CAPTURE(Lumas, Rough, Rough)->Name("shader/Lumas, Oren-Nayar, three lights");
BENCHMARK_CAPTURE(Lumas, Brushed, Brushed)->Name("shader/Lumas, brushed, three lights");
BENCHMARK(Proximal)->Name("shader/Proximal, points")->Arg(1)->Arg(100)->Arg(10000);

}  // namespace
