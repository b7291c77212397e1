#include "host/scene/ply_numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>

namespace sorvanix::host {

double PlyNumbers::Next(PlyType type) noexcept {
  if (format_ == PlyFormat::Ascii) return NextWord();
  switch (type) {
    case PlyType::Int8:
      return NextBytes<std::int8_t>();
    case PlyType::Uint8:
      return NextBytes<std::uint8_t>();
    case PlyType::Int16:
      return NextBytes<std::int16_t>();
    case PlyType::Uint16:
      return NextBytes<std::uint16_t>();
    case PlyType::Int32:
      return NextBytes<std::int32_t>();
    case PlyType::Uint32:
      return NextBytes<std::uint32_t>();
    case PlyType::Float32:
      return NextBytes<float>();
    case PlyType::Float64:
      return NextBytes<double>();
  }
  return 0;
}

double PlyNumbers::NextWord() noexcept {
  constexpr std::string_view space = " \t\r\n";
  data_.remove_prefix(std::min(data_.find_first_not_of(space), data_.size()));
  std::string_view word = data_.substr(0, data_.find_first_of(space));
  data_.remove_prefix(word.size());
  if (word.starts_with('+')) word.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  failed_ = failed_ || error != std::errc() || end != word.data() + word.size();
  return failed_ ? 0 : value;
}

template <class Value>
double PlyNumbers::NextBytes() noexcept {
  std::array<char, sizeof(Value)> bytes;
  if (data_.size() < bytes.size()) {
    failed_ = true;
    return 0;
  }
  std::copy_n(data_.begin(), bytes.size(), bytes.begin());
  data_.remove_prefix(bytes.size());
  const bool isLittle = format_ == PlyFormat::LittleEndian;
  if (isLittle != (std::endian::native == std::endian::little)) {
    std::reverse(bytes.begin(), bytes.end());
  }
  return static_cast<double>(std::bit_cast<Value>(bytes));
}

}  // namespace sorvanix::host
