#include "apps/studio/program/studio.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTextStream>
#include <optional>

#include "apps/studio/dialogs/message_boxes.h"
#include "apps/studio/dialogs/qt_dialogs.h"
#include "apps/studio/document/autosave.h"
#include "apps/studio/program/script.h"
#include "apps/studio/window/main_window.h"
#include "apps/studio/window/theme.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

enum ExitCode { kDone = 0, kInvalidInput = 3, kNoModule = 4 };

constexpr double kScreenshotWait = 120;  // seconds

std::filesystem::path PathOf(const QString& text) { return host::PathFromUtf8(text.toStdString()); }

void Complain(const std::string& text) {
  QTextStream(stderr) << "sorvanix-studio: " << QString::fromStdString(text) << Qt::endl;
}

struct Options {
  QString module, script, screenshot, appearance, size;
  QString file;

  // A run of a script or for a picture asks nobody.
  bool IsUnattended() const { return !script.isEmpty() || !screenshot.isEmpty(); }
};

Options ParseOptions(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Makes materials from procedural shaders, in a window.");
  const QCommandLineOption module("module", "The module's file (or set SORVANIX_MODULE)", "file");
  const QCommandLineOption script("script", "Run the steps of a JSON file, then end", "file");
  const QCommandLineOption screenshot("screenshot", "Save a picture of the window, then end",
                                      "file");
  const QCommandLineOption appearance("appearance", "light, dark or system", "name");
  const QCommandLineOption size("size", "Size of the window in points", "WxH");
  parser.addOptions({module, script, screenshot, appearance, size});
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument("file", "A scene or a material to open", "[file]");
  parser.process(application);
  return {.module = parser.value(module),
          .script = parser.value(script),
          .screenshot = parser.value(screenshot),
          .appearance = parser.value(appearance),
          .size = parser.value(size),
          .file = parser.positionalArguments().value(0)};
}

void Recover(Workshop& workshop, MainWindow& window, const QString& folder) {
  const auto rescued = Autosave::TakeRescued(folder);
  if (!rescued) return;
  const QString name = rescued->file.empty()
                           ? QObject::tr("a scene without a name")
                           : QString::fromStdString(host::Utf8FromPath(rescued->file.filename()));
  const auto answer = QMessageBox::question(
      &window, QObject::tr("Recover Changes"),
      QObject::tr("The studio did not end well. Recover the unsaved changes to %1?").arg(name),
      QMessageBox::Yes | QMessageBox::Discard, QMessageBox::Yes);
  if (answer != QMessageBox::Yes) return;
  if (const auto recovered = workshop.document.Recover(rescued->text, rescued->file); !recovered) {
    QMessageBox::warning(&window, QObject::tr("Recover Changes"),
                         QString::fromStdString(recovered.error()));
  }
}

int RunUnattended(const Options& options, Workshop& workshop, MainWindow& window) {
  window.NeverAsk();
  tl::expected<void, std::string> result;
  if (!options.file.isEmpty()) result = workshop.document.Open(PathOf(options.file));
  if (result && !options.script.isEmpty()) {
    result = RunScript(PathOf(options.script), workshop, window);
  }
  if (result && !options.screenshot.isEmpty()) {
    WaitUntilPainted(workshop, window, kScreenshotWait);
    result = SaveScreenshot(window, PathOf(options.screenshot));
  }
  if (result) return kDone;
  Complain(result.error());
  return kInvalidInput;
}

int RunAttended(const Options& options, Workshop& workshop, MainWindow& window) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  const MessageBoxes messages;
  Autosave autosave(workshop.document, folder);
  Recover(workshop, window, folder);
  autosave.Flush();
  if (!options.file.isEmpty()) window.Files().OpenFile(PathOf(options.file));
  return QApplication::exec();
}

}  // namespace

int RunStudio(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  QApplication::setOrganizationName("sorvaNIX");
  QApplication::setApplicationName("Studio");
  QApplication::setApplicationVersion(SORVANIX_VERSION);
  const Options options = ParseOptions(application);
  Show(options.appearance.isEmpty() ? ChosenAppearance() : AppearanceNamed(options.appearance));

  const auto engine = Engine::Load(options.module.toStdString());
  if (!engine) {
    Complain(engine.error());
    if (!options.IsUnattended()) {
      QMessageBox::critical(nullptr, "sorvaNIX Studio", QString::fromStdString(engine.error()));
    }
    return kNoModule;
  }
  Workshop workshop(**engine);
  QtDialogs service({.catalogue = (*engine)->Catalogue(),
                     .places = [&] { return host::MaterialPlaces{workshop.document.File(), {}}; }});
  const host::ThreadDialogService dialogs(service);
  OwnDialogs editor;
  MainWindow window(workshop, editor);
  const QStringList sides = options.size.split('x');
  window.resize(sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : window.sizeHint());
  window.show();
  return options.IsUnattended() ? RunUnattended(options, workshop, window)
                                : RunAttended(options, workshop, window);
}

}  // namespace sorvanix::studio
