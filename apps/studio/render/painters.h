// What the workers paint: a scene as the renderer shows it, a graph laid flat.
//
// Each reads a scene of its own from text, so no thread shares a shader with another one or with
// the windows.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "apps/studio/render/picture_worker.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

/// A scene and what its picture should be like. The catalogue must outlive it.
struct SceneRequest {
  const host::ShaderCatalogue* catalogue = nullptr;
  std::string text;            ///< of a scene file
  std::filesystem::path file;  ///< names of files in it are relative to this one's folder
  int width = 0, height = 0;
  float time = 0;  ///< in seconds
  bool operator==(const SceneRequest&) const = default;
};

/// A picture of a view: the scene as the renderer shows it, or one channel of its first material
/// sampled over the unit square.
struct PictureRequest {
  SceneRequest scene;
  std::optional<std::size_t> flatChannel = std::nullopt;
  bool isDraft = false;  ///< one quick pass, for pictures that move
  bool operator==(const PictureRequest&) const = default;
};

/// From coarse to fine, up to so many samples along each side of a pixel.
PictureJob JobFor(PictureRequest request, int samples);

}  // namespace sorvanix::studio
