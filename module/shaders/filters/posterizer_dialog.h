// The dialog of Posterizer.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kPosterizerEditor;

/// Edit of the shader's record.
std::int32_t EditPosterizer(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
