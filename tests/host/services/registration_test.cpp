#include "host/services/registration.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "host/services/strings.h"

namespace sorvanix::host {
namespace {

std::int32_t AllocNothing(ShaderInstance*) noexcept { return 1; }
std::uint32_t InfoOne() noexcept { return 1; }
std::uint32_t InfoTwo() noexcept { return 2; }

constexpr auto kRecordSize = static_cast<std::int32_t>(sizeof(ShaderRecord));

class RegistrationTest : public ::testing::Test {
 protected:
  RegistrationTest() {
    InstallRegistration(table);
    record.GetInfo = InfoOne;
  }

  // A registration that succeeds, unless the test changes one of its arguments.
  std::int32_t Register(std::int32_t id) {
    return table.registerPlugin(api, type, id, name, offered, size);
  }

  GeneralTable table = {};
  ShaderRegistry registry;
  Text text{"sorvaNIX Hue"};
  ShaderRecord record = {};

  std::int32_t api = PluginApiVersion, type = PluginTypeShader, size = kRecordSize;
  const HostString* name = text.Handle();
  const ShaderRecord* offered = &record;
};

TEST_F(RegistrationTest, ARecordIsCopied) {
  const RegistrationScope scope(registry, 7300);
  EXPECT_NE(Register(5), 0);
  record.GetInfo = InfoTwo;
  text.text = "changed";
  ASSERT_NE(registry.Find(5), nullptr);
  EXPECT_EQ(registry.Find(5)->record.GetInfo(), 1u);
  EXPECT_EQ(registry.Find(5)->name, "sorvaNIX Hue");
  EXPECT_EQ(registry.Find(5)->id, 5);
}

TEST_F(RegistrationTest, TheOrderIsKept) {
  const RegistrationScope scope(registry, 7300);
  for (const std::int32_t id : {7, 3, 5}) Register(id);
  std::vector<std::int32_t> ids;
  for (const auto& shader : registry.All()) ids.push_back(shader->id);
  EXPECT_EQ(ids, (std::vector<std::int32_t>{7, 3, 5}));
  EXPECT_EQ(registry.Find(4), nullptr);
}

TEST_F(RegistrationTest, RegisteringAgainReplacesAtTheSameAddress) {
  const RegistrationScope scope(registry, 7300);
  Register(5);
  const RegisteredShader* former = registry.Find(5);
  record.GetInfo = InfoTwo;
  EXPECT_NE(Register(5), 0);
  EXPECT_EQ(registry.All().size(), 1u);
  EXPECT_EQ(registry.Find(5), former);
  EXPECT_EQ(former->record.GetInfo(), 2u);
}

TEST_F(RegistrationTest, WithoutAScopeNothingIsRegistered) {
  EXPECT_EQ(Register(5), 0);
  { const RegistrationScope scope(registry, 7300); }
  EXPECT_EQ(Register(5), 0);
  EXPECT_TRUE(registry.All().empty());
}

TEST_F(RegistrationTest, AShaderForANewerApiIsRefused) {
  const RegistrationScope scope(registry, 7199);
  EXPECT_EQ(Register(5), 0);
  api = 7199;
  EXPECT_NE(Register(5), 0);
}

TEST_F(RegistrationTest, WhatIsNoShaderIsRefused) {
  const RegistrationScope scope(registry, 7300);
  type = 3;
  EXPECT_EQ(Register(5), 0);
}

TEST_F(RegistrationTest, WithoutNameRecordOrSizeItIsRefused) {
  const RegistrationScope scope(registry, 7300);
  name = nullptr;
  EXPECT_EQ(Register(5), 0);
  name = text.Handle();
  offered = nullptr;
  EXPECT_EQ(Register(5), 0);
  offered = &record;
  for (const std::int32_t wrong : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    size = wrong;
    EXPECT_EQ(Register(5), 0);
  }
  EXPECT_TRUE(registry.All().empty());
}

TEST_F(RegistrationTest, WhatAShortRecordDoesNotSayStaysNull) {
  const RegistrationScope scope(registry, 7300);
  record.Alloc = AllocNothing;
  size = static_cast<std::int32_t>(offsetof(ShaderRecord, Free));
  EXPECT_NE(Register(5), 0);
  EXPECT_EQ(registry.Find(5)->record.Alloc, AllocNothing);
  EXPECT_EQ(registry.Find(5)->record.GetInfo, nullptr);
}

// A later contract may add callbacks behind the ones that this host knows.
TEST_F(RegistrationTest, OfALongRecordTheRestIsLeftOut) {
  const RegistrationScope scope(registry, 7300);
  struct {
    ShaderRecord known;
    Word more[4];
  } longRecord = {record, {1, 2, 3, 4}};
  offered = &longRecord.known;
  size = static_cast<std::int32_t>(sizeof longRecord);
  EXPECT_NE(Register(5), 0);
  EXPECT_EQ(registry.Find(5)->record.GetInfo(), 1u);
}

TEST_F(RegistrationTest, TheFormWithoutASizeTakesAWholeRecord) {
  const RegistrationScope scope(registry, 7300);
  EXPECT_NE(table.registerPluginUnsized(api, type, 5, name, offered), 0);
  EXPECT_EQ(registry.Find(5)->record.GetInfo(), 1u);
  EXPECT_EQ(table.registerPluginUnsized(api, type, 6, nullptr, offered), 0);
}

}  // namespace
}  // namespace sorvanix::host
