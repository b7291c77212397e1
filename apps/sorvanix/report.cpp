#include "apps/sorvanix/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace sorvanix::cli {

namespace {

// One line, without commands for the terminal, whatever a file name or a library's message holds.
std::string OneLine(std::string_view message) {
  std::string line(message);
  while (!line.empty() && line.back() == '\n') line.pop_back();
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
  std::replace_if(line.begin(), line.end(), isControl, ' ');
  return line;
}

}  // namespace

void Tell(std::string_view text) noexcept { std::fwrite(text.data(), 1, text.size(), stderr); }

void Complain(std::string_view message) { Tell(fmt::format("sorvanix: {}\n", OneLine(message))); }

void Warn(std::string_view message) {
  Tell(fmt::format("sorvanix: warning: {}\n", OneLine(message)));
}

void Print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace sorvanix::cli
