#include "apps/studio/document/document.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include "apps/studio/document/commands.h"
#include "apps/studio/document/recent_files.h"
#include "host/scene/scene_file.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

using testing::HasSubstr;

class DocumentTest : public StudioTest {
 protected:
  // Some of everything that the studio changes.
  void Edit() {
    commands_.PlaceShader({.channel = "diffusion", .inputs = {}}, "Gradient");
    commands_.Wrap({.channel = "diffusion", .inputs = {}}, "Colorizer");
    commands_.SwitchChannel("bump", true);
    commands_.AddMaterial();
    commands_.RenameMaterial(0, "Renamed");
    commands_.DuplicateMaterial();
    selection_.SetMaterial(0);
    commands_.RemoveMaterial();
  }
  void UndoAll() { document_.History().setIndex(0); }

  Document document_{Catalogue()};
  Selection selection_{document_};
  Commands commands_{document_, selection_};
};

TEST_F(DocumentTest, UndoingToTheStartGivesTheBytesOfTheFirstSave) {
  const auto first = Folder() / "first.json", second = Folder() / "second.json";
  ASSERT_TRUE(document_.SaveAs(first));
  Edit();
  ASSERT_NE(document_.Text(), ReadAll(first));
  UndoAll();
  ASSERT_TRUE(document_.SaveAs(second));
  EXPECT_EQ(ReadAll(second), ReadAll(first));
}

TEST_F(DocumentTest, ExamplesKeepTheirOwnLayoutThroughEditAndUndo) {
  for (const char* name : {"still_life.json", "toy_shelf.json", "brushed_metal.json"}) {
    const auto file = Examples() / "scenes" / name;
    ASSERT_TRUE(document_.Open(file)) << name;
    selection_.SetMaterial(0);
    Edit();
    ASSERT_EQ(document_.History().count(), 7) << name;
    UndoAll();
    EXPECT_EQ(document_.Text(), ReadAll(file)) << name;
  }
}

TEST_F(DocumentTest, RedoingGivesTheEditedBytesAgain) {
  Edit();
  const std::string edited = document_.Text();
  UndoAll();
  document_.History().setIndex(document_.History().count());
  EXPECT_EQ(document_.Text(), edited);
}

TEST_F(DocumentTest, WhatIsSavedCanBeOpened) {
  ASSERT_TRUE(document_.Open(Examples() / "scenes" / "still_life.json"));
  Edit();
  const auto file = Folder() / "saved.json";
  ASSERT_TRUE(document_.SaveAs(file));
  EXPECT_FALSE(document_.IsModified());
  Document other(Catalogue());
  ASSERT_TRUE(other.Open(file)) << "names of files lead to the same files from the new folder";
  EXPECT_EQ(other.Text(), document_.Text());
}

// The steps before saving elsewhere hold names as they were in the former folder.
TEST_F(DocumentTest, UndoAfterSavingElsewhereStillFindsTheFiles) {
  ASSERT_TRUE(document_.Open(Examples() / "scenes" / "still_life.json"));
  Edit();
  ASSERT_TRUE(document_.SaveAs(Folder() / "saved.json"));
  UndoAll();
  EXPECT_NE(host::ReadScene(document_.Text(), document_.File(), {.catalogue = &Catalogue()}).scene,
            nullptr);
}

TEST_F(DocumentTest, NoChangeIsNoStep) {
  const Json same = document_.Materials().front();
  ASSERT_TRUE(document_.ChangeMaterial(0, same, "Nothing"));
  ASSERT_TRUE(document_.ChangeScene(document_.Scene(), "Nothing"));
  EXPECT_EQ(document_.History().count(), 0);
  EXPECT_FALSE(document_.IsModified());
}

TEST_F(DocumentTest, WhatCouldNotBeOpenedIsRefused) {
  const std::string before = document_.Text();
  Json bad = document_.Materials().front();
  SetMember(bad, "channels", Parsed(R"({"colour":{"graph":{"shader":"2D Nose"}}})"));
  const auto changed = document_.ChangeMaterial(0, bad, "Bad");
  ASSERT_FALSE(changed);
  EXPECT_THAT(changed.error(), HasSubstr("did you mean \"2D Noise\""));
  EXPECT_EQ(document_.Text(), before);
  EXPECT_EQ(document_.History().count(), 0);
}

struct BadFile {
  const char* text;
  const char* place;     // file, line and column, pointer
  const char* expected;  // what the message says
};

class BadFileTest : public DocumentTest, public testing::WithParamInterface<BadFile> {};

