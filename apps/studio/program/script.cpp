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
#include "host/services/json_numbers.h"
#include "host/services/text_file.h"
#include "host/services/text_position.h"

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

enum class Argument { None, Text, Number };

class Script {
 public:
  Script(Workshop& workshop, MainWindow& window) : workshop_(workshop), window_(window) {
    QObject::connect(&workshop.commands, &Commands::Complained, &context_,
                     [this](const QString& why) { complaint_ = why.toStdString(); });
  }

  // The message of a failure tells neither file nor place.
  tl::expected<void, cli::Failure> Run(const std::string& name, const Json& argument) {
    const auto fail = [](cli::ExitCode code, std::string why) {
      return tl::unexpected(cli::Failure{code, std::move(why)});
    };
    const auto found = Steps().find(name);
    if (found == Steps().end()) {
      std::vector<std::string_view> names;
      for (const auto& step : Steps()) names.push_back(step.first);
      return fail(cli::ExitCode::InvalidInput, host::UnknownName("step", name, names));
    }
    const Step& step = found->second;
    if (step.argument == Argument::Text && !std::holds_alternative<std::string>(argument.value)) {
      return fail(cli::ExitCode::InvalidInput, "expected a text");
    }
    if (step.argument == Argument::Number && !host::FloatIn(argument)) {
      return fail(cli::ExitCode::InvalidInput, "expected a number");
    }
    complaint_.clear();
    step.run(*this, argument);
    QCoreApplication::processEvents();
    if (complaint_.empty()) return {};
    return fail(step.failure, complaint_);
  }

 private:
  struct Step {
    Argument argument;
    std::function<void(Script&, const Json&)> run;
    cli::ExitCode failure = cli::ExitCode::InvalidInput;
  };

