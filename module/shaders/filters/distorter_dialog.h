// The dialog of Distorter.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kDistorterEditor;

/// Edit of the shader's record.
std::int32_t EditDistorter(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
