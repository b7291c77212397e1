// Blocks by table: made, freed, copied and compared field by field.
#include "module/shell/block.h"

#include <algorithm>
#include <cstring>

#include "module/shell/host_core.h"
#include "module/shell/ramp_form.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

void* ValueOf(void* block, const Field& field) noexcept {
  return &MemberAt<char>(block, field.offset);
}
const void* ValueOf(const void* block, const Field& field) noexcept {
  return &MemberAt<char>(block, field.offset);
}

// Kinds that own an object start with one, whether or not the row tells a value.
bool StartsWithValue(const Field& field) noexcept {
  return field.initial.given || OperationsOf(field.kind).release != nullptr;
}

void ReleaseValues(const ShaderTable& table, void* block) noexcept {
  for (const Field& field : table.fields) {
    if (const auto release = OperationsOf(field.kind).release) release(ValueOf(block, field));
  }
}

// Into a block that owns nothing. Goes on after a failure, so that all values are defined.
bool StoreInitialValues(const ShaderTable& table, void* block) noexcept {
  bool complete = true;
  for (const Field& field : table.fields) {
    if (!StartsWithValue(field)) continue;
    complete &= OperationsOf(field.kind).initialise(field.initial, ValueOf(block, field));
  }
  if (table.ramp.given()) MemberAt<Ramp>(block, table.ramp.offset) = *table.ramp.initial;
  return complete;
}

bool CopyListedFields(const ShaderTable& table, const void* from, void* to) noexcept {
  bool complete = true;
  for (const Field& field : table.fields) {
    if (!field.copied) continue;
    complete &= OperationsOf(field.kind).copy(ValueOf(from, field), ValueOf(to, field));
  }
  if (table.ramp.given()) {
    CopyLiveKnots(MemberAt<Ramp>(from, table.ramp.offset), MemberAt<Ramp>(to, table.ramp.offset));
  }
  return complete;
}

bool HasLinks(const ShaderTable& table) noexcept {
  return std::any_of(table.fields.begin(), table.fields.end(),
                     [](const Field& field) { return field.kind == ValueKind::Link; });
}

bool HasAllLinks(const ShaderTable& table, const void* block) noexcept {
  return std::none_of(table.fields.begin(), table.fields.end(), [&](const Field& field) {
    return field.kind == ValueKind::Link && MemberAt<ChannelLink*>(block, field.offset) == nullptr;
  });
}

bool ReplaceByCopy(const ShaderTable& table, const void* from, void* to) noexcept {
  if (!HasAllLinks(table, from)) return false;
  ReleaseValues(table, to);
  if (StoreInitialValues(table, to) && CopyListedFields(table, from, to)) return true;
  ReleaseValues(table, to);
  return false;
}

bool CopyByList(const ShaderTable& table, const void* from, void* to) noexcept {
  return HasLinks(table) ? ReplaceByCopy(table, from, to) : CopyListedFields(table, from, to);
}

}  // namespace

std::int32_t AllocBlock(const ShaderTable& table, ShaderInstance* instance) noexcept {
  instance->data = hostAlloc(table.blockSize);
  if (instance->data == nullptr) return 0;
  if (StoreInitialValues(table, instance->data)) return 1;
  FreeBlock(table, instance);
  return 0;
}

void FreeBlock(const ShaderTable& table, ShaderInstance* instance) noexcept {
  if (instance->data != nullptr) ReleaseValues(table, instance->data);
  hostFree(instance->data);
  instance->data = nullptr;
}

std::int32_t CopyBlock(const ShaderTable& table, const ShaderInstance* source,
                       ShaderInstance* destination) noexcept {
  const void* from = source->data;
  void* to = destination->data;
  if (from == nullptr || to == nullptr) return 0;
  if (from != to) {
    if (table.copyRule == CopyRule::WholeBlock) {
      std::memcpy(&MemberAt<char>(to, table.copyStart), &MemberAt<char>(from, table.copyStart),
                  table.blockSize - table.copyStart);
    } else if (!CopyByList(table, from, to)) {
      return 0;
    }
  }
  if (table.nestedOffset != kNoMember) MemberAt<std::int32_t>(to, table.nestedOffset) = 0;
  return 1;
}

std::int32_t CompareBlocks(const ShaderTable& table, const ShaderInstance* first,
                           const ShaderInstance* second) noexcept {
  const void* a = first->data;
  const void* b = second->data;
  if (a == nullptr || b == nullptr) return 0;
  const auto equal = [&](const Field& field) {
    return !field.compared || OperationsOf(field.kind).equal(ValueOf(a, field), ValueOf(b, field));
  };
  if (!std::all_of(table.fields.begin(), table.fields.end(), equal)) return 0;
  return !table.ramp.given() ||
         EqualLiveKnots(MemberAt<Ramp>(a, table.ramp.offset), MemberAt<Ramp>(b, table.ramp.offset));
}

}  // namespace sorvanix
