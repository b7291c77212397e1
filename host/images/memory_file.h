// A file in memory that an image format writes itself into; formats that patch what they wrote
// before may read it too.
#pragma once

#include <OpenImageIO/filesystem.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace sorvanix::host {

class MemoryFile final : public OIIO::Filesystem::IOProxy {
 public:
  /// Room for `expected` bytes is put aside at once, so that growing needs no second copy.
  explicit MemoryFile(std::size_t expected) : IOProxy("", Write) { bytes_.reserve(expected); }

  const char* proxytype() const override { return "memory"; }
  std::size_t size() const override { return bytes_.size(); }

  std::size_t read(void* buffer, std::size_t count) override {
    const std::size_t done = pread(buffer, count, m_pos);
    m_pos += static_cast<std::int64_t>(done);
    return done;
  }
  std::size_t write(const void* buffer, std::size_t count) override {
    const std::size_t done = pwrite(buffer, count, m_pos);
    m_pos += static_cast<std::int64_t>(done);
    return done;
  }
  std::size_t pread(void* buffer, std::size_t count, std::int64_t offset) override {
    const auto start = std::min(static_cast<std::size_t>(offset), bytes_.size());
    const std::size_t available = std::min(count, bytes_.size() - start);
    if (available != 0) std::memcpy(buffer, bytes_.data() + start, available);
    return available;
  }
  std::size_t pwrite(const void* buffer, std::size_t count, std::int64_t offset) override {
    const auto start = static_cast<std::size_t>(offset);
    if (start + count > bytes_.size()) bytes_.resize(start + count);
    if (count != 0) std::memcpy(bytes_.data() + start, buffer, count);
    return count;
  }

  std::vector<unsigned char> Take() { return std::move(bytes_); }

 private:
  std::vector<unsigned char> bytes_;
};

}  // namespace sorvanix::host
