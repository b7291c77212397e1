// How much memory the machine has, for limits on what a file or an option may ask for: a system
// that promises more than it has ends a program without a word.
#pragma once

namespace sorvanix::host {

/// In bytes.
double MachineMemory() noexcept;

}  // namespace sorvanix::host
