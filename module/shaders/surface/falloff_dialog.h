// The dialog of Falloff.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kFalloffEditor;

/// Edit of the shader's record.
std::int32_t EditFalloff(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
