// The part of binary documents that reads them.
#include "host/scene/binary_document.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "host/scene/binary_form.h"
#include "host/services/json_numbers.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace sorvanix::host {

namespace {

using namespace binary;

// RFC 3629: no surrogates, no longer form than needed, nothing above U+10FFFF.
bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = [&](std::size_t at) -> unsigned {
      return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
    };
    const unsigned first = byte(i), second = byte(i + 1);
    std::size_t length = 1;
    if (first >= 0xC2 && first <= 0xDF) length = 2;
    if (first >= 0xE0 && first <= 0xEF) length = 3;
    if (first >= 0xF0 && first <= 0xF4) length = 4;
    if (length == 1 && first >= 0x80) return false;
    for (std::size_t j = 1; j < length; ++j) {
      if ((byte(i + j) & 0xC0) != 0x80) return false;
    }
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
        (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F)) {
      return false;
    }
    i += length;
  }
  return true;
}

// After the first thing that is wrong every read answers zeros, and `error` tells it.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

  std::string_view Bytes(std::uint64_t size) {
    if (size > rest_.size()) Fail("it is cut off");
    if (!error.empty()) return {};
    const std::string_view bytes = rest_.substr(0, static_cast<std::size_t>(size));
    rest_.remove_prefix(bytes.size());
    return bytes;
  }
  template <class Unsigned>
  Unsigned Number() {
    Unsigned value = 0;
    const std::string_view bytes = Bytes(sizeof value);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      value |= static_cast<Unsigned>(Unsigned{static_cast<unsigned char>(bytes[i])} << (8 * i));
    }
    return value;
  }
  std::uint64_t Varint() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
      const auto byte = Number<std::uint8_t>();
      value |= std::uint64_t{byte & 0x7Fu} << shift;
      if ((byte & 0x80) == 0) return value;
    }
    Fail("a number is too long");
    return 0;
  }
  // Of things that take at least one byte each: so a count never asks for more memory than the file
  // is long, times the size of such a thing.
  std::size_t Count() {
    const std::uint64_t count = Varint();
    if (count > rest_.size()) Fail("it is cut off");
    return error.empty() ? static_cast<std::size_t>(count) : 0;
  }
  std::string Text() {
    const std::string_view text = Bytes(Varint());
    if (!IsUtf8(text)) Fail("a text is not UTF-8");
    return std::string(text);
  }
  void Fail(std::string reason) {
    if (error.empty()) error = std::move(reason);
    rest_ = {};
  }
  std::size_t Left() const { return rest_.size(); }

  std::string error;

 private:
  std::string_view rest_;
};

std::vector<std::string> ReadNames(ByteReader& reader) {
  std::vector<std::string> names(reader.Count());
  for (std::string& name : names) name = reader.Text();
  std::vector<std::string_view> sorted(names.begin(), names.end());
  std::sort(sorted.begin(), sorted.end());
  if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) {
    reader.Fail("a name is listed twice");
  }
  return names;
}

class TreeReader {
 public:
  TreeReader(ByteReader& reader, const std::vector<std::string>& names)
      : reader_(reader), names_(names) {}

  Json Read(std::size_t depth = 0) {
    switch (reader_.Number<std::uint8_t>()) {
      case Null:
        return {};
      case False:
        return Json(false);
      case True:
        return Json(true);
      case Integer: {
        const std::uint64_t bits = reader_.Varint();
        return Json(static_cast<std::int64_t>(bits >> 1 ^ (~(bits & 1) + 1)));
      }
      case Float:
        return Finite(ShortestOf(std::bit_cast<float>(reader_.Number<std::uint32_t>())));
      case Double:
        return Finite(std::bit_cast<double>(reader_.Number<std::uint64_t>()));
      case String:
        return Json(reader_.Text());
      case Array:
        return Enter(depth) ? ReadArray(depth + 1) : Json();
      case Object:
        return Enter(depth) ? ReadObject(depth + 1) : Json();
      default:
        reader_.Fail("there is a value of an unknown kind");
        return {};
    }
  }

 private:
  bool Enter(std::size_t depth) {
    if (depth == kDeepest) reader_.Fail("it is nested more than 256 levels deep");
    return depth < kDeepest;
  }

