// What a user interface does for dialogs: the one thing that differs between a program with windows
// and one without.
//
// The state of a dialog, its rules and its messages are dialog.h's and the same everywhere. A
// service shows that state, turns what the user does into calls of Dialog and UserArea, and calls
// DrawWaiting between two of them.
#pragma once

#include <sorvanix/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>

#include "host/dialogs/redraw_queue.h"

namespace sorvanix::host {

class Dialog;
class UserArea;
struct Gadget;

/// Where the mouse is in an area, while its button is held.
struct MousePlace {
  std::int32_t x = 0, y = 0;
  std::int32_t qualifier = 0;
};

/// All on the main thread unless told otherwise.
class DialogService {
 public:
  virtual ~DialogService() = default;

  /// Shows a dialog whose areas have been prepared and returns once Dialog::IsClosed. A position of
  /// -1, -1 leaves it to the service. Calls nest: a dialog may open another one.
  virtual void RunModal(Dialog& dialog, std::int32_t x, std::int32_t y) = 0;
  /// Nothing when the user cancels.
  virtual std::optional<Vector> ChooseColour(const Vector& shown) = 0;
  virtual bool OpenInViewer(const std::filesystem::path& file) = 0;
  /// Waits for the mouse's next move while its button is held; nothing when it was released. To
  /// call DrawWaiting meanwhile is the service's duty.
  virtual std::optional<MousePlace> PollMouse(UserArea& area) = 0;

  /// Whether previews may have threads, and pictures are worth their loading.
  virtual bool ShowsPictures() const noexcept = 0;

  // What the module changed, for the view to follow.
  virtual void GadgetChanged(Dialog& /*dialog*/, const Gadget& /*gadget*/) {}
  virtual void FocusChanged(Dialog& /*dialog*/, const Gadget& /*gadget*/) {}
  virtual void TitleChanged(Dialog& /*dialog*/) {}
  virtual void PictureChanged(UserArea& /*area*/) {}
  virtual void TimerChanged(UserArea& /*area*/) {}
  /// The module closed the dialog: RunModal is to return.
  virtual void Closed(Dialog& /*dialog*/) {}
  /// An area waits to be drawn; on any thread.
  virtual void RedrawWanted() noexcept {}

  RedrawQueue& Redraws() noexcept { return redraws_; }
  void DrawWaiting() { redraws_.Draw(); }

 private:
  RedrawQueue redraws_;
};

/// From now on new dialogs are shown by this service; null shows none: they cannot be opened.
/// The service must stay until another takes its place. Answers the former one.
DialogService* SetDialogService(DialogService* service) noexcept;

/// While it lives, another service serves the calling thread.
class ThreadDialogService {
 public:
  explicit ThreadDialogService(DialogService& service) noexcept;
  ~ThreadDialogService();
  ThreadDialogService(const ThreadDialogService&) = delete;
  ThreadDialogService& operator=(const ThreadDialogService&) = delete;

 private:
  DialogService* former_;
};

/// The service of the calling thread, or null.
DialogService* CurrentDialogService() noexcept;

}  // namespace sorvanix::host
