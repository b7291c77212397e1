#include "host/dialogs/headless_dialogs.h"

#include <fmt/format.h>

#include <system_error>
#include <type_traits>

#include "host/dialogs/link_content.h"
#include "host/dialogs/preview_threads.h"

namespace sorvanix::host {

namespace {

std::string Spelled(const Json& json) { return Excerpt(WriteJson(json, -1)); }

// What can be looked at while the mouse is held.
bool OnlyLooks(const DialogEvent& event) {
  return std::holds_alternative<WaitEvent>(event.what) ||
         std::holds_alternative<TickEvent>(event.what) ||
         std::holds_alternative<SaveEvent>(event.what) ||
         std::holds_alternative<ExpectEvent>(event.what);
}

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
    if (mouse.action == MouseAction::Move) return;  // nobody follows it but a drag: PollMouse
    UserArea* area = session.FindArea(dialog, event, mouse.area);
    if (area == nullptr) return;
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

HeadlessDialogs::HeadlessDialogs(std::vector<DialogEvent> events, const ShaderCatalogue& catalogue,
                                 MaterialPlaces places)
    : events_(std::move(events)), catalogue_(catalogue), places_(std::move(places)) {}

void HeadlessDialogs::RunModal(Dialog& dialog, std::int32_t, std::int32_t) {
  wasOpened_ = true;
  NoteShown(dialog);
  DrawWaiting();
  while (!dialog.IsClosed()) {
    if (!error_ && next_ == events_.size()) {
      FailAtEnd(
          fmt::format("the list ends while the dialog \"{}\" is open: \"ok\" or \"cancel\" is "
                      "missing",
                      dialog.Title()));
    }
    if (error_) {
      dialog.Close(false);
    } else {
      Play(dialog, events_[next_++]);
    }
  }
  std::erase_if(shown_, [&](const auto& each) { return each.first.first == &dialog; });
}

void HeadlessDialogs::Play(Dialog& dialog, const DialogEvent& event) {
  std::visit(Player{*this, dialog, event}, event.what);
  DrawWaiting();
}

std::optional<Vector> HeadlessDialogs::ChooseColour(const Vector&) {
  if (error_) return std::nullopt;
  const DialogEvent* answer = std::exchange(waitingColour_, nullptr);
  if (answer == nullptr && next_ == events_.size()) {
    FailAtEnd("the list ends while a colour is to be chosen");
    return std::nullopt;
  }
  if (answer == nullptr) answer = &events_[next_++];
  const auto* colour = std::get_if<ColourEvent>(&answer->what);
  if (colour == nullptr) {
    Fail(*answer, "a colour is to be chosen: expected { \"colour\": ... }");
    return std::nullopt;
  }
  return colour->colour;
}

bool HeadlessDialogs::OpenInViewer(const std::filesystem::path& file) {
  viewed_.push_back(file);
  std::error_code error;
  return std::filesystem::is_regular_file(file, error);
}

std::optional<MousePlace> HeadlessDialogs::PollMouse(UserArea& area) {
  DrawWaiting();
  while (!error_ && held_ == area.Id()) {
    if (next_ == events_.size()) {
      FailAtEnd("the list ends while the mouse button is down");
      break;
    }
    const DialogEvent& event = events_[next_];
    if (OnlyLooks(event)) {
      ++next_;
      Play(area.Owner(), event);
      continue;
    }
    const auto* mouse = std::get_if<MouseEvent>(&event.what);
    const bool moves = mouse != nullptr && mouse->action == MouseAction::Move;
    const bool releases = mouse != nullptr && mouse->action == MouseAction::Up;
    if (!(moves || releases) || mouse->area != area.Id()) {
      Fail(event, fmt::format("the mouse button is down in area {}: expected a move or up there",
                              area.Id()));
      break;
    }
    // A release at another place is a move there first.
    const bool isElsewhere =
        mouse->place && (mouse->place->x != mouse_.x || mouse->place->y != mouse_.y);
    if (mouse->place) mouse_ = *mouse->place;
    if (moves || isElsewhere) {
      if (moves) ++next_;
      return mouse_;
    }
    ++next_;
    held_.reset();
  }
  return std::nullopt;
}

void HeadlessDialogs::NoteShown(Dialog& dialog) {
  for (const Gadget& gadget : dialog.Gadgets()) {
    shown_[{&dialog, gadget.id}] = {WriteJson(ShownValue(gadget), -1), gadget.enabled};
  }
}

void HeadlessDialogs::GadgetChanged(Dialog& dialog, const Gadget& gadget) {
  const auto known = shown_.find({&dialog, gadget.id});
  if (known == shown_.end()) return;  // before the dialog is open
  Json value = ShownValue(gadget);
  Shown now = {WriteJson(value, -1), gadget.enabled};
  if (gadget.kind != ElementKind::Link && known->second == now) return;
  known->second = std::move(now);
  const std::string event = next_ == 0 ? std::string() : events_[next_ - 1].pointer;
  const std::int32_t id = dialog.Layout()->id;
  changes_.push_back({event, id, gadget.id, std::move(value), gadget.enabled});
}

void HeadlessDialogs::Finish() {
  if (error_) return;
  if (waitingColour_ != nullptr) Fail(*waitingColour_, "no colour was asked for");
  if (next_ < events_.size()) {
    Fail(events_[next_], wasOpened_ ? "the dialog is closed already" : "no dialog was opened");
  }
}

void HeadlessDialogs::Fail(const DialogEvent& event, std::string message,
                           const std::string& below) {
  if (!error_) error_ = JsonError{std::move(message), event.offset, event.pointer + below};
}

void HeadlessDialogs::FailAtEnd(std::string message) {
  if (!error_) error_ = JsonError{std::move(message)};
}

Gadget* HeadlessDialogs::FindGadget(Dialog& dialog, const DialogEvent& event, std::int32_t id) {
  Gadget* gadget = dialog.Find(id);
  if (gadget != nullptr && gadget->id == id) return gadget;
  Fail(event, fmt::format("the dialog \"{}\" has no gadget {}", dialog.Title(), id));
  return nullptr;
}

UserArea* HeadlessDialogs::FindArea(Dialog& dialog, const DialogEvent& event, std::int32_t id) {
  UserArea* area = dialog.Area(id);
  if (area == nullptr) {
    Fail(event, fmt::format("the dialog \"{}\" has no user area {}", dialog.Title(), id));
  }
  return area;
}

}  // namespace sorvanix::host
