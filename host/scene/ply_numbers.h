// The data of a PLY file as plain numbers, one after the other, whatever form the file has.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/scene/ply_header.h"

namespace sorvanix::host {

class PlyNumbers {
 public:
  PlyNumbers(std::string_view data, PlyFormat format) : data_(data), format_(format) {}

  /// The next number, in binary files of this type. After the end of the data, or at a word that is
  /// no number, it has failed for good and answers 0.
  double Next(PlyType type) noexcept;
  bool Failed() const noexcept { return failed_; }

  std::size_t BytesLeft() const noexcept { return data_.size(); }

 private:
  double NextWord() noexcept;
  template <class Value>
  double NextBytes() noexcept;

  std::string_view data_;
  PlyFormat format_;
  bool failed_ = false;
};

}  // namespace sorvanix::host
