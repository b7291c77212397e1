// Parameter blocks by table: Alloc, Free, Copy and Compare for every shader.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The instance's block, or null when the instance has none.
template <class Block>
inline Block* BlockOf(const ShaderInstance* instance) noexcept {
  return instance == nullptr ? nullptr : static_cast<Block*>(instance->data);
}

/// The member of a block that a table row names.
template <class Value>
inline Value& MemberAt(void* block, std::uint32_t offset) noexcept {
  return *reinterpret_cast<Value*>(static_cast<char*>(block) + offset);
}
template <class Value>
inline const Value& MemberAt(const void* block, std::uint32_t offset) noexcept {
  return *reinterpret_cast<const Value*>(static_cast<const char*>(block) + offset);
}

/// Makes a block with the table's initial values and the objects that it owns; 0, null data and
/// nothing left behind, when memory is short.
std::int32_t AllocBlock(const ShaderTable& table, ShaderInstance* instance) noexcept;

/// Releases what the block owns and the block, if there is one, and clears data.
void FreeBlock(const ShaderTable& table, ShaderInstance* instance) noexcept;

/// Copies by the table's CopyRule; the copy stands alone, so its `nested` is cleared. 0 without two
/// blocks, and for a source that lacks a link. Links are made anew: where the host cannot make or
/// copy one it is 0 as well, and the destination then has Alloc's values and no links, which every
/// callback takes. A copy onto itself changes nothing but `nested`.
std::int32_t CopyBlock(const ShaderTable& table, const ShaderInstance* source,
                       ShaderInstance* destination) noexcept;

/// 1 when every compared field and live knot is equal, floats exactly (so a NaN equals nothing);
/// 0 otherwise, and when a block or a compared link is missing.
std::int32_t CompareBlocks(const ShaderTable& table, const ShaderInstance* first,
                           const ShaderInstance* second) noexcept;

}  // namespace sorvanix
