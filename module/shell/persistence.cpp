// Saved forms by table: what each version wrote, in order.
#include "module/shell/persistence.h"

#include <cstddef>

#include "module/shell/block.h"
#include "module/shell/host_stream.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

void WriteItem(const StoredItem& item, const void* block, HostStream* writer) noexcept {
  const void* value = item.offset == kNoMember ? static_cast<const void*>(&item.literal)
                                               : &MemberAt<char>(block, item.offset);
  for (std::int32_t i = 0; i < item.times; ++i) OperationsOf(item.kind).write(value, writer);
}

void ReadItem(const StoredItem& item, void* block, HostStream* reader) noexcept {
  // A dropped value goes to a scratch place, so that the stream stays in step.
  alignas(Vector) std::byte scratch[sizeof(Vector)] = {};
  void* value =
      item.offset == kNoMember ? static_cast<void*>(scratch) : &MemberAt<char>(block, item.offset);
  if (item.implied.given) {
    OperationsOf(item.kind).initialise(item.implied, value);
    return;
  }
  for (std::int32_t i = 0; i < item.times; ++i) OperationsOf(item.kind).read(value, reader);
}

}  // namespace

std::int32_t WriteBlock(const ShaderTable& table, const ShaderInstance* instance,
                        HostStream* writer) noexcept {
  if (instance->data == nullptr) return 0;
  hostWriteInt(writer, table.marker);
  for (const StoredItem& item : table.stored) {
    if (item.written) WriteItem(item, instance->data, writer);
  }
  return 1;
}

std::int32_t ReadBlock(const ShaderTable& table, ShaderInstance* instance,
                       HostStream* reader) noexcept {
  if (instance->data == nullptr) return 0;
  std::int32_t marker = 0;
  hostReadInt(reader, &marker);
  if (table.onlyOwnMarker && marker != table.marker) return 0;
  if (marker < table.oldestMarker || table.foreignMarkers.Holds(marker)) return 1;
  ReadItems(table, instance->data, marker, reader);
  return 1;
}

void ReadItems(const ShaderTable& table, void* block, std::int32_t marker,
               HostStream* reader) noexcept {
  for (const StoredItem& item : table.stored) {
    if (marker < item.firstMarker || marker > item.lastMarker) continue;
    ReadItem(item, block, reader);
  }
  if (table.completeRead != nullptr) table.completeRead(block, marker);
}

}  // namespace sorvanix
