// Scene files: JSON that tells a camera, a tree of objects, and materials. docs/scene_format.md has
// all of it.
//
//     { "format": "sorvanix-scene", "version": 1,
//       "camera": { "position": [0, 0, -500] },
//       "materials": [ { "name": "Stone", "channels": { "colour": { "graph": "stone.json" } } } ],
//       "objects": [ { "kind": "sphere", "textures": [ { "material": "Stone" } ] },
//                    { "kind": "distantLight", "rotation": [30, -40, 0] } ] }
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "host/channels/material_file.h"
#include "host/scene/scene.h"

namespace sorvanix::host {

/// A place of a scene file is told as one of a material file.
using SceneProblem = MaterialProblem;

struct SceneReadingOptions {
  /// The shaders that graphs are checked against, which must outlive the scene; without it graphs
  /// are kept as they are, unread.
  const ShaderCatalogue* catalogue = nullptr;
  std::vector<std::filesystem::path> imageFolders =
      {};  ///< searched for bitmaps after the scene's own
};

struct SceneReading {
  std::unique_ptr<Scene> scene;        ///< up to date; only when there are no errors
  std::vector<SceneProblem> problems;  ///< in the order of the text
  UntoldProblems untold = {};
};

/// Reads the text of a scene file, with the meshes and materials that it names beside `file`. Up to
/// kMostProblems are told, not only the first; nothing is half-read.
SceneReading ReadScene(std::string_view text, const std::filesystem::path& file,
                       const SceneReadingOptions& options = {});

/// The same for a file, in either form of document_file.h; one that cannot be read is a problem
/// without a place. Places in a binary document are those in its JSON text.
SceneReading LoadScene(const std::filesystem::path& file, const SceneReadingOptions& options = {});

/// The scene as a document, always in the same way: what has its initial value is left out. Names
/// of files stay as they were read.
Json SceneJson(const Scene& scene);
std::string SceneText(const Scene& scene);

/// Writes it, in the form that the file's name says; the file appears whole or not at all. The
/// error is one line.
tl::expected<void, std::string> SaveScene(const Scene& scene, const std::filesystem::path& file);

}  // namespace sorvanix::host
