// The module under test, loaded afresh from its file for each object.
#pragma once

#include <sorvanix/host_api.h>

#include <string>

#include "tests/support/fake_host.h"

namespace sorvanix::test {

/// Loads the module, which puts its static state back to the beginning, and unloads it at the end.
class LoadedModule {
 public:
  LoadedModule();
  ~LoadedModule();
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;

  std::int32_t Call(std::int32_t action, void* arg1 = nullptr, const char* arg3 = nullptr) {
    return entry_(action, arg1, 0, arg3);
  }
  std::int32_t Attach(FakeHost& host, const char* path = "/plugins/sorvaNIX.so") {
    return Call(ActionAttach, &host.api, path);
  }
  std::int32_t Start() { return Call(ActionStart); }
  std::int32_t Detach() { return Call(ActionDetach); }

 private:
  void* library_;
  EntryFunction entry_;
};

/// A host with the module attached and started.
struct StartedModule {
  FakeHost host;
  LoadedModule module;

  StartedModule();
  /// The record that a shader was registered with.
  const ShaderRecord& Record(std::int32_t pluginId) const;
};

/// One shader with its block, freed at the end.
struct ShaderUnderTest {
  const ShaderRecord& record;
  ShaderInstance instance = {};

  ShaderUnderTest(const StartedModule& started, std::int32_t pluginId, std::int32_t channel = 0);
  ~ShaderUnderTest();
  ShaderUnderTest(const ShaderUnderTest&) = delete;
  ShaderUnderTest& operator=(const ShaderUnderTest&) = delete;

  template <class Block>
  Block& block() {
    return *static_cast<Block*>(instance.data);
  }
  std::int32_t Message(std::int32_t id, FakeContainer& payload) {
    return record.Message(&instance, id, payload.handle());
  }
  Vector Output(ChannelSample& sample) {
    Vector result = {-1, -1, -1};
    record.Output(&result, &instance, &sample);
    return result;
  }
};

}  // namespace sorvanix::test
