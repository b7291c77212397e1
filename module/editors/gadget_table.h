// What a shader's dialog is, as data: its gadgets, their units and pairs, what switches them on,
// and what reset and random do.
//
// Kind, limits, step and unit of a gadget come from the Field row of the member that it edits; a
// gadget tells only what differs. ShaderDialog interprets the table.
#pragma once

#include <cstdint>
#include <span>

#include "module/shell/shader_table.h"

namespace sorvanix {

/// How a gadget shows the value of its member.
enum class Shown : std::uint8_t {
  AsItIs,
  Reciprocal,  ///< a size in place of a frequency; 9e18 where the frequency is 0 or below
  Doubled,     ///< the whole width in place of half of it; limits are those of the whole
  Component    ///< one number of a vector, at which `member` points
};

/// What a change of the value means for the preview.
enum class Effect : std::uint8_t {
  NewPicture,        ///< another picture, if the value differs from the member's
  AlwaysNewPicture,  ///< the same without the comparison
  None               ///< written without a word to the preview
};

/// A format other than the one that follows from the field's unit.
inline constexpr std::int32_t kFormatOfUnit = -1;

/// One gadget that edits one member of the block. Two gadgets on one member are a pair: a change of
/// one shows in the other. A link takes nine ids in a row, of which `id` is the first.
struct Gadget {
  std::int32_t id;
  std::uint32_t member;  ///< offset in the block; there is a Field row for it
  Shown shown = Shown::AsItIs;
  Effect effect = Effect::NewPicture;
  Limits limits = {};  ///< where they differ from the field's
  std::int32_t format = kFormatOfUnit;
};

/// The first columns of a gadget's row.
#define SORVANIX_GADGET(Block, id_, member_) \
  .id = id_, .member = static_cast<std::uint32_t>(offsetof(Block, member_))

inline constexpr std::int32_t kIdsOfLink = 9;

/// What the gadget of a preview object is kept within.
inline constexpr Limits kPreviewObjects = {0, 5, 1};

/// Gadgets that are enabled only while the block says so.
struct EnablingRule {
  std::span<const std::int32_t> gadgets;
  bool (*enabled)(const void* block) noexcept;
};

/// The block as its own type, for the functions of a table.
template <class Block>
inline const Block& BlockAs(const void* block) noexcept {
  return *static_cast<const Block*>(block);
}

/// One step of random: the member becomes a random number from `from` on, below `from` + `range`,
/// and the integer below it where it is one. A colour takes three draws, blue first.
struct RandomDraw {
  std::uint32_t member;
  double range = 1;
  double from = 0;
};

/// What a shader's preview goes by; a member that the shader lacks is kNoMember.
struct PreviewMembers {
  std::uint32_t object = kNoMember;  ///< 0 flat, 1 to 5 a scene
  std::uint32_t dirty = kNoMember;   ///< 1 until the preview shows the block
  std::uint32_t automatic = kNoMember;
  std::uint32_t animated = kNoMember;  ///< of the flat picture
  std::uint32_t speed = kNoMember;     ///< of the animation
  std::uint32_t inScene = kNoMember;   ///< 1 in the copy that a preview scene shows
  std::uint32_t channel = kNoMember;   ///< the material channel, told to the working copy
};

/// Members from the first to the last, both included, by their offsets.
struct MemberRange {
  std::uint32_t first = kNoMember, last = 0;
  constexpr bool Holds(std::uint32_t member) const { return member >= first && member <= last; }
};

/// The dialog of one shader.
struct EditorTable {
  const ShaderTable* shader;
  void (*fill)(ShaderRecord* record) noexcept;  ///< the shader's own callbacks

  std::int32_t dialogId;  ///< of the resource
  std::int32_t titleArea;
  std::int32_t previewArea = 0;  ///< 0 for a dialog without a preview
  const char* titleIcon;         ///< file in "Resources"
  const char* aboutName;         ///< what the About dialog calls the shader
  const char* missingResources;  ///< shown where the dialog's resource is not found

  std::span<const Gadget> gadgets;
  std::span<const EnablingRule> enabling = {};
  std::span<const std::int32_t> furtherGadgets = {};  ///< ids that only code of the dialog names
  PreviewMembers preview = {};
  /// The fields that reset brings back to what Alloc stores; the preview's object stays.
  MemberRange reset = {};
  MemberRange furtherReset = {};  ///< the same, where those do not stand together
  std::span<const RandomDraw> random = {};

  constexpr bool HasPreview() const { return previewArea != 0; }
};

}  // namespace sorvanix
