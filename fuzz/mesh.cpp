// Fuzzes the readers of meshes: the first byte chooses OBJ, PLY or glTF. Whatever they take keeps
// the promises of a mesh.
#include "fuzz/shader_host.h"
#include "host/scene/gltf_file.h"
#include "host/scene/obj_file.h"
#include "host/scene/ply_file.h"

namespace sorvanix::fuzz {

namespace {

using Mesh = tl::expected<host::PolygonMesh, std::string>;

Mesh Read(char format, const std::string& bytes) {
  switch (format) {
    case 'o':
      return host::ReadObj(bytes);
    case 'p':
      return host::ReadPly(bytes);
    default:  // a folder that cannot be: what a model refers to is not there
      return host::ReadGltf(bytes, "/dev/null/model.gltf");
  }
}

void Run(std::string_view bytes) {
  if (bytes.empty()) return;
  const Mesh mesh = Read(bytes.front(), std::string(bytes.substr(1)));
  if (!mesh) {
    SORVANIX_EXPECT(!mesh.error().empty());
    return;
  }
  const auto known = static_cast<std::int64_t>(mesh->points.size());
  for (const PolygonRecord& polygon : mesh->polygons) {
    for (const std::int32_t corner : {polygon.a, polygon.b, polygon.c, polygon.d}) {
      SORVANIX_EXPECT(corner >= 0 && corner < known);
    }
  }
  SORVANIX_EXPECT(mesh->normals.empty() || mesh->normals.size() == mesh->polygons.size());
  for (const host::UvwSet& set : mesh->uvwSets) {
    SORVANIX_EXPECT(set.corners.size() == mesh->polygons.size());
  }
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  sorvanix::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
