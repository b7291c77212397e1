#include "tests/support/fake_bitmap.h"

#include <algorithm>

#include "tests/support/fake_host.h"

namespace sorvanix::test {

namespace {

bool IsOwn(const HostBitmap* bitmap) {
  return FakeHost::Current().bitmaps.count(&FakeBitmap::Of(bitmap)) != 0;
}

HostBitmap* Create() noexcept {
  FakeHost& host = FakeHost::Current();
  if (IsDue(host.failBitmap)) return nullptr;
  auto* bitmap = new FakeBitmap;
  host.bitmaps.insert(bitmap);
  return bitmap->handle();
}

void Free(HostBitmap* bitmap) noexcept {
  FakeHost::Current().bitmaps.erase(&FakeBitmap::Of(bitmap));
  delete &FakeBitmap::Of(bitmap);
}

std::int32_t Init(HostBitmap* bitmap, std::int32_t width, std::int32_t height,
                  std::int32_t depth) noexcept {
  if (IsDue(FakeHost::Current().failBitmapInit)) return 0;
  FakeBitmap::Of(bitmap).depth = depth;
  return FakeBitmap::Of(bitmap).Make(width, height) ? 1 : 0;
}

std::int32_t Load(HostBitmap* bitmap, const HostFilename* filename) noexcept {
  const std::string path = FakeTextOf(reinterpret_cast<const HostString*>(filename));
  FakeHost& host = FakeHost::Current();
  host.picturesAsked.push_back(path);
  const auto found = host.pictures.find(path);
  if (found == host.pictures.end() || IsDue(host.failPicture)) return 0;
  FakeBitmap::Of(bitmap).file = path;
  return FakeBitmap::Of(bitmap).Make(found->second.width, found->second.height) ? 1 : 0;
}

std::int32_t Width(const HostBitmap* bitmap) noexcept {
  return IsOwn(bitmap) ? FakeBitmap::Of(bitmap).width : ScriptedBitmapTable().width(bitmap);
}
std::int32_t Height(const HostBitmap* bitmap) noexcept {
  return IsOwn(bitmap) ? FakeBitmap::Of(bitmap).height : ScriptedBitmapTable().height(bitmap);
}

void GetPixel(const HostBitmap* bitmap, std::int32_t x, std::int32_t y, std::int32_t* red,
              std::int32_t* green, std::int32_t* blue) noexcept {
  const FakePixel pixel = FakeBitmap::Of(bitmap).At(x, y);
  *red = pixel.red;
  *green = pixel.green;
  *blue = pixel.blue;
}

void SetPixel(HostBitmap* bitmap, std::int32_t x, std::int32_t y, std::int32_t red,
              std::int32_t green, std::int32_t blue) noexcept {
  FakeBitmap::Of(bitmap).Set(x, y, {red, green, blue});
}

}  // namespace

FakeBitmap& FakeBitmap::Of(const HostBitmap* bitmap) {
  return *const_cast<FakeBitmap*>(reinterpret_cast<const FakeBitmap*>(bitmap));
}

bool FakeBitmap::Make(std::int32_t newWidth, std::int32_t newHeight) {
  if (newWidth < 0 || newHeight < 0) return false;
  width = newWidth;
  height = newHeight;
  pixels_ = std::make_unique<std::atomic<std::uint32_t>[]>(static_cast<std::size_t>(width) *
                                                           static_cast<std::size_t>(height));
  return true;
}

bool FakeBitmap::Holds(std::int32_t x, std::int32_t y) const {
  return x >= 0 && x < width && y >= 0 && y < height;
}

FakePixel FakeBitmap::At(std::int32_t x, std::int32_t y) const {
  if (!Holds(x, y)) return {};
  const std::uint32_t packed = pixels_[static_cast<std::size_t>(y * width + x)];
  return {static_cast<int>(packed >> 16), static_cast<int>(packed >> 8 & 255),
          static_cast<int>(packed & 255)};
}

void FakeBitmap::Set(std::int32_t x, std::int32_t y, const FakePixel& pixel) {
  if (!Holds(x, y)) return;
  const auto byte = [](int component) {
    return static_cast<std::uint32_t>(std::clamp(component, 0, 255));
  };
  pixels_[static_cast<std::size_t>(y * width + x)] =
      byte(pixel.red) << 16 | byte(pixel.green) << 8 | byte(pixel.blue);
}

const BitmapTable& FakeBitmapTable() {
  static const BitmapTable table = {.create = Create,
                                    .free = Free,
                                    .init = Init,
                                    .load = Load,
                                    .width = Width,
                                    .height = Height,
                                    .getPixel = GetPixel,
                                    .setPixel = SetPixel};
  return table;
}

}  // namespace sorvanix::test
