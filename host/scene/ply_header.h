// The header of a PLY file: which elements follow, with which properties, in which form.
//
// After Greg Turk, "The PLY Polygon File Format" (1994).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace sorvanix::host {

enum class PlyFormat { Ascii, LittleEndian, BigEndian };

enum class PlyType { Int8, Uint8, Int16, Uint16, Int32, Uint32, Float32, Float64 };

/// In bytes, in the binary forms.
std::size_t SizeOf(PlyType type) noexcept;

struct PlyProperty {
  std::string name;
  PlyType type = PlyType::Float32;   ///< of the value, or of a list's items
  std::optional<PlyType> countType;  ///< of a list's length; absent: this is no list
};

struct PlyElement {
  std::string name;
  std::uint64_t count = 0;
  std::vector<PlyProperty> properties;

  /// The position of the first property with one of these names, or nothing.
  std::optional<std::size_t> Find(std::initializer_list<std::string_view> names) const noexcept;
  /// The least number of bytes that one item takes in the file.
  std::size_t LeastSize(PlyFormat format) const noexcept;
};

struct PlyHeader {
  PlyFormat format = PlyFormat::Ascii;
  std::vector<PlyElement> elements;
  std::size_t size = 0;  ///< where the data begins
};

/// The error is one line without the file's name.
tl::expected<PlyHeader, std::string> ReadPlyHeader(std::string_view bytes);

}  // namespace sorvanix::host
