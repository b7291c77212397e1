// sorvanix render: a scene into an image, or into one for each frame.
#include <CLI/App.hpp>
#include <memory>

#include "apps/sorvanix/cancellation.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/render_run.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"

namespace sorvanix::cli {

namespace {

constexpr PictureHelp kHelp = {
    .output =
        "The image; its extension (png, tif, exr, jpg) is its format. <scene>, <frame> and "
        "%04d stand for themselves. A file that is there is replaced. Default: <scene>.png, "
        "or <scene>.<frame>.png with --frames",
    .size = "Pixels, each side from 1 to 65536; default: what the scene's camera says",
    .json = "Print a JSON array of what was rendered"};

ExitCode Render(const RenderOptions& options) {
  const auto plan = PlanRender(options);
  if (!plan) {
    Complain(plan.error());
    return ExitCode::Usage;
  }
  const auto modulePath = FindModule(options.picture.module);
  const auto catalogue = modulePath.and_then(LoadCatalogue);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  return RenderRun(options, *modulePath, *catalogue, WatchSignals()).Run(*plan);
}

}  // namespace

VerbAction DeclareRender(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  options->picture.samples = 2;
  app.add_option("scene", options->scene, "A scene file")->required();
  app.add_flag("--no-filter", options->noFilter,
               "Let shaders take samples for points: patterns are sharp, and shimmer");
  AddPictureOptions(app, options->picture, kHelp);
  return [options] { return Render(*options); };
}

}  // namespace sorvanix::cli
