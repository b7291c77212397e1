// Host operations on dialogs, user areas, bitmaps and the thread of a preview, with owners for what
// the host makes. A null handle does nothing and answers 0, null or the default given.
#pragma once

#include <utility>

#include "module/shell/host_call.h"
#include "module/shell/host_text.h"

namespace sorvanix {

// --- the dialog as a whole ---

/// A dialog, freed at the end; empty when the host has none.
class OwnedDialog {
 public:
  OwnedDialog(DialogMessageFunction handler, void* context) noexcept
      : handle_(hostCall(hostApi.dialogForm, &DialogFormTable::create, nullptr, handler, context)) {
  }
  OwnedDialog(const OwnedDialog&) = delete;
  OwnedDialog& operator=(const OwnedDialog&) = delete;
  ~OwnedDialog() { hostCallOn(hostApi.dialogForm, &DialogFormTable::free, handle_); }
  HostDialog* get() const noexcept { return handle_; }

 private:
  HostDialog* handle_;
};

/// Takes the layout of a dialog resource; 0 when there is none.
inline std::int32_t hostDialogLoad(HostDialog* dialog, HostResources* resources,
                                   std::int32_t id) noexcept {
  if (resources == nullptr) return 0;
  return hostCallOn(hostApi.dialogForm, &DialogFormTable::load, 0, dialog, resources, id);
}

inline void hostDialogSetTitle(HostDialog* dialog, const HostString* title) noexcept {
  hostCallOn(hostApi.dialogForm, &DialogFormTable::setTitle, dialog, title);
}

/// Runs the dialog modally where the host likes; 1 when the user confirmed.
inline std::int32_t hostDialogOpen(HostDialog* dialog) noexcept {
  constexpr std::int32_t kHostsChoice = -1;
  return hostCallOn(hostApi.dialogForm, &DialogFormTable::open, 0, dialog, kHostsChoice,
                    kHostsChoice);
}

inline void hostDialogClose(HostDialog* dialog, bool confirmed) noexcept {
  hostCallOn(hostApi.dialogForm, &DialogFormTable::close, dialog, confirmed ? 1 : 0);
}

// --- gadgets, by their ids ---

inline void hostDialogSetInt(HostDialog* dialog, std::int32_t id, std::int32_t value,
                             std::int32_t minimum, std::int32_t maximum,
                             std::int32_t step) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setInt, dialog, id, value, minimum, maximum, step);
}
/// All numbers in the units of the block, whatever the format shows.
inline void hostDialogSetFloat(HostDialog* dialog, std::int32_t id, float value, float minimum,
                               float maximum, float step, std::int32_t format) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setFloat, dialog, id, value, minimum, maximum, step,
             format);
}
inline void hostDialogSetVector(HostDialog* dialog, std::int32_t id,
                                const Vector& colour) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setVector, dialog, id, &colour);
}
inline void hostDialogSetBool(HostDialog* dialog, std::int32_t id, std::int32_t value) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setBool, dialog, id, value);
}
inline void hostDialogSetText(HostDialog* dialog, std::int32_t id,
                              const HostString* text) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setText, dialog, id, text);
}
inline void hostDialogEnable(HostDialog* dialog, std::int32_t id, bool on) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::enable, dialog, id, on ? 1 : 0);
}
inline void hostDialogFocus(HostDialog* dialog, std::int32_t id) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::focus, dialog, id);
}
/// Lets the host edit a link in the gadgets from `id` on.
inline void hostDialogSetChannelLink(HostDialog* dialog, std::int32_t id,
                                     ChannelLink* link) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setChannelLink, dialog, id, link);
}

/// Lets the user choose a colour; 0 when cancelled.
inline std::int32_t hostChooseColour(Vector* colour) noexcept {
  return hostCall(hostApi.dialog, &DialogTable::chooseColour, 0, colour);
}

/// Opens a file in the system's viewer; nonzero on success.
inline std::int32_t hostOpenInViewer(const HostFilename* filename) noexcept {
  return hostCall(hostApi.file, &FileTable::openInViewer, 0, filename);
}

// --- user areas: gadgets that the module draws; the dialog owns them ---

inline HostUserArea* hostAttachUserArea(HostDialog* dialog, std::int32_t id,
                                        DialogMessageFunction handler, void* context) noexcept {
  return hostCallOn(hostApi.dialog, &DialogTable::attachUserArea, nullptr, dialog, id, handler,
                    context);
}

