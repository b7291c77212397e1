// A studio that is killed: while it saves, and with unsaved changes.
#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <set>

#include "apps/studio/document/autosave.h"
#include "apps/studio/document/commands.h"
#include "apps/studio/program/recovery.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

constexpr int kPatience = 60000;  // ms; only a test that fails takes so long

class CrashTest : public StudioTest {
 protected:
  static QString TextOf(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
  }
  void RunSelf(QProcess& process, const char* mode, const std::filesystem::path& argument) {
    process.start(QCoreApplication::applicationFilePath(), {mode, TextOf(argument)});
    ASSERT_TRUE(process.waitForStarted());
  }
};

TEST_F(CrashTest, AKillWhileSavingLeavesTheFormerFileOrTheNewOne) {
  // The two texts that are saved in turn.
  Document document(Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  std::set<std::string> texts = {document.Text()};
  commands.AddMaterial();
  texts.insert(document.Text());

  constexpr int kKills = 12;
  const auto file = Folder() / "scene.json";
  for (int i = 0; i < kKills; ++i) {
    std::filesystem::remove(file);
    QProcess process;
    RunSelf(process, "--save-for-ever", file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(file); }, kPatience));
    QTest::qWait(i);  // another moment of the loop each time
    process.kill();
    process.waitForFinished();
    EXPECT_EQ(texts.count(ReadAll(file)), 1U) << "after kill " << i;
  }
}

TEST_F(CrashTest, AutosaveRecoversTheLastEdit) {
  QProcess process;
  RunSelf(process, "--crash-after-edit", Folder());
  process.waitForFinished(kPatience);
  ASSERT_EQ(process.exitCode(), 1);

  auto left = Autosave::LeftBehind(TextOf(Folder()));
  ASSERT_EQ(left.size(), 1U);
  Rescued& rescued = left.front();
  EXPECT_TRUE(rescued.file.empty());
  Document document(Catalogue());
  ASSERT_TRUE(document.Recover(rescued.text, rescued.file, rescued.diskHash));
  EXPECT_TRUE(document.IsModified()) << "nothing of it is saved yet";
  ASSERT_EQ(MaterialNames(document.Scene()), std::vector<std::string>{"Last words"});
  const GraphPlace colour = {.channel = "colour", .inputs = {}};
  EXPECT_EQ(FindShader(document.Materials()[0], colour, Catalogue())->name, "Tiles");
  EXPECT_TRUE(Autosave::LeftBehind(TextOf(Folder())).empty()) << "another studio recovers it";
  left.clear();
  EXPECT_EQ(Autosave::LeftBehind(TextOf(Folder())).size(), 1U) << "nobody let it go";
  Autosave::LeftBehind(TextOf(Folder())).front().Forget();
  EXPECT_TRUE(Autosave::LeftBehind(TextOf(Folder())).empty());
}

// A document that was changed and kept, and nobody saved.
struct ChangedDocument {
  explicit ChangedDocument(const QString& folder) : autosave(document, folder) {
    commands.AddMaterial();
    autosave.Flush();
  }

  Document document{SharedEngine()->Catalogue()};
  Selection selection{document};
  Commands commands{document, selection};
  Autosave autosave;
};

TEST_F(CrashTest, ARunningStudioIsNotRescued) {
  const ChangedDocument changed(TextOf(Folder()));
  ASSERT_TRUE(QFile::exists(changed.autosave.File()));
  EXPECT_TRUE(Autosave::LeftBehind(TextOf(Folder())).empty());
}

TEST_F(CrashTest, NothingIsLeftBehindByAGoodEndOrASave) {
  {
    ChangedDocument changed(TextOf(Folder()));
    ASSERT_TRUE(changed.document.SaveAs(Folder() / "scene.json"));
    changed.autosave.Flush();
    EXPECT_FALSE(QFile::exists(changed.autosave.File()));
    changed.commands.AddMaterial();
    changed.autosave.Flush();
  }
  EXPECT_EQ(QDir(TextOf(Folder())).entryList(QDir::Files), QStringList{"scene.json"});
}

// Changes come more often than a pause that would start anew with each of them.
TEST_F(CrashTest, WhoNeverRestsIsSavedToo) {
  Document document(Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  const Autosave autosave(document, TextOf(Folder()));
  float strength = 0.25F;
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        strength = 1 - strength;
        commands.SetStrength("colour", strength);
        return QFile::exists(autosave.File());
      },
      kPatience));
}

