#include "module/shell/exchange.h"

#include <cstdint>
#include <limits>

#include "module/shell/block.h"
#include "module/shell/host_container.h"

namespace sorvanix {

namespace {

const Field* FindByKey(const ShaderTable& table, std::int32_t key) noexcept {
  if (key == kNotExchanged) return nullptr;
  for (const Field& field : table.fields) {
    if (field.key == key) return &field;
  }
  return nullptr;
}

// Values are stored as they come: a block may hold what no dialog would let through.
void SetField(void* block, const Field& field, const HostContainer* payload) noexcept {
  switch (field.kind) {
    case ValueKind::Int:
      MemberAt<std::int32_t>(block, field.offset) =
          static_cast<std::int32_t>(hostContainerGetInt(payload, field.key, 0));
      break;
    case ValueKind::Bool:
      MemberAt<std::int32_t>(block, field.offset) = hostContainerGetBool(payload, field.key, 0);
      break;
    case ValueKind::Float:
      MemberAt<float>(block, field.offset) = hostContainerGetFloat(payload, field.key, 0);
      break;
    case ValueKind::Vector:
      MemberAt<Vector>(block, field.offset) = hostContainerGetVector(payload, field.key, Vector{});
      break;
  }
}

void GetField(const void* block, const Field& field, HostContainer* payload) noexcept {
  switch (field.kind) {
    case ValueKind::Int:
      hostContainerSetInt(payload, field.key, MemberAt<std::int32_t>(block, field.offset));
      break;
    case ValueKind::Bool:
      hostContainerSetBool(payload, field.key, MemberAt<std::int32_t>(block, field.offset));
      break;
    case ValueKind::Float:
      hostContainerSetFloat(payload, field.key, MemberAt<float>(block, field.offset));
      break;
    case ValueKind::Vector:
      hostContainerSetVector(payload, field.key, MemberAt<Vector>(block, field.offset));
      break;
  }
}

// The container decides the order: with a key twice under one meaning the last one wins.
void SetParameters(const ShaderTable& table, void* block, const HostContainer* payload) noexcept {
  for (std::int32_t index = 0; index < std::numeric_limits<std::int32_t>::max(); ++index) {
    const std::int32_t key = hostContainerKeyAt(payload, index);
    if (key == kNoKey) return;
    if (const Field* field = FindByKey(table, key)) SetField(block, *field, payload);
  }
}

void GetParameters(const ShaderTable& table, const void* block, HostContainer* payload) noexcept {
  for (const Field& field : table.fields) {
    if (field.key != kNotExchanged) GetField(block, field, payload);
  }
}

void DescribeParameters(const ShaderTable& table, HostContainer* payload) noexcept {
  for (const Field& field : table.fields) {
    if (field.key != kNotExchanged) hostContainerSetInt(payload, field.key, field.describeAs);
  }
}

void ReportSlots(const ShaderTable& table, const ShaderInstance* instance,
                 HostContainer* payload) noexcept {
  hostContainerSetInt(payload, KeySlots, reinterpret_cast<Word>(instance->slots));
  hostContainerSetInt(payload, KeySlotStride, table.slotStride);
}

}  // namespace

std::int32_t AnswerMessage(const ShaderTable& table, ShaderInstance* instance, std::int32_t id,
                           HostContainer* payload) noexcept {
  constexpr std::int32_t kAnswered = 1;
  if (id == MessageReportSlots) {
    if (table.slotStride != 0) ReportSlots(table, instance, payload);
    return kAnswered;
  }
  if (instance->data == nullptr) return kAnswered;
  switch (id) {
    case MessageSetParameters:
      SetParameters(table, instance->data, payload);
      break;
    case MessageGetParameters:
      GetParameters(table, instance->data, payload);
      break;
    case MessageDescribeParameters:
      DescribeParameters(table, payload);
      break;
    default:
      break;
  }
  return kAnswered;
}

}  // namespace sorvanix
