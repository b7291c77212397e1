#include "host/services/input_log.h"

#include <gtest/gtest.h>

#include "host/services/text_file.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;

class InputLogs : public ::testing::Test {
 protected:
  fs::path Written(const std::string& name) const { return folder_.Write(name, "x"); }

  const TemporaryFolder folder_;
};

TEST_F(InputLogs, AFileThatWasReadIsHeldWhateverItsNameLooksLike) {
  const fs::path file = Written("a.txt");
  fs::create_symlink("a.txt", folder_.Path() / "link");
  const InputLog log;
  ASSERT_TRUE(ReadTextFile(file));
  EXPECT_TRUE(log.Holds(file));
  EXPECT_TRUE(log.Holds(folder_.Path() / "." / "a.txt"));
  EXPECT_TRUE(log.Holds(folder_.Path() / "link"));
}

TEST_F(InputLogs, OtherFilesAndThoseReadBeforeAreNot) {
  const fs::path before = Written("before.txt"), other = Written("other.txt");
  ASSERT_TRUE(ReadTextFile(before));
  const InputLog log;
  ASSERT_TRUE(ReadTextFile(Written("a.txt")));
  EXPECT_FALSE(log.Holds(before));
  EXPECT_FALSE(log.Holds(other));
  EXPECT_FALSE(log.Holds(folder_.Path() / "missing.txt"));
}

TEST_F(InputLogs, TheInnermostOneNotes) {
  const InputLog outer;
  {
    const InputLog inner;
    InputLog::Note(Written("a.txt"));
    EXPECT_TRUE(inner.Holds(folder_.Path() / "a.txt"));
  }
  EXPECT_FALSE(outer.Holds(folder_.Path() / "a.txt"));
  InputLog::Note(Written("b.txt"));
  EXPECT_TRUE(outer.Holds(folder_.Path() / "b.txt"));
}

}  // namespace
}  // namespace sorvanix::host
