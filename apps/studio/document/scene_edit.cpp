#include "apps/studio/document/scene_edit.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>

#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kNewScene = R"({
  "format": "sorvanix-scene", "version": 1, "background": "#1c1f24",
  "camera": { "position": [0, 90, -420], "target": [0, 0, 0] },
  "materials": [],
  "objects": [
    { "kind": "sphere", "name": "Object", "segmentsU": 96, "segmentsV": 48,
      "textures": [ { "material": "Material" } ] },
    { "kind": "ambientLight", "intensity": 0.34 },
    { "kind": "spotLight", "name": "Key", "position": [-260, 340, -360], "target": [0, 0, 0],
      "colour": [1, 0.97, 0.92], "intensity": 0.7, "innerAngle": 14, "outerAngle": 40 },
    { "kind": "omniLight", "name": "Rim", "position": [180, 300, 330], "intensity": 0.3,
      "shadows": false } ] })";

constexpr std::string_view kMaterials = "materials";

// Null for none, and for what stands there in a form of later programs.
Json::Array* ListMember(Json& json, std::string_view name) {
  Json* const found = FindMember(json, name);
  return found != nullptr ? std::get_if<Json::Array>(&found->value) : nullptr;
}

void ForEachObject(Json& holder, std::string_view list, const std::function<void(Json&)>& visit) {
  Json::Array* const objects = ListMember(holder, list);
  if (objects == nullptr) return;
  for (Json& object : *objects) {
    visit(object);
    ForEachObject(object, "children", visit);
  }
}

// Calls `visit` with the textures of every object that has some.
void ForEachTextures(Json& scene, const std::function<void(Json::Array&)>& visit) {
  ForEachObject(scene, "objects", [&visit](Json& object) {
    if (Json::Array* const textures = ListMember(object, "textures")) visit(*textures);
  });
}

class FileNames {
 public:
  explicit FileNames(const FolderChange& change) : change_(change) {}

  void Move(Json& json) const {
    auto* name = std::get_if<std::string>(&json.value);
    if (name == nullptr || name->empty() || change_.from.empty()) return;
    const fs::path path = host::PathFromUtf8(*name);
    if (path.is_absolute()) return;
    const fs::path whole = (change_.from / path).lexically_normal();
    const fs::path relative =
        change_.to.empty() ? fs::path() : whole.lexically_relative(change_.to);
    *name = host::Utf8FromPath(relative.empty() ? whole : relative);
  }

  // A graph is a shader or the name of a file, and so is what fills each input of a shader.
  void MoveInGraph(Json& graph) const {
    Move(graph);
    const host::ShaderDescription* shader = ShaderOf(graph, change_.catalogue);
    if (shader == nullptr) return;
    for (const host::ShaderInput& input : shader->inputs) {
      if (Json* content = FindMember(graph, input.name)) MoveInGraph(*content);
    }
  }

  void MoveInMaterial(Json& material) const {
    Json* channels = FindMember(material, "channels");
    auto* members = channels != nullptr ? std::get_if<Json::Object>(&channels->value) : nullptr;
    if (members == nullptr) return;
    for (host::JsonMember& channel : *members) {
      if (Json* graph = FindMember(channel.value, "graph")) MoveInGraph(*graph);
      if (Json* state = FindMember(channel.value, "state")) MoveInState(*state);
    }
  }

 private:
  // What shaders stored, and those behind their links: a bitmap is {"bitmap": name}.
  void MoveInState(Json& json) const {
    if (auto* elements = std::get_if<Json::Array>(&json.value)) {
      for (Json& element : *elements) MoveInState(element);
    } else if (auto* members = std::get_if<Json::Object>(&json.value)) {
      for (host::JsonMember& member : *members) {
        member.name == "bitmap" ? Move(member.value) : MoveInState(member.value);
      }
    }
  }

  const FolderChange& change_;
};

}  // namespace

Json NewScene() {
  return InsertMaterial(host::ParseJson(kNewScene).value(), 0, NewMaterial("Material"));
}

void TakeVersion(Json& scene, const Json& like) {
  if (const Json* version = like.Find("version")) SetMember(scene, "version", *version);
}

Json SceneOf(Json material, const Json& like) {
  Json scene = host::ParseJson(R"({"format":"sorvanix-scene","version":1})").value();
  TakeVersion(scene, like);
  return InsertMaterial(std::move(scene), 0, std::move(material));
}

