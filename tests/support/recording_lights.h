// Lights for tests: scripted ones, with a record of every question that a shader asks about them
// and of what the render held at that moment.
#pragma once

#include <sorvanix/host_api.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/fake_host.h"

namespace sorvanix::test {

/// One light, and how it comes to any point.
struct ScriptedLight {
  LightRecord record = {};
  Vector colour = {};           ///< where nothing may block it
  Vector shadowedColour = {};   ///< where shadows are asked for
  Vector direction = {};        ///< towards the light
  bool arrives = true;          ///< the answer without shadows...
  bool arrivesShadowed = true;  ///< ...and with them
  Vector areaShare = {};        ///< what areaLight adds, for a value of 1
};

/// One call. Fields that the operation does not take stay at their defaults.
struct LightCall {
  std::string operation;  ///< "illuminate", "lightCount", "lightAt", "lightSample", "areaLight"
  int light = -1;         ///< the index of the light, or the one asked for
  Vector point = {}, normal = {};
  std::int32_t shadows = 0, identity = 0;
  float exponent = 0;
  float value = 0, side = 0;
  Vector ray = {};
  Vector diffuse = {}, specular = {};  ///< the sums as they came; `diffuse` that of areaLight too
  Vector bumpNormal = {};              ///< of the render
  std::int32_t lightParamB = 0;        ///< of the render
};

/// Installs itself in a host, to be made after it and before the module is attached or after; one
/// at a time.
class RecordingLights {
 public:
  explicit RecordingLights(FakeHost& host);
  ~RecordingLights();
  RecordingLights(const RecordingLights&) = delete;
  RecordingLights& operator=(const RecordingLights&) = delete;

  std::vector<ScriptedLight> lights;
  /// What illuminate adds; nothing while it is not set.
  std::function<void(const RenderContext& render, Vector& diffuse, Vector& specular,
                     float exponent)>
      illuminate;

  std::vector<LightCall> calls;
  bool record = true;  ///< to be switched off where several threads ask

  /// The calls of one operation, in order.
  std::vector<LightCall> CallsOf(const std::string& operation) const;
};

}  // namespace sorvanix::test
