// The About dialog: its picture, its buttons, how it closes.
#include <algorithm>

#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

constexpr std::int32_t kAbout = 35000;
constexpr std::int32_t kPicture = 35000;

struct AboutDialogTest : EditorTest {
  AboutDialogTest() : EditorTest(PluginIdNoise2D, 19000) {
    host.texts[10019] = "About sorvaNIX";
    host.pictures["/plugins/Resources/sorvanix About.tif"] = {400, 250};
  }

  // Opens About from the title of a shader's dialog.
  void About(Script script) {
    bool opened = false;
    host.dialogs.scripts[kAbout] = [&](FakeDialog& dialog) {
      opened = true;
      script(dialog);
    };
    Edit([](FakeDialog& dialog) { dialog.Area(19022).Mouse(1, 1); });
    EXPECT_TRUE(opened);
    EXPECT_EQ(host.dialogs.live, 0);
  }
};

TEST_F(AboutDialogTest, ShowsItsPictureUnderItsTitle) {
  About([](FakeDialog& about) {
    EXPECT_EQ(about.title, "About sorvaNIX");
    const auto size = about.Area(kPicture).MinSize();
    ASSERT_TRUE(size.has_value());
    EXPECT_EQ(size->width, 399);
    EXPECT_EQ(size->height, 250);
    about.Area(kPicture).Draw();
    ASSERT_FALSE(about.Area(kPicture).drawn.empty());
    EXPECT_EQ(about.Area(kPicture).drawn[0].bitmap->width, 400);
  });
  EXPECT_EQ(host.picturesAsked.back(), "/plugins/Resources/sorvanix About.tif");
}

TEST_F(AboutDialogTest, AMissingPictureLeavesTheAreaEmpty) {
  host.pictures.clear();
  About([](FakeDialog& about) {
    EXPECT_EQ(about.Area(kPicture).MinSize()->width, 0);
    about.Area(kPicture).Draw();
    EXPECT_TRUE(about.Area(kPicture).drawn.empty());
  });
  EXPECT_TRUE(host.messages.empty());
}

// --- the credits ---

// What stands in the area: rows of the picture, each with the number of its light pixels.
std::vector<int> LightPixels(FakeDialog& about) {
  FakeArea& area = about.Area(kPicture);
  area.Draw();
  const FakeBitmap& shown = *area.drawn.at(0).bitmap;
  std::vector<int> rows(250);
  for (int y = 0; y < 250; ++y) {
    for (int x = 0; x < 400; ++x) rows[static_cast<std::size_t>(y)] += shown.At(x, y).red > 20;
  }
  return rows;
}

// The fake picture is black; the ground of the text is nearly so.
TEST_F(AboutDialogTest, CreditsStandInTheLowerBandOfThePictureAlone) {
  About([](FakeDialog& about) {
    const auto rows = LightPixels(about);
    int inBand = 0;
    for (std::size_t y = 0; y < rows.size(); ++y) {
      const bool isCaption = y >= 234 && y < 248;
      if (y >= 130 && y < 228) {
        inBand += rows[y];
      } else if (!isCaption) {
        EXPECT_EQ(rows[y], 0) << y;
      }
    }
    EXPECT_GT(inBand, 0);
  });
}

// "sorvaNIX 2D Noise" in 17 letters of 12 pixels, of which the last leaves 2: 202 pixels in the
// middle of 400. Both end letters reach the sides of their fields.
TEST_F(AboutDialogTest, TheNameOfTheShaderStandsBelowTheCredits) {
  About([](FakeDialog& about) {
    FakeArea& area = about.Area(kPicture);
    area.Draw();
    const FakeBitmap& shown = *area.drawn.at(0).bitmap;
    int first = 400, last = -1;
    for (int y = 234; y < 248; ++y) {
      for (int x = 0; x < 400; ++x) {
        if (shown.At(x, y).red == 0) continue;
        first = std::min(first, x);
        last = std::max(last, x);
      }
    }
    EXPECT_EQ(first, 98);
    EXPECT_EQ(last, 98 + 201);
  });
}

// In the middle of the band, where nothing fades, a tick moves the rows up by one.
TEST_F(AboutDialogTest, CreditsScrollWithTheTimer) {
  About([](FakeDialog& about) {
    FakeArea& area = about.Area(kPicture);
    EXPECT_GT(area.timer, 0);
    const auto before = LightPixels(about);
    const int redraws = area.redraws;
    area.Tick();
    EXPECT_EQ(area.redraws, redraws + 1);
    const auto after = LightPixels(about);
    for (std::size_t y = 150; y < 210; ++y) EXPECT_EQ(after[y], before[y + 1]) << y;
  });
}

