#include "apps/sorvanix/bake_run.h"

#include <fmt/format.h>

#include "apps/sorvanix/bake_recipe.h"
#include "apps/sorvanix/program.h"
#include "apps/sorvanix/report.h"
#include "host/channels/material_shader.h"
#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::cli {

using host::Json;

BakeRun::BakeRun(const BakeOptions& options, const BakedMesh& mesh,
                 const std::filesystem::path& modulePath, const host::ShaderCatalogue& catalogue,
                 const host::InputLog& inputs, const std::atomic<bool>& cancelled)
    : options_(options),
      mesh_(mesh),
      modulePath_(modulePath),
      catalogue_(catalogue),
      inputs_(inputs),
      cancelled_(cancelled),
      progress_(options.picture.quiet ? "none" : options.picture.progress) {}

ExitCode BakeRun::Run(const BakePlan& plan) {
  std::vector<MaterialInput> materials;
  for (const std::string& file : options_.materials) {
    materials.push_back(
        LoadMaterial(host::PathFromUtf8(file), catalogue_, options_.picture.imageFolders));
  }
  if (const auto checked = Check(plan); !checked) {
    Complain(checked.error());
    return ExitCode::Usage;
  }
  for (std::size_t i = 0; i < plan.size() && !Cancelled(); ++i) {
    BakeMaterial(options_.materials[i], materials[i], plan[i]);
  }
  progress_.End();
  if (options_.picture.json) Print(host::WriteJson(Json(std::move(report_))) + '\n');
  if (Cancelled()) {
    Complain("cancelled");
    return ExitCode::Cancelled;
  }
  return tally_.Result();
}

tl::expected<void, std::string> BakeRun::Check(const BakePlan& plan) const {
  for (const std::vector<PlannedPicture>& outputs : plan) {
    for (const PlannedPicture& output : outputs) {
      auto checked = CheckPicture(output, options_.Width(), options_.Height(), inputs_);
      if (!checked) return checked;
    }
  }
  return {};
}

void BakeRun::BakeMaterial(const std::string& file, const MaterialInput& input,
                           const std::vector<PlannedPicture>& outputs) {
  if (input.code != ExitCode::Done) return Fail(file, {input.code, input.error});
  if (!options_.picture.quiet) {
    for (const host::MaterialProblem& warning : input.reading.Warnings()) {
      Warn(Describe(host::PathFromUtf8(file), warning));
    }
  }
  // A folder that cannot be written is better told before the work than after it.
  if (const auto place = CheckPlace(outputs.front()); !place) return Fail(file, place.error());
  for (const PlannedPicture& output : outputs) {
    // What stops one frame would stop the next one too.
    if (const auto baked = BakeOutput(file, *input.reading.material, output); !baked) {
      return Fail(file, baked.error());
    }
    if (Cancelled()) return;
  }
}

tl::expected<void, Failure> BakeRun::BakeOutput(const std::string& materialFile,
                                                const host::MaterialNode& material,
                                                const PlannedPicture& output) {
  const std::string recipe = RecipeOf(material, options_, mesh_, output);
  if (options_.picture.resume && IsFinished(output, recipe)) {
    tally_.Succeed();
    return {};
  }
  // Equal bakes give equal bytes: random numbers come from a new start and in one order.
  const bool isRandom = DrawsRandomNumbers(material);
  if (auto loaded = module_.Load(modulePath_, isRandom); !loaded) {
    return tl::unexpected(loaded.error());
  }
  auto shader = MakeShader(*module_, material, options_.channel);
  if (!shader) return tl::unexpected(Failure{ExitCode::NoModule, shader.error()});

  progress_.Begin(host::Utf8FromPath(output.file));
  const host::TaskOptions task = {
      .threads = isRandom ? 1 : options_.picture.threads,
      .cancelled = &cancelled_,
      .progress = [this](int done, int total) { progress_.Update(done, total); }};
  const auto baked = BakePicture(*shader, options_, mesh_, output, task);
  progress_.End();
  if (!baked) return tl::unexpected(baked.error());
  if (!baked->image) return {};  // cancelled
  if (!options_.picture.quiet) {
    for (const std::string& warning : baked->warnings) Warn(warning);
  }
  const auto hash = WritePicture(
      output, *baked->image,
      {.program = kProgramName, .recipe = recipe, .isColour = !options_.normal}, cancelled_);
  if (!hash) return tl::unexpected(hash.error());
  if (*hash) Succeed(materialFile, output, **hash);
  return {};
}

void BakeRun::Succeed(const std::string& materialFile, const PlannedPicture& output,
                      const std::string& hash) {
  progress_.End();
  tally_.Succeed();
  const std::string name = host::Utf8FromPath(output.file);
  if (!options_.picture.quiet && !options_.picture.json) Print(name + '\n');
  if (!options_.picture.json) return;  // a row for nobody would only fill memory
  Json::Object entry = {{"material", Json(materialFile)},
                        {"output", Json(name)},
                        {"width", host::JsonOf(options_.Width())},
                        {"height", host::JsonOf(options_.Height())},
                        {"depth", Json(std::string(NameOf(output.format.depth)))},
                        {"time", host::JsonOf(output.at.time)}};
  if (KeepsPixels(output.format.file)) entry.push_back({"pixelHash", Json(hash)});
  if (output.at.frame) entry.push_back({"frame", host::JsonOf(*output.at.frame)});
  if (output.tile) entry.push_back({"udim", host::JsonOf(output.tile->Udim())});
  report_.push_back(Json(std::move(entry)));
}

void BakeRun::Fail(const std::string& materialFile, const Failure& failure) {
  progress_.End();
  tally_.Fail(failure.code);
  Complain(failure.message);
  if (!options_.picture.json) return;
  report_.push_back(
      Json(Json::Object{{"material", Json(materialFile)}, {"error", Json(failure.message)}}));
}

}  // namespace sorvanix::cli
