#include "apps/sorvanix/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <CLI/App.hpp>
#include <cstdint>
#include <cstdio>

#include "apps/sorvanix/report.h"
#include "host/services/json.h"

namespace sorvanix::cli {

void AddProgressOption(CLI::App& app, std::string& kind) {
  app.add_option("--progress", kind, "How progress is shown; auto is a bar on a terminal")
      ->check(CLI::IsMember({"auto", "bar", "json", "none"}))
      ->capture_default_str();
}

Progress::Progress(std::string_view kind) {
  if (kind == "bar" || (kind == "auto" && ::isatty(STDERR_FILENO) != 0)) kind_ = Kind::Bar;
  if (kind == "json") kind_ = Kind::JsonLines;
}

void Progress::Begin(std::string file) {
  End();
  file_ = std::move(file);
}

void Progress::Update(int done, int total) {
  const int percent = static_cast<int>(std::int64_t{done} * 100 / total);
  if (kind_ == Kind::None || percent == shownPercent_) return;
  shownPercent_ = percent;
  if (kind_ == Kind::JsonLines) {
    Tell(fmt::format("{{\"file\":{},\"done\":{},\"total\":{}}}\n",
                     host::WriteJson(host::Json(file_), -1), done, total));
    return;
  }
  constexpr int kWidth = 40;
  Tell(fmt::format("\r[{:<{}}] {:3}% {}", std::string(percent * kWidth / 100, '#'), kWidth, percent,
                   file_));
  std::fflush(stderr);
}

void Progress::End() {
  constexpr const char* kClearLine = "\r\033[K";
  if (kind_ == Kind::Bar && shownPercent_ >= 0) Tell(kClearLine);
  shownPercent_ = -1;
}

}  // namespace sorvanix::cli
