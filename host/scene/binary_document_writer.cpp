// The part of binary documents that writes them.
#include "host/scene/binary_document.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "host/scene/binary_form.h"
#include "host/services/json_numbers.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace sorvanix::host {

namespace {

using namespace binary;

// Little-endian, whatever the machine.
template <class Unsigned>
void Put(std::string& bytes, Unsigned value) {
  for (std::size_t i = 0; i < sizeof value; ++i) bytes += static_cast<char>(value >> (8 * i));
}

// Seven bits a byte, the lowest first; all but the last byte have the highest bit set.
void PutCount(std::string& bytes, std::uint64_t count) {
  for (; count >= 0x80; count >>= 7) bytes += static_cast<char>(count | 0x80);
  bytes += static_cast<char>(count);
}

void PutText(std::string& bytes, std::string_view text) {
  PutCount(bytes, text.size());
  bytes += text;
}

// The float that the number was the shortest spelling of, if it was one.
std::optional<float> AsFloat(double number) {
  if (!(std::abs(number) <= std::numeric_limits<float>::max())) return std::nullopt;
  const auto narrow = static_cast<float>(number);
  const bool same =
      std::bit_cast<std::uint64_t>(ShortestDouble(narrow)) == std::bit_cast<std::uint64_t>(number);
  return same ? std::optional(narrow) : std::nullopt;
}

class TreeWriter {
 public:
  void Write(std::nullptr_t) { tree += Null; }
  void Write(bool truth) { tree += truth ? True : False; }
  void Write(std::int64_t integer) {
    tree += Integer;
    // Small numbers of both signs become small counts.
    const auto bits = static_cast<std::uint64_t>(integer);
    PutCount(tree, bits << 1 ^ (integer < 0 ? ~std::uint64_t{0} : 0));
  }
  void Write(double number) {
    if (const auto narrow = AsFloat(number)) {
      tree += Float;
      Put(tree, std::bit_cast<std::uint32_t>(*narrow));
    } else {
      tree += Double;
      Put(tree, std::bit_cast<std::uint64_t>(number));
    }
  }
  void Write(const std::string& text) {
    tree += String;
    PutText(tree, text);
  }
  void Write(const Json::Array& elements) {
    tree += Array;
    PutCount(tree, elements.size());
    for (const Json& element : elements) Write(element);
  }
  void Write(const Json::Object& members) {
    tree += Object;
    PutCount(tree, members.size());
    for (const JsonMember& member : members) {
      PutCount(tree, NumberOf(member.name));
      Write(member.value);
    }
  }
  void Write(const Json& json) {
    std::visit([this](const auto& value) { Write(value); }, json.value);
  }

  std::string Names() const {
    std::string bytes;
    PutCount(bytes, names_.size());
    for (const std::string_view name : names_) PutText(bytes, name);
    return bytes;
  }

  std::string tree;

 private:
  std::size_t NumberOf(std::string_view name) {
    const auto [found, isNew] = numbers_.try_emplace(name, names_.size());
    if (isNew) names_.push_back(name);
    return found->second;
  }

  std::map<std::string_view, std::size_t> numbers_;
  std::vector<std::string_view> names_;  // in the order of their first use
};

void PutSection(std::string& bytes, std::string_view kind, const std::string& content) {
  bytes += kind;
  Put(bytes, std::uint32_t{0});
  Put(bytes, std::uint64_t{content.size()});
  Put(bytes, std::uint64_t{XXH64(content.data(), content.size(), 0)});
  bytes += content;
}

}  // namespace

std::string WriteBinaryDocument(const Json& json) {
  TreeWriter writer;
  writer.Write(json);
  const std::string names = writer.Names();
  std::string bytes(kMagic);
  Put(bytes, kVersion);
  Put(bytes, std::uint32_t{2});
  Put(bytes, std::uint64_t{2 * kSectionHeaderSize + names.size() + writer.tree.size()});
  Put(bytes, std::uint64_t{XXH64(bytes.data(), bytes.size(), 0)});
  PutSection(bytes, kNamesSection, names);
  PutSection(bytes, kTreeSection, writer.tree);
  return bytes;
}

}  // namespace sorvanix::host
