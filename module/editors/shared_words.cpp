// Copying a block word by word around the objects that it owns.
#include "module/editors/shared_words.h"

#include <algorithm>

#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

// Whether a word is part of a handle, as wide as a pointer, to an object that the block owns.
bool IsOwned(const ShaderTable& table, std::uint32_t member) noexcept {
  return std::any_of(table.fields.begin(), table.fields.end(), [member](const Field& field) {
    return OperationsOf(field.kind).release != nullptr && member >= field.offset &&
           member < field.offset + sizeof(void*);
  });
}

}  // namespace

void CopySharedWords(const ShaderTable& table, const void* from, void* to) noexcept {
  for (std::uint32_t member = 0; member < table.blockSize; member += 4) {
    if (!IsOwned(table, member)) StoreWord(to, member, LoadWord(from, member));
  }
}

}  // namespace sorvanix
