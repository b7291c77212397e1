// Renders a scene into a picture, tile by tile on several threads.
#pragma once

#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "host/bake/parallel_tiles.h"
#include "host/images/image.h"
#include "host/scene/scene.h"

namespace sorvanix::host {

struct RenderSettings {
  int width = 640;
  int height = 480;
  int samples = 2;        ///< along each side of a pixel
  float time = 0;         ///< in seconds
  bool filtering = true;  ///< false: shaders take samples for points, and patterns may shimmer
};

struct RenderedPicture {
  std::optional<Image> image;         ///< nothing when it was cancelled
  std::vector<std::string> problems;  ///< channels that were left out, one line each
};

/// The scene must be up to date (Scene::Update) and its materials' links made; nobody else may
/// touch it meanwhile. Equal scenes and settings give equal pictures, whatever the number of
/// threads. The error is one line: the renderer cannot run. Throws std::bad_alloc.
tl::expected<RenderedPicture, std::string> RenderPicture(Scene& scene,
                                                         const RenderSettings& settings,
                                                         const TaskOptions& options);

}  // namespace sorvanix::host
