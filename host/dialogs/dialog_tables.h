// The contract's tables of dialogs, user areas, dialog forms, viewers and preview threads.
#pragma once

#include "host/host.h"

namespace sorvanix::host {

/// Fills the tables; what they do is the work of the current dialog service. To be installed after
/// bitmaps and documents: a service that shows no pictures is spared their loading.
void InstallDialogs(HostTables& tables) noexcept;

}  // namespace sorvanix::host
