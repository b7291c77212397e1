#include "host/services/content_hash.h"

#include <fmt/format.h>

#include <fstream>
#include <vector>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace sorvanix::host {

// Each piece begins with the hash of those before it.
void ContentHash::Add(const void* bytes, std::size_t size) noexcept {
  hash_ = XXH64(bytes, size, hash_);
}

std::string ContentHash::Text() const { return fmt::format("{:016x}", hash_); }

std::string HashOf(std::string_view text) {
  ContentHash hash;
  hash.Add(text);
  return hash.Text();
}

std::string HashOfFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return {};
  constexpr std::size_t kPiece = std::size_t{1} << 20;
  std::vector<char> piece(kPiece);
  ContentHash hash;
  while (stream.read(piece.data(), kPiece) || stream.gcount() > 0) {
    hash.Add(piece.data(), static_cast<std::size_t>(stream.gcount()));
  }
  return stream.bad() ? std::string() : hash.Text();
}

}  // namespace sorvanix::host
