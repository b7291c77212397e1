// User areas, the mouse, links and nested dialogs, played by the headless service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "tests/host/dialogs/module_side.h"

namespace sorvanix::host::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;

// A dialog with an area; what the area hears is kept apart from the dialog's commands.
class Areas : public DialogTest {
 protected:
  bool Play(std::string_view events) {
    HeadlessDialogs& session = Script(events);
    const OwnedDialog dialog = Create(listener_);
    dialog_ = dialog.get();
    area_ = Gadgets().attachUserArea(dialog_, 120, Listener::Hear, &heard_);
    if (prepare) prepare();
    const bool confirmed = Forms().open(dialog_, -1, -1) != 0;
    session.Finish();
    return confirmed;
  }
  std::string Error() const {
    if (!headless_->Error()) return "no error";
    return headless_->Error()->pointer + ": " + headless_->Error()->message;
  }
  // The area polls the mouse from each press on.
  void DragFromPress() {
    heard_.answer = [this](std::int32_t id, const Container& message, Container&) {
      if (id != AreaInput || message.GetInt(InputChannel) != MouseLeft) return 0;
      std::int32_t x = 0, y = 0, qualifier = 0;
      while (Gadgets().pollMouse(area_, &x, &y, &qualifier) != 0) places_.emplace_back(x, y);
      return 1;
    };
  }
  // Paints a picture of one colour into the area whenever it is to be drawn.
  void PaintAt(std::int32_t x, std::int32_t y) {
    ASSERT_TRUE(picture_.Init(2, 2));
    for (std::int32_t i = 0; i < 4; ++i) picture_.Set(i % 2, i / 2, {10, 20, 30});
    heard_.answer = [this, x, y](std::int32_t id, const Container&, Container&) {
      if (id == AreaDraw) Gadgets().drawBitmap(area_, picture_.Handle(), x, y);
      return 1;
    };
  }
  std::vector<std::int32_t> HeardIds() const {
    std::vector<std::int32_t> ids;
    for (const Received& each : heard_.received) ids.push_back(each.id);
    return ids;
  }

  Listener heard_;
  HostDialog* dialog_ = nullptr;
  HostUserArea* area_ = nullptr;
  std::vector<std::pair<std::int32_t, std::int32_t>> places_;
  Bitmap picture_;
  std::function<void()> prepare;
};

TEST_F(Areas, AreAskedForTheirSizeThenMadeThenDrawn) {
  heard_.answer = [&](std::int32_t id, const Container&, Container& reply) {
    if (id == AreaMinSize) {
      reply.Set(AreaWidth, Word{300});
      reply.Set(AreaHeight, Word{1});  // the layout asks for 3
    }
    if (id == AreaInit) {
      std::int32_t width = 0, height = 0;
      Gadgets().areaSize(area_, &width, &height);
      EXPECT_EQ(width, 300);
      EXPECT_EQ(height, 3);
    }
    return 1;
  };
  EXPECT_TRUE(Play(R"(["ok"])"));
  EXPECT_THAT(HeardIds(), ElementsAre(AreaMinSize, AreaInit, AreaVisible, AreaDraw));
}

TEST_F(Areas, ASizeOutOfRangeIsLimited) {
  heard_.answer = [](std::int32_t id, const Container&, Container& reply) {
    if (id == AreaMinSize) reply.Set(AreaWidth, Word{1} << 40);
    return 1;
  };
  EXPECT_TRUE(Play(R"([{"save": "a.png", "area": 120}, "ok"])"));
  EXPECT_EQ(headless_->Pictures()[0].picture.Width(), kLargestArea);
}

TEST_F(Areas, ShowACopyOfWhatWasPainted) {
  PaintAt(1, 1);
  EXPECT_TRUE(Play(R"([{"save": "a.png", "area": 120}, "ok"])"));
  const Bitmap& shown = headless_->Pictures()[0].picture;
  EXPECT_EQ(shown.Width(), 4);
  EXPECT_EQ(shown.Height(), 3);
  EXPECT_EQ(shown.At(0, 0), (Bitmap::Pixel{0, 0, 0}));
  EXPECT_EQ(shown.At(1, 1), (Bitmap::Pixel{10, 20, 30}));
  EXPECT_EQ(shown.At(2, 2), (Bitmap::Pixel{10, 20, 30}));
  EXPECT_EQ(shown.At(3, 2), (Bitmap::Pixel{0, 0, 0}));
}

TEST_F(Areas, APictureBeyondTheEdgesIsCutOff) {
  PaintAt(-1, 2);
  EXPECT_TRUE(Play(R"([{"save": "a.png", "area": 120}, "ok"])"));
  EXPECT_EQ(headless_->Pictures()[0].picture.At(0, 2), (Bitmap::Pixel{10, 20, 30}));
  PaintAt(INT32_MAX, INT32_MIN);
  EXPECT_TRUE(Play(R"([{"save": "a.png", "area": 120}, "ok"])"));
  EXPECT_EQ(headless_->Pictures()[0].picture.At(0, 0), (Bitmap::Pixel{0, 0, 0}));
}

