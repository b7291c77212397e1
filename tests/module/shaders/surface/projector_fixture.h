// What tests of Projector share: the shader with an input, a projection that records, and a hit.
#pragma once

#include "module/shaders/surface/projector.h"
#include "tests/support/recording_projection.h"
#include "tests/support/surface_fixture.h"

namespace sorvanix::test {

inline constexpr Vector kInputColour = {0.25f, 0.5f, 0.75f};

/// A hit at (1, 2, 3) with corners one or two units away along each axis. Without a projection of a
/// test's own a point's coordinate is the point, as the host was asked about it.
struct ProjectorTest : SurfaceTest<ProjectorBlock, PluginIdProjector> {
  RecordingProjection projection{host};
  ScriptedLink& input = Link(block.input);

  ProjectorTest() {
    input.HoldShader(PluginIdBuffy);  // not aware
    input.content.colour = kInputColour;
    sample.render = nullptr;
    sample.uvw = {0.5f, 0.25f, 0.125f};
    sample.delta = {0.01f, 0.02f, 0.03f};
    sample.normal = {0, 1, 0};
    sample.time = 4;
    sample.texFlags = 77;
    render.hitPoint = {1, 2, 3};
    render.footprintA = {2, 2, 3};
    render.footprintB = {1, 4, 3};
    render.footprintC = {1, 2, 4};
    render.localHitPoint = {4, 5, 6};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 1, 0};
  }
  FootprintBlock& Slot(std::int32_t cpu) { return FilterTest::Slot(cpu, SlotStrideProjector); }
  void MakeInputAware(std::int32_t cpus = 1) {
    input.HoldShader(PluginIdNoise2D);
    input.MakeSlots(cpus);
  }
  // The only read of the input.
  const LinkRead& Read() {
    EXPECT_EQ(host.reads.size(), 1u);
    return host.reads.at(0);
  }
};

}  // namespace sorvanix::test
