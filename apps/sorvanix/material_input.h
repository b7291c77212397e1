// Material files as the verbs take them in.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "apps/sorvanix/exit_code.h"
#include "host/channels/material_file.h"

namespace sorvanix::cli {

struct MaterialInput {
  host::MaterialReading reading;
  ExitCode code = ExitCode::Done;  // or why there is no material
  std::string error;               // one line, that of the first error; empty without one
};

/// Reads a file and checks it.
MaterialInput LoadMaterial(const std::filesystem::path& file,
                           const host::ShaderCatalogue& catalogue);

}  // namespace sorvanix::cli
