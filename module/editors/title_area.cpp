// The three pictures of the strip side by side.
#include "module/editors/title_area.h"

#include <algorithm>

#include "module/editors/about_dialog.h"
#include "module/editors/plugin_files.h"
#include "module/shell/host_channel.h"

namespace sorvanix {

void TitleArea::LoadOnce() noexcept {
  if (loaded_) return;
  loaded_ = true;
  logo_.Load(ResourceFile("sorvaNIX Logo.tif").get());
  spacer_.Load(ResourceFile("sorvaNIX Spacer.tif").get());
  title_.Load(ResourceFile(titleIcon_).get());
}

bool TitleArea::Init() noexcept {
  LoadOnce();
  return true;
}

bool TitleArea::GetMinSize(std::int32_t* width, std::int32_t* height) noexcept {
  LoadOnce();
  *width = 0;
  *height = 0;
  for (const OwnedBitmap* part : {&logo_, &spacer_, &title_}) {
    *width += hostBitmapWidth(part->get());
    *height = std::max(*height, hostBitmapHeight(part->get()));
  }
  return true;
}

void TitleArea::Draw() noexcept {
  LoadOnce();
  const std::int32_t logoWidth = hostBitmapWidth(logo_.get());
  const std::int32_t spacerWidth = hostBitmapWidth(spacer_.get());
  const std::int32_t titleWidth = hostBitmapWidth(title_.get());
  const std::int32_t titleStart =
      std::max(hostAreaSize(get()).width - titleWidth, logoWidth + spacerWidth);
  for (std::int32_t x = logoWidth; spacerWidth > 0 && x < titleStart; x += spacerWidth) {
    hostAreaDrawBitmap(get(), spacer_.get(), x, 0);
  }
  hostAreaDrawBitmap(get(), logo_.get(), 0, 0);
  hostAreaDrawBitmap(get(), title_.get(), titleStart, 0);
}

bool TitleArea::Input(const AreaInputEvent& event) noexcept {
  if (!event.IsLeftPress() || event.twice) return false;
  ShowAbout(aboutName_);
  return true;
}

}  // namespace sorvanix
