// The table rows that all filters have alike: their preview, their nesting, their words of
// registration.
#pragma once

#include <array>

#include "module/shell/shader_table.h"

namespace sorvanix {

inline constexpr std::uint32_t kFilterInfoWord = 0x0220000F;
inline constexpr const char* kFilterSlotFailureText = "Couldn't Allocate Globals";

/// A link as a parameter that people set.
#define SORVANIX_INPUT(Block, member, key_, label_, help_)                               \
  {                                                                                      \
    SORVANIX_MEMBER(Block, Link, member), .compared = true, .copied = true, .key = key_, \
                                          .label = label_, .help = help_                 \
  }

/// Where filters differ in these rows.
struct FilterState {
  int previewAuto = 1;
  bool channelCopied = false;
};

/// The state of a filter's preview, and its nesting. Unlike generators, filters compare `nested`.
template <class Block>
constexpr auto FilterStateFields(FilterState state = {}) {
  return std::to_array<Field>({
      {SORVANIX_MEMBER(Block, Int, previewObject), .initial = Initially(0), .compared = true,
       .copied = true},
      {SORVANIX_MEMBER(Block, Bool, previewBusy), .initial = Initially(0), .compared = true,
       .copied = true},
      {SORVANIX_MEMBER(Block, Bool, changed), .initial = Initially(1), .compared = true,
       .copied = true},
      {SORVANIX_MEMBER(Block, Bool, previewAuto), .initial = Initially(state.previewAuto),
       .compared = true, .copied = true},
      {SORVANIX_MEMBER(Block, Int, nested), .initial = Initially(0), .compared = true},
      {SORVANIX_MEMBER(Block, Int, previewChannel), .initial = Initially(-1),
       .copied = state.channelCopied},
  });
}

/// The state of the preview as every filter saves it.
template <class Block>
constexpr auto StoredPreview() {
  return std::to_array<StoredItem>({
      Stored(SORVANIX_PLACE(Block, Int, previewObject)),
      Stored(SORVANIX_PLACE(Block, Bool, previewAuto)),
      Stored(SORVANIX_PLACE(Block, Bool, previewBusy)),
      Stored(SORVANIX_PLACE(Block, Bool, changed)),
  });
}

/// What closes the file of most filters from a marker on: two fillers and the nesting.
template <class Block>
constexpr auto StoredNesting(std::int32_t marker) {
  return std::to_array<StoredItem>({
      StoredLiteral(marker, ValueKind::Bool, 1),
      StoredLiteral(marker, ValueKind::Int, 5),
      StoredSince(marker, SORVANIX_PLACE(Block, Int, nested)),
  });
}

}  // namespace sorvanix
