// The dialog of Projector.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kProjectorEditor;

/// Edit of the shader's record.
std::int32_t EditProjector(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
