// Changing the materials of a scene file, with what refers to them by name.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/studio/document/json_edit.h"
#include "host/scene/scene_file.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

/// A scene with one material on a sphere, lit so that the command line renders it well.
Json NewScene();

/// A material that shows its colour channel, which is empty.
Json NewMaterial(const std::string& name);

/// The wanted name, or the first of "name 2", "name 3", ... that no material of the scene has; a
/// number that it ends in is replaced.
std::string FreeMaterialName(const Json& scene, const std::string& wanted);

/// The names of all materials, in their order.
std::vector<std::string> MaterialNames(const Json& scene);

/// The description of the shader at the top of a graph; null for a file, or an unknown one.
const host::ShaderDescription* ShaderOf(const Json& graph, const host::ShaderCatalogue& catalogue);

/// A scene that holds nothing but the material, of the version of another one.
Json SceneOf(Json material, const Json& like);
/// Says of a scene that it is of the version of another one.
void TakeVersion(Json& scene, const Json& like);

/// Why a scene could not be read, in one line without its place.
std::string FirstError(const host::SceneReading& reading);

Json InsertMaterial(Json scene, std::size_t index, Json material);
/// The textures that show the material go with it.
Json RemoveMaterial(Json scene, std::size_t index);
/// Textures keep showing it.
Json RenameMaterial(Json scene, std::size_t index, const std::string& name);
/// To another place of the list.
Json MoveMaterialTo(Json scene, std::size_t from, std::size_t to);

/// What a scene is read by, and the folders that its names of files are relative to, before and
/// after. Absolute names stay; with no folder after (a scene without a file) all become absolute.
struct FolderChange {
  const host::ShaderCatalogue& catalogue;
  std::filesystem::path from, to;
};

/// The scene, or a part of it, as it must be spelled in the other folder.
Json MoveScene(Json scene, const FolderChange& change);
Json MoveMaterial(Json material, const FolderChange& change);
Json MoveGraph(Json graph, const FolderChange& change);

}  // namespace sorvanix::studio
