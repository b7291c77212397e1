#include "host/scene/obj_file.h"

#include <tiny_obj_loader.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <sstream>
#include <string_view>
#include <vector>

#include "host/scene/mesh_assembler.h"

namespace sorvanix::host {
namespace {

using Mesh = tl::expected<PolygonMesh, std::string>;

/// The lines that say what we read. The loader sees no others, since it believes the sizes that
/// some of them announce.
std::string GeometryLines(std::string_view text) {
  constexpr std::array<std::string_view, 4> keywords = {"v", "vn", "vt", "f"};
  std::string lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const std::string_view keyword = line.substr(0, line.find_first_of(" \t"));
    if (std::find(keywords.begin(), keywords.end(), keyword) == keywords.end()) continue;
    lines.append(line).push_back('\n');
  }
  return lines;
}

Vector VectorAt(const std::vector<float>& values, int index, std::size_t size) {
  if (index < 0) return {};
  const std::size_t first = static_cast<std::size_t>(index) * size;
  if (first + size > values.size()) return {};
  return {values[first], values[first + 1], size > 2 ? values[first + 2] : 0};
}

MeshAssembler::Result AddShape(const tinyobj::attrib_t& attributes, const tinyobj::mesh_t& shape,
                               MeshAssembler& assembler) {
  const std::size_t cornerCount = std::accumulate(shape.num_face_vertices.begin(),
                                                  shape.num_face_vertices.end(), std::size_t{0});
  // The loader counts the corners of a polygon in one byte.
  if (cornerCount != shape.indices.size()) {
    return tl::unexpected(std::string("there is a polygon with more than 255 corners"));
  }
  std::vector<MeshCorner> corners;
  std::size_t first = 0;
  for (const unsigned char count : shape.num_face_vertices) {
    corners.clear();
    for (std::size_t i = first; i < first + count; ++i) {
      const tinyobj::index_t& index = shape.indices[i];
      corners.push_back({.point = index.vertex_index,
                         .normal = VectorAt(attributes.normals, index.normal_index, 3),
                         .uvw = {VectorAt(attributes.texcoords, index.texcoord_index, 2)}});
    }
    first += count;
    if (auto added = assembler.AddPolygon(corners); !added) return added;
  }
  return {};
}

}  // namespace

Mesh ReadObj(const std::string& text) {
  tinyobj::attrib_t attributes;
  std::vector<tinyobj::shape_t> shapes;
  std::vector<tinyobj::material_t> materials;
  std::string warnings, errors;
  std::istringstream stream(GeometryLines(text));
  if (!tinyobj::LoadObj(&attributes, &shapes, &materials, &warnings, &errors, &stream, nullptr,
                        /*triangulate=*/false, /*default_vcols_fallback=*/false)) {
    return tl::unexpected(errors.substr(0, errors.find('\n')));
  }
  MeshAssembler assembler({.uvwSetCount = attributes.texcoords.empty() ? 0u : 1u,
                           .hasNormals = !attributes.normals.empty(),
                           .uvwUpwards = true});
  for (std::size_t i = 0; i + 2 < attributes.vertices.size(); i += 3) {
    const float* point = &attributes.vertices[i];
    if (auto added = assembler.AddPoint({point[0], point[1], point[2]}); !added) {
      return tl::unexpected(added.error());
    }
  }
  for (const tinyobj::shape_t& shape : shapes) {
    if (auto added = AddShape(attributes, shape.mesh, assembler); !added) {
      return tl::unexpected(added.error());
    }
  }
  return assembler.Take();
}

}  // namespace sorvanix::host
