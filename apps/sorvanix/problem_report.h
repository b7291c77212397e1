// What is wrong with input files, line by line.
#pragma once

#include <string>
#include <vector>

#include "host/channels/material_file.h"

namespace sorvanix::cli {

/// Complains about the errors and, unless `quiet`, warns of the rest.
void TellProblems(const std::string& file, const std::vector<host::MaterialProblem>& problems,
                  const host::UntoldProblems& untold, bool quiet);

}  // namespace sorvanix::cli
