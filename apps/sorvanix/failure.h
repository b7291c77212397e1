// Why something was not made.
#pragma once

#include <string>

#include "apps/sorvanix/exit_code.h"

namespace sorvanix::cli {

struct Failure {
  ExitCode code;        // that it leads to
  std::string message;  // one line
};

}  // namespace sorvanix::cli
