// Where the plug-in's own files lie: beside the module.
#pragma once

#include "module/shell/host_text.h"

namespace sorvanix {

/// The folder that holds the module.
OwnedFilename ModuleFolder() noexcept;

/// A file of the "Resources" folder beside the module; the folder itself for an empty name.
OwnedFilename ResourceFile(const char* name) noexcept;

}  // namespace sorvanix
