// Dialog layouts: which gadgets a dialog has and how they stand, read from
// "Resources/dialogs/<id>.json" beside a module.
//
//     { "id": 19000, "title": "2D Noise", "layout": { "kind": "column", "children": [
//         { "kind": "area", "id": 19022, "width": 470, "height": 40 },
//         { "kind": "real", "id": 19006, "label": "Scale" } ] } }
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace sorvanix::host {

enum class ElementKind {
  // What arranges others.
  Column,
  Row,
  Group,
  Grid,
  Tabs,
  // What stands for itself.
  Label,
  Integer,
  Real,
  Slider,
  Check,
  Choice,
  Colour,
  Text,
  Button,
  Filename,
  Link,
  Area
};

/// As layouts spell it.
std::string_view NameOf(ElementKind kind) noexcept;

struct ChoiceEntry {
  std::int32_t value = 0;
  std::string label;
};

/// A link takes so many ids in a row, from its own on.
inline constexpr std::int32_t kLinkIds = 9;
/// Neither side of a user area is longer.
inline constexpr std::int32_t kLargestArea = 4096;

/// One element, with all that is inside it. An id of 0 is none.
struct LayoutElement {
  ElementKind kind = ElementKind::Column;
  std::int32_t id = 0;
  std::string label;  ///< of a label its text, of a group its heading
  std::string help;
  std::string unit;                     ///< of a number: "percent", "degrees", ..., or empty
  std::int32_t columns = 0;             ///< of a grid
  std::int32_t width = 0, height = 0;   ///< of an area, in pixels: the smallest it may be
  std::vector<ChoiceEntry> entries;     ///< of a choice; of tabs the ids and labels of the pages
  std::vector<LayoutElement> children;  ///< of tabs one for each page
};

struct DialogLayout {
  std::int32_t id = 0;
  std::string title;
  bool ownButtons = false;  ///< it needs no buttons to confirm and to cancel it
  LayoutElement root;
};

/// Reads a layout. The error is one line with the file's name as given, line and column, JSON
/// pointer and what was expected: an unknown name or kind, a wrong type, an id that is not above 0
/// or taken already.
tl::expected<DialogLayout, std::string> ReadDialogLayout(std::string_view text,
                                                         std::string_view file);

/// The same from a file.
tl::expected<DialogLayout, std::string> LoadDialogLayout(const std::filesystem::path& file);

}  // namespace sorvanix::host
