// The contract's tables of dialogs, user areas, dialog forms, viewers and preview threads.
#pragma once

#include "host/host.h"

namespace sorvanix::host {

/// Fills the tables; what they do is the work of the current dialog service. To be installed after
/// documents: a dialog that shows no pictures is given an empty scene for its preview at once.
void InstallDialogs(HostTables& tables) noexcept;

}  // namespace sorvanix::host
