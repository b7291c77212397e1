// The dialog of Gradient.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kGradientEditor;

/// Edit of the shader's record.
std::int32_t EditGradient(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
