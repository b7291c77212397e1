#include "host/scene/ply_header.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace sorvanix::host {
namespace {

/// More would only be meant to exhaust the reader.
constexpr std::size_t kMostDeclarations = 1000;

struct TypeRow {
  PlyType type;
  std::string_view name, otherName;
  std::size_t size;
};

/// By the numbers of PlyType.
constexpr std::array<TypeRow, 8> kTypes = {{{PlyType::Int8, "char", "int8", 1},
                                            {PlyType::Uint8, "uchar", "uint8", 1},
                                            {PlyType::Int16, "short", "int16", 2},
                                            {PlyType::Uint16, "ushort", "uint16", 2},
                                            {PlyType::Int32, "int", "int32", 4},
                                            {PlyType::Uint32, "uint", "uint32", 4},
                                            {PlyType::Float32, "float", "float32", 4},
                                            {PlyType::Float64, "double", "float64", 8}}};

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  while (true) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (line.empty()) return words;
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

/// Takes the declarations one line after the other.
class HeaderReader {
 public:
  /// Why the line cannot be taken, or an empty text.
  std::string Take(const std::vector<std::string_view>& words) {
    if (words[0] == "comment" || words[0] == "obj_info") return {};
    if (++declarations_ > kMostDeclarations) return "the header is too long";
    if (words[0] == "format") return TakeFormat(words);
    if (words[0] == "element") return TakeElement(words);
    if (words[0] == "property") return TakeProperty(words);
    return fmt::format("unknown header line \"{}\"", words[0]);
  }

  PlyHeader header;
  bool hasFormat = false;

 private:
  std::string TakeFormat(const std::vector<std::string_view>& words) {
    constexpr std::array<std::string_view, 3> names = {"ascii", "binary_little_endian",
                                                       "binary_big_endian"};
    const auto found =
        words.size() > 1 ? std::find(names.begin(), names.end(), words[1]) : names.end();
    if (found == names.end()) return "unknown format";
    header.format = static_cast<PlyFormat>(found - names.begin());
    hasFormat = true;
    return {};
  }

  std::string TakeElement(const std::vector<std::string_view>& words) {
    PlyElement element;
    if (words.size() != 3) return "an element needs a name and a count";
    element.name = words[1];
    // A second list of vertices could have other properties, and its points no normals.
    const bool isKnown =
        std::any_of(header.elements.begin(), header.elements.end(),
                    [&](const PlyElement& other) { return other.name == element.name; });
    if (isKnown) return fmt::format("the element \"{}\" is declared twice", element.name);
    const std::string_view count = words[2];
    const auto [end, error] =
        std::from_chars(count.data(), count.data() + count.size(), element.count);
    if (error != std::errc() || end != count.data() + count.size()) {
      return fmt::format("\"{}\" is no count", count);
    }
    header.elements.push_back(std::move(element));
    return {};
  }

  std::string TakeProperty(const std::vector<std::string_view>& words) {
    if (header.elements.empty()) return "a property stands before the first element";
    PlyProperty property;
    const bool isList = words.size() == 5 && words[1] == "list";
    if (!isList && words.size() != 3) return "a property needs a type and a name";
    if (isList) {
      property.countType = TypeOf(words[2]);
      if (!property.countType) return fmt::format("unknown type \"{}\"", words[2]);
    }
    const auto type = TypeOf(words[words.size() - 2]);
    if (!type) return fmt::format("unknown type \"{}\"", words[words.size() - 2]);
    property.type = *type;
    property.name = words.back();
    header.elements.back().properties.push_back(std::move(property));
    return {};
  }

  static std::optional<PlyType> TypeOf(std::string_view name) {
    for (const TypeRow& row : kTypes) {
      if (name == row.name || name == row.otherName) return row.type;
    }
    return std::nullopt;
  }

  std::size_t declarations_ = 0;
};

}  // namespace

std::size_t SizeOf(PlyType type) noexcept { return kTypes[static_cast<std::size_t>(type)].size; }

std::optional<std::size_t> PlyElement::Find(
    std::initializer_list<std::string_view> names) const noexcept {
  for (std::size_t i = 0; i < properties.size(); ++i) {
    if (std::find(names.begin(), names.end(), properties[i].name) != names.end()) return i;
  }
  return std::nullopt;
}

std::size_t PlyElement::LeastSize(PlyFormat format) const noexcept {
  std::size_t size = 0;
  for (const PlyProperty& property : properties) {
    // As text: a digit and what parts it from the next one.
    size += format == PlyFormat::Ascii ? 2 : SizeOf(property.countType.value_or(property.type));
  }
  return size;
}

tl::expected<PlyHeader, std::string> ReadPlyHeader(std::string_view bytes) {
  HeaderReader reader;
  std::size_t position = 0;
  for (std::size_t line = 1;; ++line) {
    const std::size_t end = bytes.find('\n', position);
    if (end == std::string_view::npos) {
      return tl::unexpected(
          std::string(line == 1 ? "this is no PLY file" : "the header has no end"));
    }
    std::string_view content = bytes.substr(position, end - position);
    if (content.ends_with('\r')) content.remove_suffix(1);
    position = end + 1;
    const auto words = Words(content);
    if (line == 1) {
      if (words.size() != 1 || words[0] != "ply") {
        return tl::unexpected(std::string("this is no PLY file"));
      }
    } else if (!words.empty() && words[0] == "end_header") {
      break;
    } else if (!words.empty()) {
      if (std::string error = reader.Take(words); !error.empty()) {
        return tl::unexpected(fmt::format("line {}: {}", line, error));
      }
    }
  }
  if (!reader.hasFormat) return tl::unexpected(std::string("the header names no format"));
  reader.header.size = position;
  return std::move(reader.header);
}

}  // namespace sorvanix::host
