#include "apps/studio/program/script.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QThread>
#include <algorithm>
#include <functional>
#include <map>

#include "host/channels/material_value.h"
#include "host/services/filenames.h"
#include "host/services/text_file.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

constexpr double kWait = 120;  // seconds

GraphPlace PlaceIn(const std::string& text) {
  const QStringList names = QString::fromStdString(text).split('/');
  GraphPlace place = {.channel = names.front().toStdString(), .inputs = {}};
  for (const QString& name : names.mid(1)) place.inputs.push_back(name.toStdString());
  return place;
}

class Script {
 public:
  Script(Workshop& workshop, MainWindow& window) : workshop_(workshop), window_(window) {
    QObject::connect(&workshop.commands, &Commands::Complained, &context_,
                     [this](const QString& why) { complaint_ = why.toStdString(); });
  }

  // The error of the step, or an empty text.
  std::string Run(const std::string& name, const Json& argument) {
    const auto found = Steps().find(name);
    if (found == Steps().end()) {
      std::vector<std::string_view> names;
      for (const auto& step : Steps()) names.push_back(step.first);
      return host::UnknownName("step", name, names);
    }
    complaint_.clear();
    found->second(*this, argument);
    QCoreApplication::processEvents();
    return complaint_;
  }

 private:
  using Step = std::function<void(Script&, const Json&)>;

  static const std::map<std::string, Step>& Steps() {
    static const std::map<std::string, Step> steps = {
        {"new", [](Script& s, const Json&) { s.workshop_.document.New(); }},
        {"open",
         [](Script& s, const Json& file) { s.Take(s.workshop_.document.Open(PathOf(file))); }},
        {"save",
         [](Script& s, const Json& file) { s.Take(s.workshop_.document.SaveAs(PathOf(file))); }},
        {"import",
         [](Script& s, const Json& file) { s.workshop_.commands.AddMaterialFile(PathOf(file)); }},
        {"material",
         [](Script& s, const Json& index) { s.workshop_.selection.SetMaterial(NumberOf(index)); }},
        {"add", [](Script& s, const Json&) { s.workshop_.commands.AddMaterial(); }},
        {"duplicate", [](Script& s, const Json&) { s.workshop_.commands.DuplicateMaterial(); }},
        {"delete", [](Script& s, const Json&) { s.workshop_.commands.RemoveMaterial(); }},
        {"rename",
         [](Script& s, const Json& name) {
           s.workshop_.commands.RenameMaterial(s.workshop_.selection.Material(), NameOf(name));
         }},
        {"select",
         [](Script& s, const Json& place) {
           s.workshop_.selection.SetPlace(PlaceIn(NameOf(place).toStdString()));
         }},
        {"place",
         [](Script& s, const Json& name) {
           s.workshop_.commands.ReplaceShader(s.Place(), NameOf(name));
         }},
        {"placeFile",
         [](Script& s, const Json& file) {
           s.workshop_.commands.PlaceFile(s.Place(), PathOf(file));
         }},
        {"wrap",
         [](Script& s, const Json& name) { s.workshop_.commands.Wrap(s.Place(), NameOf(name)); }},
        {"unwrap", [](Script& s, const Json&) { s.workshop_.commands.Unwrap(s.Place()); }},
        {"embed", [](Script& s, const Json&) { s.workshop_.commands.Embed(s.Place()); }},
        {"remove", [](Script& s, const Json&) { s.workshop_.commands.Remove(s.Place()); }},
        {"edit", [](Script& s, const Json&) { s.window_.EditShader(); }},
        {"undo",
         [](Script& s, const Json& count) {
           for (int i = 0; i < NumberOf(count); ++i) s.workshop_.document.History().undo();
         }},
        {"redo",
         [](Script& s, const Json& count) {
           for (int i = 0; i < NumberOf(count); ++i) s.workshop_.document.History().redo();
         }},
        {"object",
         [](Script& s, const Json& kind) {
           s.workshop_.view.SetObject(
               {.kind = static_cast<PreviewObject::Kind>(NumberOf(kind)), .mesh = {}});
         }},
        {"mesh",
         [](Script& s, const Json& file) {
           auto mesh = LoadPreviewMesh(PathOf(file));
           if (mesh) return s.workshop_.view.SetObject(std::move(*mesh));
           s.complaint_ = mesh.error();
         }},
        {"flat",
         [](Script& s, const Json& repeats) {
           s.window_.Views().ShowFlat(NumberOf(repeats) > 0);
           s.window_.Views().ShowRepeats(NumberOf(repeats) > 1 ? 3 : 1);
         }},
        {"wait",
         [](Script& s, const Json& seconds) {
           if (!WaitUntilPainted(s.workshop_, s.window_, NumberOf(seconds))) {
             s.complaint_ = "the pictures are not painted yet";
           }
         }},
        {"screenshot", [](Script& s, const Json& file) {
           WaitUntilPainted(s.workshop_, s.window_, kWait);
           s.Take(SaveScreenshot(s.window_, PathOf(file)));
         }}};
    return steps;
  }

