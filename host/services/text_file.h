// Whole text files, read at once.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace sorvanix::host {

/// All bytes of a file; nothing when it cannot be opened or read to its end.
std::optional<std::string> ReadTextFile(const std::filesystem::path& file);

}  // namespace sorvanix::host
