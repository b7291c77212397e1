#include "host/scene/gltf_file.h"

#include <tiny_gltf.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "host/scene/gltf_accessor.h"
#include "host/scene/gltf_nodes.h"
#include "host/scene/mesh_assembler.h"
#include "host/services/filenames.h"
#include "host/services/text_file.h"

namespace sorvanix::host {
namespace {

using Result = MeshAssembler::Result;

bool IsFile(const std::string& path, void*) {
  std::error_code error;
  return std::filesystem::is_regular_file(PathFromUtf8(path), error);
}

/// Plain files only: a model that names a device must not stop the program.
bool ReadFile(std::vector<unsigned char>* content, std::string* error, const std::string& path,
              void*) {
  const auto text = IsFile(path, nullptr) ? ReadTextFile(PathFromUtf8(path)) : std::nullopt;
  if (!text) {
    if (error != nullptr) *error += "cannot read " + path;
    return false;
  }
  content->assign(text->begin(), text->end());
  return true;
}

tl::expected<tinygltf::Model, std::string> Parse(const std::string& bytes,
                                                 const std::filesystem::path& file) {
  if (bytes.size() > std::numeric_limits<std::int32_t>::max()) {
    return tl::unexpected(std::string("the file is too large"));
  }
  tinygltf::TinyGLTF parser;
  parser.SetFsCallbacks({.FileExists = IsFile,
                         .ExpandFilePath = [](const std::string& path, void*) { return path; },
                         .ReadWholeFile = ReadFile,
                         .WriteWholeFile = nullptr,
                         .user_data = nullptr});
  const auto skipImage = [](tinygltf::Image*, int, std::string*, std::string*, int, int,
                            const unsigned char*, int, void*) { return true; };
  parser.SetImageLoader(skipImage, nullptr);
  tinygltf::Model model;
  std::string error, warning;
  const std::string folder = Utf8FromPath(file.parent_path());
  const auto size = static_cast<unsigned>(bytes.size());
  const bool parsed =
      bytes.starts_with("glTF")
          ? parser.LoadBinaryFromMemory(&model, &error, &warning,
                                        reinterpret_cast<const unsigned char*>(bytes.data()), size,
                                        folder)
          : parser.LoadASCIIFromString(&model, &error, &warning, bytes.data(), size, folder);
  if (parsed) return model;
  return tl::unexpected(error.empty() ? "this is no glTF file" : error.substr(0, error.find('\n')));
}

std::string UvwName(std::size_t set) { return "TEXCOORD_" + std::to_string(set); }

/// What any of the triangles has, all get.
MeshLayout LayoutOf(const tinygltf::Model& model) {
  MeshLayout layout;
  for (const tinygltf::Mesh& mesh : model.meshes) {
    for (const tinygltf::Primitive& part : mesh.primitives) {
      layout.hasNormals = layout.hasNormals || part.attributes.contains("NORMAL");
      for (std::size_t set = layout.uvwSetCount; set < kMostUvwSets; ++set) {
        if (part.attributes.contains(UvwName(set))) layout.uvwSetCount = set + 1;
      }
    }
  }
  return layout;
}

/// One group of triangles with the accessors of its corners.
class Part {
 public:
  static tl::expected<Part, std::string> Open(const tinygltf::Model& model,
                                              const tinygltf::Primitive& source) {
    Part part;
    part.mode_ = source.mode < 0 ? TINYGLTF_MODE_TRIANGLES : source.mode;
    const auto position = source.attributes.find("POSITION");
    if (position == source.attributes.end()) return part;  // allowed, and nothing to see
    if (auto error = OpenInto(part.points_, model, position->second, 3)) {
      return tl::unexpected(*error);
    }
    if (const auto normal = source.attributes.find("NORMAL"); normal != source.attributes.end()) {
      if (auto error = OpenInto(part.normals_, model, normal->second, 3)) {
        return tl::unexpected(*error);
      }
    }
    for (std::size_t set = 0; set < kMostUvwSets; ++set) {
      const auto uvw = source.attributes.find(UvwName(set));
      if (uvw == source.attributes.end()) continue;
      if (auto error = OpenInto(part.uvws_[set], model, uvw->second, 2)) {
        return tl::unexpected(*error);
      }
    }
    if (source.indices >= 0) {
      if (auto error = OpenInto(part.indices_, model, source.indices, 1)) {
        return tl::unexpected(*error);
      }
      if (!part.indices_->IsIndex()) return tl::unexpected(std::string("indices must be integers"));
    }
    return part;
  }

