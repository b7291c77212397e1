#include "apps/studio/document/document.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QSignalSpy>
#include <csignal>
#include <ostream>

#include "apps/studio/document/commands.h"
#include "apps/studio/document/recent_files.h"
#include "host/scene/binary_document.h"
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

class BinaryDocumentTest : public DocumentTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(document_.Open(Examples() / "scenes" / "still_life.json"));
    ASSERT_TRUE(document_.SaveAs(file_));
    ASSERT_TRUE(host::IsBinaryDocument(ReadAll(file_)));
  }
  const std::filesystem::path file_ = Folder() / "scene.svx";
};

TEST_F(BinaryDocumentTest, OpensToTheSameScene) {
  Document other(Catalogue());
  ASSERT_TRUE(other.Open(file_));
  EXPECT_EQ(OneLine(other.Scene()), OneLine(document_.Scene()));
}

TEST_F(BinaryDocumentTest, UndoingToTheStartGivesTheBytesOfTheFirstSave) {
  const std::string first = ReadAll(file_);
  ASSERT_TRUE(document_.Open(file_));
  Edit();
  ASSERT_TRUE(document_.SaveAs(file_));
  EXPECT_NE(ReadAll(file_), first);
  UndoAll();
  ASSERT_TRUE(document_.SaveAs(file_));
  EXPECT_EQ(ReadAll(file_), first);
}

TEST_F(BinaryDocumentTest, SavedUnderAnotherNameItIsJson) {
  ASSERT_TRUE(document_.Open(file_));
  ASSERT_TRUE(document_.SaveAs(Folder() / "scene.json"));
  EXPECT_EQ(ReadAll(Folder() / "scene.json").front(), '{');
}

TEST_F(BinaryDocumentTest, ADamagedOneIsToldAndLeavesTheDocumentUntouched) {
  std::string bytes = ReadAll(file_);
  bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
  WriteAll(Folder() / "bad.svx", bytes);
  const std::string before = document_.Text();
  const auto opened = document_.Open(Folder() / "bad.svx");
  ASSERT_FALSE(opened);
  EXPECT_THAT(opened.error(), HasSubstr("bad.svx"));
  EXPECT_EQ(document_.Text(), before);
}

// A scene of a later program: members, an object, a channel and a shader that nobody knows today.
constexpr const char* kLater = R"({"format":"sorvanix-scene","version":2,"mood":"calm",
  "materials":[{"name":"M","finish":3,"channels":{
    "colour":{"tint":1,"graph":{"shader":"Hue","glow":2,"input":{"shader":"2D Noise"}}},
    "bump":{"graph":{"shader":"Fabric","weave":4}}, "sheen":{"amount":1}}}],
  "objects":[{"kind":"cloud","density":0.5,"children":[
    {"kind":"sphere","textures":[{"material":"M","wrap":"tight"}]}]}]})";

class LaterDocumentTest : public DocumentTest {
 protected:
  void SetUp() override {
    WriteAll(file_, kLater);
    ASSERT_TRUE(document_.Open(file_));
  }
  // What the later program wrote.
  static void ExpectAllKept(const std::string& text) {
    for (const char* kept :
         {"\"version\":2", "\"mood\":\"calm\"", "\"finish\":3", "\"tint\":1", "\"weave\":4",
          "\"sheen\":{\"amount\":1}", "\"density\":0.5", "\"wrap\":\"tight\""}) {
      EXPECT_THAT(text, HasSubstr(kept));
    }
  }
  const std::filesystem::path file_ = Folder() / "later.json";
};

TEST_F(LaterDocumentTest, WhatIsDoubtfulIsTold) {
  for (const char* name : {"/version", "/mood", "finish", "Fabric", "sheen", "cloud"}) {
    EXPECT_THAT(document_.Warnings(), HasSubstr(name));
  }
  document_.New();
  EXPECT_EQ(document_.Warnings(), "");
}

