#include "apps/sorvanix/render_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <variant>

#include "apps/sorvanix/output_name.h"
#include "apps/sorvanix/program.h"
#include "apps/sorvanix/report.h"
#include "host/images/bitmap_texture.h"
#include "host/render/renderer.h"
#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"
#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::cli {

namespace {

using host::Json;

// Whether a picture depends on the order of its samples.
bool DrawsRandomNumbers(const host::Scene& scene) {
  for (const auto& material : scene.materials) {
    for (const host::MaterialChannel& channel : material->channels) {
      const auto* node = std::get_if<host::MaterialNode>(&channel.graph);
      if (node != nullptr && host::DrawsRandomNumbers(*node)) return true;
    }
  }
  return false;
}

void Unlink(host::Scene& scene) {
  for (const auto& material : scene.materials) {
    for (host::MaterialChannel& channel : material->channels) channel.link.reset();
  }
}

host::SceneReadingOptions ReadingOptions(const RenderOptions& options,
                                         const host::ShaderCatalogue& catalogue) {
  host::SceneReadingOptions reading = {.catalogue = &catalogue, .imageFolders = {}};
  for (const std::string& folder : options.picture.imageFolders) {
    reading.imageFolders.push_back(host::PathFromUtf8(folder));
  }
  return reading;
}

}  // namespace

tl::expected<std::vector<PlannedPicture>, std::string> PlanRender(const RenderOptions& options) {
  const auto& frames = options.picture.frames;
  std::string nameTemplate = options.picture.output;
  if (nameTemplate.empty()) nameTemplate = frames ? "<scene>.<frame>.png" : "<scene>.png";
  if (frames && frames->first != frames->last && !HasFrameToken(nameTemplate)) {
    return tl::unexpected(
        fmt::format("--output: {}: several frames need <frame> or %04d in the name", nameTemplate));
  }
  NameParts parts = {.scene = host::Utf8FromPath(host::PathFromUtf8(options.scene).stem())};
  std::vector<PlannedPicture> plan;
  for (const FrameTime& at : options.picture.Frames()) {
    parts.frame = at.frame;
    plan.push_back({host::PathFromUtf8(FillName(nameTemplate, parts)), {}, at, std::nullopt});
    if (const auto format = ChooseFormat(plan.back(), options.picture); !format) {
      return tl::unexpected(format.error());
    }
  }
  return plan;
}

RenderRun::RenderRun(const RenderOptions& options, const std::filesystem::path& modulePath,
                     const host::ShaderCatalogue& catalogue, const std::atomic<bool>& cancelled)
    : options_(options),
      modulePath_(modulePath),
      documents_(ReadingOptions(options, catalogue)),
      cancelled_(cancelled),
      progress_(options.picture.quiet ? "none" : options.picture.progress) {}

ExitCode RenderRun::Run(const std::vector<PlannedPicture>& plan) {
  const auto ready = ReadScene().and_then([&] { return Check(plan); }).and_then([&] {
    return CheckPlace(plan.front());
  });
  if (!ready) {
    Fail(ready.error());
  } else {
    for (std::size_t i = 0; i < plan.size() && !Cancelled(); ++i) {
      if (const auto rendered = RenderOutput(plan[i]); !rendered) {
        Fail(rendered.error());  // what stops one frame would stop the next one too
        break;
      }
    }
  }
  progress_.End();
  if (options_.picture.json) Print(host::WriteJson(Json(std::move(report_))) + '\n');
  if (Cancelled()) {
    Complain("cancelled");
    return ExitCode::Cancelled;
  }
  return tally_.Result();
}

tl::expected<void, Failure> RenderRun::ReadScene() {
  const std::filesystem::path file = host::PathFromUtf8(options_.scene);
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    return tl::unexpected(
        Failure{ExitCode::FileTrouble, fmt::format("{}: there is no such file", options_.scene)});
  }
  host::SetTextureLoader(host::OpenBitmapTexture);
  host::SceneReading reading = host::LoadScene(file, documents_.Options());
  std::vector<std::string> errors;
  for (const host::SceneProblem& problem : reading.problems) {
    const std::string line = Describe(file, problem);
    if (problem.isError) {
      errors.push_back(line);
    } else if (!options_.picture.quiet) {
      Warn(line);
    }
  }
  if (reading.scene == nullptr) {
    std::string message = errors.empty() ? options_.scene : errors.front();
    const std::size_t told = errors.empty() ? 0 : 1;
    const std::size_t others = errors.size() - told + reading.untold.errors;
    if (others > 0) message += fmt::format(" (and {} more)", others);
    return tl::unexpected(Failure{ExitCode::InvalidInput, message});
  }
  scene_ = std::move(reading.scene);
  files_ = FilesOf(*scene_);
  documents_.SetActive(scene_.get());
  const PictureOptions& picture = options_.picture;
  width_ = picture.width > 0 ? picture.width : scene_->camera.width;
  height_ = picture.height > 0 ? picture.height : scene_->camera.height;
  return {};
}

