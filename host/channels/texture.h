// A bitmap file as shaders read it: a colour for a place and the size of a sample.
//
// How files are decoded and filtered is another library's subject: a program that wants bitmaps
// installs a loader (host/images/bitmap_texture.h), a test one of its own.
#pragma once

#include <sorvanix/types.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <tl/expected.hpp>

#include "host/images/image.h"

namespace sorvanix::host {

/// Where a texture is read, and how much of it one sample covers.
struct TextureLookup {
  Vector uvw = {};           ///< (0, 0) is the top left corner, (1, 1) the bottom right one
  Vector delta = {};         ///< half the size of the sample along u and v; signs do not matter
  float blur = 0;            ///< widens the sample on both axes, as a share of the picture
  std::int32_t tagFlag = 0;  ///< TextureTag::flags
};

class Texture {
 public:
  virtual ~Texture() = default;

  /// In pixels, both above 0.
  virtual std::int32_t Width() const noexcept = 0;
  virtual std::int32_t Height() const noexcept = 0;
  /// The colour that the file holds there, unchanged but for filtering. Grey files answer grey,
  /// alpha is ignored. Black where there is no answer (coordinates that are not finite, a file that
  /// cannot be read any more). Safe on several threads.
  virtual Vector Sample(const TextureLookup& lookup) const noexcept = 0;
  /// All pixels. The error is one line.
  virtual tl::expected<Image, std::string> Pixels() const = 0;
};

using TexturePointer = std::shared_ptr<const Texture>;

/// Opens a bitmap file. The error is one line that begins with the file's name.
using TextureLoader = tl::expected<TexturePointer, std::string> (*)(const std::filesystem::path&);

/// From now on files are opened by this loader; null opens none. Answers the former one.
TextureLoader SetTextureLoader(TextureLoader loader) noexcept;

/// Opens a file with the loader. Without one every file is an error.
tl::expected<TexturePointer, std::string> LoadTexture(const std::filesystem::path& file);

}  // namespace sorvanix::host
