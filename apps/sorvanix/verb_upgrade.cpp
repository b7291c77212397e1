// sorvanix upgrade: rewrites scene files in today's form.
//
// The states of their shaders become those that today's shaders store, whatever version wrote them,
// and the graphs say what the states do. What only a later program knows stays as it is.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>

#include "apps/sorvanix/failure_tally.h"
#include "apps/sorvanix/host_setup.h"
#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/problem_report.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/scene_input.h"
#include "apps/sorvanix/verb.h"
#include "host/scene/document_file.h"
#include "host/scene/material_links.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

namespace fs = std::filesystem;

struct UpgradeOptions {
  std::vector<std::string> files;
  std::vector<std::string> imageFolders;
  std::string module;
  bool quiet = false;
};

// As it was when it is in today's form already, byte for byte: then nothing is written.
ExitCode Upgrade(const std::string& name, const UpgradeOptions& options,
                 const host::ShaderCatalogue& catalogue) {
  const fs::path file = host::PathFromUtf8(name);
  const SceneInput input = LoadSceneInput(file, catalogue, options.imageFolders);
  if (!input.error.empty()) Complain(input.error);
  TellProblems(name, input.reading.problems, input.reading.untold, options.quiet);
  if (input.code != ExitCode::Done) return input.code;

  host::Scene& scene = *input.reading.scene;
  for (const std::string& problem : host::LinkMaterials(scene)) {
    if (!options.quiet) Warn(fmt::format("{}: {}", name, problem));
  }
  host::StoreStates(scene, &catalogue);
  const bool isNew = host::ReadDocument(file) != host::SceneText(scene);
  if (isNew) {
    if (const auto saved = host::SaveScene(scene, file); !saved) {
      Complain(saved.error());
      return ExitCode::FileTrouble;
    }
  }
  if (!options.quiet) Print(fmt::format("{}: {}\n", name, isNew ? "upgraded" : "is up to date"));
  return ExitCode::Done;
}

ExitCode UpgradeAll(const UpgradeOptions& options) {
  const auto modulePath = FindModule(options.module);
  const auto catalogue = modulePath.and_then(LoadCatalogue);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  LoadedModule module;  // outlives the scenes, whose links hold its shaders
  if (const auto loaded = module.Load(*modulePath); !loaded) {
    Complain(loaded.error().message);
    return loaded.error().code;
  }
  FailureTally tally;
  for (const std::string& file : options.files) {
    const ExitCode code = Upgrade(file, options, *catalogue);
    if (code == ExitCode::Done) {
      tally.Succeed();
    } else {
      tally.Fail(code);
    }
  }
  return tally.Result();
}

}  // namespace

VerbAction DeclareUpgrade(CLI::App& app) {
  const auto options = std::make_shared<UpgradeOptions>();
  app.add_option("files", options->files, "Scene files, in either form; each is rewritten")
      ->required();
  app.add_flag("--quiet", options->quiet, "Tell errors only");
  AddImagesOption(app, options->imageFolders);
  AddModuleOption(app, options->module);
  return [options] { return UpgradeAll(*options); };
}

}  // namespace sorvanix::cli
