#include "host/scene/mesh_files.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>

#include "host/scene/gltf_file.h"
#include "host/scene/obj_file.h"
#include "host/scene/ply_file.h"
#include "host/services/filenames.h"
#include "host/services/text_file.h"

namespace sorvanix::host {
namespace {

using Mesh = tl::expected<PolygonMesh, std::string>;

struct FormatRow {
  std::string_view extension;
  Mesh (*read)(const std::string& bytes, const std::filesystem::path& file);
};

constexpr std::array<FormatRow, 4> kFormats = {
    {{".obj",
      [](const std::string& bytes, const std::filesystem::path&) { return ReadObj(bytes); }},
     {".ply",
      [](const std::string& bytes, const std::filesystem::path&) { return ReadPly(bytes); }},
     {".gltf", ReadGltf},
     {".glb", ReadGltf}}};

std::string LowerExtension(const std::filesystem::path& file) {
  std::string extension = Utf8FromPath(file.extension());
  for (char& c : extension) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return extension;
}

Mesh ReadByExtension(const std::filesystem::path& file) {
  const std::string extension = LowerExtension(file);
  const auto format = std::find_if(kFormats.begin(), kFormats.end(), [&](const FormatRow& row) {
    return row.extension == extension;
  });
  if (format == kFormats.end()) {
    return tl::unexpected(
        std::string("unknown kind of mesh; .obj, .ply, .gltf and .glb are known"));
  }
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) {
    return tl::unexpected(std::string("there is no such file"));
  }
  const auto bytes = ReadTextFile(file);
  if (!bytes) return tl::unexpected(std::string("the file cannot be read"));
  return format->read(*bytes, file);
}

}  // namespace

Mesh ReadMeshFile(const std::filesystem::path& file) {
  Mesh mesh;
  try {
    mesh = ReadByExtension(file);
  } catch (const std::exception& exception) {  // out of memory, or a loader's own
    mesh = tl::unexpected(std::string(exception.what()));
  }
  if (!mesh) return tl::unexpected(Utf8FromPath(file) + ": " + mesh.error());
  return mesh;
}

}  // namespace sorvanix::host
