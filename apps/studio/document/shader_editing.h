// Editing one shader of a graph in its own dialog.
//
// A shader is made from the graph, its dialog runs, and what the shader holds then is the graph
// that takes its place. Nothing is changed on the way, so one dialog is one step of the history.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>

#include "apps/studio/document/graph_edit.h"
#include "host/channels/material.h"
#include "host/loader/module.h"

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

struct EditedGraph {
  Json graph;
  Json state;  ///< what the shader stored of itself, when it is its channel's outermost; else null
};

/// What a module and a document must lend to a dialog.
struct EditingPlace {
  const host::Module& module;
  const host::ShaderCatalogue& catalogue;
  std::filesystem::path file;  ///< of the document
  ShaderEditor& editor;
};

/// Edits what stands at a place of a material. Nothing when the user cancelled; the error is one
/// line: nothing is there, or the shader cannot be made.
tl::expected<std::optional<EditedGraph>, std::string> EditShader(const Json& material,
                                                                 const GraphPlace& place,
                                                                 const EditingPlace& with);

/// The graph that a shader's parameters describe (message MessageGetParameters); what has its
/// default is left out. Bitmaps are named relative to the folder, by their whole path without one.
host::MaterialNode NodeFrom(const host::Container& parameters,
                            const host::ShaderDescription& shader,
                            const host::ShaderCatalogue& catalogue,
                            const std::filesystem::path& folder);

}  // namespace sorvanix::studio
