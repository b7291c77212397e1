// Progress of long work on the error stream: a bar for people, lines of JSON for programs.
#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace sorvanix::cli {

/// Adds --progress; `kind` gets "auto", "bar", "json" or "none".
void AddProgressOption(CLI::App& app, std::string& kind);

class Progress {
 public:
  /// "auto" is a bar where the error stream is a terminal, else nothing.
  explicit Progress(std::string_view kind);
  ~Progress() { End(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Work on another file begins.
  void Begin(std::string file);
  void Update(int done, int total);
  /// Takes the bar off the screen.
  void End();

 private:
  enum class Kind { None, Bar, JsonLines };

  Kind kind_ = Kind::None;
  std::string file_;
  int shownPercent_ = -1;
};

}  // namespace sorvanix::cli
