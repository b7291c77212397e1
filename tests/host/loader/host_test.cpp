#include "host/host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "host/services/strings.h"
#include "tests/host/services/collecting_sink.h"

namespace sorvanix::host {
namespace {

TEST(Host, TheBlockTellsTheVersionAndPointsAtTheTables) {
  Host host({.version = 7201});
  EXPECT_EQ(host.Api().version, 7201);
  EXPECT_EQ(host.Version(), 7201);
  EXPECT_EQ(host.Api().general, &host.Tables().general);
  EXPECT_EQ(host.Api().matrix, &host.Tables().matrix);
}

TEST(Host, TheUsualVersionIs7300) {
  const Host host;
  EXPECT_EQ(host.Version(), 7300);
}

// Words 7, 10, 11, 14 and 23 to 35 have no meaning yet.
TEST(Host, WordsWithoutANameAreNullAndAllOthersAreNot) {
  Host host;
  Word words[36];
  static_assert(sizeof words == sizeof(HostApi));
  std::memcpy(words, &host.Api(), sizeof words);
  for (int i = 0; i < 36; ++i) {
    const bool isReserved = i == 7 || i == 10 || i == 11 || i == 14 || i >= 23;
    EXPECT_EQ(words[i] == 0, isReserved) << "word " << i;
  }
}

TEST(Host, ItsOwnServicesAreServed) {
  const Host host;
  const HostTables& tables = host.Tables();
  EXPECT_NE(tables.general.alloc, nullptr);
  EXPECT_NE(tables.general.free, nullptr);
  EXPECT_NE(tables.general.messageDialog, nullptr);
  EXPECT_NE(tables.general.registerPlugin, nullptr);
  EXPECT_NE(tables.general.registerPluginUnsized, nullptr);
  EXPECT_NE(tables.general.fileExists, nullptr);
  EXPECT_NE(tables.stream.readInt, nullptr);
  EXPECT_NE(tables.container.create, nullptr);
  EXPECT_NE(tables.string.empty, nullptr);
  EXPECT_NE(tables.filename.empty, nullptr);
  EXPECT_NE(tables.resources.open, nullptr);
}

float Seven(const Vector*, float) noexcept { return 7; }
float Eight(const Vector*, float) noexcept { return 8; }

TEST(Host, FurtherServicesAreInstalledInTheirOrder) {
  const Host host({.services = {[](HostTables& tables) { tables.render.signedNoise = Seven; },
                                [](HostTables& tables) {
                                  tables.render.unitNoiseAt = tables.render.signedNoise;
                                  tables.render.signedNoise = Eight;
                                }}});
  EXPECT_EQ(host.Tables().render.unitNoiseAt(nullptr, 0), 7.0f);
  EXPECT_EQ(host.Tables().render.signedNoise(nullptr, 0), 8.0f);
}

TEST(Host, MessagesGoToItsSinkWhileItLives) {
  CollectingSink sink;
  Text text("noise");
  {
    const Host host({.messages = &sink});
    host.Tables().general.messageDialog(text.Handle(), 0);
  }
  EXPECT_THAT(sink.texts, ::testing::ElementsAre("noise"));
  EXPECT_EQ(SetMessageSink(nullptr), nullptr);
}

TEST(Host, ItTellsWhatIsStillHeld) {
  const Host host;
  const MemoryStatistics before = host.Memory();
  void* block = host.Tables().general.alloc(100);
  EXPECT_EQ(host.Memory().liveBytes, before.liveBytes + 100);
  host.Tables().general.free(block);
  EXPECT_EQ(host.Memory().liveBytes, before.liveBytes);
}

TEST(Host, AnotherOneMayComeAfterIt) {
  { const Host first; }
  const Host second;
  EXPECT_NE(second.Tables().general.alloc, nullptr);
}

#ifndef NDEBUG
TEST(HostDeathTest, TwoAtATimeAreAnErrorOfTheProgram) {
  const Host first;
  EXPECT_DEATH({ const Host second; }, "one Host at a time");
}
#endif

}  // namespace
}  // namespace sorvanix::host
