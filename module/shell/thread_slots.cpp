// Slots of a render, one for each CPU.
#include "module/shell/thread_slots.h"

#include <algorithm>
#include <cstdint>

#include "module/shell/host_core.h"
#include "module/shell/host_text.h"

namespace sorvanix {

std::int32_t MakeSlots(const ShaderTable& table, ShaderInstance* instance,
                       const RenderInit* init) noexcept {
  // Asked once: the count is constant during a render, and the array must fit what the loops use.
  const std::int32_t count = std::max(hostCpuCount(init->render), 1);
  const auto stride = static_cast<std::size_t>(table.slotStride);
  const bool fits = static_cast<std::size_t>(count) <= SIZE_MAX / stride;
  const std::size_t size = static_cast<std::size_t>(count) * stride;
  hostFree(instance->slots);
  instance->slots = fits ? hostAlloc(size) : nullptr;
  if (instance->slots == nullptr) {
    if (table.slotFailureText != nullptr) {
      hostMessageDialog(hostStringFromChars(table.slotFailureText).get(), MessageDialogFlags);
    }
    return 0;
  }
  return count;
}

void FreeSlots(ShaderInstance* instance) noexcept {
  hostFree(instance->slots);
  instance->slots = nullptr;
}

}  // namespace sorvanix
