// The contract's tables of materials, documents and the list of open documents, over scenes.
#pragma once

#include <sorvanix/host_scene.h>

#include "host/scene/scene_file.h"

namespace sorvanix::host {

/// While it lives, the module has an active document, or loads documents with these options;
/// without one there is no active document, and graphs are not read. One at a time.
class OpenDocuments {
 public:
  explicit OpenDocuments(SceneReadingOptions options = {}, Scene* active = nullptr);
  ~OpenDocuments();
  OpenDocuments(const OpenDocuments&) = delete;
  OpenDocuments& operator=(const OpenDocuments&) = delete;

  /// The scene the user works on, which must outlive this or be replaced; null for none.
  Scene* Active() const noexcept { return active_; }
  void SetActive(Scene* scene) noexcept { active_ = scene; }
  const SceneReadingOptions& Options() const noexcept { return options_; }

 private:
  SceneReadingOptions options_;
  Scene* active_;
};

/// Null handles answer with null or 0. A new material shows colour and highlights, as one that a
/// user makes would. A channel's link is made when it is asked for.
void InstallMaterials(MaterialTable& table) noexcept;

/// All but DocumentTable::render, which the renderer installs. A document that cannot be loaded is
/// null.
void InstallDocuments(DocumentTable& document, DocumentListTable& list) noexcept;

}  // namespace sorvanix::host
