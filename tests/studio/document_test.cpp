// A document under its commands: history, one step for each change, what commands refuse.
#include <gmock/gmock.h>

#include <QSignalSpy>

#include "apps/studio/document/recent_files.h"
#include "host/scene/scene_file.h"
#include "tests/studio/document_fixture.h"

namespace sorvanix::studio {
namespace {

using testing::HasSubstr;

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
  int seen = 0;
  for (const auto& entry : std::filesystem::directory_iterator(Examples() / "scenes")) {
    const auto& file = entry.path();
    if (file.extension() != ".json") continue;
    ++seen;
    ASSERT_TRUE(document_.Open(file)) << file;
    Edit();
    ASSERT_GE(document_.History().count(), 6) << file;
    ASSERT_NE(document_.Text(), ReadAll(file)) << file;
    UndoAll();
    EXPECT_EQ(document_.Text(), ReadAll(file)) << file;
    EXPECT_EQ(document_.Warnings(), "") << file;
  }
  EXPECT_GE(seen, 10);
}

TEST_F(DocumentTest, AnotherDocumentBeginsAtItsFirstMaterial) {
  Edit();
  selection_.SetMaterial(1);
  selection_.SetPlace({.channel = "bump", .inputs = {}});
  ASSERT_TRUE(document_.Open(Examples() / "scenes" / "still_life.json"));
  EXPECT_EQ(selection_.Material(), 0);
  EXPECT_EQ(selection_.Place().channel, "colour");
}

TEST_F(DocumentTest, MaterialsMoveInTheirList) {
  for (const char* name : {"B", "C"}) {
    commands_.AddMaterial();
    commands_.RenameMaterial(selection_.Material(), name);
  }
  const std::string before = document_.Text();
  commands_.MoveMaterial(1);
  EXPECT_EQ(document_.Text(), before) << "the last one stays the last";
  commands_.MoveMaterial(-1);
  commands_.MoveMaterial(-1);
  EXPECT_EQ(MaterialNames(document_.Scene()), (std::vector<std::string>{"C", "Material", "B"}));
  EXPECT_EQ(selection_.Material(), 0) << "the moved one stays selected";
  commands_.MoveMaterial(1);
  commands_.MoveMaterial(1);
  EXPECT_EQ(document_.Text(), before);
}

TEST_F(DocumentTest, WithoutAMaterialEveryCommandComplains) {
  commands_.RemoveMaterial();
  ASSERT_TRUE(document_.Materials().empty());
  const QSignalSpy complaints(&commands_, &Commands::Complained);
  commands_.RenameMaterial(selection_.Material(), "Name");
  commands_.DuplicateMaterial();
  commands_.RemoveMaterial();
  commands_.MoveMaterial(1);
  commands_.PlaceShader(selection_.Place(), "Tiles");
  commands_.TakeShader(selection_.Place(), "Hue");
  EXPECT_EQ(complaints.count(), 6);
  document_.History().undo();
  EXPECT_EQ(document_.Materials().size(), 1U);
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

// A turn of the wheel over the field changes the strength many times.
TEST_F(DocumentTest, AStrengthThatIsChangedInManyStepsIsOneStep) {
  ASSERT_TRUE(document_.SaveAs(Folder() / "scene.json"));
  for (const float strength : {0.9F, 0.8F, 0.7F}) commands_.SetStrength("colour", strength);
  EXPECT_EQ(document_.History().count(), 1);
  EXPECT_EQ(StrengthOf(*selection_.MaterialJson(), "colour"), 0.7F);
  commands_.PlaceShader({.channel = "bump", .inputs = {}}, "Tiles");
  commands_.SetStrength("bump", 0.5F);
  commands_.SetStrength("colour", 0.5F);
  EXPECT_EQ(document_.History().count(), 4) << "of different channels";
  document_.History().setIndex(1);
  EXPECT_EQ(StrengthOf(*selection_.MaterialJson(), "colour"), 0.7F);
  document_.History().undo();
  EXPECT_FALSE(document_.IsModified());
  EXPECT_EQ(document_.Text(), ReadAll(Folder() / "scene.json"));
}

TEST_F(DocumentTest, AfterSavingASeriesBeginsAnew) {
  commands_.SetStrength("colour", 0.9F);
  ASSERT_TRUE(document_.SaveAs(Folder() / "scene.json"));
  commands_.SetStrength("colour", 0.8F);
  EXPECT_TRUE(document_.IsModified());
  document_.History().undo();
  EXPECT_FALSE(document_.IsModified());
  EXPECT_EQ(StrengthOf(*selection_.MaterialJson(), "colour"), 0.9F);
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
  ASSERT_TRUE(commands_.AddMaterialFile(Examples() / "graphs" / "embers.json"));
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
