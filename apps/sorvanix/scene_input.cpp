#include "apps/sorvanix/scene_input.h"

#include <fmt/format.h>

#include "host/channels/texture.h"
#include "host/images/bitmap_texture.h"
#include "host/scene/binary_document.h"
#include "host/scene/document_file.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

bool IsSceneFile(const std::filesystem::path& file) {
  const auto bytes = host::ReadMaterialText(file);
  if (!bytes) return false;
  if (host::IsBinaryDocument(*bytes)) return true;
  const auto json = host::ParseJson(*bytes);
  return json && json->Find("format") != nullptr;
}

SceneInput LoadSceneInput(const std::filesystem::path& file, const host::ShaderCatalogue& catalogue,
                          const std::vector<std::string>& imageFolders) {
  SceneInput input;
  const auto fail = [&](ExitCode code, const std::string& problem) {
    input.code = code;
    input.error = fmt::format("{}: {}", host::Utf8FromPath(file), problem);
  };
  const auto bytes = host::ReadMaterialText(file);
  if (!bytes) {
    fail(ExitCode::FileTrouble, bytes.error());
    return input;
  }
  const auto text = host::TextOfDocument(*bytes);
  if (!text) {
    fail(ExitCode::InvalidInput, text.error());
    return input;
  }
  host::SceneReadingOptions options = {.catalogue = &catalogue, .imageFolders = {}};
  for (const std::string& folder : imageFolders) {
    options.imageFolders.push_back(host::PathFromUtf8(folder));
  }
  host::SetTextureLoader(host::OpenBitmapTexture);
  input.reading = host::ReadScene(*text, file, options);
  if (input.reading.scene == nullptr) input.code = ExitCode::InvalidInput;
  return input;
}

}  // namespace sorvanix::cli
