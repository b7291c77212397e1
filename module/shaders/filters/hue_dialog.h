// The dialog of Hue.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kHueEditor;

/// Edit of the shader's record.
std::int32_t EditHue(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
