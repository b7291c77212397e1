#include "apps/sorvanix/bake_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <system_error>

#include "apps/sorvanix/output_name.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

constexpr const char* kChannelName = "colour";

std::string TemplateOf(const BakeOptions& options) {
  if (!options.output.empty()) return options.output;
  return options.frames ? "<material>.<frame>.png" : "<material>.png";
}

std::vector<PlannedOutput> OutputsOf(const BakeOptions& options, const std::string& nameTemplate,
                                     const std::string& material) {
  NameParts parts = {host::Utf8FromPath(host::PathFromUtf8(material).stem()), kChannelName, {}};
  const auto output = [&](float time) {
    return PlannedOutput{host::PathFromUtf8(FillName(nameTemplate, parts)), {}, parts.frame, time};
  };
  if (!options.frames) return {output(options.settings.time)};
  std::vector<PlannedOutput> outputs;
  for (int frame = options.frames->first; frame <= options.frames->last; ++frame) {
    parts.frame = frame;
    outputs.push_back(output(static_cast<float>(frame / options.framesPerSecond)));
  }
  return outputs;
}

// A bake must not replace what it is made from, whatever the two names look like.
bool IsMaterial(const std::filesystem::path& output, const std::vector<std::string>& materials) {
  return std::any_of(materials.begin(), materials.end(), [&output](const std::string& material) {
    std::error_code absent;
    return std::filesystem::equivalent(output, host::PathFromUtf8(material), absent);
  });
}

}  // namespace

tl::expected<BakePlan, std::string> PlanBake(const BakeOptions& options) {
  const std::string nameTemplate = TemplateOf(options);
  if (options.frames && options.frames->first != options.frames->last &&
      !HasFrameToken(nameTemplate)) {
    return tl::unexpected(
        fmt::format("--output: {}: several frames need <frame> or %04d in the name", nameTemplate));
  }
  BakePlan plan;
  std::map<std::filesystem::path, std::string> madeFrom;
  for (const std::string& material : options.materials) {
    plan.push_back(OutputsOf(options, nameTemplate, material));
    for (PlannedOutput& output : plan.back()) {
      const auto format = host::ChooseImageFormat(output.file, options.depth);
      if (!format) return tl::unexpected(fmt::format("--output: {}", format.error()));
      output.format = *format;
      if (IsMaterial(output.file, options.materials)) {
        return tl::unexpected(fmt::format("--output: {}: this is a material to be baked",
                                          host::Utf8FromPath(output.file)));
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
