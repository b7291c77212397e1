#include "host/dialogs/headless_dialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <thread>

#include "tests/host/dialogs/module_side.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Headless : public DialogTest {
 protected:
  // Opens dialog 100 with the script; whether it was confirmed.
  bool Play(std::string_view events) {
    HeadlessDialogs& session = Script(events);
    const OwnedDialog dialog = Create(listener_);
    if (prepare) prepare(dialog.get());
    const bool confirmed = Forms().open(dialog.get(), -1, -1) != 0;
    session.Finish();
    return confirmed;
  }
  // Where and why the list could not be played.
  std::string Error() const {
    if (!headless_->Error()) return "no error";
    return headless_->Error()->pointer + ": " + headless_->Error()->message;
  }
  // The value that the last command of a gadget carried.
  float LastReal(std::int32_t id) const { return listener_.Of(id).back().GetFloat(DialogValue); }

  std::function<void(HostDialog*)> prepare;
};

TEST_F(Headless, OkConfirmsAndCancelDoesNot) {
  EXPECT_TRUE(Play(R"(["ok"])"));
  EXPECT_FALSE(Play(R"(["cancel"])"));
  EXPECT_EQ(Error(), "no error");
}

TEST_F(Headless, ASetValueReachesTheModuleInItsOwnUnits) {
  prepare = [&](HostDialog* dialog) {
    Gadgets().setFloat(dialog, 101, 0.25f, 0, 1, 0.01f, FormatPercent);
  };
  EXPECT_TRUE(Play(R"([{"expect": 101, "value": 25}, {"set": 101, "value": 50},
                       {"expect": 101, "value": 50}, "ok"])"));
  ASSERT_EQ(listener_.Of(101).size(), 1u);
  const Container command = listener_.Of(101)[0];
  EXPECT_EQ(command.GetFloat(DialogValue), 0.5f);
  EXPECT_EQ(command.GetInt(DialogDragging, 7), 0);
  EXPECT_TRUE(headless_->Failures().empty());
}

TEST_F(Headless, TheGadgetKeepsItsLimits) {
  prepare = [&](HostDialog* dialog) {
    Gadgets().setFloat(dialog, 101, 1, 0, 5, 1, FormatReal);
    Gadgets().setInt(dialog, 103, 1, -2, 2, 1);
  };
  EXPECT_TRUE(Play(R"([{"set": 101, "value": 1e30}, {"expect": 101, "value": 5},
                       {"set": 103, "value": -9}, {"expect": 103, "value": -2}, "ok"])"));
  EXPECT_EQ(LastReal(101), 5);
  EXPECT_EQ(listener_.Of(103)[0].GetInt(DialogValue), -2);
  EXPECT_TRUE(headless_->Failures().empty());
}

TEST_F(Headless, EveryKindOfGadgetSendsItsValue) {
  EXPECT_TRUE(Play(R"([{"set": 104, "value": true}, {"set": 105, "value": "Four"},
      {"set": 106, "value": "#ff0000"}, {"set": 107, "value": "words"},
      {"set": 108, "value": true}, "ok"])"));
  EXPECT_TRUE(listener_.Of(104)[0].GetBool(DialogValue));
  EXPECT_EQ(listener_.Of(105)[0].GetInt(DialogValue), 4);
  EXPECT_EQ(listener_.Of(106)[0].GetVector(DialogValue).x, 1);
  EXPECT_EQ(listener_.Of(107)[0].GetText(DialogValue)->text, "words");
  EXPECT_EQ(listener_.Of(108).size(), 1u);
}

TEST_F(Headless, WhatTheModuleSetsShows) {
  prepare = [&](HostDialog* dialog) {
    const Vector red = {1, 0, 0};
    Gadgets().setVector(dialog, 106, &red);
    Gadgets().setBool(dialog, 104, 3);
    Gadgets().setText(dialog, 109, Text("Start Offset").Handle());
    Gadgets().setInt(dialog, 105, 2, 0, 0, 0);
    Gadgets().enable(dialog, 101, 0);
  };
  EXPECT_TRUE(Play(R"([{"expect": 106, "value": [1, 0, 0]}, {"expect": 104, "value": true},
      {"expect": 109, "value": "Start Offset"}, {"expect": 105, "value": "Two"},
      {"expect": 101, "enabled": false}, {"expect": 102, "enabled": true}, "ok"])"));
  EXPECT_TRUE(headless_->Failures().empty());
}

