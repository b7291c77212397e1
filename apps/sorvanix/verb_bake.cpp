// sorvanix bake: materials into images, flat over the unit square of texture coordinates.
#include <fmt/format.h>
#include <unistd.h>

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

// A picture that does not fit the memory would end the program without a word, or the machine's
// patience.
std::string MemoryShortage(const host::FlatBakeSettings& settings) {
  const double machine =
      static_cast<double>(::sysconf(_SC_PHYS_PAGES)) * static_cast<double>(::sysconf(_SC_PAGESIZE));
  const auto needed = static_cast<double>(host::BakedBytes(settings));
  constexpr double kGigabyte = 1e9;
  if (needed <= machine) return {};
  return fmt::format("a picture of {}x{} takes {:.1f} GB of memory, this machine has {:.1f}",
                     settings.width, settings.height, needed / kGigabyte, machine / kGigabyte);
}

ExitCode Bake(const BakeOptions& options) {
  const auto plan = PlanBake(options);
  if (!plan) {
    Complain(plan.error());
    return ExitCode::Usage;
  }
  if (const std::string shortage = MemoryShortage(options.settings); !shortage.empty()) {
    Complain(shortage);
    return ExitCode::Usage;
  }
  const auto modulePath = FindModule(options.module);
  const auto catalogue = modulePath.and_then(LoadCatalogue);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  return BakeRun(options, *modulePath, *catalogue, WatchSignals()).Run(*plan);
}

}  // namespace

VerbAction DeclareBake(CLI::App& app) {
  const auto options = std::make_shared<BakeOptions>();
  AddBakeOptions(app, *options);
  return [options] { return Bake(*options); };
}

}  // namespace sorvanix::cli
