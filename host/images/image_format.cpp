#include "host/images/image_format.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace sorvanix::host {

namespace {

constexpr std::string_view kDepthNames[] = {"8", "16", "half", "float"};

struct FormatRow {
  std::string_view extension;
  FileFormat file;
  std::vector<PixelDepth> depths;  // the usual one first
};

const std::vector<FormatRow>& FormatRows() {
  using enum PixelDepth;
  static const std::vector<FormatRow> rows = {
      {".png", FileFormat::Png, {Eight, Sixteen}},
      {".tif", FileFormat::Tiff, {Eight, Sixteen, Float}},
      {".tiff", FileFormat::Tiff, {Eight, Sixteen, Float}},
      {".exr", FileFormat::OpenExr, {Half, Float}},
      {".jpg", FileFormat::Jpeg, {Eight}},
      {".jpeg", FileFormat::Jpeg, {Eight}},
  };
  return rows;
}

std::string LowerCase(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

}  // namespace

std::optional<PixelDepth> DepthNamed(std::string_view name) {
  const auto* found = std::find(std::begin(kDepthNames), std::end(kDepthNames), name);
  if (found == std::end(kDepthNames)) return std::nullopt;
  return static_cast<PixelDepth>(found - std::begin(kDepthNames));
}

int LongestSide(FileFormat format) {
  // What libjpeg takes, a little less than the 16 bits of ITU-T T.81 could tell; for the others a
  // side that no program's picture comes near.
  return format == FileFormat::Jpeg ? 65500 : 65536;
}

bool KeepsPixels(FileFormat format) { return format != FileFormat::Jpeg; }

std::size_t BytesOf(PixelDepth depth) {
  constexpr std::size_t kBytes[] = {1, 2, 2, 4};
  return kBytes[static_cast<std::size_t>(depth)];
}

std::string_view NameOf(PixelDepth depth) { return kDepthNames[static_cast<std::size_t>(depth)]; }

tl::expected<ImageFormat, std::string> ChooseImageFormat(const std::filesystem::path& file,
                                                         std::optional<PixelDepth> depth) {
  const std::string extension = LowerCase(file.extension().string());
  std::vector<std::string_view> known;
  for (const FormatRow& row : FormatRows()) {
    known.push_back(row.extension);
    if (row.extension != extension) continue;
    const PixelDepth chosen = depth.value_or(row.depths.front());
    if (std::find(row.depths.begin(), row.depths.end(), chosen) != row.depths.end()) {
      return ImageFormat{row.file, chosen};
    }
    std::vector<std::string_view> possible;
    for (PixelDepth each : row.depths) possible.push_back(NameOf(each));
    return tl::unexpected(fmt::format("{}: {} files hold a depth of {}, not {}", file.string(),
                                      extension, fmt::join(possible, " or "), NameOf(chosen)));
  }
  return tl::unexpected(
      fmt::format("{}: {} is no image format that can be written; these are: {}", file.string(),
                  extension.empty() ? "a name without an extension" : "'" + extension + "'",
                  fmt::join(known, " ")));
}

}  // namespace sorvanix::host
