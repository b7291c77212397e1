#include "host/services/memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

namespace sorvanix::host {
namespace {

class MemoryTest : public ::testing::Test {
 protected:
  MemoryTest() { InstallMemory(table); }

  GeneralTable table = {};
  const MemoryStatistics before = GetMemoryStatistics();
};

TEST_F(MemoryTest, ABlockIsClearedEvenWhereAnotherOneWas) {
  for (int round = 0; round < 10; ++round) {
    auto* block = static_cast<unsigned char*>(table.alloc(100));
    ASSERT_NE(block, nullptr);
    for (int i = 0; i < 100; ++i) ASSERT_EQ(block[i], 0) << "byte " << i << " in round " << round;
    std::memset(block, 0xFF, 100);
    table.free(block);
  }
}

TEST_F(MemoryTest, ABlockSuitsAnyType) {
  void* block = table.alloc(3);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0u);
  table.free(block);
}

TEST_F(MemoryTest, BlocksAndBytesAreCounted) {
  void* first = table.alloc(10);
  void* second = table.alloc(32);
  EXPECT_EQ(GetMemoryStatistics().liveBlocks, before.liveBlocks + 2);
  EXPECT_EQ(GetMemoryStatistics().liveBytes, before.liveBytes + 42);
  table.free(first);
  EXPECT_EQ(GetMemoryStatistics().liveBlocks, before.liveBlocks + 1);
  EXPECT_EQ(GetMemoryStatistics().liveBytes, before.liveBytes + 32);
  table.free(second);
  EXPECT_EQ(GetMemoryStatistics().liveBlocks, before.liveBlocks);
  EXPECT_EQ(GetMemoryStatistics().liveBytes, before.liveBytes);
}

TEST_F(MemoryTest, ASizeOfZeroCountsAsOne) {
  void* block = table.alloc(0);
  EXPECT_NE(block, nullptr);
  EXPECT_EQ(GetMemoryStatistics().liveBytes, before.liveBytes + 1);
  table.free(block);
}

TEST_F(MemoryTest, FreeingNullDoesNothing) {
  table.free(nullptr);
  EXPECT_EQ(GetMemoryStatistics().liveBlocks, before.liveBlocks);
}

// The head of the block would make the sum wrap around to a small number.
TEST_F(MemoryTest, ASizeThatNoMemoryHasIsNull) {
  EXPECT_EQ(table.alloc(std::numeric_limits<std::size_t>::max()), nullptr);
  EXPECT_EQ(table.alloc(std::numeric_limits<std::size_t>::max() - 8), nullptr);
  EXPECT_EQ(GetMemoryStatistics().liveBlocks, before.liveBlocks);
}

TEST_F(MemoryTest, TheAllocationThatWasToldFailsAndNoOther) {
  for (int which = 1; which <= 4; ++which) {
    const AllocationFailure failure(which);
    for (int i = 1; i <= 4; ++i) {
      EXPECT_EQ(failure.Happened(), i > which) << "before " << i << " of failure " << which;
      void* block = table.alloc(8);
      EXPECT_EQ(block == nullptr, i == which) << "allocation " << i << " of failure " << which;
      table.free(block);
    }
  }
}

TEST_F(MemoryTest, AFailureEndsWithItsObject) {
  { const AllocationFailure failure(1); }
  void* block = table.alloc(8);
  EXPECT_NE(block, nullptr);
  table.free(block);
}

TEST_F(MemoryTest, CountsHoldOverThreads) {
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([this] {
        for (int round = 0; round < 1000; ++round) table.free(table.alloc(16));
      });
    }
  }
  EXPECT_EQ(GetMemoryStatistics().liveBlocks, before.liveBlocks);
  EXPECT_EQ(GetMemoryStatistics().liveBytes, before.liveBytes);
}

}  // namespace
}  // namespace sorvanix::host