TEST_F(Headless, TheModuleReadsWhatIsShown) {
  Script("[]");
  const OwnedDialog dialog = Create(listener_);
  Gadgets().setFloat(dialog.get(), 101, 2.5f, 0, 9, 1, FormatReal);
  std::int32_t whole = 0;
  float real = 0;
  Vector colour = {7, 7, 7};
  EXPECT_EQ(Gadgets().getInt(dialog.get(), 101, &whole), 1);
  EXPECT_EQ(whole, 2);
  EXPECT_EQ(Gadgets().getFloat(dialog.get(), 101, &real), 1);
  EXPECT_EQ(real, 2.5f);
  EXPECT_EQ(Gadgets().getVector(dialog.get(), 101, &colour), 0) << "it has none";
  EXPECT_EQ(colour.x, 7);
  EXPECT_EQ(Gadgets().getVector(dialog.get(), 106, &colour), 1);
  EXPECT_EQ(colour.x, 0);
  EXPECT_EQ(Gadgets().getInt(dialog.get(), 999, &whole), 0);
  EXPECT_EQ(Gadgets().findGadget(dialog.get(), 999), 0);
  EXPECT_EQ(Gadgets().findGadget(dialog.get(), 118), 1) << "the link takes 110 to 118";
  EXPECT_EQ(Gadgets().findGadget(dialog.get(), 119), 0);
}

struct Mistake {
  const char* events;
  const char* error;
};
class Mistakes : public Headless, public ::testing::WithParamInterface<Mistake> {};

TEST_P(Mistakes, CancelTheDialogAndAreToldWithTheEvent) {
  prepare = [&](HostDialog* dialog) {
    Gadgets().enable(dialog, 104, 0);
    Gadgets().attachUserArea(dialog, 120, Listener::Hear, &listener_);
  };
  EXPECT_FALSE(Play(GetParam().events));
  EXPECT_THAT(Error(), HasSubstr(GetParam().error));
  EXPECT_TRUE(headless_->Changes().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Each, Mistakes,
    ::testing::Values(
        Mistake{R"([{"set": 999, "value": 1}, "ok"])", "/0: the dialog \"Main\" has no gadget 999"},
        Mistake{R"([{"set": -2147483648, "value": 1}, "ok"])", "no gadget -2147483648"},
        Mistake{R"([{"set": 111, "value": null}, "ok"])", "no gadget 111"},
        Mistake{R"([{"set": 104, "value": true}, "ok"])", "/0/set: gadget 104 is disabled"},
        Mistake{R"([{"set": 101, "value": "5"}, "ok"])", "/0/value: expected a number"},
        Mistake{R"([{"set": 120, "value": 5}, "ok"])", "/0/value: a gadget of the kind area"},
        Mistake{R"([{"set": 110, "value": null}, "ok"])", "/0/set: link 110 shows nothing"},
        Mistake{R"([{"expect": 110, "value": null}, "ok"])", "/0/value: what a link holds"},
        Mistake{R"([{"expect": 999, "value": 1}, "ok"])", "/0: the dialog"},
        Mistake{R"([{"mouse": "down", "area": 101, "x": 0, "y": 0}, "ok"])", "no user area 101"},
        Mistake{R"([{"mouse": "down", "area": 121, "x": 0, "y": 0}, "ok"])", "no user area 121"},
        Mistake{R"([{"mouse": "up", "area": 120}, "ok"])", "not down in area 120"},
        Mistake{R"([{"mouse": "down", "area": 120, "x": 0, "y": 0},
                    {"mouse": "down", "area": 120, "x": 0, "y": 0}])",
                "/1: the mouse button is down"},
        Mistake{R"([{"save": "a.png", "area": 5}, "ok"])", "no user area 5"},
        Mistake{R"([{"tick": 1, "area": 120}, "ok"])", "/0: area 120 has no timer"},
        Mistake{R"([{"colour": null}, {"colour": null}, "ok"])", "/1: the colour before this one"},
        Mistake{R"([])", ": the list ends while the dialog \"Main\" is open"}));

TEST_F(Headless, EventsBehindTheEndAreAnError) {
  EXPECT_TRUE(Play(R"(["ok", {"wait": "preview"}])"));
  EXPECT_THAT(Error(), HasSubstr("/1: the dialog is closed already"));
}

