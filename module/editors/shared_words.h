// Access to a block that a dialog edits while its preview reads it on another thread.
//
// No lock: each word goes through a relaxed atomic access, so that a reader sees every word either
// as it was or as it is. Words of one change may be seen in part; the preview then draws again.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "module/shell/block.h"

namespace sorvanix {

inline void StoreWord(void* block, std::uint32_t member, std::uint32_t value) noexcept {
  std::atomic_ref(MemberAt<std::uint32_t>(block, member)).store(value, std::memory_order_relaxed);
}

inline std::uint32_t LoadWord(const void* block, std::uint32_t member) noexcept {
  // atomic_ref takes no const object before C++26; a load leaves it as it is.
  auto& word = const_cast<std::uint32_t&>(MemberAt<std::uint32_t>(block, member));
  return std::atomic_ref(word).load(std::memory_order_relaxed);
}

/// Stores a value of whole words into a member.
template <class Value>
inline void StoreShared(void* block, std::uint32_t member, const Value& value) noexcept {
  std::uint32_t words[sizeof(Value) / 4];
  static_assert(sizeof words == sizeof(Value));
  std::memcpy(words, &value, sizeof words);
  for (const std::uint32_t word : words) {
    StoreWord(block, member, word);
    member += 4;
  }
}

/// The truth of an integer member; `otherwise` where the shader has none.
inline std::int32_t LoadInt(const void* block, std::uint32_t member,
                            std::int32_t otherwise) noexcept {
  if (member == kNoMember) return otherwise;
  return static_cast<std::int32_t>(LoadWord(block, member));
}

/// Stores an integer member, if the shader has it.
inline void StoreInt(void* block, std::uint32_t member, std::int32_t value) noexcept {
  if (member != kNoMember) StoreWord(block, member, static_cast<std::uint32_t>(value));
}

/// Changes a block that owns no objects through a copy: `change` sees it whole, and only the words
/// that it changed are stored.
template <class Block, class Change>
inline void ChangeShared(void* block, Change change) noexcept {
  constexpr std::uint32_t kSize = sizeof(Block);
  static_assert(kSize % 4 == 0);
  Block before;
  for (std::uint32_t at = 0; at < kSize; at += 4) {
    MemberAt<std::uint32_t>(&before, at) = LoadWord(block, at);
  }
  Block after = before;
  change(after);
  for (std::uint32_t at = 0; at < kSize; at += 4) {
    const auto word = MemberAt<std::uint32_t>(&after, at);
    if (word != MemberAt<std::uint32_t>(&before, at)) StoreWord(block, at, word);
  }
}

/// Copies all words of a shader's block but those of objects that each block owns: links, texts.
void CopySharedWords(const ShaderTable& table, const void* from, void* to) noexcept;

}  // namespace sorvanix
