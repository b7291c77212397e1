// Ctrl-C and SIGTERM as a flag, so that work ends between two steps and leaves nothing half done.
#pragma once

#include <atomic>

namespace sorvanix::cli {

/// From now on the first signal raises the flag; a second one ends the program at once.
const std::atomic<bool>& WatchForCancellation();

}  // namespace sorvanix::cli