TEST_F(Areas, AGadgetTakesOneAreaAndOnlyWhereTheLayoutHasOne) {
  prepare = [&] {
    EXPECT_NE(area_, nullptr);
    EXPECT_EQ(Gadgets().attachUserArea(dialog_, 120, nullptr, nullptr), nullptr);
    EXPECT_EQ(Gadgets().attachUserArea(dialog_, 101, nullptr, nullptr), nullptr);
  };
  EXPECT_TRUE(Play(R"(["ok"])"));
}

TEST_F(Areas, APressTellsPlaceAndQualifier) {
  EXPECT_TRUE(Play(R"([{"mouse": "down", "area": 120, "x": -7, "y": 2147483647, "qualifier": 4},
                       {"mouse": "up", "area": 120}, "ok"])"));
  const auto inputs = heard_.Of(AreaInput);
  ASSERT_EQ(inputs.size(), 1u);
  EXPECT_EQ(inputs[0].GetInt(InputDevice), DialogMouse);
  EXPECT_EQ(inputs[0].GetInt(InputChannel), MouseLeft);
  EXPECT_EQ(inputs[0].GetInt(InputX), -7);
  EXPECT_EQ(inputs[0].GetInt(InputY), INT32_MAX);
  EXPECT_EQ(inputs[0].GetInt(InputQualifier), 4);
  EXPECT_EQ(inputs[0].GetInt(InputDouble, 7), 0);
}

TEST_F(Areas, TheWheelTellsItsSteps) {
  EXPECT_TRUE(Play(R"([{"mouse": "wheel", "area": 120, "x": 1, "y": 2, "delta": -240}, "ok"])"));
  const auto inputs = heard_.Of(AreaInput);
  EXPECT_EQ(inputs[0].GetInt(InputChannel), MouseWheel);
  EXPECT_EQ(inputs[0].GetInt(InputWheel), -240);
}

TEST_F(Areas, ADragIsPolledUntilTheRelease) {
  DragFromPress();
  EXPECT_TRUE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0},
      {"mouse": "move", "area": 120, "x": 5, "y": 6},
      {"mouse": "move", "area": 120, "x": -2147483648, "y": 2147483647},
      {"mouse": "up", "area": 120}, "ok"])"));
  EXPECT_THAT(places_, ElementsAre(Pair(5, 6), Pair(INT32_MIN, INT32_MAX)));
}

TEST_F(Areas, AReleaseElsewhereIsAMoveThereFirst) {
  DragFromPress();
  EXPECT_TRUE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0},
      {"mouse": "up", "area": 120, "x": 9, "y": 0}, "ok"])"));
  EXPECT_THAT(places_, ElementsAre(Pair(9, 0)));
}

TEST_F(Areas, ADragCanBeLookedAt) {
  DragFromPress();
  EXPECT_TRUE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0},
      {"save": "a.png", "area": 120}, {"expect": 101, "value": 0},
      {"mouse": "up", "area": 120}, "ok"])"));
  EXPECT_EQ(headless_->Pictures().size(), 1u);
  EXPECT_EQ(Error(), "no error");
}

TEST_F(Areas, ADragTakesNoOtherEvents) {
  DragFromPress();
  EXPECT_FALSE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0}, "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/1: the mouse button is down in area 120"));
  EXPECT_FALSE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0}])"));
  EXPECT_THAT(Error(), HasSubstr("the list ends while the mouse button is down"));
}

TEST_F(Areas, AnActionReachesTheDialog) {
  prepare = [&] { Gadgets().sendAction(area_, 1); };
  EXPECT_TRUE(Play(R"(["ok"])"));
  EXPECT_EQ(listener_.Of(120)[0].GetInt(DialogDragging), 1);
  EXPECT_FALSE(listener_.Of(120)[0].Find(DialogValue));
}

TEST_F(Areas, TicksComeWhenTheTimerRuns) {
  prepare = [&] { Gadgets().setTimer(area_, 100); };
  EXPECT_TRUE(Play(R"([{"tick": 3, "area": 120}, "ok"])"));
  EXPECT_EQ(heard_.Of(AreaTimer).size(), 3u);
}

// A double press asks for a colour.
class ColourChooser : public Areas {
 protected:
  ColourChooser() {
    heard_.answer = [this](std::int32_t id, const Container& message, Container&) {
      if (id != AreaInput || message.GetInt(InputDouble) == 0) return 0;
      chosen_ = {0.25f, 0.25f, 0.25f};
      answer_ = Gadgets().chooseColour(&chosen_);
      return 1;
    };
  }
  Vector chosen_ = {};
  std::int32_t answer_ = -1;
};

