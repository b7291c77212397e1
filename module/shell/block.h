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

/// Makes a block with the table's initial values; 0, and null data, when memory is short.
std::int32_t AllocBlock(const ShaderTable& table, ShaderInstance* instance) noexcept;

/// Releases the block, if there is one, and clears data.
void FreeBlock(ShaderInstance* instance) noexcept;

/// Copies the whole block; the copy stands alone, so its `nested` is cleared. 0 without two blocks.
std::int32_t CopyBlock(const ShaderTable& table, const ShaderInstance* source,
                       ShaderInstance* destination) noexcept;

/// 1 when every compared field is equal, floats exactly (so a NaN equals nothing); 0 otherwise.
std::int32_t CompareBlocks(const ShaderTable& table, const ShaderInstance* first,
                           const ShaderInstance* second) noexcept;

}  // namespace sorvanix
