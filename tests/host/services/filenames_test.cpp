#include "host/services/filenames.h"

#include <gtest/gtest.h>

#include <fstream>

#include "host/services/strings.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

class FilenamesTest : public ::testing::Test {
 protected:
  FilenamesTest() {
    InstallFilenames(table);
    InstallFileQueries(general);
  }

  HostFilename* Make(std::string_view path) {
    HostString* text = NewText(path);
    HostFilename* filename = table.fromString(text);
    Free(text);
    return filename;
  }
  // What a new filename holds; frees it.
  std::string Taken(HostFilename* filename) {
    std::string path = Utf8FromPath(PathOf(filename));
    table.free(filename);
    return path;
  }
  std::string DirectoryOf(std::string_view path) {
    HostFilename* filename = Make(path);
    std::string directory = Taken(table.directory(filename));
    table.free(filename);
    return directory;
  }
  std::string Appended(std::string_view path, std::string_view component) {
    HostFilename* filename = Make(path);
    HostString* text = NewText(component);
    std::string whole = Taken(table.append(filename, text));
    Free(text);
    table.free(filename);
    return whole;
  }
  bool Exists(std::string_view path) {
    HostFilename* filename = Make(path);
    const bool exists = general.fileExists(filename) != 0;
    table.free(filename);
    return exists;
  }

  LeakCheck leaks;
  FilenameTable table = {};
  GeneralTable general = {};

 private:
  static void Free(HostString* text) {
    StringTable strings = {};
    InstallStrings(strings);
    strings.free(text);
  }
};

TEST_F(FilenamesTest, AFilenameKeepsItsPath) {
  EXPECT_EQ(Taken(Make("/a folder/Gr\xC3\xBC\xC3\x9F"
                       "e.so")),
            "/a folder/Gr\xC3\xBC\xC3\x9F"
            "e.so");
}

TEST_F(FilenamesTest, AnEmptyTextGivesTheSharedEmptyFilename) {
  EXPECT_EQ(Make(""), table.empty);
  EXPECT_EQ(table.fromString(nullptr), table.empty);
}

// The system would end the path at the zero and open "/etc".
TEST_F(FilenamesTest, ATextWithAZeroInsideIsNoPath) {
  EXPECT_EQ(Make(std::string_view("/etc\0/x", 7)), table.empty);
}

TEST_F(FilenamesTest, TheDirectoryIsTheFolderPart) {
  EXPECT_EQ(DirectoryOf("/plugins/sorvaNIX/sorvaNIX.so"), "/plugins/sorvaNIX");
  EXPECT_EQ(DirectoryOf("folder/file"), "folder");
  EXPECT_EQ(DirectoryOf("file"), "");
  EXPECT_EQ(DirectoryOf("\xC3\xA4/file"), "\xC3\xA4");
}

TEST_F(FilenamesTest, ADirectoryThatIsNotThereIsTheSharedEmptyFilename) {
  HostFilename* file = Make("file");
  EXPECT_EQ(table.directory(file), table.empty);
  table.free(file);
}

TEST_F(FilenamesTest, AppendingAddsOneComponent) {
  EXPECT_EQ(Appended("/plugins", "Resources"), "/plugins/Resources");
  EXPECT_EQ(Appended("/plugins/", "Resources"), "/plugins/Resources");
  EXPECT_EQ(Appended("", "Resources"), "Resources");
}

TEST_F(FilenamesTest, AppendingNeverLeavesTheFolderForAnotherRoot) {
  EXPECT_EQ(Appended("/plugins", "/etc"), "/plugins/etc");
}

TEST_F(FilenamesTest, AFileExistsOrDoesNot) {
  const TemporaryFolder folder;
  const std::string file = Utf8FromPath(folder.Path() / u8"Gr\u00FC\u00DFe aus M\u00FCnchen.txt");
  EXPECT_FALSE(Exists(file));
  std::ofstream(file) << "x";
  EXPECT_TRUE(Exists(file));
  EXPECT_FALSE(general.fileExists(nullptr));
  EXPECT_FALSE(general.fileExists(table.empty));
}

TEST_F(FilenamesTest, ANameTooLongForTheSystemDoesNotExist) {
  EXPECT_FALSE(Exists("/" + std::string(100'000, 'x')));
}

TEST_F(FilenamesTest, NullIsAnsweredWithTheSharedEmptyFilename) {
  EXPECT_EQ(table.copy(nullptr), table.empty);
  EXPECT_EQ(table.directory(nullptr), table.empty);
  EXPECT_EQ(table.append(nullptr, nullptr), table.empty);
  table.free(nullptr);
  table.free(table.empty);
  EXPECT_EQ(PathOf(table.empty), std::filesystem::path());
}

TEST_F(FilenamesTest, ACreationThatFailsAnswersTheSharedEmptyFilename) {
  HostFilename* filename = Make("/plugins/sorvaNIX.so");
  HostString* component = NewText("x");
  const auto failing = [&](auto create) {
    const AllocationFailure failure(1);
    EXPECT_EQ(create(), table.empty);
  };
  failing([&] { return table.create(); });
  failing([&] { return table.fromString(component); });
  failing([&] { return table.copy(filename); });
  failing([&] { return table.directory(filename); });
  failing([&] { return table.append(filename, component); });
  table.free(filename);
  delete Text::From(component);
}

}  // namespace
}  // namespace sorvanix::host
