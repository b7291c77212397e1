#include "host/services/text_file.h"

#include <fstream>
#include <iterator>

#include "host/services/input_log.h"

namespace sorvanix::host {

std::optional<std::string> ReadTextFile(const std::filesystem::path& file) {
  InputLog::Note(file);
  std::error_code unreadable;
  // A folder can be opened like a file, but not read.
  if (!std::filesystem::is_regular_file(file, unreadable)) return {};
  std::ifstream stream(file, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  if (!stream.is_open() || stream.bad()) return {};
  return text;
}

}  // namespace sorvanix::host
