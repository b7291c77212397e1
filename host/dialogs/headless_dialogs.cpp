#include "host/dialogs/headless_dialogs.h"

#include <fmt/format.h>

#include <system_error>
#include <utility>

#include "host/dialogs/gadget_spelling.h"

namespace sorvanix::host {

namespace {

// What can be looked at while the mouse is held.
bool OnlyLooks(const DialogEvent& event) {
  return std::holds_alternative<WaitEvent>(event.what) ||
         std::holds_alternative<TickEvent>(event.what) ||
         std::holds_alternative<SaveEvent>(event.what) ||
         std::holds_alternative<ExpectEvent>(event.what);
}

}  // namespace

HeadlessDialogs::HeadlessDialogs(std::vector<DialogEvent> events, const ShaderCatalogue& catalogue,
                                 MaterialPlaces places)
    : events_(std::move(events)), catalogue_(catalogue), places_(std::move(places)) {}

void HeadlessDialogs::RunModal(Dialog& dialog, std::int32_t, std::int32_t) {
  wasOpened_ = true;
  NoteShown(dialog);
  DrawWaiting();
  while (!dialog.IsClosed()) {
    if (cancelled_ != nullptr && *cancelled_) FailAtEnd("cancelled");
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
