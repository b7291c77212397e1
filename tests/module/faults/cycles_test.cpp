// A host that loads and unloads the module all day: each cycle of attach, start, detach and unload
// leaves nothing behind, neither with the host nor in the process.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

// Sanitizers keep a record of every library that was ever loaded.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kCycles = 200;
constexpr bool kMeasuresMemory = false;
#else
constexpr int kCycles = 100000;
constexpr bool kMeasuresMemory = true;
#endif

long ResidentBytes() {
  long total = 0, resident = 0;
  std::FILE* statm = std::fopen("/proc/self/statm", "r");
  if (statm == nullptr || std::fscanf(statm, "%ld %ld", &total, &resident) != 2) resident = 0;
  if (statm != nullptr) std::fclose(statm);
  return resident * sysconf(_SC_PAGESIZE);
}

TEST(ModuleCycles, LeaveNothingBehind) {
  FakeHost host;
  long early = 0;
  for (int i = 0; i < kCycles; ++i) {
    {
      LoadedModule module;
      ASSERT_EQ(module.Attach(host), 1);
      ASSERT_EQ(module.Start(), 1);
      ASSERT_EQ(module.Detach(), 1);
    }
    ASSERT_EQ(host.liveBlocks(), 0) << i;
    ASSERT_EQ(host.liveTexts(), 0) << i;
    host.calls.clear();
    host.registrations.clear();
    if (i == kCycles / 100) early = ResidentBytes();
  }
  // A leak of 16 bytes a cycle would be 1.6 MB.
  constexpr long kBound = 1 << 20;
  if (kMeasuresMemory) {
    EXPECT_LT(ResidentBytes() - early, kBound);
  }
}

}  // namespace
}  // namespace sorvanix::test
