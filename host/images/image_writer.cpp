#include "host/images/image_writer.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <memory>

#include "host/images/memory_file.h"
#include "host/images/quantise.h"
#include "host/services/json.h"

namespace sorvanix::host {

namespace {

const char* LibraryNameOf(FileFormat format) {
  switch (format) {
    case FileFormat::Png:
      return "png";
    case FileFormat::Tiff:
      return "tiff";
    case FileFormat::OpenExr:
      return "openexr";
    case FileFormat::Jpeg:
      return "jpeg";
  }
  return "";
}

OIIO::TypeDesc TypeOf(PixelDepth depth) {
  switch (depth) {
    case PixelDepth::Eight:
      return OIIO::TypeDesc::UINT8;
    case PixelDepth::Sixteen:
      return OIIO::TypeDesc::UINT16;
    case PixelDepth::Half:
      return OIIO::TypeDesc::HALF;
    case PixelDepth::Float:
      return OIIO::TypeDesc::FLOAT;
  }
  return OIIO::TypeDesc::UNKNOWN;
}

template <class Whole>
void QuantiseInto(std::vector<unsigned char>& pixels, const std::vector<float>& values) {
  constexpr unsigned kMaximum = static_cast<Whole>(-1);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto whole = static_cast<Whole>(Quantise(values[i], kMaximum));
    std::memcpy(pixels.data() + i * sizeof whole, &whole, sizeof whole);
  }
}

// The values in the form in which the file holds them.
std::vector<unsigned char> PixelsOf(const Image& image, PixelDepth depth) {
  const std::size_t count = image.rgb.size();
  std::vector<unsigned char> pixels(count * TypeOf(depth).size());
  if (depth == PixelDepth::Eight) {
    QuantiseInto<std::uint8_t>(pixels, image.rgb);
  } else if (depth == PixelDepth::Sixteen) {
    QuantiseInto<std::uint16_t>(pixels, image.rgb);
  } else {
    // Row by row: the library counts values with an int.
    const std::size_t rowBytes = pixels.size() / static_cast<std::size_t>(image.height);
    for (int y = 0; y < image.height; ++y) {
      OIIO::convert_types(OIIO::TypeDesc::FLOAT, image.rgb.data() + image.IndexOf(0, y),
                          TypeOf(depth), pixels.data() + static_cast<std::size_t>(y) * rowBytes,
                          image.width * 3);
    }
  }
  return pixels;
}

std::string HashOf(const OIIO::ImageSpec& spec, std::vector<unsigned char>& pixels) {
  const OIIO::ImageBuf buffer(spec, pixels.data());
  return OIIO::ImageBufAlgo::computePixelHashSHA1(buffer);
}

// What an encoded picture may take: no compression of these formats makes noise much larger.
constexpr std::size_t EncodedBytes(std::size_t pixelBytes) {
  constexpr std::size_t kHead = std::size_t{1} << 20;
  return pixelBytes + pixelBytes / 64 + kHead;
}

// What a description can hold: JPEG keeps it in a segment of 64 KB, twice; of TIFF's longer ones
// the library reads the beginning only.
std::size_t LongestDescription(FileFormat format) {
  switch (format) {
    case FileFormat::Jpeg:
      return 30000;
    case FileFormat::Tiff:
      return 65000;
    default:
      return SIZE_MAX;
  }
}

const char* ColourSpaceOf(const Provenance& provenance) {
  return provenance.isColour ? "sRGB" : "raw";
}

// All formats keep a description; of attributes of our own and of the colour space, some do not.
std::string DescriptionOf(const Provenance& provenance, const std::string& hash,
                          std::size_t longest) {
  std::string facts =
      fmt::format(R"("program":{},"colourSpace":"{}")", WriteJson(Json(provenance.program), -1),
                  ColourSpaceOf(provenance));
  if (!hash.empty()) facts += fmt::format(R"(,"pixelHash":"{}")", hash);
  const std::string whole = fmt::format(R"({{{},"recipe":{}}})", facts, provenance.recipe);
  return whole.size() <= longest ? whole : fmt::format("{{{}}}", facts);
}

void SetProvenance(OIIO::ImageSpec& spec, FileFormat format, const Provenance& provenance,
                   const std::string& hash) {
  // Formats stamp the current time unless one is set, and equal runs must give equal bytes.
  spec.attribute("DateTime", "1970:01:01 00:00:00");
  if (format == FileFormat::Tiff && !provenance.isColour) {
    // The library fails on an Exif directory without entries; 65535 is "uncalibrated".
    spec.attribute("Exif:ColorSpace", 65535);
  } else {
    spec.attribute("oiio:ColorSpace", ColourSpaceOf(provenance));
  }
  spec.attribute("Software", provenance.program);
  spec.attribute("sorvanix:program", provenance.program);
  spec.attribute("sorvanix:recipe", provenance.recipe);
  if (!hash.empty()) spec.attribute("sorvanix:pixelHash", hash);
  spec.attribute("ImageDescription", DescriptionOf(provenance, hash, LongestDescription(format)));
}

// An empty answer is success, as with the other two.
std::string Encode(OIIO::ImageOutput& output, const std::string& name, const OIIO::ImageSpec& spec,
                   const std::vector<unsigned char>& pixels) {
  const bool written = output.open(name, spec) && output.write_image(spec.format, pixels.data());
  const bool closed = output.close();
  if (written && closed && !output.has_error()) return {};
  const std::string error = output.geterror();
  return error.empty() ? "the image could not be written" : error.substr(0, error.find('\n'));
}

// TIFF reads its own directories while it writes, which the library can do in real files only.
std::string WriteDirectly(const std::filesystem::path& file, ImageFormat format,
                          const OIIO::ImageSpec& spec, const std::vector<unsigned char>& pixels) {
  const auto output = OIIO::ImageOutput::create(LibraryNameOf(format.file));
  return output ? Encode(*output, file.string(), spec, pixels) : OIIO::geterror();
}

// The other formats end the program, or say nothing, when a disk is full. So they write into
// memory, and the bytes are written here.
std::string WriteThroughMemory(const std::filesystem::path& file, ImageFormat format,
                               const OIIO::ImageSpec& spec,
                               const std::vector<unsigned char>& pixels) {
  MemoryFile memory(EncodedBytes(pixels.size()));
  {
    const auto output = OIIO::ImageOutput::create(LibraryNameOf(format.file));
    if (!output) return OIIO::geterror();
    output->set_ioproxy(&memory);
    std::string error = Encode(*output, "image", spec, pixels);
    if (!error.empty()) return error;
  }
  const std::vector<unsigned char> bytes = memory.Take();
  errno = 0;
  std::ofstream stream(file, std::ios::binary);
  stream.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  stream.close();
  return stream ? std::string() : std::strerror(errno);
}

}  // namespace

double WrittenBytes(int width, int height, PixelDepth depth) {
  const double values = 3.0 * width * height;
  const auto filePixels = values * static_cast<double>(BytesOf(depth));
  return values * sizeof(float) + 2 * filePixels;
}

tl::expected<std::string, std::string> WriteImage(const std::filesystem::path& file,
                                                  const Image& image, ImageFormat format,
                                                  const Provenance& provenance) {
  OIIO::ImageSpec spec(image.width, image.height, 3, TypeOf(format.depth));
  std::vector<unsigned char> pixels = PixelsOf(image, format.depth);
  const std::string hash = HashOf(spec, pixels);
  SetProvenance(spec, format.file, provenance, KeepsPixels(format.file) ? hash : std::string());
  const std::string error = format.file == FileFormat::Tiff
                                ? WriteDirectly(file, format, spec, pixels)
                                : WriteThroughMemory(file, format, spec, pixels);
  if (!error.empty()) return tl::unexpected(error);
  return hash;
}

}  // namespace sorvanix::host
