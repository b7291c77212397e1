#include "tests/support/recording_lights.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace sorvanix::test {

namespace {

RecordingLights* current = nullptr;

RecordingLights& Current() {
  if (current == nullptr) std::abort();
  return *current;
}

void Record(LightCall call, const RenderContext& render) {
  if (!Current().record) return;
  call.bumpNormal = render.bumpNormal;
  call.lightParamB = render.lightParamB;
  Current().calls.push_back(std::move(call));
}

// The index of a light that the module got from lightAt.
std::size_t IndexOf(const LightRecord* light) {
  const std::vector<ScriptedLight>& lights = Current().lights;
  for (std::size_t i = 0; i < lights.size(); ++i) {
    if (&lights[i].record == light) return i;
  }
  std::abort();  // not one of ours
}

void Illuminate(const RenderContext* render, Vector* diffuse, Vector* specular,
                float exponent) noexcept {
  Record(
      {.operation = "illuminate", .exponent = exponent, .diffuse = *diffuse, .specular = *specular},
      *render);
  if (Current().illuminate) Current().illuminate(*render, *diffuse, *specular, exponent);
}

std::int32_t LightCount(const RenderContext* render) noexcept {
  Record({.operation = "lightCount"}, *render);
  return static_cast<std::int32_t>(Current().lights.size());
}

const LightRecord* LightAt(const RenderContext* render, std::int32_t index) noexcept {
  Record({.operation = "lightAt", .light = index}, *render);
  const std::vector<ScriptedLight>& lights = Current().lights;
  if (index < 0 || static_cast<std::size_t>(index) >= lights.size()) return nullptr;
  return &lights[static_cast<std::size_t>(index)].record;
}

std::int32_t LightSample(const RenderContext* render, const LightRecord* light, Vector* colour,
                         Vector* direction, const Vector* point, const Vector* normal,
                         std::int32_t shadows, std::int32_t identity) noexcept {
  const std::size_t index = IndexOf(light);
  Record({.operation = "lightSample",
          .light = static_cast<int>(index),
          .point = *point,
          .normal = *normal,
          .shadows = shadows,
          .identity = identity},
         *render);
  const ScriptedLight& scripted = Current().lights[index];
  *colour = shadows != 0 ? scripted.shadowedColour : scripted.colour;
  *direction = scripted.direction;
  return (shadows != 0 ? scripted.arrivesShadowed : scripted.arrives) ? 1 : 0;
}

void AreaLight(const RenderContext* render, const LightRecord* light, float value,
               const Vector* ray, float side, const Vector* point, Vector* sum) noexcept {
  const std::size_t index = IndexOf(light);
  Record({.operation = "areaLight",
          .light = static_cast<int>(index),
          .point = *point,
          .value = value,
          .side = side,
          .ray = *ray,
          .diffuse = *sum},
         *render);
  const Vector& share = Current().lights[index].areaShare;
  sum->x += value * share.x;
  sum->y += value * share.y;
  sum->z += value * share.z;
}

}  // namespace

RecordingLights::RecordingLights(FakeHost& host) {
  current = this;
  host.render.illuminate = Illuminate;
  host.render.lightCount = LightCount;
  host.render.lightAt = LightAt;
  host.render.lightSample = LightSample;
  host.render.areaLight = AreaLight;
}

RecordingLights::~RecordingLights() { current = nullptr; }

std::vector<LightCall> RecordingLights::CallsOf(const std::string& operation) const {
  std::vector<LightCall> found;
  std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
               [&](const LightCall& call) { return call.operation == operation; });
  return found;
}

}  // namespace sorvanix::test
