// What differs in the dialogs by a literal alone: the areas, the title, the message.
#include <algorithm>

#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {
namespace {

struct DialogRow {
  const char* name;
  std::int32_t pluginId, dialog, title, preview;  // preview 0: none

  friend void PrintTo(const DialogRow& row, std::ostream* out) { *out << row.name; }
};

constexpr DialogRow kRows[] = {
    {"2D Noise", PluginIdNoise2D, 19000, 19022, 19021},
    {"3D Noise", PluginIdNoise3D, 11000, 11024, 11023},
    {"Tiles", PluginIdTiles, 12000, 12028, 12029},
    {"Lumas", PluginIdLumas, 23000, 23008, 23011},
    {"Banj", PluginIdBanj, 22000, 22010, 22011},
    {"Proximal", PluginIdProximal, 21000, 21009, 0},
    {"Projector", PluginIdProjector, 16000, 16010, 0},
};

struct DialogFamilyTest : EditorTest, ::testing::WithParamInterface<DialogRow> {
  DialogFamilyTest() : EditorTest(GetParam().pluginId, GetParam().dialog) {}
  const DialogRow& row = GetParam();
  const std::string name = row.name;

  // The caption of the About picture: the columns from the first to the last with a light pixel.
  std::vector<std::string> Caption() {
    host.pictures["/plugins/Resources/sorvanix About.tif"] = {400, 250};
    std::vector<std::string> rows;
    host.dialogs.scripts[35000] = [&](FakeDialog& about) {
      about.Area(35000).Draw();
      const FakeBitmap& shown = *about.Area(35000).drawn.at(0).bitmap;
      for (int y = 234; y < 248; ++y) {
        std::string& line = rows.emplace_back();
        for (int x = 0; x < 400; ++x) line += shown.At(x, y).red > 0 ? '#' : ' ';
      }
    };
    Edit([&](FakeDialog& dialog) { dialog.Area(row.title).Mouse(1, 1); });
    return rows;
  }
};

TEST_P(DialogFamilyTest, HasItsAreas) {
  Edit([&](FakeDialog& dialog) {
    EXPECT_EQ(dialog.areas.count(row.title), 1u);
    EXPECT_EQ(dialog.areas.count(row.preview), row.preview != 0 ? 1u : 0u);
    EXPECT_EQ(host.dialogs.threadsStarted, row.preview != 0 ? 1 : 0);
  });
}

TEST_P(DialogFamilyTest, LoadsItsTitle) {
  Edit([&](FakeDialog&) {
    EXPECT_EQ(host.picturesAsked.back(), "/plugins/Resources/" + name + " Title.tif");
  });
}

TEST_P(DialogFamilyTest, TellsItsNameWhereResourcesAreMissing) {
  host.failResources = true;
  EXPECT_EQ(Edit([](FakeDialog&) { FAIL(); }), 0);
  const std::string text = "Unable to find dialog resources for sorvaNIX " + name;
  EXPECT_EQ(std::count(host.calls.begin(), host.calls.end(), "messageDialog(\"" + text + "\", 48)"),
            1);
}

// "sorvaNIX " and the name, centred: each letter has a field of 12 pixels, so that the light pixels
// lie within one field less the gap of 2.
TEST_P(DialogFamilyTest, AboutShowsItsName) {
  const auto caption = Caption();
  ASSERT_EQ(caption.size(), 14u);
  const std::size_t letters = 9 + name.size();
  const std::size_t start = (400 - 12 * letters) / 2;
  const auto isLight = [&](std::size_t letter) {
    return std::any_of(caption.begin(), caption.end(), [&](const std::string& line) {
      return line.substr(start + 12 * letter, 12).find('#') != std::string::npos;
    });
  };
  for (std::size_t letter = 0; letter < letters; ++letter) {
    const bool isSpace = letter == 8 || (letter > 8 && name[letter - 9] == ' ');
    EXPECT_EQ(isLight(letter), !isSpace) << letter;
  }
  for (const std::string& line : caption) {
    EXPECT_EQ(line.substr(0, start).find('#'), std::string::npos);
    EXPECT_EQ(line.substr(start + 12 * letters).find('#'), std::string::npos);
  }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, DialogFamilyTest, ::testing::ValuesIn(kRows),
                         [](const auto& row) {
                           std::string name = row.param.name;
                           name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
                           return name;
                         });

}  // namespace
}  // namespace sorvanix::test
