// A document and its file: the compact form, later versions, bad files, disks that fail.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QSignalSpy>
#include <csignal>
#include <ostream>

#include "host/scene/binary_document.h"
#include "host/scene/scene_file.h"
#include "tests/studio/document_fixture.h"

namespace sorvanix::studio {
namespace {

using testing::HasSubstr;

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

}  // namespace
}  // namespace sorvanix::studio
