// What tests of Proximal share: the shader, which seeks lamps in a scene, and a sample.
#pragma once

#include "module/shaders/surface/proximal.h"
#include "tests/support/fake_scene.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {

/// Lamps on the x axis. The default falloff is linear, from 0 to 100 units.
struct ProximalTest : ::testing::Test {
  StartedModule started;
  FakeHost& host = started.host;
  ShaderUnderTest shader{started, PluginIdProximal};
  ProximalBlock& block = shader.block<ProximalBlock>();
  FakeScene scene;
  RenderContext render = {};
  ChannelSample sample = {};

  ProximalTest() {
    FakeHost::cpuIndex = 0;
    render.bumpNormal = {0, 0, 1};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 1, 0};
    FakeContainer name;
    name.Set(1002, std::string("Lamp"));
    shader.Message(MessageSetParameters, name);
  }
  ~ProximalTest() override { FakeHost::cpuIndex = 0; }

  void AddLampAt(float x) { scene.Add("Lamp").matrix.off = {x, 0, 0}; }
  std::int32_t InitRender(std::int32_t cpus = 1) {
    host.cpuCount = cpus;
    const RenderInit init = {&render, scene.handle()};
    return shader.record.InitRender(&shader.instance, &init);
  }
  void BeginRender(std::int32_t cpus = 1) {
    ASSERT_EQ(InitRender(cpus), 0);
    sample.render = &render;
  }
  FootprintBlock& Slot(std::int32_t cpu = 0) {
    char* first = static_cast<char*>(shader.instance.slots);
    return *reinterpret_cast<FootprintBlock*>(first + cpu * SlotStrideNoise);
  }
  float ValueAt(float x, float y = 0, float z = 0) {
    render.hitPoint = {x, y, z};
    const Vector colour = shader.Output(sample);
    EXPECT_EQ(colour.x, colour.y);
    EXPECT_EQ(colour.x, colour.z);
    return colour.x;
  }
};

}  // namespace sorvanix::test
