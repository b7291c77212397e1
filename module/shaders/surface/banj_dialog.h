// The dialog of Banj.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kBanjEditor;

/// Edit of the shader's record.
std::int32_t EditBanj(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
