#include "apps/sorvanix/bake_run.h"

#include <fmt/format.h>
#include <sorvanix/ids.h>

#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/program.h"
#include "apps/sorvanix/report.h"
#include "host/bake/temporary_file.h"
#include "host/channels/material_shader.h"
#include "host/images/image_writer.h"
#include "host/noise/noise_services.h"
#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::cli {

namespace {

using host::Json;

// What an image file tells of its making. Its "material" is a material file again.
std::string RecipeOf(const host::MaterialNode& material, const host::FlatBakeSettings& settings) {
  const Json recipe(Json::Object{
      {"material", JsonOf(material)},
      {"channel", Json(std::string("colour"))},
      {"size", Json(Json::Array{host::JsonOf(settings.width), host::JsonOf(settings.height)})},
      {"samples", host::JsonOf(settings.samples)},
      {"time", host::JsonOf(settings.time)}});
  return host::WriteJson(recipe, -1);
}

void InstallServices(host::HostTables& tables) {
  host::InstallNoiseServices(tables.render);
  host::InstallChannelLinks(tables.channel, tables.stream);
  host::InstallBitmaps(tables.bitmap);
}

}  // namespace

BakeRun::BakeRun(const BakeOptions& options, const std::filesystem::path& modulePath,
                 const host::ShaderCatalogue& catalogue, const std::atomic<bool>& cancelled)
    : options_(options),
      modulePath_(modulePath),
      catalogue_(catalogue),
      cancelled_(cancelled),
      progress_(options.quiet ? "none" : options.progress) {}

ExitCode BakeRun::Run(const BakePlan& plan) {
  for (std::size_t i = 0; i < plan.size() && !Cancelled(); ++i) {
    BakeMaterial(options_.materials[i], plan[i]);
  }
  progress_.End();
  if (options_.json) Print(host::WriteJson(Json(std::move(report_))) + '\n');
  if (Cancelled()) {
    Complain("cancelled");
    return ExitCode::Cancelled;
  }
  return tally_.Result();
}

void BakeRun::BakeMaterial(const std::string& file, const std::vector<PlannedOutput>& outputs) {
  const MaterialInput input =
      LoadMaterial(host::PathFromUtf8(file), catalogue_, options_.imageFolders);
  if (input.code != ExitCode::Done) return Fail(file, {input.code, input.error});
  if (!options_.quiet) {
    for (const host::MaterialProblem& warning : input.reading.Warnings()) {
      Warn(Describe(host::PathFromUtf8(file), warning));
    }
  }
  // A folder that cannot be written is better told before the work than after it.
  if (const auto probe = host::TemporaryFile::Create(outputs.front().file); !probe) {
    return Fail(file, {ExitCode::FileTrouble, probe.error()});
  }
  for (const PlannedOutput& output : outputs) {
    // What stops one frame would stop the next one too.
    if (const auto failure = BakeOutput(file, *input.reading.material, output)) {
      return Fail(file, *failure);
    }
    if (Cancelled()) return;
  }
}

// Only when something is to be baked; afresh when the state of its random numbers counts.
std::optional<BakeRun::Failure> BakeRun::LoadModule(bool afresh) {
  if (afresh) {
    links_.reset();
    module_.reset();
  }
  if (module_) return std::nullopt;
  if (!host_) host_.emplace(host::HostOptions{.services = {InstallServices}});
  auto module = host::Module::Load(*host_, modulePath_);
  if (!module) return Failure{ExitCode::NoModule, module.error()};
  module_.emplace(std::move(*module));
  links_.emplace(module_->Shaders());
  return std::nullopt;
}

std::optional<BakeRun::Failure> BakeRun::BakeOutput(const std::string& materialFile,
                                                    const host::MaterialNode& material,
                                                    const PlannedOutput& output) {
  // Equal bakes give equal bytes: random numbers come from a new start and in one order.
  const bool isRandom = DrawsRandomNumbers(material);
  if (auto failure = LoadModule(isRandom)) return failure;
  auto shader = MakeShader(*module_, material, ChannelColour);
  if (!shader) return Failure{ExitCode::NoModule, shader.error()};

  host::FlatBakeSettings settings = options_.settings;
  settings.time = output.time;
  progress_.Begin(host::Utf8FromPath(output.file));
  const host::TaskOptions task = {
      .threads = isRandom ? 1 : options_.threads,
      .cancelled = &cancelled_,
      .progress = [this](int done, int total) { progress_.Update(done, total); }};
  const auto image = host::BakeFlat(
      [&shader](ChannelSample& sample) { return shader->Output(sample); }, settings, task);
  if (!image) return std::nullopt;  // cancelled
  auto failure = WriteOutput(materialFile, material, *image, settings, output);
  progress_.End();
  return failure;
}

std::optional<BakeRun::Failure> BakeRun::WriteOutput(const std::string& materialFile,
                                                     const host::MaterialNode& material,
                                                     const host::Image& image,
                                                     const host::FlatBakeSettings& settings,
                                                     const PlannedOutput& output) {
  auto file = host::TemporaryFile::Create(output.file);
  if (!file) return Failure{ExitCode::FileTrouble, file.error()};
  const auto hash = host::WriteImage(file->Path(), image, output.format,
                                     {kProgramName, RecipeOf(material, settings)});
  if (!hash) {
    return Failure{
        ExitCode::FileTrouble,
        fmt::format("{}: cannot be written: {}", host::Utf8FromPath(output.file), hash.error())};
  }
  if (Cancelled()) return std::nullopt;
  if (const auto committed = file->Commit(); !committed) {
    return Failure{ExitCode::FileTrouble, committed.error()};
  }
  Succeed(materialFile, output, settings, *hash);
  return std::nullopt;
}

void BakeRun::Succeed(const std::string& materialFile, const PlannedOutput& output,
                      const host::FlatBakeSettings& settings, const std::string& hash) {
  progress_.End();
  tally_.Succeed();
  const std::string name = host::Utf8FromPath(output.file);
  if (!options_.quiet && !options_.json) Print(name + '\n');
  Json::Object entry = {{"material", Json(materialFile)},
                        {"output", Json(name)},
                        {"width", host::JsonOf(settings.width)},
                        {"height", host::JsonOf(settings.height)},
                        {"depth", Json(std::string(NameOf(output.format.depth)))},
                        {"time", host::JsonOf(settings.time)},
                        {"pixelHash", Json(hash)}};
  if (output.frame) entry.push_back({"frame", host::JsonOf(*output.frame)});
  report_.push_back(Json(std::move(entry)));
}

void BakeRun::Fail(const std::string& materialFile, const Failure& failure) {
  progress_.End();
  tally_.Fail(failure.code);
  Complain(failure.message);
  report_.push_back(
      Json(Json::Object{{"material", Json(materialFile)}, {"error", Json(failure.message)}}));
}

}  // namespace sorvanix::cli
