// Memory for host and module: zeroed blocks that are counted, so that leaks show, and that can be
// made to fail, so that every path of a short memory can be tested.
//
// The counters belong to the process, not to a Host: blocks may be freed while a module is
// unloaded. All functions are safe on several threads.
#pragma once

#include <sorvanix/host_services.h>

#include <cstddef>

namespace sorvanix::host {

/// What the process holds at this moment.
struct MemoryStatistics {
  std::size_t liveBlocks = 0;
  std::size_t liveBytes = 0;  ///< as asked for, without the host's own overhead
};

MemoryStatistics GetMemoryStatistics() noexcept;

/// A block of `size` bytes (0 counts as 1), cleared to zero; null when memory is short.
void* AllocateBlock(std::size_t size) noexcept;

/// Releases a block of AllocateBlock; null is allowed.
void FreeBlock(void* block) noexcept;

/// While it lives, the `which`-th allocation from its making on fails, once; 1 is the next one.
/// One at a time. A test counts `which` up until Happened() stays false.
class AllocationFailure {
 public:
  explicit AllocationFailure(int which) noexcept;
  ~AllocationFailure();
  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;

  bool Happened() const noexcept;
};

/// Puts the memory functions into the general table.
void InstallMemory(GeneralTable& table) noexcept;

}  // namespace sorvanix::host
