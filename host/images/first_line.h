// One line of what an image library has to say.
#pragma once

#include <algorithm>
#include <string>

namespace sorvanix::host {

/// The first line only: a report has one line for one error.
inline std::string FirstLine(std::string text) {
  text.resize(std::min(text.find('\n'), text.size()));
  return text.empty() ? "not a readable image" : text;
}

}  // namespace sorvanix::host
