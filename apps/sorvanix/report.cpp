#include "apps/sorvanix/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace sorvanix::cli {

namespace {

// One line whatever a file name or a library's message holds.
std::string OneLine(std::string_view message) {
  std::string line(message);
  while (!line.empty() && line.back() == '\n') line.pop_back();
  std::replace(line.begin(), line.end(), '\n', ' ');
  return line;
}

}  // namespace

void Complain(std::string_view message) { fmt::print(stderr, "sorvanix: {}\n", OneLine(message)); }

void Warn(std::string_view message) {
  fmt::print(stderr, "sorvanix: warning: {}\n", OneLine(message));
}

void Print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace sorvanix::cli
