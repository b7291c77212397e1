// A file that appears under its name whole or not at all: written without a name, where the file
// system has such files, else beside it under another name; then renamed.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

namespace sorvanix::host {

class TemporaryFile {
 public:
  /// Makes an empty file in the folder of `target`, which must be there; a target that is a link
  /// stays one, and what it leads to is meant. Also the way to learn before the work whether it can
  /// be kept. The error is one line that names the target.
  static tl::expected<TemporaryFile, std::string> Create(const std::filesystem::path& target);

  TemporaryFile(TemporaryFile&& other) noexcept;
  TemporaryFile& operator=(TemporaryFile&&) = delete;
  /// Removes the file unless it was committed. A file without a name goes even when the program is
  /// killed.
  ~TemporaryFile();

  /// What to write to, by a name that opens the file. It must not be replaced by another one.
  const std::filesystem::path& Path() const { return path_; }

  /// Gives the file its name, in place of one that is there, after its content is safe on the disk.
  /// The error is one line.
  tl::expected<void, std::string> Commit();

 private:
  struct Target {
    std::filesystem::path asTold;  // in messages
    std::filesystem::path file;    // behind links
  };

  TemporaryFile(int descriptor, Target target);
  static std::string Failed(const Target& target, int error);

  int descriptor_;              // open as long as the object has the file; -1 after a move
  std::filesystem::path path_;  // how the descriptor or the name is written to
  std::filesystem::path name_;  // empty for a file without a name
  Target target_;
};

}  // namespace sorvanix::host
