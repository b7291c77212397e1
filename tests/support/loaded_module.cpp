#include "tests/support/loaded_module.h"

#include <dlfcn.h>

#include <stdexcept>

namespace sorvanix::test {

LoadedModule::LoadedModule() : library_(dlopen(SORVANIX_MODULE_PATH, RTLD_NOW | RTLD_LOCAL)) {
  if (library_ == nullptr) throw std::runtime_error(dlerror());
  entry_ = reinterpret_cast<EntryFunction>(dlsym(library_, SORVANIX_ENTRY_NAME));
  if (entry_ == nullptr) throw std::runtime_error(dlerror());
}

LoadedModule::~LoadedModule() { dlclose(library_); }

StartedModule::StartedModule() {
  if (module.Attach(host) != 1 || module.Start() != 1) throw std::runtime_error("no start");
}

const ShaderRecord& StartedModule::Record(std::int32_t pluginId) const {
  for (const Registration& registration : host.registrations) {
    if (registration.id == pluginId) return registration.record;
  }
  throw std::runtime_error("shader " + std::to_string(pluginId) + " is not registered");
}

ShaderUnderTest::ShaderUnderTest(const StartedModule& started, std::int32_t pluginId,
                                 std::int32_t channel)
    : record(started.Record(pluginId)) {
  instance.channel = channel;
  if (record.Alloc != nullptr && record.Alloc(&instance) == 0) throw std::bad_alloc();
}

ShaderUnderTest::~ShaderUnderTest() {
  if (record.FreeRender != nullptr) record.FreeRender(&instance);
  if (record.Free != nullptr) record.Free(&instance);
}

}  // namespace sorvanix::test