TEST_F(Headless, AColourThatNobodyAskedForIsAnError) {
  EXPECT_TRUE(Play(R"([{"colour": [1, 1, 1]}, "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/0: no colour was asked for"));
}

TEST_F(Headless, AFailedExpectationIsToldAndTheListGoesOn) {
  prepare = [&](HostDialog* dialog) {
    Gadgets().setFloat(dialog, 101, 0.25f, 0, 1, 0.01f, FormatPercent);
  };
  EXPECT_TRUE(
      Play(R"([{"wait": "preview"}, {"expect": 101, "value": 30, "enabled": false}, "ok"])"));
  ASSERT_EQ(headless_->Failures().size(), 2u);
  EXPECT_EQ(headless_->Failures()[0].pointer, "/1");
  EXPECT_EQ(headless_->Failures()[0].message, "gadget 101 shows 25.0, expected 30");
  EXPECT_EQ(headless_->Failures()[1].message, "gadget 101 is enabled, expected disabled");
}

TEST_F(Headless, ChangesOfThePairAreRecordedWithTheEventThatMadeThem) {
  HostDialog* shown = nullptr;
  prepare = [&](HostDialog* dialog) {
    shown = dialog;
    Gadgets().setFloat(dialog, 101, 0, 0, 1, 1, FormatReal);
    Gadgets().setFloat(dialog, 102, 0, 0, 1, 1, FormatReal);
  };
  listener_.answer = [&](std::int32_t id, const Container& message, Container&) {
    if (id == 101) {
      Gadgets().setFloat(shown, 102, message.GetFloat(DialogValue), 0, 1, 1, FormatReal);
      Gadgets().enable(shown, 104, 0);
      Gadgets().enable(shown, 104, 0);  // the second time nothing changes
    }
    return 1;
  };
  EXPECT_TRUE(Play(R"([{"wait": "preview"}, {"set": 101, "value": 1}, "ok"])"));
  std::vector<std::int32_t> changed;
  for (const DialogChange& change : headless_->Changes()) {
    EXPECT_EQ(change.event, "/1");
    EXPECT_EQ(change.dialog, 100);
    changed.push_back(change.gadget);
  }
  EXPECT_THAT(changed, ElementsAre(101, 102, 104));
  EXPECT_FALSE(headless_->Changes()[2].enabled);
}

TEST_F(Headless, KeysReachTheModule) {
  listener_.answer = [](std::int32_t, const Container&, Container&) { return 1; };
  EXPECT_TRUE(Play(R"([{"key": "R", "qualifier": 18}, {"key": 32785}, "ok"])"));
  const auto keys = listener_.Of(DialogKey);
  ASSERT_EQ(keys.size(), 2u);
  EXPECT_EQ(keys[0].GetInt(InputChannel), 'R');
  EXPECT_EQ(keys[0].GetInt(InputQualifier), 18);
  EXPECT_EQ(keys[1].GetInt(InputChannel), KeyEscape);
}

TEST_F(Headless, AnEscapeThatTheModuleLeavesToTheHostCancels) {
  EXPECT_FALSE(Play(R"([{"key": 32785}])"));
  EXPECT_EQ(Error(), "no error");
}

TEST_F(Headless, WithoutAServiceADialogCannotBeOpened) {
  SetDialogService(nullptr);
  const OwnedDialog dialog = Create(listener_);
  EXPECT_EQ(Forms().open(dialog.get(), -1, -1), 0);
  EXPECT_TRUE(listener_.received.empty());
}

TEST_F(Headless, ARaisedFlagCancelsBeforeTheNextEvent) {
  HeadlessDialogs& session =
      Script(R"([{"set": 101, "value": 1}, {"set": 102, "value": 1}, "ok"])");
  std::atomic<bool> flag = false;
  session.CancelBy(flag);
  listener_.answer = [&](std::int32_t, const Container&, Container&) {
    flag = true;
    return 1;
  };
  const OwnedDialog dialog = Create(listener_);
  EXPECT_EQ(Forms().open(dialog.get(), -1, -1), 0);
  EXPECT_EQ(listener_.received.size(), 1u);
  EXPECT_EQ(session.Error()->message, "cancelled");
}

TEST_F(Headless, AnUnknownDialogIsNotLoaded) {
  Script("[]");
  OwnedDialog dialog(Forms().create(nullptr, nullptr), FreeDialog{&Forms()});
  EXPECT_EQ(Forms().load(dialog.get(), nullptr, 100), 0);
  EXPECT_EQ(Forms().open(dialog.get(), -1, -1), 0) << "it has no layout";
}

TEST_F(Headless, NullHandlesDoNothing) {
  Script("[]");
  Gadgets().setInt(nullptr, 1, 1, 1, 1, 1);
  Gadgets().setVector(nullptr, 1, nullptr);
  Gadgets().setText(nullptr, 1, nullptr);
  Gadgets().focus(nullptr, 1);
  Gadgets().redraw(nullptr);
  Gadgets().drawBitmap(nullptr, nullptr, 0, 0);
  Gadgets().sendAction(nullptr, 1);
  Gadgets().setTimer(nullptr, 1);
  EXPECT_EQ(Gadgets().attachUserArea(nullptr, 1, nullptr, nullptr), nullptr);
  EXPECT_EQ(Gadgets().pollMouse(nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(Gadgets().chooseColour(nullptr), 0);
  EXPECT_EQ(Gadgets().getInt(nullptr, 1, nullptr), 0);
  EXPECT_EQ(Forms().open(nullptr, 0, 0), 0);
  Forms().close(nullptr, 1);
  Forms().setTitle(nullptr, nullptr);
  Forms().free(nullptr);
  std::int32_t width = 5;
  Gadgets().areaSize(nullptr, &width, nullptr);
  EXPECT_EQ(width, 0);
}

TEST_F(Headless, AShortMemoryClosesNothingTwiceAndLeaksNothing) {
  const LeakCheck leaks;
  const int allocations = WithEveryAllocationFailing([&] {
    HeadlessDialogs session(
        ParseJson(R"([{"set": 101, "value": 1}, "ok"])").and_then(ReadDialogEvents).value(),
        fake::Catalogue(), {});
    SetDialogService(&session);
    HostDialog* dialog = Forms().create(Listener::Hear, &listener_);
    Forms().open(dialog, -1, -1);
    Forms().free(dialog);
    SetDialogService(nullptr);
    listener_.received.clear();
  });
  EXPECT_GT(allocations, 0);
}

}  // namespace
}  // namespace sorvanix::host::test
