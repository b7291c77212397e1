// The messages of a shader, answered from its table.
#include "module/shell/exchange.h"

#include <cstdint>
#include <limits>

#include "module/shell/block.h"
#include "module/shell/host_channel.h"
#include "module/shell/host_container.h"
#include "module/shell/ramp_form.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kAnswered = 1;

const Field* FindByKey(const ShaderTable& table, std::int32_t key) noexcept {
  if (key == kNotExchanged) return nullptr;
  for (const Field& field : table.fields) {
    if (field.key == key) return &field;
  }
  return nullptr;
}

// The integer towards zero; the nearest one for values beyond int32, and 0 for NaN.
std::int32_t Truncated(float value) noexcept {
  using Int = std::numeric_limits<std::int32_t>;
  if (!(value > static_cast<float>(Int::min()))) return value <= 0 ? Int::min() : 0;
  if (value >= -static_cast<float>(Int::min())) return Int::max();
  return static_cast<std::int32_t>(value);
}

void SetField(void* block, const Field& field, const HostContainer* payload) noexcept {
  if (field.importedAsReal) {
    MemberAt<std::int32_t>(block, field.offset) =
        Truncated(hostContainerGetFloat(payload, field.key, 0));
    return;
  }
  OperationsOf(field.kind).set(&MemberAt<char>(block, field.offset), field.key, payload);
}

// The container decides the order.
void SetParameters(const ShaderTable& table, void* block, const HostContainer* payload) noexcept {
  for (std::int32_t index = 0; index < std::numeric_limits<std::int32_t>::max(); ++index) {
    const std::int32_t key = hostContainerKeyAt(payload, index);
    if (key == kNoKey) return;
    if (const Field* field = FindByKey(table, key)) {
      SetField(block, *field, payload);
    } else if (table.ramp.given()) {
      SetKnot(table.ramp, MemberAt<Ramp>(block, table.ramp.offset), key, payload);
    }
  }
}

void GetParameters(const ShaderTable& table, const void* block, HostContainer* payload) noexcept {
  for (const Field& field : table.fields) {
    if (field.key == kNotExchanged) continue;
    OperationsOf(field.kind).get(&MemberAt<char>(block, field.offset), field.key, payload);
  }
  if (table.ramp.given()) {
    GetKnots(table.ramp, MemberAt<Ramp>(block, table.ramp.offset), payload);
  }
}

void DescribeField(const void* block, const Field& field, HostContainer* payload) noexcept {
  if (const auto describe = OperationsOf(field.kind).describe) {
    describe(&MemberAt<char>(block, field.offset), field.key, payload);
  } else if (field.describedAsReal) {
    hostContainerSetFloat(payload, field.key, static_cast<float>(field.describeAs));
  } else {
    hostContainerSetInt(payload, field.key, field.describeAs);
  }
}

void DescribeParameters(const ShaderTable& table, const void* block,
                        HostContainer* payload) noexcept {
  for (const Field& field : table.fields) {
    if (field.key != kNotExchanged) DescribeField(block, field, payload);
  }
  if (table.ramp.given()) DescribeKnots(table.ramp, payload);
}

void ReportSlots(const ShaderTable& table, const ShaderInstance* instance,
                 HostContainer* payload) noexcept {
  hostContainerSetInt(payload, KeySlots, reinterpret_cast<Word>(instance->slots));
  hostContainerSetInt(payload, KeySlotStride, table.slotStride);
}

std::int32_t Forward(const ShaderTable& table, const void* block, HostContainer* payload) noexcept {
  std::int32_t answer = kAnswered;
  if (table.category != ShaderCategory::Filter) return answer;
  for (const Field& field : table.fields) {
    if (field.kind != ValueKind::Link) continue;
    answer =
        hostChannelMessage(MemberAt<ChannelLink*>(block, field.offset), MessageForward, payload);
  }
  return answer;
}

}  // namespace

std::int32_t AnswerMessage(const ShaderTable& table, ShaderInstance* instance, std::int32_t id,
                           HostContainer* payload) noexcept {
  if (id == MessageReportSlots) {
    if (table.slotStride != 0) ReportSlots(table, instance, payload);
    return kAnswered;
  }
  if (instance->data == nullptr) return kAnswered;
  switch (id) {
    case MessageSetParameters:
      SetParameters(table, instance->data, payload);
      return kAnswered;
    case MessageGetParameters:
      GetParameters(table, instance->data, payload);
      return kAnswered;
    case MessageDescribeParameters:
      DescribeParameters(table, instance->data, payload);
      return kAnswered;
    case MessageForward:
      return Forward(table, instance->data, payload);
    default:
      return kAnswered;
  }
}

}  // namespace sorvanix
