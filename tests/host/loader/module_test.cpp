#include "host/loader/module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/loader/test_module/test_module.h"
#include "tests/host/services/collecting_sink.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::filesystem::path TestModule(const std::string& name) {
  return std::filesystem::path(TEST_MODULE_FOLDER) / (name + ".so");
}

class ModuleTest : public ::testing::Test {
 protected:
  std::string ErrorOf(const std::filesystem::path& path) {
    const auto module = Module::Load(host, path);
    return module ? "no error" : module.error();
  }

  LeakCheck leaks;
  CollectingSink sink;
  Host host{{.messages = &sink}};
};

TEST_F(ModuleTest, AModuleIsAttachedStartedDetachedAndUnloaded) {
  {
    const auto module = Module::Load(host, TestModule("working"));
    ASSERT_TRUE(module.has_value()) << module.error();
    EXPECT_THAT(sink.texts, ElementsAre("attached", "started"));
  }
  EXPECT_THAT(sink.texts, ElementsAre("attached", "started", "detached", "unloaded"));
}

TEST_F(ModuleTest, ItsShadersAreThereInTheOrderOfTheirRegistration) {
  const auto module = Module::Load(host, TestModule("working"));
  std::vector<std::int32_t> ids;
  for (const auto& shader : module->Shaders().All()) ids.push_back(shader->id);
  EXPECT_THAT(ids, ElementsAre(test::kLifeShaderId, test::kBareShaderId, test::kEmptyShaderId));
  EXPECT_NE(module->Shaders().Find(test::kLifeShaderId)->record.Alloc, nullptr);
  EXPECT_EQ(module->Shaders().Find(test::kBareShaderId)->record.Alloc, nullptr);
}

TEST_F(ModuleTest, AMovedModuleIsDetachedOnce) {
  {
    auto loaded = Module::Load(host, TestModule("working"));
    const Module module = *std::move(loaded);
    EXPECT_EQ(module.Shaders().All().size(), 3u);
  }
  EXPECT_THAT(sink.texts, ElementsAre("attached", "started", "detached", "unloaded"));
}

TEST_F(ModuleTest, ARelativePathReachesTheModuleAsAnAbsoluteOne) {
  const auto relative = std::filesystem::relative(TestModule("working"));
  ASSERT_TRUE(relative.is_relative());
  const auto module = Module::Load(host, relative);
  ASSERT_TRUE(module.has_value()) << module.error();
  EXPECT_TRUE(module->Path().is_absolute());
}

// The module finds the texts beside itself only when its path arrives unharmed.
TEST_F(ModuleTest, APathMayHoldSpacesAndLettersOfAnyLanguage) {
  const TemporaryFolder folder;
  const std::filesystem::path home = u8"meine Plug-ins/Gr\u00FC\u00DFe \u6761\u7EB9";
  folder.Write(home / "Resources/strings.json", R"({ "2000001": "Life", "2000002": "Bare" })");
  const auto file = folder.Path() / home / u8"M\u00F6dul 1.so";
  std::filesystem::copy_file(TestModule("working"), file);

  const auto module = Module::Load(host, file);
  ASSERT_TRUE(module.has_value()) << module.error();
  EXPECT_EQ(module->Shaders().Find(test::kLifeShaderId)->name, "Life");
  EXPECT_EQ(module->Shaders().Find(test::kBareShaderId)->name, "Bare");
  EXPECT_EQ(module->Shaders().Find(test::kEmptyShaderId)->name, "");
}

TEST_F(ModuleTest, AMissingFileIsAnError) {
  EXPECT_EQ(ErrorOf("/not there/module.so"), "/not there/module.so: no such file");
}

TEST_F(ModuleTest, AFolderIsAnError) {
  const TemporaryFolder folder;
  EXPECT_EQ(ErrorOf(folder.Path()), folder.Path().string() + ": not a file");
}

TEST_F(ModuleTest, AFileThatIsNoLibraryIsAnErrorOfOneLine) {
  const TemporaryFolder folder;
  const auto file = folder.Write("text.so", "this is no library");
  const std::string error = ErrorOf(file);
  EXPECT_THAT(error, HasSubstr(file.string() + ": not a module: "));
  EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST_F(ModuleTest, ALibraryWithoutTheEntryIsAnError) {
  const auto file = TestModule("without_entry");
  EXPECT_EQ(ErrorOf(file), file.string() + ": not a module: no entry c4d_main");
  EXPECT_THAT(sink.texts, IsEmpty());
}

TEST_F(ModuleTest, ARefusalToAttachIsAnErrorAndIsNotDetached) {
  const auto file = TestModule("refusing");
  EXPECT_EQ(ErrorOf(file),
            file.string() + ": refused to attach to a host of version 7300 (answer -3)");
  EXPECT_THAT(sink.texts, IsEmpty());
}

TEST_F(ModuleTest, AFailedStartIsAnErrorAndIsDetached) {
  const auto file = TestModule("failing");
  EXPECT_EQ(ErrorOf(file), file.string() + ": did not start (answer 0)");
  EXPECT_THAT(sink.texts, ElementsAre("attached", "started", "detached", "unloaded"));
}

TEST(ModuleAtAnOldHost, ARefusedRegistrationIsAFailedStart) {
  const LeakCheck leaks;
  CollectingSink sink;
  Host host({.version = 7199, .messages = &sink});  // older than the API of the shaders
  const auto module = Module::Load(host, TestModule("working"));
  ASSERT_FALSE(module.has_value());
  EXPECT_THAT(module.error(), HasSubstr("did not start"));
  EXPECT_THAT(sink.texts, ElementsAre("attached", "registration refused", "detached", "unloaded"));
}

TEST_F(ModuleTest, AnUnknownShaderIsAnError) {
  const auto module = Module::Load(host, TestModule("working"));
  const auto shader = module->Create(5, ChannelColour);
  ASSERT_FALSE(shader.has_value());
  EXPECT_EQ(shader.error(), "no shader has the id 5");
}

TEST_F(ModuleTest, AShaderWithoutMemoryIsAnErrorAndNotFreed) {
  const auto module = Module::Load(host, TestModule("working"));
  sink.texts.clear();
  const AllocationFailure failure(1);
  const auto shader = module->Create(test::kLifeShaderId, ChannelColour);
  ASSERT_FALSE(shader.has_value());
  EXPECT_THAT(shader.error(), HasSubstr("no memory for its parameters"));
  EXPECT_THAT(sink.texts, IsEmpty());
}

TEST_F(ModuleTest, EveryAllocationMayFailWhileItLoads) {
  const int allocations = WithEveryAllocationFailing([&] {
    const auto module = Module::Load(host, TestModule("working"));
    if (module) module->Create(test::kLifeShaderId, ChannelColour);
  });
  // Texts of the messages "attached", "started", "detached", "unloaded" and "shader freed"; path,
  // its filename and folder; the parameter block.
  EXPECT_EQ(allocations, 9);
}

TEST_F(ModuleTest, AThousandLivesLeaveNothingBehind) {
  const MemoryStatistics before = host.Memory();
  for (int life = 0; life < 1000; ++life) {
    const auto module = Module::Load(host, TestModule("working"));
    ASSERT_TRUE(module.has_value()) << module.error();
    const auto shader = module->Create(test::kLifeShaderId, ChannelColour);
    ASSERT_TRUE(shader.has_value());
  }
  EXPECT_EQ(host.Memory().liveBlocks, before.liveBlocks);
  EXPECT_EQ(host.Memory().liveBytes, before.liveBytes);
}

}  // namespace
}  // namespace sorvanix::host