TEST_P(BadFileTest, IsToldWithItsPlaceAndLeavesTheDocumentUntouched) {
  Edit();
  const std::string before = document_.Text();
  const int steps = document_.History().count();
  const QSignalSpy changes(&document_, &Document::SceneChanged);
  const auto file = Folder() / "bad.json";
  WriteAll(file, GetParam().text);

  const auto opened = document_.Open(file);
  ASSERT_FALSE(opened);
  EXPECT_THAT(opened.error(), HasSubstr(file.string() + GetParam().place));
  EXPECT_THAT(opened.error(), HasSubstr(GetParam().expected));
  EXPECT_EQ(document_.Text(), before);
  EXPECT_EQ(document_.History().count(), steps);
  EXPECT_EQ(changes.count(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadFileTest,
    testing::Values(
        BadFile{"{", ":1:2", "expected"}, BadFile{"[]", ":1:1", "expected"},
        BadFile{"{}", ":1:1", "\"format\" must be \"sorvanix-scene\""},
        BadFile{"{\"format\":\"sorvanix-scene\",\n \"version\":0}", ":2:12: /version",
                "\"version\" must be 1"},
        BadFile{"{\"format\":\"sorvanix-scene\",\"version\":1,\n\"camera\":{\"width\":\"wide\"}}",
                ":2:19: /camera/width", "expected"},
        BadFile{"{\"format\":\"sorvanix-scene\",\"version\":1,\n\"materials\":[{\"name\":\"M\","
                "\"channels\":{\"colour\":{\"graph\":{\"shader\":\"2D Nose\"}}}}]}",
                ":2:", "did you mean \"2D Noise\""},
        BadFile{"{\"format\":\"sorvanix-scene\",\"version\":1,\n\"materials\":[{\"name\":\"M\","
                "\"channels\":{\"colour\":{\"graph\":\"gone.json\"}}}]}",
                ":2:", "there is no file \"gone.json\""}));

TEST_F(DocumentTest, AFileThatIsNotThereIsAnError) {
  const auto opened = document_.Open(Folder() / "gone.json");
  ASSERT_FALSE(opened);
  EXPECT_THAT(opened.error(), HasSubstr("gone.json"));
}

TEST_F(DocumentTest, AFolderThatCannotBeWrittenIsAnErrorAndKeepsTheName) {
  ASSERT_FALSE(document_.SaveAs(Folder() / "gone" / "scene.json"));
  EXPECT_TRUE(document_.File().empty());
}

TEST_F(DocumentTest, CommandsThatCannotBeDoneComplainAndChangeNothing) {
  const QSignalSpy complaints(&commands_, &Commands::Complained);
  commands_.RenameMaterial(0, " ");
  commands_.Remove({.channel = "bump", .inputs = {}});
  commands_.Wrap({.channel = "bump", .inputs = {}}, "Hue");
  commands_.PlaceShader({.channel = "colour", .inputs = {}}, "No such shader");
  commands_.PlaceFile({.channel = "colour", .inputs = {}}, Folder() / "gone.png");
  EXPECT_EQ(complaints.count(), 5);
  EXPECT_EQ(document_.History().count(), 0);
}

TEST_F(DocumentTest, AMaterialFileBecomesAMaterialThatStandsByItself) {
  commands_.AddMaterialFile(Examples() / "graphs" / "embers.json");
  ASSERT_EQ(document_.Materials().size(), 2U);
  EXPECT_EQ(TextMember(document_.Materials()[1], "name"), "embers");
  EXPECT_EQ(selection_.Material(), 1);
  EXPECT_NE(FindShader(document_.Materials()[1], selection_.Place(), Catalogue()), nullptr);
}

TEST_F(DocumentTest, EmbeddingAFileShowsTheSameShaders) {
  ASSERT_TRUE(document_.Open(Examples() / "scenes" / "still_life.json"));
  const GraphPlace colour = {.channel = "colour", .inputs = {}};
  ASSERT_EQ(FindShader(document_.Materials()[0], colour, Catalogue()), nullptr);
  commands_.Embed(colour);
  const auto* shader = FindShader(document_.Materials()[0], colour, Catalogue());
  const Json file = Parsed(ReadAll(Examples() / "materials" / "linen.json"));
  ASSERT_NE(shader, nullptr);
  EXPECT_EQ(shader->name, TextMember(file, "shader"));
}

TEST_F(DocumentTest, RecentFilesAreTheLatestFirstAndOnlyThoseThatAreThere) {
  const auto first = Folder() / "1.json", second = Folder() / "2.json";
  WriteAll(first, "");
  WriteAll(second, "");
  for (const auto& file : {first, second, Folder() / "gone.json", first}) {
    AddRecentFile(QString::fromStdString(file.string()));
  }
  EXPECT_EQ(RecentFiles(), (QStringList{QString::fromStdString(first.string()),
                                        QString::fromStdString(second.string())}));
}

}  // namespace
}  // namespace sorvanix::studio
