// The host that verbs run the module in.
#pragma once

#include <filesystem>
#include <optional>
#include <tl/expected.hpp>

#include "apps/sorvanix/failure.h"
#include "host/channels/channel_link.h"
#include "host/dialogs/import_confirmation.h"
#include "host/host.h"
#include "host/loader/module.h"

namespace sorvanix::cli {

/// A host with every service that the program has, and the module in it. What shaders take from
/// files is confirmed.
class LoadedModule {
 public:
  /// Loads the module, unless it is there already; `afresh` in its state after the start, whatever
  /// it drew of its random numbers since. Shaders and links that were made before must be gone
  /// then.
  tl::expected<void, Failure> Load(const std::filesystem::path& file, bool afresh = false);

  const host::Module& operator*() const { return *module_; }

 private:
  std::optional<host::Host> host_;      // outlives the module
  std::optional<host::Module> module_;  // outlives the shaders
  std::optional<host::LinkedShaders> links_;
  host::ConfirmedImports imports_;
};

}  // namespace sorvanix::cli
