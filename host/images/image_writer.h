// Writes a picture into an image file. Equal pictures with equal provenance give equal bytes: no
// clock time goes in.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "host/images/image.h"
#include "host/images/image_format.h"

namespace sorvanix::host {

/// What a file tells about its making.
struct Provenance {
  std::string program;   // name and version
  std::string recipe;    // JSON text of an object: what to make again to get the same picture
  bool isColour = true;  // false: the values are data, such as normals
};

/// How many bytes of memory a picture takes at most until it is written: its values, the same at
/// the file's depth, and what they are encoded into.
double WrittenBytes(int width, int height, PixelDepth depth);

/// Writes the file and answers its pixel hash: the SHA-1 of the pixels at the file's depth, 40
/// upper-case hex digits. The name's extension does not matter.
///
/// Values go in unchanged, tagged as sRGB colours, or as raw data; for whole-number depths they
/// saturate and NaN becomes 0. The provenance goes in as attributes where the format keeps such
/// (PNG, EXR), and as JSON in the image description of every format; without the recipe where that
/// is too long for the format (JPEG 30 KB, TIFF 65 KB), and without the hash in JPEG, whose pixels
/// are not exactly those that went in. After an error, which is one line without
/// the file's name, the file may be there in part.
tl::expected<std::string, std::string> WriteImage(const std::filesystem::path& file,
                                                  const Image& image, ImageFormat format,
                                                  const Provenance& provenance);

}  // namespace sorvanix::host
