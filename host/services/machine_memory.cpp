#include "host/services/machine_memory.h"

#include <unistd.h>

namespace sorvanix::host {

double MachineMemory() noexcept {
  return static_cast<double>(::sysconf(_SC_PHYS_PAGES)) *
         static_cast<double>(::sysconf(_SC_PAGESIZE));
}

}  // namespace sorvanix::host
