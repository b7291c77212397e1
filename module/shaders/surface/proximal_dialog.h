// The dialog of Proximal.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kProximalEditor;

/// Edit of the shader's record.
std::int32_t EditProximal(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
