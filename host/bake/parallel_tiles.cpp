#include "host/bake/parallel_tiles.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace sorvanix::host {

bool RunTiles(int count, const TaskOptions& options, const std::function<void(int tile)>& work) {
  return RunTilesOnWorkers(count, options, [&](int tile, int) { work(tile); });
}

int WorkerCount(int count, const TaskOptions& options) {
  const int wanted =
      options.threads > 0 ? options.threads : static_cast<int>(std::thread::hardware_concurrency());
  return std::clamp(wanted, 1, std::max(count, 1));
}

bool RunTilesOnWorkers(int count, const TaskOptions& options,
                       const std::function<void(int tile, int worker)>& work) {
  const int threads = WorkerCount(count, options);

  std::atomic<int> next = 0;
  std::mutex mutex;
  std::condition_variable changed;
  int done = 0;  // guarded by the mutex, as is `running`
  int running = threads;

  const auto worker = [&](int index) {
    while (!options.Cancelled()) {
      const int tile = next.fetch_add(1, std::memory_order_relaxed);
      if (tile >= count) break;
      work(tile, index);
      const std::lock_guard lock(mutex);
      ++done;
      changed.notify_one();
    }
    const std::lock_guard lock(mutex);
    --running;
    changed.notify_one();
  };

  std::vector<std::jthread> workers;
  for (int i = 0; i < threads; ++i) workers.emplace_back(worker, i);

  std::unique_lock lock(mutex);
  int told = 0;
  while (running > 0 || told < done) {
    changed.wait(lock, [&] { return running == 0 || told < done; });
    if (told == done) continue;
    told = done;
    if (!options.progress) continue;
    const int now = told;
    lock.unlock();  // the workers need not wait for a slow terminal
    options.progress(now, count);
    lock.lock();
  }
  return done == count;
}

}  // namespace sorvanix::host
