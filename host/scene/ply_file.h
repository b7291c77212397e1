// PLY as text and in both binary forms: vertices with normals and one texture coordinate, faces,
// also with texture coordinates of their own.
//
// Other elements and properties are stepped over. The file is not trusted: counts are compared with
// its size before memory is taken for them.
#pragma once

#include <string>
#include <string_view>
#include <tl/expected.hpp>

#include "host/scene/mesh.h"

namespace sorvanix::host {

/// The error is one line without the file's name.
tl::expected<PolygonMesh, std::string> ReadPly(std::string_view bytes);

}  // namespace sorvanix::host
