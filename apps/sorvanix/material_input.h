// Material files as the verbs take them in.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "apps/sorvanix/exit_code.h"
#include "host/channels/material_file.h"

namespace CLI {
class App;
}

namespace sorvanix::cli {

struct MaterialInput {
  host::MaterialReading reading;
  ExitCode code = ExitCode::Done;  // or why there is no material
  std::string error;               // one line, that of the first error; empty without one
};

/// Adds --images, which may be given several times.
void AddImagesOption(CLI::App& app, std::vector<std::string>& folders);

/// Reads a file, with all that it refers to, and checks it. Bitmaps are looked for beside the file
/// that names them, then in the folders.
MaterialInput LoadMaterial(const std::filesystem::path& file,
                           const host::ShaderCatalogue& catalogue,
                           const std::vector<std::string>& imageFolders);

}  // namespace sorvanix::cli