  static QString NameOf(const Json& json) {
    const auto* text = std::get_if<std::string>(&json.value);
    return text != nullptr ? QString::fromStdString(*text) : QString();
  }
  static fs::path PathOf(const Json& json) {
    return host::PathFromUtf8(NameOf(json).toStdString());
  }
  static int NumberOf(const Json& json) {
    const auto* number = std::get_if<std::int64_t>(&json.value);
    return number != nullptr ? static_cast<int>(std::clamp<std::int64_t>(*number, 0, 100000)) : 0;
  }

  const GraphPlace& Place() const { return workshop_.selection.Place(); }
  void Take(const tl::expected<void, std::string>& result) {
    if (!result) complaint_ = result.error();
  }

  Workshop& workshop_;
  MainWindow& window_;
  std::string complaint_;
  QObject context_;
};

}  // namespace

tl::expected<void, std::string> RunScript(const fs::path& file, Workshop& workshop,
                                          MainWindow& window) {
  const auto fail = [&file](const std::string& why) {
    return tl::unexpected(fmt::format("{}: {}", host::Utf8FromPath(file), why));
  };
  const auto text = host::ReadTextFile(file);
  if (!text) return fail("cannot be read");
  const auto json = host::ParseJson(*text);
  const auto* steps = json ? std::get_if<Json::Array>(&json->value) : nullptr;
  if (steps == nullptr) return fail("expected a list of steps");
  Script script(workshop, window);
  for (std::size_t i = 0; i < steps->size(); ++i) {
    const auto* step = std::get_if<Json::Object>(&(*steps)[i].value);
    if (step == nullptr || step->size() != 1) {
      return fail(fmt::format("step {}: expected an object with one name", i + 1));
    }
    const std::string why = script.Run(step->front().name, step->front().value);
    if (!why.empty()) return fail(fmt::format("step {}, {}: {}", i + 1, step->front().name, why));
  }
  return {};
}

bool WaitUntilPainted(Workshop& workshop, MainWindow& window, double seconds) {
  QElapsedTimer time;
  time.start();
  do {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    if (!window.Views().IsBusy() && !workshop.thumbnails.IsBusy()) return true;
    QThread::msleep(2);
  } while (static_cast<double>(time.elapsed()) < seconds * 1000);
  return false;
}

tl::expected<void, std::string> SaveScreenshot(QWidget& window, const fs::path& file) {
  std::error_code error;
  if (file.has_parent_path()) fs::create_directories(file.parent_path(), error);
  if (window.grab().save(QString::fromStdString(host::Utf8FromPath(file)))) return {};
  return tl::unexpected(fmt::format("{}: cannot be written", host::Utf8FromPath(file)));
}

}  // namespace sorvanix::studio
