// Bitmaps: the pictures of the contract, with eight bits a channel and row 0 at the top.
#pragma once

#include <sorvanix/host_dialog.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "host/channels/texture.h"
#include "host/services/handle.h"

namespace sorvanix::host {

class Bitmap : public Handled<Bitmap, HostBitmap> {
 public:
  using Pixel = std::array<std::uint8_t, 3>;

  /// Neither width nor height goes beyond this.
  static constexpr std::int32_t kLargestSide = 65536;

  /// A picture without pixels.
  Bitmap() = default;
  /// Shows a texture: its size at once, its pixels once they are asked for.
  explicit Bitmap(TexturePointer texture) noexcept;

  /// Makes all pixels black; false, with nothing changed, for a size that is not allowed.
  /// Throws std::bad_alloc.
  bool Init(std::int32_t width, std::int32_t height);
  /// Takes the picture of a file; false, with nothing changed, when it cannot be read.
  bool Load(const std::filesystem::path& file);

  std::int32_t Width() const noexcept { return width_; }
  std::int32_t Height() const noexcept { return height_; }

  // Safe on several threads, as long as the picture is not a texture's.

  /// Black outside the picture.
  Pixel At(std::int32_t x, std::int32_t y) const;
  /// Nothing happens outside the picture. A shown texture keeps its own pixels.
  void Set(std::int32_t x, std::int32_t y, const Pixel& pixel);

 private:
  bool Inside(std::int32_t x, std::int32_t y) const noexcept;
  Pixel& PixelAt(std::int32_t x, std::int32_t y) const;

  std::int32_t width_ = 0, height_ = 0;
  TexturePointer texture_;
  mutable std::vector<Pixel> pixels_;  // empty until the texture's are asked for
};

void InstallBitmaps(BitmapTable& table) noexcept;

}  // namespace sorvanix::host
