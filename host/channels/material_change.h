// A material file after its outermost shader was changed: what did not change stays as it was
// written, with its references to other files.
#pragma once

#include <filesystem>

#include "host/channels/material.h"
#include "host/services/containers.h"
#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// Where a material's references to files count from: before the change, and after it.
struct MaterialFolders {
  std::filesystem::path before, after;
};

/// The JSON of a material whose shader had one set of parameters and now has another: parameters
/// and inputs that differ are written anew, inputs without what is at its default. References to
/// files are made to hold from the new folder, as long as they lead to a file from the old one.
Json ChangedMaterial(const Json& material, const ShaderDescription& shader,
                     const ShaderCatalogue& catalogue, const Container& before,
                     const Container& after, const MaterialFolders& folders);

}  // namespace sorvanix::host