  static double ShortestOf(float number) {
    return std::isfinite(number) ? ShortestDouble(number) : double{number};
  }
  Json Finite(double number) {
    if (!std::isfinite(number)) reader_.Fail("a number is not finite");
    return Json(number);
  }

  Json ReadArray(std::size_t depth) {
    Json::Array elements;
    for (std::size_t left = reader_.Count(); left > 0 && reader_.error.empty(); --left) {
      elements.push_back(Read(depth));
    }
    return Json(std::move(elements));
  }

  Json ReadObject(std::size_t depth) {
    Json::Object members;
    std::vector<std::uint64_t> numbers;
    for (std::size_t left = reader_.Count(); left > 0 && reader_.error.empty(); --left) {
      const std::uint64_t number = reader_.Varint();
      if (number >= names_.size()) {
        reader_.Fail("a name is not listed");
        break;
      }
      const std::string& name = names_[static_cast<std::size_t>(number)];
      nameBytes_ += name.size();
      if (nameBytes_ > kMostNameBytes) {
        reader_.Fail("its names are too long");
        break;
      }
      numbers.push_back(number);
      members.push_back({name, Read(depth)});
    }
    std::sort(numbers.begin(), numbers.end());
    if (std::adjacent_find(numbers.begin(), numbers.end()) != numbers.end()) {
      reader_.Fail("a name stands twice in one object");
    }
    return Json(std::move(members));
  }

  ByteReader& reader_;
  const std::vector<std::string>& names_;
  std::size_t nameBytes_ = 0;  // of all members so far, each of which has a copy
};

// The content of the section that must come next, after its checksum was compared.
std::string_view ReadSection(ByteReader& file, std::string_view kind) {
  if (file.Bytes(kind.size()) != kind) file.Fail("a section is missing");
  if (file.Number<std::uint32_t>() != 0) file.Fail("a section's header is damaged");
  const auto size = file.Number<std::uint64_t>();
  const auto checksum = file.Number<std::uint64_t>();
  const std::string_view content = file.Bytes(size);
  if (XXH64(content.data(), content.size(), 0) != checksum) file.Fail("it is damaged");
  return content;
}

void ReadHeader(ByteReader& file, std::string_view bytes) {
  file.Bytes(kMagic.size());
  const auto version = file.Number<std::uint32_t>();
  const auto sections = file.Number<std::uint32_t>();
  const auto size = file.Number<std::uint64_t>();
  const auto checksum = file.Number<std::uint64_t>();
  constexpr std::size_t kChecked = kHeaderSize - sizeof checksum;
  if (file.error.empty() && XXH64(bytes.data(), kChecked, 0) != checksum) {
    file.Fail("its header is damaged");
  }
  if (version != kVersion) {
    file.Fail("it is of a binary form that this program does not know: " + std::to_string(version));
  }
  if (sections != 2) file.Fail("it has not the sections that it should have");
  if (size > file.Left()) file.Fail("it is cut off");
  if (size < file.Left()) file.Fail("it goes on behind its end");
}

}  // namespace

bool IsBinaryDocument(std::string_view bytes) noexcept { return bytes.starts_with(kMagic); }

tl::expected<Json, std::string> ReadBinaryDocument(std::string_view bytes) {
  if (!IsBinaryDocument(bytes)) return tl::unexpected<std::string>("it is no binary document");
  ByteReader file(bytes);
  ReadHeader(file, bytes);
  ByteReader nameBytes(ReadSection(file, kNamesSection));
  ByteReader treeBytes(ReadSection(file, kTreeSection));
  if (!file.error.empty()) return tl::unexpected(file.error);

  const std::vector<std::string> names = ReadNames(nameBytes);
  if (!nameBytes.error.empty()) return tl::unexpected(nameBytes.error);
  Json json = TreeReader(treeBytes, names).Read();
  if (nameBytes.Left() + treeBytes.Left() > 0) treeBytes.Fail("a section holds too much");
  if (!treeBytes.error.empty()) return tl::unexpected(treeBytes.error);
  return json;
}

}  // namespace sorvanix::host