  Result AddTo(MeshAssembler& assembler, const GltfPlacement& placement) const {
    if (!points_) return {};
    const auto base = static_cast<std::int64_t>(assembler.PointCount());
    for (std::size_t i = 0; i < points_->Count(); ++i) {
      if (auto added = assembler.AddPoint(placement.Point(Triple(*points_, i))); !added) {
        return added;
      }
    }
    const std::size_t count = indices_ ? indices_->Count() : points_->Count();
    const bool isList = mode_ == TINYGLTF_MODE_TRIANGLES;
    const bool isStrip = mode_ == TINYGLTF_MODE_TRIANGLE_STRIP;
    if (!isList && !isStrip && mode_ != TINYGLTF_MODE_TRIANGLE_FAN) return {};  // points and lines
    for (std::size_t i = 2; i < count; i += isList ? 3 : 1) {
      std::array<std::size_t, 3> places = {i - 2, i - 1, i};
      if (mode_ == TINYGLTF_MODE_TRIANGLE_FAN) places[0] = 0;
      // Every second triangle of a strip runs the other way round, and so does a mirrored mesh.
      if ((isStrip && i % 2 == 1) != placement.Mirrors()) std::swap(places[0], places[1]);
      std::array<MeshCorner, 3> corners;
      for (std::size_t j = 0; j < 3; ++j) corners[j] = CornerAt(places[j], base, placement);
      if (auto added = assembler.AddPolygon(corners); !added) return added;
    }
    return {};
  }

 private:
  static std::optional<std::string> OpenInto(std::optional<GltfAccessor>& target,
                                             const tinygltf::Model& model, int index,
                                             std::size_t components) {
    auto accessor = GltfAccessor::Open(model, index);
    if (!accessor) return accessor.error();
    if (accessor->Components() != components) return "an accessor has the wrong type";
    target = *accessor;
    return std::nullopt;
  }

  static std::array<double, 3> Triple(const GltfAccessor& accessor, std::size_t i) {
    return {accessor.Number(i, 0), accessor.Number(i, 1), accessor.Number(i, 2)};
  }

  MeshCorner CornerAt(std::size_t place, std::int64_t base, const GltfPlacement& placement) const {
    const std::size_t point =
        indices_ ? static_cast<std::size_t>(indices_->Number(place, 0)) : place;
    MeshCorner corner = {.point = -1};  // refused
    if (point >= points_->Count()) return corner;
    corner.point = base + static_cast<std::int64_t>(point);
    if (normals_ && point < normals_->Count()) {
      corner.normal = placement.Normal(Triple(*normals_, point));
    }
    for (std::size_t set = 0; set < kMostUvwSets; ++set) {
      if (!uvws_[set] || point >= uvws_[set]->Count()) continue;
      corner.uvw[set] = {static_cast<float>(uvws_[set]->Number(point, 0)),
                         static_cast<float>(uvws_[set]->Number(point, 1)), 0};
    }
    return corner;
  }

  int mode_ = 0;
  std::optional<GltfAccessor> points_, normals_, indices_;
  std::array<std::optional<GltfAccessor>, kMostUvwSets> uvws_;
};

}  // namespace

tl::expected<PolygonMesh, std::string> ReadGltf(const std::string& bytes,
                                                const std::filesystem::path& file) {
  const auto model = Parse(bytes, file);
  if (!model) return tl::unexpected(model.error());
  const auto instances = GltfInstances(*model);
  if (!instances) return tl::unexpected(instances.error());
  MeshAssembler assembler(LayoutOf(*model));
  for (const GltfInstance& instance : *instances) {
    for (const tinygltf::Primitive& source : model->meshes[instance.mesh].primitives) {
      const auto part = Part::Open(*model, source);
      if (!part) return tl::unexpected(part.error());
      if (auto added = part->AddTo(assembler, instance.placement); !added) {
        return tl::unexpected(added.error());
      }
    }
  }
  return assembler.Take();
}

}  // namespace sorvanix::host
