// Names of output files from a template with tokens.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sorvanix::cli {

/// What the tokens stand for.
struct NameParts {
  std::optional<std::string> material = {};  // <material>
  std::optional<std::string> channel = {};   // <channel>
  std::optional<std::string> scene = {};     // <scene>
  std::optional<int> frame = {};  // <frame>, four digits or more, and %d, %4d, %04d and the like
  std::optional<int> udim = {};   // <UDIM>
};

/// The template with every token replaced; tokens of a part that is not there stay as they are.
std::string FillName(std::string_view nameTemplate, const NameParts& parts);

/// Whether names differ from frame to frame, or from tile to tile.
bool HasFrameToken(std::string_view nameTemplate);
bool HasUdimToken(std::string_view nameTemplate);

}  // namespace sorvanix::cli
