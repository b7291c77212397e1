// Which kinds of image file are written, and how many bits a value takes in them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace sorvanix::host {

enum class FileFormat { Png, Tiff, OpenExr, Jpeg };

enum class PixelDepth { Eight, Sixteen, Half, Float };

struct ImageFormat {
  FileFormat file;
  PixelDepth depth;

  bool operator==(const ImageFormat&) const = default;
};

/// The depth that "8", "16", "half" or "float" names.
std::optional<PixelDepth> DepthNamed(std::string_view name);

/// The most pixels along one side of a file.
int LongestSide(FileFormat format);

/// Whether the pixels of a file are exactly those that were written into it.
bool KeepsPixels(FileFormat format);

/// How many bytes a value takes.
std::size_t BytesOf(PixelDepth depth);

/// "8", "16", "half" or "float".
std::string_view NameOf(PixelDepth depth);

/// The format for a file name's extension (.png, .tif, .tiff, .exr, .jpg, .jpeg in any case) and
/// the depth asked for, or the format's usual depth: 8, for .exr half.
/// An unknown extension and a depth that the format cannot hold are errors of one line.
tl::expected<ImageFormat, std::string> ChooseImageFormat(const std::filesystem::path& file,
                                                         std::optional<PixelDepth> depth);

}  // namespace sorvanix::host
