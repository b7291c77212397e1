#include "host/bake/temporary_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;

class TemporaryFiles : public ::testing::Test {
 protected:
  TemporaryFiles() { fs::create_directory(folder_); }
  ~TemporaryFiles() override { fs::remove_all(folder_); }

  std::ptrdiff_t FilesInFolder() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }
  static std::string TextOf(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  const fs::path folder_ =
      fs::path(testing::TempDir()) /
      (std::string("sorvanix_") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(TemporaryFiles, NothingHasTheNameBeforeTheCommit) {
  auto file = TemporaryFile::Create(folder_ / "a.txt");
  ASSERT_TRUE(file);
  std::ofstream(file->Path()) << "whole";
  EXPECT_FALSE(fs::exists(folder_ / "a.txt"));
  ASSERT_TRUE(file->Commit());
  EXPECT_EQ(TextOf(folder_ / "a.txt"), "whole");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(TemporaryFiles, ACommittedFileOutlivesItsObject) {
  {
    auto file = TemporaryFile::Create(folder_ / "a.txt");
    ASSERT_TRUE(file && file->Commit());
  }
  EXPECT_TRUE(fs::exists(folder_ / "a.txt"));
}

TEST_F(TemporaryFiles, WithoutACommitTheFormerFileStaysAndNothingElse) {
  std::ofstream(folder_ / "a.txt") << "former";
  {
    auto file = TemporaryFile::Create(folder_ / "a.txt");
    ASSERT_TRUE(file);
    std::ofstream(file->Path()) << "half";
  }
  EXPECT_EQ(TextOf(folder_ / "a.txt"), "former");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(TemporaryFiles, ACommitReplacesTheFormerFile) {
  std::ofstream(folder_ / "a.txt") << "former";
  auto file = TemporaryFile::Create(folder_ / "a.txt");
  ASSERT_TRUE(file);
  std::ofstream(file->Path()) << "new";
  ASSERT_TRUE(file->Commit());
  EXPECT_EQ(TextOf(folder_ / "a.txt"), "new");
}

TEST_F(TemporaryFiles, TwoForOneTargetDoNotMeet) {
  const auto first = TemporaryFile::Create(folder_ / "a.txt");
  const auto second = TemporaryFile::Create(folder_ / "a.txt");
  ASSERT_TRUE(first && second);
  EXPECT_NE(first->Path(), second->Path());
}

TEST_F(TemporaryFiles, AMovedObjectLeavesTheFileToItsHeir) {
  auto first = TemporaryFile::Create(folder_ / "a.txt");
  ASSERT_TRUE(first);
  {
    const TemporaryFile heir = std::move(*first);
    EXPECT_TRUE(fs::exists(heir.Path()));
  }
  EXPECT_EQ(FilesInFolder(), 0);
}

TEST_F(TemporaryFiles, PermissionsAreThoseOfAnyNewFile) {
  std::ofstream(folder_ / "plain.txt") << "x";
  auto file = TemporaryFile::Create(folder_ / "a.txt");
  ASSERT_TRUE(file && file->Commit());
  EXPECT_EQ(fs::status(folder_ / "a.txt").permissions(),
            fs::status(folder_ / "plain.txt").permissions());
}

// So that even a program that is killed leaves nothing.
TEST_F(TemporaryFiles, WhileItIsWrittenTheFolderHoldsNothing) {
  auto file = TemporaryFile::Create(folder_ / "a.txt");
  ASSERT_TRUE(file);
  std::ofstream(file->Path()) << "half";
  if (file->Path().parent_path() == folder_) {
    GTEST_SKIP() << "this file system has no files without a name";
  }
  EXPECT_EQ(FilesInFolder(), 0);
}

TEST_F(TemporaryFiles, ALinkStaysAndWhatItLeadsToIsReplaced) {
  fs::create_directory(folder_ / "far");
  std::ofstream(folder_ / "far" / "a.txt") << "former";
  fs::create_symlink("far/a.txt", folder_ / "near");
  fs::create_symlink(folder_ / "near", folder_ / "link");
  auto file = TemporaryFile::Create(folder_ / "link");
  ASSERT_TRUE(file);
  std::ofstream(file->Path()) << "new";
  ASSERT_TRUE(file->Commit());
  EXPECT_TRUE(fs::is_symlink(folder_ / "link") && fs::is_symlink(folder_ / "near"));
  EXPECT_EQ(TextOf(folder_ / "far" / "a.txt"), "new");
}

TEST_F(TemporaryFiles, ALinkThatLeadsNowhereGetsItsFile) {
  fs::create_symlink("a.txt", folder_ / "link");
  auto file = TemporaryFile::Create(folder_ / "link");
  ASSERT_TRUE(file && file->Commit());
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_TRUE(fs::is_regular_file(folder_ / "a.txt"));
}

TEST_F(TemporaryFiles, LinksInACircleAreAnError) {
  fs::create_symlink("b", folder_ / "a");
  fs::create_symlink("a", folder_ / "b");
  auto file = TemporaryFile::Create(folder_ / "a");
  EXPECT_TRUE(!file || !file->Commit());
}

TEST_F(TemporaryFiles, ANameAsLongAsTheSystemAllowsCanBeWritten) {
  const fs::path target = folder_ / std::string(255, 'n');
  auto file = TemporaryFile::Create(target);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->Commit());
  EXPECT_TRUE(fs::exists(target));
}

TEST_F(TemporaryFiles, AFolderThatIsMissingOrNoneIsAnErrorThatNamesTheTarget) {
  std::ofstream(folder_ / "file") << "x";
  for (const fs::path& target : {folder_ / "missing" / "a.txt", folder_ / "file" / "a.txt"}) {
    const auto file = TemporaryFile::Create(target);
    ASSERT_FALSE(file);
    EXPECT_TRUE(file.error().starts_with(target.string() + ": cannot be written: "))
        << file.error();
  }
}

TEST_F(TemporaryFiles, AFolderIsNoTarget) {
  EXPECT_EQ(TemporaryFile::Create(folder_).error(),
            folder_.string() + ": cannot be written: it is a folder");
}

}  // namespace
}  // namespace sorvanix::host
