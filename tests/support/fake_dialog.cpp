#include "tests/support/fake_dialog.h"

#include <algorithm>

#include "tests/support/fake_host.h"

namespace sorvanix::test {

namespace {

FakeDialogs& Service() { return FakeHost::Current().dialogs; }
FakeDialog& Of(const HostDialog* dialog) {
  return *const_cast<FakeDialog*>(reinterpret_cast<const FakeDialog*>(dialog));
}
FakeArea& Of(const HostUserArea* area) {
  return *const_cast<FakeArea*>(reinterpret_cast<const FakeArea*>(area));
}
FakeThread& Of(const HostThread* thread) {
  return *const_cast<FakeThread*>(reinterpret_cast<const FakeThread*>(thread));
}

// The gadget that is about to be set.
FakeGadget& Setting(HostDialog* dialog, std::int32_t id, FakeGadget::Kind kind) {
  FakeGadget& gadget = Of(dialog).gadgets[id];
  gadget.kind = kind;
  ++gadget.timesSet;
  return gadget;
}

// --- forms ---

HostDialog* Create(DialogMessageFunction handler, void* context) noexcept {
  if (IsDue(Service().failCreate)) return nullptr;
  ++Service().live;
  return (new FakeDialog(handler, context))->handle();
}

void Free(HostDialog* dialog) noexcept {
  --Service().live;
  if (Service().thread != nullptr) ++Service().freedWhileDrawing;
  delete &Of(dialog);
}

std::int32_t Load(HostDialog* dialog, HostResources*, std::int32_t id) noexcept {
  if (IsDue(Service().failLoad)) return 0;
  Of(dialog).resource = id;
  return 1;
}

// Areas come to be as the dialog opens; then the user acts.
std::int32_t Open(HostDialog* handle, std::int32_t x, std::int32_t y) noexcept {
  FakeDialog& dialog = Of(handle);
  dialog.x = x;
  dialog.y = y;
  Service().opened.push_back(dialog.resource);
  for (const auto& [id, area] : dialog.areas) area->Init();
  const auto script = Service().scripts.find(dialog.resource);
  if (script != Service().scripts.end()) script->second(dialog);
  return dialog.confirmed ? 1 : 0;
}

// --- gadgets ---

HostUserArea* AttachUserArea(HostDialog* dialog, std::int32_t id, DialogMessageFunction handler,
                             void* context) noexcept {
  if (IsDue(Service().failAttach)) return nullptr;
  auto& area = Of(dialog).areas[id];
  area = std::make_unique<FakeArea>(Of(dialog), id, handler, context);
  const auto size = Service().areaSizes.find(id);
  const FakePicture usual = {8, 6};
  const FakePicture& its = size == Service().areaSizes.end() ? usual : size->second;
  area->width = its.width;
  area->height = its.height;
  return area->handle();
}

void SendAction(HostUserArea* handle, std::int32_t dragging) noexcept {
  FakeArea& area = Of(handle);
  area.actions.push_back(dragging);
  FakeContainer message;
  message.Set(DialogDragging, dragging != 0);
  area.dialog.Send(area.id, message);
}

std::int32_t PollMouse(HostUserArea*, std::int32_t* x, std::int32_t* y,
                       std::int32_t* qualifier) noexcept {
  auto& drag = Service().drag;
  if (drag.empty()) return 0;
  *x = drag.front().x;
  *y = drag.front().y;
  *qualifier = drag.front().qualifier;
  drag.pop_front();
  return 1;
}

std::int32_t ChooseColour(Vector* colour) noexcept {
  Service().coloursOffered.push_back(*colour);
  if (!Service().chosenColour) return 0;
  *colour = *Service().chosenColour;
  return 1;
}

// --- threads ---

HostThread* Start(void (*run)(void*, HostThread*) noexcept, void (*finished)(void*) noexcept,
                  void* context) noexcept {
  FakeDialogs& service = Service();
  if (service.threads == FakeDialogs::Threads::None || IsDue(service.failThread)) return nullptr;
  auto* thread = new FakeThread{run, finished, context};
  ++service.threadsStarted;
  service.thread = thread;
  if (service.threads == FakeDialogs::Threads::Real) {
    thread->thread = std::thread([thread] {
      thread->run(thread->context, thread->handle());
      thread->finished(thread->context);
    });
  }
  return thread->handle();
}

std::int32_t MustStop(const HostThread* handle) noexcept {
  FakeThread& thread = Of(handle);
  if (thread.rowsUntilStop > 0 && --thread.rowsUntilStop == 0) thread.mustStop = true;
  return thread.mustStop ? 1 : 0;
}

void End(HostThread* handle) noexcept {
  FakeThread& thread = Of(handle);
  thread.mustStop = true;
  if (thread.thread.joinable()) thread.thread.join();
  if (Service().thread == &thread) Service().thread = nullptr;
  delete &thread;
}

}  // namespace

// --- areas ---

bool FakeArea::Send(std::int32_t message, FakeContainer contents) {
  reply = {};
  return handler_(context_, message, contents.handle(), reply.handle()) != 0;
}

bool FakeArea::Draw() {
  drawn.clear();
  return Send(AreaDraw);
}

bool FakeArea::Mouse(std::int32_t x, std::int32_t y, std::int32_t qualifier, bool twice) {
  FakeContainer message;
  message.Set(InputDevice, Word{DialogMouse});
  message.Set(InputChannel, Word{MouseLeft});
  message.Set(InputQualifier, Word{qualifier});
  message.Set(InputX, Word{x});
  message.Set(InputY, Word{y});
  message.Set(InputDouble, Word{twice});
  return Send(AreaInput, message);
}

bool FakeArea::Wheel(std::int32_t steps, std::int32_t qualifier) {
  FakeContainer message;
  message.Set(InputDevice, Word{DialogMouse});
  message.Set(InputChannel, Word{MouseWheel});
  message.Set(InputQualifier, Word{qualifier});
  message.Set(InputWheel, Word{steps});
  return Send(AreaInput, message);
}

std::optional<FakePicture> FakeArea::MinSize() {
  if (!Send(AreaMinSize)) return std::nullopt;
  const auto number = [this](std::int32_t key) {
    const FakeValue* value = reply.Find(key);
    return value == nullptr ? -1 : static_cast<std::int32_t>(std::get<Word>(*value));
  };
  return FakePicture{number(AreaWidth), number(AreaHeight)};
}

// --- dialogs ---

bool FakeDialog::Send(std::int32_t message, FakeContainer contents) {
  FakeContainer reply;
  return handler_(context_, message, contents.handle(), reply.handle()) != 0;
}

namespace {

FakeContainer CommandWith(FakeValue value, bool dragging) {
  FakeContainer message;
  message.Set(DialogValue, std::move(value));
  message.Set(DialogDragging, dragging);
  return message;
}

}  // namespace

bool FakeDialog::Set(std::int32_t id, float value, bool dragging) {
  FakeGadget& gadget = gadgets[id];
  gadget.real = std::clamp(value, gadget.minimum, gadget.maximum);
  return Send(id, CommandWith(gadget.real, dragging));
}

bool FakeDialog::Set(std::int32_t id, std::int32_t value, bool dragging) {
  FakeGadget& gadget = gadgets[id];
  if (gadget.kind == FakeGadget::Kind::Switch) {
    gadget.integer = value != 0;
    return Send(id, CommandWith(value != 0, dragging));
  }
  const auto limited = std::clamp<double>(value, double{gadget.minimum}, double{gadget.maximum});
  gadget.integer = static_cast<std::int32_t>(limited);
  return Send(id, CommandWith(Word{gadget.integer}, dragging));
}

bool FakeDialog::Set(std::int32_t id, const Vector& colour, bool dragging) {
  gadgets[id].colour = colour;
  return Send(id, CommandWith(colour, dragging));
}

bool FakeDialog::Set(std::int32_t id, const char* text) {
  gadgets[id].text = text;
  return Send(id, CommandWith(std::string(text), false));
}

bool FakeDialog::Key(std::int32_t key, std::int32_t qualifier) {
  FakeContainer message;
  message.Set(InputChannel, Word{key});
  message.Set(InputQualifier, Word{qualifier});
  return Send(DialogKey, message);
}

bool FakeDialogs::RunPass(int rowsUntilStop) {
  if (thread == nullptr || thread->done) return false;
  thread->done = true;
  thread->rowsUntilStop = rowsUntilStop;
  thread->run(thread->context, thread->handle());
  thread->finished(thread->context);
  return true;
}

// --- the tables ---

const DialogTable& FakeDialogTable() {
  using Kind = FakeGadget::Kind;
  static const DialogTable table = [] {
    DialogTable t = {};
    t.setInt = [](HostDialog* d, std::int32_t id, std::int32_t value, std::int32_t minimum,
                  std::int32_t maximum, std::int32_t step) noexcept {
      FakeGadget& gadget = Setting(d, id, Kind::Int);
      gadget.integer = value;
      gadget.minimum = static_cast<float>(minimum);
      gadget.maximum = static_cast<float>(maximum);
      gadget.step = static_cast<float>(step);
    };
    t.setFloat = [](HostDialog* d, std::int32_t id, float value, float minimum, float maximum,
                    float step, std::int32_t format) noexcept {
      FakeGadget& gadget = Setting(d, id, Kind::Real);
      gadget.real = value;
      gadget.minimum = minimum;
      gadget.maximum = maximum;
      gadget.step = step;
      gadget.format = format;
    };
    t.setVector = [](HostDialog* d, std::int32_t id, const Vector* colour) noexcept {
      Setting(d, id, Kind::Colour).colour = *colour;
    };
    t.setBool = [](HostDialog* d, std::int32_t id, std::int32_t value) noexcept {
      Setting(d, id, Kind::Switch).integer = value != 0;
    };
    t.setText = [](HostDialog* d, std::int32_t id, const HostString* text) noexcept {
      Setting(d, id, Kind::Text).text = FakeTextOf(text);
    };
    t.setChannelLink = [](HostDialog* d, std::int32_t id, ChannelLink* link) noexcept {
      Setting(d, id, Kind::Link).link = link;
    };
    t.enable = [](HostDialog* d, std::int32_t id, std::int32_t on) noexcept {
      Of(d).gadgets[id].enabled = on != 0;
    };
    t.focus = [](HostDialog* d, std::int32_t id) noexcept { Of(d).focus = id; };
    t.attachUserArea = AttachUserArea;
    t.areaSize = [](const HostUserArea* area, std::int32_t* width, std::int32_t* height) noexcept {
      *width = Of(area).width;
      *height = Of(area).height;
    };
    t.redraw = [](HostUserArea* area) noexcept { ++Of(area).redraws; };
    t.drawBitmap = [](HostUserArea* area, const HostBitmap* bitmap, std::int32_t x,
                      std::int32_t y) noexcept {
      Of(area).drawn.push_back({&FakeBitmap::Of(bitmap), x, y});
    };
    t.sendAction = SendAction;
    t.pollMouse = PollMouse;
    t.setTimer = [](HostUserArea* area, std::int32_t milliseconds) noexcept {
      Of(area).timer = milliseconds;
    };
    t.chooseColour = ChooseColour;
    return t;
  }();
  return table;
}

const DialogFormTable& FakeDialogFormTable() {
  static const DialogFormTable table = {
      .create = Create,
      .free = Free,
      .load = Load,
      .setTitle = [](HostDialog* dialog,
                     const HostString* title) noexcept { Of(dialog).title = FakeTextOf(title); },
      .open = Open,
      .close =
          [](HostDialog* dialog, std::int32_t confirmed) noexcept {
            Of(dialog).closed = true;
            Of(dialog).confirmed = confirmed != 0;
          }};
  return table;
}

const FileTable& FakeFileTable() {
  static const FileTable table = {.openInViewer = [](const HostFilename* filename) noexcept {
    Service().viewed.push_back(FakeTextOf(reinterpret_cast<const HostString*>(filename)));
    return std::int32_t{1};
  }};
  return table;
}

const ThreadTable& FakeThreadTable() {
  static const ThreadTable table = {.start = Start, .mustStop = MustStop, .end = End};
  return table;
}

}  // namespace sorvanix::test
