// What an image file holds and tells about its making.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <tl/expected.hpp>

namespace sorvanix::host {

struct ImageInfo {
  int width = 0;
  int height = 0;
  int channels = 0;
  std::string format;        // "png", "tiff", "openexr", "jpeg" and others
  std::string depth;         // "8", "16", "half", "float", or the library's name of another type
  std::string pixelHash;     // SHA-1 of the pixels as they are in the file
  std::string colourSpace;   // as the file tells, or empty
  std::string program;       // name and version of the program that made it, or empty
  std::string recipe;        // JSON text, or empty
  std::string recordedHash;  // the hash that the file was given, or empty

  /// Whether the pixels are still those that were written; true where no hash is recorded.
  bool Intact() const { return recordedHash.empty() || recordedHash == pixelHash; }
};

/// Why a picture of so many pixels, each of so many bytes, is not read; empty for one that is. Its
/// header alone may ask for more than there is memory for.
std::string TooLarge(int width, int height, std::size_t pixelBytes);

/// Reads any image file that OpenImageIO knows. The error is one line without the file's name.
tl::expected<ImageInfo, std::string> ReadImageInfo(const std::filesystem::path& file);

}  // namespace sorvanix::host
