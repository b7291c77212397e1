// Names of output files from a template with tokens.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sorvanix::cli {

/// What the tokens stand for.
struct NameParts {
  std::string material = {};      // <material>
  std::string channel = {};       // <channel>
  std::optional<int> frame = {};  // <frame>, four digits or more, and %d, %4d, %04d and the like
};

/// The template with every token replaced; frame tokens stay as they are when there is no frame.
std::string FillName(std::string_view nameTemplate, const NameParts& parts);

/// Whether names differ from frame to frame.
bool HasFrameToken(std::string_view nameTemplate);

}  // namespace sorvanix::cli
