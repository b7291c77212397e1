// The real module behind the real host, with everything that a render needs.
#pragma once

#include <gtest/gtest.h>

#include "host/channels/bitmap.h"
#include "host/channels/channel_link.h"
#include "host/host.h"
#include "host/loader/module.h"
#include "host/noise/noise_services.h"
#include "host/render/matrix.h"
#include "host/render/shading_services.h"

namespace sorvanix::host {

struct RealModule {
  Host host{{.services = {[](HostTables& tables) {
               InstallNoiseServices(tables.render);
               InstallShadingServices(tables.render);
               InstallMatrices(tables.matrix);
               InstallChannelLinks(tables.channel, tables.stream);
               InstallBitmaps(tables.bitmap);
             }}}};
  Module module = *Module::Load(host, SORVANIX_MODULE_PATH);
  LinkedShaders linked{module.Shaders()};
};

}  // namespace sorvanix::host