std::string FirstError(const host::SceneReading& reading) {
  for (const host::SceneProblem& problem : reading.problems) {
    if (problem.isError) return problem.message;
  }
  return "the scene cannot be read";
}

Json NewMaterial(const std::string& name) {
  Json material(Json::Object{{"name", Json(name)}});
  SetMember(SetMember(material, "channels", Json(Json::Object())), "colour", Json(Json::Object()));
  return material;
}

std::vector<std::string> MaterialNames(const Json& scene) {
  std::vector<std::string> names;
  for (const Json& material : ListMember(scene, kMaterials)) {
    names.push_back(TextMember(material, "name"));
  }
  return names;
}

std::string FreeMaterialName(const Json& scene, const std::string& wanted) {
  const std::vector<std::string> names = MaterialNames(scene);
  // "Wood 2" is the second "Wood".
  const std::size_t end = wanted.find_last_not_of("0123456789");
  const bool isNumbered =
      end != std::string::npos && end > 0 && end + 1 < wanted.size() && wanted[end] == ' ';
  const std::string stem = isNumbered ? wanted.substr(0, end) : wanted;
  std::string name = wanted;
  for (int i = 2; std::find(names.begin(), names.end(), name) != names.end(); ++i) {
    name = fmt::format("{} {}", stem, i);
  }
  return name;
}

Json InsertMaterial(Json scene, std::size_t index, Json material) {
  Json::Array& materials = MakeListMember(scene, kMaterials);
  const auto place = static_cast<std::ptrdiff_t>(std::min(index, materials.size()));
  materials.insert(materials.begin() + place, std::move(material));
  return scene;
}

Json RemoveMaterial(Json scene, std::size_t index) {
  Json::Array& materials = MakeListMember(scene, kMaterials);
  const std::string name = TextMember(materials.at(index), "name");
  materials.erase(materials.begin() + static_cast<std::ptrdiff_t>(index));
  ForEachTextures(scene, [&name](Json::Array& textures) {
    std::erase_if(textures,
                  [&name](const Json& texture) { return TextMember(texture, "material") == name; });
  });
  return scene;
}

Json RenameMaterial(Json scene, std::size_t index, const std::string& name) {
  Json& material = MakeListMember(scene, kMaterials).at(index);
  const std::string former = TextMember(material, "name");
  SetMember(material, "name", Json(name));
  ForEachTextures(scene, [&](Json::Array& textures) {
    for (Json& texture : textures) {
      if (TextMember(texture, "material") == former) SetMember(texture, "material", Json(name));
    }
  });
  return scene;
}

Json MoveMaterialTo(Json scene, std::size_t from, std::size_t to) {
  Json::Array& materials = MakeListMember(scene, kMaterials);
  const auto at = [&materials](std::size_t index) {
    return materials.begin() + static_cast<std::ptrdiff_t>(index);
  };
  if (from < to) std::rotate(at(from), at(from + 1), at(to + 1));
  if (to < from) std::rotate(at(to), at(from), at(from + 1));
  return scene;
}

const host::ShaderDescription* ShaderOf(const Json& graph, const host::ShaderCatalogue& catalogue) {
  const Json* shader = graph.Find("shader");
  if (shader == nullptr) return nullptr;
  if (const auto* name = std::get_if<std::string>(&shader->value)) return catalogue.Find(*name);
  if (const auto id = host::IntegerIn(*shader)) return catalogue.Find(*id);
  return nullptr;
}

Json MoveScene(Json scene, const FolderChange& change) {
  const FileNames names(change);
  if (Json::Array* const materials = ListMember(scene, kMaterials)) {
    for (Json& material : *materials) names.MoveInMaterial(material);
  }
  ForEachObject(scene, "objects", [&names](Json& object) {
    Json* file = FindMember(object, "file");
    if (file != nullptr && TextMember(object, "kind") == "mesh") names.Move(*file);
  });
  return scene;
}

Json MoveMaterial(Json material, const FolderChange& change) {
  FileNames(change).MoveInMaterial(material);
  return material;
}

Json MoveGraph(Json graph, const FolderChange& change) {
  FileNames(change).MoveInGraph(graph);
  return graph;
}

}  // namespace sorvanix::studio
