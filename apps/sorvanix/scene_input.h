// Scene files as the verbs take them in that check and rewrite them.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/sorvanix/exit_code.h"
#include "host/scene/scene_file.h"

namespace sorvanix::cli {

struct SceneInput {
  host::SceneReading reading;
  ExitCode code = ExitCode::Done;  // or why there is no scene
  std::string error;               // one line; empty where the reading tells what is wrong
};

/// Whether a file is a scene by what stands in it; false too for one that cannot be read.
bool IsSceneFile(const std::filesystem::path& file);

/// Reads a scene in either form, with all that it refers to, and checks it.
SceneInput LoadSceneInput(const std::filesystem::path& file, const host::ShaderCatalogue& catalogue,
                          const std::vector<std::string>& imageFolders);

}  // namespace sorvanix::cli
