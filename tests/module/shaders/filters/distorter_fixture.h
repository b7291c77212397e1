// What the tests of Distorter share: two scripted inputs, and a host that answers about the
// surface.
#pragma once

#include <stdexcept>

#include "module/shaders/filters/distorter.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {

// What the host was asked about the surface, and what it answers: a point (x, y, z) has the
// texture coordinate (x / 10, z / 10, 0), and u and v run along (0.6, 0.8, 0) and (0, 0, 1).
struct SurfaceQuestions {
  int pointToUvw = 0;
  const TextureTag* tag = nullptr;
  std::int32_t identity = 0;
  Vector point = {}, normal = {};
};
inline SurfaceQuestions asked;

struct DistorterTest : FilterTest<DistorterBlock, PluginIdDistorter> {
  ScriptedLink& input = Link(block.input);
  ScriptedLink& drive = Link(block.distortInput);
  Vector uvwAtRead = {};  // of the sample's record, as `input` is read

  DistorterTest() {
    asked = {};
    host.render.pointToUvw = [](const RenderContext*, const TextureTag* t, std::int32_t id,
                                const Vector* point, const Vector* normal, Vector* uvw) noexcept {
      asked = {asked.pointToUvw + 1, t, id, *point, *normal};
      *uvw = {point->x / 10, point->z / 10, 0};
    };
    host.render.surfaceAxes = [](const RenderContext*, const TextureTag* t, const Vector* point,
                                 const Vector* normal, Vector* u, Vector* v) noexcept {
      asked.tag = t;
      asked.point = *point;
      asked.normal = *normal;
      *u = {0.6f, 0.8f, 0};
      *v = {0, 0, 1};
    };
    input.HoldShader(PluginIdBuffy);  // not aware
    drive.HoldShader(PluginIdBuffy);
    input.content.show = [this](const LinkRead&) {
      uvwAtRead = sample.uvw;
      return Vector{0.25f, 0.5f, 0.75f};
    };
    drive.content.colour = {0.3f, 0.6f, 0.9f};
    block.strength = 2;
    block.scaleX = 0.5f;
    block.scaleY = 0.25f;
    block.scaleZ = 0.125f;
    sample.uvw = {0.5f, 0.25f, 0.125f};
    sample.texFlags = 77;
    render.hitPoint = render.footprintA = render.footprintB = render.footprintC = {1, 2, 3};
    render.localHitPoint = {4, 5, 6};
    render.baseNormal = {0, 0, -1};
    render.lightParamA = 42;
    render.bumpNormal = {0, 1, 0};
    render.tangentU = {1, 0, 0};
    render.tangentV = {0, 0, 1};
  }
  FootprintBlock& Slot(std::int32_t cpu) { return FilterTest::Slot(cpu, SlotStrideDistorter); }
  static void MakeAware(ScriptedLink& link, std::int32_t cpus = 1) {
    link.HoldShader(PluginIdNoise2D);
    link.MakeSlots(cpus);
  }
  // The one read of `input`.
  const LinkRead& InputRead() {
    const LinkRead* found = nullptr;
    for (const LinkRead& read : host.reads) {
      if (read.link == input.number) found = &read;
    }
    if (found == nullptr) throw std::runtime_error("the input was not read");
    return *found;
  }
};

}  // namespace sorvanix::test
