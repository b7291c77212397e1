#include "host/images/bitmap_texture.h"

#include <OpenImageIO/texture.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <utility>
#include <vector>

#include "host/images/first_line.h"
#include "host/images/image_info.h"
#include "host/services/filenames.h"
#include "host/services/handle.h"

namespace sorvanix::host {

namespace {

using SystemPointer = std::shared_ptr<OIIO::TextureSystem>;

constexpr float kCacheMegabytes = 1024;
constexpr int kTileSize = 64;  // of the tiles in which untiled files are kept in the cache

// The texture system of all open textures; it goes with the last of them, and its cache with it,
// so that a program that changes a bitmap can see the new one.
SystemPointer SharedSystem() {
  static std::weak_ptr<OIIO::TextureSystem> current;
  SystemPointer system = current.lock();
  if (system == nullptr) {
    system = SystemPointer(OIIO::TextureSystem::create(false),
                           [](OIIO::TextureSystem* gone) { OIIO::TextureSystem::destroy(gone); });
    system->attribute("max_memory_MB", kCacheMegabytes);
    system->attribute("autotile", kTileSize);
    system->attribute("automip", 1);
    system->attribute("unassociatedalpha", 1);  // colours as they are in the file
    current = system;
  }
  return system;
}

// A coordinate brought near the picture, where a float tells texels apart: by whole periods where
// the picture repeats, to within its border where it does not. NaN stays.
float Near(float coordinate, double period) noexcept {
  const double wide = coordinate;
  if (period == 0) return std::clamp(coordinate, -1.0f, 2.0f);
  return static_cast<float>(wide - std::floor(wide / period) * period);
}

// The width of a sample: at most the whole picture; what is not a number has none.
float Width(float halfWidth) noexcept {
  const float width = 2 * std::fabs(halfWidth);
  return width < 1 ? width : (width >= 1 ? 1.0f : 0.0f);
}

// Spreads the grey values at the front of a picture over red, green and blue, from the last one on,
// so that none is written over before it was read.
void Replicate(std::vector<float>& rgb) noexcept {
  for (std::size_t i = rgb.size() / 3; i-- > 0;)
    rgb[3 * i] = rgb[3 * i + 1] = rgb[3 * i + 2] = rgb[i];
}

class BitmapTexture final : public Texture {
 public:
  BitmapTexture(SystemPointer system, OIIO::TextureSystem::TextureHandle* handle, std::string file,
                const OIIO::ImageSpec& spec)
      : system_(std::move(system)),
        handle_(handle),
        file_(std::move(file)),
        width_(spec.full_width),
        height_(spec.full_height),
        colours_(spec.nchannels < 3 ? 1 : 3) {}

  std::int32_t Width() const noexcept override { return width_; }
  std::int32_t Height() const noexcept override { return height_; }

  Vector Sample(const TextureLookup& lookup) const noexcept override {
    const bool tile = (lookup.tagFlag & 1) != 0;
    const bool mirrored = tile && (lookup.tagFlag & 2) != 0;
    const double period = mirrored ? 2 : (tile ? 1 : 0);
    const float s = Near(lookup.uvw.x, period);
    const float t = Near(lookup.uvw.y, period);
    if (!std::isfinite(s) || !std::isfinite(t)) return {};

    OIIO::TextureOpt options;
    options.swrap = options.twrap = mirrored ? OIIO::TextureOpt::WrapMirror
                                    : tile   ? OIIO::TextureOpt::WrapPeriodic
                                             : OIIO::TextureOpt::WrapClamp;
    // A bicubic lookup would change the colours that stand at the texels' centres.
    options.interpmode = OIIO::TextureOpt::InterpBilinear;
    options.sblur = options.tblur = sorvanix::host::Width(lookup.blur / 2);

    // Tiles are decoded here and now, where memory may be short.
    return Guarded(Vector{}, [&]() -> Vector {
      std::array<float, 3> colour = {};
      system_->texture(handle_, nullptr, options, s, t, sorvanix::host::Width(lookup.delta.x), 0, 0,
                       sorvanix::host::Width(lookup.delta.y), colours_, colour.data());
      if (colours_ == 1) return {colour[0], colour[0], colour[0]};
      return {colour[0], colour[1], colour[2]};
    });
  }

  tl::expected<Image, std::string> Pixels() const override {
    const auto fail = [this](const std::string& reason) {
      return tl::unexpected(fmt::format("{}: {}", file_, reason));
    };
    if (auto excess = TooLarge(width_, height_, 3 * sizeof(float)); !excess.empty()) {
      return fail(excess);
    }
    Image image(width_, height_);
    OIIO::TextureOpt options;
    if (!system_->get_texels(handle_, nullptr, options, 0, 0, width_, 0, height_, 0, 1, 0, colours_,
                             OIIO::TypeDesc::FLOAT, image.rgb.data())) {
      return fail(FirstLine(system_->geterror()));
    }
    if (colours_ == 1) Replicate(image.rgb);
    return image;
  }

 private:
  SystemPointer system_;
  OIIO::TextureSystem::TextureHandle* handle_;
  std::string file_;
  std::int32_t width_, height_;
  int colours_;  // channels that are read: red, green and blue, or grey
};

// The error is one line without the file's name.
tl::expected<TexturePointer, std::string> Open(const std::filesystem::path& file) {
  const auto fail = [](std::string_view reason) { return tl::unexpected(std::string(reason)); };
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored)) return fail("no such file");
  if (!std::filesystem::is_regular_file(file, ignored)) return fail("not an image file");

  // Absolute, so that a change of the working folder changes nothing.
  const std::string absolute = Utf8FromPath(std::filesystem::absolute(file, ignored));
  SystemPointer system = SharedSystem();
  auto* handle = system->get_texture_handle(OIIO::ustring(absolute));
  OIIO::ImageSpec spec;
  if (handle == nullptr || !system->good(handle) ||
      !system->get_imagespec(handle, nullptr, 0, spec)) {
    return fail(FirstLine(system->geterror()));
  }
  // A header alone proves nothing: a cut file must be refused here, not sampled as black.
  if (const auto pixels = ReadImageInfo(file); !pixels) return fail(pixels.error());
  return std::make_shared<const BitmapTexture>(std::move(system), handle, absolute, spec);
}

}  // namespace

tl::expected<TexturePointer, std::string> OpenBitmapTexture(const std::filesystem::path& file) {
  tl::expected<TexturePointer, std::string> texture;
  try {
    texture = Open(file);
  } catch (const std::exception& exception) {  // out of memory, or the library's own
    texture = tl::unexpected(FirstLine(exception.what()));
  }
  if (!texture) return tl::unexpected(fmt::format("{}: {}", Utf8FromPath(file), texture.error()));
  return texture;
}

}  // namespace sorvanix::host
