// The walk through a scene file: JSON in, a scene and problems out.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/channels/problem_list.h"
#include "host/scene/scene_fields.h"
#include "host/scene/scene_file.h"
#include "host/scene/scene_format.h"
#include "host/services/json.h"

namespace sorvanix::host {

/// Reads one scene. It recurses into objects, which no text nests deeper than the JSON parser
/// allows.
class SceneReader {
 public:
  SceneReader(std::string_view text, const std::filesystem::path& file,
              const SceneReadingOptions& options)
      : text_(text), file_(file), options_(options) {}

  SceneReading Read();

 private:
  /// A value and the way to it.
  struct Place {
    const Json& json;
    std::string pointer;
  };

  void ReadScene(const Place& place);
  bool CheckFormat(const Place& place);
  void ReadCamera(const Place& place);

  void ReadMaterials(const Place& place);
  void ReadMaterial(const Place& place, Material& material);
  void ReadChannels(const Place& place, Material& material);
  void ReadChannel(const Place& place, MaterialChannel& channel);
  void ReadGraph(const Place& place, MaterialChannel& channel);
  void ReadGraphFile(const Place& place, const std::string& name, MaterialChannel& channel);
  void ReadGraphText(const Place& place, MaterialChannel& channel);

  void ReadObject(const Place& place, Object& parent);
  void ReadContent(const Place& place, const ObjectKind& kind, Object& object);
  void ReadMesh(const Place& place, MeshContent& content);
  void ReadParticle(const Place& place, ParticleContent& content);
  void ReadTexture(const Place& place, Object& object);
  void ReadMaterialOf(const Place& place, TextureTagNode& tag);
  void ReadActive(const Place& place, TextureTagNode& tag);
  void ReadTarget(const Place& place, Transform& transform);

  /// Whether the value of a member is an object; refused otherwise.
  bool IsObject(const Place& place, std::string_view what);
  /// The members of an object, or null with an error told: the items of lists must be objects.
  const Json::Object* Members(const Place& place, std::string_view what);
  /// Calls `read` for each item of the list under a name, if it is there.
  template <class ReadItem>
  void ForEach(const Place& place, std::string_view name, ReadItem&& read);
  /// The value of a name, if it is there.
  const Json* Find(const Place& place, std::string_view name) const {
    return place.json.Find(name);
  }
  static Place Below(const Place& place, std::string_view name, const Json& json);

  /// Takes those fields that the file gives.
  template <class Record>
  void ReadFields(const Place& place, const SceneFields<Record>& fields, Record& record) {
    for (const SceneField<Record>& field : fields) {
      if (const Json* given = Find(place, field.parameter.name)) {
        const auto value =
            ReadValue(Below(place, field.parameter.name, *given), field.parameter, field.rule);
        if (value) field.set(record, *value);
      }
    }
  }
  std::optional<ParameterValue> ReadValue(const Place& place, const ShaderParameter& parameter,
                                          const FieldRule& rule);

  template <class Record>
  static void AddNames(const SceneFields<Record>& fields, std::vector<std::string_view>& names) {
    for (const SceneField<Record>& field : fields) names.push_back(field.parameter.name);
  }
  /// Every name that is none of these is refused. To be called when the members that are known were
  /// read: what it answers are those that are not, and those that were refused.
  KeptMembers CheckNames(const Place& place, std::string_view what,
                         const std::vector<std::string_view>& names);

  void Fail(const Place& place, std::string message);
  void Warn(const Place& place, std::string message);
  /// What this program does not understand: an error, but a warning in a document of a later
  /// program, whose value is kept.
  void Refuse(const Place& place, std::string message);
  /// One without a file of its own has a position from the place on.
  void AddProblem(const Place& place, SceneProblem problem);

  std::string_view text_;
  const std::filesystem::path& file_;
  const SceneReadingOptions& options_;
  std::unique_ptr<Scene> scene_;
  std::map<std::filesystem::path, std::shared_ptr<const PolygonMesh>> meshes_;
  std::size_t polygons_ = 0;
  bool isLater_ = false;           // the document is of a later program
  std::set<std::string> refused_;  // pointers to values of such a document
  ProblemList problems_;
};

template <class ReadItem>
void SceneReader::ForEach(const Place& place, std::string_view name, ReadItem&& read) {
  const Json* given = Find(place, name);
  if (given == nullptr) return;
  const Place below = Below(place, name, *given);
  const auto* items = std::get_if<Json::Array>(&given->value);
  if (items == nullptr) {
    Refuse(below, "expected a list");
    return;
  }
  for (std::size_t i = 0; i < items->size(); ++i) {
    read(Below(below, std::to_string(i), (*items)[i]));
  }
}

}  // namespace sorvanix::host
