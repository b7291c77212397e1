// The bundle's one open, and its close when the module goes.
#include "module/shell/resource_bundle.h"

#include "module/shell/host_core.h"

namespace sorvanix {

constinit ResourceBundle resourceBundle;

bool ResourceBundle::KeepFolder(const OwnedFilename& folder) noexcept {
  directory_ = static_cast<HostFilename**>(hostAlloc(sizeof(HostFilename*)));
  if (directory_ == nullptr) return false;
  OwnedFilename copy = hostFilenameCopy(folder);
  if (copy.isEmptyObject()) return false;
  *directory_ = copy.release();
  return true;
}

bool ResourceBundle::Open(const OwnedFilename& folder) noexcept {
  if (opened_ != 0) return handle_ != nullptr;
  opened_ = 1;
  if (folder.isEmptyObject() || !KeepFolder(folder)) return false;
  handle_ = hostOpenResources(*directory_);
  return handle_ != nullptr;
}

void ResourceBundle::Close() noexcept {
  if (borrowed_ == 0) hostCloseResources(handle_);
  handle_ = nullptr;
  if (directory_ == nullptr) return;
  const OwnedFilename released(*directory_);
  hostFree(directory_);
  directory_ = nullptr;
}

}  // namespace sorvanix
