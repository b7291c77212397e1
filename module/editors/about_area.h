// The picture of the About dialog, with the credits that scroll over it.
#pragma once

#include "module/editors/user_area.h"

namespace sorvanix {

/// A click closes the dialog; the wheel scrolls. A missing picture leaves the area empty.
class AboutArea final : public UserArea {
 public:
  /// The name stands below the credits.
  AboutArea(HostDialog* dialog, const char* shaderName) noexcept
      : dialog_(dialog), shaderName_(shaderName) {}

 protected:
  bool GetMinSize(std::int32_t* width, std::int32_t* height) noexcept override;
  bool Init() noexcept override;
  void Draw() noexcept override;
  bool Input(const AreaInputEvent& event) noexcept override;
  void Timer() noexcept override;

 private:
  void LoadOnce() noexcept;
  void Scroll(std::int32_t pixels) noexcept;

  HostDialog* dialog_;
  const char* shaderName_;
  OwnedBitmap picture_;
  OwnedBitmap shown_;  ///< the picture with the credits
  bool loaded_ = false;
  /// Of the credits: the first lines are in view at once.
  std::int32_t offset_ = 70;
};

}  // namespace sorvanix
