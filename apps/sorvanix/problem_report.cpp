#include "apps/sorvanix/problem_report.h"

#include <fmt/format.h>

#include "apps/sorvanix/report.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

void TellProblems(const std::string& file, const std::vector<host::MaterialProblem>& problems,
                  const host::UntoldProblems& untold, bool quiet) {
  for (const host::MaterialProblem& problem : problems) {
    const std::string line = Describe(host::PathFromUtf8(file), problem);
    if (problem.isError) {
      Complain(line);
    } else if (!quiet) {
      Warn(line);
    }
  }
  if (untold.errors > 0) Complain(fmt::format("{}: ... and {} more", file, untold.errors));
  if (untold.warnings > 0 && !quiet) {
    Warn(fmt::format("{}: ... and {} more", file, untold.warnings));
  }
}

}  // namespace sorvanix::cli
