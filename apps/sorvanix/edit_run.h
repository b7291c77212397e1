// One edit: a material, the dialog of its shader, and a list of events in place of the user.
#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "apps/sorvanix/edit_options.h"
#include "apps/sorvanix/failure.h"
#include "host/channels/material.h"
#include "host/dialogs/headless_dialogs.h"
#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::cli {

/// A parameter or an input that the edit changed, as material files spell it.
struct EditedValue {
  std::string name;
  host::Json before, after;  // null for none
};

struct Edited {
  bool confirmed = false;
  host::Json material;  // as it is now; as it was when the dialog was not confirmed
  std::vector<EditedValue> values;
  std::vector<host::DialogChange> changes;
  std::vector<std::string> failures;  // expectations, one line each with its place
  std::vector<host::SavedPicture> pictures;
  std::vector<std::filesystem::path> viewed;
  std::vector<std::string> warnings;  // of the material and the module, one line each
};

/// Plays the events; nothing is written. A failed expectation is no error here; a raised flag is
/// one, before the next event.
tl::expected<Edited, Failure> RunEdit(const EditOptions& options,
                                      const std::filesystem::path& module,
                                      const host::ShaderCatalogue& catalogue,
                                      const std::atomic<bool>& cancelled);

}  // namespace sorvanix::cli
