// The scenes that show one material: the module's preview scenes with the material on their object.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <tl/expected.hpp>

#include "apps/studio/document/json_edit.h"

namespace sorvanix::studio {

/// What the material lies on.
struct PreviewObject {
  enum class Kind { Sphere, Cube, Plane, Cylinder, Torus, Mesh, Scene };
  Kind kind = Kind::Sphere;
  Json mesh = {};  ///< of a mesh: the object as a scene file spells it

  static constexpr int kKinds = 7;
};

/// For people: "Sphere", ...
const char* NameOf(PreviewObject::Kind kind);

/// A mesh file as an object of about the size of the primitives, around the origin. The error is
/// one line that begins with the file's name.
tl::expected<PreviewObject, std::string> LoadPreviewMesh(const std::filesystem::path& file);

class PreviewScenes {
 public:
  /// The folder of the module's resources. What cannot be read from it is replaced by a plain
  /// scene.
  explicit PreviewScenes(const std::filesystem::path& resources);

  /// The text of a scene file that shows the material, which is the first one in it, of the version
  /// of the document's own `scene`. That scene itself is what Kind::Scene shows.
  std::string TextFor(const Json& material, const PreviewObject& object, const Json& scene) const;

 private:
  std::map<PreviewObject::Kind, Json> scenes_;
};

}  // namespace sorvanix::studio
