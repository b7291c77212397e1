// The rows of an editor table that shaders have alike: what their previews go by.
#pragma once

#include <cstddef>

#include "module/editors/gadget_table.h"

namespace sorvanix {

/// Of a block whose picture does not move.
template <class Block>
constexpr PreviewMembers PreviewMembersOf() {
  return {.object = offsetof(Block, previewObject),
          .dirty = offsetof(Block, changed),
          .automatic = offsetof(Block, previewAuto),
          .inScene = offsetof(Block, previewBusy),
          .channel = offsetof(Block, previewChannel)};
}

/// What enables the gadget of `previewAuto`: a flat picture always follows by itself.
template <class Block>
inline bool ShowsScene(const void* block) noexcept {
  return BlockAs<Block>(block).previewObject != 0;
}

/// The enabling of a dialog that enables nothing else.
template <std::int32_t automatic>
inline constexpr std::int32_t kAutomaticGadget[] = {automatic};
template <class Block, std::int32_t automatic>
inline constexpr EnablingRule kSceneEnabling[] = {{kAutomaticGadget<automatic>, ShowsScene<Block>}};

}  // namespace sorvanix
