// Runs the tests of the studio, without a screen and away from the user's own files. Two modes play
// a studio that ends badly, for tests that start this program as a process:
//
//     --save-for-ever FILE     saves two scenes to a file in turn until it is killed
//     --crash-after-edit DIR   edits a new scene, lets autosave write it to a folder, and dies
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "apps/studio/document/autosave.h"
#include "apps/studio/document/commands.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

[[noreturn]] void SaveForEver(const std::string& file) {
  Document document(SharedEngine()->Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  while (true) {
    if (!document.SaveAs(file)) std::_Exit(1);
    if (document.Materials().size() == 1) {
      commands.AddMaterial();
    } else {
      document.History().undo();
    }
  }
}

[[noreturn]] void CrashAfterEdit(const std::string& folder) {
  Document document(SharedEngine()->Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  Autosave autosave(document, QString::fromStdString(folder));
  commands.PlaceShader(selection.Place(), "Tiles");
  commands.RenameMaterial(0, "Last words");
  autosave.Flush();
  std::_Exit(1);
}

}  // namespace
}  // namespace sorvanix::studio

int main(int argumentCount, char** arguments) {
  using namespace sorvanix::studio;
  testing::InitGoogleTest(&argumentCount, arguments);
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
  qputenv("SORVANIX_MODULE", SORVANIX_MODULE_PATH);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argumentCount, arguments);
  QApplication::setOrganizationName("sorvaNIX");
  QApplication::setApplicationName("Studio tests");
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();

  auto engine = Engine::Load(SORVANIX_MODULE_PATH);
  if (!engine) return 1;
  SharedEngine() = std::move(*engine);
  if (argumentCount == 3 && arguments[1] == std::string("--save-for-ever")) {
    SaveForEver(arguments[2]);
  }
  if (argumentCount == 3 && arguments[1] == std::string("--crash-after-edit")) {
    CrashAfterEdit(arguments[2]);
  }
  const int result = RUN_ALL_TESTS();
  SharedEngine().reset();
  return result;
}
