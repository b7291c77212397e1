#include "host/services/resources.h"

#include <gtest/gtest.h>

#include "host/services/filenames.h"
#include "host/services/strings.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

class ResourcesTest : public ::testing::Test {
 protected:
  ResourcesTest() { InstallResources(table); }

  HostResources* Open(const std::filesystem::path& directory) {
    return table.open(Filename(Utf8FromPath(directory)).Handle());
  }
  std::string Load(HostResources* resources, std::int32_t id) {
    HostString* text = table.loadString(resources, id, 1);
    std::string content(TextOf(text));
    if (text != EmptyText()) delete Text::From(text);
    return content;
  }
  // Whether a strings.json with this content opens.
  bool Opens(std::string_view content) {
    const TemporaryFolder folder;
    folder.Write("Resources/strings.json", content);
    HostResources* resources = Open(folder.Path());
    table.close(resources);
    return resources != nullptr;
  }

  LeakCheck leaks;
  ResourceTable table = {};
};

TEST_F(ResourcesTest, TextsAreFoundUnderTheirNumbers) {
  const TemporaryFolder folder;
  folder.Write("Resources/strings.json", R"({ "10001": "sorvaNIX", "-5": "Gr\u00fc\u00dfe" })");
  HostResources* resources = Open(folder.Path());
  ASSERT_NE(resources, nullptr);
  EXPECT_EQ(Load(resources, 10001), "sorvaNIX");
  EXPECT_EQ(Load(resources, -5),
            "Gr\xC3\xBC\xC3\x9F"
            "e");
  EXPECT_EQ(Resources::From(resources)->Folder(), folder.Path() / "Resources");
  table.close(resources);
}

TEST_F(ResourcesTest, AnUnknownNumberIsTheSharedEmptyText) {
  const TemporaryFolder folder;
  folder.Write("Resources/strings.json", "{}");
  HostResources* resources = Open(folder.Path());
  ASSERT_NE(resources, nullptr);
  EXPECT_EQ(table.loadString(resources, 10001, 1), EmptyText());
  table.close(resources);
}

TEST_F(ResourcesTest, AFolderWithoutResourcesIsNull) {
  const TemporaryFolder folder;
  EXPECT_EQ(Open(folder.Path()), nullptr);
  EXPECT_EQ(Open(folder.Path() / "not there"), nullptr);
  EXPECT_EQ(Open(""), nullptr);
  std::filesystem::create_directories(folder.Path() / "Resources" / "strings.json");
  EXPECT_EQ(Open(folder.Path()), nullptr);
}

TEST_F(ResourcesTest, AMalformedFileIsNull) {
  EXPECT_TRUE(Opens(R"({"1": "a"})"));
  EXPECT_FALSE(Opens(""));
  EXPECT_FALSE(Opens(R"({"1": "a")"));
  EXPECT_FALSE(Opens(R"(["a"])"));
  EXPECT_FALSE(Opens(R"({"1": 5})"));
  EXPECT_FALSE(Opens(R"({"one": "a"})"));
  EXPECT_FALSE(Opens(R"({"1 ": "a"})"));
  EXPECT_FALSE(Opens(R"({"": "a"})"));
  EXPECT_FALSE(Opens(R"({"99999999999": "a"})"));
  EXPECT_FALSE(Opens(R"({"1": "a", "1": "b"})"));
}

TEST_F(ResourcesTest, NullIsAnsweredNeutrally) {
  EXPECT_EQ(table.open(nullptr), nullptr);
  EXPECT_EQ(table.loadString(nullptr, 10001, 1), EmptyText());
  table.close(nullptr);
}

TEST_F(ResourcesTest, AShortMemoryOpensNothingAndLoadsTheSharedEmptyText) {
  const TemporaryFolder folder;
  folder.Write("Resources/strings.json", R"({"1": "a"})");
  HostResources* resources = Open(folder.Path());
  {
    const AllocationFailure failure(1);
    EXPECT_EQ(Open(folder.Path()), nullptr);
  }
  const AllocationFailure failure(1);
  EXPECT_EQ(table.loadString(resources, 1, 1), EmptyText());
  table.close(resources);
}

}  // namespace
}  // namespace sorvanix::host
