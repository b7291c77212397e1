// Hashes of contents, which tell whether something is still what it was: Y. Collet's XXH64. They
// are no protection against anyone who wants two contents to look alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace sorvanix::host {

class ContentHash {
 public:
  void Add(const void* bytes, std::size_t size) noexcept;
  void Add(std::string_view text) noexcept { Add(text.data(), text.size()); }

  /// 16 hexadecimal digits, by all that was added and how it was cut into pieces.
  std::string Text() const;

 private:
  std::uint64_t hash_ = 0;
};

std::string HashOf(std::string_view text);

/// Of a file's bytes; empty for a file that cannot be read.
std::string HashOfFile(const std::filesystem::path& file);

}  // namespace sorvanix::host
