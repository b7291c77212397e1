// The dialog of Bright/Contrast.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kBrightContrastEditor;

/// Edit of the shader's record.
std::int32_t EditBrightContrast(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
