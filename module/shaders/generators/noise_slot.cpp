// The slots of a noise shader.
#include "module/shaders/generators/noise_slot.h"

namespace sorvanix {

void MakeNoiseSlots(const ShaderTable& table, ShaderInstance* instance, const RenderInit* init,
                    double bumpStep) noexcept {
  const std::int32_t count = MakeSlots(table, instance, init);
  for (std::int32_t cpu = 0; cpu < count; ++cpu) {
    NoiseSlot& slot = *SlotAt<NoiseSlot>(instance->slots, cpu);
    slot.bumpStep = 0.3f;
    slot.bumpScale = 1.0f;
  }
  if (count != 0) {
    SlotAt<NoiseSlot>(instance->slots, 0)->bumpStep = static_cast<float>(bumpStep);
  }
}

}  // namespace sorvanix
