#include "host/channels/texture.h"

#include <fmt/format.h>

#include <utility>

#include "host/services/filenames.h"
#include "host/services/input_log.h"

namespace sorvanix::host {

namespace {

TextureLoader installedLoader = nullptr;

}  // namespace

TextureLoader SetTextureLoader(TextureLoader loader) noexcept {
  return std::exchange(installedLoader, loader);
}

tl::expected<TexturePointer, std::string> LoadTexture(const std::filesystem::path& file) {
  InputLog::Note(file);
  if (installedLoader == nullptr) {
    return tl::unexpected(fmt::format("{}: this program reads no bitmaps", Utf8FromPath(file)));
  }
  return installedLoader(file);
}

}  // namespace sorvanix::host