tl::expected<void, Failure> RenderRun::Check(const std::vector<PlannedPicture>& plan) const {
  for (const PlannedPicture& output : plan) {
    if (const auto checked = CheckPicture(output, width_, height_, inputs_); !checked) {
      return tl::unexpected(Failure{ExitCode::Usage, checked.error()});
    }
  }
  return {};
}

// Links are of the module that is loaded: with a new one they are made anew.
tl::expected<void, Failure> RenderRun::PrepareLinks(bool afresh) {
  if (afresh) Unlink(*scene_);
  if (auto loaded = module_.Load(modulePath_, afresh); !loaded) {
    return tl::unexpected(loaded.error());
  }
  WarnOnce(host::LinkMaterials(*scene_));
  return {};
}

tl::expected<void, Failure> RenderRun::RenderOutput(const PlannedPicture& output) {
  const std::string recipe = Recipe(output);
  if (options_.picture.resume && IsFinished(output, recipe)) {
    tally_.Succeed();
    return {};
  }
  // Equal renders give equal bytes: random numbers come from a new start and in one order.
  const bool isRandom = DrawsRandomNumbers(*scene_);
  if (auto prepared = PrepareLinks(isRandom); !prepared) return prepared;
  // The state of a shader may name bitmaps that only the links have opened.
  if (auto checked = Check({output}); !checked) return checked;

  progress_.Begin(host::Utf8FromPath(output.file));
  const auto picture = host::RenderPicture(
      *scene_,
      {.width = width_,
       .height = height_,
       .samples = options_.picture.samples,
       .time = output.at.time,
       .filtering = !options_.noFilter},
      {.threads = isRandom ? 1 : options_.picture.threads,
       .cancelled = &cancelled_,
       .progress = [this](int done, int total) { progress_.Update(done, total); }});
  progress_.End();
  if (!picture) return tl::unexpected(Failure{ExitCode::SomeFailed, picture.error()});
  WarnOnce(picture->problems);
  hasWarned_ = true;
  if (!picture->image) return {};  // cancelled
  const auto hash = WritePicture(output, *picture->image,
                                 {.program = kProgramName, .recipe = recipe}, cancelled_);
  if (!hash) return tl::unexpected(hash.error());
  if (*hash) Succeed(output, **hash);
  return {};
}

// The scene as it stands, so that the picture can be made again from it.
std::string RenderRun::Recipe(const PlannedPicture& output) const {
  Json::Object recipe = {{"scene", host::ParseJson(host::SceneText(*scene_)).value_or(Json())},
                         {"size", Json(Json::Array{host::JsonOf(width_), host::JsonOf(height_)})},
                         {"samples", host::JsonOf(options_.picture.samples)},
                         {"time", host::JsonOf(output.at.time)}};
  if (options_.noFilter) recipe.push_back({"filter", Json(false)});
  AddFiles(recipe, files_);
  return host::WriteJson(Json(std::move(recipe)), -1);
}

void RenderRun::WarnOnce(const std::vector<std::string>& warnings) {
  if (hasWarned_ || options_.picture.quiet) return;
  for (const std::string& warning : warnings) Warn(warning);
}

void RenderRun::Succeed(const PlannedPicture& output, const std::string& hash) {
  tally_.Succeed();
  const std::string name = host::Utf8FromPath(output.file);
  if (!options_.picture.quiet && !options_.picture.json) Print(name + '\n');
  if (!options_.picture.json) return;  // a row for nobody would only fill memory
  Json::Object entry = {{"scene", Json(options_.scene)},
                        {"output", Json(name)},
                        {"width", host::JsonOf(width_)},
                        {"height", host::JsonOf(height_)},
                        {"depth", Json(std::string(NameOf(output.format.depth)))},
                        {"time", host::JsonOf(output.at.time)}};
  if (KeepsPixels(output.format.file)) entry.push_back({"pixelHash", Json(hash)});
  if (output.at.frame) entry.push_back({"frame", host::JsonOf(*output.at.frame)});
  report_.push_back(Json(std::move(entry)));
}

void RenderRun::Fail(const Failure& failure) {
  progress_.End();
  tally_.Fail(failure.code);
  Complain(failure.message);
  if (!options_.picture.json) return;
  report_.push_back(
      Json(Json::Object{{"scene", Json(options_.scene)}, {"error", Json(failure.message)}}));
}

}  // namespace sorvanix::cli
