#include "module/shell/block.h"

#include <cstring>

#include "module/shell/host_core.h"

namespace sorvanix {

namespace {

void StoreInitialValue(void* block, const Field& field) noexcept {
  switch (field.kind) {
    case ValueKind::Int:
    case ValueKind::Bool:
      MemberAt<std::int32_t>(block, field.offset) = field.initial.integer;
      break;
    case ValueKind::Float:
      MemberAt<float>(block, field.offset) = field.initial.real.x;
      break;
    case ValueKind::Vector:
      MemberAt<Vector>(block, field.offset) = field.initial.real;
      break;
  }
}

bool EqualField(const void* first, const void* second, const Field& field) noexcept {
  switch (field.kind) {
    case ValueKind::Int:
    case ValueKind::Bool:
      return MemberAt<std::int32_t>(first, field.offset) ==
             MemberAt<std::int32_t>(second, field.offset);
    case ValueKind::Float:
      return MemberAt<float>(first, field.offset) == MemberAt<float>(second, field.offset);
    case ValueKind::Vector: {
      const Vector& a = MemberAt<Vector>(first, field.offset);
      const Vector& b = MemberAt<Vector>(second, field.offset);
      return a.x == b.x && a.y == b.y && a.z == b.z;
    }
  }
  return false;
}

}  // namespace

std::int32_t AllocBlock(const ShaderTable& table, ShaderInstance* instance) noexcept {
  instance->data = hostAlloc(table.blockSize);
  if (instance->data == nullptr) return 0;
  for (const Field& field : table.fields) {
    if (field.initial.given) StoreInitialValue(instance->data, field);
  }
  return 1;
}

void FreeBlock(ShaderInstance* instance) noexcept {
  hostFree(instance->data);
  instance->data = nullptr;
}

std::int32_t CopyBlock(const ShaderTable& table, const ShaderInstance* source,
                       ShaderInstance* destination) noexcept {
  if (source->data == nullptr || destination->data == nullptr) return 0;
  std::memmove(destination->data, source->data, table.blockSize);
  if (table.nestedOffset != kNoMember) {
    MemberAt<std::int32_t>(destination->data, table.nestedOffset) = 0;
  }
  return 1;
}

std::int32_t CompareBlocks(const ShaderTable& table, const ShaderInstance* first,
                           const ShaderInstance* second) noexcept {
  if (first->data == nullptr || second->data == nullptr) return 0;
  for (const Field& field : table.fields) {
    if (field.compared && !EqualField(first->data, second->data, field)) return 0;
  }
  return 1;
}

}  // namespace sorvanix
