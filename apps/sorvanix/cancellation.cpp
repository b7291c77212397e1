#include "apps/sorvanix/cancellation.h"

#include <csignal>

namespace sorvanix::cli {

namespace {

std::atomic<bool> cancelled = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // else no signal handler may touch it

void Cancel(int) { cancelled.store(true, std::memory_order_relaxed); }

}  // namespace

const std::atomic<bool>& WatchSignals() {
  struct sigaction action = {};
  action.sa_handler = Cancel;
  // The handler goes with its first use, so that the next signal does what it always did.
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  return cancelled;
}

}  // namespace sorvanix::cli
