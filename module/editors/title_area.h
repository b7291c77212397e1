// The strip at the top of every shader's dialog: the logo, the shader's title, and About on a
// click.
#pragma once

#include "module/editors/user_area.h"

namespace sorvanix {

/// Three pictures of the "Resources" folder, loaded when the area comes to be: the logo at the
/// left, the title at the right, the spacer repeated between them. A missing one leaves its place
/// empty.
class TitleArea final : public UserArea {
 public:
  /// The file of the title, and the name that the About dialog is opened with.
  TitleArea(const char* titleIcon, const char* aboutName) noexcept
      : titleIcon_(titleIcon), aboutName_(aboutName) {}

 protected:
  bool GetMinSize(std::int32_t* width, std::int32_t* height) noexcept override;
  bool Init() noexcept override;
  void Draw() noexcept override;
  bool Input(const AreaInputEvent& event) noexcept override;

 private:
  void LoadOnce() noexcept;

  const char* titleIcon_;
  const char* aboutName_;
  bool loaded_ = false;
  OwnedBitmap logo_, spacer_, title_;
};

}  // namespace sorvanix
