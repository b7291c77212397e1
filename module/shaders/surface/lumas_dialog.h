// The dialog of Lumas.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kLumasEditor;

/// Edit of the shader's record.
std::int32_t EditLumas(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
