// The files that a picture is made from, for its recipe: a picture is the same only as long as they
// hold the same.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/channels/material.h"
#include "host/scene/scene.h"

namespace sorvanix::cli {

/// A file as the material or the scene spells it, and the hash of what it holds.
using RecipeFiles = std::vector<std::pair<std::string, std::string>>;

/// The bitmaps of a graph. Material files in it are part of the graph.
RecipeFiles FilesOf(const host::MaterialNode& material);

/// The bitmaps, material files and meshes of a scene, each once.
RecipeFiles FilesOf(const host::Scene& scene);

std::string HashOf(const host::PolygonMesh& mesh);

/// Adds them to a recipe, under "files", if there are any.
void AddFiles(host::Json::Object& recipe, const RecipeFiles& files);

}  // namespace sorvanix::cli
