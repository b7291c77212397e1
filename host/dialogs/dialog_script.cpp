#include "host/dialogs/dialog_script.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "host/channels/material_value.h"
#include "host/dialogs/gadget_spelling.h"
#include "host/dialogs/json_walk.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

// In the order of MouseAction.
constexpr std::string_view kMouseActions[] = {"down", "move", "up", "double", "wheel"};

void ReadSet(JsonWalk& walk, const JsonPlace& place, SetEvent& event) {
  if (!walk.HasOnly(place, {"set", "value"})) return;
  event.gadget = walk.IntegerUnder(place, "set");
  if (const auto value = walk.Require(place, "value")) event.value = *value->json;
}

// A letter stands for the code of its capital.
std::int32_t ReadKeyCode(JsonWalk& walk, const JsonPlace& place) {
  const auto* letter = std::get_if<std::string>(&place.json->value);
  if (letter == nullptr) return walk.Integer(place);
  if (letter->size() == 1 && (*letter)[0] >= 'A' && (*letter)[0] <= 'Z') return (*letter)[0];
  walk.Fail(place, "expected a key's code or a capital letter");
  return 0;
}

void ReadKey(JsonWalk& walk, const JsonPlace& place, KeyEvent& event) {
  if (!walk.HasOnly(place, {"key", "qualifier"})) return;
  if (const auto code = walk.Require(place, "key")) event.code = ReadKeyCode(walk, *code);
  event.qualifier = walk.OptionalInteger(place, "qualifier", 0);
}

void ReadMouse(JsonWalk& walk, const JsonPlace& place, MouseEvent& event) {
  if (!walk.HasOnly(place, {"mouse", "area", "x", "y", "delta", "qualifier"})) return;
  const auto action = walk.Require(place, "mouse");
  const std::string name = action ? walk.Text(*action) : std::string();
  if (walk.Failed()) return;
  const auto found = std::find(std::begin(kMouseActions), std::end(kMouseActions), name);
  if (found == std::end(kMouseActions)) {
    walk.Fail(*action, UnknownName("action of the mouse", name,
                                   {std::begin(kMouseActions), std::end(kMouseActions)}));
    return;
  }
  event.action = static_cast<MouseAction>(found - std::begin(kMouseActions));
  event.area = walk.IntegerUnder(place, "area");
  const bool mayLackPlace = event.action == MouseAction::Up;
  if (!mayLackPlace || walk.Find(place, "x") || walk.Find(place, "y")) {
    event.place = MousePlace{walk.IntegerUnder(place, "x"), walk.IntegerUnder(place, "y"),
                             walk.OptionalInteger(place, "qualifier", 0)};
  }
  if (event.action == MouseAction::Wheel) event.delta = walk.IntegerUnder(place, "delta");
}

void ReadColourAnswer(JsonWalk& walk, const JsonPlace& place, ColourEvent& event) {
  if (!walk.HasOnly(place, {"colour"})) return;
  const auto given = walk.Require(place, "colour");
  if (!given || std::holds_alternative<std::nullptr_t>(given->json->value)) return;
  const auto colour = ReadColour(*given->json);
  if (!colour) {
    walk.Fail(*given, colour.error());
  } else {
    event.colour = *colour;
  }
}

void ReadTick(JsonWalk& walk, const JsonPlace& place, TickEvent& event) {
  constexpr std::int32_t kMost = 10000;
  if (!walk.HasOnly(place, {"tick", "area"})) return;
  event.count = walk.IntegerUnder(place, "tick", 1, kMost);
  event.area = walk.IntegerUnder(place, "area");
}

void ReadWait(JsonWalk& walk, const JsonPlace& place, WaitEvent&) {
  if (!walk.HasOnly(place, {"wait"})) return;
  const auto what = walk.Require(place, "wait");
  if (what && walk.Text(*what) != "preview") walk.Fail(*what, "expected \"preview\"");
}

void ReadSave(JsonWalk& walk, const JsonPlace& place, SaveEvent& event) {
  if (!walk.HasOnly(place, {"save", "area"})) return;
  event.file = walk.TextUnder(place, "save");
  event.area = walk.IntegerUnder(place, "area");
  const auto file = walk.Find(place, "save");
  if (!file || walk.Failed()) return;
  const std::string_view wrong = WrongInFilename(event.file);
  if (!wrong.empty()) walk.Fail(*file, std::string(wrong));
  if (!event.file.ends_with(".png")) walk.Fail(*file, "expected the name of a file ending in .png");
}

void ReadExpect(JsonWalk& walk, const JsonPlace& place, ExpectEvent& event) {
  if (!walk.HasOnly(place, {"expect", "value", "enabled"})) return;
  event.gadget = walk.IntegerUnder(place, "expect");
  if (const auto value = walk.Find(place, "value")) event.value = *value->json;
  if (const auto enabled = walk.Find(place, "enabled")) event.enabled = walk.Truth(*enabled);
  if (!event.value && !event.enabled) {
    walk.Fail(place, "\"value\", \"enabled\" or both are missing");
  }
}

template <class Event, void (*read)(JsonWalk&, const JsonPlace&, Event&)>
void ReadAs(JsonWalk& walk, const JsonPlace& place, DialogEvent& event) {
  read(walk, place, event.what.emplace<Event>());
}

// An object is the event whose name it has.
struct EventKind {
  std::string_view name;
  void (*read)(JsonWalk&, const JsonPlace&, DialogEvent&);
};
constexpr EventKind kEventKinds[] = {
    {"set", ReadAs<SetEvent, ReadSet>},       {"key", ReadAs<KeyEvent, ReadKey>},
    {"mouse", ReadAs<MouseEvent, ReadMouse>}, {"colour", ReadAs<ColourEvent, ReadColourAnswer>},
    {"tick", ReadAs<TickEvent, ReadTick>},    {"wait", ReadAs<WaitEvent, ReadWait>},
    {"save", ReadAs<SaveEvent, ReadSave>},    {"expect", ReadAs<ExpectEvent, ReadExpect>},
};
constexpr const char* kKnownEvents =
    "expected \"ok\", \"cancel\", or an object with \"set\", \"key\", \"mouse\", \"colour\", "
    "\"tick\", \"wait\", \"save\" or \"expect\"";

void ReadEvent(JsonWalk& walk, const JsonPlace& place, DialogEvent& event) {
  if (const auto* word = std::get_if<std::string>(&place.json->value)) {
    if (*word == "ok" || *word == "cancel") {
      event.what = CloseEvent{*word == "ok"};
    } else {
      walk.Fail(place, kKnownEvents);
    }
    return;
  }
  for (const EventKind& kind : kEventKinds) {
    if (place.json->Find(kind.name) != nullptr) return kind.read(walk, place, event);
  }
  walk.Fail(place, kKnownEvents);
}

}  // namespace

tl::expected<std::vector<DialogEvent>, JsonError> ReadDialogEvents(const Json& list) {
  JsonWalk walk;
  const JsonPlace place = {&list, {}};
  std::vector<DialogEvent> events;
  const Json::Array* elements = walk.Elements(place);
  for (std::size_t i = 0; elements != nullptr && i < elements->size() && !walk.Failed(); ++i) {
    const JsonPlace element = JsonWalk::Element(place, i);
    events.push_back({{}, element.pointer, element.json->offset});
    ReadEvent(walk, element, events.back());
  }
  if (walk.Failed()) return tl::unexpected(walk.Error());
  return events;
}

}  // namespace sorvanix::host
