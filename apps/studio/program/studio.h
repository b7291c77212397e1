// The program as a function: options, the window, recovery, scripts.
#pragma once

namespace sorvanix::studio {

/// Answers the exit code: 0 done, 2 wrong options, 3 an invalid file or a script that failed, 4 the
/// module could not be loaded, 5 a file that could not be read or written.
int RunStudio(int argumentCount, char** arguments);

}  // namespace sorvanix::studio
