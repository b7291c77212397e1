// sorvanix validate: checks material files and tells every problem.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>

#include "apps/sorvanix/failure_tally.h"
#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/report.h"
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

Json AsJson(const std::string& file, const MaterialInput& input) {
  Json::Array problems;
  for (const MaterialProblem& problem : input.reading.problems) {
    problems.push_back(AsJson(problem));
  }
  Json::Object entry = {{"file", Json(file)},
                        {"valid", Json(input.code == ExitCode::Done)},
                        {"problems", Json(std::move(problems))}};
  const host::UntoldProblems& untold = input.reading.untold;
  if (untold.errors + untold.warnings > 0) {
    entry.push_back({"untold", Number(untold.errors + untold.warnings)});
  }
  if (input.code == ExitCode::FileTrouble) entry.push_back({"error", Json(input.error)});
  return Json(std::move(entry));
}

void Tell(const ValidateOptions& options, const std::string& file, const MaterialInput& input) {
  if (input.code == ExitCode::FileTrouble) Complain(input.error);
  for (const MaterialProblem& problem : input.reading.problems) {
    const std::string line = Describe(host::PathFromUtf8(file), problem);
    if (problem.isError) {
      Complain(line);
    } else if (!options.quiet) {
      Warn(line);
    }
  }
  const host::UntoldProblems& untold = input.reading.untold;
  if (untold.errors > 0) Complain(fmt::format("{}: ... and {} more", file, untold.errors));
  if (untold.warnings > 0 && !options.quiet) {
    Warn(fmt::format("{}: ... and {} more", file, untold.warnings));
  }
  if (input.code == ExitCode::Done && !options.quiet && !options.json) {
    Print(fmt::format("{}: ok\n", file));
  }
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
    const MaterialInput input =
        LoadMaterial(host::PathFromUtf8(file), *catalogue, options.imageFolders);
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
  app.add_option("files", options->files, "Material files")->required();
  app.add_flag("--json", options->json, "Print a JSON array with each file's problems");
  app.add_flag("--quiet", options->quiet, "Tell errors only");
  AddImagesOption(app, options->imageFolders);
  AddModuleOption(app, options->module);
  return [options] { return Validate(*options); };
}

}  // namespace sorvanix::cli
