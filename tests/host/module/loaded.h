// The standalone host with the real module loaded, for tests of the two together.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "host/host.h"
#include "host/loader/module.h"
#include "host/noise/noise_services.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host::test {

/// Noise is the host's own; Shader objects must be gone before this is.
struct RealModuleTest : ::testing::Test {
  Host host{{.services = {[](HostTables& tables) { InstallNoiseServices(tables.render); }}}};
  Module module = Module::Load(host, SORVANIX_MODULE_PATH).value();
  ShaderCatalogue catalogue =
      ShaderCatalogue::Load(module.Path().parent_path() / "Resources" / "shaders.json").value();
};

}  // namespace sorvanix::host::test
