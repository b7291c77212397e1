// The studio as a program: scripts, and the pictures of its window that people look at.
#include <gmock/gmock.h>

#include <QImage>
#include <QProcess>

#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

using testing::HasSubstr;

constexpr int kPatience = 600000;  // ms; only a test that fails takes so long

class ProgramTest : public StudioTest {
 protected:
  // The exit code; what it said is in `said_`.
  int Run(const QStringList& arguments, const char* scale = "1") {
    environment_.insert("QT_SCALE_FACTOR", scale);
    QProcess process;
    process.setProcessEnvironment(environment_);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(SORVANIX_STUDIO_PATH, arguments);
    if (!process.waitForFinished(kPatience)) return -1;
    said_ = process.readAll().toStdString();
    return process.exitCode();
  }
  int RunSteps(const std::string& steps) {
    const auto file = Folder() / "script.json";
    WriteAll(file, steps);
    return Run({"--script", file.c_str()});
  }
  std::string Quoted(const std::filesystem::path& path) { return '"' + path.string() + '"'; }

  QProcessEnvironment environment_ = QProcessEnvironment::systemEnvironment();
  std::string said_;
};

TEST_F(ProgramTest, AScriptEditsUndoesAndSaves) {
  const auto first = Folder() / "first.json", edited = Folder() / "edited.json",
             undone = Folder() / "undone.json";
  ASSERT_EQ(RunSteps("[{\"open\":" + Quoted(Examples() / "scenes" / "toy_shelf.json") +
                     "},{\"save\":" + Quoted(first) +
                     R"(},{"select":"diffusion"},{"place":"Gradient"},{"wrap":"Hue"},
                         {"select":"diffusion/input"},{"place":"Tiles"},{"add":0},
                         {"rename":"New one"},{"save":)" +
                     Quoted(edited) + "},{\"undo\":5},{\"save\":" + Quoted(undone) + "}]"),
            0)
      << said_;
  EXPECT_EQ(ReadAll(undone), ReadAll(first));
  EXPECT_THAT(ReadAll(edited), HasSubstr("New one"));
}

TEST_F(ProgramTest, AStepThatFailsIsTold) {
  EXPECT_EQ(RunSteps(R"([{"select":"bump"},{"wrap":"Hue"}])"), 3);
  EXPECT_THAT(said_, HasSubstr("script.json:1:20: wrap: there is nothing at bump"));
  EXPECT_EQ(RunSteps(R"([{"slect":"bump"}])"), 3);
  EXPECT_THAT(said_, HasSubstr("did you mean \"select\"?"));
  EXPECT_EQ(RunSteps("[{\"add\":0},\n  {\"undo\":\"all\"}]"), 3);
  EXPECT_THAT(said_, HasSubstr("script.json:2:3: undo: expected a number"));
  EXPECT_EQ(RunSteps("[{\"add\":0},\n {\"save\" 1}]"), 3);
  EXPECT_THAT(said_, HasSubstr("script.json:2:"));
  EXPECT_EQ(RunSteps(R"([{"object":"Tours"}])"), 3);
  EXPECT_THAT(said_, HasSubstr("did you mean \"Torus\"?"));
  EXPECT_EQ(RunSteps(R"([{"delete":0},{"rename":"Gone"}])"), 3);
  EXPECT_THAT(said_, HasSubstr("There is no material."));
  EXPECT_EQ(RunSteps(R"([{"save":"/gone/scene.json"}])"), 5);
  EXPECT_EQ(Run({"--script", "gone.json"}), 5);
  EXPECT_THAT(said_, HasSubstr("gone.json: cannot be read"));
}

