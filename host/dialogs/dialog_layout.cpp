#include "host/dialogs/dialog_layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <set>

#include "host/channels/material_value.h"
#include "host/dialogs/json_walk.h"
#include "host/services/filenames.h"
#include "host/services/text_file.h"

namespace sorvanix::host {

namespace {

// In the order of ElementKind.
constexpr std::string_view kKindNames[] = {
    "column", "row",    "group",  "grid", "tabs",   "label",    "integer", "real", "slider",
    "check",  "choice", "colour", "text", "button", "filename", "link",    "area"};
static_assert(std::size(kKindNames) == static_cast<std::size_t>(ElementKind::Area) + 1);

// It recurses as deep as the text nests, which the JSON parser limits.
class LayoutReader {
 public:
  tl::expected<DialogLayout, JsonError> Read(const Json& json) {
    const JsonPlace place = {&json, {}};
    DialogLayout layout;
    if (walk_.HasOnly(place, {"id", "title", "ownButtons", "layout"})) {
      layout.id = walk_.IntegerUnder(place, "id", 1);
      layout.title = walk_.TextUnder(place, "title");
      if (const auto own = walk_.Find(place, "ownButtons")) layout.ownButtons = walk_.Truth(*own);
      if (const auto root = walk_.Require(place, "layout")) layout.root = ReadElement(*root);
    }
    if (walk_.Failed()) return tl::unexpected(walk_.Error());
    return layout;
  }

 private:
  LayoutElement ReadElement(const JsonPlace& place) {
    LayoutElement element;
    if (!ReadKind(place, element.kind)) return element;
    switch (element.kind) {
      case ElementKind::Column:
      case ElementKind::Row:
        if (walk_.HasOnly(place, {"kind", "children"})) ReadChildren(place, element);
        break;
      case ElementKind::Group:
        if (!walk_.HasOnly(place, {"kind", "label", "children"})) break;
        element.label = walk_.TextUnder(place, "label");
        ReadChildren(place, element);
        break;
      case ElementKind::Grid:
        if (!walk_.HasOnly(place, {"kind", "columns", "children"})) break;
        element.columns = walk_.IntegerUnder(place, "columns", 1, 100);
        ReadChildren(place, element);
        break;
      case ElementKind::Tabs:
        ReadTabs(place, element);
        break;
      case ElementKind::Label:
        if (!walk_.HasOnly(place, {"kind", "id", "text"})) break;
        element.label = walk_.TextUnder(place, "text");
        if (walk_.Find(place, "id")) element.id = TakeId(place, 1);
        break;
      case ElementKind::Area:
        if (!walk_.HasOnly(place, {"kind", "id", "width", "height"})) break;
        element.id = TakeId(place, 1);
        element.width = walk_.IntegerUnder(place, "width", 0, kLargestArea);
        element.height = walk_.IntegerUnder(place, "height", 0, kLargestArea);
        break;
      default:
        ReadGadget(place, element);
    }
    return element;
  }

  bool ReadKind(const JsonPlace& place, ElementKind& kind) {
    const auto given = walk_.Require(place, "kind");
    if (!given) return false;
    const std::string name = walk_.Text(*given);
    if (walk_.Failed()) return false;
    const auto found = std::find(std::begin(kKindNames), std::end(kKindNames), name);
    if (found == std::end(kKindNames)) {
      return walk_.Fail(*given,
                        UnknownName("kind", name, {std::begin(kKindNames), std::end(kKindNames)}));
    }
    kind = static_cast<ElementKind>(found - std::begin(kKindNames));
    return true;
  }

  void ReadChildren(const JsonPlace& place, LayoutElement& element) {
    ForEach(place, "children",
            [&](const JsonPlace& child) { element.children.push_back(ReadElement(child)); });
  }

  void ReadTabs(const JsonPlace& place, LayoutElement& element) {
    if (!walk_.HasOnly(place, {"kind", "id", "pages"})) return;
    element.id = TakeId(place, 1);
    ForEach(place, "pages", [&](const JsonPlace& page) {
      if (!walk_.HasOnly(page, {"id", "label", "layout"})) return;
      const std::int32_t id = TakeId(page, 1);
      element.entries.push_back({id, walk_.TextUnder(page, "label")});
      if (const auto layout = walk_.Require(page, "layout")) {
        element.children.push_back(ReadElement(*layout));
      }
    });
  }

  void ReadGadget(const JsonPlace& place, LayoutElement& element) {
    const bool isChoice = element.kind == ElementKind::Choice;
    if (!(isChoice ? walk_.HasOnly(place, {"kind", "id", "label", "help", "unit", "entries"})
                   : walk_.HasOnly(place, {"kind", "id", "label", "help", "unit"}))) {
      return;
    }
    element.id = TakeId(place, element.kind == ElementKind::Link ? kLinkIds : 1);
    element.label = walk_.OptionalText(place, "label");
    element.help = walk_.OptionalText(place, "help");
    element.unit = walk_.OptionalText(place, "unit");
    if (isChoice) ReadEntries(place, element);
  }

  void ReadEntries(const JsonPlace& place, LayoutElement& element) {
    std::set<std::int32_t> values;
    ForEach(place, "entries", [&](const JsonPlace& entry) {
      if (!walk_.HasOnly(entry, {"value", "label"})) return;
      const std::int32_t value = walk_.IntegerUnder(entry, "value");
      if (!values.insert(value).second) {
        walk_.Fail(entry, fmt::format("the value {} stands here twice", value));
      }
      element.entries.push_back({value, walk_.TextUnder(entry, "label")});
    });
  }

  template <class Work>
  void ForEach(const JsonPlace& place, std::string_view name, Work&& work) {
    const auto list = walk_.Require(place, name);
    const Json::Array* elements = list ? walk_.Elements(*list) : nullptr;
    if (elements == nullptr) return;
    for (std::size_t i = 0; i < elements->size() && !walk_.Failed(); ++i) {
      work(JsonWalk::Element(*list, i));
    }
  }

  // So many ids in a row; no other gadget may have one of them.
  std::int32_t TakeId(const JsonPlace& place, std::int32_t count) {
    const auto given = walk_.Require(place, "id");
    if (!given) return 0;
    const std::int32_t first = walk_.Integer(*given, 1, INT32_MAX - kLinkIds);
    for (std::int32_t id = first; id < first + count; ++id) {
      if (!ids_.insert(id).second) {
        walk_.Fail(*given, fmt::format("the id {} is taken already", id));
      }
    }
    return first;
  }

  JsonWalk walk_;
  std::set<std::int32_t> ids_;
};

}  // namespace

std::string_view NameOf(ElementKind kind) noexcept {
  return kKindNames[static_cast<std::size_t>(kind)];
}

tl::expected<DialogLayout, std::string> ReadDialogLayout(std::string_view text,
                                                         std::string_view file) {
  const auto describe = [&](const JsonError& error) {
    return DescribeJsonError(file, text, error);
  };
  return ParseJson(text)
      .and_then([](const Json& json) { return LayoutReader().Read(json); })
      .map_error(describe);
}

tl::expected<DialogLayout, std::string> LoadDialogLayout(const std::filesystem::path& file) {
  const std::string name = Utf8FromPath(file);
  const auto text = ReadTextFile(file);
  if (!text) return tl::unexpected(fmt::format("{}: it cannot be read", name));
  return ReadDialogLayout(*text, name);
}

}  // namespace sorvanix::host
