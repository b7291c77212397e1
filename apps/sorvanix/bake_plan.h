// Which files a bake makes: settled and checked before anything is baked.
#pragma once

#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "apps/sorvanix/bake_options.h"
#include "apps/sorvanix/picture_file.h"

namespace sorvanix::cli {

/// The outputs of each material, in the order of the options' materials.
using BakePlan = std::vector<std::vector<PlannedPicture>>;

/// `tiles` are those of --udim. The error, of one line, is one of usage: a format that cannot be
/// written, one name for two outputs.
tl::expected<BakePlan, std::string> PlanBake(const BakeOptions& options,
                                             const std::vector<host::UvTile>& tiles);

}  // namespace sorvanix::cli
