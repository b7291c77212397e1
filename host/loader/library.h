// A shared library of the operating system, opened by path: the one file that knows how.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

namespace sorvanix::host {

class Library {
 public:
  /// The error is what the system says, in one line.
  static tl::expected<Library, std::string> Open(const std::filesystem::path& path);

  Library(Library&& other) noexcept;
  Library& operator=(Library&& other) noexcept;
  ~Library();

  /// The address of an exported name, or null.
  void* Symbol(const char* name) const noexcept;

 private:
  explicit Library(void* handle) noexcept : handle_(handle) {}

  void* handle_;
};

}  // namespace sorvanix::host
