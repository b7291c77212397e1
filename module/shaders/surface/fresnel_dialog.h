// The dialog of Fresnel.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kFresnelEditor;

/// Edit of the shader's record.
std::int32_t EditFresnel(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
