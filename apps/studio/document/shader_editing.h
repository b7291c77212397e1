// Editing one shader of a graph in its own dialog.
//
// The shaders of the channel are made from its graph and what they stored, the dialog runs on one
// of them, and what they hold then takes the place of both. Nothing is changed on the way, so one
// dialog is one step of the history.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>

#include "apps/studio/document/graph_edit.h"
#include "host/loader/shader.h"

namespace sorvanix::studio {

/// Shows the dialog of a shader; who implements it sees to a dialog service of the host.
class ShaderEditor {
 public:
  virtual ~ShaderEditor() = default;
  /// On the main thread. True when the user confirmed; then the shader has the new values.
  virtual bool Edit(host::Shader& shader) = 0;
};

/// The shader's own dialog, through the dialog service that the host has installed.
class OwnDialogs : public ShaderEditor {
 public:
  bool Edit(host::Shader& shader) override { return shader.Edit(); }
};

/// A channel after a dialog.
struct EditedGraph {
  Json graph;  ///< spelled as before where nothing changed, with what only later programs know
  Json state;  ///< what the outermost shader stores of itself; null when it stores nothing
};

/// What a document must lend to a dialog.
struct EditingPlace {
  const host::ShaderCatalogue& catalogue;
  const Json& scene;           ///< of the document; the material is of its version
  std::filesystem::path file;  ///< of the document
  ShaderEditor& editor;
};

/// Edits what stands at a place of a material. Nothing when the user cancelled or changed nothing;
/// the error is one line: nothing is there, or the shader cannot be made.
tl::expected<std::optional<EditedGraph>, std::string> EditShader(const Json& material,
                                                                 const GraphPlace& place,
                                                                 const EditingPlace& with);

/// The material with a graph that says what its outermost shader stored, where the two differ. To
/// be called before a change that lets go of what was stored: else the picture would change too.
Json WithStoredGraph(Json material, const std::string& channel, const Json& scene,
                     const std::filesystem::path& file, const host::ShaderCatalogue& catalogue);

}  // namespace sorvanix::studio
