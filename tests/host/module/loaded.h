// The standalone host with the real module loaded, for tests of the two together.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "host/channels/channel_link.h"
#include "host/host.h"
#include "host/loader/module.h"
#include "host/noise/noise_services.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host::test {

/// Noise and links are the host's own; Shader objects must be gone before this is.
struct RealModuleTest : ::testing::Test {
  static void InstallServices(HostTables& tables) {
    InstallNoiseServices(tables.render);
    InstallChannelLinks(tables.channel, tables.stream);
    InstallBitmaps(tables.bitmap);
  }

  Host host{{.services = {InstallServices}}};
  Module module = Module::Load(host, SORVANIX_MODULE_PATH).value();
  LinkedShaders links{module.Shaders()};
  ShaderCatalogue catalogue =
      ShaderCatalogue::Load(module.Path().parent_path() / "Resources" / "shaders.json").value();
};

}  // namespace sorvanix::host::test
