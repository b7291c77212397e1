// The module's entry: attach, start, detach and query, against a host that records every call.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

using Strings = std::vector<std::string>;

// Every id that was ever shipped, in the order of registration, with the id of its name's text.
// Append-only: an id, its place and its text are never changed.
struct ShippedRow {
  std::int32_t pluginId;
  std::int32_t nameTextId;  // 0: the name is the literal "sorvaNIX Buffy"
};
constexpr ShippedRow kShipped[] = {
    {1000075, 10002}, {1004202, 0},     {1000104, 10003}, {1000123, 10004}, {1000125, 10005},
    {1001203, 10006}, {1001214, 10007}, {1001216, 10008}, {1001224, 10009}, {1001231, 10010},
    {1001232, 10011}, {1001235, 10013}, {1001238, 10012}, {1001258, 10014}, {1001266, 10015},
    {1001271, 10016}, {1001277, 10017}};

// Those that this build registers, in order; a shader joins the list when it is written.
constexpr std::int32_t kRegistered[] = {1000075, 1004202, 1000125, 1001203, 1001214,
                                        1001216, 1001231, 1001232, 1001235, 1001238,
                                        1001258, 1001266, 1001271, 1001277};

bool IsRegistered(std::int32_t pluginId) {
  return std::find(std::begin(kRegistered), std::end(kRegistered), pluginId) !=
         std::end(kRegistered);
}

int CountPrefix(const Strings& calls, const std::string& prefix) {
  return static_cast<int>(std::count_if(
      calls.begin(), calls.end(), [&](const std::string& c) { return c.rfind(prefix, 0) == 0; }));
}

TEST(Entry, QueryAnswersTwoAtAnyTime) {
  LoadedModule module;
  EXPECT_EQ(module.Call(ActionQuery), 2);
}

TEST(Entry, UnknownActionsAnswerMinusOneAndChangeNothing) {
  FakeHost host;
  LoadedModule module;
  for (const std::int32_t action : {0, 5, 6, -1, -3, 1000000, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(module.Call(action), -1) << action;
  }
  EXPECT_TRUE(host.calls.empty());
  EXPECT_EQ(module.Attach(host), 1) << "the first attach is still the first";
}

TEST(Attach, RefusesVersionsBelow7000) {
  FakeHost host(6999);
  LoadedModule module;
  EXPECT_EQ(module.Attach(host), -3);
}

TEST(Attach, RefusesAMissingPath) {
  FakeHost host;
  LoadedModule module;
  EXPECT_EQ(module.Attach(host, nullptr), -3);
}

TEST(Attach, RefusesMissingTables) {
  LoadedModule module;
  EXPECT_EQ(module.Call(ActionAttach, nullptr, "/plugins/sorvaNIX.so"), -3);
}

TEST(Attach, OnlyTheFirstLooksAtItsArguments) {
  FakeHost host;
  LoadedModule module;
  EXPECT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Call(ActionAttach, nullptr, nullptr), 1);
}

// The count is not rolled back by a refusal: deliberate.
TEST(Attach, AfterARefusalTheSecondIsTakenForANestedOne) {
  FakeHost host(6999);
  LoadedModule module;
  EXPECT_EQ(module.Attach(host), -3);
  EXPECT_EQ(module.Attach(host), 1);
}

TEST(Attach, ARefusedPathLeavesStartWithoutResources) {
  FakeHost host;
  LoadedModule module;
  EXPECT_EQ(module.Attach(host, nullptr), -3);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(host.registrations.empty());
}

TEST(Attach, APathLongerThanTheBufferIsCutNotOverrun) {
  FakeHost host;
  LoadedModule module;
  const std::string path = "/" + std::string(5000, 'a') + "/sorvaNIX.so";
  EXPECT_EQ(module.Attach(host, path.c_str()), 1);
  module.Start();
  EXPECT_EQ(host.calls.front(), "string(\"" + path.substr(0, 1023) + "\", -1)");
}

