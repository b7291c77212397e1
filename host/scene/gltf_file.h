// glTF 2.0, as text or binary, through tinygltf: the triangles of the default scene with their
// normals and texture coordinates, placed by their nodes.
//
// Cameras, materials, skins, morph targets and animations are not read. Accessors without a buffer
// view, or sparse ones, are refused.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "host/scene/mesh.h"

namespace sorvanix::host {

/// `bytes` is the content of `file`, beside which its buffers are looked for. The error is one line
/// without the file's name.
tl::expected<PolygonMesh, std::string> ReadGltf(const std::string& bytes,
                                                const std::filesystem::path& file);

}  // namespace sorvanix::host
