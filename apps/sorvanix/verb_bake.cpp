// sorvanix bake: materials into images, flat over the unit square of texture coordinates or on the
// surface of a plane or a mesh.
#include <CLI/App.hpp>
#include <memory>

#include "apps/sorvanix/bake_options.h"
#include "apps/sorvanix/bake_plan.h"
#include "apps/sorvanix/bake_run.h"
#include "apps/sorvanix/cancellation.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"

namespace sorvanix::cli {

namespace {

ExitCode Bake(BakeOptions& options) {
  const auto usage = [](const std::string& error) {
    Complain(error);
    return ExitCode::Usage;
  };
  if (const auto settled = SettleBakeOptions(options); !settled) return usage(settled.error());
  const host::InputLog inputs;
  const auto mesh = LoadBakedMesh(options);
  if (!mesh) {
    Complain(mesh.error().message);
    return mesh.error().code;
  }
  const auto plan = PlanBake(options, mesh->tiles);
  if (!plan) return usage(plan.error());
  const auto modulePath = FindModule(options.picture.module);
  const auto catalogue = modulePath.and_then(LoadCatalogue);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  return BakeRun(options, *mesh, *modulePath, *catalogue, inputs, WatchSignals()).Run(*plan);
}

}  // namespace

VerbAction DeclareBake(CLI::App& app) {
  const auto options = std::make_shared<BakeOptions>();
  AddBakeOptions(app, *options);
  return [options] { return Bake(*options); };
}

}  // namespace sorvanix::cli
