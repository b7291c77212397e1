// The program as a function: verbs, help, errors, exit codes.
#pragma once

namespace sorvanix::cli {

/// Name and version, as files record them.
inline constexpr const char* kProgramName = "sorvaNIX " SORVANIX_VERSION;

/// Parses the command line and runs its verb. The answer is an ExitCode.
int RunProgram(int argumentCount, char** arguments);

}  // namespace sorvanix::cli
