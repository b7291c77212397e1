// Buffy: white on the front of a surface, black on its back.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

extern const ShaderTable kBuffyTable;

/// Stores Buffy's one callback, Output: it has no parameters, dialog, saved form or slots.
void FillBuffyRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
