// An address in the tail of a slot, which has the same size on every build.
#pragma once

#include <cstdint>

namespace sorvanix {

/// An address as two halves.
class SlotAddress {
 public:
  void Set(const void* address) noexcept {
    const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(address));
    low_ = static_cast<std::uint32_t>(bits);
    high_ = static_cast<std::uint32_t>(bits >> 32);
  }
  void* Get() const noexcept {
    const std::uint64_t bits = std::uint64_t{high_} << 32 | low_;
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(bits));
  }

 private:
  std::uint32_t low_;
  std::uint32_t high_;
};
static_assert(sizeof(SlotAddress) == 8 && alignof(SlotAddress) == 4);

}  // namespace sorvanix
