// Which shaders take part in the handshake of filters, and how they are marked.
#include "module/shell/nesting.h"

#include <limits>

#include "module/shell/block.h"
#include "module/shell/host_channel.h"
#include "module/shell/host_container.h"
#include "module/shell/registry.h"

namespace sorvanix {

namespace {

const RegistryRow* RowOf(std::int32_t pluginId) noexcept {
  for (const RegistryRow& row : ShaderRegistry()) {
    if (row.pluginId == pluginId) return &row;
  }
  return nullptr;
}

}  // namespace

bool IsFilterAware(std::int32_t pluginId) noexcept {
  const RegistryRow* row = RowOf(pluginId);
  return row != nullptr && row->nesting == Nesting::Aware;
}

void MarkNested(ChannelLink* link) noexcept {
  const RegistryRow* row = RowOf(hostChannelPluginId(link));
  if (row == nullptr || row->nesting == Nesting::None) return;
  if (row->table->nestedOffset == kNoMember) return;
  if (void* block = BlockOf<void>(hostChannelInstance(link))) {
    MemberAt<std::int32_t>(block, row->table->nestedOffset) = 1;
  }
}

InnerSlots AskForSlots(ChannelLink* link) noexcept {
  if (!IsFilterAware(hostChannelPluginId(link))) return {};
  const OwnedContainer answer;
  if (answer.get() == nullptr) return {};  // without a question nobody takes part
  hostChannelMessage(link, MessageReportSlots, answer.get());
  const Word address = hostContainerGetInt(answer.get(), KeySlots, 0);
  const Word stride = hostContainerGetInt(answer.get(), KeySlotStride, 0);
  MarkNested(link);

  constexpr Word kAlignment = alignof(FootprintBlock);
  const bool holdsBlocks = stride >= static_cast<Word>(sizeof(FootprintBlock)) &&
                           stride <= std::numeric_limits<std::int32_t>::max() &&
                           stride % kAlignment == 0;
  if (address == 0 || address % kAlignment != 0 || !holdsBlocks) return {};
  return {reinterpret_cast<void*>(address), static_cast<std::int32_t>(stride)};
}

}  // namespace sorvanix
