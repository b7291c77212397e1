// Meshes out of files: OBJ, PLY and glTF.
//
// These formats are right-handed with z towards the viewer. Reading turns them into the space of
// mesh.h by negating z and the order of corners, so that a model looks as its author saw it;
// texture coordinates get their v downwards. Polygons with more than four corners become fans of
// triangles.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "host/scene/mesh.h"

namespace sorvanix::host {

/// By the file's extension: .obj, .ply, .gltf, .glb. Everything in the file becomes one mesh, which
/// may be empty. The error is one line that begins with the file's name.
tl::expected<PolygonMesh, std::string> ReadMeshFile(const std::filesystem::path& file);

}  // namespace sorvanix::host
