// The picture, whose band of credits is written anew for each of their steps.
#include "module/editors/about_area.h"

#include "module/editors/credits.h"
#include "module/editors/plugin_files.h"
#include "module/shell/host_channel.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kHeight = 250;
constexpr std::int32_t kTickMilliseconds = 40;
constexpr std::int32_t kNotch = 120;  // of a wheel
constexpr std::int32_t kPixelsOfNotch = 20;

void CopyRows(const HostBitmap* from, HostBitmap* to, std::int32_t top,
              std::int32_t bottom) noexcept {
  const std::int32_t width = hostBitmapWidth(to);
  for (std::int32_t y = top; y < bottom; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      hostBitmapSetPixel(to, x, y, hostBitmapGetPixel(from, x, y));
    }
  }
}

}  // namespace

void AboutArea::LoadOnce() noexcept {
  if (loaded_) return;
  loaded_ = true;
  if (!picture_.Load(ResourceFile("sorvanix About.tif").get())) return;
  const std::int32_t height = hostBitmapHeight(picture_.get());
  if (!shown_.Make(hostBitmapWidth(picture_.get()), height)) return;
  CopyRows(picture_.get(), shown_.get(), 0, height);
  DrawCaption(shown_.get(), shaderName_);
}

bool AboutArea::GetMinSize(std::int32_t* width, std::int32_t* height) noexcept {
  LoadOnce();
  const std::int32_t pictureWidth = hostBitmapWidth(picture_.get());
  *width = pictureWidth > 0 ? pictureWidth - 1 : 0;
  *height = kHeight;
  return true;
}

bool AboutArea::Init() noexcept {
  LoadOnce();
  hostAreaSetTimer(get(), kTickMilliseconds);
  return true;
}

void AboutArea::Draw() noexcept {
  LoadOnce();
  if (shown_.get() == nullptr) return;
  CopyRows(picture_.get(), shown_.get(), kCreditsTop, kCreditsBottom);
  DrawCredits(shown_.get(), offset_);
  hostAreaDrawBitmap(get(), shown_.get(), 0, 0);
}

bool AboutArea::Input(const AreaInputEvent& event) noexcept {
  if (event.IsWheel()) {
    Scroll(-(event.wheel / kNotch) * kPixelsOfNotch);
    return true;
  }
  if (!event.IsLeftPress()) return false;
  hostDialogClose(dialog_, true);
  return true;
}

void AboutArea::Timer() noexcept { Scroll(1); }

// The credits begin anew at their end, and the other way round.
void AboutArea::Scroll(std::int32_t pixels) noexcept {
  const std::int32_t length = CreditsLength();
  offset_ = ((offset_ + pixels) % length + length) % length;
  Redraw();
}

}  // namespace sorvanix
