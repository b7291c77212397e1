// The container table of the contract, over Container.
#pragma once

#include <sorvanix/host_services.h>

namespace sorvanix::host {

void InstallContainers(ContainerTable& table) noexcept;

}  // namespace sorvanix::host
