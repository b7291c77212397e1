// What each event of a list does in the dialog that is open.
#include <fmt/format.h>

#include <utility>

#include "host/dialogs/gadget_spelling.h"
#include "host/dialogs/headless_dialogs.h"
#include "host/dialogs/link_content.h"
#include "host/dialogs/preview_threads.h"

namespace sorvanix::host {

namespace {

std::string Spelled(const Json& json) { return Excerpt(WriteJson(json, -1)); }

}  // namespace

// Plays one event in a dialog.
struct HeadlessDialogs::Player {
  HeadlessDialogs& session;
  Dialog& dialog;
  const DialogEvent& event;

  void operator()(const SetEvent& set) const {
    Gadget* gadget = session.FindGadget(dialog, event, set.gadget);
    if (gadget == nullptr) return;
    if (!gadget->enabled) {
      return session.Fail(event, fmt::format("gadget {} is disabled", gadget->id), "/set");
    }
    if (gadget->kind == ElementKind::Link) return SetLink(*gadget, set.value);
    auto value = TypedValue(*gadget, set.value);
    if (!value) return session.Fail(event, value.error(), "/value");
    dialog.Set(*gadget, *std::move(value));
  }

  void SetLink(const Gadget& gadget, const Json& content) const {
    if (gadget.link == nullptr) {
      return session.Fail(event, fmt::format("link {} shows nothing", gadget.id), "/set");
    }
    const auto error =
        FillLink(*Link::From(gadget.link), content, session.catalogue_, session.places_);
    if (error) return session.Fail(event, error->message, "/value" + error->pointer);
    dialog.ChangeLink(gadget);
  }

  void operator()(const KeyEvent& key) const { dialog.PressKey(key.code, key.qualifier); }

  void operator()(const MouseEvent& mouse) const {
    // A release belongs to its press, even when that has opened another dialog.
    if (mouse.action == MouseAction::Up) return Release(mouse);
    UserArea* area = session.FindArea(dialog, event, mouse.area);
    // Nobody follows a move but a drag: PollMouse.
    if (area == nullptr || mouse.action == MouseAction::Move) return;
    session.mouse_ = *mouse.place;
    if (mouse.action == MouseAction::Wheel) return area->Wheel(*mouse.place, mouse.delta);
    if (session.held_) return session.Fail(event, "the mouse button is down already");
    const bool isDouble = mouse.action == MouseAction::Double;
    if (!isDouble) session.held_ = mouse.area;  // a double press is released at once
    area->Press(*mouse.place, isDouble);
  }

  void Release(const MouseEvent& mouse) const {
    if (session.held_ != mouse.area) {
      return session.Fail(event,
                          fmt::format("the mouse button is not down in area {}", mouse.area));
    }
    session.held_.reset();
  }

  void operator()(const ColourEvent&) const {
    if (session.waitingColour_ != nullptr) {
      return session.Fail(event, "the colour before this one was not asked for yet");
    }
    session.waitingColour_ = &event;
  }

  void operator()(const TickEvent& tick) const {
    UserArea* area = session.FindArea(dialog, event, tick.area);
    for (int i = 0; area != nullptr && i < tick.count; ++i) {
      if (area->TimerMilliseconds() == 0) {
        return session.Fail(event, fmt::format("area {} has no timer", tick.area));
      }
      area->Tick();
      session.DrawWaiting();
    }
  }

  void operator()(const WaitEvent&) const { WaitForPreviews(); }

  void operator()(const SaveEvent& save) const {
    constexpr std::size_t kMostBytes = std::size_t{256} << 20;
    const UserArea* area = session.FindArea(dialog, event, save.area);
    if (area == nullptr) return;
    session.pictureBytes_ +=
        3 * static_cast<std::size_t>(area->Width()) * static_cast<std::size_t>(area->Height());
    if (session.pictureBytes_ > kMostBytes) {
      return session.Fail(event, "the pictures are larger than 256 MB in all");
    }
    if (area->Width() == 0 || area->Height() == 0) {
      return session.Fail(event, fmt::format("area {} has no pixels", save.area));
    }
    session.pictures_.push_back({save.file, save.area, area->Picture()});
  }

  void operator()(const ExpectEvent& expect) const {
    const Gadget* gadget = session.FindGadget(dialog, event, expect.gadget);
    if (gadget == nullptr) return;
    if (expect.value && gadget->kind == ElementKind::Link) {
      return session.Fail(event, "what a link holds cannot be expected", "/value");
    }
    const auto disagree = [&](std::string message) {
      session.failures_.push_back({std::move(message), event.offset, event.pointer});
    };
    if (expect.value && !Shows(*gadget, *expect.value)) {
      disagree(fmt::format("gadget {} shows {}, expected {}", gadget->id,
                           Spelled(ShownValue(*gadget)), Spelled(*expect.value)));
    }
    if (expect.enabled && *expect.enabled != gadget->enabled) {
      disagree(fmt::format(
          "gadget {} is {}", gadget->id,
          gadget->enabled ? "enabled, expected disabled" : "disabled, expected enabled"));
    }
  }

  void operator()(const CloseEvent& close) const { dialog.Close(close.confirmed); }
};

void HeadlessDialogs::Play(Dialog& dialog, const DialogEvent& event) {
  std::visit(Player{*this, dialog, event}, event.what);
  DrawWaiting();
}

}  // namespace sorvanix::host
