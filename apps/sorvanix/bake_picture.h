// One picture of a bake: flat, on a plane or on a mesh.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "apps/sorvanix/bake_options.h"
#include "apps/sorvanix/failure.h"
#include "apps/sorvanix/picture_file.h"
#include "host/bake/parallel_tiles.h"
#include "host/loader/shader.h"
#include "host/scene/mesh.h"

namespace sorvanix::cli {

/// What --mesh names; nothing without it.
struct BakedMesh {
  std::shared_ptr<const host::PolygonMesh> mesh;
  std::string hash;                 // of the mesh
  std::vector<host::UvTile> tiles;  // of --udim
};

/// Reads the mesh that the options name, and checks that it can be baked.
tl::expected<BakedMesh, Failure> LoadBakedMesh(const BakeOptions& options);

struct BakedPicture {
  std::optional<host::Image> image;   // nothing when it was cancelled
  std::vector<std::string> warnings;  // one line each
};

tl::expected<BakedPicture, Failure> BakePicture(host::Shader& shader, const BakeOptions& options,
                                                const BakedMesh& mesh,
                                                const PlannedPicture& picture,
                                                const host::TaskOptions& task);

}  // namespace sorvanix::cli
