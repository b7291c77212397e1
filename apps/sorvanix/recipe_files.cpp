#include "apps/sorvanix/recipe_files.h"

#include <algorithm>
#include <variant>

#include "host/services/content_hash.h"

namespace sorvanix::cli {

namespace {

using host::Json;

void AddBitmap(const host::MaterialBitmap& bitmap, RecipeFiles& files) {
  files.emplace_back(bitmap.name, host::HashOfFile(bitmap.file));
}

void AddBitmapsOf(const host::MaterialNode& node, RecipeFiles& files) {
  for (const host::MaterialInput& input : node.inputs) {
    if (const auto* bitmap = std::get_if<host::MaterialBitmap>(&input.content)) {
      AddBitmap(*bitmap, files);
    } else if (const auto* inner = std::get_if<host::MaterialNode>(&input.content)) {
      AddBitmapsOf(*inner, files);
    }
  }
}

void AddFilesOf(const host::MaterialChannel& channel, RecipeFiles& files) {
  if (const auto* bitmap = std::get_if<host::MaterialBitmap>(&channel.graph)) {
    AddBitmap(*bitmap, files);
  } else if (const auto* node = std::get_if<host::MaterialNode>(&channel.graph)) {
    // The scene holds a graph, or the name of the file that does.
    if (const auto* name = std::get_if<std::string>(&channel.graphJson.value)) {
      files.emplace_back(*name, host::HashOf(host::WriteJson(JsonOf(*node), -1)));
    }
    AddBitmapsOf(*node, files);
  }
}

template <class Item>
void AddList(const std::vector<Item>& list, host::ContentHash& hash) {
  hash.Add(list.data(), list.size() * sizeof(Item));
}

void KeepEachOnce(RecipeFiles& files) {
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
}

}  // namespace

RecipeFiles FilesOf(const host::MaterialNode& material) {
  RecipeFiles files;
  AddBitmapsOf(material, files);
  KeepEachOnce(files);
  return files;
}

RecipeFiles FilesOf(const host::Scene& scene) {
  RecipeFiles files;
  for (const auto& material : scene.materials) {
    for (const host::MaterialChannel& channel : material->channels) AddFilesOf(channel, files);
  }
  for (const host::Object* object = Following(scene.root, scene.root); object != nullptr;
       object = Following(*object, scene.root)) {
    const auto* content = std::get_if<host::MeshContent>(&object->content);
    if (content != nullptr) files.emplace_back(content->file, HashOf(*content->mesh));
  }
  KeepEachOnce(files);
  return files;
}

// Not of its file, which may be only the head of several.
std::string HashOf(const host::PolygonMesh& mesh) {
  host::ContentHash hash;
  AddList(mesh.points, hash);
  AddList(mesh.polygons, hash);
  AddList(mesh.normals, hash);
  for (const host::UvwSet& set : mesh.uvwSets) AddList(set.corners, hash);
  return hash.Text();
}

void AddFiles(Json::Object& recipe, const RecipeFiles& files) {
  if (files.empty()) return;
  Json::Array list;
  for (const auto& [name, hash] : files) {
    list.push_back(Json(Json::Object{{"name", Json(name)}, {"hash", Json(hash)}}));
  }
  recipe.push_back({"files", Json(std::move(list))});
}

}  // namespace sorvanix::cli