TEST(Start, OpensResourcesRegistersInOrderThenBuildsTheNoiseState) {
  FakeHost host;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);

  Strings expected = {"string(\"/plugins/sorvaNIX.so\", -1)",
                      "filename(\"/plugins/sorvaNIX.so\")",
                      "directory(\"/plugins/sorvaNIX.so\")",
                      "alloc(" + std::to_string(sizeof(void*)) + ")",  // the folder's holder
                      "copyFilename(\"/plugins\")",
                      "openResources(\"/plugins\")"};
  for (const ShippedRow& row : kShipped) {
    if (!IsRegistered(row.pluginId)) continue;
    expected.push_back(row.nameTextId == 0
                           ? "string(\"sorvaNIX Buffy\", -1)"
                           : "loadString(" + std::to_string(row.nameTextId) + ", 1)");
    expected.push_back("registerPlugin(" + std::to_string(row.pluginId) + ")");
  }
  expected.push_back("alloc(88)");
  expected.push_back("fractalInit(block, 21, 2.100000, 0.500000)");
  EXPECT_EQ(host.calls, expected);
}

TEST(Start, RegistersTheseShadersInThisOrder) {
  StartedModule started;
  std::vector<std::int32_t> ids;
  for (const Registration& r : started.host.registrations) ids.push_back(r.id);
  EXPECT_EQ(ids, std::vector<std::int32_t>(std::begin(kRegistered), std::end(kRegistered)));
}

TEST(Start, GivesEachShaderTheNameOfItsText) {
  StartedModule started;
  Strings expected, names;
  for (const ShippedRow& row : kShipped) {
    if (!IsRegistered(row.pluginId)) continue;
    expected.push_back(row.nameTextId == 0 ? "sorvaNIX Buffy"
                                           : "text " + std::to_string(row.nameTextId));
  }
  for (const Registration& r : started.host.registrations) names.push_back(r.name);
  EXPECT_EQ(names, expected);
}

// The step is the float nearest to 2.1: 2 * 1.05 = 2 * (1 + 0x066666 / 2^23), so exponent 0x80 and
// 0x40066666. 0.5 is 1 * 2^-1: 0x3F000000.
TEST(Start, HandsTheFractalTheExactFloats) {
  static float step, exponent;
  step = exponent = 0;
  FakeHost host;
  host.render.fractalInit = [](void*, std::int32_t, float s, float e) noexcept {
    step = s;
    exponent = e;
    return 1;
  };
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(step), 0x40066666u);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(exponent), 0x3F000000u);
}

TEST(Start, RegistersEachShaderWithApi7200Type2AndTheRecordsSize) {
  StartedModule started;
  for (const Registration& r : started.host.registrations) {
    EXPECT_EQ(r.api, 7200);
    EXPECT_EQ(r.type, 2);
    EXPECT_EQ(r.size, static_cast<std::int32_t>(15 * sizeof(void*)));
    EXPECT_EQ(r.record.reserved0, 0);
    EXPECT_EQ(r.record.reserved52, 0);
    EXPECT_EQ(r.record.reserved56, 0);
    EXPECT_NE(r.record.Output, nullptr);
  }
}

TEST(Start, NamesComeFromTheTexts) {
  FakeHost host;
  host.texts[10010] = "a name from the resources";
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);
  const auto noise = std::find_if(host.registrations.begin(), host.registrations.end(),
                                  [](const Registration& r) { return r.id == PluginIdNoise2D; });
  ASSERT_NE(noise, host.registrations.end());
  EXPECT_EQ(noise->name, "a name from the resources");
}

TEST(Start, RefusesHostsBelow7201WithAMessageAndRegistersNothing) {
  for (const Word version : {7000, 7200}) {
    FakeHost host(version);
    LoadedModule module;
    ASSERT_EQ(module.Attach(host), 1) << version;
    EXPECT_EQ(module.Start(), 0);
    EXPECT_EQ(host.messages, Strings{"sorvaNIX requires Cinema4D 7.201 or higher."});
    EXPECT_EQ(host.calls.back(),
              "messageDialog(\"sorvaNIX requires Cinema4D 7.201 or higher.\", 48)");
    EXPECT_TRUE(host.registrations.empty());
    EXPECT_EQ(host.liveTexts(), 1) << "only the folder's filename is kept";
  }
}

TEST(Start, PassesAtExactly7201) {
  FakeHost host(7201);
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Start(), 1);
}

TEST(Start, WithoutResourcesIsSilentAndRegistersNothing) {
  FakeHost host;
  host.failResources = true;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(host.registrations.empty());
}

TEST(Start, TriesToOpenTheResourcesOnlyOnce) {
  FakeHost host;
  host.failResources = true;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Start(), 0);
  host.failResources = false;
  EXPECT_EQ(module.Start(), 0) << "the first result is remembered";
  EXPECT_EQ(CountPrefix(host.calls, "openResources"), 1);
}

