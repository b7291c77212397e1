// The materials of a scene during a render: their channels prepared, and undone at its end.
#pragma once

#include <array>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "host/render/channel_source.h"
#include "host/render/render_scene.h"
#include "host/render/vec3.h"

namespace sorvanix::host {

/// A channel as a render sees it: factor times what the source holds, white without a source.
struct RenderChannel {
  bool on = false;
  double strength = 1;
  Vec3 factor = {1, 1, 1};  ///< strength times colour
  ChannelSource* source = nullptr;
};

struct RenderMaterial {
  std::array<RenderChannel, kMaterialChannelCount> channels;  ///< by the numbers of ids.h
  double highlightExponent = 25;

  const RenderChannel& operator[](int channel) const noexcept {
    return channels[static_cast<std::size_t>(channel)];
  }
};

class RenderMaterials {
 public:
  /// Prepares every channel that is on; on the main thread, before the render's threads begin. A
  /// channel whose shader refuses is left out, and Problems tells of it.
  RenderMaterials(const RenderScene& scene, const RenderInit& init);

  const RenderMaterial& operator[](std::size_t material) const noexcept {
    return materials_[material];
  }
  /// What is laid on a surface that has no material.
  static const RenderMaterial& Plain() noexcept;

  /// One line for each channel that was left out.
  const std::vector<std::string>& Problems() const noexcept { return problems_; }

 private:
  RenderChannel Prepare(const Material& material, std::size_t channel, const RenderInit& init);

  // Deques, since they hand out addresses; sources go after what prepared them.
  std::deque<LinkSource> sources_;
  std::deque<PreparedSource> prepared_;
  std::vector<RenderMaterial> materials_;
  std::vector<std::string> problems_;
};

}  // namespace sorvanix::host
