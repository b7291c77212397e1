#include "apps/studio/program/studio.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextStream>
#include <optional>
#include <string_view>
#include <utility>

#include "apps/studio/dialogs/message_boxes.h"
#include "apps/studio/dialogs/qt_dialogs.h"
#include "apps/studio/document/autosave.h"
#include "apps/studio/program/recovery.h"
#include "apps/studio/program/script.h"
#include "apps/studio/window/main_window.h"
#include "apps/studio/window/theme.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

using cli::ExitCode;

constexpr double kScreenshotWait = 120;  // seconds

std::filesystem::path PathOf(const QString& text) { return host::PathFromUtf8(text.toStdString()); }

void Complain(const std::string& text) {
  QTextStream(stderr) << "sorvanix-studio: " << QString::fromStdString(text) << Qt::endl;
}

struct Options {
  QString module, script, screenshot;
  std::optional<Appearance> appearance;
  QSize size;  // of the window, or nothing
  QString file;

  // A run of a script or for a picture asks nobody.
  bool IsUnattended() const { return !script.isEmpty() || !screenshot.isEmpty(); }
};

// What is wrong with the command line is a failure; one without a message has been answered.
tl::expected<Options, cli::Failure> ParseOptions(const QApplication& application) {
  const auto misused = [](const QString& why) {
    return tl::unexpected(cli::Failure{ExitCode::Usage, why.toStdString()});
  };
  QCommandLineParser parser;
  parser.setApplicationDescription("Makes materials from procedural shaders, in a window.");
  const QCommandLineOption module("module", "The module's file (or set SORVANIX_MODULE)", "file");
  const QCommandLineOption script("script", "Run the steps of a JSON file, then end", "file");
  const QCommandLineOption screenshot("screenshot", "Save a picture of the window, then end",
                                      "file");
  const QCommandLineOption appearance("appearance", "light, dark or system", "name");
  const QCommandLineOption size("size", "Size of the window in points", "WxH");
  parser.addOptions({module, script, screenshot, appearance, size});
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  parser.addPositionalArgument("file", "A scene or a material to open", "[file]");
  if (!parser.parse(application.arguments())) return misused(parser.errorText());
  if (parser.isSet(help) || parser.isSet(version)) {
    QTextStream(stdout) << (parser.isSet(help)
                                ? parser.helpText()
                                : QString("sorvaNIX Studio %1\n").arg(SORVANIX_VERSION));
    return tl::unexpected(cli::Failure{ExitCode::Done, {}});
  }
  if (parser.positionalArguments().size() > 1) return misused("one file at a time");
  Options options = {.module = parser.value(module),
                     .script = parser.value(script),
                     .screenshot = parser.value(screenshot),
                     .appearance = std::nullopt,
                     .size = {},
                     .file = parser.positionalArguments().value(0)};
  if (parser.isSet(appearance)) {
    options.appearance = AppearanceNamed(parser.value(appearance));
    if (!options.appearance) return misused("--appearance: expected light, dark or system");
  }
  if (parser.isSet(size)) {
    const auto sides = QRegularExpression("^([0-9]{3,5})x([0-9]{3,5})$").match(parser.value(size));
    if (!sides.hasMatch()) return misused("--size: expected a size such as 1320x820");
    options.size = {sides.captured(1).toInt(), sides.captured(2).toInt()};
  }
  return options;
}

tl::expected<void, cli::Failure> OpenFile(const QString& name, Document& document) {
  const auto file = PathOf(name);
  std::error_code error;
  const bool isThere = std::filesystem::exists(file, error);
  if (const auto opened = document.Open(file); !opened) {
    return tl::unexpected(
        cli::Failure{isThere ? ExitCode::InvalidInput : ExitCode::FileTrouble, opened.error()});
  }
  if (!document.Warnings().empty()) Complain(document.Warnings());
  return {};
}

ExitCode RunUnattended(const Options& options, Workshop& workshop, MainWindow& window) {
  window.NeverAsk();
  tl::expected<void, cli::Failure> result;
  if (!options.file.isEmpty()) result = OpenFile(options.file, workshop.document);
  if (result && !options.script.isEmpty()) {
    result = RunScript(PathOf(options.script), workshop, window);
  }
  if (result && !options.screenshot.isEmpty()) {
    WaitUntilPainted(workshop, window, kScreenshotWait);
    result = SaveScreenshot(window, PathOf(options.screenshot)).map_error([](std::string why) {
      return cli::Failure{ExitCode::FileTrouble, std::move(why)};
    });
  }
  if (result) return ExitCode::Done;
  Complain(result.error().message);
  return result.error().code;
}

ExitCode RunAttended(const Options& options, Workshop& workshop, MainWindow& window) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  const MessageBoxes messages;
  Autosave autosave(workshop.document, folder);
  OfferRecovery(workshop.document, autosave, folder, &window);
  if (!options.file.isEmpty()) window.Files().OpenFile(PathOf(options.file));
  return static_cast<ExitCode>(QApplication::exec());
}

ExitCode Run(const Options& options) {
  Show(options.appearance.value_or(ChosenAppearance()));
  const auto engine = Engine::Load(options.module.toStdString());
  if (!engine) {
    Complain(engine.error());
    if (!options.IsUnattended()) {
      QMessageBox::critical(nullptr, "sorvaNIX Studio", QString::fromStdString(engine.error()));
    }
    return ExitCode::NoModule;
  }
  Workshop workshop(**engine);
  QtDialogs service({.catalogue = (*engine)->Catalogue(), .places = [&] {
                       return host::MaterialPlaces{workshop.document.File(), {}};
                     }});
  const host::ThreadDialogService dialogs(service);
  OwnDialogs editor;
  MainWindow window(workshop, editor);
  window.resize(window.sizeHint());
  if (!options.IsUnattended()) window.RestoreLayout();
  if (options.size.isValid()) window.resize(options.size);
  window.show();
  return options.IsUnattended() ? RunUnattended(options, workshop, window)
                                : RunAttended(options, workshop, window);
}

// What is asked on a terminal, and what nobody looks at, needs no screen.
void DoWithoutScreen(int argumentCount, char** arguments) {
  if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY") ||
      qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
    return;
  }
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view word = arguments[i];
    if (word == "-h" || word == "--help" || word == "-v" || word == "--version" ||
        word.starts_with("--script") || word.starts_with("--screenshot")) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
    }
  }
}

}  // namespace

int RunStudio(int argumentCount, char** arguments) {
  DoWithoutScreen(argumentCount, arguments);
  const QApplication application(argumentCount, arguments);
  QApplication::setOrganizationName("sorvaNIX");
  QApplication::setApplicationName("Studio");
  QApplication::setApplicationVersion(SORVANIX_VERSION);
  const auto options = ParseOptions(application);
  if (options) return static_cast<int>(Run(*options));
  if (!options.error().message.empty()) Complain(options.error().message);
  return static_cast<int>(options.error().code);
}

}  // namespace sorvanix::studio