TEST_F(LaterDocumentTest, EverythingUnknownStaysThroughEditsAndSaving) {
  commands_.SetStrength("colour", 0.5F);
  commands_.Wrap({.channel = "colour", .inputs = {}}, "Colorizer");
  commands_.SwitchChannel("bump", false);
  commands_.PlaceShader({.channel = "diffusion", .inputs = {}}, "Tiles");
  commands_.AddMaterial();
  commands_.RenameMaterial(0, "Renamed");
  ASSERT_EQ(document_.History().count(), 6);
  const auto saved = Folder() / "saved.json";
  ASSERT_TRUE(document_.SaveAs(saved));
  const std::string text = OneLine(Parsed(ReadAll(saved)));
  ExpectAllKept(text);
  EXPECT_THAT(text, HasSubstr("\"glow\":2"));
  EXPECT_TRUE(Document(Catalogue()).Open(saved));
}

TEST_F(LaterDocumentTest, UndoingToTheStartGivesItsBytes) {
  commands_.SetStrength("colour", 0.5F);
  commands_.RenameMaterial(0, "Renamed");
  UndoAll();
  ASSERT_TRUE(document_.SaveAs(file_));
  EXPECT_EQ(ReadAll(file_), kLater);
}

TEST_F(LaterDocumentTest, ItGoesThroughTheBinaryFormToo) {
  ASSERT_TRUE(document_.SaveAs(Folder() / "later.svx"));
  Document other(Catalogue());
  ASSERT_TRUE(other.Open(Folder() / "later.svx"));
  ExpectAllKept(OneLine(other.Scene()));
}

class DiskTest : public DocumentTest {
 protected:
  void SetUp() override { ASSERT_TRUE(document_.SaveAs(file_)); }
  const std::filesystem::path file_ = Folder() / "scene.json";
};

TEST_F(DiskTest, TheFileIsComparedWithWhatWasReadOrWritten) {
  EXPECT_FALSE(document_.IsChangedOnDisk());
  ASSERT_TRUE(document_.Open(file_));
  EXPECT_FALSE(document_.IsChangedOnDisk());
  Edit();
  ASSERT_TRUE(document_.SaveAs(file_));
  EXPECT_FALSE(document_.IsChangedOnDisk());
  WriteAll(file_, ReadAll(file_) + ' ');
  EXPECT_TRUE(document_.IsChangedOnDisk());
  std::filesystem::remove(file_);
  EXPECT_FALSE(document_.IsChangedOnDisk()) << "saving loses nothing then";
}

TEST_F(DiskTest, AWriteProtectedFileStaysAsItIs) {
  const std::string before = ReadAll(file_);
  std::filesystem::permissions(file_, std::filesystem::perms::owner_read);
  Edit();
  const auto saved = document_.SaveAs(file_);
  ASSERT_FALSE(saved);
  EXPECT_THAT(saved.error(), HasSubstr("scene.json: is write-protected"));
  EXPECT_EQ(ReadAll(file_), before);
  EXPECT_TRUE(document_.IsModified());
}

// A disk is full as a process may write no more: both refuse the bytes.
TEST_F(DiskTest, AFullDiskLeavesTheFormerFileAndTheChanges) {
  const std::string before = ReadAll(file_);
  Edit();
  const std::string edited = document_.Text();
  rlimit usual{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full = {100, usual.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  const auto saved = document_.SaveAs(file_);
  setrlimit(RLIMIT_FSIZE, &usual);
  std::signal(SIGXFSZ, former);
  ASSERT_FALSE(saved);
  EXPECT_THAT(saved.error(), HasSubstr("scene.json: cannot be written"));
  EXPECT_EQ(ReadAll(file_), before);
  EXPECT_TRUE(document_.IsModified());
  EXPECT_EQ(document_.Text(), edited);
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(Folder())) ++files;
  EXPECT_EQ(files, 1U) << "nothing half-written is left";
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

struct BadFile {
  const char* text;
  const char* place;     // file, line and column, pointer
  const char* expected;  // what the message says

  friend std::ostream& operator<<(std::ostream& stream, const BadFile& file) {
    return stream << file.text;
  }
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
