// The ThreadSlot of both noise shaders, and how a render begins with it.
#pragma once

#include <sorvanix/footprint.h>

#include "module/shell/thread_slots.h"

namespace sorvanix {

struct NoiseSlot {
  FootprintBlock head;
  float bumpStep;   ///< in noise units; that of slot 0 is the one that counts
  float bumpScale;  ///< never read
};
static_assert(sizeof(NoiseSlot) == SlotStrideNoise);

/// Makes the slots of a render with their usual values and stores the bump step in the first, so
/// that no sample computes it.
void MakeNoiseSlots(const ShaderTable& table, ShaderInstance* instance, const RenderInit* init,
                    double bumpStep) noexcept;

}  // namespace sorvanix
