// The module and all that belongs to it, for as long as the studio runs.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <tl/expected.hpp>

#include "apps/sorvanix/host_setup.h"
#include "host/scene/document_tables.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

class Engine {
 public:
  /// Loads the module: the file asked for, or with an empty name the one that is found where the
  /// command line finds it. The error is one line.
  static tl::expected<std::unique_ptr<Engine>, std::string> Load(const std::string& module);

  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  const host::Module& Module() const { return *module_; }
  const host::ShaderCatalogue& Catalogue() const { return catalogue_; }
  /// The folder beside the module.
  std::filesystem::path Resources() const { return folder_ / "Resources"; }
  /// The page that the plug-in's own About dialog opens: beside the module's folder.
  std::filesystem::path DocumentationPage() const {
    return folder_.parent_path() / "Documentation" / "index.html";
  }
  /// What the module takes for the open document.
  host::OpenDocuments& Documents() { return documents_; }

 private:
  Engine(host::ShaderCatalogue catalogue, std::filesystem::path folder);

  host::ShaderCatalogue catalogue_;
  std::filesystem::path folder_;
  host::OpenDocuments documents_;
  cli::LoadedModule module_;
};

}  // namespace sorvanix::studio
