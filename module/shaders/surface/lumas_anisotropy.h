// The highlights of brushed layers, over all lights.
#pragma once

#include "module/shaders/surface/lumas_layers.h"

namespace sorvanix {

/// Adds to the highlights of all layers that are brushed. The slot holds view, normal and matrices
/// of the sample.
void AddBrushedHighlights(const LumasBlock& block, const LumasSlot& slot,
                          const RenderContext& render, Highlights& highlights) noexcept;

}  // namespace sorvanix