TEST_F(ColourChooser, IsAnsweredByTheNextColour) {
  EXPECT_TRUE(Play(R"([{"mouse": "double", "area": 120, "x": 0, "y": 0},
                       {"colour": [1, 0.5, 0]}, "ok"])"));
  EXPECT_EQ(answer_, 1);
  EXPECT_EQ(chosen_.y, 0.5f);
}

TEST_F(ColourChooser, IsAnsweredByAColourThatWasGivenBefore) {
  EXPECT_TRUE(Play(R"([{"colour": "#00ff00"},
                       {"mouse": "double", "area": 120, "x": 0, "y": 0}, "ok"])"));
  EXPECT_EQ(answer_, 1);
  EXPECT_EQ(chosen_.y, 1);
}

TEST_F(ColourChooser, LeavesTheColourWhenItIsCancelled) {
  EXPECT_TRUE(Play(R"([{"mouse": "double", "area": 120, "x": 0, "y": 0},
                       {"colour": null}, "ok"])"));
  EXPECT_EQ(answer_, 0);
  EXPECT_EQ(chosen_.y, 0.25f);
}

TEST_F(ColourChooser, TakesNoOtherAnswer) {
  EXPECT_FALSE(Play(R"([{"mouse": "double", "area": 120, "x": 0, "y": 0}, "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/1: a colour is to be chosen"));
}

// A press opens another dialog inside.
class Nested : public Areas {
 protected:
  Nested() {
    heard_.answer = [this](std::int32_t id, const Container&, Container&) {
      if (id != AreaInput) return 0;
      const OwnedDialog inner = Create(inner_, 200);
      confirmed_.push_back(Forms().open(inner.get(), -1, -1));
      return 1;
    };
  }
  Listener inner_;
  std::vector<std::int32_t> confirmed_;
};

TEST_F(Nested, EventsGoToTheInnermostDialog) {
  EXPECT_TRUE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0},
      {"mouse": "up", "area": 120}, {"set": 201, "value": 3}, "ok",
      {"set": 101, "value": 4}, "ok"])"));
  EXPECT_EQ(inner_.Of(201)[0].GetFloat(DialogValue), 3);
  EXPECT_EQ(listener_.Of(101)[0].GetFloat(DialogValue), 4);
  EXPECT_THAT(confirmed_, ElementsAre(1));
}

TEST_F(Nested, AMistakeInsideCancelsBoth) {
  EXPECT_FALSE(Play(R"([{"mouse": "down", "area": 120, "x": 0, "y": 0},
      {"set": 101, "value": 4}, "ok", "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/1: the dialog \"Inner\" has no gadget 101"));
  EXPECT_THAT(confirmed_, ElementsAre(0));
}

// A dialog that shows a link.
class Links : public Areas {
 protected:
  Links() {
    prepare = [this] { Gadgets().setChannelLink(dialog_, 110, link_.Handle()); };
  }
  Link link_;
};

TEST_F(Links, TakeAGraph) {
  EXPECT_TRUE(Play(R"([{"set": 110, "value": {"shader": "Scale",
                        "input": {"shader": "Probe", "value": 2}}}, "ok"])"));
  EXPECT_EQ(link_.PluginId(), fake::kScale);
  const auto commands = listener_.Of(110);
  ASSERT_EQ(commands.size(), 1u);
  EXPECT_FALSE(commands[0].Find(DialogValue));
}

TEST_F(Links, TakeABitmapAndNothing) {
  const std::string file = folder_.Write("a.png", "").string();
  EXPECT_TRUE(Play("[{\"set\": 110, \"value\": \"" + file + "\"}, \"ok\"]"));
  EXPECT_NE(link_.HeldBitmap(), nullptr);
  EXPECT_TRUE(Play(R"([{"set": 110, "value": null}, "ok"])"));
  EXPECT_TRUE(link_.IsEmpty());
}

TEST_F(Links, StayAsTheyWereWhenTheContentIsWrong) {
  link_.HoldShader(fake::kProbe);
  EXPECT_FALSE(Play(R"([{"set": 110, "value": {"shader": "Scale", "factro": 2}}, "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/0/value/factro: unknown parameter of Scale"));
  EXPECT_EQ(link_.PluginId(), fake::kProbe);
  EXPECT_FALSE(Play(R"([{"set": 110, "value": 5}, "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/0/value: expected a shader, the name of a file, or null"));
  EXPECT_FALSE(Play(R"([{"set": 110, "value": "none.png"}, "ok"])"));
  EXPECT_THAT(Error(), HasSubstr("/0/value: there is no bitmap"));
}

TEST_F(Links, ChangesAreRecorded) {
  EXPECT_TRUE(Play(R"([{"set": 110, "value": {"shader": "Probe"}}, "ok"])"));
  ASSERT_EQ(headless_->Changes().size(), 1u);
  EXPECT_EQ(headless_->Changes()[0].gadget, 110);
}

}  // namespace
}  // namespace sorvanix::host::test
