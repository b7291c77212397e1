// Fuzzes the reader of binary documents. What it takes is written again, the same each time.
#include "fuzz/shader_host.h"
#include "host/scene/binary_document.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstring>

namespace sorvanix::fuzz {

namespace {

constexpr std::size_t kHeaderSize = 32, kSectionHeaderSize = 24;

void PutNumber(std::string& bytes, std::size_t at, std::uint64_t value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

// Puts lengths and checksums right, which no fuzzer would guess: the content is what is fuzzed. The
// first byte says how much of it is names.
std::string Seal(std::string_view content) {
  if (content.empty()) return {};
  const std::size_t names =
      std::min<std::size_t>(static_cast<unsigned char>(content.front()), content.size() - 1);
  content.remove_prefix(1);
  std::string bytes = host::WriteBinaryDocument(host::Json()).substr(0, kHeaderSize);
  PutNumber(bytes, 16, 2 * kSectionHeaderSize + content.size());
  PutNumber(bytes, 24, XXH64(bytes.data(), 24, 0));
  const auto add = [&](const char* kind, std::string_view section) {
    const std::size_t start = bytes.size();
    bytes.append(kind).append(kSectionHeaderSize - 4, '\0');
    PutNumber(bytes, start + 8, section.size());
    PutNumber(bytes, start + 16, XXH64(section.data(), section.size(), 0));
    bytes += section;
  };
  add("NAME", content.substr(0, names));
  add("TREE", content.substr(names));
  return bytes;
}

void ReadAndWrite(std::string_view bytes) {
  const auto read = host::ReadBinaryDocument(bytes);
  if (!read) return;
  const std::string text = host::WriteJson(*read);
  const auto parsed = host::ParseJson(text);
  SORVANIX_EXPECT(parsed.has_value());
  const std::string written = host::WriteBinaryDocument(*parsed);
  const auto again = host::ReadBinaryDocument(written);
  SORVANIX_EXPECT(again.has_value());
  SORVANIX_EXPECT(host::WriteJson(*again) == text);
  SORVANIX_EXPECT(host::WriteBinaryDocument(*again) == written);
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  sorvanix::fuzz::ReadAndWrite(bytes);
  sorvanix::fuzz::ReadAndWrite(sorvanix::fuzz::Seal(bytes));
  return 0;
}
