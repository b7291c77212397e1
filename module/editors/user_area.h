// A gadget that the module draws itself: receives the host's messages as virtual operations.
#pragma once

#include "module/shell/host_dialog.h"

namespace sorvanix {

/// What the mouse or a key did in an area.
struct AreaInputEvent {
  std::int32_t device = 0;     ///< DialogMouse or DialogKey
  std::int32_t channel = 0;    ///< MouseLeft, MouseWheel or a key code
  std::int32_t qualifier = 0;  ///< Qualifier bits
  std::int32_t x = 0, y = 0;   ///< pixels from the area's upper left corner
  bool twice = false;          ///< the second press in a row
  std::int32_t wheel = 0;      ///< 120 for a notch

  bool IsLeftPress() const noexcept { return device == DialogMouse && channel == MouseLeft; }
  bool IsWheel() const noexcept { return device == DialogMouse && channel == MouseWheel; }
};

/// Lives at least as long as the dialog that it is attached to; owns nothing of it.
class UserArea {
 public:
  UserArea() noexcept = default;
  UserArea(const UserArea&) = delete;
  UserArea& operator=(const UserArea&) = delete;

  /// Makes a gadget this area. An area that a dialog lacks receives nothing, and does nothing.
  void Attach(HostDialog* dialog, std::int32_t gadget) noexcept;
  /// Forgets the gadget, when its dialog goes.
  void Detach() noexcept { handle_ = nullptr; }

  /// The gadget; null when there is none.
  HostUserArea* get() const noexcept { return handle_; }
  /// Asks the host for a Draw; from any thread.
  void Redraw() noexcept { hostAreaRedraw(handle_); }

 protected:
  ~UserArea() = default;

  /// Stores the smallest size in pixels; false to leave it to the layout.
  virtual bool GetMinSize(std::int32_t* /*width*/, std::int32_t* /*height*/) noexcept {
    return false;
  }
  /// The area came to be: time to make what it draws with. False when that failed.
  virtual bool Init() noexcept { return true; }
  virtual void Draw() noexcept = 0;
  /// True when the event was meant for the area.
  virtual bool Input(const AreaInputEvent&) noexcept { return false; }
  /// The time of hostAreaSetTimer has passed.
  virtual void Timer() noexcept {}

 private:
  static std::int32_t Handle(void* context, std::int32_t id, const HostContainer* message,
                             HostContainer* reply) noexcept;
  bool Receive(std::int32_t id, const HostContainer* message, HostContainer* reply) noexcept;

  HostUserArea* handle_ = nullptr;
};

}  // namespace sorvanix