TEST(Start, WithoutAFolderInThePathOpensNothing) {
  FakeHost host;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host, "sorvaNIX.so"), 1);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_EQ(CountPrefix(host.calls, "openResources"), 0);
}

// The open counts as tried even where there was no folder to open.
TEST(Start, RemembersAMissingFolderBeyondALaterAttach) {
  FakeHost host;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host, "sorvaNIX.so"), 1);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_EQ(module.Detach(), 1);
  ASSERT_EQ(module.Attach(host, "/plugins/sorvaNIX.so"), 1);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_EQ(CountPrefix(host.calls, "openResources"), 0);
  EXPECT_TRUE(host.registrations.empty());
}

TEST(Start, WithoutMemoryForTheFolderOpensNothing) {
  FakeHost host;
  host.failAllocation = 1;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_EQ(CountPrefix(host.calls, "openResources"), 0);
}

TEST(Start, AFailedRegistrationEndsItAtOnce) {
  std::size_t shaders = 0;
  {
    StartedModule all;
    shaders = all.host.registrations.size();
  }
  for (std::size_t k = 1; k <= shaders; ++k) {
    FakeHost host;
    host.refuseRegistration = static_cast<int>(k);
    LoadedModule module;
    ASSERT_EQ(module.Attach(host), 1);
    EXPECT_EQ(module.Start(), 0);
    EXPECT_EQ(host.registrations.size(), k) << "the later ones are not tried";
    EXPECT_EQ(CountPrefix(host.calls, "alloc(88)"), 0) << "no noise state";
    EXPECT_EQ(CountPrefix(host.calls, "fractalInit"), 0);
    EXPECT_TRUE(host.messages.empty());
  }
}

TEST(Start, DoesNotCheckTheWeightsAllocation) {
  FakeHost host;
  host.failAllocation = 2;  // the first is the folder's holder
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Start(), 1);
  EXPECT_EQ(host.calls.back(), "fractalInit(null, 21, 2.100000, 0.500000)");
}

TEST(Start, ASecondStartRegistersAgainAndReplacesTheWeights) {
  StartedModule started;
  const std::size_t shaders = started.host.registrations.size();
  const int blocks = started.host.liveBlocks();
  EXPECT_EQ(started.module.Start(), 1);
  EXPECT_EQ(started.host.registrations.size(), 2 * shaders);
  EXPECT_EQ(started.host.liveBlocks(), blocks) << "the former weights were freed";
}

TEST(Start, SurvivesAHostWithoutTables) {
  FakeHost host;
  HostApi bare = {};
  bare.version = 7300;
  LoadedModule module;
  ASSERT_EQ(module.Call(ActionAttach, &bare, "/plugins/sorvaNIX.so"), 1);
  EXPECT_EQ(module.Start(), 0);
  EXPECT_EQ(module.Detach(), 1);
}

TEST(Detach, TheLastOneFreesTheWeights) {
  FakeHost host;
  LoadedModule module;
  for (int i = 0; i < 3; ++i) ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);
  const int blocks = host.liveBlocks();
  EXPECT_EQ(module.Detach(), 1);
  EXPECT_EQ(module.Detach(), 1);
  EXPECT_EQ(host.liveBlocks(), blocks) << "weights still in place";
  EXPECT_EQ(module.Detach(), 1);
  EXPECT_EQ(host.liveBlocks(), blocks - 1);
}

TEST(Detach, WithoutStartOnlyCounts) {
  FakeHost host;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  EXPECT_EQ(module.Detach(), 1);
  EXPECT_TRUE(host.calls.empty());
}

TEST(Detach, BeforeAnyAttachLeavesTheCountAtMinusOne) {
  FakeHost host;
  LoadedModule module;
  EXPECT_EQ(module.Detach(), 1);
  EXPECT_EQ(module.Call(ActionAttach, nullptr, nullptr), 1) << "count 0: taken for a nested attach";
}

TEST(Unload, ClosesTheResourcesAndLeavesNothingBehind) {
  FakeHost host;
  {
    LoadedModule module;
    ASSERT_EQ(module.Attach(host), 1);
    ASSERT_EQ(module.Start(), 1);
    ASSERT_EQ(module.Detach(), 1);
    EXPECT_EQ(CountPrefix(host.calls, "closeResources"), 0) << "open until unloaded";
  }
  EXPECT_EQ(CountPrefix(host.calls, "closeResources"), 1);
  EXPECT_EQ(host.liveBlocks(), 0);
  EXPECT_EQ(host.liveTexts(), 0);
}

}  // namespace
}  // namespace sorvanix::test
