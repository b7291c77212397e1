// Typed values out of the bytes that a fuzzer hands over. Past their end there are zeros.
#pragma once

#include <sorvanix/types.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace sorvanix::fuzz {

class ByteSource {
 public:
  ByteSource(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool AtEnd() const noexcept { return rest_.empty(); }

  template <class Value>
  Value Take() noexcept {
    Value value = {};
    const std::size_t size = std::min(sizeof(Value), rest_.size());
    std::memcpy(&value, rest_.data(), size);
    rest_.remove_prefix(size);
    return value;
  }
  std::uint8_t Byte() noexcept { return Take<std::uint8_t>(); }
  /// Up to 255 bytes behind their number.
  std::string Text() {
    const std::size_t size = std::min(std::size_t{Byte()}, rest_.size());
    std::string text(rest_.substr(0, size));
    rest_.remove_prefix(size);
    return text;
  }

 private:
  std::string_view rest_;
};

}  // namespace sorvanix::fuzz