// What the user answers to the boxes of a recovery, in turn.
class RecoveryTest : public CrashTest {
 protected:
  void Offer(std::vector<QMessageBox::StandardButton> answers) {
    QTimer clicker;
    QObject::connect(&clicker, &QTimer::timeout, &clicker, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      told_.push_back(box->informativeText().toStdString());
      ASSERT_FALSE(answers.empty());
      QAbstractButton* const button = box->button(answers.front());
      answers.erase(answers.begin());
      button->click();
    });
    clicker.start(1);
    OfferRecovery(document_, autosave_, TextOf(Folder()), nullptr);
    EXPECT_TRUE(answers.empty());
  }
  // A scene without a name whose one material is called so.
  void LeaveBehind(const char* file, const std::string& material,
                   const std::string& document = {}) {
    const Json scene = RenameMaterial(NewScene(), 0, material);
    WriteAll(Folder() / file, R"({"file":")" + document + R"(","scene":)" + OneLine(scene) + "}");
  }
  std::vector<std::string> Open() const { return MaterialNames(document_.Scene()); }
  bool IsThere(const char* file) const { return std::filesystem::exists(Folder() / file); }

  Document document_{Catalogue()};
  Autosave autosave_{document_, TextOf(Folder())};
  std::vector<std::string> told_;
};

TEST_F(RecoveryTest, WhatIsRecoveredIsInTheAutosaveOfThisStudioBeforeItGoes) {
  LeaveBehind("autosave-1.json", "Lost");
  Offer({QMessageBox::Yes});
  EXPECT_EQ(Open(), std::vector<std::string>{"Lost"});
  EXPECT_FALSE(IsThere("autosave-1.json"));
  EXPECT_TRUE(QFile::exists(autosave_.File()));
}

TEST_F(RecoveryTest, DiscardLetsItGoAndCancelKeepsIt) {
  LeaveBehind("autosave-1.json", "Lost");
  Offer({QMessageBox::Cancel});
  EXPECT_TRUE(IsThere("autosave-1.json"));
  Offer({QMessageBox::Discard});
  EXPECT_FALSE(IsThere("autosave-1.json"));
  EXPECT_EQ(Open(), std::vector<std::string>{"Material"});
}

TEST_F(RecoveryTest, ADamagedOneIsToldAndKeptUnderAnotherName) {
  WriteAll(Folder() / "autosave-1.json", "{ \"scene\":");
  Offer({QMessageBox::Ok});
  EXPECT_FALSE(IsThere("autosave-1.json"));
  EXPECT_TRUE(IsThere("autosave-1.json.damaged"));
  EXPECT_NE(told_[0].find("autosave-1.json.damaged"), std::string::npos);
}

// A mesh or a bitmap of it may lie on a disk that is not there today.
TEST_F(RecoveryTest, WhatCannotBeOpenedNowIsKept) {
  WriteAll(Folder() / "autosave-1.json",
           R"({"file":"","scene":{"format":"sorvanix-scene","version":1,"materials":[{"name":"M",
              "channels":{"colour":{"graph":"/gone/bark.png"}}}]}})");
  Offer({QMessageBox::Yes, QMessageBox::Ok});
  EXPECT_TRUE(IsThere("autosave-1.json"));
  EXPECT_NE(told_[1].find("bark.png"), std::string::npos);
  EXPECT_EQ(Open(), std::vector<std::string>{"Material"}) << "the open document is untouched";
}

TEST_F(RecoveryTest, OfTwoTheSecondIsOfferedWhenTheFirstIsNotWanted) {
  LeaveBehind("autosave-1.json", "First");
  LeaveBehind("autosave-2.json", "Second");
  Offer({QMessageBox::Discard, QMessageBox::Yes});
  EXPECT_FALSE(IsThere("autosave-1.json"));
  EXPECT_FALSE(IsThere("autosave-2.json"));
  EXPECT_NE(Open(), std::vector<std::string>{"Material"});
}

// Its file may have been changed since the crash: saving must ask then.
TEST_F(RecoveryTest, WhatWasOnTheDiskBeforeTheCrashIsRemembered) {
  const auto file = Folder() / "scene.json";
  WriteAll(file, "what another program wrote");
  LeaveBehind("autosave-1.json", "Lost", file.string());
  Offer({QMessageBox::Yes});
  EXPECT_EQ(document_.File(), file);
  EXPECT_TRUE(document_.IsChangedOnDisk());
}

}  // namespace
}  // namespace sorvanix::studio
