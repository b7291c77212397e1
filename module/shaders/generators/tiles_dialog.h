// The dialog of Tiles.
#pragma once

#include "module/editors/gadget_table.h"

namespace sorvanix {

extern const EditorTable kTilesEditor;

/// Edit of the shader's record.
std::int32_t EditTiles(ShaderInstance* instance) noexcept;

}  // namespace sorvanix
