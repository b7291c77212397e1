// Materials: nine channels, each a factor and a graph of shaders.
#pragma once

#include <sorvanix/ids.h>
#include <sorvanix/types.h>

#include <array>
#include <cstddef>
#include <memory>
#include <variant>
#include <vector>

#include "host/channels/material.h"
#include "host/scene/kept_members.h"
#include "host/services/handle.h"
#include "host/services/json.h"
#include "host/services/streams.h"
#include "host/services/strings.h"

namespace sorvanix::host {

class Link;
class Scene;

inline constexpr std::size_t kMaterialChannelCount = 9;

/// The value of a channel is strength * colour * sample, where sample is what the link answers at
/// the point, and white without a link. In the bump channel strength alone counts: it is the share
/// of the way from the unbent normal to the bent one.
struct MaterialChannel {
  /// What a scene file says of the channel's graph, checked against the shaders that are known.
  using Graph = std::variant<std::monostate, MaterialNode, MaterialBitmap>;

  bool on = false;
  float strength = 1;
  Vector colour = {1, 1, 1};
  Json graphJson;  ///< as the scene file spells the graph; null for none
  Graph graph;     ///< nothing as long as no catalogue was at hand
  Json state;      ///< the stream that the outermost shader wrote, in its JSON form; null for none
  bool isLaterState = false;  ///< it is of a later program: the link was made from the graph alone
  /// What the shader would have written when the link was made; it tells whether it was edited
  /// since.
  std::vector<StreamValue> linkedValues;
  bool isGraphStale = false;   ///< the state says something else than the graph
  std::shared_ptr<Link> link;  ///< made by LinkMaterials, or for the module; null for none
  KeptMembers kept;
};

/// Owned by a scene, or by the module that made it until it inserts it into one. Tags refer to it
/// weakly: a material that goes away leaves objects without it.
class Material : public Handled<Material, HostMaterial>,
                 public std::enable_shared_from_this<Material> {
 public:
  Text name;
  float highlightExponent = 25;  ///< of the mirror cosine; higher is a smaller highlight
  std::array<MaterialChannel, kMaterialChannelCount> channels;  ///< by the channel numbers of ids.h
  KeptMembers kept, keptChannels;

  Scene* scene = nullptr;          ///< its owner, or null while that is the module
  std::shared_ptr<Material> self;  ///< its own reference while the module owns it, else null
};

}  // namespace sorvanix::host
