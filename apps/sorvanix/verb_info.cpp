// sorvanix info: what an image file holds and how it was made.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>
#include <system_error>

#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/images/image_info.h"
#include "host/services/filenames.h"
#include "host/services/json.h"

namespace sorvanix::cli {

namespace {

using host::ImageInfo;
using host::Json;

struct InfoOptions {
  std::string image;
  bool json = false;
};

std::string AsJson(const std::string& file, const ImageInfo& info) {
  const auto number = [](int value) { return Json(std::int64_t{value}); };
  Json::Object entry = {{"file", Json(file)},
                        {"format", Json(info.format)},
                        {"width", number(info.width)},
                        {"height", number(info.height)},
                        {"channels", number(info.channels)},
                        {"depth", Json(info.depth)},
                        {"colourSpace", Json(info.colourSpace)},
                        {"pixelHash", Json(info.pixelHash)}};
  if (!info.recordedHash.empty()) {
    entry.push_back({"recordedHash", Json(info.recordedHash)});
    entry.push_back({"intact", Json(info.Intact())});
  }
  if (!info.program.empty()) entry.push_back({"program", Json(info.program)});
  if (!info.recipe.empty())
    entry.push_back({"recipe", host::ParseJson(info.recipe).value_or(Json())});
  return host::WriteJson(Json(std::move(entry))) + '\n';
}

std::string AsText(const std::string& file, const ImageInfo& info) {
  std::string text = fmt::format(
      "file          {}\nformat        {}\nsize          {}x{}, {} channels\n"
      "depth         {}\n",
      file, info.format, info.width, info.height, info.channels, info.depth);
  if (!info.colourSpace.empty()) text += fmt::format("colour space  {}\n", info.colourSpace);
  text += fmt::format("pixel hash    {}\n", info.pixelHash);
  if (!info.Intact()) {
    text += fmt::format("recorded hash {} (other pixels than those that were baked)\n",
                        info.recordedHash);
  }
  if (!info.program.empty()) text += fmt::format("program       {}\n", info.program);
  if (!info.recipe.empty()) text += fmt::format("recipe        {}\n", info.recipe);
  return text;
}

ExitCode Info(const InfoOptions& options) {
  const std::filesystem::path file = host::PathFromUtf8(options.image);
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) {
    Complain(fmt::format("{}: it is a folder", options.image));
    return ExitCode::FileTrouble;
  }
  if (!std::filesystem::is_regular_file(file, error)) {
    Complain(fmt::format("{}: there is no such file", options.image));
    return ExitCode::FileTrouble;
  }
  const auto info = host::ReadImageInfo(file);
  if (!info) {
    Complain(fmt::format("{}: {}", options.image, info.error()));
    return ExitCode::InvalidInput;
  }
  Print(options.json ? AsJson(options.image, *info) : AsText(options.image, *info));
  return ExitCode::Done;
}

}  // namespace

VerbAction DeclareInfo(CLI::App& app) {
  const auto options = std::make_shared<InfoOptions>();
  app.add_option("image", options->image, "An image file")->required();
  app.add_flag("--json", options->json, "Print a JSON object");
  return [options] { return Info(*options); };
}

}  // namespace sorvanix::cli
