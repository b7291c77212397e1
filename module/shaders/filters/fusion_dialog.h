// The dialog of Fusion.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kFusionEditor;

/// Edit of the shader's record.
std::int32_t EditFusion(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
