// Work cut into tiles that threads take one after the other, with progress and an early end.
#pragma once

#include <atomic>
#include <functional>

namespace sorvanix::host {

struct TaskOptions {
  int threads = 0;  // 0: one for each CPU
  /// Set from anywhere, even a signal handler, it ends the task.
  const std::atomic<bool>* cancelled = nullptr;
  /// Told how many of all tiles are done; on the calling thread, the numbers only rise.
  std::function<void(int done, int total)> progress = nullptr;

  bool Cancelled() const {
    return cancelled != nullptr && cancelled->load(std::memory_order_relaxed);
  }
};

/// Calls `work` once for each tile of 0 .. count - 1, on several threads at once; `work` must not
/// throw. Returns when all is done, true, or after a cancellation when all threads have stopped,
/// false: then some tiles were never worked on.
bool RunTiles(int count, const TaskOptions& options, const std::function<void(int tile)>& work);

/// How many threads RunTilesOnWorkers uses for so many tiles: at least 1.
int WorkerCount(int count, const TaskOptions& options);

/// The same for work that keeps a state for each thread: `worker` is below WorkerCount, and no two
/// calls with one worker overlap.
bool RunTilesOnWorkers(int count, const TaskOptions& options,
                       const std::function<void(int tile, int worker)>& work);

}  // namespace sorvanix::host
