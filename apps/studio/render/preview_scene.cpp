#include "apps/studio/render/preview_scene.h"

#include <algorithm>
#include <cmath>

#include "apps/studio/document/scene_edit.h"
#include "host/scene/mesh_files.h"
#include "host/services/filenames.h"
#include "host/services/json_numbers.h"
#include "host/services/text_file.h"

namespace sorvanix::studio {

namespace {

using Kind = PreviewObject::Kind;

constexpr const char* kNames[PreviewObject::kKinds] = {"Sphere", "Cube", "Plane", "Cylinder",
                                                       "Torus",  "Mesh", "Scene"};
// Of the object that the preview scenes are about.
constexpr std::string_view kObject = "Object";
// No name that a preview scene gives to a material of its own.
constexpr const char* kMaterial = "Shown";

/// The radius that shaders, cameras and lights are tuned to.
constexpr float kUsualRadius = 100;

void Show(Json& object) {
  SetMember(object, "textures",
            Json(Json::Array{Json(Json::Object{{"material", Json(std::string(kMaterial))}})}));
}

Vector Middle(const Vector& low, const Vector& high) {
  return {(low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2};
}

}  // namespace

const char* NameOf(Kind kind) { return kNames[static_cast<int>(kind)]; }

tl::expected<PreviewObject, std::string> LoadPreviewMesh(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(file, error);
  const auto mesh = host::ReadMeshFile(whole);
  if (!mesh) return tl::unexpected(mesh.error());
  if (mesh->points.empty()) {
    return tl::unexpected(host::Utf8FromPath(file) + ": there is nothing to see in this mesh");
  }
  Vector low = mesh->points.front(), high = low;
  for (const Vector& point : mesh->points) {
    low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
  }
  const float largest = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
  const float scale = largest > 0 ? 2 * kUsualRadius / largest : 1;
  const Vector middle = Middle(low, high);
  const Vector position = {-middle.x * scale, -low.y * scale - kUsualRadius, -middle.z * scale};
  Json object(Json::Object{{"kind", Json(std::string("mesh"))},
                           {"name", Json(std::string(kObject))},
                           {"file", Json(host::Utf8FromPath(whole))},
                           {"position", host::JsonOf(position)},
                           {"scale", host::JsonOf(Vector{scale, scale, scale})}});
  return PreviewObject{Kind::Mesh, std::move(object)};
}

PreviewScenes::PreviewScenes(const std::filesystem::path& resources) {
  for (const Kind kind : {Kind::Sphere, Kind::Cube, Kind::Plane, Kind::Cylinder, Kind::Torus}) {
    const std::string name = std::string("Preview_") + NameOf(kind) + "_C.c4d";
    const auto text = host::ReadTextFile(resources / name);
    auto scene = text ? host::ParseJson(*text) : tl::unexpected(host::JsonError{});
    scenes_[kind] = scene ? std::move(*scene) : NewScene();
  }
}

std::string PreviewScenes::TextFor(const Json& material, const PreviewObject& object,
                                   const Json& scene) const {
  if (object.kind == Kind::Scene) return host::WriteJson(scene);
  const bool isMesh = object.kind == Kind::Mesh;
  Json shown = scenes_.at(isMesh ? Kind::Sphere : object.kind);
  TakeVersion(shown, scene);
  Json named = material;
  SetMember(named, "name", Json(std::string(kMaterial)));
  MakeListMember(shown, "materials").insert(MakeListMember(shown, "materials").begin(), named);
  for (Json& each : MakeListMember(shown, "objects")) {
    if (TextMember(each, "name") != kObject) continue;
    if (isMesh) each = object.mesh;
    Show(each);
  }
  return host::WriteJson(shown);
}

}  // namespace sorvanix::studio
