// Ctrl-C and SIGTERM as a flag, so that work ends between two steps and leaves nothing half done.
#pragma once

#include <atomic>

namespace sorvanix::cli {

/// From now on the first signal raises the flag; a second one ends the program at once. And writing
/// beyond a limit on file sizes is an error, not the end of the program.
const std::atomic<bool>& WatchSignals();

}  // namespace sorvanix::cli
