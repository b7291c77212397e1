// Wavefront OBJ through tinyobjloader: points, normals, texture coordinates and faces. Materials,
// lines and curves are not read.
#pragma once

#include <string>
#include <tl/expected.hpp>

#include "host/scene/mesh.h"

namespace sorvanix::host {

/// The error is one line without the file's name.
tl::expected<PolygonMesh, std::string> ReadObj(const std::string& text);

}  // namespace sorvanix::host
