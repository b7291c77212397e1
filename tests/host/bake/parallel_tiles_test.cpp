#include "host/bake/parallel_tiles.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace sorvanix::host {
namespace {

TEST(ParallelTiles, EveryTileIsWorkedOnExactlyOnce) {
  for (const int threads : {0, 1, 2, 8, 200}) {
    std::vector<std::atomic<int>> calls(100);
    EXPECT_TRUE(RunTiles(100, {.threads = threads},
                         [&](int tile) { ++calls[static_cast<std::size_t>(tile)]; }));
    for (const std::atomic<int>& each : calls) EXPECT_EQ(each, 1) << threads;
  }
}

TEST(ParallelTiles, NothingToDoIsDone) {
  EXPECT_TRUE(RunTiles(0, {}, [](int) { FAIL(); }));
}

TEST(ParallelTiles, ProgressRisesToTheEndOnTheCallingThread) {
  std::vector<int> told;
  const std::thread::id caller = std::this_thread::get_id();
  const TaskOptions options = {.threads = 4, .progress = [&](int done, int total) {
                                 EXPECT_EQ(std::this_thread::get_id(), caller);
                                 EXPECT_EQ(total, 50);
                                 told.push_back(done);
                               }};
  EXPECT_TRUE(RunTiles(50, options, [](int) {}));
  ASSERT_FALSE(told.empty());
  for (std::size_t i = 1; i < told.size(); ++i) EXPECT_LT(told[i - 1], told[i]);
  EXPECT_EQ(told.back(), 50);
}

TEST(ParallelTiles, ACancelledTaskTakesNoFurtherTile) {
  std::atomic<bool> cancelled = false;
  std::atomic<int> calls = 0;
  const TaskOptions options = {.threads = 1, .cancelled = &cancelled};
  EXPECT_FALSE(RunTiles(1000, options, [&](int tile) {
    ++calls;
    if (tile == 9) cancelled = true;
  }));
  EXPECT_EQ(calls, 10);
}

TEST(ParallelTiles, ATaskCancelledBeforeItBeginsDoesNothing) {
  const std::atomic<bool> cancelled = true;
  const TaskOptions options = {.threads = 8, .cancelled = &cancelled};
  EXPECT_FALSE(RunTiles(10, options, [](int) { FAIL(); }));
}

TEST(ParallelTiles, AWorkerIsOneThread) {
  const TaskOptions options = {.threads = 4};
  ASSERT_EQ(WorkerCount(200, options), 4);
  std::array<std::mutex, 4> busy;
  std::array<std::thread::id, 4> thread;
  EXPECT_TRUE(RunTilesOnWorkers(200, options, [&](int, int worker) {
    const auto index = static_cast<std::size_t>(worker);
    ASSERT_LT(index, 4u);
    const std::unique_lock alone(busy[index], std::try_to_lock);
    ASSERT_TRUE(alone.owns_lock());
    if (thread[index] == std::thread::id()) thread[index] = std::this_thread::get_id();
    EXPECT_EQ(thread[index], std::this_thread::get_id());
  }));
}

TEST(ParallelTiles, ThereAreNoMoreWorkersThanTiles) {
  EXPECT_EQ(WorkerCount(3, {.threads = 8}), 3);
  EXPECT_EQ(WorkerCount(0, {.threads = 8}), 1);
  EXPECT_GE(WorkerCount(1000, {}), 1);
}

}  // namespace
}  // namespace sorvanix::host
