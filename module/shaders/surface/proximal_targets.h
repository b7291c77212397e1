// The points that Proximal measures distances to: a list that is made when a render begins.
#pragma once

#include "module/shaders/surface/proximal.h"

namespace sorvanix {

/// Two plain arrays side by side, so that the loop over all points reads memory in order. Lives in
/// the host's memory.
struct ProximalTargets {
  Vector* points;  ///< in world space
  float* weights;  ///< how far each point reaches, in scene units
  std::int32_t count;
  std::int32_t capacity;
};

/// A list of the points that the block asks for, from all objects of the scene; null when memory is
/// too short for any. Where it becomes short later the list holds what was found before.
ProximalTargets* CollectTargets(const ProximalBlock& block, const HostDocument* document) noexcept;

/// Null is allowed.
void FreeTargets(ProximalTargets* targets) noexcept;

}  // namespace sorvanix
