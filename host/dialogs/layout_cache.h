// The dialog layouts beside modules, each read once by the process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "host/dialogs/dialog_layout.h"

namespace sorvanix::host {

/// The layout "dialogs/<id>.json" of a folder of resources; null when there is none. A file that is
/// there and wrong is told to the user, and null too. Safe on several threads.
std::shared_ptr<const DialogLayout> FindDialogLayout(const std::filesystem::path& resources,
                                                     std::int32_t id);

}  // namespace sorvanix::host
