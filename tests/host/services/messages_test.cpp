#include "host/services/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <stdexcept>

#include "host/services/strings.h"
#include "tests/host/services/collecting_sink.h"

namespace sorvanix::host {
namespace {

class MessagesTest : public ::testing::Test {
 protected:
  MessagesTest() { InstallMessages(table); }
  ~MessagesTest() override { SetMessageSink(nullptr); }

  GeneralTable table = {};
  Text text{"Couldn't Allocate 2D Noise Globals"};
};

TEST_F(MessagesTest, ASinkGetsTextAndFlags) {
  CollectingSink sink;
  SetMessageSink(&sink);
  table.messageDialog(text.Handle(), MessageDialogFlags);
  EXPECT_THAT(sink.texts, ::testing::ElementsAre("Couldn't Allocate 2D Noise Globals"));
  EXPECT_EQ(sink.lastFlags, 48);
}

TEST_F(MessagesTest, WithoutASinkAMessageIsALineOfStandardError) {
  ::testing::internal::CaptureStderr();
  table.messageDialog(text.Handle(), MessageDialogFlags);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Couldn't Allocate 2D Noise Globals\n");
}

TEST_F(MessagesTest, NullIsNoMessage) {
  CollectingSink sink;
  SetMessageSink(&sink);
  table.messageDialog(nullptr, MessageDialogFlags);
  EXPECT_TRUE(sink.texts.empty());
}

TEST_F(MessagesTest, SettingASinkAnswersTheFormerOne) {
  CollectingSink first, second;
  EXPECT_EQ(SetMessageSink(&first), nullptr);
  EXPECT_EQ(SetMessageSink(&second), &first);
}

TEST_F(MessagesTest, ASinkThatThrowsDoesNotReachTheModule) {
  struct Throwing : MessageSink {
    void Show(std::string_view, std::int32_t) override { throw std::runtime_error("full"); }
  } sink;
  SetMessageSink(&sink);
  table.messageDialog(text.Handle(), MessageDialogFlags);
}

}  // namespace
}  // namespace sorvanix::host
