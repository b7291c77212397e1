// Pictures in memory, as a host for tests serves them. Pixels may be written on one thread while
// another reads them.
#pragma once

#include <sorvanix/host_api.h>

#include <atomic>
#include <memory>
#include <string>

namespace sorvanix::test {

/// A colour as bytes.
struct FakePixel {
  int red = 0, green = 0, blue = 0;
  friend bool operator==(const FakePixel&, const FakePixel&) = default;
};

class FakeBitmap {
 public:
  static FakeBitmap& Of(const HostBitmap* bitmap);
  HostBitmap* handle() { return reinterpret_cast<HostBitmap*>(this); }

  bool Make(std::int32_t newWidth, std::int32_t newHeight);
  FakePixel At(std::int32_t x, std::int32_t y) const;
  void Set(std::int32_t x, std::int32_t y, const FakePixel& pixel);

  std::int32_t width = 0, height = 0, depth = 0;
  std::string file;  ///< it was loaded from

 private:
  bool Holds(std::int32_t x, std::int32_t y) const;
  std::unique_ptr<std::atomic<std::uint32_t>[]> pixels_;
};

/// The size of pictures that can be loaded, by file name; others fail.
struct FakePicture {
  std::int32_t width, height;
};

/// Serves these pictures, and the sizes of links' bitmaps.
const BitmapTable& FakeBitmapTable();

}  // namespace sorvanix::test
