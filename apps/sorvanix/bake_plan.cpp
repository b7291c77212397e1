#include "apps/sorvanix/bake_plan.h"

#include <fmt/format.h>

#include <map>

#include "apps/sorvanix/output_name.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

std::string TemplateOf(const BakeOptions& options) {
  if (!options.picture.output.empty()) return options.picture.output;
  std::string name = "<material>";
  if (options.channel != ChannelColour) name += "_<channel>";
  if (options.picture.frames) name += ".<frame>";
  if (options.udim) name += ".<UDIM>";
  return name + ".png";
}

std::vector<PlannedPicture> OutputsOf(const BakeOptions& options, const std::string& nameTemplate,
                                      const std::string& material,
                                      const std::vector<std::optional<host::UvTile>>& tiles) {
  NameParts parts = {.material = host::Utf8FromPath(host::PathFromUtf8(material).stem()),
                     .channel = options.ChannelName()};
  std::vector<PlannedPicture> outputs;
  for (const FrameTime& at : options.picture.Frames()) {
    parts.frame = at.frame;
    for (const std::optional<host::UvTile>& tile : tiles) {
      if (tile) parts.udim = tile->Udim();
      outputs.push_back({host::PathFromUtf8(FillName(nameTemplate, parts)), {}, at, tile});
    }
  }
  return outputs;
}

tl::expected<void, std::string> CheckTokens(const BakeOptions& options,
                                            const std::string& nameTemplate) {
  const auto& frames = options.picture.frames;
  if (frames && frames->first != frames->last && !HasFrameToken(nameTemplate)) {
    return tl::unexpected(
        fmt::format("--output: {}: several frames need <frame> or %04d in the name", nameTemplate));
  }
  if (options.udim && !HasUdimToken(nameTemplate)) {
    return tl::unexpected(
        fmt::format("--output: {}: --udim needs <UDIM> in the name", nameTemplate));
  }
  return {};
}

}  // namespace

tl::expected<BakePlan, std::string> PlanBake(const BakeOptions& options,
                                             const std::vector<host::UvTile>& tiles) {
  const std::string nameTemplate = TemplateOf(options);
  if (const auto tokens = CheckTokens(options, nameTemplate); !tokens) {
    return tl::unexpected(tokens.error());
  }
  std::vector<std::optional<host::UvTile>> wanted(tiles.begin(), tiles.end());
  if (!options.udim) wanted = {std::nullopt};
  BakePlan plan;
  std::map<std::filesystem::path, std::string> madeFrom;
  for (const std::string& material : options.materials) {
    plan.push_back(OutputsOf(options, nameTemplate, material, wanted));
    for (PlannedPicture& output : plan.back()) {
      if (const auto format = ChooseFormat(output, options.picture); !format) {
        return tl::unexpected(format.error());
      }
      const auto [place, isNew] = madeFrom.emplace(output.file.lexically_normal(), material);
      if (!isNew) {
        return tl::unexpected(fmt::format("--output: {} and {} would both be written to {}",
                                          place->second, material,
                                          host::Utf8FromPath(output.file)));
      }
    }
  }
  return plan;
}

}  // namespace sorvanix::cli
