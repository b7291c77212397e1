#include "apps/sorvanix/material_input.h"

#include <fmt/format.h>

#include <fstream>
#include <system_error>

#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

namespace fs = std::filesystem;

// No graph of shaders comes near this size; a device that never ends does.
constexpr std::size_t kLargestFile = std::size_t{64} << 20;

// The text, or why there is none.
tl::expected<std::string, std::string> ReadText(const fs::path& file) {
  std::error_code error;
  if (fs::is_directory(file, error)) return tl::unexpected<std::string>("it is a folder");
  if (!fs::exists(file, error)) return tl::unexpected<std::string>("there is no such file");
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  char buffer[65536];
  while (stream.read(buffer, sizeof buffer) || stream.gcount() > 0) {
    text.append(buffer, static_cast<std::size_t>(stream.gcount()));
    if (text.size() > kLargestFile) return tl::unexpected<std::string>("it is larger than 64 MB");
  }
  if (!stream.eof()) return tl::unexpected<std::string>("it cannot be read");
  return text;
}

}  // namespace

MaterialInput LoadMaterial(const fs::path& file, const host::ShaderCatalogue& catalogue) {
  MaterialInput input;
  const auto text = ReadText(file);
  if (!text) {
    input.code = ExitCode::FileTrouble;
    input.error = fmt::format("{}: {}", host::Utf8FromPath(file), text.error());
    return input;
  }
  input.reading = host::ReadMaterial(*text, catalogue);
  const auto errors = input.reading.Errors();
  if (errors.empty()) return input;
  input.code = ExitCode::InvalidInput;
  input.error = Describe(file, errors.front());
  if (errors.size() > 1) {
    input.error += fmt::format(" (and {} more; sorvanix validate tells all)", errors.size() - 1);
  }
  return input;
}

}  // namespace sorvanix::cli
