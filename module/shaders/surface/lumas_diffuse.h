// The diffuse light of Lumas where it is not that of the highlights' host calls.
#pragma once

#include "module/shaders/surface/lumas.h"

namespace sorvanix {

/// The host's diffuse light, or with `orenNayar` 1 the Oren-Nayar term of every light. The slot
/// holds view and normal of the sample. The term already holds the block's level and colour.
Vector DiffuseLight(const LumasBlock& block, const LumasSlot& slot,
                    const RenderContext& render) noexcept;

}  // namespace sorvanix
