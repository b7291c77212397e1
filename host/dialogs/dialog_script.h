// What a user would do in a dialog, as a JSON list of events; docs/editing.md tells them all.
//
//     [ { "set": 19006, "value": 0.5 }, { "key": "R", "qualifier": 2 }, { "wait": "preview" },
//       { "save": "preview.png", "area": 19021 }, { "expect": 19006, "value": 1 }, "ok" ]
#pragma once

#include <sorvanix/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

#include "host/dialogs/dialog_service.h"
#include "host/services/json.h"

namespace sorvanix::host {

/// The user gives a gadget this value, as he sees it.
struct SetEvent {
  std::int32_t gadget = 0;
  Json value;
};
struct KeyEvent {
  std::int32_t code = 0;
  std::int32_t qualifier = 0;
};
enum class MouseAction { Down, Move, Up, Double, Wheel };
struct MouseEvent {
  MouseAction action = MouseAction::Down;
  std::int32_t area = 0;
  std::optional<MousePlace> place;  ///< of a release it may be absent: where the mouse is
  std::int32_t delta = 0;           ///< of the wheel
};
/// What the user answers to a colour chooser; nothing when he cancels it.
struct ColourEvent {
  std::optional<Vector> colour;
};
/// The time of an area's timer passes so many times.
struct TickEvent {
  std::int32_t area = 0;
  std::int32_t count = 1;
};
struct WaitEvent {};
struct SaveEvent {
  std::string file;
  std::int32_t area = 0;
};
struct ExpectEvent {
  std::int32_t gadget = 0;
  std::optional<Json> value;
  std::optional<bool> enabled;
};
struct CloseEvent {
  bool confirmed = false;
};

struct DialogEvent {
  std::variant<SetEvent, KeyEvent, MouseEvent, ColourEvent, TickEvent, WaitEvent, SaveEvent,
               ExpectEvent, CloseEvent>
      what;
  std::string pointer;     ///< to the event in the list
  std::size_t offset = 0;  ///< of the event in the text
};

/// All events of a list, or what is wrong with the first wrong one. Whether the gadgets are there
/// shows when the dialog is open.
tl::expected<std::vector<DialogEvent>, JsonError> ReadDialogEvents(const Json& list);

}  // namespace sorvanix::host
