#include "host/dialogs/dialog_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "host/dialogs/json_walk.h"

namespace sorvanix::host {
namespace {

using ::testing::HasSubstr;

std::vector<DialogEvent> Read(std::string_view text) {
  return ParseJson(text).and_then(ReadDialogEvents).value();
}

// The only event of a list.
template <class Event>
Event Only(std::string_view text) {
  return std::get<Event>(Read("[" + std::string(text) + "]").at(0).what);
}

std::string ErrorOf(std::string_view text) {
  const auto events = ParseJson(text).and_then(ReadDialogEvents);
  return events ? "no error" : DescribeJsonError("e.json", text, events.error());
}

TEST(DialogScript, ReadsEachKindOfEvent) {
  EXPECT_EQ(Only<SetEvent>(R"({"set": 5, "value": 0.5})").gadget, 5);
  EXPECT_EQ(Only<KeyEvent>(R"({"key": 32769, "qualifier": 4})").qualifier, 4);
  EXPECT_EQ(Only<KeyEvent>(R"({"key": "R"})").code, 'R');
  EXPECT_EQ(Only<ColourEvent>(R"({"colour": "#ffffff"})").colour->x, 1);
  EXPECT_EQ(Only<ColourEvent>(R"({"colour": null})").colour, std::nullopt);
  EXPECT_EQ(Only<TickEvent>(R"({"tick": 3, "area": 7})").count, 3);
  Only<WaitEvent>(R"({"wait": "preview"})");
  EXPECT_EQ(Only<SaveEvent>(R"({"save": "a.png", "area": 7})").file, "a.png");
  EXPECT_EQ(Only<ExpectEvent>(R"({"expect": 5, "enabled": false})").enabled, false);
  EXPECT_EQ(Only<ExpectEvent>(R"({"expect": 5, "value": 1})").enabled, std::nullopt);
  EXPECT_TRUE(Only<CloseEvent>("\"ok\"").confirmed);
  EXPECT_FALSE(Only<CloseEvent>("\"cancel\"").confirmed);
}

TEST(DialogScript, ReadsTheMouse) {
  const auto press =
      Only<MouseEvent>(R"({"mouse": "down", "area": 7, "x": -3, "y": 4, "qualifier": 4})");
  EXPECT_EQ(press.action, MouseAction::Down);
  EXPECT_EQ(press.place->x, -3);
  EXPECT_EQ(press.place->qualifier, 4);
  EXPECT_EQ(
      Only<MouseEvent>(R"({"mouse": "wheel", "area": 7, "x": 0, "y": 0, "delta": -120})").delta,
      -120);
  EXPECT_EQ(Only<MouseEvent>(R"({"mouse": "up", "area": 7})").place, std::nullopt);
}

TEST(DialogScript, EventsKnowTheirPlace) {
  const auto events = Read(R"([ "ok", {"wait": "preview"} ])");
  EXPECT_EQ(events[1].pointer, "/1");
  EXPECT_EQ(events[1].offset, 8u);
}

struct WrongScript {
  const char* text;
  const char* error;
};

class WrongScripts : public ::testing::TestWithParam<WrongScript> {};

TEST_P(WrongScripts, AreToldWithTheirPlace) {
  EXPECT_THAT(ErrorOf(GetParam().text), HasSubstr(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Each, WrongScripts,
    ::testing::Values(
        WrongScript{"{}", "e.json:1:1: expected a list, found an object"},
        WrongScript{"[5]", "e.json:1:2: /0: expected \"ok\", \"cancel\", or an object"},
        WrongScript{"[\"okay\"]", "/0: expected \"ok\""},
        WrongScript{"[\"ok\", {}]", "/1: expected \"ok\""},
        WrongScript{"[{\"sat\": 5}]", "/0: expected \"ok\""},
        WrongScript{R"([{"set": 5}])", "/0: \"value\" is missing"},
        WrongScript{R"([{"set": "5", "value": 1}])", "/0/set: expected a whole number"},
        WrongScript{R"([{"set": 1e99, "value": 1}])", "/0/set: expected a whole number"},
        WrongScript{R"([{"set": 5, "valu": 1}])", "/0/valu: unknown name \"valu\""},
        WrongScript{R"([{"key": "r"}])", "/0/key: expected a key's code or a capital letter"},
        WrongScript{R"([{"key": 1, "qualifier": true}])", "/0/qualifier: expected a whole number"},
        WrongScript{R"([{"mouse": "press", "area": 1}])", "/0/mouse: unknown action of the mouse"},
        WrongScript{R"([{"mouse": "down", "area": 1, "x": 1}])", "/0: \"y\" is missing"},
        WrongScript{R"([{"mouse": "down", "area": 1, "x": 0.5, "y": 1}])",
                    "/0/x: expected a whole"},
        WrongScript{R"([{"mouse": "down", "area": 1, "x": 9e9, "y": 1}])",
                    "/0/x: expected a whole"},
        WrongScript{R"([{"mouse": "wheel", "area": 1, "x": 1, "y": 1}])", "\"delta\" is missing"},
        WrongScript{R"([{"colour": [1, 2]}])", "/0/colour: expected three numbers, found 2"},
        WrongScript{R"([{"tick": 0, "area": 1}])", "/0/tick: expected a whole number of 1"},
        WrongScript{R"([{"wait": "rain"}])", "/0/wait: expected \"preview\""},
        WrongScript{R"([{"save": "", "area": 1}])", "/0/save: expected the name of a file"},
        WrongScript{R"([{"save": "a.jpg", "area": 1}])", "ending in .png"},
        WrongScript{R"([{"save": "a\u0000.png", "area": 1}])", "zero character"},
        WrongScript{R"([{"expect": 5}])", "/0: \"value\", \"enabled\" or both are missing"},
        WrongScript{R"([{"expect": 5, "enabled": 1}])", "/0/enabled: expected true or false"}));

TEST(DialogScript, ALongListIsReadInOneGo) {
  std::string text = "[";
  for (int i = 0; i < 100000; ++i) text += R"({"wait": "preview"},)";
  text += "\"ok\"]";
  EXPECT_EQ(Read(text).size(), 100001u);
}

}  // namespace
}  // namespace sorvanix::host
