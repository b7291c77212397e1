// The files that a job reads, so that what it writes can be held against them.
#pragma once

#include <filesystem>
#include <set>

namespace sorvanix::host {

/// While it lives, notes every material, scene, mesh and bitmap that the host opens on its thread,
/// with all that those refer to, whether the reading succeeds or not. Of nested logs the innermost
/// one notes.
class InputLog {
 public:
  InputLog() noexcept;
  ~InputLog();
  InputLog(const InputLog&) = delete;
  InputLog& operator=(const InputLog&) = delete;

  /// Whether a file that is there is one of the noted ones, whatever the two names look like.
  bool Holds(const std::filesystem::path& file) const;

  /// For readers: notes a file in the current log, if there is one.
  static void Note(const std::filesystem::path& file);

 private:
  InputLog* const outer_;
  std::set<std::filesystem::path> files_;
};

}  // namespace sorvanix::host
