// What follows from the parameters of Lumas, computed once so that no sample has to.
#pragma once

#include "module/shaders/surface/lumas.h"

namespace sorvanix {

/// Brings every derived field up to date, as a dialog does when a value changes. Messages and files
/// do not: they store values as they come, and what was derived before stays until then.
void DeriveLumas(LumasBlock& block) noexcept;

/// The diffuse colour times its strength: the one derived field that files do not hold.
void DeriveDiffuseTint(LumasBlock& block) noexcept;

/// The roughness of a brushed highlight that looks as wide as the host's at the same size. Reads
/// the host's spline from a size of 0.05 on. NaN counts as 0.
float RoughnessFromSize(float size) noexcept;

}  // namespace sorvanix
