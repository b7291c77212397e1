// What an edit came to, as JSON.
#pragma once

#include <string>

#include "apps/sorvanix/edit_options.h"
#include "apps/sorvanix/edit_run.h"
#include "host/services/json.h"

namespace sorvanix::cli {

/// The report of --json: every change that a gadget showed, and what became of the material.
host::Json ReportOf(const EditOptions& options, const Edited& edited);

}  // namespace sorvanix::cli
