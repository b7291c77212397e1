// In which direction a surface of Lumas is brushed at a point, and how its scratches vary there.
#pragma once

#include <optional>

#include "module/shaders/surface/lumas.h"

namespace sorvanix {

struct Brushing {
  Vector direction;  ///< a unit vector in world space, or zero where none is defined
  double scratch;    ///< added to the stretch of highlights; 0 without scratches
};

/// By the block's anisotropyMode; nothing for a mode that does not exist. The slot holds the normal
/// and the matrices of the sample. Reads the host's turbulence once where scratches show.
std::optional<Brushing> BrushingAt(const LumasBlock& block, const LumasSlot& slot,
                                   const RenderContext& render) noexcept;

}  // namespace sorvanix
