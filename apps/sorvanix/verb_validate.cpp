// sorvanix validate: checks material and scene files and tells every problem.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>

#include "apps/sorvanix/failure_tally.h"
#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/problem_report.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/scene_input.h"
#include "apps/sorvanix/verb.h"
#include "host/services/filenames.h"
#include "host/services/json.h"

namespace sorvanix::cli {

namespace {

using host::Json;
using host::MaterialProblem;

struct ValidateOptions {
  std::vector<std::string> files;
  std::vector<std::string> imageFolders;
  std::string module;
  bool json = false;
  bool quiet = false;
};

// What was found in one file, a material or a scene.
struct CheckedFile {
  ExitCode code;
  std::string error;  // one line; it stands for itself where there are no problems
  std::vector<MaterialProblem> problems;
  host::UntoldProblems untold;
};

Json Number(std::size_t value) { return Json(static_cast<std::int64_t>(value)); }

Json AsJson(const MaterialProblem& problem) {
  Json::Object entry = {{"severity", Json(std::string(problem.isError ? "error" : "warning"))},
                        {"pointer", Json(problem.pointer)},
                        {"line", Number(problem.position.line)},
                        {"column", Number(problem.position.column)},
                        {"message", Json(problem.message)}};
  // Of a file that the material refers to.
  if (!problem.file.empty()) entry.push_back({"file", Json(host::Utf8FromPath(problem.file))});
  return Json(std::move(entry));
}

Json AsJson(const std::string& file, const CheckedFile& input) {
  Json::Array problems;
  for (const MaterialProblem& problem : input.problems) problems.push_back(AsJson(problem));
  Json::Object entry = {{"file", Json(file)},
                        {"valid", Json(input.code == ExitCode::Done)},
                        {"problems", Json(std::move(problems))}};
  const host::UntoldProblems& untold = input.untold;
  if (untold.errors + untold.warnings > 0) {
    entry.push_back({"untold", Number(untold.errors + untold.warnings)});
  }
  if (!input.error.empty() && input.problems.empty()) entry.push_back({"error", Json(input.error)});
  return Json(std::move(entry));
}

void Tell(const ValidateOptions& options, const std::string& file, const CheckedFile& input) {
  if (!input.error.empty() && input.problems.empty()) Complain(input.error);
  TellProblems(file, input.problems, input.untold, options.quiet);
  if (input.code == ExitCode::Done && !options.quiet && !options.json) {
    Print(fmt::format("{}: ok\n", file));
  }
}

CheckedFile Check(const std::string& name, const host::ShaderCatalogue& catalogue,
                  const ValidateOptions& options) {
  const std::filesystem::path file = host::PathFromUtf8(name);
  if (IsSceneFile(file)) {
    SceneInput input = LoadSceneInput(file, catalogue, options.imageFolders);
    return {input.code, std::move(input.error), std::move(input.reading.problems),
            input.reading.untold};
  }
  MaterialInput input = LoadMaterial(file, catalogue, options.imageFolders);
  return {input.code, std::move(input.error), std::move(input.reading.problems),
          input.reading.untold};
}

ExitCode Validate(const ValidateOptions& options) {
  const auto catalogue = FindCatalogue(options.module);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  FailureTally tally;
  Json::Array report;
  for (const std::string& file : options.files) {
    const CheckedFile input = Check(file, *catalogue, options);
    Tell(options, file, input);
    report.push_back(AsJson(file, input));
    if (input.code == ExitCode::Done) {
      tally.Succeed();
    } else {
      tally.Fail(input.code);
    }
  }
  if (options.json) Print(host::WriteJson(Json(std::move(report))) + '\n');
  return tally.Result();
}

}  // namespace

VerbAction DeclareValidate(CLI::App& app) {
  const auto options = std::make_shared<ValidateOptions>();
  app.add_option("files", options->files, "Material files, and scene files in either form")
      ->required();
  app.add_flag("--json", options->json, "Print a JSON array with each file's problems");
  app.add_flag("--quiet", options->quiet, "Tell errors only");
  AddImagesOption(app, options->imageFolders);
  AddModuleOption(app, options->module);
  return [options] { return Validate(*options); };
}

}  // namespace sorvanix::cli