TEST_F(ProgramTest, HelpAndVersionNeedNeitherAScreenNorTheModule) {
  environment_.remove("QT_QPA_PLATFORM");
  environment_.remove("DISPLAY");
  environment_.remove("WAYLAND_DISPLAY");
  environment_.insert("SORVANIX_MODULE", "/gone.so");
  EXPECT_EQ(Run({"--help"}), 0);
  for (const char* option : {"--module", "--script", "--screenshot", "--appearance", "--size"}) {
    EXPECT_THAT(said_, HasSubstr(option));
  }
  EXPECT_EQ(Run({"--version"}), 0);
  EXPECT_THAT(said_, HasSubstr("sorvaNIX Studio"));
}

TEST_F(ProgramTest, AMisusedCommandLineIsTold) {
  for (const QStringList& arguments : {QStringList{"--nonsense"},
                                       {"--size", "wide"},
                                       {"--appearance", "pink"},
                                       {"a.json", "b.json"},
                                       {"--script"}}) {
    EXPECT_EQ(Run(arguments), 2) << arguments.join(' ').toStdString();
    EXPECT_THAT(said_, HasSubstr("sorvanix-studio: "));
  }
}

TEST_F(ProgramTest, AScreenshotThatCannotBeWrittenIsTold) {
  WriteAll(Folder() / "file", "");
  EXPECT_EQ(
      RunSteps("[{\"samples\":1},{\"screenshot\":" + Quoted(Folder() / "file" / "a.png") + "}]"),
      5);
  EXPECT_THAT(said_, HasSubstr("a.png: cannot be written"));
}

TEST_F(ProgramTest, WarningsOfAFileAreTold) {
  WriteAll(Folder() / "later.json", R"({"format":"sorvanix-scene","version":2,"mood":1})");
  WriteAll(Folder() / "nothing.json", "[]");
  EXPECT_EQ(
      Run({"--script", (Folder() / "nothing.json").c_str(), (Folder() / "later.json").c_str()}), 0);
  EXPECT_THAT(said_, HasSubstr("/mood"));
}

TEST_F(ProgramTest, ABadFileAndAModuleThatIsNotThereAreTold) {
  WriteAll(Folder() / "bad.json", "{");
  EXPECT_EQ(Run({"--screenshot", "never.png", (Folder() / "bad.json").c_str()}), 3);
  EXPECT_THAT(said_, HasSubstr("bad.json:1:2"));
  EXPECT_EQ(Run({"--screenshot", "never.png", "gone.json"}), 5);
  EXPECT_THAT(said_, HasSubstr("gone.json"));
  EXPECT_EQ(Run({"--screenshot", "never.png", "--module", "gone.so"}), 4);
  EXPECT_THAT(said_, HasSubstr("gone.so"));
}

struct Look {
  const char* appearance;
  const char* scale;
};

class ScreenshotTest : public ProgramTest, public testing::WithParamInterface<Look> {};

// The picture is for people; that nothing is missing in it is for this test.
TEST_P(ScreenshotTest, OfTheMainWindow) {
  const auto [appearance, scale] = GetParam();
  const auto file = std::filesystem::path(SORVANIX_SOURCE_FOLDER) / "out" / "screenshots" /
                    (std::string("studio_") + appearance + "_" + scale + "x.png");
  WriteAll(Folder() / "look.json",
           R"([{"samples":1},{"material":2},{"select":"colour"},{"embed":0},{"screenshot":)" +
               Quoted(file) + "}]");
  ASSERT_EQ(Run({"--appearance", appearance, "--script", (Folder() / "look.json").c_str(),
                 (Examples() / "scenes" / "still_life.json").c_str()},
                scale),
            0)
      << said_;
  const QImage image(file.c_str());
  EXPECT_EQ(image.size(), QSize(1320, 820) * std::stoi(scale));
}

INSTANTIATE_TEST_SUITE_P(All, ScreenshotTest,
                         testing::Values(Look{"light", "1"}, Look{"dark", "1"}, Look{"light", "2"},
                                         Look{"dark", "2"}),
                         [](const auto& look) {
                           return std::string(look.param.appearance) + look.param.scale;
                         });

}  // namespace
}  // namespace sorvanix::studio