struct AreaSize {
  std::int32_t width = 0, height = 0;  ///< pixels
};
inline AreaSize hostAreaSize(const HostUserArea* area) noexcept {
  AreaSize size;
  hostCallOn(hostApi.dialog, &DialogTable::areaSize, area, &size.width, &size.height);
  return size;
}
/// Asks for AreaDraw; from any thread.
inline void hostAreaRedraw(HostUserArea* area) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::redraw, area);
}
inline void hostAreaDrawBitmap(HostUserArea* area, const HostBitmap* bitmap, std::int32_t x,
                               std::int32_t y) noexcept {
  if (bitmap == nullptr) return;
  hostCallOn(hostApi.dialog, &DialogTable::drawBitmap, area, bitmap, x, y);
}
/// Tells the dialog that the area's value changed; `dragging` while the mouse still moves it.
inline void hostAreaSendAction(HostUserArea* area, bool dragging) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::sendAction, area, dragging ? 1 : 0);
}
/// While the mouse is held: waits for the next move, 0 when it was released.
inline std::int32_t hostAreaPollMouse(HostUserArea* area, std::int32_t* x, std::int32_t* y,
                                      std::int32_t* qualifier) noexcept {
  return hostCallOn(hostApi.dialog, &DialogTable::pollMouse, 0, area, x, y, qualifier);
}
/// Sends AreaTimer every so many milliseconds; 0 stops it.
inline void hostAreaSetTimer(HostUserArea* area, std::int32_t milliseconds) noexcept {
  hostCallOn(hostApi.dialog, &DialogTable::setTimer, area, milliseconds);
}

// --- bitmaps ---

/// A picture of the module's own, freed at the end. Empty until it is made or loaded.
class OwnedBitmap {
 public:
  OwnedBitmap() noexcept = default;
  OwnedBitmap(const OwnedBitmap&) = delete;
  OwnedBitmap& operator=(const OwnedBitmap&) = delete;
  ~OwnedBitmap() { Clear(); }

  /// An all black picture of this size in place of the former one; false, and empty, when the host
  /// cannot make it.
  bool Make(std::int32_t width, std::int32_t height) noexcept {
    constexpr std::int32_t kDepth = 24;
    return Create() &&
           Keep(hostCallOn(hostApi.bitmap, &BitmapTable::init, 0, handle_, width, height, kDepth));
  }
  /// The picture of a file in place of the former one; false, and empty, when it cannot be read.
  bool Load(const HostFilename* filename) noexcept {
    return Create() && Keep(hostCallOn(hostApi.bitmap, &BitmapTable::load, 0, handle_, filename));
  }
  void Clear() noexcept {
    hostCallOn(hostApi.bitmap, &BitmapTable::free, std::exchange(handle_, nullptr));
  }
  HostBitmap* get() const noexcept { return handle_; }

 private:
  bool Create() noexcept {
    Clear();
    handle_ = hostCall(hostApi.bitmap, &BitmapTable::create, nullptr);
    return handle_ != nullptr;
  }
  bool Keep(std::int32_t made) noexcept {
    if (made == 0) Clear();
    return made != 0;
  }

  HostBitmap* handle_ = nullptr;
};

/// A colour as the host's pictures hold it.
struct Pixel {
  std::int32_t red = 0, green = 0, blue = 0;
};

inline Pixel hostBitmapGetPixel(const HostBitmap* bitmap, std::int32_t x, std::int32_t y) noexcept {
  Pixel pixel;
  hostCallOn(hostApi.bitmap, &BitmapTable::getPixel, bitmap, x, y, &pixel.red, &pixel.green,
             &pixel.blue);
  return pixel;
}
/// The host limits components to 0..255 and skips places outside the picture.
inline void hostBitmapSetPixel(HostBitmap* bitmap, std::int32_t x, std::int32_t y,
                               const Pixel& pixel) noexcept {
  hostCallOn(hostApi.bitmap, &BitmapTable::setPixel, bitmap, x, y, pixel.red, pixel.green,
             pixel.blue);
}

// --- the thread of a preview ---

/// On the thread itself: nonzero when it was told to stop.
inline std::int32_t hostThreadMustStop(const HostThread* thread) noexcept {
  return hostCallOn(hostApi.thread, &ThreadTable::mustStop, 0, thread);
}

/// At most one thread of the host at a time; told to stop and waited for at the end.
class OwnedThread {
 public:
  using Run = void (*)(void* context, HostThread* thread) noexcept;

  OwnedThread() noexcept = default;
  OwnedThread(const OwnedThread&) = delete;
  OwnedThread& operator=(const OwnedThread&) = delete;
  ~OwnedThread() { End(); }

  /// Ends the former thread and starts run(context) on a new one; false when the host has none.
  bool Start(Run run, void* context) noexcept {
    End();
    handle_ = hostCall(hostApi.thread, &ThreadTable::start, nullptr, run, &Finished, context);
    return handle_ != nullptr;
  }
  /// Tells the thread to stop and waits for it.
  void End() noexcept {
    hostCallOn(hostApi.thread, &ThreadTable::end, std::exchange(handle_, nullptr));
  }

 private:
  static void Finished(void*) noexcept {}  // what a pass changes, it says itself

  HostThread* handle_ = nullptr;
};

}  // namespace sorvanix
