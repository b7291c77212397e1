#include "module/shell/persistence.h"

#include <cstddef>

#include "module/shell/block.h"
#include "module/shell/host_stream.h"

namespace sorvanix {

namespace {

void WriteValue(ValueKind kind, const void* value, HostStream* writer) noexcept {
  switch (kind) {
    case ValueKind::Int:
      hostWriteInt(writer, *static_cast<const std::int32_t*>(value));
      break;
    case ValueKind::Bool:
      hostWriteBool(writer, *static_cast<const std::int32_t*>(value));
      break;
    case ValueKind::Float:
      hostWriteFloat(writer, *static_cast<const float*>(value));
      break;
    case ValueKind::Vector:
      hostWriteVector(writer, *static_cast<const Vector*>(value));
      break;
  }
}

void ReadValue(ValueKind kind, void* value, HostStream* reader) noexcept {
  switch (kind) {
    case ValueKind::Int:
      hostReadInt(reader, static_cast<std::int32_t*>(value));
      break;
    case ValueKind::Bool:
      hostReadBool(reader, static_cast<std::int32_t*>(value));
      break;
    case ValueKind::Float:
      hostReadFloat(reader, static_cast<float*>(value));
      break;
    case ValueKind::Vector:
      hostReadVector(reader, static_cast<Vector*>(value));
      break;
  }
}

}  // namespace

std::int32_t WriteBlock(const ShaderTable& table, const ShaderInstance* instance,
                        HostStream* writer) noexcept {
  if (instance->data == nullptr) return 0;
  hostWriteInt(writer, table.marker);
  for (const StoredItem& item : table.stored) {
    if (item.written) WriteValue(item.kind, &MemberAt<char>(instance->data, item.offset), writer);
  }
  return 1;
}

std::int32_t ReadBlock(const ShaderTable& table, ShaderInstance* instance,
                       HostStream* reader) noexcept {
  if (instance->data == nullptr) return 0;
  std::int32_t marker = 0;
  hostReadInt(reader, &marker);
  for (const StoredItem& item : table.stored) {
    if (marker < item.firstMarker || marker > item.lastMarker) continue;
    // A dropped value goes to a scratch place, so that the stream stays in step.
    alignas(Vector) std::byte scratch[sizeof(Vector)] = {};
    void* place = item.offset == kNoMember
                      ? static_cast<void*>(scratch)
                      : static_cast<void*>(&MemberAt<char>(instance->data, item.offset));
    ReadValue(item.kind, place, reader);
  }
  return 1;
}

}  // namespace sorvanix
