// All tables of the contract that speak of scenes, as one service of the host.
#pragma once

#include "host/host.h"

namespace sorvanix::host {

/// Installs objects, materials, documents and the list of documents; DocumentTable::render is left
/// to a renderer, and links to InstallChannelLinks.
///     Host host({.services = {InstallScenes}});
void InstallScenes(HostTables& tables);

}  // namespace sorvanix::host
