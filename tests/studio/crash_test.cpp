// A studio that is killed: while it saves, and with unsaved changes.
#include <QDir>
#include <QProcess>
#include <QTest>
#include <set>

#include "apps/studio/document/autosave.h"
#include "apps/studio/document/commands.h"
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

  const auto rescued = Autosave::TakeRescued(TextOf(Folder()));
  ASSERT_TRUE(rescued);
  EXPECT_TRUE(rescued->file.empty());
  Document document(Catalogue());
  ASSERT_TRUE(document.Recover(rescued->text, rescued->file));
  EXPECT_TRUE(document.IsModified()) << "nothing of it is saved yet";
  ASSERT_EQ(MaterialNames(document.Scene()), std::vector<std::string>{"Last words"});
  const GraphPlace colour = {.channel = "colour", .inputs = {}};
  EXPECT_EQ(FindShader(document.Materials()[0], colour, Catalogue())->name, "Tiles");
  EXPECT_FALSE(Autosave::TakeRescued(TextOf(Folder()))) << "it is rescued once";
}

TEST_F(CrashTest, ARunningStudioIsNotRescued) {
  Document document(Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  Autosave autosave(document, TextOf(Folder()));
  commands.AddMaterial();
  autosave.Flush();
  ASSERT_TRUE(QFile::exists(autosave.File()));
  EXPECT_FALSE(Autosave::TakeRescued(TextOf(Folder())));
}

TEST_F(CrashTest, NothingIsLeftBehindByAGoodEndOrASave) {
  {
    Document document(Catalogue());
    Selection selection(document);
    Commands commands(document, selection);
    Autosave autosave(document, TextOf(Folder()));
    commands.AddMaterial();
    autosave.Flush();
    ASSERT_TRUE(document.SaveAs(Folder() / "scene.json"));
    autosave.Flush();
    EXPECT_FALSE(QFile::exists(autosave.File()));
    commands.AddMaterial();
    autosave.Flush();
  }
  EXPECT_EQ(QDir(TextOf(Folder())).entryList(QDir::Files), QStringList{"scene.json"});
}

TEST_F(CrashTest, AnAutosaveThatIsNoJsonIsLeftOut) {
  WriteAll(Folder() / "autosave-1.json", "{ \"scene\":");
  EXPECT_FALSE(Autosave::TakeRescued(TextOf(Folder())));
}

}  // namespace
}  // namespace sorvanix::studio
