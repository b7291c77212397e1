#include "host/images/image_info.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include "host/images/first_line.h"
#include "host/services/json.h"

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

}  // namespace

tl::expected<ImageInfo, std::string> ReadImageInfo(const std::filesystem::path& file) {
  const auto input = OIIO::ImageInput::open(file.string());
  if (!input) return tl::unexpected(FirstLine(OIIO::geterror()));
  const OIIO::ImageSpec spec = input->spec();
  constexpr int kLargestSide = 65536;
  if (spec.width > kLargestSide || spec.height > kLargestSide) {
    return tl::unexpected(fmt::format("{} x {} pixels are too many", spec.width, spec.height));
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

}  // namespace sorvanix::host
