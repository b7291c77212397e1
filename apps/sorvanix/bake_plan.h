// Which files a bake makes: settled and checked before anything is baked.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "apps/sorvanix/bake_options.h"

namespace sorvanix::cli {

struct PlannedOutput {
  std::filesystem::path file;
  host::ImageFormat format;
  std::optional<int> frame;
  float time = 0;
};

/// The outputs of each material, in the order of the options' materials.
using BakePlan = std::vector<std::vector<PlannedOutput>>;

/// The error, of one line, is one of usage: a format that cannot be written, one name for two
/// outputs.
tl::expected<BakePlan, std::string> PlanBake(const BakeOptions& options);

}  // namespace sorvanix::cli
