#include "host/images/image_info.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include <exception>
#include <utility>

#include "host/images/first_line.h"
#include "host/services/json.h"
#include "host/services/machine_memory.h"

namespace sorvanix::host {

namespace {

std::string DepthOf(const OIIO::TypeDesc& type) {
  switch (type.basetype) {
    case OIIO::TypeDesc::UINT8:
      return "8";
    case OIIO::TypeDesc::UINT16:
      return "16";
    default:
      return type.c_str();  // "half", "float" and rarer ones
  }
}

// Files of other programs have other descriptions: those say nothing here.
void TakeProvenance(ImageInfo& info, const std::string& description) {
  const auto parsed = ParseJson(description);
  if (!parsed) return;
  const auto text = [&parsed](std::string_view name) {
    const Json* member = parsed->Find(name);
    const auto* content = member != nullptr ? std::get_if<std::string>(&member->value) : nullptr;
    return content != nullptr ? *content : std::string();
  };
  info.program = text("program");
  info.recordedHash = text("pixelHash");
  if (parsed->Find("colourSpace") != nullptr) {
    info.colourSpace = text("colourSpace");
  }
  if (const Json* recipe = parsed->Find("recipe")) info.recipe = WriteJson(*recipe, -1);
}

tl::expected<ImageInfo, std::string> Read(const std::filesystem::path& file) {
  const auto input = OIIO::ImageInput::open(file.string());
  if (!input) return tl::unexpected(FirstLine(OIIO::geterror()));
  const OIIO::ImageSpec spec = input->spec();
  if (auto excess = TooLarge(spec.width, spec.height, spec.pixel_bytes()); !excess.empty()) {
    return tl::unexpected(std::move(excess));
  }
  // All of the pixels, in the file's own type: a truncated file is found here.
  std::vector<unsigned char> pixels(spec.image_bytes());
  if (!input->read_image(0, 0, 0, spec.nchannels, spec.format, pixels.data())) {
    return tl::unexpected(FirstLine(input->geterror()));
  }
  ImageInfo info;
  info.width = spec.width;
  info.height = spec.height;
  info.channels = spec.nchannels;
  info.format = input->format_name();
  info.depth = DepthOf(spec.format);
  info.colourSpace = spec.get_string_attribute("oiio:ColorSpace");
  info.pixelHash = OIIO::ImageBufAlgo::computePixelHashSHA1(OIIO::ImageBuf(spec, pixels.data()));
  TakeProvenance(info, spec.get_string_attribute("ImageDescription"));
  return info;
}

}  // namespace

std::string TooLarge(int width, int height, std::size_t pixelBytes) {
  constexpr int kLargestSide = 65536;
  if (width > kLargestSide || height > kLargestSide) {
    return fmt::format("{} x {} pixels are too many", width, height);
  }
  // Readers of some formats hold the whole picture a second time.
  const double needed = 2.0 * width * height * static_cast<double>(pixelBytes);
  if (needed <= MachineMemory()) return {};
  return fmt::format("{} x {} pixels of {} bytes are more than this machine has memory for", width,
                     height, pixelBytes);
}

tl::expected<ImageInfo, std::string> ReadImageInfo(const std::filesystem::path& file) {
  try {
    return Read(file);
  } catch (const std::exception& exception) {  // out of memory, or the library's own
    return tl::unexpected(FirstLine(exception.what()));
  }
}

}  // namespace sorvanix::host
