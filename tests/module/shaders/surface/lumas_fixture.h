// What the tests of Lumas share: the shader in front of scripted lights, noise and spline.
#pragma once

#include "module/shaders/surface/lumas.h"
#include "tests/support/analytic_noise.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/recording_lights.h"

namespace sorvanix::test {

using Names = std::vector<std::string>;

/// The operations in their order, with the light where there is one: "lightAt 2".
inline Names Operations(const std::vector<LightCall>& calls) {
  Names names;
  for (const LightCall& call : calls) {
    const std::string light = call.light < 0 ? "" : " " + std::to_string(call.light);
    names.push_back(call.operation + light);
  }
  return names;
}

/// A surface that the eye looks at from straight above: the normal is +z, and so is the view.
struct LumasTest : ::testing::Test {
  StartedModule started;
  FakeHost& host = started.host;
  RecordingLights lights{host};
  AnalyticNoise noise;
  ShaderUnderTest shader{WithSpline(started), PluginIdLumas};
  LumasBlock& block = shader.block<LumasBlock>();
  RayRecord ray = {};
  RenderContext render = {};
  TextureTag tag = {};
  ChannelSample sample = {};

  LumasTest() {
    FakeHost::cpuIndex = 0;
    host.render.turbulence = noise.table()->turbulence;
    render.bumpNormal = render.faceNormal = {0, 0, 1};
    render.side = 1;
    render.lightCount = 1;
    render.lightsEnabled = 1;
    render.lightParamA = 77;
    render.lightParamB = 1;
    render.ray = &ray;
    LookAlong({0, 0, -1});
  }
  ~LumasTest() override { FakeHost::cpuIndex = 0; }

  void LookAlong(const Vector& direction) {
    ray.direction[0] = direction.x;
    ray.direction[1] = direction.y;
    ray.direction[2] = direction.z;
  }
  void BeginRender(std::int32_t cpus = 1) {
    host.cpuCount = cpus;
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
    sample.render = &render;
  }
  Vector Output() {
    lights.calls.clear();
    noise.Clear();
    return shader.Output(sample);
  }
  LumasSlot& Slot(std::int32_t cpu = 0) {
    return static_cast<LumasSlot*>(shader.instance.slots)[cpu];
  }
  /// A light that reaches every point with this colour from this direction.
  LightRecord& AddLight(const Vector& colour, const Vector& direction) {
    lights.lights.push_back({.record = {},
                             .colour = colour,
                             .shadowedColour = colour,
                             .direction = direction,
                             .areaShare = {}});
    return lights.lights.back().record;
  }
  /// Leaves one layer, or none, as if the dialog had derived it so.
  void OnlyLayer(int number) {
    for (int i = 0; i < 3; ++i) {
      block.layerOn[i] = block.layers[i].active = i + 1 == number;
      block.layers[i].useEdge = 0;
    }
  }
  void NoDiffuse() { block.diffuseOn = block.diffuseActive = 0; }

 private:
  // Answers the position that is looked up.
  static StartedModule& WithSpline(StartedModule& started) {
    started.host.render.splineLookup = [](float value, const float*, std::int32_t) noexcept {
      return value;
    };
    return started;
  }
};

}  // namespace sorvanix::test
