// The per-CPU slots of a render: made by InitRender, freed by FreeRender, found by Output.
#pragma once

#include <cstddef>

#include "module/shell/host_render.h"
#include "module/shell/shader_table.h"

namespace sorvanix {

/// Makes one cleared slot per CPU of the render and stores the array in `instance->slots`. Answers
/// their number. Shows the table's failure text, if any, and answers 0 with null slots, when memory
/// is short; the render goes on without them.
std::int32_t MakeSlots(const ShaderTable& table, ShaderInstance* instance,
                       const RenderInit* init) noexcept;

/// Frees the slots, if there are any.
void FreeSlots(ShaderInstance* instance) noexcept;

/// Slot `cpu` of an array whose slots are `Slot`s.
template <class Slot>
inline Slot* SlotAt(void* slots, std::int32_t cpu) noexcept {
  return static_cast<Slot*>(slots) + cpu;
}

}  // namespace sorvanix
