// The dialog of Colorizer.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kColorizerEditor;

/// Edit of the shader's record.
std::int32_t EditColorizer(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
