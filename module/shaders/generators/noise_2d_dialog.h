// The dialog of 2D Noise.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kNoise2DEditor;

/// Edit of the shader's record.
std::int32_t Edit2DNoise(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
