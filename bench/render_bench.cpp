// Rendering: camera rays a second on one thread and on two, over a scene of shadows and mirrors.
//
// Time is the wall's, so that the rates of the two rows tell how the renderer scales.
#include <benchmark/benchmark.h>

#include <memory>

#include "host/render/renderer.h"
#include "host/scene/scene.h"

namespace {

using namespace sorvanix::host;

Object& Add(Scene& scene, ObjectContent content, const Transform& transform) {
  auto object = std::make_unique<Object>();
  object->content = std::move(content);
  object->transform = transform;
  return scene.root.Add(std::move(object));
}

void Paint(Scene& scene, Object& object, float reflection) {
  auto material = std::make_shared<Material>();
  material->channels[ChannelColour].on = true;
  material->channels[ChannelSpecularColour].on = true;
  material->channels[ChannelReflection].on = reflection > 0;
  material->channels[ChannelReflection].strength = reflection;
  object.textureTags.push_back(std::make_unique<TextureTagNode>(object));
  object.textureTags.back()->material = material;
  scene.materials.push_back(std::move(material));
}

// Three rows of spheres on a floor, under two lights that throw shadows.
void Fill(Scene& scene) {
  const Transform floor = {.position = {0, -100, 0}, .scale = {20, 1, 20}};
  Paint(scene, Add(scene, DefaultPrimitive(PrimitiveShape::Plane), floor), 0.2f);
  for (int i = 0; i < 9; ++i) {
    const Transform place = {
        .position = {static_cast<float>(i % 3 * 220 - 220), 0, static_cast<float>(i / 3 * 220)}};
    Paint(scene, Add(scene, DefaultPrimitive(PrimitiveShape::Sphere), place), 0.3f);
  }
  Add(scene, LightContent{}, {.position = {-400, 600, -500}});
  Add(scene, LightContent{.kind = LightKind::Distant}, {.rotation = {-30, -40, 0}});
  scene.camera.transform = {.position = {0, 250, -900}, .rotation = {0, -15, 0}};
  scene.Update();
}

void CameraRays(benchmark::State& state) {
  constexpr int kWidth = 480, kHeight = 270;
  Scene scene;
  Fill(scene);
  const int threads = static_cast<int>(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(RenderPicture(
        scene, {.width = kWidth, .height = kHeight, .samples = 1}, {.threads = threads}));
  }
  state.counters["rays"] = benchmark::Counter(
      static_cast<double>(state.iterations()) * kWidth * kHeight, benchmark::Counter::kIsRate);
}
BENCHMARK(CameraRays)
    ->Name("render/threads")
    ->Arg(1)
    ->Arg(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
