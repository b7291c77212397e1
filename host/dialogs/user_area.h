// User areas as the host keeps them: their pictures, and the messages that the module gets of them.
#pragma once

#include <sorvanix/host_dialog.h>

#include <cstdint>

#include "host/channels/bitmap.h"
#include "host/dialogs/dialog_layout.h"
#include "host/dialogs/dialog_service.h"
#include "host/services/containers.h"
#include "host/services/handle.h"

namespace sorvanix::host {

/// A part of a dialog that the module paints. On the main thread, but for WantRedraw.
class UserArea : public Handled<UserArea, HostUserArea> {
 public:
  UserArea(Dialog& dialog, const LayoutElement& element, DialogMessageFunction handler,
           void* context) noexcept;
  ~UserArea();
  UserArea(const UserArea&) = delete;
  UserArea& operator=(const UserArea&) = delete;

  std::int32_t Id() const noexcept { return id_; }
  Dialog& Owner() const noexcept { return dialog_; }
  std::int32_t Width() const noexcept { return width_; }
  std::int32_t Height() const noexcept { return height_; }
  /// What was painted so far; without pixels until the area is prepared.
  const Bitmap& Picture() const noexcept { return picture_; }
  /// How often Tick is due; 0 for never.
  std::int32_t TimerMilliseconds() const noexcept { return timer_; }

  /// Asks for the smallest size, which the layout's enlarges, and tells that the area is there.
  void Prepare();
  /// Takes another size, within 0..kLargestArea, and forgets the picture.
  void Resize(std::int32_t width, std::int32_t height);
  void Draw();

  // What the user does; the places count from the area's upper left corner.
  void Press(const MousePlace& place, bool isDouble);
  void Wheel(const MousePlace& place, std::int32_t delta);
  void Tick();

  // What the module does.
  void WantRedraw() noexcept;  ///< on any thread
  void Paint(const Bitmap& picture, std::int32_t x, std::int32_t y);
  void SendAction(bool dragging);
  void SetTimer(std::int32_t milliseconds);

 private:
  std::int32_t Send(std::int32_t id, const Container& message, Container& reply);
  void SendMouse(std::int32_t channel, const MousePlace& place, std::int32_t key,
                 std::int32_t value);

  Dialog& dialog_;
  std::int32_t id_;
  DialogMessageFunction handler_;
  void* context_;
  std::int32_t width_, height_;
  std::int32_t timer_ = 0;
  Bitmap picture_;
};

}  // namespace sorvanix::host
