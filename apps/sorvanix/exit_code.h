// How the program ends.
#pragma once

namespace sorvanix::cli {

enum class ExitCode {
  Done = 0,
  SomeFailed = 1,    // some outputs were made, others not
  Usage = 2,         // the command line cannot be understood
  InvalidInput = 3,  // a file was read but is not right
  NoModule = 4,      // the module could not be loaded or started
  FileTrouble = 5,   // reading or writing failed
  Cancelled = 130    // as shells tell the end by Ctrl-C
};

}  // namespace sorvanix::cli
