#include "apps/sorvanix/material_input.h"

#include <fmt/format.h>

#include <CLI/App.hpp>

#include "host/images/bitmap_texture.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace fs = std::filesystem;

void AddImagesOption(CLI::App& app, std::vector<std::string>& folders) {
  app.add_option("--images", folders,
                 "A folder in which bitmaps are looked for when they are not beside the material; "
                 "may be given several times")
      ->type_name("FOLDER")
      ->check(CLI::ExistingDirectory)
      ->expected(1)
      ->take_all();
}

MaterialInput LoadMaterial(const fs::path& file, const host::ShaderCatalogue& catalogue,
                           const std::vector<std::string>& imageFolders) {
  MaterialInput input;
  const auto text = host::ReadMaterialText(file);
  if (!text) {
    input.code = ExitCode::FileTrouble;
    input.error = fmt::format("{}: {}", host::Utf8FromPath(file), text.error());
    return input;
  }
  host::MaterialPlaces places = {.file = file, .imageFolders = {}};
  for (const std::string& folder : imageFolders) {
    places.imageFolders.push_back(host::PathFromUtf8(folder));
  }
  host::SetTextureLoader(host::OpenBitmapTexture);
  input.reading = host::ReadMaterial(*text, catalogue, places);
  const auto errors = input.reading.Errors();
  if (errors.empty()) return input;
  input.code = ExitCode::InvalidInput;
  input.error = Describe(file, errors.front());
  const std::size_t others = errors.size() - 1 + input.reading.untold.errors;
  if (others > 0) {
    input.error += fmt::format(" (and {} more; see sorvanix validate)", others);
  }
  return input;
}

}  // namespace sorvanix::cli
