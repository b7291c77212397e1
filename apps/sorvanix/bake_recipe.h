// What an image file tells of its bake.
#pragma once

#include <string>

#include "apps/sorvanix/bake_options.h"
#include "apps/sorvanix/bake_picture.h"
#include "apps/sorvanix/picture_file.h"
#include "host/channels/material.h"

namespace sorvanix::cli {

/// JSON text of an object: what to bake again to get the same picture. Its "material" is a material
/// file again.
std::string RecipeOf(const host::MaterialNode& material, const BakeOptions& options,
                     const BakedMesh& mesh, const PlannedPicture& output);

}  // namespace sorvanix::cli
