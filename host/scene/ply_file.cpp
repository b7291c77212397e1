#include "host/scene/ply_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/scene/mesh_assembler.h"
#include "host/scene/ply_header.h"
#include "host/scene/ply_numbers.h"

namespace sorvanix::host {
namespace {

/// A number as a float; what does not fit becomes an infinity, which the mesh refuses.
float Narrow(double value) noexcept {
  constexpr double largest = std::numeric_limits<float>::max();
  if (value > largest) return std::numeric_limits<float>::infinity();
  if (value < -largest) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(value);
}

/// A number as an index; -1, which is none, for what cannot be one.
std::int64_t Index(double value) noexcept {
  return value >= 0 && value <= std::numeric_limits<std::uint32_t>::max() &&
                 value == std::floor(value)
             ? static_cast<std::int64_t>(value)
             : -1;
}

/// Where the numbers of a vector stand among the properties of a vertex.
struct VectorPlaces {
  std::optional<std::size_t> x, y, z;

  bool Complete() const noexcept { return x && y; }
  Vector Gather(const std::vector<double>& values) const {
    return {Narrow(values[*x]), Narrow(values[*y]), z ? Narrow(values[*z]) : 0};
  }
};

class PlyReader {
 public:
  PlyReader(std::string_view bytes, const PlyHeader& header)
      : header_(header), numbers_(bytes.substr(header.size), header.format) {}

  tl::expected<PolygonMesh, std::string> Read() {
    for (const PlyElement& element : header_.elements) {
      if (element.properties.empty()) continue;
      if (element.count > numbers_.BytesLeft() / element.LeastSize(header_.format) + 1) {
        return tl::unexpected(fmt::format("the file is too short for {} items of \"{}\"",
                                          element.count, element.name));
      }
      auto read = element.name == "vertex" ? ReadVertices(element)
                  : element.name == "face" ? ReadFaces(element)
                                           : Skip(element);
      if (!read) return tl::unexpected(read.error());
    }
    return Assemble();
  }

 private:
  using Result = tl::expected<void, std::string>;

  struct Face {
    std::size_t firstCorner, cornerCount;
  };

  Result Ended(const PlyElement& element) const {
    if (!numbers_.Failed()) return {};
    return tl::unexpected(
        fmt::format("the data of \"{}\" ends too early or is no number", element.name));
  }

  /// Reads one item into values_, one list for each property. False when the data has ended.
  bool ReadItem(const PlyElement& element) {
    values_.resize(element.properties.size());
    for (std::size_t i = 0; i < element.properties.size(); ++i) {
      const PlyProperty& property = element.properties[i];
      values_[i].clear();
      double count = 1;
      if (property.countType) count = numbers_.Next(*property.countType);
      for (double each = 0; each < count && !numbers_.Failed(); ++each) {
        values_[i].push_back(numbers_.Next(property.type));
      }
    }
    return !numbers_.Failed();
  }

  Result Skip(const PlyElement& element) {
    for (std::uint64_t i = 0; i < element.count; ++i) {
      if (!ReadItem(element)) break;
    }
    return Ended(element);
  }

  Result ReadVertices(const PlyElement& element) {
    const VectorPlaces point = {Scalar(element, {"x"}), Scalar(element, {"y"}),
                                Scalar(element, {"z"})};
    const VectorPlaces normal = {Scalar(element, {"nx"}), Scalar(element, {"ny"}),
                                 Scalar(element, {"nz"})};
    const VectorPlaces uvw = {Scalar(element, {"s", "u", "texture_u"}),
                              Scalar(element, {"t", "v", "texture_v"}), std::nullopt};
    if (!point.Complete() || !point.z) {
      return tl::unexpected(std::string("vertices have no x, y and z"));
    }
    hasNormals_ = normal.Complete() && normal.z;
    hasVertexUvw_ = uvw.Complete();
    std::vector<double> flat(element.properties.size());
    for (std::uint64_t i = 0; i < element.count; ++i) {
      if (!ReadItem(element)) break;
      for (std::size_t j = 0; j < flat.size(); ++j) {
        flat[j] = values_[j].empty() ? 0 : values_[j].front();
      }
      points_.push_back(point.Gather(flat));
      if (hasNormals_) normals_.push_back(normal.Gather(flat));
      if (hasVertexUvw_) uvws_.push_back(uvw.Gather(flat));
    }
    return Ended(element);
  }

  static std::optional<std::size_t> Scalar(const PlyElement& element,
                                           std::initializer_list<std::string_view> names) {
    const auto found = element.Find(names);
    return found && !element.properties[*found].countType ? found : std::nullopt;
  }

  Result ReadFaces(const PlyElement& element) {
    const auto indices = element.Find({"vertex_indices", "vertex_index"});
    const auto texcoords = element.Find({"texcoord"});
    if (!indices) return tl::unexpected(std::string("faces have no vertex_indices"));
    hasFaceUvw_ = texcoords.has_value();
    for (std::uint64_t i = 0; i < element.count; ++i) {
      if (!ReadItem(element)) break;
      faces_.push_back({corners_.size(), values_[*indices].size()});
      for (std::size_t j = 0; j < values_[*indices].size(); ++j) {
        corners_.push_back(Index(values_[*indices][j]));
        if (!hasFaceUvw_) continue;
        const std::vector<double>& list = values_[*texcoords];
        const bool isThere = 2 * j + 1 < list.size();
        faceUvws_.push_back(isThere ? Vector{Narrow(list[2 * j]), Narrow(list[2 * j + 1]), 0}
                                    : Vector{});
      }
    }
    return Ended(element);
  }

  tl::expected<PolygonMesh, std::string> Assemble() const {
    MeshAssembler assembler({.uvwSetCount = hasFaceUvw_ || hasVertexUvw_ ? 1u : 0u,
                             .hasNormals = hasNormals_,
                             .uvwUpwards = true});
    for (const Vector& point : points_) {
      if (auto added = assembler.AddPoint(point); !added) return tl::unexpected(added.error());
    }
    std::vector<MeshCorner> polygon;
    for (const Face& face : faces_) {
      polygon.clear();
      for (std::size_t i = face.firstCorner; i < face.firstCorner + face.cornerCount; ++i) {
        polygon.push_back(CornerAt(i));
      }
      if (auto added = assembler.AddPolygon(polygon); !added) return tl::unexpected(added.error());
    }
    return assembler.Take();
  }

  MeshCorner CornerAt(std::size_t i) const {
    MeshCorner corner = {.point = corners_[i]};
    const auto point = static_cast<std::size_t>(corner.point);
    const bool isThere = corner.point >= 0 && point < points_.size();
    if (hasNormals_ && isThere) corner.normal = normals_[point];
    if (hasFaceUvw_) {
      corner.uvw[0] = faceUvws_[i];
    } else if (hasVertexUvw_ && isThere) {
      corner.uvw[0] = uvws_[point];
    }
    return corner;
  }

  const PlyHeader& header_;
  PlyNumbers numbers_;
  std::vector<std::vector<double>> values_;  // of one item, by property
  bool hasNormals_ = false, hasVertexUvw_ = false, hasFaceUvw_ = false;
  std::vector<Vector> points_, normals_, uvws_;
  std::vector<Face> faces_;
  std::vector<std::int64_t> corners_;  // of all faces
  std::vector<Vector> faceUvws_;       // beside corners_
};

}  // namespace

tl::expected<PolygonMesh, std::string> ReadPly(std::string_view bytes) {
  const auto header = ReadPlyHeader(bytes);
  if (!header) return tl::unexpected(header.error());
  return PlyReader(bytes, *header).Read();
}

}  // namespace sorvanix::host
