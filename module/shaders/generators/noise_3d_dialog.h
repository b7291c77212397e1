// The dialog of 3D Noise.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kNoise3DEditor;

/// Edit of the shader's record.
std::int32_t Edit3DNoise(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