TEST_F(AboutDialogTest, TheWheelScrollsBothWays) {
  About([](FakeDialog& about) {
    FakeArea& area = about.Area(kPicture);
    const auto before = LightPixels(about);
    EXPECT_TRUE(area.Wheel(-240));
    EXPECT_NE(LightPixels(about), before);
    EXPECT_TRUE(area.Wheel(120));
    EXPECT_TRUE(area.Wheel(120));
    EXPECT_EQ(LightPixels(about), before);
    EXPECT_FALSE(about.closed);
  });
}

// 21 lines of 20 pixels, and the 98 of the band: after 518 ticks they begin anew. No step of the
// wheel is too large.
TEST_F(AboutDialogTest, CreditsBeginAnewAtTheirEnd) {
  About([](FakeDialog& about) {
    FakeArea& area = about.Area(kPicture);
    const auto first = LightPixels(about);
    for (int tick = 0; tick < 517; ++tick) area.Tick();
    EXPECT_NE(LightPixels(about), first);
    area.Tick();
    EXPECT_EQ(LightPixels(about), first);
    area.Wheel(std::numeric_limits<std::int32_t>::min());
    area.Wheel(std::numeric_limits<std::int32_t>::max());
    area.Draw();
  });
}

TEST_F(AboutDialogTest, AClickIntoThePictureClosesIt) {
  About([](FakeDialog& about) {
    EXPECT_FALSE(about.closed);
    EXPECT_TRUE(about.Area(kPicture).Mouse(5, 5));
    EXPECT_TRUE(about.closed);
  });
}

// "Documentation" lies beside the folder of the module.
TEST_F(AboutDialogTest, TwoButtonsOpenTheDocumentation) {
  const int texts = host.liveTexts();
  ASSERT_EQ(started.module.Detach(), 1);
  ASSERT_EQ(started.module.Attach(host, "/opt/plugins/sorvaNIX/sorvaNIX.so"), 1);
  for (const char* shape : {"Sphere"}) {
    host.documents.files.insert(std::string("/opt/plugins/sorvaNIX/Resources/Preview_") + shape +
                                "_C.c4d");
  }
  About([](FakeDialog& about) {
    EXPECT_TRUE(about.Press(35001));
    EXPECT_TRUE(about.Press(35002));
    EXPECT_FALSE(about.closed);
    EXPECT_FALSE(about.Press(35003));
  });
  const std::string index = "/opt/plugins/Documentation/index.html";
  EXPECT_EQ(host.dialogs.viewed, (std::vector<std::string>{index, index}));
  EXPECT_EQ(host.liveTexts(), texts);
}

TEST_F(AboutDialogTest, ShowsTheHostsVersionAndFocusesTheCloseButton) {
  About([](FakeDialog& about) {
    EXPECT_EQ(about.Int(35006), 7300);
    EXPECT_EQ(about[35006].minimum, -2147483648.0f);
    EXPECT_EQ(about[35006].maximum, 2147483647.0f);
    EXPECT_EQ(about[35006].step, 1);
    EXPECT_EQ(about.focus, 35007);
    EXPECT_TRUE(about.Press(35007));
    EXPECT_TRUE(about.closed);
  });
}

TEST_F(AboutDialogTest, EscapeSetsTheNumberAgainAndCloses) {
  About([](FakeDialog& about) {
    const int before = about[35006].timesSet;
    EXPECT_FALSE(about.Key('A'));
    EXPECT_FALSE(about.closed);
    EXPECT_TRUE(about.Key(32785));
    EXPECT_EQ(about[35006].timesSet, before + 1);
    EXPECT_TRUE(about.closed);
  });
}

TEST_F(AboutDialogTest, WithoutItsLayoutNothingOpensAndNothingIsSaid) {
  bool opened = false;
  host.dialogs.scripts[kAbout] = [&](FakeDialog&) { opened = true; };
  Edit([&](FakeDialog& dialog) {
    host.failResources = true;
    EXPECT_TRUE(dialog.Area(19022).Mouse(1, 1));
  });
  EXPECT_FALSE(opened);
  EXPECT_TRUE(host.messages.empty());
}

}  // namespace
}  // namespace sorvanix::test
