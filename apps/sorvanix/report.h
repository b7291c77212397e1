// Where the program's words go: results to the standard output, all else to the error stream.
#pragma once

#include <string_view>

namespace sorvanix::cli {

/// Text to the standard error stream as it is. A stream that takes nothing is no reason to fail.
void Tell(std::string_view text) noexcept;

/// One line about what went wrong, with the program's name before it.
void Complain(std::string_view message);

/// One line about what is doubtful.
void Warn(std::string_view message);

/// A result, as it stands.
void Print(std::string_view text);

}  // namespace sorvanix::cli
