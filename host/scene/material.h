// Materials: nine channels, each a factor and a graph of shaders.
#pragma once

#include <sorvanix/types.h>

#include <array>
#include <cstdint>
#include <memory>

#include "host/services/handle.h"
#include "host/services/json.h"
#include "host/services/strings.h"

namespace sorvanix::host {

class Link;

inline constexpr std::size_t MaterialChannelCount = 9;

/// The value of a channel is strength * colour * sample, where sample is what the link holds at the
/// point, and white for an empty link. In the bump channel strength alone counts: it is the share
/// of the way from the unbent normal to the bent one.
struct MaterialChannel {
  bool on = false;
  float strength = 1;
  Vector colour = {1, 1, 1};
  Json graph;                  ///< as the scene file spells it; null for none
  std::shared_ptr<Link> link;  ///< made from the graph or by the module; null while nobody asked
};

/// Owned by a scene, or by the module that made it until it inserts it into one. Tags refer to it
/// weakly: a material that goes away leaves objects without it.
class Material : public Handled<Material, HostMaterial> {
 public:
  Text name;
  std::array<MaterialChannel, MaterialChannelCount> channels;  ///< by the channel numbers of ids.h
  float highlightExponent = 25;  ///< of the mirror cosine; higher is a smaller highlight

  /// Set while the module owns the material: its own reference.
  std::shared_ptr<Material> self;
};

}  // namespace sorvanix::host
