// A file that appears under its name whole or not at all: written beside it under another name,
// then renamed.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

namespace sorvanix::host {

class TemporaryFile {
 public:
  /// Makes an empty file in the folder of `target`, which must be there. The error is one line that
  /// names the target.
  static tl::expected<TemporaryFile, std::string> Create(const std::filesystem::path& target);

  TemporaryFile(TemporaryFile&& other) noexcept;
  TemporaryFile& operator=(TemporaryFile&&) = delete;
  /// Removes the file unless it was committed.
  ~TemporaryFile();

  /// What to write to.
  const std::filesystem::path& Path() const { return path_; }

  /// Gives the file its name, in place of one that is there. The error is one line.
  tl::expected<void, std::string> Commit();

 private:
  TemporaryFile(std::filesystem::path path, std::filesystem::path target);

  std::filesystem::path path_;  // empty after a move or a commit
  std::filesystem::path target_;
};

}  // namespace sorvanix::host
