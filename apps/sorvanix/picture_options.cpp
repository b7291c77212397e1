#include "apps/sorvanix/picture_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/progress.h"
#include "host/bake/flat_bake.h"

namespace sorvanix::cli {

namespace {

constexpr int kMostThreads = 1024;
constexpr int kLastFrame = 9999999;

// A whole text as a number without a sign.
std::optional<int> Number(std::string_view text) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || text.starts_with('-')) return std::nullopt;
  return number;
}

struct Pair {
  int first, second;
};

// "AxB", for the separator x, or "A" for A twice.
std::optional<Pair> NumberPair(std::string_view text, char separator) {
  const std::size_t place = text.find(separator);
  const auto first = Number(text.substr(0, place));
  const auto second = place == std::string_view::npos ? first : Number(text.substr(place + 1));
  if (!first || !second) return std::nullopt;
  return Pair{*first, *second};
}

void SetSize(const std::string& text, PictureOptions& options) {
  const auto isSide = [](int side) { return side >= 1 && side <= host::kLargestBake; };
  const auto size = NumberPair(text, 'x');
  if (!size || !isSide(size->first) || !isSide(size->second)) {
    throw CLI::ValidationError("--size", fmt::format("'{}' is no size: WxH or N, each from 1 to {}",
                                                     text, host::kLargestBake));
  }
  options.width = size->first;
  options.height = size->second;
}

void SetFrames(const std::string& text, std::optional<FrameRange>& frames) {
  const auto range = NumberPair(text, '-');
  if (!range || range->first > range->second || range->second > kLastFrame) {
    throw CLI::ValidationError(
        "--frames", fmt::format("'{}' is no range of frames: A-B or A, from 0 to {}, the first "
                                "not above the last",
                                text, kLastFrame));
  }
  frames = FrameRange{range->first, range->second};
}

void SetTime(double time, PictureOptions& options) {
  if (!(std::fabs(time) <= std::numeric_limits<float>::max())) {
    throw CLI::ValidationError("--time", "is no number of seconds");
  }
  options.time = static_cast<float>(time);
}

}  // namespace

std::vector<FrameTime> PictureOptions::Frames() const {
  if (!frames) return {{std::nullopt, time}};
  std::vector<FrameTime> all;
  for (int frame = frames->first; frame <= frames->last; ++frame) {
    all.push_back({frame, static_cast<float>(frame / framesPerSecond)});
  }
  return all;
}

void AddPictureOptions(CLI::App& app, PictureOptions& options, const PictureHelp& help) {
  app.add_option("-o,--output", options.output, help.output)->type_name("NAME");
  app.add_option_function<std::string>(
         "--size", [&options](const std::string& text) { SetSize(text, options); }, help.size)
      ->type_name("WxH|N");
  app.add_option("--samples", options.samples,
                 "Samples along one side of a pixel: N is the mean of N x N")
      ->check(CLI::Range(1, host::kMostSamples))
      ->type_name("N")
      ->capture_default_str();
  CLI::Option* const time =
      app.add_option_function<double>(
             "--time", [&options](double seconds) { SetTime(seconds, options); },
             "Seconds of animation; default 0")
          ->type_name("SECONDS");
  CLI::Option* const frames =
      app.add_option_function<std::string>(
             "--frames", [&options](const std::string& text) { SetFrames(text, options.frames); },
             "Makes each frame from A to B, at the time frame / fps")
          ->type_name("A-B")
          ->excludes(time);
  app.add_option("--fps", options.framesPerSecond, "Frames per second")
      ->check(CLI::Range(1e-3, 1e6))
      ->needs(frames)
      ->type_name("N")
      ->capture_default_str();
  app.add_option_function<std::string>(
         "--depth", [&options](const std::string& name) { options.depth = host::DepthNamed(name); },
         "Bits of a value: 8 or 16 for png, 8, 16 or float for tif, half or float for exr, 8 for "
         "jpg; default 8, for exr half")
      ->check(CLI::IsMember({"8", "16", "half", "float"}));
  app.add_option("--threads", options.threads, "Threads; 0 is one for each CPU")
      ->check(CLI::Range(0, kMostThreads))
      ->type_name("N")
      ->capture_default_str();
  app.add_flag("--resume", options.resume,
               "Leave out pictures that are there already, whole and of the same recipe");
  AddImagesOption(app, options.imageFolders);
  AddModuleOption(app, options.module);
  AddProgressOption(app, options.progress);
  app.add_flag("--json", options.json, help.json);
  app.add_flag("--quiet", options.quiet, "Print errors only");
}

}  // namespace sorvanix::cli
