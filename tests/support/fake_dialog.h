// Dialogs for tests: a script plays the user while a dialog is open, gadgets keep the limits that
// they were given, and passes of a preview run when the test says so.
#pragma once

#include <sorvanix/host_api.h>

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/fake_bitmap.h"
#include "tests/support/fake_data.h"

namespace sorvanix::test {

class FakeDialog;

/// What the module last set a gadget to.
struct FakeGadget {
  enum class Kind { Unset, Int, Real, Colour, Switch, Text, Link } kind = Kind::Unset;
  std::int32_t integer = 0;  ///< of an Int or Switch
  float real = 0;
  Vector colour = {};
  std::string text;
  ChannelLink* link = nullptr;
  float minimum = 0, maximum = 0, step = 0;  ///< of an Int or Real
  std::int32_t format = FormatReal;
  bool enabled = true;
  int timesSet = 0;
};

/// A user area: what was drawn into it, and the messages that it can be sent.
class FakeArea {
 public:
  FakeArea(FakeDialog& owner, std::int32_t gadget, DialogMessageFunction handler, void* context)
      : dialog(owner), id(gadget), handler_(handler), context_(context) {}
  HostUserArea* handle() { return reinterpret_cast<HostUserArea*>(this); }

  /// Sends a message; what the area answered lies in `reply`.
  bool Send(std::int32_t message, FakeContainer contents = {});
  bool Init() { return Send(AreaInit); }
  bool Tick() { return Send(AreaTimer); }
  /// Lets the area draw, in place of what it drew before.
  bool Draw();
  bool Mouse(std::int32_t x, std::int32_t y, std::int32_t qualifier = 0, bool twice = false);
  bool Wheel(std::int32_t steps, std::int32_t qualifier = 0);
  /// The smallest size that the area asks for; nothing when it leaves that to the layout.
  std::optional<FakePicture> MinSize();

  struct Drawn {
    const FakeBitmap* bitmap;
    std::int32_t x, y;
  };
  FakeDialog& dialog;
  const std::int32_t id;
  std::int32_t width = 0, height = 0;
  std::vector<Drawn> drawn;
  std::atomic<int> redraws = 0;       ///< asked for, from any thread
  std::int32_t timer = 0;             ///< milliseconds
  std::vector<std::int32_t> actions;  ///< the dragging flags of the actions that it sent
  FakeContainer reply;

 private:
  DialogMessageFunction handler_;
  void* context_;
};

class FakeDialog {
 public:
  FakeDialog(DialogMessageFunction handler, void* context) : handler_(handler), context_(context) {}
  HostDialog* handle() { return reinterpret_cast<HostDialog*>(this); }

  const FakeGadget& operator[](std::int32_t gadget) { return gadgets[gadget]; }
  std::int32_t Int(std::int32_t gadget) { return gadgets[gadget].integer; }
  float Real(std::int32_t gadget) { return gadgets[gadget].real; }
  bool Enabled(std::int32_t gadget) { return gadgets[gadget].enabled; }
  FakeArea& Area(std::int32_t gadget) { return *areas.at(gadget); }

  /// The user sets a gadget: the value is brought within the gadget's limits, shown, and sent as a
  /// command. Answers whether the command was handled.
  bool Set(std::int32_t gadget, float value, bool dragging = false);
  bool Set(std::int32_t gadget, std::int32_t value, bool dragging = false);
  bool Set(std::int32_t gadget, const Vector& colour, bool dragging = false);
  bool Set(std::int32_t gadget, const char* text);
  /// A command without a value: a button, a link.
  bool Press(std::int32_t gadget) { return Send(gadget, {}); }
  bool Key(std::int32_t key, std::int32_t qualifier = 0);
  bool Send(std::int32_t message, FakeContainer contents);
  void Confirm() { confirmed = true; }

  std::int32_t resource = 0;  ///< id of the layout
  std::string title;
  std::map<std::int32_t, FakeGadget> gadgets;
  std::map<std::int32_t, std::unique_ptr<FakeArea>> areas;
  std::int32_t focus = 0;
  std::int32_t x = 0, y = 0;  ///< where it was opened
  bool confirmed = false;
  bool closed = false;  ///< by the module

 private:
  DialogMessageFunction handler_;
  void* context_;
};

/// A thread of the host.
struct FakeThread {
  void (*run)(void*, HostThread*) noexcept;
  void (*finished)(void*) noexcept;
  void* context;
  std::atomic<bool> mustStop = false;
  int rowsUntilStop = -1;  ///< of a pass that a test runs; negative: never
  bool done = false;
  std::thread thread = {};
  HostThread* handle() { return reinterpret_cast<HostThread*>(this); }
};

/// The dialog service of a fake host.
class FakeDialogs {
 public:
  enum class Threads {
    None,      ///< the host has none: start answers null
    OnDemand,  ///< a pass runs in RunPass
    Real
  };

  /// Plays the user of the dialog with a layout of this id.
  std::map<std::int32_t, std::function<void(FakeDialog&)>> scripts;
  std::vector<std::int32_t> opened;  ///< ids of layouts, in order
  // Each fails one call, as the counts of FakeHost do.
  int failCreate = 0;
  int failLoad = 0;
  int failAttach = 0;
  int failThread = 0;
  int live = 0;
  int freedWhileDrawing = 0;  ///< dialogs that went before the thread of their preview

  /// Sizes of areas by gadget; others are 8 x 6.
  std::map<std::int32_t, FakePicture> areaSizes;

  Threads threads = Threads::OnDemand;
  int threadsStarted = 0;
  FakeThread* thread = nullptr;  ///< the one that was started and not ended
  /// Runs the pass that was started, up to a stop after so many rows; false when there is none.
  bool RunPass(int rowsUntilStop = -1);

  struct MousePosition {
    std::int32_t x, y, qualifier;
  };
  std::deque<MousePosition> drag;      ///< what the held mouse does next
  std::optional<Vector> chosenColour;  ///< nothing: the chooser is cancelled
  std::vector<Vector> coloursOffered;
  std::vector<std::string> viewed;  ///< files opened in the system's viewer
};

const DialogTable& FakeDialogTable();
const DialogFormTable& FakeDialogFormTable();
const FileTable& FakeFileTable();
const ThreadTable& FakeThreadTable();

}  // namespace sorvanix::test
