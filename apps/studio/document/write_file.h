// Writes a text file so that it appears whole or not at all.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace sorvanix::studio {

/// Whenever the program is killed, the file holds the former text or the new one. A file that
/// nobody may write stays as it is. The error is one line that names the file.
tl::expected<void, std::string> WriteFile(const std::filesystem::path& file, std::string_view text);

}  // namespace sorvanix::studio
