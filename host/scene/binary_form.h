// The numbers of the binary form of documents, for its writer and its reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace sorvanix::host::binary {

// The first byte is beyond ASCII and the line ends differ, so that a transfer as text shows.
inline constexpr std::string_view kMagic("\x89SVX\r\n\x1A\n", 8);
inline constexpr std::uint32_t kVersion = 1;
inline constexpr std::string_view kNamesSection = "NAME", kTreeSection = "TREE";
inline constexpr std::size_t kHeaderSize = 32, kSectionHeaderSize = 24;
inline constexpr std::size_t kDeepest = 256;
// How long the names of all members may be together: no text of a document is longer.
inline constexpr std::size_t kMostNameBytes = std::size_t{64} << 20;

// What a value begins with.
enum Tag : unsigned char { Null, False, True, Integer, Float, Double, String, Array, Object };

}  // namespace sorvanix::host::binary
