// Holds a test to giving back all that it took.
#pragma once

#include <gtest/gtest.h>

#include "host/services/memory.h"

namespace sorvanix::host {

/// Fails the test at its end when blocks or objects of the host are left.
class LeakCheck {
 public:
  LeakCheck() = default;
  ~LeakCheck() {
    EXPECT_EQ(GetMemoryStatistics().liveBlocks, before_.liveBlocks) << "objects were not freed";
    EXPECT_EQ(GetMemoryStatistics().liveBytes, before_.liveBytes);
  }
  LeakCheck(const LeakCheck&) = delete;
  LeakCheck& operator=(const LeakCheck&) = delete;

 private:
  const MemoryStatistics before_ = GetMemoryStatistics();
};

/// Repeats `work` with its first, second, ... allocation failing, until none is left to fail.
/// Answers how many there were.
template <class Work>
int WithEveryAllocationFailing(Work work) {
  for (int which = 1;; ++which) {
    const AllocationFailure failure(which);
    work();
    if (!failure.Happened()) return which - 1;
  }
}

}  // namespace sorvanix::host
