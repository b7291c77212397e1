// The exit code of a verb that makes several outputs.
#pragma once

#include "apps/sorvanix/exit_code.h"

namespace sorvanix::cli {

class FailureTally {
 public:
  void Succeed() { anyDone_ = true; }
  void Fail(ExitCode why) {
    if (firstFailure_ == ExitCode::Done) firstFailure_ = why;
  }

  /// Done when nothing failed, SomeFailed when something else was done, or why the first failed.
  ExitCode Result() const {
    const bool partly = anyDone_ && firstFailure_ != ExitCode::Done;
    return partly ? ExitCode::SomeFailed : firstFailure_;
  }

 private:
  bool anyDone_ = false;
  ExitCode firstFailure_ = ExitCode::Done;
};

}  // namespace sorvanix::cli
