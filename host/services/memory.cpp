#include "host/services/memory.h"

#include <atomic>
#include <cassert>
#include <cstdlib>
#include <limits>

namespace sorvanix::host {

namespace {

// Stands in front of every block, and keeps what follows aligned for any type.
struct alignas(std::max_align_t) BlockHead {
  std::size_t size;
};

// Constant initialisation: a module may call while other objects of the process are not yet made,
// or are already gone.
constinit std::atomic<std::size_t> liveBlocks = 0;
constinit std::atomic<std::size_t> liveBytes = 0;
constexpr int kFailureHappened = 0;
constexpr int kNoFailure = -1;
constinit std::atomic<int> allocationsUntilFailure = kNoFailure;

bool MustFail() noexcept {
  int left = allocationsUntilFailure.load(std::memory_order_relaxed);
  while (left > kFailureHappened) {
    if (allocationsUntilFailure.compare_exchange_weak(left, left - 1)) return left == 1;
  }
  return false;
}

}  // namespace

MemoryStatistics GetMemoryStatistics() noexcept { return {liveBlocks.load(), liveBytes.load()}; }

void* AllocateBlock(std::size_t size) noexcept {
  if (size == 0) size = 1;
  if (MustFail() || size > std::numeric_limits<std::size_t>::max() - sizeof(BlockHead)) {
    return nullptr;
  }
  auto* head = static_cast<BlockHead*>(std::calloc(1, sizeof(BlockHead) + size));
  if (head == nullptr) return nullptr;
  head->size = size;
  ++liveBlocks;
  liveBytes += size;
  return head + 1;
}

void FreeBlock(void* block) noexcept {
  if (block == nullptr) return;
  BlockHead* head = static_cast<BlockHead*>(block) - 1;
  --liveBlocks;
  liveBytes -= head->size;
  std::free(head);
}

AllocationFailure::AllocationFailure(int which) noexcept {
  assert(which >= 1 && allocationsUntilFailure == kNoFailure);
  allocationsUntilFailure = which;
}

AllocationFailure::~AllocationFailure() { allocationsUntilFailure = kNoFailure; }

bool AllocationFailure::Happened() const noexcept {
  return allocationsUntilFailure == kFailureHappened;
}

void InstallMemory(GeneralTable& table) noexcept {
  table.alloc = AllocateBlock;
  table.free = FreeBlock;
}

}  // namespace sorvanix::host
