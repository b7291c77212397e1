#include "host/channels/bitmap.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "host/images/quantise.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

std::vector<Bitmap::Pixel> BytesOf(const Image& image) {
  std::vector<Bitmap::Pixel> pixels(image.rgb.size() / 3);
  for (std::size_t index = 0; index < image.rgb.size(); ++index) {
    pixels[index / 3][index % 3] = static_cast<std::uint8_t>(Quantise(image.rgb[index], 255));
  }
  return pixels;
}

}  // namespace

Bitmap::Bitmap(TexturePointer texture) noexcept
    : width_(texture->Width()), height_(texture->Height()), texture_(std::move(texture)) {}

bool Bitmap::Init(std::int32_t width, std::int32_t height) {
  if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return false;
  pixels_ = std::vector<Pixel>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  width_ = width;
  height_ = height;
  texture_.reset();
  return true;
}

bool Bitmap::Load(const std::filesystem::path& file) {
  const auto texture = LoadTexture(file);
  if (!texture) return false;
  const auto image = (*texture)->Pixels();
  if (!image) return false;
  pixels_ = BytesOf(*image);
  width_ = image->width;
  height_ = image->height;
  texture_.reset();
  return true;
}

bool Bitmap::Inside(std::int32_t x, std::int32_t y) const noexcept {
  return x >= 0 && y >= 0 && x < width_ && y < height_;
}

Bitmap::Pixel& Bitmap::PixelAt(std::int32_t x, std::int32_t y) const {
  if (pixels_.empty()) {
    const auto image = texture_->Pixels();
    const auto count = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    if (image) pixels_ = BytesOf(*image);
    pixels_.resize(count);  // black where the file shrank or went away since it was opened
  }
  return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                 static_cast<std::size_t>(x)];
}

// A preview paints its picture while the dialog shows it: old and new values may mix, but each is a
// whole one.
Bitmap::Pixel Bitmap::At(std::int32_t x, std::int32_t y) const {
  Pixel pixel = {};
  if (!Inside(x, y)) return pixel;
  Pixel& stored = PixelAt(x, y);
  for (std::size_t i = 0; i < pixel.size(); ++i) {
    pixel[i] = std::atomic_ref(stored[i]).load(std::memory_order_relaxed);
  }
  return pixel;
}

void Bitmap::Set(std::int32_t x, std::int32_t y, const Pixel& pixel) {
  if (!Inside(x, y)) return;
  Pixel& stored = PixelAt(x, y);
  for (std::size_t i = 0; i < pixel.size(); ++i) {
    std::atomic_ref(stored[i]).store(pixel[i], std::memory_order_relaxed);
  }
}

void InstallBitmaps(BitmapTable& table) noexcept {
  table.create = []() noexcept {
    return Guarded<HostBitmap*>(nullptr, [] { return (new Bitmap)->Handle(); });
  };
  table.free = [](HostBitmap* bitmap) noexcept { delete Bitmap::From(bitmap); };
  // Pixels have 24 bits whatever depth is asked for.
  table.init = [](HostBitmap* bitmap, std::int32_t width, std::int32_t height,
                  std::int32_t) noexcept {
    return Guarded(0, [&] { return bitmap && Bitmap::From(bitmap)->Init(width, height) ? 1 : 0; });
  };
  table.load = [](HostBitmap* bitmap, const HostFilename* filename) noexcept {
    return Guarded(0, [&] {
      return bitmap && filename && Bitmap::From(bitmap)->Load(PathOf(filename)) ? 1 : 0;
    });
  };
  table.width = [](const HostBitmap* bitmap) noexcept {
    return bitmap ? Bitmap::From(bitmap)->Width() : 0;
  };
  table.height = [](const HostBitmap* bitmap) noexcept {
    return bitmap ? Bitmap::From(bitmap)->Height() : 0;
  };
  table.getPixel = [](const HostBitmap* bitmap, std::int32_t x, std::int32_t y, std::int32_t* red,
                      std::int32_t* green, std::int32_t* blue) noexcept {
    const auto pixel = Guarded(
        Bitmap::Pixel{}, [&] { return bitmap ? Bitmap::From(bitmap)->At(x, y) : Bitmap::Pixel{}; });
    if (red) *red = pixel[0];
    if (green) *green = pixel[1];
    if (blue) *blue = pixel[2];
  };
  table.setPixel = [](HostBitmap* bitmap, std::int32_t x, std::int32_t y, std::int32_t red,
                      std::int32_t green, std::int32_t blue) noexcept {
    const auto byte = [](std::int32_t value) {
      return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    };
    Guarded(0, [&] {
      if (bitmap) Bitmap::From(bitmap)->Set(x, y, {byte(red), byte(green), byte(blue)});
      return 0;
    });
  };
}

}  // namespace sorvanix::host