  static const std::map<std::string, Step>& Steps() {
    static const std::map<std::string, Step> steps = {{"new",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.document.New();
                                                        }}},
                                                      {"open",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& file) {
                                                          s.Take(s.workshop_.document.Open(
                                                              PathOf(file)));
                                                        }}},
                                                      {"save",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& file) {
                                                          s.Take(s.workshop_.document.SaveAs(
                                                              PathOf(file)));
                                                        },
                                                        cli::ExitCode::FileTrouble}},
                                                      {"import",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& file) {
                                                          s.Take(
                                                              s.workshop_.commands.AddMaterialFile(
                                                                  PathOf(file)));
                                                        }}},
                                                      {"material",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& index) {
                                                          s.workshop_.selection.SetMaterial(
                                                              NumberOf(index));
                                                        }}},
                                                      {"add",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.commands.AddMaterial();
                                                        }}},
                                                      {"duplicate",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.commands.DuplicateMaterial();
                                                        }}},
                                                      {"delete",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.commands.RemoveMaterial();
                                                        }}},
                                                      {"move",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& by) {
                                                          s.workshop_.commands.MoveMaterial(
                                                              NumberOf(by));
                                                        }}},
                                                      {"rename",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& name) {
                                                          s.workshop_.commands.RenameMaterial(
                                                              s.workshop_.selection.Material(),
                                                              NameOf(name));
                                                        }}},
                                                      {"select",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& place) {
                                                          s.workshop_.selection.SetPlace(
                                                              PlaceIn(NameOf(place).toStdString()));
                                                        }}},
                                                      {"place",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& name) {
                                                          s.workshop_.commands.ReplaceShader(
                                                              s.Place(), NameOf(name));
                                                        }}},
                                                      {"placeFile",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& file) {
                                                          s.workshop_.commands.PlaceFile(
                                                              s.Place(), PathOf(file));
                                                        }}},
                                                      {"wrap",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& name) {
                                                          s.workshop_.commands.Wrap(s.Place(),
                                                                                    NameOf(name));
                                                        }}},
                                                      {"unwrap",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.commands.Unwrap(s.Place());
                                                        }}},
                                                      {"embed",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.commands.Embed(s.Place());
                                                        }}},
                                                      {"remove",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.workshop_.commands.Remove(s.Place());
                                                        }}},
                                                      {"edit",
                                                       {Argument::None,
                                                        [](Script& s, const Json&) {
                                                          s.window_.EditShader();
                                                        }}},
                                                      {"undo",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& count) {
                                                          for (int i = 0; i < NumberOf(count); ++i)
                                                            s.workshop_.document.History().undo();
                                                        }}},
                                                      {"redo",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& count) {
                                                          for (int i = 0; i < NumberOf(count); ++i)
                                                            s.workshop_.document.History().redo();
                                                        }}},
                                                      {"object",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& name) {
                                                          s.ShowOn(NameOf(name));
                                                        }}},
                                                      {"mesh",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& file) {
                                                          auto mesh = LoadPreviewMesh(PathOf(file));
                                                          if (mesh)
                                                            return s.workshop_.view.SetObject(
                                                                std::move(*mesh));
                                                          s.complaint_ = mesh.error();
                                                        }}},
                                                      {"time",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& seconds) {
                                                          s.workshop_.view.SetTime(
                                                              host::FloatIn(seconds).value_or(0));
                                                        }}},
                                                      {"flat",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& repeats) {
                                                          s.window_.Views().ShowFlat(
                                                              NumberOf(repeats) > 0);
                                                          s.window_.Views().ShowRepeats(
                                                              NumberOf(repeats) > 1 ? 3 : 1);
                                                        }}},
                                                      {"samples",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& samples) {
                                                          s.window_.Views().SetSamples(
                                                              std::max(1, NumberOf(samples)));
                                                        }}},
                                                      {"wait",
                                                       {Argument::Number,
                                                        [](Script& s, const Json& seconds) {
                                                          if (!WaitUntilPainted(
                                                                  s.workshop_, s.window_,
                                                                  NumberOf(seconds))) {
                                                            s.complaint_ =
                                                                "the pictures are not painted yet";
                                                          }
                                                        }}},
                                                      {"screenshot",
                                                       {Argument::Text,
                                                        [](Script& s, const Json& file) {
                                                          WaitUntilPainted(s.workshop_, s.window_,
                                                                           kWait);
                                                          s.Take(SaveScreenshot(s.window_,
                                                                                PathOf(file)));
                                                        },
                                                        cli::ExitCode::FileTrouble}}};
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
    constexpr float kMost = 100000;
    return static_cast<int>(std::clamp(host::FloatIn(json).value_or(0), -kMost, kMost));
  }

  void ShowOn(const QString& name) {
    std::vector<std::string_view> names;
    for (int i = 0; i < PreviewObject::kKinds; ++i) {
      const auto kind = static_cast<PreviewObject::Kind>(i);
      if (kind == PreviewObject::Kind::Mesh) continue;  // needs a file
      if (name == studio::NameOf(kind)) return workshop_.view.SetObject({.kind = kind, .mesh = {}});
      names.emplace_back(studio::NameOf(kind));
    }
    complaint_ = host::UnknownName("object", name.toStdString(), names);
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

tl::expected<void, cli::Failure> RunScript(const fs::path& file, Workshop& workshop,
                                           MainWindow& window) {
  const std::string name = host::Utf8FromPath(file);
  const auto text = host::ReadTextFile(file);
  if (!text) {
    return tl::unexpected(cli::Failure{cli::ExitCode::FileTrouble, name + ": cannot be read"});
  }
  const auto fail = [&](std::size_t offset, const std::string& why,
                        cli::ExitCode code = cli::ExitCode::InvalidInput) {
    const host::TextPosition at = host::PositionIn(*text, offset);
    return tl::unexpected(
        cli::Failure{code, fmt::format("{}:{}:{}: {}", name, at.line, at.column, why)});
  };
  const auto json = host::ParseJson(*text);
  if (!json) return fail(json.error().offset, json.error().message);
  const auto* steps = std::get_if<Json::Array>(&json->value);
  if (steps == nullptr) return fail(json->offset, "expected a list of steps");
  Script script(workshop, window);
  for (const Json& each : *steps) {
    const auto* step = std::get_if<Json::Object>(&each.value);
    if (step == nullptr || step->size() != 1) {
      return fail(each.offset, "expected an object with one name");
    }
    if (const auto done = script.Run(step->front().name, step->front().value); !done) {
      return fail(each.offset, fmt::format("{}: {}", step->front().name, done.error().message),
                  done.error().code);
    }
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
