#include "apps/sorvanix/material_input.h"

#include <fmt/format.h>

#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace fs = std::filesystem;

MaterialInput LoadMaterial(const fs::path& file, const host::ShaderCatalogue& catalogue,
                           const std::vector<fs::path>& imageFolders) {
  MaterialInput input;
  const auto text = host::ReadMaterialText(file);
  if (!text) {
    input.code = ExitCode::FileTrouble;
    input.error = fmt::format("{}: {}", host::Utf8FromPath(file), text.error());
    return input;
  }
  input.reading = host::ReadMaterial(*text, catalogue, {.file = file, .imageFolders = imageFolders});
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
