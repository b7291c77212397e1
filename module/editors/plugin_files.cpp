// Paths from the one that the module was attached with.
#include "module/editors/plugin_files.h"

namespace sorvanix {

OwnedFilename ModuleFolder() noexcept {
  return hostFilenameDirectory(hostFilenameFromString(hostStringFromChars(pluginPath)));
}

OwnedFilename ResourceFile(const char* name) noexcept {
  OwnedFilename folder = hostFilenameAppend(ModuleFolder(), "Resources");
  return *name == '\0' ? static_cast<OwnedFilename&&>(folder) : hostFilenameAppend(folder, name);
}

}  // namespace sorvanix
