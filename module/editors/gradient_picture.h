// The picture of the gradient area: the ramp as a strip, with its handles.
#pragma once

#include "module/kit/ramp.h"
#include "module/shell/host_dialog.h"

namespace sorvanix {

/// Draws the strip, its frame, and the handles in the ramp's order, so that its last entry lies on
/// top. The selected handle is highlighted. The bitmap is kGradientWidth by kGradientHeight.
void PaintGradient(const Ramp& ramp, HostBitmap* bitmap) noexcept;

}  // namespace sorvanix
