// The small scenes that a preview puts its shader into.
#pragma once

#include "module/editors/preview_pass.h"
#include "module/shell/host_container.h"
#include "module/shell/host_scene.h"

namespace sorvanix {

/// The scene of a block's `previewObject`: 0 and 1 the sphere, 2 cube, 3 plane, 4 cylinder, 5
/// torus. Any other number names no scene, and none is loaded.
OwnedDocument LoadPreviewScene(std::int32_t object) noexcept;

/// What a pass takes from the host before its thread starts: strings and containers are the main
/// thread's.
class ScenePass {
 public:
  ScenePass(HostDocument* scene, std::int32_t pluginId) noexcept;

  /// On the thread: puts the shader on the scene's object and lets the host render it. False when
  /// something is missing, or the render did not end.
  bool Draw(PreviewPass& pass) noexcept;

 private:
  HostDocument* scene_;
  OwnedContainer settings_;
  OwnedContainer shader_;  ///< what makes a channel hold a new shader of this kind
  OwnedString objectName_;
};

}  // namespace sorvanix
